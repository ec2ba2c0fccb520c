#include "inputport.h"

#include "app/dialogprompt.h"
#include "fieldbinding.h"
#include "pasteguard.h"
#include "statusnotice.h"
#include "typedkey.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>

InputPort::InputPort(QWidget* parent) : InputPort(nullptr, parent) {}

InputPort::InputPort(PortField* field, QWidget* parent)
    : QWidget(parent), m_txtPort(new QLineEdit(this)), m_lblFilterCount(new QLabel(this))
{
    m_txtPort->setObjectName(QStringLiteral("txtPort"));
    m_txtPort->setToolTip(QStringLiteral("Port: z.B.: 21"));
    m_txtPort->setAccessibleName(QStringLiteral("Port"));
    m_txtPort->setAccessibleDescription(QStringLiteral("z.B.: 21 oder 21,80,6000-6010"));
    m_txtPort->installEventFilter(this);
    m_lblFilterCount->setObjectName(QStringLiteral("lblFilterCount"));
    m_lblFilterCount->setAccessibleDescription(QStringLiteral("Anzahl Ports"));
    m_lblFilterCount->setToolTip(QStringLiteral("Anzahl Ports"));
    m_lblFilterCount->setAlignment(Qt::AlignCenter);
    m_lblFilterCount->setMinimumWidth(
        m_lblFilterCount->fontMetrics().horizontalAdvance(QStringLiteral("000")) + 8);
    m_lblFilterCount->setFrameShape(QFrame::StyledPanel);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(m_txtPort, 1);
    layout->addWidget(m_lblFilterCount);

    connect(m_txtPort, &QLineEdit::textEdited, this, [this](const QString& t) {
        if (m_field->TrySetPort(t) == PortField::SetResult::TooManyPorts) {
            RevertEdit(m_txtPort, m_field->Port());
            showTooManyPorts();
        }
    });
    new PasteGuard(m_txtPort,
                   [this](const QString& text) { PasteGuard::InsertWritable(m_txtPort, text, m_prompt); });
    setFocusProxy(m_txtPort);
    setField(field);
}

void InputPort::setField(PortField* field)
{
    bindField(this, m_field, field, m_own);
    connect(m_field, &PortField::Change, this, &InputPort::showPort);
    connect(m_field, &PortField::Change, this, &InputPort::Change);
    showPort();
}

void InputPort::showPort()
{
    if (m_txtPort->text() != m_field->Port())
        m_txtPort->setText(m_field->Port());
    m_lblFilterCount->setText(QString::number(m_field->count()));
    m_lblFilterCount->setAccessibleName(m_lblFilterCount->text());
    // One port plain, a few in bold, many in bold red: the file gets one entry per port.
    QFont font = m_lblFilterCount->font();
    font.setBold(m_field->Look() != PortField::CountLook::One);
    m_lblFilterCount->setFont(font);
    QPalette p = palette();
    if (m_field->Look() == PortField::CountLook::Many)
        p.setColor(QPalette::WindowText, QColor(0xB0, 0x00, 0x00));
    m_lblFilterCount->setPalette(p);
    if (m_field->CountFits() && m_field->count() <= PortField::MaxPorts)
        clearTooManyPorts();
}

void InputPort::showTooManyPorts()
{
    ShowNotice(m_status, this, PortField::TooManyPortsText());
}

void InputPort::clearTooManyPorts()
{
    ClearNotice(m_status, this, PortField::TooManyPortsText());
}

bool InputPort::CheckLeave()
{
    // While the message is up, the field is not left either.
    if (m_complaining)
        return false;
    switch (m_field->CheckLeave()) {
    case PortField::LeaveResult::Ok:
        return true;
    case PortField::LeaveResult::TooManyPorts:
        m_txtPort->setFocus(Qt::OtherFocusReason);
        showTooManyPorts();
        return false;
    case PortField::LeaveResult::OutOfRange:
        m_complaining = true;
        m_txtPort->setFocus(Qt::OtherFocusReason);
        DialogPrompt::Tell(m_prompt, this, PortField::OutOfRangeText(), UserPrompt::Icon::None);
        m_txtPort->setFocus(Qt::OtherFocusReason);
        m_complaining = false;
        return false;
    }
    return true;
}

bool InputPort::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_txtPort)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress) {
        const QChar c = TypedCharacter(static_cast<QKeyEvent*>(event));
        return !c.isNull() && !PortField::AcceptsKey(c);
    }
    if (event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
            QTimer::singleShot(0, this, &InputPort::checkPorts);
    }
    return false;
}
