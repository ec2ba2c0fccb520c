#include "file/qoswriter.h"

#include "base/qoserror.h"
#include "base/windows1252.h"
#include "base/writablevalue.h"
#include "inputs/ipfield.h"
#include "inputs/portfield.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/qosfilter.h"

#include <QDate>
#include <QDateTime>
#include <QRegularExpression>

#include <charconv>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace {

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

// The text of the file, as UTF-16 for the clipboard or as code-page bytes for the disk. Both
// are written straight into one buffer: a large document writes some hundred thousand lines.
struct Utf16Sink
{
    std::u16string buffer;

    void reserve(qsizetype n) { buffer.reserve(std::size_t(n)); }
    void append(QStringView s) { buffer.append(s.utf16(), std::size_t(s.size())); }
    void ascii(const char* s, std::size_t n) { buffer.append(s, s + n); }
};

struct BytesSink
{
    QByteArray buffer;
    char* end = nullptr;

    // The caller reserves an upper bound of the whole file once, so that nothing grows.
    void reserve(qsizetype n)
    {
        buffer.resize(n);
        end = buffer.data();
    }
    // The code page holds every character in one byte (or a "?"), so a text never takes
    // more bytes than it has code units.
    void append(QStringView s) { end = Windows1252::EncodeInto(s, room(s.size())); }
    Q_ALWAYS_INLINE void ascii(const char* s, std::size_t n)
    {
        std::memcpy(room(qsizetype(n)), s, n);
        end += n;
    }
    // A bound that fell short costs a copy, never a write past the end.
    Q_ALWAYS_INLINE char* room(qsizetype n)
    {
        if (Q_UNLIKELY(buffer.constData() + buffer.size() - end < n))
            grow(n);
        return end;
    }
    void grow(qsizetype n)
    {
        const qsizetype used = end - buffer.constData();
        buffer.resize(qMax(buffer.size() * 2, used + n));
        end = buffer.data() + used;
    }
    QByteArray take()
    {
        buffer.truncate(end - buffer.data());
        return std::move(buffer);
    }
};

template <typename Sink> class Lines
{
public:
    explicit Lines(Sink& sink) : m_out(sink) {}

    template <std::size_t N> void literal(const char (&s)[N]) { m_out.ascii(s, N - 1); }
    void text(QStringView s) { m_out.append(s); }
    void number(qint64 n)
    {
        char digits[24];
        const auto r = std::to_chars(digits, digits + sizeof digits, n);
        m_out.ascii(digits, std::size_t(r.ptr - digits));
    }
    void end() { literal("\r\n"); }
    void line(QStringView s)
    {
        text(s);
        end();
    }
    // NAME='value': an optional "#", a stem such as QOS_CLASS_ with its number, and a suffix.
    template <std::size_t N, std::size_t M>
    void setting(const char (&stem)[N], qint64 n, const char (&suffix)[M], QStringView value)
    {
        literal(stem);
        number(n);
        literal(suffix);
        literal("='");
        text(value);
        literal("'\r\n");
    }
    template <std::size_t N, std::size_t M>
    void numberSetting(const char (&stem)[N], qint64 n, const char (&suffix)[M], qint64 value)
    {
        literal(stem);
        number(n);
        literal(suffix);
        literal("='");
        number(value);
        literal("'\r\n");
    }
    template <std::size_t N, std::size_t M>
    void cell(const char (&stem)[N], qint64 n, const char (&suffix)[M], const QoSObject& o)
    {
        literal(stem);
        number(n);
        literal(suffix);
        literal("='");
        number(o.MatrixX());
        literal(",");
        number(o.MatrixY());
        literal("'\r\n");
    }

private:
    Sink& m_out;
};

// Room for one setting line beyond its value: the longest name with a 20-digit number, the
// "='" and "'\r\n".
constexpr qsizetype lineRoom = 64;

QString pageName(const QoSObject& o)
{
    return o.GetObjectPage() && o.GetObjectPage()->Direction() == u"up" ? QStringLiteral("Up")
                                                                        : QStringLiteral("Down");
}

QString describe(const QoSObject& o)
{
    // One arg() for all: a caption holding "%1" must not take the place of a later number.
    return QStringLiteral("%1 \"%2\" in Zelle %3,%4 der Seite %5")
        .arg(o.IsClass() ? QStringLiteral("Die Klasse") : QStringLiteral("Der Filter"), o.Caption(),
             QString::number(o.MatrixX()), QString::number(o.MatrixY()), pageName(o));
}

QoSError unwritable(const QString& text)
{
    return QoSError(QoSError::Kind::File, text);
}

