#include "file/importreport.h"

#include "file/qosfiletable.h"

#include <algorithm>

namespace {

void warnAboutMissing(ImportReport& report, const QoSFileTable& file, qint32 announced, bool filters)
{
    qint32 missing = 0;
    qint32 first = 0;
    qint32 last = 0;
    for (qint32 n = 1; n <= announced; ++n) {
        if (file.HasNumbered(filters, n))
            continue;
        if (missing++ == 0)
            first = n;
        last = n;
    }
    if (missing == 0)
        return;
    const QString one = filters ? QStringLiteral("Filtereintrag") : QStringLiteral("Klasse");
    const QString many = filters ? QStringLiteral("Filtereinträge") : QStringLiteral("Klassen");
    QString text;
    if (missing == 1)
        text = QStringLiteral("%1 %2 von %3 angekündigten fehlt in der Datei.")
                   .arg(one)
                   .arg(first)
                   .arg(announced);
    else if (last - first + 1 == missing)
        text = QStringLiteral("%1 %2 bis %3 von %4 angekündigten fehlen in der Datei.")
                   .arg(many)
                   .arg(first)
                   .arg(last)
                   .arg(announced);
    else
        text =
            QStringLiteral("%1 von %2 angekündigten %3 fehlen in der Datei, %4 erste ist %5, %4 letzte %6.")
                .arg(missing)
                .arg(announced)
                .arg(filters ? QStringLiteral("Filtereinträgen") : QStringLiteral("Klassen"),
                     filters ? QStringLiteral("der") : QStringLiteral("die"))
                .arg(first)
                .arg(last);
    report.warnings << text;
}

} // namespace

// A file that is no qos.txt, or one cut off part-way, is read all the same: the defaults
// would silently stand in for what is not there.
void ImportReport::WarnAboutMissing(const QoSFileTable& file, qint32 classes, qint32 filters)
{
    if (!file.HasAnyVariable()) {
        warnings << QStringLiteral("Die Datei enthält keine Variable einer qos.txt.");
        return;
    }
    warnAboutMissing(*this, file, classes, false);
    warnAboutMissing(*this, file, filters, true);
}

void ImportReport::AddRefusal(bool filters, const QString& reason, qint32 number)
{
    auto it = std::find_if(refusals.begin(), refusals.end(),
                           [&](const Refusal& r) { return r.filters == filters && r.reason == reason; });
    if (it == refusals.end()) {
        refusals.append(Refusal{filters, reason, 0, {}});
        it = refusals.end() - 1;
    }
    ++it->count;
    if (it->first.size() < 5)
        it->first << number;
    complete = false;
}

QString ImportReport::Message() const
{
    QStringList sentences;
    if (stopped)
        sentences << QStringLiteral(
                         "Die Datei wurde nicht vollständig gelesen: %1 Gelesen: %2 von %3 Klassen, %4 von "
                         "%5 Filtereinträgen.")
                         .arg(reason, QString::number(classesRead), QString::number(classesAnnounced),
                              QString::number(entriesRead), QString::number(entriesAnnounced));
    // "Klasse 7 nicht angelegt: ..." or "200 Klassen nicht angelegt, ...: 5, 6, 7, 8, 9 und 195 weitere."
    for (const Refusal& r : refusals) {
        if (r.count == 1) {
            sentences << QStringLiteral("%1 %2 nicht angelegt: %3.")
                             .arg(r.filters ? QStringLiteral("Filtereintrag") : QStringLiteral("Klasse"),
                                  QString::number(r.first.value(0)), r.reason);
            continue;
        }
        QStringList numbers;
        for (const qint32 n : r.first)
            numbers << QString::number(n);
        QString list = numbers.join(QStringLiteral(", "));
        if (r.count > r.first.size())
            list += QStringLiteral(" und %1 weitere").arg(r.count - r.first.size());
        sentences << QStringLiteral("%1 %2 nicht angelegt, %3: %4.")
                         .arg(QString::number(r.count),
                              r.filters ? QStringLiteral("Filtereinträge") : QStringLiteral("Klassen"),
                              r.reason, list);
    }
    sentences << warnings;
    return sentences.join(u' ');
}
