#include "inputip.h"

#include "app/dialogprompt.h"
#include "base/writablevalue.h"
#include "fieldbinding.h"
#include "pasteguard.h"
#include "typedkey.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTimer>

InputIP::InputIP(QWidget* parent) : InputIP(nullptr, parent) {}

InputIP::InputIP(IpField* field, QWidget* parent)
    : QWidget(parent), m_txtIP(new QLineEdit(this)), m_txtMaskBits(new QLineEdit(this)),
      m_mnuEdit(new QMenu(this))
{
    m_txtIP->setObjectName(QStringLiteral("txtIP"));
    m_txtIP->setToolTip(QStringLiteral(" IP, (z.B. 192.168.0.1)"));
    m_txtIP->setAccessibleName(QStringLiteral("IP-Adresse"));
    m_txtIP->setAccessibleDescription(QStringLiteral("z.B. 192.168.0.1"));
    m_txtIP->setPlaceholderText(QStringLiteral("192.168.0.1"));
    m_txtMaskBits->setObjectName(QStringLiteral("txtMaskBits"));
    m_txtMaskBits->setToolTip(QStringLiteral("Maskbits (Leer | 8 | 16 | 24)"));
    m_txtMaskBits->setAccessibleName(QStringLiteral("Maskbits"));
    m_txtMaskBits->setAccessibleDescription(QStringLiteral("Leer, 8, 16 oder 24"));
    m_txtMaskBits->setMaximumWidth(m_txtMaskBits->fontMetrics().horizontalAdvance(QStringLiteral("0000")) +
                                   12);
    for (QLineEdit* box : {m_txtIP, m_txtMaskBits}) {
        // Before the field's own filter, which runs first: the field keeps its menu and its
        // Ctrl+V, which the mask box discards.
        new PasteGuard(box, [this](const QString& text) { PasteText(text); });
        box->installEventFilter(this);
    }
    m_mnuEdit->setObjectName(QStringLiteral("mnuEdit"));
    buildMenu();

    auto* slash = new QLabel(QStringLiteral("/"), this);
    slash->setAccessibleName(QStringLiteral("/"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_txtIP, 1);
    layout->addWidget(slash);
    layout->addWidget(m_txtMaskBits);

    connect(m_txtIP, &QLineEdit::textEdited, this, [this](const QString& t) { m_field->SetAddress(t); });
    connect(m_txtMaskBits, &QLineEdit::textEdited, this,
            [this](const QString& t) { m_field->SetMaskBits(t); });
    setFocusProxy(m_txtIP);
    setField(field);
}

void InputIP::buildMenu()
{
    auto add = [this](const QString& name, const QString& caption, auto slot) {
        QAction* item = m_mnuEdit->addAction(caption);
        item->setObjectName(name);
        connect(item, &QAction::triggered, this, slot);
        return item;
    };
    add(QStringLiteral("itmEditRestore"), QStringLiteral("Rü&ckgängig"), [this] {
        if (m_menuBox)
            m_menuBox->undo();
    });
    m_mnuEdit->addSeparator();
    add(QStringLiteral("itmEditCut"), QStringLiteral("&Ausschneiden"), &InputIP::Cut);
    add(QStringLiteral("itmEditCopy"), QStringLiteral("&Kopieren"), &InputIP::Copy);
    add(QStringLiteral("itmEditPaste"), QStringLiteral("Ein&fügen"), &InputIP::Paste);
    add(QStringLiteral("itmEditDelete"), QStringLiteral("&Löschen"), &InputIP::Delete);
    m_mnuEdit->addSeparator();
    add(QStringLiteral("itmEditSelectAll"), QStringLiteral("Alles &markieren"), [this] {
        QLineEdit* box = m_menuBox ? m_menuBox.data() : m_txtIP;
        box->setFocus(Qt::OtherFocusReason);
        box->selectAll();
    });
}

void InputIP::setField(IpField* field)
{
    bindField(this, m_field, field, m_own);
    connect(m_field, &IpField::Change, this, &InputIP::showText);
    connect(m_field, &IpField::Change, this, &InputIP::Change);
    showText();
}

void InputIP::showText()
{
    if (m_txtIP->text() != m_field->Address())
        m_txtIP->setText(m_field->Address());
    if (m_txtMaskBits->text() != m_field->MaskBits())
        m_txtMaskBits->setText(m_field->MaskBits());
}

QString InputIP::combinedText() const
{
    if (const std::optional<QString> text = m_field->TryText())
        return *text;
    // Mask bits too long for a number: copy what the boxes show.
    return m_field->Address() + u'/' + m_field->MaskBits();
}

void InputIP::Copy()
{
    QGuiApplication::clipboard()->setText(combinedText());
}

void InputIP::Cut()
{
    Copy();
    m_field->SetText(QString());
}

void InputIP::Paste()
{
    PasteText(QGuiApplication::clipboard()->text());
}

void InputIP::PasteText(const QString& text)
{
    const QString refusal = WritableValue::PasteRefusal(text);
    if (!refusal.isEmpty()) {
        DialogPrompt::Tell(m_prompt, this, refusal, UserPrompt::Icon::Warning);
        return;
    }
    m_field->SetText(text);
    m_txtIP->setFocus(Qt::OtherFocusReason);
}

void InputIP::Delete()
{
    m_field->SetText(QString());
}

void InputIP::showMenu(QLineEdit* box, const QPoint& globalPos)
{
    m_menuBox = box;
    const bool hasText = !combinedText().isEmpty();
    for (QAction* item : m_mnuEdit->actions()) {
        const QString name = item->objectName();
        if (name == u"itmEditCut" || name == u"itmEditCopy" || name == u"itmEditDelete")
            item->setEnabled(hasText);
        else if (name == u"itmEditRestore")
            item->setEnabled(box->isUndoAvailable());
    }
    m_mnuEdit->popup(globalPos);
}

bool InputIP::CheckLeave()
{
    // While the message is up, the field is not left either.
    if (m_complaining)
        return false;
    if (IpField::IsValidAddress(m_txtIP->text()))
        return true;
    m_complaining = true;
    m_txtIP->setFocus(Qt::OtherFocusReason);
    DialogPrompt::Tell(m_prompt, this, IpField::InvalidAddressMessage(), UserPrompt::Icon::Critical);
    m_txtIP->setFocus(Qt::OtherFocusReason);
    m_complaining = false;
    return false;
}

bool InputIP::eventFilter(QObject* watched, QEvent* event)
{
    auto* box = qobject_cast<QLineEdit*>(watched);
    if (!box)
        return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::KeyPress: {
        const QChar c = TypedCharacter(static_cast<QKeyEvent*>(event));
        if (c.isNull())
            return false;
        if (box == m_txtMaskBits)
            return !IpField::AcceptsMaskKey(c);
        const bool selected = box->hasSelectedText();
        const int start = selected ? box->selectionStart() : box->cursorPosition();
        const int length = selected ? int(box->selectedText().size()) : 0;
        switch (IpField::FilterAddressKey(box->text(), start, length, c)) {
        case IpField::KeyAction::Accept:
            return false;
        case IpField::KeyAction::Discard:
            return true;
        case IpField::KeyAction::Paste:
            Paste();
            return true;
        case IpField::KeyAction::FocusMask:
            m_txtMaskBits->setFocus(Qt::OtherFocusReason);
            return true;
        }
        return true;
    }
    case QEvent::MouseButtonRelease:
        if (static_cast<QMouseEvent*>(event)->button() == Qt::RightButton) {
            showMenu(box, static_cast<QMouseEvent*>(event)->globalPosition().toPoint());
            return true;
        }
        break;
    case QEvent::ContextMenu: {
        // The mouse opens the field's own menu on release; the menu key opens it at once.
        auto* menuEvent = static_cast<QContextMenuEvent*>(event);
        if (menuEvent->reason() != QContextMenuEvent::Mouse)
            showMenu(box, box->mapToGlobal(QPoint(0, box->height())));
        return true;
    }
    case QEvent::FocusOut:
        if (box == m_txtIP) {
            // Only a move to another control is checked: not a menu or another window
            // taking the focus, and not the message box that the check itself shows.
            const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
            if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
                QTimer::singleShot(0, this, &InputIP::checkAddress);
        }
        break;
    default:
        break;
    }
    return false;
}
