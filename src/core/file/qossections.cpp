#include "file/qossections.h"

#include "file/qoslines.h"
#include "file/qosnumbering.h"
#include "file/qostextbuffer.h"
#include "file/qostextsize.h"
#include "inputs/portfield.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/qosfilter.h"

#include <QDate>
#include <QDateTime>
#include <QRegularExpression>

namespace {

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

// The common settings, each with the blanks before its comment. The blank counts are fixed:
// with the default values every "#" stands in column 36.
struct CommonRow
{
    const char16_t* name;
    int blanks;
    const char16_t* comment;
    QString (QoSCommon::*value)() const;
};
const CommonRow commonRows[] = {
    {u"QOS_INTERNET_DEV", 12, u"# Device über das Daten ins Internet übertragen werden",
     &QoSCommon::QoSInternetDev},
    {u"QOS_INTERNET_BAND_DOWN", 3, u"# Maximale Downstreambandbreite des Internet-Zugangs",
     &QoSCommon::QoSInternetBandDown},
    {u"QOS_INTERNET_BAND_UP", 5, u"# Maximale Upstreambandbreite des Internet-Zugangs",
     &QoSCommon::QoSInternetBandUp},
    {u"QOS_INTERNET_DEFAULT_DOWN", 6, u"# Standardklasse für Down", &QoSCommon::QoSInternetDefaultDown},
    {u"QOS_INTERNET_DEFAULT_UP", 8, u"# Standardklasse für Up", &QoSCommon::QoSInternetDefaultUp},
    {u"QOS_LOCALNET_DEV", 12, u"# Device über das das lokale Netzwerk angebunden ist",
     &QoSCommon::QoSLocalNetDev},
    {u"QOS_LOCALNET_BAND", 9, u"# Maximale Übertragungsrate ins lokalen Netz (LAN)",
     &QoSCommon::QoSLocalBand},
};

} // namespace

QoSSections::QoSSections(const Document& doc, const QoSNumbering& numbering)
{
    const QoSCommon& common = *doc.Common1();
    m_version = common.QoSVersion();
    m_date = creationDate().toString(QStringLiteral("dd.MM.yyyy"));
    // Only the down page's size is written.
    m_cols = doc.Down1()->prop().Cols;
    m_rows = doc.Down1()->prop().Rows;
    static_assert(std::size(commonRows) == sizeof m_common / sizeof m_common[0]);
    for (std::size_t i = 0; i < std::size(commonRows); ++i)
        m_common[i] = (common.*commonRows[i].value)();

    m_classes.reserve(std::size_t(numbering.classes()));
    m_filters.reserve(numbering.boxes().size() - std::size_t(numbering.classes()));
    for (const QoSNumbering::Box& b : numbering.boxes()) {
        if (auto* c = qobject_cast<const QoSClass*>(b.object)) {
            const QoSClass* parent = c->ParentQoSObject();
            m_classes.push_back({c->ClassIdx(), parent ? parent->ClassIdx() : 0, c->MatrixX(), c->MatrixY(),
                                 c->Caption(), c->QoSMinBandWidth(), c->QoSMaxBandWidth(), c->QoSDirection(),
                                 c->QoSPrio()});
        } else if (auto* f = qobject_cast<const QoSFilter*>(b.object)) {
            const QoSClass* parent = f->ParentQoSObject();
            m_filters.push_back({b.first, b.entries, parent ? parent->ClassIdx() : 0, f->MatrixX(),
                                 f->MatrixY(), f->Caption(), f->QoSIP(), f->QoSPort(), f->QoSType(),
                                 f->QoSOption(), b.entries == 1 ? QStringList() : f->PortInput()->PortExt()});
        }
    }
    m_entries = numbering.filters();

    // Every line break starts a line of its own, a lone CR or LF too: a piece that ran on into
    // the next line would stand there without its "#" and read as a setting.
    static const QRegularExpression lineBreak(QStringLiteral("\r\n|\r|\n"));
    const QString description = common.QoSDescription();
    if (!description.isEmpty())
        m_description = description.split(lineBreak);
}

template <typename Sink> void QoSSections::Write(Sink& sink) const
{
    QoSLines<Sink> out(sink);
    header(out);
    common(out);
    classes(out);
    filters(out);
    description(out);
}

