#include "bandwidthfield.h"

#include "document/numbers.h"
#include "document/qoserror.h"
#include "document/unitconversion.h"
#include "document/userprompt.h"

BandwidthField::BandwidthField(QObject* parent) : QObject(parent) {}

void BandwidthField::SetValue(const QString& number)
{
    if (number == m_value)
        return;
    m_value = number;
    emit valueChanged(m_value);
    changed();
}

void BandwidthField::SetUnit(const QString& unit)
{
    if (unit == m_unit)
        return;
    m_unit = unit;
    emit unitChanged(m_unit);
}

void BandwidthField::SetBandwidth(const QString& text)
{
    const QString s = text.isEmpty() ? QStringLiteral("0kbit") : text;
    // A leading number beyond 32 bits cannot be a bandwidth: it is taken as 0, and the
    // whole text becomes the unit part, so nothing of the text is lost.
    std::optional<qint32> n;
    try {
        n = Numbers::TryRoundToInt32(Numbers::LeadingValue(s));
    } catch (const QoSError&) {
    }
    const QString t = QString::number(n.value_or(0));
    const qsizetype at = n ? s.indexOf(t) : -1;
    QString unit = at < 0 ? s : s.mid(at + t.size());
    if (unit.isEmpty())
        unit = QStringLiteral("kbit");
    SetValue(t);
    SetUnit(unit);
}

qint32 BandwidthField::kbit() const
{
    bool inexact = false;
    return Numbers::RoundToInt32(UnitConversion::ToKbit(Numbers::LeadingValue(m_value), m_unit, inexact));
}

void BandwidthField::SetKbit(qint32 k)
{
    if (m_unit.isEmpty())
        SetUnit(QStringLiteral("kbit"));
    bool inexact = false;
    SetValue(Numbers::Format(UnitConversion::FromKbit(k, m_unit, inexact)));
}

void BandwidthField::SetLocked(bool locked)
{
    const bool changed = locked != m_locked;
    m_locked = locked;
    if (changed)
        emit lockedChanged(m_locked);
    applyColors();
}

void BandwidthField::SetShowLock(bool show)
{
    if (show == m_showLock)
        return;
    m_showLock = show;
    emit showLockChanged(show);
}

void BandwidthField::SetIsValid(bool valid)
{
    const bool changed = valid != m_valid;
    m_valid = valid;
    if (changed)
        emit validChanged(m_valid);
    applyColors();
}

void BandwidthField::SetErrorBackColor(Colors::Rgb c)
{
    m_errorBack = c;
}

void BandwidthField::SetLockedBackColor(Colors::Rgb c)
{
    m_lockedBack = c;
}

void BandwidthField::SetBackColor(Colors::Rgb c)
{
    m_backColor = c;
    SetLocked(m_locked);
}

void BandwidthField::applyColors()
{
    const Colors::Rgb c = !m_valid ? m_errorBack : m_locked ? m_lockedBack : Colors::White;
    if (c == m_background)
        return;
    m_background = c;
    emit backgroundChanged();
}

QString BandwidthField::PrecisionQuestion()
{
    return QStringLiteral("Bei dieser Umwandlung entsteht ein Genauigkeitsverlust!\nTrotzdem umwandeln?");
}

bool BandwidthField::ConvertTo(const QString& unit, UserPrompt& prompt)
{
    if (unit.toLower() == m_unit.toLower())
        return false;
    qint32 result = 0;
    bool inexact = false;
    try {
        const auto number = Numbers::ParseNumber(m_value);
        if (!number)
            throw QoSError::typeMismatch(m_value);
        const double r = UnitConversion::ConvertUnit(*number, m_unit, unit, inexact);
        result = Numbers::RoundToInt32(r);
    } catch (const QoSError& e) {
        prompt.Message(QStringLiteral("Umwandlung nicht möglich.\n%1").arg(e.message()),
                       UserPrompt::Icon::Critical);
        return false;
    }
    if (inexact && !prompt.AskYesNo(PrecisionQuestion(), UserPrompt::Icon::Question))
        return false;
    m_value = QString::number(result); // one Change for the whole command, below
    m_unit = unit;
    emit valueChanged(m_value);
    emit unitChanged(m_unit);
    changed();
    return true;
}

bool BandwidthField::Relabel(const QString& unit)
{
    if (unit == m_unit)
        return false;
    SetUnit(unit);
    changed();
    return true;
}

bool BandwidthField::AcceptsKey(QChar c)
{
    const char16_t u = c.unicode();
    return (u >= u'0' && u <= u'9') || u == 8 || u == 3 || u == 22 || u == 24;
}
