#pragma once

#include "inputs/colors.h"

#include "base/watched.h"

#include <QObject>
#include <QString>
#include <functional>

// The value behind the priority input: a single digit 0 to 3, or empty for "no priority".
// The text is never typed as such; keys and the two buttons step or replace it.
class PrioField : public QObject
{
    Q_OBJECT
    TARNWICK_WATCHED
public:
    explicit PrioField(QObject* parent = nullptr);

    QString Value() const { return m_value; }
    void SetValue(const QString& value);

    // Step up or down with wrap-around (3 -> 0, 0 -> 3), starting from the numeric value of
    // the text, so an empty text counts as 0.
    void Increment();
    void Decrement();
    // Delete, Backspace and Space empty the box.
    void Clear() { SetValue(QString()); }
    // A typed character: "+" and "-" step, "0" to "3" replace the text, anything else is dropped.
    void TypeCharacter(QChar c);
    // A pasted text takes only what typing could: each character as if typed, in order, with
    // one change at the end ("1hello" gives "1", "2+" gives "3").
    void Paste(QStringView text);
    static bool ClearsOnKey(int key);

    Colors::Rgb BackColor() const { return m_backColor; }
    void SetBackColor(Colors::Rgb c);
    Colors::Rgb ForeColor() const { return m_foreColor; }
    void SetForeColor(Colors::Rgb c);
    bool Enabled() const { return m_enabled; }
    void SetEnabled(bool enabled);
    int BorderStyle() const { return m_borderStyle; } // 0 none, 1 single
    void SetBorderStyle(int style);

    // The owner of the value (a class) hears of every change before the views.
    void SetOwnerHook(std::function<void()> hook) { m_ownerHook = std::move(hook); }

signals:
    void Change();
    void appearanceChanged();

private:
    static QString stepped(const QString& value, int delta);
    static QString typed(const QString& value, QChar c);

    QString m_value = QStringLiteral("0");
    Colors::Rgb m_backColor = Colors::WindowBackground;
    Colors::Rgb m_foreColor = Colors::WindowText;
    bool m_enabled = true;
    int m_borderStyle = 1;
    std::function<void()> m_ownerHook;
};