template <typename Sink> void QoSSections::header(QoSLines<Sink>& h) const
{
    const QString rule = QStringLiteral("##") + QString(77, u'-');
    h.line(rule);
    h.text(u"## qos.txt - OPT_QOS configuration parameters");
    h.text(QString(26, u' '));
    h.line(m_version);
    h.line(u"##");
    h.line(u"## You can edit/change this file with Wendelfix 2.0.1 or any text editor.");
    h.line(u"##");
    h.line(u"##        P L E A S E   R E A D   T H E   D O C U M E N T A T I O N ,");
    h.line(u"##                      S E E   Q O S _ L I E S M I C H . T X T");
    h.line(u"##");
    h.line(u"##        B I T T E  U N B E D I N G T   D I E   D O K U M E N T A T I O N");
    h.line(u"##            L E S E N ,  S I E H E   Q O S _ L I E S M I C H . T X T");
    h.line(u"##");
    h.line(u"## Creation:     02.05.2001  xq");
    h.line(u"## Last Update:  15.02.2002  zv");
    h.line(u"##");
    h.line(u"##");
    h.line(u"## This program is free software; you can redistribute it and/or modify");
    h.line(u"## it under the terms of the GNU General Public License as published by");
    h.line(u"## the Free Software Foundation; either version 2 of the License, or");
    h.line(u"## (at your option) any later version.");
    h.line(u"##");
    h.text(u"## Erstellt mit Tarnwick ");
    h.line(versionText());
    h.line(u"## Copyright (c) 2026 Die Tarnwick-Entwickler   https://tarnwick.example.org");
    h.line(u"##");
    h.text(u"## Erstellt am  ");
    h.line(m_date);
    h.line(u"##");
    h.line(rule);
    h.end();
    h.line(u"OPT_QOS='yes'");
    h.end();
    h.line(u"#QOS_FILEVERSION='Tarnwick 1.1'");
    h.literal("#QOS_PAGESIZE='");
    h.number(m_cols);
    h.literal(",");
    h.number(m_rows);
    h.literal("'\r\n");
    h.end();
}

template <typename Sink> void QoSSections::common(QoSLines<Sink>& out) const
{
    for (std::size_t i = 0; i < std::size(commonRows); ++i) {
        const CommonRow& r = commonRows[i];
        out.text(QStringView(r.name));
        out.literal("='");
        out.text(m_common[i]);
        out.literal("'");
        out.text(QString(r.blanks, u' '));
        out.line(QStringView(r.comment));
    }
    out.end();
}

template <typename Sink> void QoSSections::classes(QoSLines<Sink>& out) const
{
    out.literal("QOS_CLASS_N='");
    out.number(qint64(m_classes.size()));
    out.literal("'\r\n\r\n");
    for (const ClassText& c : m_classes) {
        const qint32 n = c.number;
        out.setting("#QOS_CLASS_", n, "_CAPTION", c.caption);
        out.cell("#QOS_CLASS_", n, "_CELLPOS", c.x, c.y);
        out.numberSetting("QOS_CLASS_", n, "_PARENT", c.parent);
        out.setting("QOS_CLASS_", n, "_MINBANDWIDTH", c.minimum);
        out.setting("QOS_CLASS_", n, "_MAXBANDWIDTH", c.maximum);
        out.setting("QOS_CLASS_", n, "_DIRECTION", c.direction);
        out.setting("QOS_CLASS_", n, "_PRIO", c.prio);
        out.end();
    }
}

template <typename Sink> void QoSSections::filters(QoSLines<Sink>& out) const
{
    out.literal("QOS_FILTER_N='");
    out.number(m_entries);
    out.literal("'\r\n\r\n");
    for (const FilterText& f : m_filters) {
        if (f.entries == 1) {
            const qint64 m = f.first;
            out.setting("#QOS_FILTER_", m, "_CAPTION", f.caption);
            out.cell("#QOS_FILTER_", m, "_CELLPOS", f.x, f.y);
            out.numberSetting("QOS_FILTER_", m, "_CLASS", f.classNumber);
            out.setting("QOS_FILTER_", m, "_IP", f.ip);
            out.setting("QOS_FILTER_", m, "_PORT", f.port);
            out.setting("QOS_FILTER_", m, "_TYPE", f.type);
            out.setting("QOS_FILTER_", m, "_OPTION", f.option);
            out.end();
            continue;
        }
        // The router sees one ordinary filter per port; the PORTEXT comments tell the reader
        // that they are one filter object. Only the first entry carries the caption, and only
        // when there is one: an uncaptioned filter is written as it always was.
        for (qint64 k = 0; k < f.entries; ++k) {
            const qint64 m = f.first + k;
            if (k == 0 && !f.caption.isEmpty())
                out.setting("#QOS_FILTER_", m, "_CAPTION", f.caption);
            out.cell("#QOS_FILTER_", m, "_CELLPOS", f.x, f.y);
            out.numberSetting("QOS_FILTER_", m, "_CLASS", f.classNumber);
            out.setting("QOS_FILTER_", m, "_IP", f.ip);
            out.setting("#QOS_FILTER_", m, "_PORTEXT", k == 0 ? QStringView(f.port) : QStringView(u"ignore"));
            out.setting("QOS_FILTER_", m, "_PORT",
                        k < f.ports.size() ? QStringView(f.ports[k]) : QStringView());
            out.setting("QOS_FILTER_", m, "_TYPE", f.type);
            out.setting("QOS_FILTER_", m, "_OPTION", f.option);
            out.end();
        }
    }
}

template <typename Sink> void QoSSections::description(QoSLines<Sink>& out) const
{
    out.literal("#QOS_DESCRIPTION='");
    out.number(m_description.size());
    out.literal("' #Zeilen\r\n");
    for (const QString& piece : m_description) {
        out.literal("#");
        out.line(piece);
    }
    out.end();
}

template void QoSSections::Write<QoSTextSize>(QoSTextSize&) const;
template void QoSSections::Write<QoSTextBuffer<QString>>(QoSTextBuffer<QString>&) const;
template void QoSSections::Write<QoSTextBuffer<QByteArray>>(QoSTextBuffer<QByteArray>&) const;
