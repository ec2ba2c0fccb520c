#include "pasteguard.h"

#include "app/dialogprompt.h"
#include "base/writablevalue.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>

PasteGuard::PasteGuard(QLineEdit* edit, Rule rule) : QObject(edit), m_edit(edit), m_rule(std::move(rule))
{
    edit->installEventFilter(this);
}

bool PasteGuard::InsertWritable(QLineEdit* edit, const QString& text, UserPrompt* prompt)
{
    const QString refusal = WritableValue::PasteRefusal(text);
    if (!refusal.isEmpty()) {
        DialogPrompt::Tell(prompt, edit, refusal, UserPrompt::Icon::Warning);
        return false;
    }
    edit->insert(text);
    return true;
}

namespace {

// The paste entry of a line edit's own menu, known by its caption or by its shortcut, in
// whatever language the menu speaks.
bool isPasteEntry(const QAction* item)
{
    const QString text = item->text();
    const qsizetype tab = text.indexOf(u'\t');
    const QString caption = text.left(tab);
    const QString shortcut = tab < 0 ? QString() : text.mid(tab + 1);
    return caption == QCoreApplication::translate("QLineEdit", "&Paste") ||
           (!shortcut.isEmpty() &&
            shortcut == QKeySequence(QKeySequence::Paste).toString(QKeySequence::NativeText));
}

} // namespace

void PasteGuard::showMenu(const QPoint& globalPos)
{
    QMenu* menu = m_edit->createStandardContextMenu();
    menu->setObjectName(QStringLiteral("mnuEdit"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    // The box's own paste would insert the clipboard as it is.
    for (QAction* item : menu->actions()) {
        if (!isPasteEntry(item))
            continue;
        item->setObjectName(QStringLiteral("itmEditPaste"));
        disconnect(item, &QAction::triggered, m_edit, nullptr);
        connect(item, &QAction::triggered, this,
                [this] { m_rule(QGuiApplication::clipboard()->text(QClipboard::Clipboard)); });
    }
    menu->popup(globalPos);
}

bool PasteGuard::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_edit)
        return false;
    switch (event->type()) {
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(event)->matches(QKeySequence::Paste)) {
            if (!m_edit->isReadOnly())
                m_rule(QGuiApplication::clipboard()->text(QClipboard::Clipboard));
            return true;
        }
        return false;
    case QEvent::ContextMenu:
        showMenu(static_cast<QContextMenuEvent*>(event)->globalPos());
        return true;
    case QEvent::MouseButtonRelease: {
        // The selection of X11 desktops: the box would insert it at the caret.
        QClipboard* clipboard = QGuiApplication::clipboard();
        if (static_cast<QMouseEvent*>(event)->button() != Qt::MiddleButton || !clipboard->supportsSelection())
            return false;
        if (!m_edit->isReadOnly())
            m_rule(clipboard->text(QClipboard::Selection));
        return true;
    }
    case QEvent::Drop: {
        auto* drop = static_cast<QDropEvent*>(event);
        if (m_edit->isReadOnly() || !drop->mimeData()->hasText())
            return false;
        // The box's drop caret goes as it would after its own drop; the text goes in where it
        // was dropped, as a copy.
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(m_edit, &leave);
        m_edit->setCursorPosition(m_edit->cursorPositionAt(drop->position().toPoint()));
        drop->setDropAction(Qt::CopyAction);
        drop->accept();
        m_edit->setFocus(Qt::OtherFocusReason);
        m_rule(drop->mimeData()->text());
        return true;
    }
    default:
        return false;
    }
}
