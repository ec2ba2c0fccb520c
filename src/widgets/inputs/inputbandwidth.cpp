#include "inputbandwidth.h"

#include "app/dialogprompt.h"
#include "document/qoserror.h"
#include "document/unitconversion.h"
#include "palettecolor.h"
#include "fieldbinding.h"
#include "typedkey.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>

InputBandwidth::InputBandwidth(QWidget* parent) : InputBandwidth(nullptr, parent) {}

InputBandwidth::InputBandwidth(BandwidthField* field, QWidget* parent)
    : QWidget(parent), m_txtMin(new QLineEdit(this)), m_lblMinUnit(new QLabel(this)),
      m_chkLocked(new QCheckBox(this)), m_mnuUnits(new QMenu(QStringLiteral("Units"), this))
{
    m_txtMin->setObjectName(QStringLiteral("txtMin"));
    m_txtMin->setAlignment(Qt::AlignRight);
    m_txtMin->setFixedWidth(m_txtMin->fontMetrics().horizontalAdvance(QStringLiteral("00000000")) + 12);
    m_txtMin->installEventFilter(this);
    m_lblMinUnit->setObjectName(QStringLiteral("lblMinUnit"));
    m_lblMinUnit->setMinimumWidth(m_lblMinUnit->fontMetrics().horizontalAdvance(QStringLiteral("kbps")) + 6);
    m_lblMinUnit->setToolTip(QStringLiteral("Rechtsklick: Einheit ändern"));
    m_lblMinUnit->installEventFilter(this);
    m_chkLocked->setObjectName(QStringLiteral("chkLocked"));
    m_chkLocked->setText(QStringLiteral("fest"));
    m_chkLocked->setToolTip(QStringLiteral("Wert festhalten"));
    m_mnuUnits->setObjectName(QStringLiteral("mnuUnits"));
    buildMenu();

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    layout->addWidget(m_txtMin);
    layout->addWidget(m_lblMinUnit);
    layout->addWidget(m_chkLocked);
    setLabel(QStringLiteral("Bandbreite"));
    // As wide as its three controls, not as wide as its host.
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);

    connect(m_txtMin, &QLineEdit::textEdited, this, [this](const QString& text) {
        try {
            m_field->SetValue(text);
        } catch (const QoSError& e) {
            // A number beyond 32 bits is no bandwidth: the box goes back to the value it had.
            showValue();
            if (m_prompt) {
                m_prompt->Message(e.message(), UserPrompt::Icon::Warning);
            } else {
                DialogPrompt dialogs(this);
                dialogs.Message(e.message(), UserPrompt::Icon::Warning);
            }
        }
    });
    connect(m_chkLocked, &QCheckBox::clicked, this, [this](bool checked) { m_field->SetLocked(checked); });
    setFocusProxy(m_txtMin);
    setField(field);
}

void InputBandwidth::setLabel(const QString& label)
{
    m_txtMin->setAccessibleName(label);
    m_lblMinUnit->setAccessibleName(label + QStringLiteral(" Einheit"));
    m_chkLocked->setAccessibleName(label + QStringLiteral(" festhalten"));
}

void InputBandwidth::buildMenu()
{
    auto* mnuChange = m_mnuUnits->addMenu(QStringLiteral("Umwandeln zu..."));
    mnuChange->setObjectName(QStringLiteral("mnuChange"));
    const QStringList& units = UnitConversion::Units();
    auto addUnits = [&units](QMenu* menu, const QString& name, auto onChosen) {
        for (qsizetype i = 0; i < units.size(); ++i) {
            if (i == 4)
                menu->addSeparator();
            QAction* item = menu->addAction(units.at(i));
            item->setObjectName(name);
            QObject::connect(item, &QAction::triggered, menu,
                             [onChosen, unit = units.at(i)] { onChosen(unit); });
        }
    };
    addUnits(mnuChange, QStringLiteral("itmConvertUnit"), [this](const QString& unit) { convertTo(unit); });
    addUnits(m_mnuUnits, QStringLiteral("itmUnit"), [this](const QString& unit) { m_field->Relabel(unit); });
}

void InputBandwidth::setField(BandwidthField* field)
{
    bindField(this, m_field, field, m_own);
    connect(m_field, &BandwidthField::Change, this, &InputBandwidth::Change);
    connect(m_field, &BandwidthField::valueChanged, this, &InputBandwidth::showValue);
    connect(m_field, &BandwidthField::unitChanged, this, &InputBandwidth::showUnit);
    connect(m_field, &BandwidthField::lockedChanged, m_chkLocked, &QCheckBox::setChecked);
    connect(m_field, &BandwidthField::showLockChanged, m_chkLocked, &QCheckBox::setVisible);
    connect(m_field, &BandwidthField::backgroundChanged, this, &InputBandwidth::showBackground);
    showValue();
    showUnit();
    m_chkLocked->setChecked(m_field->Locked());
    m_chkLocked->setVisible(m_field->ShowLock());
    showBackground();
}

void InputBandwidth::showValue()
{
    if (m_txtMin->text() != m_field->Value())
        m_txtMin->setText(m_field->Value());
}

void InputBandwidth::showUnit()
{
    m_lblMinUnit->setText(m_field->Unit());
}

void InputBandwidth::showBackground()
{
    QPalette p = m_txtMin->palette();
    p.setColor(QPalette::Base, PaletteColor(m_field->NumberBackground(), palette()));
    m_txtMin->setPalette(p);
}

void InputBandwidth::convertTo(const QString& unit)
{
    if (m_prompt) {
        m_field->ConvertTo(unit, *m_prompt);
        return;
    }
    DialogPrompt dialogs(this);
    m_field->ConvertTo(unit, dialogs);
}

bool InputBandwidth::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_txtMin && event->type() == QEvent::KeyPress) {
        const QChar c = TypedCharacter(static_cast<QKeyEvent*>(event));
        return !c.isNull() && !BandwidthField::AcceptsKey(c);
    }
    if (watched == m_lblMinUnit && event->type() == QEvent::MouseButtonRelease) {
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::RightButton && m_field->UnitMenuAllowed()) {
            m_mnuUnits->popup(mouse->globalPosition().toPoint());
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