// A value that would not read back as it is (a quote, a line break, a character the code page
// lacks) is refused rather than changed.
template <typename Owner> void checkValue(QStringView value, const Owner& owner, QStringView what)
{
    const WritableValue::Verdict verdict = WritableValue::Check(value);
    if (!verdict.writable())
        throw unwritable(QStringLiteral("%1: %2 \"%3\" ").arg(owner(), what.toString(), value.toString()) +
                         WritableValue::Reason(value, verdict));
}

void checkClass(const QoSClass& c)
{
    const auto owner = [&c] { return describe(c); };
    // A class below row 3 would be refused when the file is read again.
    if (c.MatrixY() >= ClassRows)
        throw unwritable(
            QStringLiteral("%1 steht in Zeile %2; Klassen stehen in den Zeilen 0 bis 3, sonst lässt sich "
                           "die Datei nicht wieder vollständig lesen.")
                .arg(owner(), QString::number(c.MatrixY())));
    checkValue(c.Caption(), owner, u"der Titel");
    checkValue(c.QoSMinBandWidth(), owner, u"das Minimum");
    checkValue(c.QoSMaxBandWidth(), owner, u"das Maximum");
    checkValue(c.QoSDirection(), owner, u"die Richtung");
    checkValue(c.QoSPrio(), owner, u"die Priorität");
}

void checkFilter(const QoSFilter& f)
{
    const auto owner = [&f] { return describe(f); };
    // A filter without its class would end the reading of the file.
    if (!f.ParentQoSObject())
        throw unwritable(
            QStringLiteral("%1 hängt an keiner Klasse; so lässt sich die Datei nicht wieder vollständig "
                           "lesen.")
                .arg(owner()));
    checkValue(f.Caption(), owner, u"der Titel");
    checkValue(f.QoSIP(), owner, u"die IP-Adresse");
    checkValue(f.QoSPort(), owner, u"die Ports");
    checkValue(f.QoSType(), owner, u"der Typ");
    checkValue(f.QoSOption(), owner, u"die Option");
}

void checkCommon(const QoSCommon& common)
{
    const auto owner = [] { return QStringLiteral("Allgemein"); };
    checkValue(common.QoSInternetDev(), owner, u"das Internet-Gerät");
    checkValue(common.QoSInternetBandDown(), owner, u"die Bandbreite Down");
    checkValue(common.QoSInternetBandUp(), owner, u"die Bandbreite Up");
    checkValue(common.QoSLocalNetDev(), owner, u"das LAN-Gerät");
    checkValue(common.QoSLocalBand(), owner, u"die LAN-Bandbreite");
    checkValue(common.QoSVersion(), owner, u"die Version");
    // The description is written line by line: only its characters must fit.
    const WritableValue::Verdict verdict =
        WritableValue::Check(common.QoSDescription(), WritableValue::Place::Comment);
    if (!verdict.writable())
        throw unwritable(
            QStringLiteral("Allgemein: die Beschreibung enthält das Zeichen \"%1\", das qos.txt nicht "
                           "kennt.")
                .arg(common.QoSDescription().mid(verdict.at, 1)));
}

struct Entry
{
    QoSObject* object;
    qint64 entries; // filter entries written for a filter; 0 for a class
    qint64 first;   // the number of a filter's first entry; 0 for a class
};

// The boxes in the order they are written, each with its number: every class and filter is
// numbered before a line is written, so that a parent or a filter's class is always named
// with the number it has in this file, also when a box stands above its parent.
class Numbering
{
public:
    Numbering(Document& doc)
    {
        for (ObjectPage* page : {doc.Down1(), doc.Up1()})
            for (QoSObject* o : page->ObjectsInWriteOrder())
                m_boxes.push_back({o, 0, 0});
        qint32 classes = 0;
        for (Entry& e : m_boxes) {
            if (auto* c = qobject_cast<QoSClass*>(e.object)) {
                checkClass(*c);
                c->SetClassIdx(++classes);
            } else if (auto* f = qobject_cast<QoSFilter*>(e.object)) {
                checkFilter(*f);
            }
        }
        qint64 filters = 0;
        for (Entry& e : m_boxes) {
            auto* f = qobject_cast<QoSFilter*>(e.object);
            if (!f)
                continue;
            // One entry per port of the list; a single port keeps the plain form.
            e.entries = f->PortInput()->count();
            if (!f->PortInput()->CountFits() || e.entries > maxEntriesPerFilter)
                throw QoSError(
                    QoSError::Kind::Overflow,
                    QStringLiteral("Der Filter \"%1\" mit den Ports '%2' steht für mehr als %3 "
                                   "Einträge; er wird nicht geschrieben.")
                        .arg(f->Caption(),
                             f->QoSPort().size() > 60 ? f->QoSPort().left(60) + u'…' : f->QoSPort(),
                             QString::number(maxEntriesPerFilter)));
            // Entries are numbered without a 16-bit limit, so that every file that reads can be
            // written again; the filter's own 16-bit number keeps it only where it fits.
            e.first = filters + 1;
            f->SetFilterIdx(e.first <= 32767 ? qint16(e.first) : qint16(0));
            filters += e.entries;
        }
        m_classes = classes;
        m_filters = filters;
    }

