#include "clisession.h"

#include "base/qoserror.h"
#include "file/qosreader.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/validationpass.h"

CliSession::CliSession() : m_document(&m_prompt)
{
    // What a first start without config.ini leaves in the editor.
    qint32 cols = 6;
    qint32 rows = 5;
    m_document.Down1()->SetGridDimensions(cols, rows);
    cols = 6;
    rows = 5;
    m_document.Up1()->SetGridDimensions(cols, rows);
    QoSCommon& common = *m_document.Common1();
    common.SetQoSInternetBandDown(QStringLiteral("768kbit"));
    common.SetQoSInternetBandUp(QStringLiteral("128kbit"));
    common.SetQoSInternetDev(QStringLiteral("ppp0"));
    common.SetQoSLocalBand(QStringLiteral("10mbit"));
    common.SetQoSLocalNetDev(QStringLiteral("eth0"));
    common.SetQoSVersion(QStringLiteral("v0.3"));
    common.SetQoSInternetDefaultDown(QStringLiteral("0"));
    common.SetQoSInternetDefaultUp(QStringLiteral("0"));
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
    ValidationPass pass;
    pass.ValidateMainClasses(*m_document.Down1());
    pass.ValidateMainClasses(*m_document.Up1());
}
