#pragma once

#include "base/userprompt.h"

#include <QPointer>
#include <QWidget>

#include <functional>

// Asks the user with Qt dialogs: message boxes, an input box and the file dialogs.
// Every dialog carries the application's name as its title.
class DialogPrompt final : public UserPrompt
{
public:
    explicit DialogPrompt(QWidget* parent = nullptr) : m_parent(parent) {}

    void Message(const QString& text, Icon icon = Icon::None) override;
    bool AskYesNo(const QString& text, Icon icon = Icon::Question) override;
    Answer AskYesNoCancel(const QString& text, Icon icon = Icon::Question) override;
    QString InputBox(const QString& prompt, const QString& defaultText) override;
    std::optional<QString> OpenFileName(const QString& title, const QString& initialName,
                                        const QString& filter) override;
    std::optional<QString> SaveFileName(const QString& title, const QString& initialName,
                                        const QString& filter) override;

    // A widget that was given no prompt asks with dialogs of its own over parent: ask runs with
    // prompt, or with such dialogs when there is none.
    static void Ask(UserPrompt* prompt, QWidget* parent, const std::function<void(UserPrompt&)>& ask);
    // Tells the user a message in the same way.
    static void Tell(UserPrompt* prompt, QWidget* parent, const QString& text, Icon icon);

    static QString Title();
    // "Text (*.txt)|*.txt|Alle Dateien|*.*" as Qt writes it; a Qt filter passes unchanged.
    static QString QtFilter(const QString& filter);

private:
    QPointer<QWidget> m_parent;
};