    const std::vector<Entry>& boxes() const { return m_boxes; }
    qint32 classes() const { return m_classes; }
    qint64 filters() const { return m_filters; }

private:
    std::vector<Entry> m_boxes;
    qint32 m_classes = 0;
    qint64 m_filters = 0;
};

// An upper bound of the file's size in code units.
qsizetype sizeBound(const Numbering& numbering, const QoSCommon& common)
{
    qsizetype n = 4096 + common.QoSDescription().size() * 2 + common.QoSVersion().size();
    for (const QString& v : {common.QoSInternetDev(), common.QoSInternetBandDown(),
                             common.QoSInternetBandUp(), common.QoSInternetDefaultDown(),
                             common.QoSInternetDefaultUp(), common.QoSLocalNetDev(), common.QoSLocalBand()})
        n += v.size();
    for (const Entry& e : numbering.boxes()) {
        if (auto* c = qobject_cast<QoSClass*>(e.object)) {
            // A bandwidth is written as its number and unit, or as the text it was read as.
            const auto bandwidth = [](const BandwidthField* f) {
                return f->Value().size() + f->Unit().size() + 64;
            };
            n += 8 * lineRoom + c->Caption().size() + bandwidth(c->MinField()) + bandwidth(c->MaxField()) +
                 c->QoSDirection().size() + c->QoSPrio().size();
        } else if (auto* f = qobject_cast<QoSFilter*>(e.object)) {
            // The address as written is at most the address, a "/" and the mask bits.
            const qsizetype values = f->IpInput()->Address().size() + 1 + f->IpInput()->MaskBits().size() +
                                     f->QoSType().size() + f->QoSOption().size();
            // The caption stands once: on the single entry, or as a line of its own on the first
            // of several.
            n += e.entries * (8 * lineRoom + values) + 2 * f->QoSPort().size() + lineRoom +
                 f->Caption().size();
        }
    }
    return n;
}

template <typename Sink> void writeHeader(Lines<Sink>& h, const QString& version, int cols, int rows)
{
    const QString rule = QStringLiteral("##") + QString(77, u'-');
    h.line(rule);
    h.line(QStringLiteral("## qos.txt - OPT_QOS configuration parameters") + QString(26, u' ') + version);
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
    h.line(QStringLiteral("## Erstellt mit Tarnwick ") + versionText());
    h.line(u"## Copyright (c) 2026 Die Tarnwick-Entwickler   https://tarnwick.example.org");
    h.line(u"##");
    h.line(QStringLiteral("## Erstellt am  ") + creationDate().toString(QStringLiteral("dd.MM.yyyy")));
    h.line(u"##");
    h.line(rule);
    h.end();
    h.line(u"OPT_QOS='yes'");
    h.end();
    h.line(u"#QOS_FILEVERSION='Tarnwick 1.1'");
    h.literal("#QOS_PAGESIZE='");
    h.number(cols);
    h.literal(",");
    h.number(rows);
    h.literal("'\r\n");
    h.end();
}

template <typename Sink> void writeCommon(Lines<Sink>& out, const QoSCommon& common)
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
    for (const Row& r : rows) {
        out.text(QStringView(r.name));
        out.literal("='");
        out.text(r.value);
        out.literal("'");
        out.text(QString(r.blanks, u' '));
        out.line(QStringView(r.comment));
    }
    out.end();
}

template <typename Sink> void writeDescription(Lines<Sink>& out, const QString& description)
{
    // Every line break starts a line of its own, a lone CR or LF too: a piece that ran on into
    // the next line would stand there without its "#" and read as a setting.
    static const QRegularExpression lineBreak(QStringLiteral("\r\n|\r|\n"));
    const QStringList pieces = description.isEmpty() ? QStringList() : description.split(lineBreak);
    out.literal("#QOS_DESCRIPTION='");
    out.number(pieces.size());
    out.literal("' #Zeilen\r\n");
    for (const QString& piece : pieces) {
        out.literal("#");
        out.line(piece);
    }
    out.end();
}

