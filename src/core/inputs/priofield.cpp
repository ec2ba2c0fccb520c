#include "inputs/priofield.h"

#include "base/numbers.h"
#include "base/qoserror.h"

#include <cmath>

PrioField::PrioField(QObject* parent) : QObject(parent) {}

void PrioField::SetValue(const QString& value)
{
    if (value == m_value)
        return;
    m_value = value;
    if (m_ownerHook)
        m_ownerHook();
    if (watched())
        emit Change();
}

void PrioField::Increment()
{
    SetValue(stepped(m_value, +1));
}

void PrioField::Decrement()
{
    SetValue(stepped(m_value, -1));
}

QString PrioField::stepped(const QString& value, int delta)
{
    // A pasted or loaded text may hold any number. The step is done in doubles with fmod,
    // which is exact, so even 1e300 steps without overflow; a number beyond a double counts 0.
    const double v = Numbers::TryLeadingValue(value).value_or(0);
    const double r = std::fmod(std::nearbyint(v + 4 + delta), 4.0); // keeps the sign: -6 gives -1
    return QString::number(int(r));
}

QString PrioField::typed(const QString& value, QChar c)
{
    if (c == u'+')
        return stepped(value, +1);
    if (c == u'-')
        return stepped(value, -1);
    if (c >= u'0' && c <= u'3')
        return QString(c);
    return value;
}

void PrioField::TypeCharacter(QChar c)
{
    SetValue(typed(m_value, c));
}

void PrioField::Paste(QStringView text)
{
    QString value = m_value;
    for (const QChar c : text)
        value = typed(value, c);
    SetValue(value);
}

bool PrioField::ClearsOnKey(int key)
{
    return key == Qt::Key_Delete || key == Qt::Key_Backspace || key == Qt::Key_Space;
}

void PrioField::SetBackColor(Colors::Rgb c)
{
    m_backColor = c;
    if (watched())
        emit appearanceChanged();
}

void PrioField::SetForeColor(Colors::Rgb c)
{
    m_foreColor = c;
    if (watched())
        emit appearanceChanged();
}

void PrioField::SetEnabled(bool enabled)
{
    m_enabled = enabled;
    if (watched())
        emit appearanceChanged();
}

void PrioField::SetBorderStyle(int style)
{
    m_borderStyle = style;
    if (watched())
        emit appearanceChanged();
}
