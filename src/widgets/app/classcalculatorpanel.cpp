#include "classcalculatorpanel.h"

#include "inputs/inputbandwidth.h"
#include "model/classcalculator.h"
#include "model/qosclass.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

QLineEdit* figure(const QString& name, const QString& accessibleName, QWidget* parent)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    edit->setReadOnly(true);
    edit->setAlignment(Qt::AlignRight);
    edit->setAccessibleName(accessibleName);
    edit->setMinimumWidth(edit->fontMetrics().horizontalAdvance(QStringLiteral("-2147483648 kbit")) + 12);
    return edit;
}

// The colour of a figure that warns.
const QColor Overbooked(0xc0, 0, 0);

QToolButton* moveButton(const QString& name, QStyle::StandardPixmap pixmap, const QString& tip,
                        QWidget* parent)
{
    auto* b = new QToolButton(parent);
    b->setObjectName(name);
    b->setIcon(parent->style()->standardIcon(pixmap));
    b->setToolTip(tip);
    b->setAccessibleName(tip);
    return b;
}

} // namespace

ClassCalculatorPanel::ClassCalculatorPanel(ClassCalculator* calculator, QWidget* parent)
    : QWidget(parent), m_calc(calculator), m_lblClass(new QLabel(this)),
      m_txtParentMax(
          figure(QStringLiteral("txtParentMax"), QStringLiteral("Maximum der Elternklasse"), this)),
      m_txtUsesMin(figure(QStringLiteral("txtUsesMin"), QStringLiteral("Vergebene Minima"), this)),
      m_lblAvailMin(new QPushButton(QStringLiteral("Verfügbar:"), this)),
      m_txtAvailableMin(figure(QStringLiteral("txtAvailableMin"), QStringLiteral("Verfügbar"), this)),
      m_lblFreeMin(new QPushButton(QStringLiteral("Frei für diese Klasse:"), this)),
      m_txtFreeMin(figure(QStringLiteral("txtFreeMin"), QStringLiteral("Frei für diese Klasse"), this)),
      m_txtNewMin(new InputBandwidth(calculator->NewMin(), this)),
      m_txtNewMinAfter(figure(QStringLiteral("txtNewMinAfter"), QStringLiteral("Danach frei"), this)),
      m_chlAutoApply(new QCheckBox(QStringLiteral("Vor dem Wechsel automatisch übernehmen"), this)),
      m_cmdApply(new QPushButton(QStringLiteral("Ü&bernehmen"), this)),
      m_cmdMoveUp(moveButton(QStringLiteral("cmdMoveUp"), QStyle::SP_ArrowUp,
                             QStringLiteral("Zur übergeordneten Klasse"), this)),
      m_cmdMoveDown(moveButton(QStringLiteral("cmdMoveDown"), QStyle::SP_ArrowDown,
                               QStringLiteral("Zur ersten Unterklasse"), this)),
      m_cmdMoveLeft(moveButton(QStringLiteral("cmdMoveLeft"), QStyle::SP_ArrowLeft,
                               QStringLiteral("Zur vorigen Klasse derselben Ebene"), this)),
      m_cmdMoveRight(moveButton(QStringLiteral("cmdMoveRight"), QStyle::SP_ArrowRight,
                                QStringLiteral("Zur nächsten Klasse derselben Ebene"), this))
{
    setObjectName(QStringLiteral("ClassCalculator1"));
    setAccessibleName(QStringLiteral("Klassenrechner"));
    m_lblClass->setObjectName(QStringLiteral("lblClass"));
    m_lblClass->setAccessibleDescription(QStringLiteral("Klasse im Klassenrechner"));
    m_lblClass->setWordWrap(true);
    for (QPushButton* copy : {m_lblAvailMin, m_lblFreeMin}) {
        copy->setFlat(true);
        copy->setToolTip(QStringLiteral("Klicken: als neues Minimum übernehmen"));
        copy->setCursor(Qt::PointingHandCursor);
        copy->setAccessibleDescription(copy->toolTip());
        copy->setStyleSheet(
            QStringLiteral("text-align: left; text-decoration: underline; padding: 0px 2px;"));
    }
    m_lblAvailMin->setObjectName(QStringLiteral("lblAvailMin"));
    m_lblAvailMin->setAccessibleName(QStringLiteral("Verfügbar übernehmen"));
    m_lblFreeMin->setObjectName(QStringLiteral("lblFreeMin"));
    m_lblFreeMin->setAccessibleName(QStringLiteral("Frei übernehmen"));
    m_txtNewMin->setObjectName(QStringLiteral("txtNewMin"));
    m_txtNewMin->setLabel(QStringLiteral("Neues Minimum"));
    m_chlAutoApply->setObjectName(QStringLiteral("chlAutoApply"));
    m_chlAutoApply->setAccessibleName(m_chlAutoApply->text());
    m_cmdApply->setObjectName(QStringLiteral("cmdApply"));
    m_cmdApply->setToolTip(QStringLiteral("Neues Minimum in die Klasse übernehmen"));

    auto* form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    auto* parentLabel = new QLabel(QStringLiteral("Maximum der Elternklasse:"), this);
    auto* usesLabel = new QLabel(QStringLiteral("Vergebene Minima:"), this);
    auto* newLabel = new QLabel(QStringLiteral("&Neues Minimum:"), this);
    auto* afterLabel = new QLabel(QStringLiteral("Danach frei:"), this);
    newLabel->setBuddy(m_txtNewMin->focusProxy());
    form->addRow(parentLabel, m_txtParentMax);
    form->addRow(usesLabel, m_txtUsesMin);
    form->addRow(m_lblAvailMin, m_txtAvailableMin);
    form->addRow(m_lblFreeMin, m_txtFreeMin);
    form->addRow(newLabel, m_txtNewMin);
    form->addRow(afterLabel, m_txtNewMinAfter);

    auto* moves = new QGridLayout;
    moves->addWidget(m_cmdMoveUp, 0, 1);
    moves->addWidget(m_cmdMoveLeft, 1, 0);
    moves->addWidget(m_cmdMoveDown, 1, 1);
    moves->addWidget(m_cmdMoveRight, 1, 2);
    moves->setColumnStretch(3, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addLayout(moves);
    buttons->addStretch(1);
    buttons->addWidget(m_cmdApply, 0, Qt::AlignBottom);

    auto* column = new QVBoxLayout(this);
    column->addWidget(m_lblClass);
    column->addLayout(form);
    column->addWidget(m_chlAutoApply);
    column->addLayout(buttons);
    column->addStretch(1);

    m_figures = {m_txtParentMax, m_txtUsesMin, m_lblAvailMin, m_txtAvailableMin,
                 m_lblFreeMin,   m_txtFreeMin, m_txtNewMin,   m_txtNewMinAfter,
                 parentLabel,    usesLabel,    newLabel,      afterLabel};

    connect(m_lblAvailMin, &QPushButton::clicked, calculator, &ClassCalculator::CopyAvailableMin);
    connect(m_lblFreeMin, &QPushButton::clicked, calculator, &ClassCalculator::CopyFreeMin);
    connect(m_cmdApply, &QPushButton::clicked, calculator, &ClassCalculator::Apply);
    connect(m_cmdMoveUp, &QToolButton::clicked, calculator, &ClassCalculator::MoveUp);
    connect(m_cmdMoveDown, &QToolButton::clicked, calculator, &ClassCalculator::MoveDown);
    connect(m_cmdMoveLeft, &QToolButton::clicked, calculator, &ClassCalculator::MoveLeft);
    connect(m_cmdMoveRight, &QToolButton::clicked, calculator, &ClassCalculator::MoveRight);
    connect(m_chlAutoApply, &QCheckBox::toggled, calculator, &ClassCalculator::SetAutoApply);
    connect(calculator, &ClassCalculator::changed, this, &ClassCalculatorPanel::showFigures);
    showFigures();
}

void ClassCalculatorPanel::setPrompt(UserPrompt* prompt)
{
    m_txtNewMin->setPrompt(prompt);
}

void ClassCalculatorPanel::setStatusLine(StatusLine* line)
{
    m_txtNewMin->setStatusLine(line);
}

void ClassCalculatorPanel::showFigures()
{
    const bool shown = m_calc->CurrentClass() != nullptr;
    for (QWidget* w : std::as_const(m_figures))
        w->setEnabled(shown);
    m_cmdApply->setEnabled(m_calc->CanApply());
    m_cmdMoveUp->setEnabled(m_calc->CanMoveUp());
    m_cmdMoveDown->setEnabled(m_calc->CanMoveDown());
    m_cmdMoveLeft->setEnabled(m_calc->CanMoveLeft());
    m_cmdMoveRight->setEnabled(m_calc->CanMoveRight());
    m_chlAutoApply->setChecked(m_calc->AutoApply());

    m_lblClass->setText(m_calc->HeadingText());
    m_txtParentMax->setText(m_calc->ParentMaxText());
    m_txtUsesMin->setText(m_calc->UsesMinText());
    m_txtAvailableMin->setText(m_calc->AvailableMinText());
    m_txtFreeMin->setText(m_calc->FreeMinText());
    m_txtNewMinAfter->setText(m_calc->NewMinAfterText());
    if (shown) {
        // Without a class the figure is empty and disabled, and keeps the colours of that.
        QPalette pal = m_txtNewMinAfter->palette();
        pal.setColor(QPalette::Text,
                     m_calc->NewMinAfterOverbooked() ? Overbooked : palette().color(QPalette::Text));
        m_txtNewMinAfter->setPalette(pal);
    }

    m_lblClass->setAccessibleName(m_lblClass->text());
    for (QLineEdit* e : {m_txtParentMax, m_txtUsesMin, m_txtAvailableMin, m_txtFreeMin, m_txtNewMinAfter})
        e->setAccessibleDescription(e->text());
}
