#include "clisession.h"

#include "app/firststart.h"
#include "file/qosreader.h"
#include "model/validationpass.h"

CliSession::CliSession() : m_document(&m_prompt)
{
    FirstStart::Apply(m_document);
    m_document.SetModified(false);
}

bool CliSession::Open(const QString& path)
{
    QByteArray bytes;
    if (!ReadQoSFile(path, bytes, m_error))
        return false;
    m_report = ImportQoSBytes(m_document, bytes);
    return true;
}

void CliSession::ValidateAll()
{
    ValidationPass().ValidateDocument(m_document);
}
