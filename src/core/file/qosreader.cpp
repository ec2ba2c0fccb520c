#include "file/qosreader.h"

#include "base/numbers.h"
#include "base/qoserror.h"
#include "base/userprompt.h"
#include "file/qosfiletable.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"

#include <QFile>
#include <QFileInfo>
#include <QPointer>

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <string>

namespace {

using Field = QoSFileTable::Field;

QoSError fileError(const QString& text)
{
    return QoSError(QoSError::Kind::File, text);
}

struct Cell
{
    std::optional<qint16> x;
    std::optional<qint16> y;
};

// A cell coordinate as an integer in the 16-bit range. Plain digits, as the editor writes them,
// are read directly; everything else goes through the full number rules.
qint16 cellPart(QStringView text)
{
    if (!text.isEmpty() && text.size() <= 4 &&
        std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; })) {
        int v = 0;
        for (const QChar c : text)
            v = v * 10 + (c.unicode() - u'0');
        return qint16(v);
    }
    return Numbers::AsInt16(text);
}

class Import
{
public:
    Import(Document& doc, const QoSFileTable& file, ImportReport& report)
        : m_doc(doc), m_file(file), m_status(doc.statusWindow()), m_report(report)
    {}

    void run()
    {
        qint32 classes = 0;
        qint32 filters = 0;
        bool layout = false;
        try {
            m_place = Place::Header;
            message(QStringLiteral("Import...Header"));
            readCommon();
            // Cells and page size are only trusted from files this editor wrote.
            layout = value(u"#QOS_FILEVERSION", QString()) == u"Tarnwick 1.1";
            if (layout)
                readPageSize();
            classes = readCount(QStringLiteral("QOS_CLASS_N"), QStringLiteral("Klassen"));
            m_report.classesAnnounced = classes;
            filters = readCount(QStringLiteral("QOS_FILTER_N"), QStringLiteral("Filtereinträge"));
            m_report.entriesAnnounced = filters;
            warnAboutMissing(classes, filters);
            m_doc.ReserveObjects(qsizetype(classes) + filters);
        } catch (const QoSError&) {
            m_report.where = where();
            throw;
        }
        try {
            for (qint32 n = 1; n <= classes; ++n) {
                m_place = Place::Class;
                m_number = n;
                readClass(n, classes, layout);
                m_report.classesRead = n;
            }
        } catch (const QoSError& e) {
            linkLaterParents();
            m_report.where = where();
            throw located(e);
        }
        linkLaterParents();
        try {
            for (qint32 m = 1; m <= filters; ++m) {
                m_place = Place::Filter;
                m_number = m;
                if (m_status) {
                    m_status->SetMessage(QStringLiteral("Import...Filter ") + QString::number(m));
                    m_status->SetProgress(classes + m, classes + filters);
                }
                readFilter(m, layout);
                m_report.entriesRead = m;
            }
        } catch (const QoSError& e) {
            m_report.where = where();
            throw located(e);
        }
        m_place = Place::Done;
    }

    // Where the import stands; told as text only when it stops there.
    QString where() const
    {
        switch (m_place) {
        case Place::Header:
            return QStringLiteral("Kopfteil");
        case Place::Class:
            return QStringLiteral("Klasse %1").arg(m_number);
        case Place::Filter:
            return QStringLiteral("Filtereintrag %1").arg(m_number);
        case Place::Done:
            break;
        }
        return QString();
    }

private:
    // An error inside a class or a filter entry names it.
    QoSError located(const QoSError& e) const
    {
        const QString at = where();
        if (e.message().startsWith(at + u' ') || e.message().startsWith(at + u':'))
            return e;
        return fileError(at + QStringLiteral(": ") + e.message());
    }

