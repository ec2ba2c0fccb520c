#pragma once

#include "base/watched.h"

#include <QObject>

#include <QString>
#include <functional>
#include <optional>

// The value behind the address input: a dotted address and optional mask bits.
// Text is "address" or "address/bits" when the bits read as a number above 0.
class IpField : public QObject
{
    Q_OBJECT
    TARNWICK_WATCHED
public:
    enum class KeyAction { Accept, Discard, Paste, FocusMask };

    explicit IpField(QObject* parent = nullptr);

    QString Address() const { return m_address; }
    void SetAddress(const QString& address);
    QString MaskBits() const { return m_mask; }
    void SetMaskBits(const QString& bits);

    // Throws an overflow QoSError only for mask bits too long for any number.
    QString Text() const;
    // The same, with nothing for such mask bits.
    std::optional<QString> TryText() const;
    void SetText(const QString& text);

    // Key filter of the address box. text is the box's text, the selection is replaced by key.
    static KeyAction FilterAddressKey(const QString& text, int selectionStart, int selectionLength,
                                      QChar key);
    // Key filter of the mask box: digits, backspace, Ctrl+X and Ctrl+C.
    static bool AcceptsMaskKey(QChar key);
    // The check when the focus leaves the address box; an empty box passes.
    static bool IsValidAddress(const QString& address);
    static QString InvalidAddressMessage();

    // The owner of the value (a class or a filter) hears of every change before the views,
    // without a signal connection per object.
    void SetOwnerHook(std::function<void()> hook) { m_ownerHook = std::move(hook); }

signals:
    void Change();

private:
    QString m_address;
    QString m_mask;

    void changed()
    {
        if (m_ownerHook)
            m_ownerHook();
        if (watched())
            emit Change();
    }
    std::function<void()> m_ownerHook;
};
