#include "inputtype.h"

#include "fieldbinding.h"
#include "pasteguard.h"
#include "typedkey.h"

#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>

InputType::InputType(QWidget* parent) : InputType(nullptr, parent) {}

InputType::InputType(TypeField* field, QWidget* parent)
    : QWidget(parent), m_txtType(new QLineEdit(this)), m_cmdType(new QToolButton(this)),
      m_mnuType(new QMenu(this))
{
    m_txtType->setObjectName(QStringLiteral("txtType"));
    m_txtType->setAccessibleName(QStringLiteral("Typ"));
    m_txtType->setToolTip(QStringLiteral("Typ: leer, client oder server (Doppelklick wechselt)"));
    // Before the field's own filter, which runs first and keeps the type menu.
    new PasteGuard(m_txtType, [this](const QString& text) { m_field->Paste(text); });
    m_txtType->installEventFilter(this);
    m_cmdType->setObjectName(QStringLiteral("cmdType"));
    m_cmdType->setArrowType(Qt::DownArrow);
    m_cmdType->setAccessibleName(QStringLiteral("Typ wechseln"));
    m_cmdType->setToolTip(QStringLiteral("Typ wechseln"));
    m_cmdType->setFocusPolicy(Qt::NoFocus);
    m_mnuType->setObjectName(QStringLiteral("mnuType"));
    for (const QString& caption : TypeField::MenuCaptions()) {
        QAction* item = m_mnuType->addAction(caption);
        item->setObjectName(QStringLiteral("itmType"));
        connect(item, &QAction::triggered, this, [this, caption] { m_field->Choose(caption); });
    }

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_txtType, 1);
    layout->addWidget(m_cmdType);

    connect(m_cmdType, &QToolButton::clicked, this, [this] { m_field->Step(); });
    connect(m_txtType, &QLineEdit::textEdited, this, [this](const QString& t) { m_field->SetText(t); });
    setFocusProxy(m_txtType);
    setField(field);
}

void InputType::setField(TypeField* field)
{
    bindField(this, m_field, field, m_own);
    connect(m_field, &TypeField::Change, this, &InputType::showText);
    connect(m_field, &TypeField::Change, this, &InputType::Change);
    showText();
}

void InputType::showText()
{
    if (m_txtType->text() != m_field->Text())
        m_txtType->setText(m_field->Text());
}

bool InputType::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_txtType)
        return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::MouseButtonDblClick:
        m_field->Step();
        return true;
    case QEvent::KeyPress:
        return !TypeField::TakesCharacter(TypedCharacter(static_cast<QKeyEvent*>(event)));
    case QEvent::ContextMenu: {
        auto* menuEvent = static_cast<QContextMenuEvent*>(event);
        m_mnuType->popup(menuEvent->globalPos());
        return true;
    }
    default:
        return false;
    }
}
