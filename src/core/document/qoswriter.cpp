#include "qoswriter.h"

#include "document.h"
#include "inputs/portfield.h"
#include "model/qosclass.h"
#include "model/qosfilter.h"
#include "numbers.h"
#include "page/objectpage.h"
#include "qoscommon.h"
#include "qoserror.h"
#include "windows1252.h"

#include <QDate>
#include <QDateTime>

#include <string>

namespace {

constexpr QStringView crlf = u"\r\n";
// More entries than a port list can sensibly hold: the file would be useless and the
// expansion would take forever, so the export fails instead.
constexpr qint64 maxEntriesPerFilter = 65536;

QString versionText()
{
    return QStringLiteral("v%1.%2.%3")
        .arg(TARNWICK_VERSION_MAJOR)
        .arg(TARNWICK_VERSION_MINOR)
        .arg(TARNWICK_VERSION_PATCH);
}

// Reproducible builds and tests set SOURCE_DATE_EPOCH; the date is then taken from it in UTC.
QDate creationDate()
{
    bool ok = false;
    const qint64 epoch = qEnvironmentVariable("SOURCE_DATE_EPOCH").trimmed().toLongLong(&ok);
    if (ok)
        return QDateTime::fromSecsSinceEpoch(epoch, Qt::UTC).date();
    return QDate::currentDate();
}

// Lines of a block. Appends inline into a plain buffer: the filter block of a large document
// takes a few hundred thousand of them.
struct Lines
{
    std::u16string buffer;

    void append(QStringView s) { buffer.append(s.utf16(), std::size_t(s.size())); }
    void add(QStringView line)
    {
        append(line);
        buffer.append(u"\r\n");
    }
    // NAME='value', NAME made of an optional "#", a stem such as QOS_CLASS_3 and a suffix.
    void setting(bool commented, QStringView stem, QStringView suffix, QStringView value)
    {
        if (commented)
            buffer.push_back(u'#');
        append(stem);
        append(suffix);
        buffer.append(u"='");
        append(value);
        buffer.append(u"'\r\n");
    }
    void blank() { buffer.append(u"\r\n"); }
    QString text() const
    {
        return QString(reinterpret_cast<const QChar*>(buffer.data()), qsizetype(buffer.size()));
    }
};

QString header(const QString& version, int cols, int rows)
{
    const QString rule = QStringLiteral("##") + QString(77, u'-');
    Lines h;
    h.add(rule);
    h.add(QStringLiteral("## qos.txt - OPT_QOS configuration parameters") + QString(26, u' ') + version);
    h.add(u"##");
    h.add(u"## You can edit/change this file with Wendelfix 2.0.1 or any text editor.");
    h.add(u"##");
    h.add(u"##        P L E A S E   R E A D   T H E   D O C U M E N T A T I O N ,");
    h.add(u"##                      S E E   Q O S _ L I E S M I C H . T X T");
    h.add(u"##");
    h.add(u"##        B I T T E  U N B E D I N G T   D I E   D O K U M E N T A T I O N");
    h.add(u"##            L E S E N ,  S I E H E   Q O S _ L I E S M I C H . T X T");
    h.add(u"##");
    h.add(u"## Creation:     02.05.2001  xq");
    h.add(u"## Last Update:  15.02.2002  zv");
    h.add(u"##");
    h.add(u"##");
    h.add(u"## This program is free software; you can redistribute it and/or modify");
    h.add(u"## it under the terms of the GNU General Public License as published by");
    h.add(u"## the Free Software Foundation; either version 2 of the License, or");
    h.add(u"## (at your option) any later version.");
    h.add(u"##");
    h.add(QStringLiteral("## Erstellt mit Tarnwick ") + versionText());
    h.add(u"## Copyright (c) 2026 Die Tarnwick-Entwickler   https://tarnwick.example.org");
    h.add(u"##");
    h.add(QStringLiteral("## Erstellt am  ") + creationDate().toString(QStringLiteral("dd.MM.yyyy")));
    h.add(u"##");
    h.add(rule);
    h.blank();
    h.add(u"OPT_QOS='yes'");
    h.blank();
    h.add(u"#QOS_FILEVERSION='Tarnwick 1.1'");
    h.add(QStringLiteral("#QOS_PAGESIZE='%1,%2'").arg(cols).arg(rows));
    h.blank();
    return h.text();
}

QString commonBlock(const QoSCommon& common)
{
    // The blank counts are fixed: with the default values every "#" stands in column 36.
    struct Row
    {
        const char16_t* name;
        QString value;
        int blanks;
        const char16_t* comment;
    };
    const Row rows[] = {
        {u"QOS_INTERNET_DEV", common.QoSInternetDev(), 12,
         u"# Device über das Daten ins Internet übertragen werden"},
        {u"QOS_INTERNET_BAND_DOWN", common.QoSInternetBandDown(), 3,
         u"# Maximale Downstreambandbreite des Internet-Zugangs"},
        {u"QOS_INTERNET_BAND_UP", common.QoSInternetBandUp(), 5,
         u"# Maximale Upstreambandbreite des Internet-Zugangs"},
        {u"QOS_INTERNET_DEFAULT_DOWN", common.QoSInternetDefaultDown(), 6, u"# Standardklasse für Down"},
        {u"QOS_INTERNET_DEFAULT_UP", common.QoSInternetDefaultUp(), 8, u"# Standardklasse für Up"},
        {u"QOS_LOCALNET_DEV", common.QoSLocalNetDev(), 12,
         u"# Device über das das lokale Netzwerk angebunden ist"},
        {u"QOS_LOCALNET_BAND", common.QoSLocalBand(), 9,
         u"# Maximale Übertragungsrate ins lokalen Netz (LAN)"},
    };
    QString text;
    for (const Row& r : rows) {
        text += QStringView(r.name);
        text += u"='";
        text += r.value;
        text += u'\'';
        text += QString(r.blanks, u' ');
        text += QStringView(r.comment);
        text += crlf;
    }
    text += crlf;
    return text;
}

QString descriptionBlock(const QString& description)
{
    const QStringList pieces =
        description.isEmpty() ? QStringList() : description.split(QStringLiteral("\r\n"));
    Lines d;
    d.add(QStringLiteral("#QOS_DESCRIPTION='%1' #Zeilen").arg(pieces.size()));
    for (const QString& piece : pieces)
        d.add(u'#' + piece);
    d.blank();
    return d.text();
}

class Walk
{
public:
    Walk(QoSCommon& common, qsizetype objects) : m_common(common)
    {
        // About 250 characters per class or filter entry; growing a text of megabytes step by
        // step would copy it over and over.
        m_classText.buffer.reserve(std::size_t(objects) * 260);
        m_filterText.buffer.reserve(std::size_t(objects) * 260);
    }

