#include "check/documentcheck.h"

#include "check/problemlist.h"

#include "inputs/bandwidthfield.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/siblingsum.h"
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

void summarisePage(const ObjectPage& page, QoSCommon& common, CheckReport& report)
{
    QList<QoSClass*> mainClasses;
    // The balance lines add in 64 bits: an overbooking beyond 32 bits is still named.
    for (QoSObject* o : page.ContainedObjects()) {
        auto* c = qobject_cast<QoSClass*>(o);
        if (!c)
            continue;
        if (!c->ParentQoSObject())
            mainClasses << c;
        if (!c->HasChildClasses())
            continue;
        const std::optional<qint32> available = c->MaxField()->TryKbit();
        report.summaries << DescribePlace(*c) + QStringLiteral(": ") +
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
    for (const Problem& problem : ListProblems(doc, import))
        report.problems << problem.text;
    summarisePage(*doc.Down1(), *doc.Common1(), report);
    summarisePage(*doc.Up1(), *doc.Common1(), report);
    return report;
}
