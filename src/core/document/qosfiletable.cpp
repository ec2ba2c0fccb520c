#include "qosfiletable.h"

#include "numbers.h"
#include "qoserror.h"
#include "windows1252.h"

#include <algorithm>
#include <cmath>

namespace {

// A name matches a line by prefix; the leading word of a line reaches up to the first
// character that cannot be part of a variable name, so that a name made only of word
// characters matches exactly the lines whose word begins with it.
bool isWordBreak(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'=' || c == u'\'';
}

QStringView leadingWord(QStringView line)
{
    qsizetype start = 0;
    while (start < line.size() && (line[start] == u' ' || line[start] == u'\t'))
        ++start;
    qsizetype end = start;
    while (end < line.size() && !isWordBreak(line[end]))
        ++end;
    return line.sliced(start, end - start);
}

QStringList splitLines(const QString& text)
{
    QStringList lines;
    qsizetype start = 0;
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        const QChar c = text[i];
        if (c != u'\r' && c != u'\n')
            continue;
        lines << text.mid(start, i - start);
        if (c == u'\r' && i + 1 < n && text[i + 1] == u'\n')
            ++i;
        start = i + 1;
    }
    // A final line end does not start another line.
    if (start < n)
        lines << text.mid(start);
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

} // namespace

QoSFileTable::QoSFileTable(const QByteArray& bytes) : m_lines(splitLines(Windows1252::Decode(bytes)))
{
    m_index.reserve(m_lines.size());
    for (qsizetype i = 0; i < m_lines.size(); ++i) {
        const QStringView word = leadingWord(m_lines[i]);
        if (!word.isEmpty())
            m_index.push_back({word, i});
    }
    std::sort(m_index.begin(), m_index.end(), [](const Key& a, const Key& b) {
        const int c = a.word.compare(b.word);
        return c != 0 ? c < 0 : a.line < b.line;
    });
}

QString QoSFileTable::CleanLine(QStringView line)
{
    QString s = line.toString();
    s.replace(u'\t', u' ');
    return trimBlanks(s);
}

std::optional<qsizetype> QoSFileTable::FindLine(QStringView name) const
{
    if (name.isEmpty())
        return m_lines.isEmpty() ? std::nullopt : std::optional<qsizetype>(0);
    if (std::any_of(name.begin(), name.end(), isWordBreak)) {
        // Not a plain name: fall back to the test on every line.
        for (qsizetype i = 0; i < m_lines.size(); ++i)
            if (CleanLine(m_lines[i]).startsWith(name))
                return i;
        return std::nullopt;
    }
    auto it = std::lower_bound(m_index.begin(), m_index.end(), name,
                               [](const Key& k, QStringView n) { return k.word.compare(n) < 0; });
    std::optional<qsizetype> first;
    for (; it != m_index.end() && it->word.startsWith(name); ++it)
        if (!first || it->line < *first)
            first = it->line;
    return first;
}

QString QoSFileTable::GetQoSValue(QStringView name, const QString& defaultValue, bool multiLine) const
{
    if (name == u"%Version")
        return versionValue(defaultValue);
    const std::optional<qsizetype> line = FindLine(name);
    if (!line)
        return defaultValue;
    const QString cleaned = CleanLine(m_lines[*line]);
    const qsizetype equals = cleaned.indexOf(u'=');
    const qsizetype open = equals < 0 ? -1 : cleaned.indexOf(u'\'', equals + 1);
    const qsizetype close = open < 0 ? -1 : cleaned.indexOf(u'\'', open + 1);
    if (close < 0)
        throw QoSError(
            QoSError::Kind::File,
            QStringLiteral("Zeile %1 hat keinen Wert in Anführungszeichen: %2").arg(*line + 1).arg(cleaned));
    const QString value = cleaned.mid(open + 1, close - open - 1);
    return multiLine ? followingLines(*line, value) : value;
}

QString QoSFileTable::versionValue(const QString& defaultValue) const
{
    if (m_lines.size() < 2)
        return defaultValue;
    const QString line = trimBlanks(m_lines[1]);
    if (line.right(6).contains(u"v0.3", Qt::CaseInsensitive))
        return QStringLiteral("v0.3");
    return defaultValue;
}

QString QoSFileTable::followingLines(qsizetype line, const QString& countText) const
{
    const double count = Numbers::LeadingValue(countText);
    const qsizetype available = m_lines.size() - line - 1;
    if (!(count > 0) || available <= 0)
        return QString();
    const double rounded = std::nearbyint(count);
    const qsizetype n = rounded >= double(available) ? available : qsizetype(rounded);
    QStringList pieces;
    pieces.reserve(n);
    // Taken raw: neither tab-cleaned nor trimmed, only the "#" in front dropped.
    for (qsizetype i = 1; i <= n; ++i)
        pieces << m_lines[line + i].mid(1);
    return pieces.join(QStringLiteral("\r\n"));
}
