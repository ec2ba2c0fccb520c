#include "file/qosimport.h"

#include "base/numbers.h"
#include "base/qoserror.h"
#include "base/userprompt.h"
#include "file/qosreader.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"

#include <algorithm>

namespace {

QoSError fileError(const QString& text)
{
    return QoSError(QoSError::Kind::File, text);
}

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

} // namespace

QoSImport::QoSImport(Document& doc, const QoSFileTable& file, ImportReport& report)
    : m_doc(doc), m_file(file), m_status(doc.statusWindow()), m_report(report)
{}

void QoSImport::run()
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
        m_report.WarnAboutMissing(m_file, classes, filters);
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
QString QoSImport::where() const
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

// An error inside a class or a filter entry names it.
QoSError QoSImport::located(const QoSError& e) const
{
    const QString at = where();
    if (e.message().startsWith(at + u' ') || e.message().startsWith(at + u':'))
        return e;
    return fileError(at + QStringLiteral(": ") + e.message());
}

QString QoSImport::value(QStringView name, const QString& defaultValue, bool multiLine) const
{
    return m_file.GetQoSValue(name, defaultValue, multiLine);
}

QString QoSImport::value(Field field, qint32 number, const QString& defaultValue) const
{
    return m_file.Value(field, number, defaultValue);
}

void QoSImport::message(const QString& text)
{
    if (m_status)
        m_status->SetMessage(text);
}

template <typename Set> void QoSImport::setBandwidth(QStringView name, const QString& defaultValue, Set set)
{
    const QString v = value(name, defaultValue);
    try {
        set(v);
    } catch (const QoSError& e) {
        throw fileError(QStringLiteral("%1='%2': %3").arg(name, v, e.message()));
    }
}

void QoSImport::readCommon()
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

void QoSImport::readPageSize()
{
    const QStringList parts = value(u"#QOS_PAGESIZE", QStringLiteral("10,5")).split(u',');
    if (parts.size() < 2)
        throw fileError(QStringLiteral("Die Seitengröße '%1' hat nicht zwei Teile.").arg(parts.join(u',')));
    qint32 cols = Numbers::RoundToInt32(Numbers::LeadingValue(parts[0]));
    qint32 rows = Numbers::RoundToInt32(Numbers::LeadingValue(parts[1]));
    m_doc.Down1()->SetGridDimensions(cols, rows);
}

qint32 QoSImport::readCount(const QString& name, const QString& what)
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

QoSImport::Cell QoSImport::readCell(Field field, qint32 number)
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

void QoSImport::readClass(qint32 n, qint32 classes, bool layout)
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
    QoSClass* c = nullptr;
    try {
        c = page->AddClass(parent, {.minBandwidth = minimum,
                                    .maxBandwidth = maximum,
                                    .direction = direction,
                                    .prio = prio,
                                    .classIdx = n,
                                    .defaultClass = isDefault,
                                    .caption = caption,
                                    .x = cell.x,
                                    .y = cell.y});
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
void QoSImport::refused(bool filter, const ObjectPage* page, const QString& noFurtherLevel)
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

void QoSImport::linkLaterParents()
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

void QoSImport::readFilter(qint32 m, bool layout)
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
    ObjectPage* page = c->GetObjectPage();
    if (!page->AddFilter(c, {.ip = ip,
                             .port = port,
                             .type = type,
                             .option = option,
                             .caption = caption,
                             .x = cell.x,
                             .y = cell.y}))
        refused(true, page, QString());
}
