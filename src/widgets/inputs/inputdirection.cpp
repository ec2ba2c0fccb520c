#include "inputdirection.h"

#include "fieldbinding.h"

#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QVBoxLayout>

InputDirection::InputDirection(QWidget* parent) : InputDirection(nullptr, parent) {}

InputDirection::InputDirection(DirectionField* field, QWidget* parent)
    : QWidget(parent), m_lblDirection(new QLabel(this))
{
    m_lblDirection->setObjectName(QStringLiteral("lblDirection"));
    m_lblDirection->setAlignment(Qt::AlignCenter);
    m_lblDirection->setFrameShape(QFrame::StyledPanel);
    m_lblDirection->setCursor(Qt::PointingHandCursor);
    m_lblDirection->setFocusPolicy(Qt::TabFocus);
    m_lblDirection->setAccessibleDescription(QStringLiteral("Richtung"));
    m_lblDirection->setToolTip(QStringLiteral("Richtung (Klick wechselt)"));
    m_lblDirection->installEventFilter(this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_lblDirection);
    setFocusProxy(m_lblDirection);
    setField(field);
}

void InputDirection::setField(DirectionField* field)
{
    bindField(this, m_field, field, m_own);
    connect(m_field, &DirectionField::textChanged, this, &InputDirection::showText);
    connect(m_field, &DirectionField::Change, this, &InputDirection::Change);
    showText();
}

void InputDirection::showText()
{
    m_lblDirection->setText(m_field->Text());
    m_lblDirection->setAccessibleName(m_field->Text().isEmpty() ? QStringLiteral("Richtung")
                                                                : m_field->Text());
}

bool InputDirection::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_lblDirection)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::MouseButtonRelease) {
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::LeftButton &&
            m_lblDirection->rect().contains(mouse->position().toPoint())) {
            m_field->Click();
            return true;
        }
    } else if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter) {
            m_field->Click();
            return true;
        }
    }
    return false;
}
