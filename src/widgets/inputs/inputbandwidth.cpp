#include "inputbandwidth.h"

#include "app/dialogprompt.h"
#include "base/qoserror.h"
#include "base/unitconversion.h"
#include "fieldbinding.h"
#include "palettecolor.h"
#include "pasteguard.h"
#include "statusnotice.h"
#include "typedkey.h"

#include <QCheckBox>
#include <QContextMenuEvent>
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
    setNumberDigits(8);
    m_txtMin->installEventFilter(this);
    m_lblMinUnit->setObjectName(QStringLiteral("lblMinUnit"));
    int unitWidth = 0;
    for (const QString& unit : UnitConversion::Units())
        unitWidth = qMax(unitWidth, m_lblMinUnit->fontMetrics().horizontalAdvance(unit));
    m_lblMinUnit->setMinimumWidth(unitWidth + 6);
    m_lblMinUnit->setAccessibleDescription(QStringLiteral("Einheit"));
    m_lblMinUnit->setToolTip(QStringLiteral("Rechtsklick: Einheit ändern"));
    m_lblMinUnit->installEventFilter(this);
    m_lblMinUnit->setFocusPolicy(Qt::TabFocus);
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

    connect(m_txtMin, &QLineEdit::textEdited, this, &InputBandwidth::edited);
    new PasteGuard(m_txtMin, [this](const QString& text) { pasteNumber(text); });
    connect(m_chkLocked, &QCheckBox::clicked, this, [this](bool checked) { m_field->SetLocked(checked); });
    setFocusProxy(m_txtMin);
    setField(field);
}

void InputBandwidth::setLabel(const QString& label)
{
    setAccessibleName(label);
    m_txtMin->setAccessibleName(label);
    m_chkLocked->setAccessibleName(label + QStringLiteral(" festhalten"));
}

void InputBandwidth::setNumberDigits(int digits)
{
    // What a line edit adds around its text, as its own size hint counts it for 17 characters.
    const QFontMetrics fm = m_txtMin->fontMetrics();
    const int extra = qMax(8, m_txtMin->sizeHint().width() - 17 * fm.horizontalAdvance(u'x'));
    m_txtMin->setFixedWidth(fm.horizontalAdvance(QString(digits, u'0')) + extra);
}

void InputBandwidth::setLockAllowed(bool allowed)
{
    m_lockAllowed = allowed;
    showLock();
}

void InputBandwidth::showLock()
{
    m_chkLocked->setVisible(m_lockAllowed && m_field->ShowLock());
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
    connect(m_field, &BandwidthField::lockedChanged, this, &InputBandwidth::showEditable);
    connect(m_field, &BandwidthField::showLockChanged, this, &InputBandwidth::showLock);
    connect(m_field, &BandwidthField::backgroundChanged, this, &InputBandwidth::showBackground);
    showValue();
    showUnit();
    m_chkLocked->setChecked(m_field->Locked());
    showLock();
    showEditable();
    showBackground();
}

void InputBandwidth::showValue()
{
    if (m_txtMin->text() != m_field->Value())
        m_txtMin->setText(m_field->Value());
    clearRangeNotice();
}

void InputBandwidth::showEditable()
{
    const bool editable = m_field->TakesEdits();
    m_txtMin->setReadOnly(!editable);
    // Tab stops at the unit only while it has a menu to offer.
    m_lblMinUnit->setFocusPolicy(m_field->UnitMenuAllowed() ? Qt::TabFocus : Qt::NoFocus);
}

void InputBandwidth::edited(const QString& text)
{
    try {
        m_field->SetValue(text);
    } catch (const QoSError& e) {
        // A number beyond 32 bits is no bandwidth: the box goes back to the value it had. A
        // box in the middle of typing would take the keys that follow, so a typed number is
        // refused in the status line and the tooltip; a pasted one still gets the box.
        RevertEdit(m_txtMin, m_field->Value());
        if (m_pasting) {
            DialogPrompt::Tell(m_prompt, this, e.message(), UserPrompt::Icon::Warning);
            return;
        }
        keepOrdinaryTip();
        if (!m_rangeNotice.isEmpty())
            ClearNotice(m_status, this, m_rangeNotice);
        m_rangeNotice = e.message();
        showTip();
        ShowNotice(m_status, this, m_rangeNotice);
        return;
    }
    clearRangeNotice();
}

