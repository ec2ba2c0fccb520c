#include "qosclassbox.h"

#include "boxmetrics.h"
#include "check/bandwidthexplanation.h"
#include "check/validationwatcher.h"
#include "inputs/inputbandwidth.h"
#include "inputs/inputprio.h"
#include "model/qosclass.h"
#include "page/objectpageview.h"
#include "page/tittlebar.h"
#include "plugbottom.h"

#include <QFrame>
#include <QLabel>
#include <QToolButton>

QoSClassBox::QoSClassBox(QoSClass* qosClass, ObjectPageView* view, QWidget* parent)
    : QoSObjectBox(qosClass, view, parent), m_txtMin(new InputBandwidth(qosClass->MinField(), this)),
      m_txtMax(new InputBandwidth(qosClass->MaxField(), this)),
      m_txtPrio(new InputPrio(qosClass->PrioInput(), this)), m_lblDirection(new QLabel(this)),
      m_cmdCheck(new QToolButton(this)), m_cmdCalc(new QToolButton(this)),
      m_plug(new PlugBottom(qosClass, this)), m_fraDefaultClass{new QFrame(this), new QFrame(this)}
{
    const BoxMetrics& m = metrics();
    const QSize size = m.classBox();
    resize(size);
    const int right = m.titleOffset + m.titleWidth;

    m_txtMin->setObjectName(QStringLiteral("txtMin"));
    m_txtMax->setObjectName(QStringLiteral("txtMax"));
    const int bandwidthWidth = m.fieldWidth() - m.gap - m.buttonWidth;
    for (InputBandwidth* field : {m_txtMin, m_txtMax})
        field->setNumberDigits(m.bandwidthDigits);
    m_txtMin->setLabel(QStringLiteral("Minimum"));
    m_txtMax->setLabel(QStringLiteral("Maximum"));
    m_txtMin->setGeometry(m.fieldLeft(), m.rowTop(0), bandwidthWidth, m.rowHeight);
    m_txtMax->setGeometry(m.fieldLeft(), m.rowTop(1), bandwidthWidth, m.rowHeight);

    m_cmdCheck->setObjectName(QStringLiteral("cmdCheck"));
    m_cmdCheck->setText(QStringLiteral("✓"));
    m_cmdCheck->setToolTip(QStringLiteral("Bandbreiten prüfen"));
    m_cmdCheck->setAccessibleName(QStringLiteral("Prüfen"));
    m_cmdCheck->setGeometry(right - m.buttonWidth, m.rowTop(0), m.buttonWidth, m.rowHeight);
    m_cmdCalc->setObjectName(QStringLiteral("cmdCalc"));
    m_cmdCalc->setText(QStringLiteral("="));
    m_cmdCalc->setToolTip(QStringLiteral("Rechner"));
    m_cmdCalc->setAccessibleName(QStringLiteral("Rechner"));
    m_cmdCalc->setGeometry(right - m.buttonWidth, m.rowTop(1), m.buttonWidth, m.rowHeight);

    m_txtPrio->setObjectName(QStringLiteral("txtPrio"));
    m_txtPrio->setAccessibleName(QStringLiteral("Priorität"));
    m_txtPrio->setGeometry(m.fieldLeft(), m.rowTop(2), m_txtPrio->sizeHint().width(), m.rowHeight);
    m_lblDirection->setObjectName(QStringLiteral("lblDirection"));
    m_lblDirection->setAlignment(Qt::AlignCenter);
    m_lblDirection->setFrameShape(QFrame::StyledPanel);
    m_lblDirection->setToolTip(QStringLiteral("Richtung"));
    m_lblDirection->setAccessibleDescription(QStringLiteral("Richtung"));
    m_lblDirection->setGeometry(right - m.directionWidth, m.rowTop(2), m.directionWidth, m.rowHeight);

    m_plug->setGeometry((size.width() - m.plugWidth) / 2, m.rowTop(3), m.plugWidth, m.plugHeight);

    // The default-class mark: two bars along the box's sides, in a colour no other part uses.
    for (int i = 0; i < 2; ++i) {
        QFrame* mark = m_fraDefaultClass[size_t(i)];
        mark->setObjectName(QStringLiteral("fraDefaultClass"));
        mark->setProperty("Index", i);
        mark->setAutoFillBackground(true);
        QPalette p = mark->palette();
        p.setColor(QPalette::Window, QColor(0xD0, 0x8A, 0x00));
        mark->setPalette(p);
        mark->setToolTip(QStringLiteral("Standardklasse"));
        mark->setAccessibleName(QStringLiteral("Standardklasse"));
        mark->setGeometry(i == 0 ? 0 : size.width() - 3, 0, 3, size.height());
    }

    connect(m_cmdCheck, &QToolButton::clicked, this, &QoSClassBox::check);
    // The calculator button has no action of its own.
    connect(qosClass, &QoSObject::propertyChanged, this, &QoSClassBox::showProperty);
    showProperty(QStringLiteral("QoSDirection"));
    showProperty(QStringLiteral("DefaultClass"));
    followExplanations();
    finishChildren();
    for (QFrame* mark : m_fraDefaultClass)
        mark->raise();
}

