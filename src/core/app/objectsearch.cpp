#include "app/objectsearch.h"

#include "inputs/portlist.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosfilter.h"

namespace {

// Whether a text of digits names a port that one of the list's items stands for.
bool coversPort(const QString& list, QStringView number)
{
    // More digits than any port has could not fit the number either.
    if (number.size() > 9)
        return false;
    for (QChar c : number)
        if (c < u'0' || c > u'9')
            return false;
    const qint32 port = number.toInt();
    for (const PortList::Item& item : PortList(list)) {
        if (item.range) {
            // A reversed range runs down, but stands for the same ports.
            if (item.EndsFit() && std::min(*item.from, *item.to) <= port &&
                port <= std::max(*item.from, *item.to))
                return true;
            continue;
        }
        bool ok = false;
        if (item.text.trimmed().toInt(&ok) == port && ok)
            return true;
    }
    return false;
}

} // namespace

ObjectSearch::ObjectSearch(Document& document) : m_document(document) {}

bool ObjectSearch::Matches(const QoSObject& box, QStringView text)
{
    const QStringView wanted = text.trimmed();
    if (wanted.isEmpty())
        return false;
    if (box.Caption().contains(wanted, Qt::CaseInsensitive))
        return true;
    const auto* filter = qobject_cast<const QoSFilter*>(&box);
    if (!filter)
        return false;
    const QString port = filter->QoSPort();
    return filter->QoSIP().contains(wanted, Qt::CaseInsensitive) ||
           port.contains(wanted, Qt::CaseInsensitive) || coversPort(port, wanted);
}

QList<QoSObject*> ObjectSearch::FindAll(const QString& text) const
{
    QList<QoSObject*> out;
    if (text.trimmed().isEmpty())
        return out;
    for (ObjectPage* page : {m_document.Down1(), m_document.Up1()})
        for (QoSObject* box : page->ObjectsInWriteOrder())
            if (Matches(*box, text))
                out.append(box);
    return out;
}

std::optional<ObjectSearch::Place> ObjectSearch::placeOf(const QoSObject* box) const
{
    if (!box || m_document.Object(box->Name()) != box)
        return std::nullopt;
    const ObjectPage* page = box->GetObjectPage();
    if (page != m_document.Down1() && page != m_document.Up1())
        return std::nullopt;
    return Place{page == m_document.Down1() ? 0 : 1, box->MatrixY(), box->MatrixX(), box->Sequence()};
}

ObjectSearch::Hit ObjectSearch::Next(const QoSObject* from, bool forward) const
{
    // Reading the pages first settles every column, which the places below are made of.
    const QList<QoSObject*> matches = FindAll(m_text);
    Hit hit;
    hit.count = matches.size();
    if (matches.isEmpty())
        return hit;

    std::optional<Place> start = placeOf(from);
    if (!start && !m_foundName.isEmpty()) {
        // The box last found may have gone since: the step starts where it stood.
        start = placeOf(m_document.Object(m_foundName));
        if (!start)
            start = m_foundPlace;
    }
    qsizetype i = forward ? 0 : matches.size() - 1;
    if (start) {
        if (forward) {
            while (i < matches.size() && *placeOf(matches.at(i)) <= *start)
                ++i;
            hit.wrapped = i == matches.size();
        } else {
            while (i >= 0 && *placeOf(matches.at(i)) >= *start)
                --i;
            hit.wrapped = i < 0;
        }
        if (hit.wrapped)
            i = forward ? 0 : matches.size() - 1;
    }
    hit.object = matches.at(i);
    hit.index = i + 1;
    return hit;
}

void ObjectSearch::Found(const QoSObject* box)
{
    const std::optional<Place> place = placeOf(box);
    m_foundName = place ? box->Name() : QString();
    m_foundPlace = place.value_or(Place{});
}

QString ObjectSearch::Message(const Hit& hit, const QString& text, bool forward)
{
    const QString quoted = QStringLiteral("„") + text.trimmed() + QStringLiteral("“");
    if (!hit.object)
        return QStringLiteral("Nichts gefunden: ") + quoted;
    QString message = QStringLiteral("Treffer %1 von %2: ").arg(hit.index).arg(hit.count) + quoted;
    if (hit.wrapped)
        message += forward ? QStringLiteral(" (wieder am Anfang)") : QStringLiteral(" (wieder am Ende)");
    return message;
}
