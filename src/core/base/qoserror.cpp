#include "base/qoserror.h"

QoSError::QoSError(Kind kind, const QString& message)
    : std::runtime_error(message.toStdString()), m_kind(kind), m_message(message)
{}

QoSError QoSError::overflow()
{
    return QoSError(Kind::Overflow,
                    QStringLiteral("Überlauf: Das Ergebnis liegt außerhalb des erlaubten Zahlenbereichs."));
}

QoSError QoSError::typeMismatch(const QString& text)
{
    return QoSError(Kind::TypeMismatch,
                    QStringLiteral("Typen unverträglich: \"%1\" ist keine Zahl.").arg(text));
}
