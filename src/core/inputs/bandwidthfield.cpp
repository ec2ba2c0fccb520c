#include "inputs/bandwidthfield.h"

#include "base/numbers.h"
#include "base/qoserror.h"
#include "base/unitconversion.h"
#include "base/userprompt.h"

BandwidthField::BandwidthField(QObject* parent) : QObject(parent) {}

QoSError BandwidthField::OutOfRange(const QString& text)
{
    return QoSError(
        QoSError::Kind::Overflow,
        QStringLiteral("Die Bandbreite '%1' liegt außerhalb des Zahlenbereichs von -2147483648 bis "
                       "2147483647.")
            .arg(text.size() > 60 ? text.left(60) + u'…' : text));
}

void BandwidthField::SetValue(const QString& number)
{
    if (!Numbers::TryLeadingInt32(number))
        throw OutOfRange(number);
    m_kept.clear();
    setValue(number);
}

void BandwidthField::setValue(const QString& number)
{
    if (number == m_value)
        return;
    m_value = number;
    if (watched())
        emit valueChanged(m_value);
    changed();
}

void BandwidthField::SetUnit(const QString& unit)
{
    m_kept.clear();
    setUnit(unit);
}

void BandwidthField::setUnit(const QString& unit)
{
    if (unit == m_unit)
        return;
    m_unit = unit;
    if (watched())
        emit unitChanged(m_unit);
}

void BandwidthField::SetBandwidth(const QString& text)
{
    // The usual text, digits without a leading zero and then a unit that does not begin a
    // number ("768kbit"), splits at the end of its digits and joins back to itself.
    {
        const auto* p = reinterpret_cast<const char16_t*>(text.utf16());
        qsizetype i = 0;
        while (i < text.size() && i < 10 && p[i] >= u'0' && p[i] <= u'9')
            ++i;
        if (i > 0 && i < 10 && (p[0] != u'0' || i == 1) &&
            (i == text.size() || (p[i] != u'.' && (p[i] < u'0' || p[i] > u'9')))) {
            m_kept.clear();
            setValue(text.left(i));
            setUnit(i == text.size() ? QStringLiteral("kbit") : text.mid(i));
            return;
        }
    }
    const QString s = text.isEmpty() ? QStringLiteral("0kbit") : text;
    const std::optional<double> value = Numbers::TryLeadingValue(s);
    const std::optional<qint32> n = value ? Numbers::TryRoundToInt32(*value) : std::nullopt;
    if (!n)
        throw OutOfRange(s);
    const QString t = QString::number(*n);
    const qsizetype at = s.indexOf(t);
    QString unit = at < 0 ? s : s.mid(at + t.size());
    if (unit.isEmpty())
        unit = QStringLiteral("kbit");
    // Joined again, would the text still read as the same number?
    const bool same = Numbers::TryLeadingValue(QString(t + unit)) == value;
    m_kept = same ? QString() : s;
    setValue(t);
    setUnit(unit);
}

qint32 BandwidthField::kbit() const
{
    if (const std::optional<qint32> k = TryKbit())
        return *k;
    throw QoSError::overflow();
}

std::optional<qint32> BandwidthField::TryKbit() const
{
    const std::optional<double> value = Numbers::TryLeadingValue(m_value);
    return value ? Numbers::TryRoundToInt32(UnitConversion::KbitOf(*value, m_unit)) : std::nullopt;
}

void BandwidthField::SetKbit(qint32 k)
{
    if (m_unit.isEmpty())
        SetUnit(QStringLiteral("kbit"));
    bool inexact = false;
    m_kept.clear();
    setValue(Numbers::Format(UnitConversion::FromKbit(k, m_unit, inexact)));
}

void BandwidthField::SetLocked(bool locked)
{
    const bool changed = locked != m_locked;
    m_locked = locked;
    if (changed)
        if (watched())
            emit lockedChanged(m_locked);
    applyColors();
}

void BandwidthField::SetShowLock(bool show)
{
    if (show == m_showLock)
        return;
    m_showLock = show;
    if (watched())
        emit showLockChanged(show);
}

void BandwidthField::SetIsValid(bool valid)
{
    const bool changed = valid != m_valid;
    m_valid = valid;
    if (changed)
        if (watched())
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
    if (watched())
        emit backgroundChanged();
}

QString BandwidthField::PrecisionQuestion()
{
    return QStringLiteral("Bei dieser Umwandlung entsteht ein Genauigkeitsverlust!\nTrotzdem umwandeln?");
}

bool BandwidthField::ConvertTo(const QString& unit, UserPrompt& prompt)
{
    // A menu opened before the field was locked may still offer its commands.
    if (m_locked || unit.toLower() == m_unit.toLower())
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
    m_kept.clear();
    if (watched())
        emit valueChanged(m_value);
    if (watched())
        emit unitChanged(m_unit);
    changed();
    return true;
}

bool BandwidthField::Relabel(const QString& unit)
{
    if (m_locked || unit == m_unit)
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