void InputBandwidth::clearRangeNotice()
{
    if (m_rangeNotice.isEmpty())
        return;
    ClearNotice(m_status, this, m_rangeNotice);
    m_rangeNotice.clear();
    showTip();
}

void InputBandwidth::setExplanation(const QString& text)
{
    if (text == m_explanation)
        return;
    keepOrdinaryTip();
    m_explanation = text;
    m_txtMin->setAccessibleDescription(text);
    setAccessibleDescription(text);
    showTip();
}

void InputBandwidth::keepOrdinaryTip()
{
    if (m_rangeNotice.isEmpty() && m_explanation.isEmpty())
        m_numberTip = m_txtMin->toolTip();
}

void InputBandwidth::showTip()
{
    m_txtMin->setToolTip(!m_rangeNotice.isEmpty()   ? m_rangeNotice
                         : !m_explanation.isEmpty() ? m_explanation
                                                    : m_numberTip);
}

void InputBandwidth::pasteNumber(const QString& text)
{
    m_pasting = true;
    PasteGuard::InsertWritable(m_txtMin, text, m_prompt);
    m_pasting = false;
}

void InputBandwidth::showUnit()
{
    // A screen reader reads the unit itself; the description says what it is.
    m_lblMinUnit->setText(m_field->Unit());
    m_lblMinUnit->setAccessibleName(m_field->Unit().isEmpty() ? QStringLiteral("Einheit") : m_field->Unit());
}

void InputBandwidth::showBackground()
{
    QPalette p = m_txtMin->palette();
    p.setColor(QPalette::Base, PaletteColor(m_field->NumberBackground(), palette()));
    m_txtMin->setPalette(p);
}

void InputBandwidth::convertTo(const QString& unit)
{
    DialogPrompt::Ask(m_prompt, this, [&](UserPrompt& prompt) { m_field->ConvertTo(unit, prompt); });
}

void InputBandwidth::showUnitFocus(bool focused)
{
    // A label draws no focus frame of its own: the unit shows the focus in the selection colours.
    m_lblMinUnit->setAutoFillBackground(focused);
    m_lblMinUnit->setBackgroundRole(focused ? QPalette::Highlight : QPalette::Window);
    m_lblMinUnit->setForegroundRole(focused ? QPalette::HighlightedText : QPalette::WindowText);
}

void InputBandwidth::openUnitMenu(const QPoint& globalPos)
{
    // The filter sees the events of a disabled label too (the calculator without a class).
    if (m_field->UnitMenuAllowed() && isEnabled())
        m_mnuUnits->popup(globalPos);
}

bool InputBandwidth::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_txtMin && event->type() == QEvent::KeyPress) {
        const QChar c = TypedCharacter(static_cast<QKeyEvent*>(event));
        return !c.isNull() && !BandwidthField::AcceptsKey(c);
    }
    if (watched != m_lblMinUnit)
        return QWidget::eventFilter(watched, event);
    const QPoint below = m_lblMinUnit->mapToGlobal(QPoint(0, m_lblMinUnit->height()));
    switch (event->type()) {
    case QEvent::MouseButtonRelease: {
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() != Qt::RightButton)
            break;
        openUnitMenu(mouse->globalPosition().toPoint());
        return true;
    }
    case QEvent::ContextMenu:
        // Never passed on to the box, whose menu would offer "Ausschneiden" in its place. The
        // mouse opens the unit menu on release; the keyboard opens it at once.
        if (static_cast<QContextMenuEvent*>(event)->reason() != QContextMenuEvent::Mouse)
            openUnitMenu(below);
        return true;
    case QEvent::KeyPress: {
        auto* key = static_cast<QKeyEvent*>(event);
        const Qt::KeyboardModifiers modifiers = key->modifiers() & ~Qt::KeypadModifier;
        if ((key->key() == Qt::Key_Menu && modifiers == Qt::NoModifier) ||
            (key->key() == Qt::Key_F10 && modifiers == Qt::ShiftModifier)) {
            openUnitMenu(below);
            return true;
        }
        break;
    }
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        showUnitFocus(event->type() == QEvent::FocusIn);
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}
