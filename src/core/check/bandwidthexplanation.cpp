#include "check/bandwidthexplanation.h"

#include "base/numbers.h"
#include "base/unitconversion.h"
#include "inputs/bandwidthfield.h"
#include "model/document.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/siblingsum.h"

#include <QStringList>

#include <limits>

// The texts retrace the verdict of QoSClass::ValidateAgainst step by step, with the figures
// the verdict used: a minimum by its kbit value and the sum of its group, a maximum by the
// number typed (its unit is not converted), a main class's limit by the bare number of the
// line speed. Where a figure leaves 32 bits the check cannot run at all, and the colour is
// the one an earlier check left; that is said instead.
namespace {

constexpr qint64 Int32Max = std::numeric_limits<qint32>::max();
// Up to this many classes in a group the sum names each of them; beyond, it gives the count.
constexpr qsizetype ListedClasses = 4;

QString quoted(const QoSClass& c)
{
    return u'"' + (c.Caption().isEmpty() ? QStringLiteral("(ohne Titel)") : c.Caption()) + u'"';
}

QString kbitText(qint64 kbit)
{
    return QString::number(kbit) + QStringLiteral(" kbit");
}

bool isKbit(const QString& unit)
{
    return unit.compare(u"kbit", Qt::CaseInsensitive) == 0;
}

// A field as its box shows it, number and unit, with the kbit value beside any other unit.
QString figure(const BandwidthField& field)
{
    const QString shown = field.Value() + u' ' + field.Unit();
    if (isKbit(field.Unit()))
        return shown;
    const std::optional<qint32> kbit = field.TryKbit();
    return kbit ? shown + QStringLiteral(" (%1)").arg(kbitText(*kbit)) : shown;
}

// A figure that the check takes as kbit although its unit says otherwise.
QString countedAs(const QString& shown, const QString& counted)
{
    return QStringLiteral("%1, gezählt als %2 kbit (ohne Umrechnung)").arg(shown, counted);
}

QString tooLargeLine(const QString& subject, const BandwidthField& field)
{
    const double kbit =
        UnitConversion::KbitOf(Numbers::TryLeadingValue(field.Value()).value_or(0), field.Unit());
    return QStringLiteral("%1, %2 %3, ergibt %4 kbit;\ndas passt nicht in 32 Bit (höchstens %5 kbit).")
        .arg(subject, field.Value(), field.Unit(), Numbers::Format(kbit), QString::number(Int32Max));
}

QString cannotCheck(const QString& why)
{
    return why + QStringLiteral("\nSo lässt sich nicht prüfen; die Farbe ist die der letzten Prüfung.");
}

// The limit a class is judged against, named as the user finds it.
struct Limit
{
    std::optional<qint32> value; // as the check compares it
    QString owner;               // "das Maximum von "Internet"", "die Bandbreite Down"
    QString shown;               // the figure as the user sees it
    QString overflow;            // why there is no value
};

Limit limitOf(const QoSClass& c)
{
    Limit limit{c.TryLimit(), {}, {}, {}};
    if (const QoSClass* parent = c.ParentQoSObject()) {
        limit.owner = QStringLiteral("das Maximum von %1").arg(quoted(*parent));
        limit.shown = figure(*parent->MaxField());
        limit.overflow =
            tooLargeLine(QStringLiteral("Das Maximum von %1").arg(quoted(*parent)), *parent->MaxField());
        return limit;
    }
    // Any direction but "down" is limited by the up line, as the check reads it.
    const bool down = c.QoSDirection() == u"down";
    const QString name = down ? QStringLiteral("Bandbreite Down") : QStringLiteral("Bandbreite Up");
    QoSCommon& common = *c.document()->Common1();
    const BandwidthField& line = down ? *common.BandDownField() : *common.BandUpField();
    limit.owner = QStringLiteral("die ") + name;
    limit.shown = line.Value() + u' ' + line.Unit();
    // The line speed counts by its bare number: "16Mbit" limits the main classes to 16 kbit.
    if (limit.value && line.TryKbit() != limit.value)
        limit.shown = countedAs(limit.shown, QString::number(*limit.value));
    limit.overflow = QStringLiteral("Die %1 \"%2\" passt nicht in 32 Bit (höchstens %3).")
                         .arg(name, common.LineBandwidth(c.QoSDirection()), QString::number(Int32Max));
    return limit;
}

// Why the group's sum has no 32-bit value: a minimum of its own that does not fit, or the sum.
QString sumOverflow(const QoSClass& c, const QList<QoSClass*>& group, const SiblingSum& sum)
{
    for (const QoSClass* member : group)
        if (!member->MinField()->TryKbit())
            return tooLargeLine(member == &c ? QStringLiteral("Das Minimum dieser Klasse")
                                             : QStringLiteral("Das Minimum von %1").arg(quoted(*member)),
                                *member->MinField());
    const qint64 total = sum.Total().value_or(0);
    const QString members = QStringLiteral("Die Minima von %1 Klassen").arg(group.size());
    if (total > Int32Max || total < std::numeric_limits<qint32>::min())
        return QStringLiteral("%1 ergeben zusammen %2;\ndas passt nicht in 32 Bit (höchstens %3 kbit).")
            .arg(members, kbitText(total), QString::number(Int32Max));
    return QStringLiteral("%1 verlassen beim Zusammenzählen den 32-Bit-Bereich.").arg(members);
}

QStringList overbooked(const QoSClass& c, const QList<QoSClass*>& group, qint64 sum, const Limit& limit)
{
    QStringList lines;
    if (group.size() == 1) {
        lines << QStringLiteral("Das Minimum ist größer als %1.").arg(limit.owner)
              << QStringLiteral("Minimum: %1").arg(figure(*c.MinField()));
    } else {
        const QoSClass* parent = c.ParentQoSObject();
        lines << (parent
                      ? QStringLiteral("Die Minima der Klassen unter %1 übersteigen zusammen sein Maximum.")
                            .arg(quoted(*parent))
                      : QStringLiteral("Die Minima der Hauptklassen übersteigen zusammen %1.")
                            .arg(limit.owner));
        lines << QStringLiteral("Summe der Minima: %1 aus %2 Klassen").arg(kbitText(sum)).arg(group.size());
        if (group.size() <= ListedClasses) {
            for (const QoSClass* member : group)
                lines << QStringLiteral("  %1%2: %3")
                             .arg(quoted(*member),
                                  member == &c ? QStringLiteral(" (diese Klasse)") : QString(),
                                  figure(*member->MinField()));
        } else {
            lines << QStringLiteral("  davon diese Klasse: %1").arg(figure(*c.MinField()));
        }
    }
    lines << QStringLiteral("Grenze: %1").arg(limit.shown)
          << QStringLiteral("Zu viel: %1").arg(kbitText(sum - *limit.value));
    return lines;
}

QString stale(const QString& field)
{
    return QStringLiteral("Nach den jetzigen Werten wäre %1 gültig;\ndie Schaltfläche ✓ prüft neu.")
        .arg(field);
}

QString explainMinimum(const QoSClass& c)
{
    const BandwidthField& own = *c.MinField();
    const std::optional<qint32> ownKbit = own.TryKbit();
    if (!ownKbit)
        return cannotCheck(tooLargeLine(QStringLiteral("Das Minimum"), own));
    const QList<QoSClass*> group = SiblingSum::GroupOf(c);
    const SiblingSum sum(group);
    if (!sum.Checked())
        return cannotCheck(sumOverflow(c, group, sum));
    const Limit limit = limitOf(c);
    if (!limit.value)
        return cannotCheck(limit.overflow);
    QStringList lines;
    if (*ownKbit < 1)
        lines << QStringLiteral("Das Minimum muss mindestens 1 kbit sein; eingetragen ist %1.")
                     .arg(figure(own));
    if (*sum.Checked() > *limit.value)
        lines << overbooked(c, group, *sum.Checked(), limit);
    if (lines.isEmpty())
        lines << stale(QStringLiteral("das Minimum"));
    return lines.join(u'\n');
}

QString explainMaximum(const QoSClass& c)
{
    const BandwidthField& own = *c.MaxField();
    const Limit limit = limitOf(c);
    if (!limit.value)
        return cannotCheck(limit.overflow);
    const std::optional<double> entered = Numbers::TryLeadingValue(own.Value());
    if (!entered)
        return cannotCheck(tooLargeLine(QStringLiteral("Das Maximum"), own));
    if (*entered <= 0)
        return QStringLiteral("Das Maximum muss größer als 0 sein; eingetragen ist %1.").arg(figure(own));
    if (*entered > *limit.value) {
        // The maximum is compared by the number typed, whatever its unit.
        const QString shown = own.Value() + u' ' + own.Unit();
        return QStringList{QStringLiteral("Das Maximum ist größer als %1.").arg(limit.owner),
                           QStringLiteral("Maximum: %1")
                               .arg(isKbit(own.Unit()) ? shown : countedAs(shown, Numbers::Format(*entered))),
                           QStringLiteral("Grenze: %1").arg(limit.shown),
                           QStringLiteral("Zu viel: %1 kbit").arg(Numbers::Format(*entered - *limit.value))}
            .join(u'\n');
    }
    // A sum beyond 32 bits stops the check of the whole group, this maximum included.
    const QList<QoSClass*> group = SiblingSum::GroupOf(c);
    const SiblingSum sum(group);
    if (!sum.Checked())
        return cannotCheck(sumOverflow(c, group, sum));
    return stale(QStringLiteral("das Maximum"));
}

} // namespace

QString ExplainBandwidth(const QoSClass& c, BandwidthSide side)
{
    const BandwidthField* field = side == BandwidthSide::Minimum ? c.MinField() : c.MaxField();
    if (field->IsValid())
        return {};
    return side == BandwidthSide::Minimum ? explainMinimum(c) : explainMaximum(c);
}