    void writeClass(QoSClass& c)
    {
        ++m_classes;
        c.SetClassIdx(m_classes);
        const QString n = QStringLiteral("QOS_CLASS_") + QString::number(m_classes);
        m_classText.setting(true, n, u"_CAPTION", c.Caption());
        m_classText.setting(true, n, u"_CELLPOS", cell(c));
        m_classText.setting(false, n, u"_PARENT", c.QoSParent());
        m_classText.setting(false, n, u"_MINBANDWIDTH", c.QoSMinBandWidth());
        m_classText.setting(false, n, u"_MAXBANDWIDTH", c.QoSMaxBandWidth());
        m_classText.setting(false, n, u"_DIRECTION", c.QoSDirection());
        m_classText.setting(false, n, u"_PRIO", c.QoSPrio());
        m_classText.blank();
        if (c.DefaultClass()) {
            // Exactly "up" is up; any other direction counts as down. Of several, the last wins.
            if (c.QoSDirection() == u"up")
                m_common.SetQoSInternetDefaultUp(QString::number(c.ClassIdx()));
            else
                m_common.SetQoSInternetDefaultDown(QString::number(c.ClassIdx()));
        }
    }

    void writeFilter(QoSFilter& f)
    {
        // FilterCount is the decimal text of the port field's count; the number itself saves
        // parsing it back for every filter.
        const double count = f.PortInput()->count();
        if (count == 1) {
            ++m_filters;
            f.SetFilterIdx(Numbers::RoundToInt16(m_filters));
            const QString m = QStringLiteral("QOS_FILTER_") + QString::number(m_filters);
            m_filterText.setting(true, m, u"_CAPTION", f.Caption());
            m_filterText.setting(true, m, u"_CELLPOS", cell(f));
            m_filterText.setting(false, m, u"_CLASS", f.QoSClass());
            m_filterText.setting(false, m, u"_IP", f.QoSIP());
            m_filterText.setting(false, m, u"_PORT", f.QoSPort());
            m_filterText.setting(false, m, u"_TYPE", f.QoSType());
            m_filterText.setting(false, m, u"_OPTION", f.QoSOption());
            m_filterText.blank();
            return;
        }
        // The router sees one ordinary filter per port; the PORTEXT comments tell the reader
        // that they are one filter object. The expanded entries carry no caption.
        f.SetFilterIdx(Numbers::RoundToInt16(double(m_filters) + 1));
        const qint64 entries = qint64(Numbers::RoundToInt32(count - 1)) + 1;
        if (entries > maxEntriesPerFilter)
            throw QoSError(QoSError::Kind::Overflow,
                           QStringLiteral("Der Filter %1 steht für zu viele Ports.").arg(f.Name()));
        if (entries <= 0)
            return;
        const QString cellText = cell(f);
        const QString classText = f.QoSClass();
        const QString ip = f.QoSIP();
        const QString port = f.QoSPort();
        const QString type = f.QoSType();
        const QString option = f.QoSOption();
        // Expanding the list once instead of walking it for every index keeps long lists linear.
        const QStringList ports = f.PortInput()->PortExt();
        for (qint64 k = 0; k < entries; ++k) {
            ++m_filters;
            const QString m = QStringLiteral("QOS_FILTER_") + QString::number(m_filters);
            m_filterText.setting(true, m, u"_CELLPOS", cellText);
            m_filterText.setting(false, m, u"_CLASS", classText);
            m_filterText.setting(false, m, u"_IP", ip);
            m_filterText.setting(true, m, u"_PORTEXT", k == 0 ? port : QStringLiteral("ignore"));
            m_filterText.setting(false, m, u"_PORT", k < ports.size() ? ports[k] : f.QoSPortExt(k));
            m_filterText.setting(false, m, u"_TYPE", type);
            m_filterText.setting(false, m, u"_OPTION", option);
            m_filterText.blank();
        }
    }

