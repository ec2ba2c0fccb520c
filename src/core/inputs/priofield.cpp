#include "priofield.h"

#include "document/numbers.h"
#include "document/qoserror.h"

#include <cmath>

PrioField::PrioField(QObject* parent) : QObject(parent) {}

void PrioField::SetValue(const QString& value)
{
    if (value == m_value)
        return;
    m_value = value;
    emit Change();
}

void PrioField::Increment()
{
    step(+1);
}

void PrioField::Decrement()
{
    step(-1);
}

void PrioField::step(int delta)
{
    // A pasted or loaded text may hold any number. The step is done in doubles with fmod,
    // which is exact, so even 1e300 steps without overflow; a number beyond a double counts 0.
    double v = 0;
    try {
        v = Numbers::LeadingValue(m_value);
    } catch (const QoSError&) {
        v = 0;
    }
    const double r = std::fmod(std::nearbyint(v + 4 + delta), 4.0); // keeps the sign: -6 gives -1
    SetValue(QString::number(int(r)));
}

void PrioField::TypeCharacter(QChar c)
{
    if (c == u'+')
        Increment();
    else if (c == u'-')
        Decrement();
    else if (c >= u'0' && c <= u'3')
        SetValue(QString(c));
}

bool PrioField::ClearsOnKey(int key)
{
    return key == Qt::Key_Delete || key == Qt::Key_Backspace || key == Qt::Key_Space;
}

void PrioField::SetBackColor(Colors::Rgb c)
{
    m_backColor = c;
    emit appearanceChanged();
}

void PrioField::SetForeColor(Colors::Rgb c)
{
    m_foreColor = c;
    emit appearanceChanged();
}

void PrioField::SetEnabled(bool enabled)
{
    m_enabled = enabled;
    emit appearanceChanged();
}

void PrioField::SetBorderStyle(int style)
{
    m_borderStyle = style;
    emit appearanceChanged();
}
