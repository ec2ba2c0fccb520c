#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <optional>
#include <vector>

// The lines of a qos.txt, read once, and the look-up of one variable in them.
//
// A variable is found on the first line that, with tabs made blanks and blanks trimmed,
// begins with its name; later lines are never seen. Commented variables are looked up with
// their "#". The lines are indexed by their leading word, so a look-up does not scan the file.
class QoSFileTable
{
public:
    // Windows-1252 bytes; lines end at CR LF, LF or CR.
    explicit QoSFileTable(const QByteArray& bytes);
    // The lines and the index point into the table's own text.
    QoSFileTable(const QoSFileTable&) = delete;
    QoSFileTable& operator=(const QoSFileTable&) = delete;

    qsizetype LineCount() const { return qsizetype(m_lines.size()); }
    QStringView Line(qsizetype i) const { return m_lines[std::size_t(i)]; }

    // The index of the first line that belongs to a variable.
    std::optional<qsizetype> FindLine(QStringView name) const;

    // The value between the quotes after the "=" of the variable's line, or defaultValue when
    // no line belongs to it. A line without "=" or quotes throws a QoSError. With multiLine
    // the value is a line count and the result the text of that many following lines, each
    // without its first character, joined with CR LF. "%Version" is read from the end of the
    // file's second line.
    QString GetQoSValue(QStringView name, const QString& defaultValue, bool multiLine = false) const;

    static QString CleanLine(QStringView line);

private:
    QString versionValue(const QString& defaultValue) const;
    QString followingLines(qsizetype line, const QString& countText) const;

    struct Key
    {
        QStringView word;
        qsizetype line;
    };
    QString m_text; // the decoded file; the lines are views into it
    std::vector<QStringView> m_lines;
    std::vector<Key> m_index; // sorted by word, then line
    // A word's first line, when no longer word begins with it; the common look-up then needs
    // no search. Open addressing with a cheap hash: a file has tens of thousands of words.
    struct Slot
    {
        quint64 hash = 0;
        qsizetype key = -1; // position in m_index, -1 for a free slot
    };
    std::vector<Slot> m_exact;
    std::optional<qsizetype> exactLine(QStringView word) const;
};
