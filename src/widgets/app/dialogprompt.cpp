#include "dialogprompt.h"

#include <QAbstractButton>
#include <QFileDialog>
#include <QGuiApplication>
#include <QInputDialog>
#include <QMessageBox>

namespace {

QMessageBox::Icon boxIcon(UserPrompt::Icon icon)
{
    switch (icon) {
    case UserPrompt::Icon::Information:
        return QMessageBox::Information;
    case UserPrompt::Icon::Question:
        return QMessageBox::Question;
    case UserPrompt::Icon::Warning:
        return QMessageBox::Warning;
    case UserPrompt::Icon::Critical:
        return QMessageBox::Critical;
    case UserPrompt::Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

} // namespace

void DialogPrompt::Ask(UserPrompt* prompt, QWidget* parent, const std::function<void(UserPrompt&)>& ask)
{
    if (prompt) {
        ask(*prompt);
        return;
    }
    DialogPrompt dialogs(parent);
    ask(dialogs);
}

void DialogPrompt::Tell(UserPrompt* prompt, QWidget* parent, const QString& text, Icon icon)
{
    Ask(prompt, parent, [&](UserPrompt& p) { p.Message(text, icon); });
}

QString DialogPrompt::Title()
{
    const QString name = QGuiApplication::applicationDisplayName();
    return name.isEmpty() ? QStringLiteral("Tarnwick") : name;
}

QString DialogPrompt::QtFilter(const QString& filter)
{
    if (!filter.contains(u'|'))
        return filter;
    const QStringList parts = filter.split(u'|');
    QStringList out;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString patterns = QString(parts.at(i + 1)).replace(u';', u' ');
        const QString& description = parts.at(i);
        out << (description.contains(u'(') ? description
                                           : description + QStringLiteral(" (") + patterns + u')');
    }
    return out.join(QStringLiteral(";;"));
}

// The buttons speak German whether or not Qt's own translations are installed.
static void germanButtons(QMessageBox& box)
{
    const std::pair<QMessageBox::StandardButton, const char16_t*> texts[] = {
        {QMessageBox::Ok, u"OK"},
        {QMessageBox::Yes, u"&Ja"},
        {QMessageBox::No, u"&Nein"},
        {QMessageBox::Cancel, u"Abbrechen"}};
    for (const auto& [button, text] : texts)
        if (QAbstractButton* b = box.button(button))
            b->setText(QString::fromUtf16(text));
}

void DialogPrompt::Message(const QString& text, Icon icon)
{
    QMessageBox box(boxIcon(icon), Title(), text, QMessageBox::Ok, m_parent);
    germanButtons(box);
    box.exec();
}

bool DialogPrompt::AskYesNo(const QString& text, Icon icon)
{
    QMessageBox box(boxIcon(icon), Title(), text, QMessageBox::Yes | QMessageBox::No, m_parent);
    germanButtons(box);
    box.setDefaultButton(QMessageBox::Yes);
    return box.exec() == QMessageBox::Yes;
}

UserPrompt::Answer DialogPrompt::AskYesNoCancel(const QString& text, Icon icon)
{
    QMessageBox box(boxIcon(icon), Title(), text, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
                    m_parent);
    germanButtons(box);
    box.setDefaultButton(QMessageBox::Yes);
    box.setEscapeButton(QMessageBox::Cancel);
    switch (box.exec()) {
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    default:
        return Answer::Cancel;
    }
}

QString DialogPrompt::InputBox(const QString& prompt, const QString& defaultText)
{
    bool ok = false;
    const QString text =
        QInputDialog::getText(m_parent, Title(), prompt, QLineEdit::Normal, defaultText, &ok);
    return ok ? text : QString();
}

std::optional<QString> DialogPrompt::OpenFileName(const QString& title, const QString& initialName,
                                                  const QString& filter)
{
    const QString name = QFileDialog::getOpenFileName(m_parent, title.isEmpty() ? Title() : title,
                                                      initialName, QtFilter(filter));
    if (name.isEmpty())
        return std::nullopt;
    return name;
}

std::optional<QString> DialogPrompt::SaveFileName(const QString& title, const QString& initialName,
                                                  const QString& filter)
{
    const QString name = QFileDialog::getSaveFileName(m_parent, title.isEmpty() ? Title() : title,
                                                      initialName, QtFilter(filter));
    if (name.isEmpty())
        return std::nullopt;
    return name;
}
