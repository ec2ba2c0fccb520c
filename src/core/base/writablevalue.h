#pragma once

#include <QString>
#include <QStringView>

// Whether a value can go into qos.txt as it is. A setting stands between two single quotes on a
// line of its own, in the router's code page: a quote or a line break would cut it when the file
// is read again, and a character the code page lacks would become "?". The writer refuses such a
// value, and the fields refuse it where it is pasted, with the same reason.
namespace WritableValue {

enum class Place {
    Setting, // NAME='value' on one line
    Comment, // the description's lines behind "#": only the code page matters
};

enum class Flaw { None, Quote, LineBreak, Unmappable };

struct Verdict
{
    Flaw flaw = Flaw::None;
    qsizetype at = -1; // the offending character
    bool writable() const { return flaw == Flaw::None; }
};

// A quote or a line break anywhere is found before a character outside the code page.
Verdict Check(QStringView value, Place place = Place::Setting);

// Why the value cannot be written, as a sentence that follows its subject: "enthält ein
// Hochkomma ('); so lässt sich der Wert nicht in qos.txt schreiben."
QString Reason(QStringView value, const Verdict& verdict);

// The refusal of a pasted text, or an empty text when it may be pasted.
QString PasteRefusal(QStringView text, Place place = Place::Setting);

} // namespace WritableValue
