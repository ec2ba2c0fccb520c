#include "model/qoscommon.h"

QoSCommon::QoSCommon(QObject* parent) : QObject(parent)
{
    m_bandDown.SetShowLock(false);
    m_bandUp.SetShowLock(false);
    m_localBand.SetShowLock(false);
    m_bandDown.SetBandwidth(QStringLiteral("768kbit"));
    m_bandUp.SetBandwidth(QStringLiteral("128kbit"));
    m_localBand.SetBandwidth(QStringLiteral("10Mbit"));
    connect(&m_bandDown, &BandwidthField::Change, this,
            [this] { emit propertyChanged(QStringLiteral("QoSInternetBandDown")); });
    connect(&m_bandUp, &BandwidthField::Change, this,
            [this] { emit propertyChanged(QStringLiteral("QoSInternetBandUp")); });
    connect(&m_localBand, &BandwidthField::Change, this,
            [this] { emit propertyChanged(QStringLiteral("QoSLocalBand")); });
    SetQoSVersion(QStringLiteral("v0.3"));
}

void QoSCommon::SetQoSInternetDev(const QString& v)
{
    m_internetDev = v;
    emit propertyChanged(QStringLiteral("QoSInternetDev"));
}

void QoSCommon::SetQoSInternetBandDown(const QString& v)
{
    m_bandDown.SetBandwidth(v);
    emit propertyChanged(QStringLiteral("QoSInternetBandDown"));
}

void QoSCommon::SetQoSInternetBandUp(const QString& v)
{
    m_bandUp.SetBandwidth(v);
    emit propertyChanged(QStringLiteral("QoSInternetBandUp"));
}

void QoSCommon::SetQoSInternetDefaultDown(const QString& v)
{
    m_defaultDown = v;
    emit propertyChanged(QStringLiteral("QoSInternetDefaultDown"));
}

void QoSCommon::SetQoSInternetDefaultUp(const QString& v)
{
    m_defaultUp = v;
    emit propertyChanged(QStringLiteral("QoSInternetDefaultUp"));
}

void QoSCommon::SetQoSLocalNetDev(const QString& v)
{
    m_localNetDev = v;
    emit propertyChanged(QStringLiteral("QoSLocalNetDev"));
}

void QoSCommon::SetQoSLocalBand(const QString& v)
{
    m_localBand.SetBandwidth(v);
    emit propertyChanged(QStringLiteral("QoSLocalBand"));
}

void QoSCommon::SetQoSDescription(const QString& v)
{
    m_description = v;
    emit propertyChanged(QStringLiteral("QoSDescription"));
}

QString QoSCommon::QoSVersion() const
{
    return m_versionIndex >= 0 && m_versionIndex < m_versions.size() ? m_versions[m_versionIndex] : QString();
}

void QoSCommon::SetQoSVersion(const QString& v)
{
    // A version that already carries the suffix (as config.ini keeps it) is taken as it is:
    // otherwise it would grow by another " unbekannt" on every start.
    static const QString suffix = QStringLiteral(" unbekannt");
    int index = int(m_versions.indexOf(v));
    if (index < 0) {
        m_versions << (v.endsWith(suffix) ? v : v + suffix);
        index = m_versions.size() - 1;
    }
    m_versionIndex = index;
    emit propertyChanged(QStringLiteral("QoSVersion"));
}

void QoSCommon::SelectVersion(int index)
{
    if (index < 0 || index >= m_versions.size() || index == m_versionIndex)
        return;
    m_versionIndex = index;
    emit propertyChanged(QStringLiteral("QoSVersion"));
}

QString QoSCommon::LineBandwidth(const QString& direction) const
{
    return direction == u"down" ? QoSInternetBandDown() : QoSInternetBandUp();
}
