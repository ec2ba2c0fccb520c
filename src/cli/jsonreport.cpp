#include "jsonreport.h"

#include "clisession.h"
#include "inputs/bandwidthfield.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/qosfilter.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QString parentName(const QoSObject& o)
{
    const QoSClass* parent = o.ParentQoSObject();
    return parent ? parent->Name() : QString();
}

QJsonObject classJson(const QoSClass& c)
{
    return QJsonObject{
        {QStringLiteral("type"), QStringLiteral("class")},
        {QStringLiteral("name"), c.Name()},
        {QStringLiteral("caption"), c.Caption()},
        {QStringLiteral("x"), c.MatrixX()},
        {QStringLiteral("y"), c.MatrixY()},
        {QStringLiteral("parent"), parentName(c)},
        {QStringLiteral("min"), c.QoSMinBandWidth()},
        {QStringLiteral("max"), c.QoSMaxBandWidth()},
        {QStringLiteral("direction"), c.QoSDirection()},
        {QStringLiteral("prio"), c.QoSPrio()},
        {QStringLiteral("default"), c.DefaultClass()},
        {QStringLiteral("minValid"), c.MinField()->IsValid()},
        {QStringLiteral("maxValid"), c.MaxField()->IsValid()},
    };
}

QJsonObject filterJson(const QoSFilter& f)
{
    return QJsonObject{
        {QStringLiteral("type"), QStringLiteral("filter")},
        {QStringLiteral("name"), f.Name()},
        {QStringLiteral("caption"), f.Caption()},
        {QStringLiteral("x"), f.MatrixX()},
        {QStringLiteral("y"), f.MatrixY()},
        {QStringLiteral("parent"), parentName(f)},
        {QStringLiteral("ip"), f.QoSIP()},
        {QStringLiteral("port"), f.QoSPort()},
        {QStringLiteral("filterType"), f.QoSType()},
        {QStringLiteral("option"), f.QoSOption()},
        {QStringLiteral("count"), f.FilterCount().toLongLong()},
    };
}

QJsonObject pageJson(const ObjectPage& page)
{
    QJsonArray objects;
    for (QoSObject* o : page.ContainedObjects()) {
        if (auto* c = qobject_cast<QoSClass*>(o))
            objects.append(classJson(*c));
        else if (auto* f = qobject_cast<QoSFilter*>(o))
            objects.append(filterJson(*f));
    }
    return QJsonObject{
        {QStringLiteral("cols"), page.prop().Cols},
        {QStringLiteral("rows"), page.prop().Rows},
        {QStringLiteral("objects"), objects},
    };
}

} // namespace

QByteArray JsonReport(CliSession& session)
{
    session.ValidateAll();
    Document& doc = session.document();
    const QoSCommon& common = *doc.Common1();
    const QJsonObject commonJson{
        {QStringLiteral("QoSInternetDev"), common.QoSInternetDev()},
        {QStringLiteral("QoSInternetBandDown"), common.QoSInternetBandDown()},
        {QStringLiteral("QoSInternetBandUp"), common.QoSInternetBandUp()},
        {QStringLiteral("QoSInternetDefaultDown"), common.QoSInternetDefaultDown()},
        {QStringLiteral("QoSInternetDefaultUp"), common.QoSInternetDefaultUp()},
        {QStringLiteral("QoSLocalNetDev"), common.QoSLocalNetDev()},
        {QStringLiteral("QoSLocalBand"), common.QoSLocalBand()},
        {QStringLiteral("QoSDescription"), common.QoSDescription()},
        {QStringLiteral("QoSVersion"), common.QoSVersion()},
    };
    // QJsonObject keeps its keys sorted, so the output is sorted at every level.
    const QJsonObject root{
        {QStringLiteral("common"), commonJson},
        {QStringLiteral("messages"), QJsonArray::fromStringList(session.Messages())},
        {QStringLiteral("pages"), QJsonObject{{QStringLiteral("down"), pageJson(*doc.Down1())},
                                              {QStringLiteral("up"), pageJson(*doc.Up1())}}},
    };
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
}
