#include "qosfilterbox.h"

#include "boxmetrics.h"
#include "inputs/inputip.h"
#include "inputs/inputoption.h"
#include "inputs/inputport.h"
#include "inputs/inputtype.h"
#include "model/qosfilter.h"
#include "page/tittlebar.h"

#include <QEvent>
#include <QFocusEvent>
#include <QLineEdit>
#include <QMenu>

QoSFilterBox::QoSFilterBox(QoSFilter* filter, ObjectPageView* view, QWidget* parent)
    : QoSObjectBox(filter, view, parent), m_txtIP(new InputIP(filter->IpInput(), this)),
      m_inputPort1(new InputPort(filter->PortInput(), this)),
      m_txtType(new InputType(filter->TypeInput(), this)),
      m_txtOption(new InputOption(filter->OptionInput(), this))
{
    const BoxMetrics& m = metrics();
    resize(m.filterBox());
    m_txtIP->setObjectName(QStringLiteral("txtIP"));
    m_txtIP->setAccessibleName(QStringLiteral("IP-Adresse"));
    m_txtIP->setGeometry(m.fieldLeft(), m.rowTop(0), m.fieldWidth(), m.rowHeight);
    m_inputPort1->setObjectName(QStringLiteral("InputPort1"));
    m_inputPort1->setAccessibleName(QStringLiteral("Port"));
    m_inputPort1->setGeometry(m.fieldLeft(), m.rowTop(1), m.fieldWidth(), m.rowHeight);
    m_txtType->setObjectName(QStringLiteral("txtType"));
    m_txtType->setAccessibleName(QStringLiteral("Typ"));
    m_txtType->setGeometry(m.fieldLeft(), m.rowTop(2), m.typeWidth, m.rowHeight);
    m_txtOption->setObjectName(QStringLiteral("txtOption"));
    m_txtOption->setAccessibleName(QStringLiteral("Option"));
    const int optionLeft = m.fieldLeft() + m.typeWidth + m.gap;
    m_txtOption->setGeometry(optionLeft, m.rowTop(2), m.fieldLeft() + m.fieldWidth() - optionLeft,
                             m.rowHeight);
    // In a box an example address in grey reads like a value; the option field, which shares
    // the type's row and label, names itself while it is empty.
    if (auto* address = qobject_cast<QLineEdit*>(m_txtIP->focusProxy()))
        address->setPlaceholderText(QString());
    if (auto* option = qobject_cast<QLineEdit*>(m_txtOption->focusProxy()))
        option->setPlaceholderText(QStringLiteral("Option"));

    if (QWidget* typeBox = m_txtType->focusProxy())
        typeBox->installEventFilter(this);
    finishChildren();
}

QoSFilter* QoSFilterBox::filter() const
{
    return qobject_cast<QoSFilter*>(m_object.data());
}

void QoSFilterBox::setPrompt(UserPrompt* prompt)
{
    m_title->setPrompt(prompt);
    m_txtIP->setPrompt(prompt);
    m_inputPort1->setPrompt(prompt);
}

void QoSFilterBox::setStatusLine(StatusLine* line)
{
    m_inputPort1->setStatusLine(line);
}

QStringList QoSFilterBox::rowLabels() const
{
    return {QStringLiteral("IP"), QStringLiteral("Port"), QStringLiteral("Typ")};
}

void QoSFilterBox::addMenuEntries(QMenu* menu)
{
    QAction* item = menu->addAction(QStringLiteral("&Filtereigenschaften"));
    item->setObjectName(QStringLiteral("itmFilterProperties")); // offered, without an effect
}

bool QoSFilterBox::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_txtType->focusProxy() && event->type() == QEvent::FocusOut)
        if (QoSFilter* f = filter())
            f->TypeFieldLeft(static_cast<QFocusEvent*>(event)->reason());
    return QoSObjectBox::eventFilter(watched, event);
}
