#pragma once

#include "base/scriptedprompt.h"
#include "file/qosreader.h"
#include "model/document.h"

#include <QByteArray>
#include <QString>

// A document as a freshly started editor holds it without config.ini, with a prompt that
// records every message box instead of showing it.
class CliSession
{
public:
    CliSession();

    // Reads the file as the editor's Open does. False when the file cannot be read; then
    // error() holds a one-line German explanation.
    bool Open(const QString& path);
    QString error() const { return m_error; }
    // Where and why the import stopped, when it did not read the whole file.
    const ImportReport& report() const { return m_report; }

    Document& document() { return m_document; }
    QStringList Messages() const { return m_prompt.messages(); }

    // Runs Validate(true) on every main class, down page first, each run trapped on its own,
    // as the check button of each main class would.
    void ValidateAll();

private:
    ScriptedPrompt m_prompt;
    Document m_document;
    QString m_error;
    ImportReport m_report;
};
