#include "file/qosfiletable.h"

#include "base/numbers.h"
#include "base/qoserror.h"
#include "base/windows1252.h"
#include "file/qosreader.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <span>

namespace {

// A name matches a line by prefix; the leading word of a line reaches up to the first
// character that cannot be part of a variable name, so that a name made only of word
// characters matches exactly the lines whose word begins with it.
bool isWordBreak(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'=' || c == u'\'';
}

inline QStringView leadingWord(QStringView line)
{
    const char16_t* p = line.utf16();
    const qsizetype n = line.size();
    qsizetype start = 0;
    while (start < n && (p[start] == u' ' || p[start] == u'\t'))
        ++start;
    qsizetype end = start;
    // Letters, digits and "_" are the usual characters; the four breaks are told apart after.
    while (end < n && (p[end] > u'\'' || (p[end] != u' ' && p[end] != u'\t' && p[end] != u'\'')) &&
           p[end] != u'=')
        ++end;
    return line.sliced(start, end - start);
}

// Every byte of the code page is one code unit of the text, so the line ends are found in the
// bytes, where the C library searches fastest.
std::vector<QStringView> splitLines(QStringView text, const QByteArray& bytes)
{
    std::vector<QStringView> lines;
    lines.reserve(std::size_t(bytes.size() / 24));
    const char* begin = bytes.constData();
    const char* end = begin + bytes.size();
    const char* start = begin;
    while (start < end) {
        const auto* lf = static_cast<const char*>(std::memchr(start, '\n', std::size_t(end - start)));
        const char* stop = lf ? lf : end;
        // A lone CR ends a line too; a CR right before the LF belongs to it.
        const auto* cr = static_cast<const char*>(std::memchr(start, '\r', std::size_t(stop - start)));
        if (cr && cr + 1 != lf) {
            lines.push_back(text.sliced(start - begin, cr - start));
            start = cr + 1;
            continue;
        }
        const char* lineEnd = cr ? cr : stop;
        // A final line end does not start another line.
        lines.push_back(text.sliced(start - begin, lineEnd - start));
        start = lf ? lf + 1 : end;
    }
    return lines;
}

QString trimBlanks(QStringView s)
{
    qsizetype a = 0;
    qsizetype b = s.size();
    while (a < b && s[a] == u' ')
        ++a;
    while (b > a && s[b - 1] == u' ')
        --b;
    return s.sliced(a, b - a).toString();
}

using Field = QoSFileTable::Field;

// A plain comparison of code units: the index compares a few names per line of the file.
inline bool begins(QStringView s, QStringView prefix)
{
    if (s.size() < prefix.size())
        return false;
    const char16_t* a = s.utf16();
    const char16_t* b = prefix.utf16();
    for (qsizetype i = 0; i < prefix.size(); ++i)
        if (a[i] != b[i])
            return false;
    return true;
}

// The numbered names: a head, the number, a suffix.
struct Suffix
{
    QStringView text;
    Field field;
};

const Suffix classSuffixes[] = {{u"_PARENT", Field::ClassParent},
                                {u"_MINBANDWIDTH", Field::ClassMinBandwidth},
                                {u"_MAXBANDWIDTH", Field::ClassMaxBandwidth},
                                {u"_DIRECTION", Field::ClassDirection},
                                {u"_PRIO", Field::ClassPrio}};
const Suffix classComments[] = {{u"_CAPTION", Field::ClassCaption}, {u"_CELLPOS", Field::ClassCellPos}};
const Suffix filterSuffixes[] = {{u"_CLASS", Field::FilterClass},
                                 {u"_IP", Field::FilterIp},
                                 {u"_PORT", Field::FilterPort},
                                 {u"_TYPE", Field::FilterType},
                                 {u"_OPTION", Field::FilterOption}};
const Suffix filterComments[] = {{u"_CAPTION", Field::FilterCaption},
                                 {u"_CELLPOS", Field::FilterCellPos},
                                 {u"_PORTEXT", Field::FilterPortExt}};

struct Head
{
    QStringView text;
    std::span<const Suffix> suffixes;
};

const Head heads[] = {
    {u"QOS_CLASS_", classSuffixes},
    {u"#QOS_CLASS_", classComments},
    {u"QOS_FILTER_", filterSuffixes},
    {u"#QOS_FILTER_", filterComments},
};

// The other names the reader asks for.
const QStringView globals[] = {
    u"QOS_INTERNET_DEV",
    u"QOS_INTERNET_BAND_DOWN",
    u"QOS_INTERNET_BAND_UP",
    u"QOS_INTERNET_DEFAULT_DOWN",
    u"QOS_INTERNET_DEFAULT_UP",
    u"QOS_LOCALNET_DEV",
    u"QOS_LOCALNET_BAND",
    u"#QOS_DESCRIPTION",
    u"#QOS_FILEVERSION",
    u"#QOS_PAGESIZE",
    u"QOS_CLASS_N",
    u"QOS_FILTER_N",
};
constexpr int descriptionGlobal = 7;

struct Numbered
{
    const Head* head = nullptr;
    qint32 number = 0;
    QStringView rest;
};

// "QOS_CLASS_12_PRIO" as head, 12 and "_PRIO". Numbers with a leading zero or beyond any count
// a file may announce can never be asked for and are not taken apart.
inline std::optional<Numbered> splitNumbered(QStringView word)
{
    // Told apart by a few characters first: the index asks this of every line of the file.
    const char16_t* p = word.utf16();
    if (word.size() < 11)
        return std::nullopt;
    const int hash = p[0] == u'#' ? 1 : 0;
    if ((hash == 0 && p[0] != u'Q') || p[hash + 3] != u'_')
        return std::nullopt;
    const char16_t kind = p[hash + 4];
    const Head* h = kind == u'C' ? &heads[hash] : kind == u'F' ? &heads[2 + hash] : nullptr;
    if (!h || !begins(word, h->text))
        return std::nullopt;
    qsizetype i = h->text.size();
    qint64 number = 0;
    while (i < word.size() && p[i] >= u'0' && p[i] <= u'9' && number <= MaxQoSObjectsInFile) {
        number = number * 10 + (p[i] - u'0');
        ++i;
    }
    const qsizetype digits = i - h->text.size();
    if (digits == 0 || p[h->text.size()] == u'0' || number > MaxQoSObjectsInFile ||
        (i < word.size() && p[i] >= u'0' && p[i] <= u'9'))
        return std::nullopt;
    return Numbered{h, qint32(number), word.sliced(i)};
}

} // namespace

