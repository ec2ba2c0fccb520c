#include "checkreport.h"

#include "base/numbers.h"
#include "base/qoserror.h"
#include "clisession.h"
#include "inputs/bandwidthfield.h"
#include "inputs/ipfield.h"
#include "inputs/portfield.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/qosfilter.h"
#include "model/treedepth.h"
#include "model/validationpass.h"

#include <functional>
#include <optional>

namespace {

std::optional<qint64> trapped(const std::function<qint64()>& f)
{
    try {
        return f();
    } catch (const QoSError&) {
        return std::nullopt;
    }
}

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

// The sum of the minimums of some classes in kbit; nothing when one of them is beyond 32 bits.
std::optional<qint64> minimumSum(const QList<QoSClass*>& classes)
{
    return trapped([&] {
        qint64 sum = 0;
        for (const QoSClass* c : classes)
            sum += c->QoSMinBandWidthKBit();
        return sum;
    });
}

void checkClass(const ObjectPage& page, const QoSClass& c, ValidationPass& pass, CheckReport& report)
{
    if (c.MinField()->IsValid() && c.MaxField()->IsValid())
        return;
    const auto limit = trapped([&] { return qint64(c.Limit()); });
    const auto sum = trapped([&] { return qint64(pass.SiblingMinimumSum(c)); });
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
    for (const QStringView item : QStringView(f.QoSPort()).tokenize(u',')) {
        const auto ends = item.split(u'-');
        if (ends.size() != 2)
            continue;
        std::optional<qint64> from;
        std::optional<qint64> to;
        try {
            from = Numbers::RoundToInt32(Numbers::LeadingValue(ends[0]));
            to = Numbers::RoundToInt32(Numbers::LeadingValue(ends[1]));
        } catch (const QoSError&) {
            continue;
        }
        if (*to < *from)
            report.problems << at + QStringLiteral(": der Bereich \"%1\" läuft rückwärts und zählt %2 Ports, "
                                                   "steht aber für %3")
                                        .arg(item.toString(), QString::number(*from - *to - 1),
                                             QString::number(*from - *to + 1));
    }
    if (!IpField::IsValidAddress(f.IpInput()->Address()))
        report.problems << at + QStringLiteral(": ungültige IP-Adresse \"%1\"").arg(f.IpInput()->Address());
    // Compared as a double: a port of twenty digits fits no integer.
    double first = -1;
    try {
        first = Numbers::LeadingValue(f.QoSPort());
    } catch (const QoSError&) {
    }
    if (!(first >= 0 && first <= 65535))
        report.problems << at + QStringLiteral(": der erste Port von \"%1\" liegt nicht zwischen 0 und 65535")
                                    .arg(f.QoSPort());
}

void checkPage(const ObjectPage& page, const QoSCommon& common, ValidationPass& pass, CheckReport& report)
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
    for (QoSObject* o : page.ContainedObjects()) {
        auto* c = qobject_cast<QoSClass*>(o);
        if (!c || !c->HasChildClasses())
            continue;
        QList<QoSClass*> children;
        for (QoSObject* child : c->ChildQoSObjects())
            if (auto* cc = qobject_cast<QoSClass*>(child))
                children << cc;
        const auto available = trapped([&] { return qint64(c->QoSMaxBandWidthKBit()); });
        report.summaries << where(page, *c, QStringLiteral("Klasse")) + QStringLiteral(": ") +
                                balance(minimumSum(children), available, QStringLiteral("verfügbar"));
    }
    // The line speed in real kbit, converted by its unit as the class calculator does.
    const BandwidthField& line = page.Direction() == u"up" ? *const_cast<QoSCommon&>(common).BandUpField()
                                                           : *const_cast<QoSCommon&>(common).BandDownField();
    const auto available = trapped([&] { return qint64(line.kbit()); });
    report.summaries << pageLabel(page) + QStringLiteral(": Hauptklassen: ") +
                            balance(minimumSum(mainClasses), available, QStringLiteral("der Leitung"));
}

} // namespace

CheckReport CheckDocument(CliSession& session)
{
    session.ValidateAll();
    CheckReport report;
    if (!session.report().complete)
        report.problems << session.report().Message();
    Document& doc = session.document();
    ValidationPass pass;
    checkPage(*doc.Down1(), *doc.Common1(), pass, report);
    checkPage(*doc.Up1(), *doc.Common1(), pass, report);
    return report;
}
