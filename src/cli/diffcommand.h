#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// `tarnwick-cli diff OLD NEW [--json]`: what a reviewer wants to know before a changed file goes
// to the router, told by class and filter instead of by renumbered lines.
class DiffCommand
{
public:
    // What the command prints and its exit code: 0 the documents are equal, 1 they differ,
    // 2 a file could not be read or the call is wrong.
    struct Result
    {
        int code = 0;
        QByteArray output;
        // One line each for standard error, each naming its file.
        QStringList errors;
    };

    // The arguments after "diff". An empty usageError() means the call is right.
    explicit DiffCommand(const QStringList& args);
    QString usageError() const { return m_usageError; }

    Result Run() const;

private:
    QString m_oldPath;
    QString m_newPath;
    bool m_json = false;
    QString m_usageError;
};
