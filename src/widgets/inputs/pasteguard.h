#pragma once

#include <QObject>

#include <functional>

class QLineEdit;
class QPoint;
class UserPrompt;

// Sends every way of pasting into a line edit through the field's paste rule: Ctrl+V and
// Shift+Insert, the box's context menu, the middle mouse button and text dropped on the box.
// The rule gets the whole text and decides what the box takes; nothing reaches the box past it.
//
// It installs itself as an event filter on the box. Filters run newest first: a field whose own
// filter must see a key or the context menu before the guard makes the guard first.
class PasteGuard final : public QObject
{
    Q_OBJECT
public:
    using Rule = std::function<void(const QString& text)>;

    PasteGuard(QLineEdit* edit, Rule rule);

    // The rule of a box that takes any text the writer can write: a text it would refuse is
    // refused with the writer's reason (a warning), anything else is inserted as a paste is.
    // Returns whether the text went in.
    static bool InsertWritable(QLineEdit* edit, const QString& text, UserPrompt* prompt);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showMenu(const QPoint& globalPos);

    QLineEdit* m_edit;
    Rule m_rule;
};
