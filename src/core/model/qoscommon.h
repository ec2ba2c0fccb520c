#pragma once

#include "inputs/bandwidthfield.h"

#include <QObject>
#include <QStringList>

// The document's global settings: devices, line speeds, the two default classes, the
// description and the router package version the file is written for.
class QoSCommon : public QObject
{
    Q_OBJECT
public:
    explicit QoSCommon(QObject* parent = nullptr);

    QString QoSInternetDev() const { return m_internetDev; }
    void SetQoSInternetDev(const QString& v);
    QString QoSInternetBandDown() const { return m_bandDown.Bandwidth(); }
    void SetQoSInternetBandDown(const QString& v);
    QString QoSInternetBandUp() const { return m_bandUp.Bandwidth(); }
    void SetQoSInternetBandUp(const QString& v);
    QString QoSInternetDefaultDown() const { return m_defaultDown; }
    void SetQoSInternetDefaultDown(const QString& v);
    QString QoSInternetDefaultUp() const { return m_defaultUp; }
    void SetQoSInternetDefaultUp(const QString& v);
    QString QoSLocalNetDev() const { return m_localNetDev; }
    void SetQoSLocalNetDev(const QString& v);
    QString QoSLocalBand() const { return m_localBand.Bandwidth(); }
    void SetQoSLocalBand(const QString& v);
    QString QoSDescription() const { return m_description; }
    void SetQoSDescription(const QString& v);

    // The selected entry of the version list. An unknown version is appended with the
    // suffix " unbekannt" and selected, so reading it back gives the suffixed text.
    QString QoSVersion() const;
    void SetQoSVersion(const QString& v);
    QStringList VersionList() const { return m_versions; }
    int VersionIndex() const { return m_versionIndex; }
    void SelectVersion(int index);

    // The line bandwidth of a direction: down for "down", up for any other direction.
    QString LineBandwidth(const QString& direction) const;

    // The bandwidth fields the page's editors bind to.
    BandwidthField* BandDownField() { return &m_bandDown; }
    BandwidthField* BandUpField() { return &m_bandUp; }
    BandwidthField* LocalBandField() { return &m_localBand; }

signals:
    // Emitted with the property name after every let.
    void propertyChanged(const QString& name);

private:
    QString m_internetDev = QStringLiteral("ppp0");
    BandwidthField m_bandDown;
    BandwidthField m_bandUp;
    QString m_defaultDown = QStringLiteral("0");
    QString m_defaultUp = QStringLiteral("0");
    QString m_localNetDev = QStringLiteral("eth0");
    BandwidthField m_localBand;
    QString m_description;
    QStringList m_versions{QStringLiteral("v0.3"), QStringLiteral("unbekannt")};
    int m_versionIndex = 0;
};