QoSFileTable::QoSFileTable(const QByteArray& bytes)
    : m_text(Windows1252::Decode(bytes)), m_lines(splitLines(m_text, bytes)),
      m_globals(std::size(globals), -1)
{
    index();
}

void QoSFileTable::index()
{
    const qsizetype n = LineCount();
    m_wordEnds.assign(std::size_t(n), 0);
    for (qsizetype i = 0; i < n; ++i) {
        if (isText(i))
            continue;
        const QStringView line = m_lines[std::size_t(i)];
        const QStringView word = leadingWord(line);
        m_wordEnds[std::size_t(i)] = qint32(word.data() - line.data() + word.size());
        if (word.isEmpty())
            continue;
        if (const auto numbered = splitNumbered(word)) {
            for (const auto& [suffix, field] : numbered->head->suffixes) {
                if (!begins(numbered->rest, suffix))
                    continue; // a longer suffix ("_PRIORITY") still begins with the name
                std::vector<qint32>& lines = m_fields[std::size_t(field)];
                if (lines.size() <= std::size_t(numbered->number))
                    lines.resize(std::size_t(numbered->number) + 1, -1);
                if (lines[std::size_t(numbered->number)] < 0)
                    lines[std::size_t(numbered->number)] = qint32(i);
            }
            continue;
        }
        if (word[0] != u'Q' && (word[0] != u'#' || word.size() < 2 || word[1] != u'Q'))
            continue;
        for (std::size_t g = 0; g < std::size(globals); ++g) {
            if (m_globals[g] >= 0 || !begins(word, globals[g]))
                continue;
            m_globals[g] = qint32(i);
            if (g != descriptionGlobal)
                continue;
            // The description's own lines follow: those that start with "#" are text.
            try {
                const QString count = valueOfLine(i, false);
                const double lines = Numbers::LeadingValue(count);
                if (lines > 0) {
                    m_textFrom = i;
                    m_textTo = i + qsizetype(qMin(std::nearbyint(lines), double(n)));
                }
            } catch (const QoSError&) {
                // A count line without its quotes or with an absurd number holds no text.
            }
        }
    }
}

bool QoSFileTable::isText(qsizetype line) const
{
    return line > m_textFrom && line <= m_textTo && m_lines[std::size_t(line)].startsWith(u'#');
}

QString QoSFileTable::CleanLine(QStringView line)
{
    QString s = line.toString();
    s.replace(u'\t', u' ');
    return trimBlanks(s);
}

std::optional<qsizetype> QoSFileTable::fieldLine(Field field, qint32 number) const
{
    const std::vector<qint32>& lines = m_fields[std::size_t(field)];
    if (number < 0 || std::size_t(number) >= lines.size() || lines[std::size_t(number)] < 0)
        return std::nullopt;
    return lines[std::size_t(number)];
}

