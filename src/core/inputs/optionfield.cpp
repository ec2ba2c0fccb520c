#include "inputs/optionfield.h"

OptionField::OptionField(QObject* parent) : QObject(parent) {}

const QStringList& OptionField::Options()
{
    static const QStringList options = OptionList().split(u',');
    return options;
}

void OptionField::SetText(const QString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    if (m_ownerHook)
        m_ownerHook();
    if (watched())
        emit Change();
}

void OptionField::Step(int delta)
{
    const QStringList& options = Options();
    qsizetype position = options.indexOf(m_text);
    if (position < 0)
        position = options.size();
    position = qBound(qsizetype(0), position + delta, options.size() - 1);
    SetText(options.at(position));
}

OptionField::KeyResult OptionField::KeyDown(int key, Qt::KeyboardModifiers modifiers)
{
    if ((key >= Qt::Key_0 && key <= Qt::Key_9) || (key >= Qt::Key_A && key <= Qt::Key_Z) ||
        key == Qt::Key_Delete) {
        SetText(QString());
        return KeyResult::Emptied;
    }
    const bool previous = key == Qt::Key_Left || key == Qt::Key_Up;
    const bool next = key == Qt::Key_Right || key == Qt::Key_Down;
    if (!previous && !next)
        return KeyResult::None;
    const Qt::KeyboardModifiers held =
        modifiers & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
    if (held == Qt::AltModifier)
        return KeyResult::OpenMenu;
    if (held != Qt::NoModifier)
        return KeyResult::None;
    Step(previous ? -1 : +1);
    return KeyResult::Stepped;
}

void OptionField::Paste(QStringView text)
{
    const QString choice = text.trimmed().toString();
    if (Options().contains(choice))
        Choose(choice);
}
