#include "file/readbackcheck.h"

#include "base/qoserror.h"
#include "base/writablevalue.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/qosfilter.h"

namespace {

QString pageName(const QoSObject& o)
{
    return o.GetObjectPage() && o.GetObjectPage()->Direction() == u"up" ? QStringLiteral("Up")
                                                                        : QStringLiteral("Down");
}

QString describe(const QoSObject& o)
{
    // One arg() for all: a caption holding "%1" must not take the place of a later number.
    return QStringLiteral("%1 \"%2\" in Zelle %3,%4 der Seite %5")
        .arg(o.IsClass() ? QStringLiteral("Die Klasse") : QStringLiteral("Der Filter"), o.Caption(),
             QString::number(o.MatrixX()), QString::number(o.MatrixY()), pageName(o));
}

QoSError unwritable(const QString& text)
{
    return QoSError(QoSError::Kind::File, text);
}

// A value that would not read back as it is (a quote, a line break, a character the code page
// lacks) is refused rather than changed. The owner is named only when there is a refusal.
template <typename Owner> void checkValue(QStringView value, const Owner& owner, QStringView what)
{
    const WritableValue::Verdict verdict = WritableValue::Check(value);
    if (!verdict.writable())
        throw unwritable(QStringLiteral("%1: %2 \"%3\" ").arg(owner(), what.toString(), value.toString()) +
                         WritableValue::Reason(value, verdict));
}

} // namespace

void ReadBackCheck::Common(const QoSCommon& common)
{
    const auto owner = [] { return QStringLiteral("Allgemein"); };
    checkValue(common.QoSInternetDev(), owner, u"das Internet-Gerät");
    checkValue(common.QoSInternetBandDown(), owner, u"die Bandbreite Down");
    checkValue(common.QoSInternetBandUp(), owner, u"die Bandbreite Up");
    checkValue(common.QoSLocalNetDev(), owner, u"das LAN-Gerät");
    checkValue(common.QoSLocalBand(), owner, u"die LAN-Bandbreite");
    checkValue(common.QoSVersion(), owner, u"die Version");
    // The description is written line by line: only its characters must fit.
    const WritableValue::Verdict verdict =
        WritableValue::Check(common.QoSDescription(), WritableValue::Place::Comment);
    if (!verdict.writable())
        throw unwritable(
            QStringLiteral("Allgemein: die Beschreibung enthält das Zeichen \"%1\", das qos.txt nicht "
                           "kennt.")
                .arg(common.QoSDescription().mid(verdict.at, 1)));
}

void ReadBackCheck::Class(const QoSClass& c)
{
    const auto owner = [&c] { return describe(c); };
    // A class below row 3 would be refused when the file is read again.
    if (c.MatrixY() >= ClassRows)
        throw unwritable(
            QStringLiteral("%1 steht in Zeile %2; Klassen stehen in den Zeilen 0 bis 3, sonst lässt sich "
                           "die Datei nicht wieder vollständig lesen.")
                .arg(owner(), QString::number(c.MatrixY())));
    checkValue(c.Caption(), owner, u"der Titel");
    checkValue(c.QoSMinBandWidth(), owner, u"das Minimum");
    checkValue(c.QoSMaxBandWidth(), owner, u"das Maximum");
    checkValue(c.QoSDirection(), owner, u"die Richtung");
    checkValue(c.QoSPrio(), owner, u"die Priorität");
}

void ReadBackCheck::Filter(const QoSFilter& f)
{
    const auto owner = [&f] { return describe(f); };
    // A filter without its class would end the reading of the file.
    if (!f.ParentQoSObject())
        throw unwritable(
            QStringLiteral("%1 hängt an keiner Klasse; so lässt sich die Datei nicht wieder vollständig "
                           "lesen.")
                .arg(owner()));
    checkValue(f.Caption(), owner, u"der Titel");
    checkValue(f.QoSIP(), owner, u"die IP-Adresse");
    checkValue(f.QoSPort(), owner, u"die Ports");
    checkValue(f.QoSType(), owner, u"der Typ");
    checkValue(f.QoSOption(), owner, u"die Option");
}
