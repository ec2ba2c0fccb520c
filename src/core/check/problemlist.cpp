#include "check/problemlist.h"

#include "check/bandwidthexplanation.h"
#include "file/importreport.h"
#include "inputs/bandwidthfield.h"
#include "inputs/ipfield.h"
#include "inputs/optionfield.h"
#include "inputs/portfield.h"
#include "inputs/portlist.h"
#include "inputs/typefield.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/qosfilter.h"
#include "model/treedepth.h"

namespace {

class Collector
{
public:
    explicit Collector(QList<Problem>& list) : m_list(list) {}

    void add(Problem::Kind kind, QoSObject* object, const QString& what, const QString& detail = {})
    {
        m_list.append(Problem{kind, object, DescribePlace(*object) + QStringLiteral(": ") + what, detail});
    }
    void addCommon(const QString& what)
    {
        m_list.append(Problem{Problem::Kind::Kept, nullptr, QStringLiteral("Allgemein: ") + what, {}, true});
    }

private:
    QList<Problem>& m_list;
};

// A text such as "1.5Mbit" reads as another number once split and joined again, so the field
// keeps the text as it was read and shows a number and unit that are not quite it.
// A bandwidth's explanation is a sentence and then one figure a line. The list and check give
// one line a problem, so the figures follow the sentence, parted by semicolons.
QString oneLine(const QString& explanation)
{
    QStringList lines = explanation.split(u'\n', Qt::SkipEmptyParts);
    for (QString& line : lines)
        line = line.trimmed();
    const QString sentence = lines.isEmpty() ? QString() : lines.takeFirst();
    return lines.isEmpty() ? sentence : sentence + u' ' + lines.join(QStringLiteral("; "));
}

void addBandwidth(QoSClass& c, BandwidthSide side, Collector& out)
{
    const QString explanation = ExplainBandwidth(c, side);
    out.add(Problem::Kind::Bandwidth, &c, oneLine(explanation), explanation);
}

bool keptAsText(const BandwidthField& field)
{
    return field.Bandwidth() != field.Value() + field.Unit();
}

QString keptBandwidth(const QString& name, const BandwidthField& field)
{
    return QStringLiteral("%1 \"%2\" lässt sich nicht in Zahl und Einheit teilen und bleibt als Text "
                          "stehen, bis es geändert wird")
        .arg(name, field.Bandwidth());
}

// The priority box takes a single digit 0 to 3 or nothing; a file may give anything.
bool isPriority(const QString& prio)
{
    return prio.isEmpty() || (prio.size() == 1 && prio[0] >= u'0' && prio[0] <= u'3');
}

void checkCommon(QoSCommon& common, Collector& out)
{
    const std::pair<const char*, BandwidthField*> fields[] = {
        {"Bandbreite Down", common.BandDownField()},
        {"Bandbreite Up", common.BandUpField()},
        {"Bandbreite lokales Netzwerk", common.LocalBandField()}};
    for (const auto& [name, field] : fields)
        if (keptAsText(*field))
            out.addCommon(keptBandwidth(QString::fromUtf8(name), *field));
}

void checkClass(QoSClass& c, Collector& out)
{
    if (!c.MinField()->IsValid())
        addBandwidth(c, BandwidthSide::Minimum, out);
    if (!c.MaxField()->IsValid())
        addBandwidth(c, BandwidthSide::Maximum, out);
    if (keptAsText(*c.MinField()))
        out.add(Problem::Kind::Kept, &c, keptBandwidth(QStringLiteral("das Minimum"), *c.MinField()));
    if (keptAsText(*c.MaxField()))
        out.add(Problem::Kind::Kept, &c, keptBandwidth(QStringLiteral("das Maximum"), *c.MaxField()));
    if (!isPriority(c.QoSPrio()))
        out.add(Problem::Kind::Kept, &c,
                QStringLiteral("die Priorität \"%1\" ist keine von 0 bis 3 und bleibt als Text stehen")
                    .arg(c.QoSPrio()));
    // Cells in rows 0 to 3 do not make a tree shallow: a file may link deeper.
    if (const int level = c.Level(); level >= TreeDepth::ClassLevels)
        out.add(Problem::Kind::Depth, &c,
                QStringLiteral("liegt in Ebene %1, erlaubt sind höchstens vier Ebenen").arg(level + 1));
}

void checkFilter(QoSFilter& f, Collector& out)
{
    const PortField& field = *f.PortInput();
    const QString port = f.QoSPort();
    if (!field.CountFits())
        out.add(Problem::Kind::Ports, &f,
                QStringLiteral("\"%1\" steht für mehr Ports, als sich zählen lassen").arg(port));
    else if (field.count() > PortField::MaxPorts)
        out.add(Problem::Kind::Ports, &f,
                QStringLiteral("%1 Ports, erlaubt sind höchstens %2")
                    .arg(field.count())
                    .arg(PortField::MaxPorts));
    // A range written backwards counts two ports less than it stands for, and the router
    // gets only as many entries as counted.
    for (const PortList::Item& item : PortList(port))
        if (item.Reversed())
            out.add(Problem::Kind::Ports, &f,
                    QStringLiteral("der Bereich \"%1\" läuft rückwärts und zählt %2 Ports, steht aber für %3")
                        .arg(item.text.toString(), QString::number(item.Counted()),
                             QString::number(item.Expanded())));
    const IpField& ip = *f.IpInput();
    if (!IpField::IsValidAddress(ip.Address()))
        out.add(Problem::Kind::Address, &f, QStringLiteral("ungültige IP-Adresse \"%1\"").arg(ip.Address()));
    if (!ip.TryText())
        out.add(Problem::Kind::Address, &f,
                QStringLiteral("die Maskenbits \"%1\" sind zu lang für eine Zahl").arg(ip.MaskBits()));
    if (!PortField::FirstPortInRange(port))
        out.add(Problem::Kind::Ports, &f,
                QStringLiteral("der erste Port von \"%1\" liegt nicht zwischen 0 und 65535").arg(port));
    if (!TypeField::Values().contains(f.QoSType()))
        out.add(
            Problem::Kind::Kept, &f,
            QStringLiteral("der Typ \"%1\" ist weder \"client\" noch \"server\" und bleibt als Text stehen")
                .arg(f.QoSType()));
    if (const QString option = f.QoSOption(); !option.isEmpty() && !OptionField::Options().contains(option))
        out.add(Problem::Kind::Kept, &f,
                QStringLiteral("die Option \"%1\" ist keine von %2 und bleibt als Text stehen")
                    .arg(option, OptionField::Options().join(QStringLiteral(", "))));
}

void checkPage(const ObjectPage& page, Collector& out)
{
    for (QoSObject* o : page.ContainedObjects()) {
        if (auto* c = qobject_cast<QoSClass*>(o))
            checkClass(*c, out);
        else if (auto* f = qobject_cast<QoSFilter*>(o))
            checkFilter(*f, out);
    }
}

} // namespace

