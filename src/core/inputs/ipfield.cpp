#include "inputs/ipfield.h"

#include "base/numbers.h"
#include "base/qoserror.h"

IpField::IpField(QObject* parent) : QObject(parent) {}

void IpField::SetAddress(const QString& address)
{
    if (address == m_address)
        return;
    m_address = address;
    changed();
}

void IpField::SetMaskBits(const QString& bits)
{
    if (bits == m_mask)
        return;
    m_mask = bits;
    changed();
}

QString IpField::Text() const
{
    if (std::optional<QString> text = TryText())
        return *std::move(text);
    throw QoSError::overflow();
}

std::optional<QString> IpField::TryText() const
{
    const std::optional<double> m = Numbers::TryLeadingValue(m_mask);
    if (!m)
        return std::nullopt;
    if (!(*m > 0))
        return m_address;
    return m_address + u'/' + Numbers::Format(*m);
}

void IpField::SetText(const QString& text)
{
    if (text.isEmpty()) {
        SetAddress(QString());
        SetMaskBits(QString());
        return;
    }
    // The address up to the first "/", the mask bits up to the second.
    const qsizetype slash = text.indexOf(u'/');
    if (slash < 0) {
        SetAddress(text);
        SetMaskBits(QString());
        return;
    }
    const qsizetype next = text.indexOf(u'/', slash + 1);
    SetAddress(text.left(slash));
    SetMaskBits(text.mid(slash + 1, next < 0 ? -1 : next - slash - 1));
}

IpField::KeyAction IpField::FilterAddressKey(const QString& text, int selectionStart, int selectionLength,
                                             QChar key)
{
    const char16_t k = key.unicode();
    selectionStart = qBound(0, selectionStart, int(text.size()));
    selectionLength = qBound(0, selectionLength, int(text.size()) - selectionStart);
    const QString after = text.left(selectionStart) + key + text.mid(selectionStart + selectionLength);
    if (k >= u'0' && k <= u'9') {
        const int caret = selectionStart; // the new digit stands here
        const qsizetype begin = after.lastIndexOf(u'.', caret) + 1;
        qsizetype end = after.indexOf(u'.', caret);
        if (end < 0)
            end = after.size();
        const QStringView octet = QStringView(after).mid(begin, end - begin);
        // A pasted octet too long for any number is no octet either.
        const std::optional<double> v = Numbers::TryLeadingValue(octet);
        return v && *v <= 255 ? KeyAction::Accept : KeyAction::Discard;
    }
    switch (k) {
    case u'.':
        return after.count(u'.') + 1 > 4 ? KeyAction::Discard : KeyAction::Accept;
    case 8:
    case 24:
    case 3:
        return KeyAction::Accept;
    case 22:
        return KeyAction::Paste;
    case u'/':
        return KeyAction::FocusMask;
    default:
        return KeyAction::Discard;
    }
}

bool IpField::AcceptsMaskKey(QChar key)
{
    const char16_t k = key.unicode();
    return (k >= u'0' && k <= u'9') || k == 8 || k == 24 || k == 3;
}

bool IpField::IsValidAddress(const QString& address)
{
    if (address.isEmpty())
        return true;
    const QStringList parts = address.split(u'.');
    if (parts.size() != 4)
        return false;
    for (int i = 0; i < 4; ++i) {
        if (i == 3 && parts[i].contains(u'/'))
            return false;
        const auto v = Numbers::ParseLooseNumber(parts[i]);
        if (!v || *v < 0 || *v > 255)
            return false;
    }
    return true;
}

QString IpField::InvalidAddressMessage()
{
    return QStringLiteral("Keine gültige IP!\n\nRichtiges Format:    123.123.123.123\n"
                          "bzw.:                       123.123.123.123/24");
}