    // A file that is no qos.txt, or one cut off part-way, is read all the same: the defaults
    // would silently stand in for what is not there.
    void warnAboutMissing(qint32 classes, qint32 filters)
    {
        if (!m_file.HasAnyVariable()) {
            m_report.warnings << QStringLiteral("Die Datei enthält keine Variable einer qos.txt.");
            return;
        }
        warnAboutMissing(classes, false);
        warnAboutMissing(filters, true);
    }
    void warnAboutMissing(qint32 announced, bool filters)
    {
        qint32 missing = 0;
        qint32 first = 0;
        qint32 last = 0;
        for (qint32 n = 1; n <= announced; ++n) {
            if (m_file.HasNumbered(filters, n))
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
            text = QStringLiteral(
                       "%1 von %2 angekündigten %3 fehlen in der Datei, %4 erste ist %5, %4 letzte %6.")
                       .arg(missing)
                       .arg(announced)
                       .arg(filters ? QStringLiteral("Filtereinträgen") : QStringLiteral("Klassen"),
                            filters ? QStringLiteral("der") : QStringLiteral("die"))
                       .arg(first)
                       .arg(last);
        m_report.warnings << text;
    }

    QString value(QStringView name, const QString& defaultValue, bool multiLine = false) const
    {
        return m_file.GetQoSValue(name, defaultValue, multiLine);
    }
    QString value(Field field, qint32 number, const QString& defaultValue) const
    {
        return m_file.Value(field, number, defaultValue);
    }

    void message(const QString& text)
    {
        if (m_status)
            m_status->SetMessage(text);
    }

    void readCommon()
    {
        QoSCommon& common = *m_doc.Common1();
        common.SetQoSInternetDev(value(u"QOS_INTERNET_DEV", QStringLiteral("ppp0")));
        setBandwidth(u"QOS_INTERNET_BAND_DOWN", QStringLiteral("768kbit"),
                     [&common](const QString& v) { common.SetQoSInternetBandDown(v); });
        setBandwidth(u"QOS_INTERNET_BAND_UP", QStringLiteral("128kbit"),
                     [&common](const QString& v) { common.SetQoSInternetBandUp(v); });
        common.SetQoSInternetDefaultDown(value(u"QOS_INTERNET_DEFAULT_DOWN", QStringLiteral("0")));
        common.SetQoSInternetDefaultUp(value(u"QOS_INTERNET_DEFAULT_UP", QStringLiteral("0")));
        common.SetQoSLocalNetDev(value(u"QOS_LOCALNET_DEV", QStringLiteral("eth0")));
        setBandwidth(u"QOS_LOCALNET_BAND", QStringLiteral("10Mbit"),
                     [&common](const QString& v) { common.SetQoSLocalBand(v); });
        common.SetQoSDescription(value(u"#QOS_DESCRIPTION", QString(), true));
        common.SetQoSVersion(value(u"%Version", QStringLiteral("unbekannt")));
    }

    template <typename Set> void setBandwidth(QStringView name, const QString& defaultValue, Set set)
    {
        const QString v = value(name, defaultValue);
        try {
            set(v);
        } catch (const QoSError& e) {
            throw fileError(QStringLiteral("%1='%2': %3").arg(name, v, e.message()));
        }
    }

    void readPageSize()
    {
        const QStringList parts = value(u"#QOS_PAGESIZE", QStringLiteral("10,5")).split(u',');
        if (parts.size() < 2)
            throw fileError(
                QStringLiteral("Die Seitengröße '%1' hat nicht zwei Teile.").arg(parts.join(u',')));
        qint32 cols = Numbers::RoundToInt32(Numbers::LeadingValue(parts[0]));
        qint32 rows = Numbers::RoundToInt32(Numbers::LeadingValue(parts[1]));
        m_doc.Down1()->SetGridDimensions(cols, rows);
    }

    qint32 readCount(const QString& name, const QString& what)
    {
        const QString text = value(name, QStringLiteral("0"));
        qint32 n = 0;
        try {
            n = Numbers::AsInteger(text);
        } catch (const QoSError&) {
            throw fileError(QStringLiteral("%1='%2' ist keine ganze Zahl.").arg(name, text));
        }
        // Every file the editor writes must read back, and one filter may stand for many
        // entries; beyond this a file is taken as broken rather than read for minutes.
        if (n > MaxQoSObjectsInFile)
            throw fileError(QStringLiteral("%1='%2': mehr als %3 %4 werden nicht gelesen.")
                                .arg(name, text)
                                .arg(MaxQoSObjectsInFile)
                                .arg(what));
        return n;
    }

    Cell readCell(Field field, qint32 number)
    {
        const QString text = value(field, number, QStringLiteral("0,0"));
        const qsizetype comma = text.indexOf(u',');
        try {
            if (comma < 0)
                throw QoSError::typeMismatch(text);
            return {cellPart(QStringView(text).first(comma)), cellPart(QStringView(text).sliced(comma + 1))};
        } catch (const QoSError&) {
            throw fileError(QStringLiteral("%1 hat die ungültige Zellposition '%2'.").arg(where(), text));
        }
    }

    void readClass(qint32 n, qint32 classes, bool layout)
    {
        message(QStringLiteral("Import...Class ") + QString::number(n));
        QString caption = value(Field::ClassCaption, n, QString());
        if (caption.isEmpty())
            caption = QStringLiteral("Class ") + QString::number(n);
        QString parent = value(Field::ClassParent, n, QStringLiteral("0"));
        const QString minimum = value(Field::ClassMinBandwidth, n, QStringLiteral("768kbit"));
        const QString maximum = value(Field::ClassMaxBandwidth, n, QStringLiteral("768kbit"));
        QString direction = value(Field::ClassDirection, n, QStringLiteral("down"));
        // "Up" or "DOWN" names a page as well, and from here on it is that page's own name: the
        // class can be its direction's default class and is written back with that name.
        if (direction.compare(u"down", Qt::CaseInsensitive) == 0)
            direction = QStringLiteral("down");
        else if (direction.compare(u"up", Qt::CaseInsensitive) == 0)
            direction = QStringLiteral("up");
        const QString prio = value(Field::ClassPrio, n, QStringLiteral("0"));

        // Judged against the common page as it stands now.
        const QoSCommon& common = *m_doc.Common1();
        const auto names = [n](const QString& number) {
            return Numbers::TryLeadingValue(number) == double(n); // beyond any double: no class
        };
        const bool isDefault = (direction == u"down" && names(common.QoSInternetDefaultDown())) ||
                               (direction == u"up" && names(common.QoSInternetDefaultUp()));

        ObjectPage* page = m_doc.PageForDirection(direction);
        if (!page)
            throw fileError(QStringLiteral("%1 hat die Richtung '%2'.").arg(where(), direction));
        Cell cell;
        if (layout)
            cell = readCell(Field::ClassCellPos, n);

        // A parent that comes later in the file does not exist yet: the class is made without
        // it and linked once all classes are there.
        const std::optional<qint32> parentNumber = Document::ClassNumber(parent);
        const bool later = parentNumber && *parentNumber > n && *parentNumber <= classes;
        if (later)
            parent = QStringLiteral("0");

        // The n-th class gets number n, so the parent numbers of the file name classes made before.
        int classIdx = n;
        QoSClass* c = nullptr;
        try {
            c = page->AddClass(parent, minimum, maximum, direction, prio, classIdx, isDefault, caption,
                               cell.x, cell.y, true);
        } catch (const QoSError& e) {
            if (e.kind() == QoSError::Kind::Tree)
                throw fileError(QStringLiteral("%1 steht nicht auf der Seite ihrer übergeordneten Klasse %2.")
                                    .arg(where(), parent));
            throw;
        }
        if (!c)
            refused(false, page,
                    cell.y ? QStringLiteral("Klassen stehen nur in den Zeilen 0 bis 3")
                           : QStringLiteral("mehr als vier Ebenen"));
        else if (later)
            m_laterParents.push_back({c, *parentNumber});
    }

    // The page said no; the number is the file's, and the import goes on.
    void refused(bool filter, const ObjectPage* page, const QString& noFurtherLevel)
    {
        QString reason;
        switch (page->LastRefusal()) {
        case ObjectPage::Refusal::ParentHasFilters:
            reason = QStringLiteral("die übergeordnete Klasse hat Filter");
            break;
        case ObjectPage::Refusal::NoFurtherLevel:
            reason = noFurtherLevel;
            break;
        case ObjectPage::Refusal::ClassHasSubClasses:
            reason = QStringLiteral("die Klasse hat Unterklassen");
            break;
        default:
            reason = page->LastRefusalText();
            break;
        }
        m_report.AddRefusal(filter, reason, m_number);
    }

    void linkLaterParents()
    {
        // By the usual rules: a parent on the other page, a class with filters or a descendant
        // of the class is left out without a word.
        for (const auto& [c, number] : m_laterParents) {
            if (!c)
                continue;
            c->SetQoSParent(QString::number(number));
            // A sub class takes its parent's direction, as when the parent comes first.
            if (const QoSClass* parent = c->ParentQoSObject())
                c->SetQoSDirection(parent->QoSDirection());
        }
        m_laterParents.clear();
    }

    void readFilter(qint32 m, bool layout)
    {
        const QString caption = value(Field::FilterCaption, m, QString());
        const QString classText = value(Field::FilterClass, m, QString());
        const QString ip = value(Field::FilterIp, m, QString());
        QString port = value(Field::FilterPort, m, QString());
        const QString portList = value(Field::FilterPortExt, m, QString());
        const QString type = value(Field::FilterType, m, QString());
        const QString option = value(Field::FilterOption, m, QString());

        // Looked up before the "ignore" test: a continuation entry must name a class too.
        const std::optional<qint32> number = Numbers::TryLeadingInt32(classText);
        QoSClass* c = number ? m_doc.ClassByIdx(*number) : nullptr;
        if (!c || !c->GetObjectPage())
            throw fileError(
                QStringLiteral("%1 nennt die Klasse '%2', die es nicht gibt.").arg(where(), classText));
        // A filter of several ports was written as several entries: the first carries the
        // whole list, the others are marked "ignore".
        if (portList == u"ignore")
            return;
        if (!portList.isEmpty())
            port = portList;
        Cell cell;
        if (layout)
            cell = readCell(Field::FilterCellPos, m);
        int filterIdx = 0;
        ObjectPage* page = c->GetObjectPage();
        if (!page->AddFilter(c, ip, port, type, option, filterIdx, caption, cell.x, cell.y, true))
            refused(true, page, QString());
    }

    Document& m_doc;
    const QoSFileTable& m_file;
    StatusWindow* m_status;
    ImportReport& m_report;
    enum class Place { Header, Class, Filter, Done } m_place = Place::Header;
    qint32 m_number = 0;
    std::vector<std::pair<QPointer<QoSClass>, qint32>> m_laterParents;
};

// The whole file, unless it is larger than any qos.txt can sensibly be: a device or a file of
// gigabytes is refused before it fills the memory.
QByteArray readFile(const QString& path)
{
    QFile file(path);
    if (QFileInfo(path).isDir() || !file.open(QIODevice::ReadOnly))
        throw fileError(QStringLiteral("Die Datei \"%1\" kann nicht gelesen werden.").arg(path));
    QByteArray bytes = file.read(MaxQoSFileSize + 1);
    if (file.error() != QFileDevice::NoError)
        throw fileError(
            QStringLiteral("Die Datei \"%1\" kann nicht gelesen werden: %2").arg(path, file.errorString()));
    if (bytes.size() > MaxQoSFileSize)
        throw fileError(QStringLiteral("Die Datei \"%1\" ist größer als %2 MB und wird nicht gelesen.")
                            .arg(path)
                            .arg(MaxQoSFileSize / (1024 * 1024)));
    return bytes;
}

ImportReport importGuarded(Document& doc, const std::function<QByteArray()>& read)
{
    ImportReport report;
    StatusWindow* status = doc.statusWindow();
    if (status)
        status->Show(QStringLiteral("Import"), QStringLiteral("Import..."));
    {
        const Document::ImportScope scope(doc);
        try {
            const QoSFileTable file(read());
            Import(doc, file, report).run();
        } catch (const QoSError& e) {
            // Ends the import where it stands; what was created stays, and the report says why.
            report.stopped = true;
            report.reason = e.message();
            if (!report.reason.endsWith(u'.'))
                report.reason += u'.';
        }
    }
    if (status)
        status->Close();
    report.complete = !report.stopped && report.refusals.isEmpty() && report.warnings.isEmpty();
    return report;
}

} // namespace

bool ReadQoSFile(const QString& path, QByteArray& bytes, QString& error)
{
    try {
        bytes = readFile(path);
        return true;
    } catch (const QoSError& e) {
        error = e.message();
        return false;
    }
}

ImportReport ImportQoSText(Document& doc, const QString& path)
{
    return importGuarded(doc, [&path] { return readFile(path); });
}

ImportReport ImportQoSBytes(Document& doc, const QByteArray& bytes)
{
    return importGuarded(doc, [&bytes] { return bytes; });
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
