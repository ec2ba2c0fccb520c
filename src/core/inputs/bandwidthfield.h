#pragma once

#include "inputs/colors.h"

#include "base/watched.h"

#include <QObject>

#include <QString>
#include <functional>
#include <optional>

class QoSError;
class UserPrompt;

// The value behind a bandwidth input: a number part and a unit part, joined without a
// blank ("768kbit", "10Mbit"). It never judges the value; the host sets IsValid.
class BandwidthField : public QObject
{
    Q_OBJECT
    TARNWICK_WATCHED
public:
    explicit BandwidthField(QObject* parent = nullptr);

    QString Value() const { return m_value; }
    // The number part as the user typed it. A number that does not round into 32 bits is
    // refused: the field keeps its value and an overflow QoSError says why.
    void SetValue(const QString& number);
    QString Unit() const { return m_unit; }
    void SetUnit(const QString& unit);

    // Number part and unit part joined, or the text as it was set when joining the two would
    // read as another number ("1.5Mbit" shows 2 and the unit "1.5Mbit"): such a text is kept
    // until the user changes the field, so that saving never changes a bandwidth.
    QString Bandwidth() const { return m_kept.isEmpty() ? m_value + m_unit : m_kept; }
    // Splits a text into number and unit. A leading number that does not fit a double or
    // does not round into 32 bits is refused: the field keeps its value and an overflow
    // QoSError says why.
    void SetBandwidth(const QString& text);
    static QoSError OutOfRange(const QString& text);

    // The value in kbit, rounded halves to even. Throws an overflow QoSError beyond 32 bits;
    // a number part that is no number counts by its leading number (an empty box is 0).
    qint32 kbit() const;
    // The same, with nothing beyond 32 bits: for callers that name an overflow or pass over it.
    std::optional<qint32> TryKbit() const;
    // Writes a kbit value back in the current unit. The unit is compared case-sensitively,
    // so a unit with capitals ("Mbit") gives 0: kept, callers depend on it.
    void SetKbit(qint32 k);

    bool Locked() const { return m_locked; }
    void SetLocked(bool locked);
    bool ShowLock() const { return m_showLock; }
    void SetShowLock(bool show);
    bool IsValid() const { return m_valid; }
    void SetIsValid(bool valid);

    Colors::Rgb ErrorBackColor() const { return m_errorBack; }
    void SetErrorBackColor(Colors::Rgb c);
    Colors::Rgb ErrorTextColor() const { return m_errorText; }
    void SetErrorTextColor(Colors::Rgb c) { m_errorText = c; }
    Colors::Rgb LockedBackColor() const { return m_lockedBack; }
    void SetLockedBackColor(Colors::Rgb c);
    Colors::Rgb LockedTextColor() const { return m_lockedText; }
    void SetLockedTextColor(Colors::Rgb c) { m_lockedText = c; }
    Colors::Rgb BackColor() const { return m_backColor; }
    void SetBackColor(Colors::Rgb c);

    // Background of the number box as last applied by Locked or IsValid: error colour when
    // not valid, else the locked colour when locked, else plain white (not BackColor).
    // Setting one of the colours alone does not repaint; the next Locked or IsValid does.
    Colors::Rgb NumberBackground() const { return m_background; }

    // A locked field keeps its value: its number box takes no edits and its unit menu does
    // not open. What else the lock means is the host's business.
    bool TakesEdits() const { return !m_locked; }
    bool UnitMenuAllowed() const { return !m_locked; }

    // "Umwandeln zu...": converts the number into another unit. Asks before losing
    // precision; an overflow or a number part that is no number is reported and leaves
    // the field as it was. Returns true when the field changed; a locked field never does.
    bool ConvertTo(const QString& unit, UserPrompt& prompt);
    // Relabels the unit without touching the number. Returns true when it changed; a locked
    // field never does.
    bool Relabel(const QString& unit);

    // Key filter of the number box: digits, backspace and Ctrl+C/V/X.
    static bool AcceptsKey(QChar c);

    static QString PrecisionQuestion();

    // The owner of the value (a class or a filter) hears of every change before the views,
    // without a signal connection per object.
    void SetOwnerHook(std::function<void()> hook) { m_ownerHook = std::move(hook); }

signals:
    void Change();
    void valueChanged(const QString& value);
    void unitChanged(const QString& unit);
    void lockedChanged(bool locked);
    void showLockChanged(bool show);
    void validChanged(bool valid);
    void backgroundChanged();

private:
    void applyColors();

    void setValue(const QString& number);
    void setUnit(const QString& unit);

    QString m_value = QStringLiteral("0");
    QString m_unit = QStringLiteral("kbit");
    QString m_kept;
    bool m_locked = false;
    bool m_showLock = true;
    bool m_valid = true;
    Colors::Rgb m_errorBack = Colors::LightRed;
    Colors::Rgb m_errorText = Colors::Black;
    Colors::Rgb m_lockedBack = Colors::Silver;
    Colors::Rgb m_lockedText = Colors::Black;
    Colors::Rgb m_backColor = Colors::WindowBackground;
    Colors::Rgb m_background = Colors::White;

    void changed()
    {
        if (m_ownerHook)
            m_ownerHook();
        if (watched())
            emit Change();
    }
    std::function<void()> m_ownerHook;
};
