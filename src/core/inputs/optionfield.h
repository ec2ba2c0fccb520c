#pragma once

#include "base/watched.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>

// The value behind the filter option input: one of a fixed list, chosen from a menu or
// stepped with the arrow keys.
class OptionField : public QObject
{
    Q_OBJECT
    TARNWICK_WATCHED
public:
    enum class KeyResult { None, Emptied, Stepped, OpenMenu };

    explicit OptionField(QObject* parent = nullptr);

    QString Text() const { return m_text; }
    void SetText(const QString& text);

    void Choose(const QString& caption) { SetText(caption); }
    // A choice, not free text: a pasted text is taken only when it names one of the menu's
    // choices (blanks around it aside), and otherwise changes nothing.
    void Paste(QStringView text);

    // Key-down in the box (a Qt::Key and the modifiers held). A digit, a letter or Delete
    // empties the box; an arrow opens the menu with Alt alone, does nothing with any other
    // modifier and otherwise steps through the list without wrapping around.
    KeyResult KeyDown(int key, Qt::KeyboardModifiers modifiers);

    // Previous (-1) or next (+1) list entry. A text not in the list stands one past the last
    // entry, so both directions lead to the last one.
    void Step(int delta);

    static QString OptionList() { return QStringLiteral("ACK,ICMP,TOSMD,TOSMT,TOSMR,TOSMC"); }
    static const QStringList& Options();

    // A choice, not free text: a character that KeyDown left alone (a control code of an
    // editing key aside) never enters the box.
    static bool TakesCharacter(QChar c) { return c.unicode() < 32; }

    // The owner of the value (a filter) hears of every change before the views.
    void SetOwnerHook(std::function<void()> hook) { m_ownerHook = std::move(hook); }

signals:
    void Change();

private:
    QString m_text;
    std::function<void()> m_ownerHook;
};
