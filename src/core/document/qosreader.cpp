#include "qosreader.h"

#include "document.h"
#include "model/qosclass.h"
#include "numbers.h"
#include "page/objectpage.h"
#include "qoscommon.h"
#include "qoserror.h"
#include "qosfiletable.h"
#include "userprompt.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <functional>
#include <optional>
#include <string>

namespace {

// Beyond this a file is taken as broken rather than read for minutes.
constexpr qint32 maxObjectsInFile = 10000;

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

Cell readCell(const QoSFileTable& file, QStringView name)
{
    const QString text = file.GetQoSValue(name, QStringLiteral("0,0"));
    const qsizetype comma = text.indexOf(u',');
    if (comma < 0)
        throw fileError(QStringLiteral("Ungültige Zellposition: ") + text);
    return {cellPart(QStringView(text).first(comma)), cellPart(QStringView(text).sliced(comma + 1))};
}

qint32 readCount(const QoSFileTable& file, const QString& name)
{
    const qint32 n = Numbers::AsInteger(file.GetQoSValue(name, QStringLiteral("0")));
    if (n > maxObjectsInFile)
        throw fileError(QStringLiteral("Zu viele Einträge: %1 = %2").arg(name).arg(n));
    return n;
}

class Import
{
public:
    Import(Document& doc, const QoSFileTable& file) : m_doc(doc), m_file(file), m_status(doc.statusWindow())
    {}

    void run()
    {
        message(QStringLiteral("Import...Header"));
        readCommon();
        // Cells and page size are only trusted from files this editor wrote.
        const bool layout = value(u"#QOS_FILEVERSION", QString()) == u"Tarnwick 1.1";
        if (layout)
            readPageSize();
        const qint32 classes = readCount(m_file, QStringLiteral("QOS_CLASS_N"));
        const qint32 filters = readCount(m_file, QStringLiteral("QOS_FILTER_N"));
        for (qint32 n = 1; n <= classes; ++n)
            readClass(n, layout);
        for (qint32 m = 1; m <= filters; ++m) {
            if (m_status)
                m_status->SetMessage(QStringLiteral("Import...Filter ") + QString::number(m));
            if (m_status)
                m_status->SetProgress(classes + m, classes + filters);
            readFilter(m, layout);
        }
    }

private:
    // NAME of a variable: an optional "#", a stem such as QOS_CLASS_3 and a suffix. Built in one
    // reused buffer: an import looks up tens of thousands of names.
    QStringView key(const QString& stem, QStringView suffix, bool commented = false)
    {
        m_key.clear();
        if (commented)
            m_key.push_back(u'#');
        m_key.append(reinterpret_cast<const char16_t*>(stem.utf16()), std::size_t(stem.size()));
        m_key.append(suffix.utf16(), std::size_t(suffix.size()));
        return QStringView(m_key.data(), qsizetype(m_key.size()));
    }

    QString value(QStringView name, const QString& defaultValue, bool multiLine = false) const
    {
        return m_file.GetQoSValue(name, defaultValue, multiLine);
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
        common.SetQoSInternetBandDown(value(u"QOS_INTERNET_BAND_DOWN", QStringLiteral("768kbit")));
        common.SetQoSInternetBandUp(value(u"QOS_INTERNET_BAND_UP", QStringLiteral("128kbit")));
        common.SetQoSInternetDefaultDown(value(u"QOS_INTERNET_DEFAULT_DOWN", QStringLiteral("0")));
        common.SetQoSInternetDefaultUp(value(u"QOS_INTERNET_DEFAULT_UP", QStringLiteral("0")));
        common.SetQoSLocalNetDev(value(u"QOS_LOCALNET_DEV", QStringLiteral("eth0")));
        common.SetQoSLocalBand(value(u"QOS_LOCALNET_BAND", QStringLiteral("10Mbit")));
        common.SetQoSDescription(value(u"#QOS_DESCRIPTION", QString(), true));
        common.SetQoSVersion(value(u"%Version", QStringLiteral("unbekannt")));
    }

    void readPageSize()
    {
        const QStringList parts = value(u"#QOS_PAGESIZE", QStringLiteral("10,5")).split(u',');
        if (parts.size() < 2)
            throw fileError(QStringLiteral("Ungültige Seitengröße"));
        qint32 cols = Numbers::RoundToInt32(Numbers::LeadingValue(parts[0]));
        qint32 rows = Numbers::RoundToInt32(Numbers::LeadingValue(parts[1]));
        m_doc.Down1()->SetGridDimensions(cols, rows);
    }

