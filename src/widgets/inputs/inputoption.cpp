#include "inputoption.h"

#include "fieldbinding.h"
#include "pasteguard.h"
#include "typedkey.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>

InputOption::InputOption(QWidget* parent) : InputOption(nullptr, parent) {}

InputOption::InputOption(OptionField* field, QWidget* parent)
    : QWidget(parent), m_txtOption(new QLineEdit(this)), m_cmdOption(new QToolButton(this)),
      m_mnuOptions(new QMenu(this))
{
    m_txtOption->setObjectName(QStringLiteral("txtOption"));
    m_txtOption->setAccessibleName(QStringLiteral("Option"));
    m_txtOption->setToolTip(QStringLiteral("Option (Pfeiltasten wählen, Alt+Pfeil öffnet die Liste)"));
    m_txtOption->installEventFilter(this);
    m_cmdOption->setObjectName(QStringLiteral("cmdOption"));
    m_cmdOption->setArrowType(Qt::DownArrow);
    m_cmdOption->setAccessibleName(QStringLiteral("Option wählen"));
    m_cmdOption->setToolTip(QStringLiteral("Option wählen"));
    m_cmdOption->setFocusPolicy(Qt::NoFocus);
    m_mnuOptions->setObjectName(QStringLiteral("mnuOptions"));
    for (const QString& caption : OptionField::Options()) {
        QAction* item = m_mnuOptions->addAction(caption);
        item->setObjectName(QStringLiteral("itmOptions"));
        connect(item, &QAction::triggered, this, [this, caption] { m_field->Choose(caption); });
    }

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_txtOption, 1);
    layout->addWidget(m_cmdOption);

    connect(m_cmdOption, &QToolButton::clicked, this, &InputOption::OpenMenu);
    connect(m_txtOption, &QLineEdit::textEdited, this, [this](const QString& t) { m_field->SetText(t); });
    // After the key filter, so that Ctrl+V pastes instead of emptying the box as a letter key.
    new PasteGuard(m_txtOption, [this](const QString& text) { m_field->Paste(text); });
    setFocusProxy(m_txtOption);
    setField(field);
}

void InputOption::setField(OptionField* field)
{
    bindField(this, m_field, field, m_own);
    connect(m_field, &OptionField::Change, this, &InputOption::showText);
    connect(m_field, &OptionField::Change, this, &InputOption::Change);
    showText();
}

void InputOption::showText()
{
    if (m_txtOption->text() != m_field->Text())
        m_txtOption->setText(m_field->Text());
}

void InputOption::OpenMenu()
{
    m_mnuOptions->popup(mapToGlobal(QPoint(0, height())));
}

bool InputOption::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_txtOption || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    auto* key = static_cast<QKeyEvent*>(event);
    switch (m_field->KeyDown(key->key(), key->modifiers())) {
    case OptionField::KeyResult::OpenMenu:
        OpenMenu();
        return true;
    case OptionField::KeyResult::Emptied:
    case OptionField::KeyResult::Stepped:
        return true;
    case OptionField::KeyResult::None:
        break;
    }
    return !OptionField::TakesCharacter(TypedCharacter(key));
}