QoSClass* QoSClassBox::qosClass() const
{
    return qobject_cast<QoSClass*>(m_object.data());
}

void QoSClassBox::setPrompt(UserPrompt* prompt)
{
    m_title->setPrompt(prompt);
    m_txtMin->setPrompt(prompt);
    m_txtMax->setPrompt(prompt);
}

void QoSClassBox::setStatusLine(StatusLine* line)
{
    m_txtMin->setStatusLine(line);
    m_txtMax->setStatusLine(line);
}

QStringList QoSClassBox::rowLabels() const
{
    return {QStringLiteral("Min"), QStringLiteral("Max"), QStringLiteral("Prio")};
}

QColor QoSClassBox::background() const
{
    // Classes carry a tint of the selection colour, so that they stand apart from filters.
    const QColor window = palette().color(QPalette::Window);
    const QColor tint = palette().color(QPalette::Highlight);
    return QColor::fromRgbF(window.redF() * 0.9f + tint.redF() * 0.1f,
                            window.greenF() * 0.9f + tint.greenF() * 0.1f,
                            window.blueF() * 0.9f + tint.blueF() * 0.1f);
}

void QoSClassBox::showProperty(const QString& name)
{
    QoSClass* c = qosClass();
    if (!c)
        return;
    if (name == u"QoSDirection") {
        // A screen reader reads the direction itself; the description says what it is.
        m_lblDirection->setText(c->QoSDirection());
        m_lblDirection->setAccessibleName(c->QoSDirection().isEmpty() ? QStringLiteral("Richtung")
                                                                      : c->QoSDirection());
    } else if (name == u"DefaultClass") {
        for (QFrame* mark : m_fraDefaultClass)
            mark->setVisible(c->DefaultClass());
    }
}

void QoSClassBox::followExplanations()
{
    QoSClass* c = qosClass();
    for (BandwidthField* field : {c->MinField(), c->MaxField()})
        connect(field, &BandwidthField::validChanged, this, &QoSClassBox::showExplanations);
    // A field stays red while a sibling, the parent or a line speed changes what it has to
    // say; every such change has the watcher check the field's group again.
    if (m_view && m_view->validationWatcher())
        connect(m_view->validationWatcher(), &ValidationWatcher::groupChecked, this,
                [this](const QList<QoSClass*>& group) {
                    QoSClass* c = qosClass();
                    if (c && (!c->MinField()->IsValid() || !c->MaxField()->IsValid()) && group.contains(c))
                        showExplanations();
                });
    showExplanations();
}

void QoSClassBox::showExplanations()
{
    if (const QoSClass* c = qosClass()) {
        m_txtMin->setExplanation(ExplainBandwidth(*c, BandwidthSide::Minimum));
        m_txtMax->setExplanation(ExplainBandwidth(*c, BandwidthSide::Maximum));
    }
}

void QoSClassBox::check()
{
    if (QoSClass* c = qosClass())
        c->CheckCommand();
}
