#include "inputprio.h"

#include "fieldbinding.h"
#include "palettecolor.h"
#include "pasteguard.h"
#include "typedkey.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>

InputPrio::InputPrio(QWidget* parent) : InputPrio(nullptr, parent) {}

InputPrio::InputPrio(PrioField* field, QWidget* parent)
    : QWidget(parent), m_cmdPrioDec(new QToolButton(this)), m_txtPrio(new QLineEdit(this)),
      m_cmdPrioInc(new QToolButton(this))
{
    m_cmdPrioDec->setObjectName(QStringLiteral("cmdPrioDec"));
    m_cmdPrioDec->setText(QStringLiteral("-"));
    m_cmdPrioDec->setAccessibleName(QStringLiteral("Priorität verringern"));
    m_cmdPrioDec->setToolTip(QStringLiteral("Priorität verringern"));
    m_cmdPrioDec->setFocusPolicy(Qt::NoFocus);
    m_txtPrio->setObjectName(QStringLiteral("txtPrio"));
    m_txtPrio->setAlignment(Qt::AlignCenter);
    m_txtPrio->setAccessibleName(QStringLiteral("Priorität"));
    m_txtPrio->setToolTip(QStringLiteral("Priorität 0 bis 3 (+ und - wechseln, Leertaste leert)"));
    m_txtPrio->setFixedWidth(m_txtPrio->fontMetrics().horizontalAdvance(QStringLiteral("00")) + 14);
    m_txtPrio->installEventFilter(this);
    m_cmdPrioInc->setObjectName(QStringLiteral("cmdPrioInc"));
    m_cmdPrioInc->setText(QStringLiteral("+"));
    m_cmdPrioInc->setAccessibleName(QStringLiteral("Priorität erhöhen"));
    m_cmdPrioInc->setToolTip(QStringLiteral("Priorität erhöhen"));
    m_cmdPrioInc->setFocusPolicy(Qt::NoFocus);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_cmdPrioDec);
    layout->addWidget(m_txtPrio);
    layout->addWidget(m_cmdPrioInc);
    layout->addStretch(1);

    connect(m_cmdPrioDec, &QToolButton::clicked, this, [this] { m_field->Decrement(); });
    connect(m_cmdPrioInc, &QToolButton::clicked, this, [this] { m_field->Increment(); });
    connect(m_txtPrio, &QLineEdit::textEdited, this, [this](const QString& t) { m_field->SetValue(t); });
    // After the key filter, so that it sees Ctrl+V before the filter drops it as a character.
    new PasteGuard(m_txtPrio, [this](const QString& text) { m_field->Paste(text); });
    setFocusProxy(m_txtPrio);
    setField(field);
}

void InputPrio::setField(PrioField* field)
{
    bindField(this, m_field, field, m_own);
    connect(m_field, &PrioField::Change, this, &InputPrio::showValue);
    connect(m_field, &PrioField::Change, this, &InputPrio::Change);
    connect(m_field, &PrioField::appearanceChanged, this, &InputPrio::showAppearance);
    showValue();
    showAppearance();
}

void InputPrio::showValue()
{
    if (m_txtPrio->text() != m_field->Value())
        m_txtPrio->setText(m_field->Value());
}

void InputPrio::showAppearance()
{
    QPalette p = palette();
    p.setColor(QPalette::Base, PaletteColor(m_field->BackColor(), palette()));
    p.setColor(QPalette::Text, PaletteColor(m_field->ForeColor(), palette()));
    m_txtPrio->setPalette(p);
    m_txtPrio->setFrame(m_field->BorderStyle() != 0);
    setEnabled(m_field->Enabled());
}

bool InputPrio::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_txtPrio || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    if (PrioField::ClearsOnKey(key->key())) {
        m_field->Clear();
        return true;
    }
    const QChar c = TypedCharacter(key);
    if (c.isNull())
        return false;
    m_field->TypeCharacter(c);
    return true;
}
