#pragma once

#include <QString>
#include <stdexcept>

// An error that a rule of the editor raises and that its caller reports or traps:
// an arithmetic overflow, a text that is not a number, a broken file line.
// Carries a German text that can be shown to the user as it is.
class QoSError : public std::runtime_error
{
public:
    enum class Kind { Overflow, TypeMismatch, File, Tree };

    QoSError(Kind kind, const QString& message);

    Kind kind() const { return m_kind; }
    QString message() const { return m_message; }

    static QoSError overflow();
    static QoSError typeMismatch(const QString& text);

private:
    Kind m_kind;
    QString m_message;
};