template <typename Sink> void writeClass(Lines<Sink>& out, const QoSClass& c)
{
    const qint32 n = c.ClassIdx();
    out.setting("#QOS_CLASS_", n, "_CAPTION", c.Caption());
    out.cell("#QOS_CLASS_", n, "_CELLPOS", c);
    const QoSClass* parent = c.ParentQoSObject();
    out.numberSetting("QOS_CLASS_", n, "_PARENT", parent ? parent->ClassIdx() : 0);
    out.setting("QOS_CLASS_", n, "_MINBANDWIDTH", c.QoSMinBandWidth());
    out.setting("QOS_CLASS_", n, "_MAXBANDWIDTH", c.QoSMaxBandWidth());
    out.setting("QOS_CLASS_", n, "_DIRECTION", c.QoSDirection());
    out.setting("QOS_CLASS_", n, "_PRIO", c.QoSPrio());
    out.end();
}

template <typename Sink> void writeFilter(Lines<Sink>& out, const QoSFilter& f, qint64 entries, qint64 first)
{
    const QoSClass* parent = f.ParentQoSObject();
    const qint64 classNumber = parent ? parent->ClassIdx() : 0;
    const QString ip = f.QoSIP();
    const QString port = f.QoSPort();
    const QString type = f.QoSType();
    const QString option = f.QoSOption();
    if (entries == 1) {
        out.setting("#QOS_FILTER_", first, "_CAPTION", f.Caption());
        out.cell("#QOS_FILTER_", first, "_CELLPOS", f);
        out.numberSetting("QOS_FILTER_", first, "_CLASS", classNumber);
        out.setting("QOS_FILTER_", first, "_IP", ip);
        out.setting("QOS_FILTER_", first, "_PORT", port);
        out.setting("QOS_FILTER_", first, "_TYPE", type);
        out.setting("QOS_FILTER_", first, "_OPTION", option);
        out.end();
        return;
    }
    // The router sees one ordinary filter per port; the PORTEXT comments tell the reader
    // that they are one filter object. Only the first entry carries the caption, and only
    // when there is one: an uncaptioned filter is written as it always was.
    const QStringList ports = f.PortInput()->PortExt();
    const QString caption = f.Caption();
    for (qint64 k = 0; k < entries; ++k) {
        const qint64 m = first + k;
        if (k == 0 && !caption.isEmpty())
            out.setting("#QOS_FILTER_", m, "_CAPTION", caption);
        out.cell("#QOS_FILTER_", m, "_CELLPOS", f);
        out.numberSetting("QOS_FILTER_", m, "_CLASS", classNumber);
        out.setting("QOS_FILTER_", m, "_IP", ip);
        out.setting("#QOS_FILTER_", m, "_PORTEXT", k == 0 ? QStringView(port) : QStringView(u"ignore"));
        out.setting("QOS_FILTER_", m, "_PORT", k < ports.size() ? QStringView(ports[k]) : QStringView());
        out.setting("QOS_FILTER_", m, "_TYPE", type);
        out.setting("QOS_FILTER_", m, "_OPTION", option);
        out.end();
    }
}

template <typename Sink> void exportInto(Document& doc, Sink& sink)
{
    QoSCommon& common = *doc.Common1();
    common.SetQoSInternetDefaultUp(QString());
    common.SetQoSInternetDefaultDown(QString());

    checkCommon(common);
    const Numbering numbering(doc);
    // Exactly "up" is up; any other direction counts as down. Of several, the last wins.
    for (const Entry& e : numbering.boxes()) {
        auto* c = qobject_cast<QoSClass*>(e.object);
        if (!c || !c->DefaultClass())
            continue;
        if (c->QoSDirection() == u"up")
            common.SetQoSInternetDefaultUp(QString::number(c->ClassIdx()));
        else
            common.SetQoSInternetDefaultDown(QString::number(c->ClassIdx()));
    }

    sink.reserve(sizeBound(numbering, common));
    Lines<Sink> out(sink);
    // Only the down page's size is written.
    writeHeader(out, common.QoSVersion(), doc.Down1()->prop().Cols, doc.Down1()->prop().Rows);
    writeCommon(out, common);
    out.literal("QOS_CLASS_N='");
    out.number(numbering.classes());
    out.literal("'\r\n\r\n");
    for (const Entry& e : numbering.boxes())
        if (auto* c = qobject_cast<QoSClass*>(e.object))
            writeClass(out, *c);
    out.literal("QOS_FILTER_N='");
    out.number(numbering.filters());
    out.literal("'\r\n\r\n");
    for (const Entry& e : numbering.boxes())
        if (auto* f = qobject_cast<QoSFilter*>(e.object))
            writeFilter(out, *f, e.entries, e.first);
    writeDescription(out, common.QoSDescription());
}

} // namespace

QString ExportQoSText(Document& doc)
{
    Utf16Sink sink;
    exportInto(doc, sink);
    return QString(reinterpret_cast<const QChar*>(sink.buffer.data()), qsizetype(sink.buffer.size()));
}

QByteArray ExportQoSBytes(Document& doc)
{
    BytesSink sink;
    exportInto(doc, sink);
    return sink.take();
}
