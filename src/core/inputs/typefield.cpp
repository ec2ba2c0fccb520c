#include "inputs/typefield.h"

TypeField::TypeField(QObject* parent) : QObject(parent) {}

const QStringList& TypeField::Values()
{
    static const QStringList values{QString(), QStringLiteral("client"), QStringLiteral("server")};
    return values;
}

const QStringList& TypeField::MenuCaptions()
{
    static const QStringList captions{QStringLiteral("client"), QStringLiteral("server")};
    return captions;
}

void TypeField::SetText(const QString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    if (m_ownerHook)
        m_ownerHook();
    if (watched())
        emit Change();
}

void TypeField::Step()
{
    m_position = (m_position + 1) % Values().size();
    SetText(Values().at(m_position));
}

void TypeField::Paste(QStringView text)
{
    const QString choice = text.trimmed().toString();
    if (MenuCaptions().contains(choice))
        Choose(choice);
}