    // The blocks joined into one buffer, the counts in front of their blocks.
    void appendBlocks(Lines& out) const
    {
        out.add(QStringLiteral("QOS_CLASS_N='%1'").arg(m_classes));
        out.blank();
        out.buffer += m_classText.buffer;
        out.add(QStringLiteral("QOS_FILTER_N='%1'").arg(m_filters));
        out.blank();
        out.buffer += m_filterText.buffer;
    }

private:
    static QString cell(const QoSObject& o)
    {
        return QString::number(o.MatrixX()) + u',' + QString::number(o.MatrixY());
    }

    QoSCommon& m_common;
    int m_classes = 0;
    qint64 m_filters = 0;
    Lines m_classText;
    Lines m_filterText;
};

// The whole file in one buffer, so that a large document is not copied block by block.
std::u16string exportBuffer(Document& doc)
{
    QoSCommon& common = *doc.Common1();
    ObjectPage& down = *doc.Down1();
    common.SetQoSInternetDefaultUp(QString());
    common.SetQoSInternetDefaultDown(QString());

    // Only the down page's size is written, and it bounds the walk of both pages.
    const int cols = down.prop().Cols;
    const int rows = down.prop().Rows;
    const QString head = header(common.QoSVersion(), cols, rows);

    Walk walk(common, doc.Down1()->ObjectCount() + doc.Up1()->ObjectCount());
    for (ObjectPage* page : {doc.Down1(), doc.Up1()}) {
        for (QoSObject* o : page->ObjectsInCellOrder(cols, rows)) {
            if (auto* c = qobject_cast<QoSClass*>(o))
                walk.writeClass(*c);
            else if (auto* f = qobject_cast<QoSFilter*>(o))
                walk.writeFilter(*f);
        }
    }

    // The common block comes after the walk: it carries the default classes found there.
    Lines out;
    out.append(head);
    out.append(commonBlock(common));
    walk.appendBlocks(out);
    out.append(descriptionBlock(common.QoSDescription()));
    return std::move(out.buffer);
}

} // namespace

QString ExportQoSText(Document& doc)
{
    const std::u16string text = exportBuffer(doc);
    return QString(reinterpret_cast<const QChar*>(text.data()), qsizetype(text.size()));
}

QByteArray ExportQoSBytes(Document& doc)
{
    const std::u16string text = exportBuffer(doc);
    return Windows1252::Encode(QStringView(text.data(), qsizetype(text.size())));
}
