#include "base/writablevalue.h"

#include "base/windows1252.h"

WritableValue::Verdict WritableValue::Check(QStringView value, Place place)
{
    // Runs over every value of a file the writer writes: plain ASCII costs one pass.
    bool wide = false;
    for (qsizetype i = 0; i < value.size(); ++i) {
        const char16_t c = value[i].unicode();
        wide = wide || c >= 0x80;
        if (place == Place::Setting && (c == u'\'' || c == u'\r' || c == u'\n'))
            return {c == u'\'' ? Flaw::Quote : Flaw::LineBreak, i};
    }
    const qsizetype bad = wide ? Windows1252::FirstUnmappable(value) : -1;
    if (bad >= 0)
        return {Flaw::Unmappable, bad};
    return {};
}

QString WritableValue::Reason(QStringView value, const Verdict& verdict)
{
    switch (verdict.flaw) {
    case Flaw::Quote:
        return QStringLiteral(
            "enthält ein Hochkomma ('); so lässt sich der Wert nicht in qos.txt schreiben.");
    case Flaw::LineBreak:
        return QStringLiteral(
            "enthält einen Zeilenumbruch; so lässt sich der Wert nicht in qos.txt schreiben.");
    case Flaw::Unmappable: {
        // A character beyond the basic plane is named whole, not as half of its pair.
        const qsizetype length = value[verdict.at].isHighSurrogate() && verdict.at + 1 < value.size() ? 2 : 1;
        return QStringLiteral("enthält das Zeichen \"%1\", das qos.txt nicht kennt.")
            .arg(value.mid(verdict.at, length).toString());
    }
    case Flaw::None:
        break;
    }
    return QString();
}

QString WritableValue::PasteRefusal(QStringView text, Place place)
{
    const Verdict verdict = Check(text, place);
    if (verdict.writable())
        return QString();
    return QStringLiteral("Der Text wird nicht eingefügt: er ") + Reason(text, verdict);
}