std::optional<qsizetype> QoSFileTable::FindLine(QStringView name) const
{
    if (name.isEmpty())
        return m_lines.empty() ? std::nullopt : std::optional<qsizetype>(0);
    if (const auto numbered = splitNumbered(name)) {
        for (const auto& [suffix, field] : numbered->head->suffixes)
            if (numbered->rest == suffix)
                return fieldLine(field, numbered->number);
    }
    for (std::size_t g = 0; g < std::size(globals); ++g)
        if (name == globals[g])
            return m_globals[g] < 0 ? std::nullopt : std::optional<qsizetype>(m_globals[g]);
    // Any other name: line by line.
    const bool plain = std::none_of(name.begin(), name.end(), isWordBreak);
    for (qsizetype i = 0; i < LineCount(); ++i) {
        if (isText(i))
            continue;
        if (plain ? leadingWord(m_lines[std::size_t(i)]).startsWith(name)
                  : CleanLine(m_lines[std::size_t(i)]).startsWith(name))
            return i;
    }
    return std::nullopt;
}

QString QoSFileTable::valueOfLine(qsizetype line, bool multiLine) const
{
    // Blanks and tabs are never "=" or quotes, so the raw line gives the same positions as the
    // cleaned one; only the tabs inside the value must become blanks.
    const QStringView raw = Line(line);
    const char16_t* p = raw.utf16();
    const qsizetype n = raw.size();
    qsizetype open = std::size_t(line) < m_wordEnds.size() ? m_wordEnds[std::size_t(line)] : 0;
    while (open < n && p[open] != u'=')
        ++open;
    while (open < n && p[open] != u'\'')
        ++open;
    qsizetype close = open + 1;
    bool tabs = false;
    while (close < n && p[close] != u'\'') {
        tabs = tabs || p[close] == u'\t';
        ++close;
    }
    if (close >= n)
        throw QoSError(QoSError::Kind::File,
                       QStringLiteral("Zeile %1 hat keinen Wert in Anführungszeichen: %2")
                           .arg(line + 1)
                           .arg(CleanLine(raw)));
    QString value = raw.sliced(open + 1, close - open - 1).toString();
    if (tabs)
        value.replace(u'\t', u' ');
    return multiLine ? followingLines(line, value) : value;
}

QString QoSFileTable::GetQoSValue(QStringView name, const QString& defaultValue, bool multiLine) const
{
    if (name == u"%Version")
        return versionValue(defaultValue);
    const std::optional<qsizetype> line = FindLine(name);
    return line ? valueOfLine(*line, multiLine) : defaultValue;
}

QString QoSFileTable::Value(Field field, qint32 number, const QString& defaultValue) const
{
    const std::optional<qsizetype> line = fieldLine(field, number);
    return line ? valueOfLine(*line, false) : defaultValue;
}

bool QoSFileTable::HasNumbered(bool filter, qint32 number) const
{
    const int from = filter ? int(Field::FilterCaption) : 0;
    const int to = filter ? FieldCount : int(Field::FilterCaption);
    for (int field = from; field < to; ++field)
        if (fieldLine(Field(field), number))
            return true;
    return false;
}

bool QoSFileTable::HasAnyVariable() const
{
    if (std::any_of(m_globals.begin(), m_globals.end(), [](qint32 line) { return line >= 0; }))
        return true;
    for (const std::vector<qint32>& lines : m_fields)
        if (std::any_of(lines.begin(), lines.end(), [](qint32 line) { return line >= 0; }))
            return true;
    return FindLine(u"OPT_QOS").has_value();
}

QString QoSFileTable::Name(Field field, qint32 number)
{
    for (const Head& h : heads)
        for (const auto& [suffix, f] : h.suffixes)
            if (f == field)
                return h.text.toString() + QString::number(number) + suffix.toString();
    return QString();
}

QString QoSFileTable::versionValue(const QString& defaultValue) const
{
    if (LineCount() < 2)
        return defaultValue;
    const QString line = trimBlanks(m_lines[1]);
    if (line.right(6).contains(u"v0.3", Qt::CaseInsensitive))
        return QStringLiteral("v0.3");
    return defaultValue;
}

QString QoSFileTable::followingLines(qsizetype line, const QString& countText) const
{
    const double count = Numbers::LeadingValue(countText);
    const qsizetype available = LineCount() - line - 1;
    if (!(count > 0) || available <= 0)
        return QString();
    const double rounded = std::nearbyint(count);
    const qsizetype n = rounded >= double(available) ? available : qsizetype(rounded);
    QStringList pieces;
    pieces.reserve(n);
    // Taken raw: neither tab-cleaned nor trimmed, only the "#" in front dropped.
    for (qsizetype i = 1; i <= n; ++i)
        pieces << Line(line + i).mid(1).toString();
    return pieces.join(QStringLiteral("\r\n"));
}
