#pragma once

#include "base/watched.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>

// The value behind the filter type input: "", "client" or "server". The field steps
// through the three with a counter of its own. A filter owns one; the field keeps its counter
// for as long as the filter lives, whichever boxes come and go.
class TypeField : public QObject
{
    Q_OBJECT
    TARNWICK_WATCHED
public:
    explicit TypeField(QObject* parent = nullptr);

    QString Text() const { return m_text; }
    void SetText(const QString& text);

    // The button and a double click: the next of the three values. The counter is not
    // derived from the text, so after the host set "server" the next step still goes on
    // from the counter's own position.
    void Step();
    // The choices of the type menu.
    void Choose(const QString& caption) { SetText(caption); }
    // A choice, not free text: a pasted text is taken only when it names one of the menu's
    // choices (blanks around it aside), and otherwise changes nothing.
    void Paste(QStringView text);

    int Position() const { return m_position; }

    static const QStringList& Values();       // "", "client", "server"
    static const QStringList& MenuCaptions(); // "client", "server"

    // A choice, not free text: a typed character (a control code of an editing key aside)
    // never enters the box.
    static bool TakesCharacter(QChar c) { return c.unicode() < 32; }

    // The owner of the value (a filter) hears of every change before the views.
    void SetOwnerHook(std::function<void()> hook) { m_ownerHook = std::move(hook); }

signals:
    void Change();

private:
    QString m_text;
    int m_position = 0;
    std::function<void()> m_ownerHook;
};
