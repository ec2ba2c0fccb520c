#include "qosfiletable.h"

#include "numbers.h"
#include "qoserror.h"
#include "windows1252.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <cstring>

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

std::vector<QStringView> splitLines(QStringView text)
{
    std::vector<QStringView> lines;
    qsizetype start = 0;
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        const QChar c = text[i];
        if (c != u'\r' && c != u'\n')
            continue;
        lines.push_back(text.sliced(start, i - start));
        if (c == u'\r' && i + 1 < n && text[i + 1] == u'\n')
            ++i;
        start = i + 1;
    }
    // A final line end does not start another line.
    if (start < n)
        lines.push_back(text.sliced(start));
    return lines;
}

// Any order in which the words that begin with a name stand together will do; comparing the
// code units as bytes is such an order and much faster than a character-wise comparison.
int compareWords(QStringView a, QStringView b)
{
    const qsizetype n = qMin(a.size(), b.size());
    if (const int c = std::memcmp(a.utf16(), b.utf16(), std::size_t(n) * sizeof(char16_t)))
        return c;
    return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

// FNV-1a over the code units.
quint64 wordHash(QStringView word)
{
    quint64 h = 14695981039346656037ULL;
    for (const QChar c : word) {
        h ^= c.unicode();
        h *= 1099511628211ULL;
    }
    return h;
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

QoSFileTable::QoSFileTable(const QByteArray& bytes)
    : m_text(Windows1252::Decode(bytes)), m_lines(splitLines(m_text))
{
    m_index.reserve(m_lines.size());
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        const QStringView word = leadingWord(m_lines[i]);
        if (!word.isEmpty())
            m_index.push_back({word, qsizetype(i)});
    }
    std::sort(m_index.begin(), m_index.end(), [](const Key& a, const Key& b) {
        const int c = compareWords(a.word, b.word);
        return c != 0 ? c < 0 : a.line < b.line;
    });
    std::size_t capacity = 16;
    while (capacity < m_index.size() * 2)
        capacity *= 2;
    m_exact.resize(capacity);
    for (std::size_t i = 0; i < m_index.size();) {
        std::size_t end = i + 1;
        while (end < m_index.size() && compareWords(m_index[end].word, m_index[i].word) == 0)
            ++end;
        if (end == m_index.size() || !m_index[end].word.startsWith(m_index[i].word)) {
            const quint64 h = wordHash(m_index[i].word);
            std::size_t slot = h & (capacity - 1);
            while (m_exact[slot].key >= 0)
                slot = (slot + 1) & (capacity - 1);
            m_exact[slot] = {h, qsizetype(i)};
        }
        i = end;
    }
}

std::optional<qsizetype> QoSFileTable::exactLine(QStringView word) const
{
    const quint64 h = wordHash(word);
    const std::size_t mask = m_exact.size() - 1;
    for (std::size_t slot = h & mask; m_exact[slot].key >= 0; slot = (slot + 1) & mask) {
        const Slot& s = m_exact[slot];
        if (s.hash == h && compareWords(m_index[std::size_t(s.key)].word, word) == 0)
            return m_index[std::size_t(s.key)].line;
    }
    return std::nullopt;
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
        return m_lines.empty() ? std::nullopt : std::optional<qsizetype>(0);
    if (std::any_of(name.begin(), name.end(), isWordBreak)) {
        // Not a plain name: fall back to the test on every line.
        for (std::size_t i = 0; i < m_lines.size(); ++i)
            if (CleanLine(m_lines[i]).startsWith(name))
                return qsizetype(i);
        return std::nullopt;
    }
    if (const auto line = exactLine(name))
        return line;
    auto it = std::lower_bound(m_index.begin(), m_index.end(), name,
                               [](const Key& k, QStringView n) { return compareWords(k.word, n) < 0; });
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
    // Blanks and tabs are never "=" or quotes, so the raw line gives the same positions as the
    // cleaned one; only the tabs inside the value must become blanks.
    const QStringView raw = Line(*line);
    const qsizetype equals = raw.indexOf(u'=');
    const qsizetype open = equals < 0 ? -1 : raw.indexOf(u'\'', equals + 1);
    const qsizetype close = open < 0 ? -1 : raw.indexOf(u'\'', open + 1);
    if (close < 0)
        throw QoSError(QoSError::Kind::File,
                       QStringLiteral("Zeile %1 hat keinen Wert in Anführungszeichen: %2")
                           .arg(*line + 1)
                           .arg(CleanLine(raw)));
    QString value = raw.sliced(open + 1, close - open - 1).toString();
    value.replace(u'\t', u' ');
    return multiLine ? followingLines(*line, value) : value;
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