bool Problem::operator==(const Problem& other) const
{
    return kind == other.kind && object == other.object && text == other.text && detail == other.detail &&
           common == other.common;
}

QString ProblemCountText(qsizetype count)
{
    if (count == 0)
        return QStringLiteral("Keine Probleme");
    return count == 1 ? QStringLiteral("1 Problem") : QStringLiteral("%1 Probleme").arg(count);
}

QString DescribePlace(const QoSObject& o)
{
    const ObjectPage* page = o.GetObjectPage();
    const QString pageLabel =
        page && page->Direction() == u"up" ? QStringLiteral("Up") : QStringLiteral("Down");
    const QString kind = o.IsClass() ? QStringLiteral("Klasse") : QStringLiteral("Filter");
    return QStringLiteral("%1: %2 \"%3\" in Zelle %4,%5")
        .arg(pageLabel, kind, o.Caption(), QString::number(o.MatrixX()), QString::number(o.MatrixY()));
}

QList<Problem> ListProblems(const Document& doc, const ImportReport& import)
{
    QList<Problem> list;
    if (!import.complete)
        list.append(Problem{Problem::Kind::Import, nullptr, import.Message(), {}});
    Collector out(list);
    checkCommon(*doc.Common1(), out);
    checkPage(*doc.Down1(), out);
    checkPage(*doc.Up1(), out);
    return list;
}