    void readClass(qint32 n, bool layout)
    {
        if (m_status)
            m_status->SetMessage(QStringLiteral("Import...Class ") + QString::number(n));
        const QString prefix = QStringLiteral("QOS_CLASS_") + QString::number(n);
        QString caption = value(key(prefix, u"_CAPTION", true), QString());
        if (caption.isEmpty())
            caption = QStringLiteral("Class ") + QString::number(n);
        const QString parent = value(key(prefix, u"_PARENT"), QStringLiteral("0"));
        const QString minimum = value(key(prefix, u"_MINBANDWIDTH"), QStringLiteral("768kbit"));
        const QString maximum = value(key(prefix, u"_MAXBANDWIDTH"), QStringLiteral("768kbit"));
        const QString direction = value(key(prefix, u"_DIRECTION"), QStringLiteral("down"));
        const QString prio = value(key(prefix, u"_PRIO"), QStringLiteral("0"));

        // Judged against the common page as it stands now; the test on the direction is exact,
        // so a class read as "Up" lands on the up page but is never its default class.
        const QoSCommon& common = *m_doc.Common1();
        const bool isDefault =
            (direction == u"down" && n == Numbers::LeadingValue(common.QoSInternetDefaultDown())) ||
            (direction == u"up" && n == Numbers::LeadingValue(common.QoSInternetDefaultUp()));

        ObjectPage* page = m_doc.PageForDirection(direction);
        if (!page)
            throw fileError(QStringLiteral("Unbekannte Richtung: ") + direction);
        Cell cell;
        if (layout)
            cell = readCell(m_file, key(prefix, u"_CELLPOS", true));
        // The n-th class gets number n, so the parent numbers of the file name classes made before.
        int classIdx = n;
        page->AddClass(parent, minimum, maximum, direction, prio, classIdx, isDefault, caption, cell.x,
                       cell.y, true);
    }

    void readFilter(qint32 m, bool layout)
    {
        const QString prefix = QStringLiteral("QOS_FILTER_") + QString::number(m);
        const QString caption = value(key(prefix, u"_CAPTION", true), QString());
        const QString classText = value(key(prefix, u"_CLASS"), QString());
        const QString ip = value(key(prefix, u"_IP"), QString());
        QString port = value(key(prefix, u"_PORT"), QString());
        const QString portList = value(key(prefix, u"_PORTEXT", true), QString());
        const QString type = value(key(prefix, u"_TYPE"), QString());
        const QString option = value(key(prefix, u"_OPTION"), QString());

        // Looked up before the "ignore" test: a continuation entry must name a class too.
        const qint32 number = Numbers::RoundToInt32(Numbers::LeadingValue(classText));
        QoSClass* c = m_doc.ClassByIdx(number);
        if (!c || !c->GetObjectPage())
            throw fileError(QStringLiteral("Der Filter %1 nennt keine Klasse: %2").arg(m).arg(classText));
        // A filter of several ports was written as several entries: the first carries the
        // whole list, the others are marked "ignore".
        if (portList == u"ignore")
            return;
        if (!portList.isEmpty())
            port = portList;
        Cell cell;
        if (layout)
            cell = readCell(m_file, key(prefix, u"_CELLPOS", true));
        int filterIdx = 0;
        c->GetObjectPage()->AddFilter(QString::number(c->ClassIdx()), ip, port, type, option, filterIdx,
                                      caption, cell.x, cell.y, true);
    }

    Document& m_doc;
    const QoSFileTable& m_file;
    StatusWindow* m_status;
    std::u16string m_key;
};

ImportReport importGuarded(Document& doc, const std::function<QByteArray()>& read)
{
    ImportReport report;
    StatusWindow* status = doc.statusWindow();
    if (status)
        status->Show(QStringLiteral("Import"), QStringLiteral("Import..."));
    try {
        const QoSFileTable file(read());
        Import(doc, file).run();
    } catch (const QoSError& e) {
        // Ends the import where it stands; what was created stays.
        report.complete = false;
        report.reason = e.message();
    }
    if (status)
        status->Close();
    return report;
}

} // namespace

ImportReport ImportQoSText(Document& doc, const QString& path)
{
    return importGuarded(doc, [&path] {
        QFile file(path);
        if (QFileInfo(path).isDir() || !file.open(QIODevice::ReadOnly))
            throw fileError(QStringLiteral("Die Datei kann nicht gelesen werden: ") + path);
        return file.readAll();
    });
}

ImportReport ImportQoSBytes(Document& doc, const QByteArray& bytes)
{
    return importGuarded(doc, [&bytes] { return bytes; });
}

QString ImportReport::Message() const
{
    if (complete)
        return QString();
    return QStringLiteral("Die Datei wurde nicht vollständig gelesen: %1 Gelesen: %2 von %3 Klassen, %4 von %5 "
                          "Filtereinträgen.")
        .arg(reason)
        .arg(classesRead)
        .arg(classesAnnounced)
        .arg(entriesRead)
        .arg(entriesAnnounced);
}
