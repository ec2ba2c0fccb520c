#include "findbar.h"

#include "frmmain.h"
#include "inputs/leavecheck.h"
#include "model/document.h"
#include "model/objectpage.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QToolButton>

FindBar::FindBar(frmMain* window)
    : QToolBar(QStringLiteral("Suchen"), window), m_window(window), m_search(window->document()),
      m_text(new QLineEdit(this))
{
    setObjectName(QStringLiteral("tbrFind"));
    setMovable(false);
    setFloatable(false);
    setAccessibleName(QStringLiteral("Suchleiste"));

    auto* label = new QLabel(QStringLiteral("Suchen &nach:"), this);
    label->setObjectName(QStringLiteral("lblFind"));
    label->setBuddy(m_text);
    label->setContentsMargins(4, 0, 4, 0);
    m_text->setObjectName(QStringLiteral("txtFind"));
    m_text->setAccessibleName(QStringLiteral("Suchen nach"));
    m_text->setPlaceholderText(QStringLiteral("Beschriftung, Adresse oder Port"));
    m_text->setToolTip(QStringLiteral("Enter: nächster Treffer, Umschalt+Enter: vorheriger, Esc: schließen"));
    m_text->setMaximumWidth(320);
    addWidget(label);
    addWidget(m_text);

    const auto button = [this](const char* name, const QString& text, QStyle::StandardPixmap icon,
                               auto slot) {
        QAction* a = addAction(style()->standardIcon(icon), text);
        a->setObjectName(QString::fromLatin1(name));
        a->setToolTip(text);
        connect(a, &QAction::triggered, this, slot);
        widgetForAction(a)->setAccessibleName(text);
        return a;
    };
    button("actFindNext", QStringLiteral("Nächster Treffer"), QStyle::SP_ArrowDown,
           [this] { FindNext(true); });
    button("actFindPrevious", QStringLiteral("Vorheriger Treffer"), QStyle::SP_ArrowUp,
           [this] { FindNext(false); });
    button("actFindClose", QStringLiteral("Suchleiste schließen"), QStyle::SP_DialogCloseButton,
           [this] { closeBar(); });

    connect(m_text, &QLineEdit::returnPressed, this,
            [this] { FindNext(!(QApplication::keyboardModifiers() & Qt::ShiftModifier)); });
    hide();
}

void FindBar::Open()
{
    if (!isVisible()) {
        if (!LeaveCheck::FocusedFieldLetsGo(m_window))
            return;
        m_returnFocus = QApplication::focusWidget();
        m_foundSinceOpen = false;
        if (m_text->text().isEmpty())
            m_text->setText(m_search.Text());
        show();
    }
    m_text->setFocus(Qt::ShortcutFocusReason);
    m_text->selectAll();
}

void FindBar::FindNext(bool forward)
{
    if (isVisible())
        m_search.SetText(m_text->text());
    if (m_search.Text().trimmed().isEmpty()) {
        Open();
        return;
    }
    Document& document = m_window->document();
    ObjectPage* page = m_window->CurrentPage();
    const ObjectSearch::Hit hit = m_search.Next(page ? page->SelectedObject() : nullptr, forward);
    if (hit.object) {
        // Showing the box selects it and gives it the focus; a field that may not be left keeps
        // it, has said why, and the search stays where it was.
        const bool typing = m_text->hasFocus();
        if (!m_window->ShowObject(hit.object))
            return;
        m_search.Found(hit.object);
        m_foundSinceOpen = true;
        if (typing)
            m_text->setFocus(Qt::OtherFocusReason);
    }
    document.SetStatusText(ObjectSearch::Message(hit, m_search.Text(), forward));
}

void FindBar::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
        closeBar();
        return;
    }
    QToolBar::keyPressEvent(event);
}

void FindBar::closeBar()
{
    m_search.SetText(m_text->text());
    // The focus goes before the bar hides: hiding would hand it on along the focus chain, to
    // whichever box stands next there, and select that box.
    ObjectPage* page = m_window->CurrentPage();
    QoSObject* found = m_foundSinceOpen && page ? page->SelectedObject() : nullptr;
    // Back to the box found last, where the user was looking; else to where the focus came from.
    if (found)
        m_window->ShowObject(found);
    else if (m_returnFocus && m_returnFocus->isVisible())
        m_returnFocus->setFocus(Qt::OtherFocusReason);
    else
        m_text->clearFocus();
    hide();
}
