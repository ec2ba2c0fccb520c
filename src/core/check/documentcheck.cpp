#include "check/documentcheck.h"

#include "file/qosreader.h"
#include "inputs/bandwidthfield.h"
#include "inputs/ipfield.h"
#include "inputs/portfield.h"
#include "inputs/portlist.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/qosfilter.h"
#include "model/siblingsum.h"
#include "model/treedepth.h"
#include "model/validationpass.h"

#include <optional>

namespace {

// A figure beyond 32 bits (nothing) is named "Überlauf".
QString kbitText(std::optional<qint64> v)
{
    return v ? QString::number(*v) + QStringLiteral(" kbit") : QStringLiteral("Überlauf");
}

QString pageLabel(const ObjectPage& page)
{
    return page.Direction() == u"up" ? QStringLiteral("Up") : QStringLiteral("Down");
}

QString where(const ObjectPage& page, const QoSObject& o, const QString& kind)
{
    return QStringLiteral("%1: %2 \"%3\" in Zelle %4,%5")
        .arg(pageLabel(page), kind, o.Caption(), QString::number(o.MatrixX()), QString::number(o.MatrixY()));
}

QString balance(std::optional<qint64> guaranteed, std::optional<qint64> available, const QString& of)
{
    QString line =
        QStringLiteral("%1 garantiert von %2 %3").arg(kbitText(guaranteed), kbitText(available), of);
    if (guaranteed && available) {
        const qint64 spare = *available - *guaranteed;
        line += spare >= 0 ? QStringLiteral(", %1 kbit frei").arg(spare)
                           : QStringLiteral(", %1 kbit überbucht").arg(-spare);
    }
    return line;
}

void checkClass(const ObjectPage& page, const QoSClass& c, ValidationPass& pass, CheckReport& report)
{
    if (c.MinField()->IsValid() && c.MaxField()->IsValid())
        return;
    const std::optional<qint32> limit = c.TryLimit();
    const auto sum = pass.TrySiblingMinimumSum(c);
    const QString numbers =
        QStringLiteral(" (Grenze %1, Summe der Minima %2)").arg(kbitText(limit), kbitText(sum));
    if (!c.MinField()->IsValid())
        report.problems << where(page, c, QStringLiteral("Klasse")) + QStringLiteral(": Minimum ") +
                               c.QoSMinBandWidth() + QStringLiteral(" ist ungültig") + numbers;
    if (!c.MaxField()->IsValid())
        report.problems << where(page, c, QStringLiteral("Klasse")) + QStringLiteral(": Maximum ") +
                               c.QoSMaxBandWidth() + QStringLiteral(" ist ungültig") + numbers;
}

void checkFilter(const ObjectPage& page, const QoSFilter& f, CheckReport& report)
{
    const QString at = where(page, f, QStringLiteral("Filter"));
    const PortField& field = *f.PortInput();
    if (!field.CountFits())
        report.problems
            << at + QStringLiteral(": \"%1\" steht für mehr Ports, als sich zählen lassen").arg(f.QoSPort());
    else if (field.count() > PortField::MaxPorts)
        report.problems << at + QStringLiteral(": %1 Ports, erlaubt sind höchstens %2")
                                    .arg(field.count())
                                    .arg(PortField::MaxPorts);
    // A range written backwards counts two ports less than it stands for, and the router
    // gets only as many entries as counted.
    const QString port = f.QoSPort();
    for (const PortList::Item& item : PortList(port))
        if (item.Reversed())
            report.problems << at + QStringLiteral(": der Bereich \"%1\" läuft rückwärts und zählt %2 Ports, "
                                                   "steht aber für %3")
                                        .arg(item.text.toString(), QString::number(item.Counted()),
                                             QString::number(item.Expanded()));
    if (!IpField::IsValidAddress(f.IpInput()->Address()))
        report.problems << at + QStringLiteral(": ungültige IP-Adresse \"%1\"").arg(f.IpInput()->Address());
    if (!PortField::FirstPortInRange(port))
        report.problems
            << at + QStringLiteral(": der erste Port von \"%1\" liegt nicht zwischen 0 und 65535").arg(port);
}

void checkPage(const ObjectPage& page, QoSCommon& common, ValidationPass& pass, CheckReport& report)
{
    QList<QoSClass*> mainClasses;
    for (QoSObject* o : page.ContainedObjects()) {
        if (auto* c = qobject_cast<QoSClass*>(o)) {
            checkClass(page, *c, pass, report);
            // Cells in rows 0 to 3 do not make a tree shallow: a file may link deeper.
            if (const int level = c->Level(); level >= TreeDepth::ClassLevels)
                report.problems << where(page, *c, QStringLiteral("Klasse")) +
                                       QStringLiteral(
                                           ": liegt in Ebene %1, erlaubt sind höchstens vier Ebenen")
                                           .arg(level + 1);
            if (!c->ParentQoSObject())
                mainClasses << c;
        } else if (auto* f = qobject_cast<QoSFilter*>(o)) {
            checkFilter(page, *f, report);
        }
    }
    // The balance lines add in 64 bits: an overbooking beyond 32 bits is still named.
    for (QoSObject* o : page.ContainedObjects()) {
        auto* c = qobject_cast<QoSClass*>(o);
        if (!c || !c->HasChildClasses())
            continue;
        const std::optional<qint32> available = c->MaxField()->TryKbit();
        report.summaries << where(page, *c, QStringLiteral("Klasse")) + QStringLiteral(": ") +
                                balance(SiblingSum(SiblingSum::ChildClasses(*c)).Total(), available,
                                        QStringLiteral("verfügbar"));
    }
    // The line speed in real kbit, converted by its unit as the class calculator does.
    const BandwidthField& line = page.Direction() == u"up" ? *common.BandUpField() : *common.BandDownField();
    const std::optional<qint32> available = line.TryKbit();
    report.summaries << pageLabel(page) + QStringLiteral(": Hauptklassen: ") +
                            balance(SiblingSum(mainClasses).Total(), available,
                                    QStringLiteral("der Leitung"));
}

} // namespace

CheckReport CheckDocument(const Document& doc, const ImportReport& import)
{
    ValidationPass().ValidateDocument(doc);
    CheckReport report;
    if (!import.complete)
        report.problems << import.Message();
    ValidationPass pass;
    checkPage(*doc.Down1(), *doc.Common1(), pass, report);
    checkPage(*doc.Up1(), *doc.Common1(), pass, report);
    return report;
}
