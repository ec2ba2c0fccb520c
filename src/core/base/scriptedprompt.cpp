#include "base/scriptedprompt.h"

void ScriptedPrompt::Message(const QString& text, Icon icon)
{
    log.append({QStringLiteral("message"), text, icon});
}

bool ScriptedPrompt::AskYesNo(const QString& text, Icon icon)
{
    log.append({QStringLiteral("yesno"), text, icon});
    return yesNo.isEmpty() ? true : yesNo.takeFirst();
}

UserPrompt::Answer ScriptedPrompt::AskYesNoCancel(const QString& text, Icon icon)
{
    log.append({QStringLiteral("yesnocancel"), text, icon});
    return yesNoCancel.isEmpty() ? Answer::No : yesNoCancel.takeFirst();
}

QString ScriptedPrompt::InputBox(const QString& prompt, const QString& defaultText)
{
    log.append({QStringLiteral("input"), prompt, Icon::None});
    inputDefaults << defaultText;
    return inputs.isEmpty() ? QString() : inputs.takeFirst();
}

std::optional<QString> ScriptedPrompt::OpenFileName(const QString& title, const QString&, const QString&)
{
    log.append({QStringLiteral("open"), title, Icon::None});
    return fileNames.isEmpty() ? std::nullopt : fileNames.takeFirst();
}

std::optional<QString> ScriptedPrompt::SaveFileName(const QString& title, const QString&, const QString&)
{
    log.append({QStringLiteral("save"), title, Icon::None});
    return fileNames.isEmpty() ? std::nullopt : fileNames.takeFirst();
}

QStringList ScriptedPrompt::messages() const
{
    QStringList out;
    for (const Entry& e : log)
        if (e.kind == u"message")
            out << e.text;
    return out;
}

void RecordingStatus::Show(const QString& caption, const QString& message)
{
    ++shown;
    visible = true;
    captions << caption;
    messages << message;
}
