#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <array>
#include <optional>
#include <vector>

// The lines of a qos.txt, read once, and the look-up of one variable in them.
//
// A variable is found on the first line that, with tabs made blanks and blanks trimmed,
// begins with its name; later lines are never seen. Commented variables are looked up with
// their "#". The lines of the description block that start with "#" are text and never
// stand for a variable.
//
// The settings the reader asks for are indexed in one pass over the lines: the fields of
// numbered classes and filter entries by field and number, the few others by name. Any
// other name is looked for line by line.
class QoSFileTable
{
public:
    // The numbered fields, looked up without building their names.
    enum class Field {
        ClassCaption,
        ClassCellPos,
        ClassParent,
        ClassMinBandwidth,
        ClassMaxBandwidth,
        ClassDirection,
        ClassPrio,
        FilterCaption,
        FilterCellPos,
        FilterPortExt,
        FilterClass,
        FilterIp,
        FilterPort,
        FilterType,
        FilterOption,
    };
    static constexpr int FieldCount = int(Field::FilterOption) + 1;

    // Windows-1252 bytes; lines end at CR LF, LF or CR.
    explicit QoSFileTable(const QByteArray& bytes);
    // The lines and the index point into the table's own text.
    QoSFileTable(const QoSFileTable&) = delete;
    QoSFileTable& operator=(const QoSFileTable&) = delete;

    qsizetype LineCount() const { return qsizetype(m_lines.size()); }
    QStringView Line(qsizetype i) const { return m_lines[std::size_t(i)]; }

    // The index of the first line that belongs to a variable.
    std::optional<qsizetype> FindLine(QStringView name) const;

    // The value between the quotes after the "=" of the variable's line, or defaultValue when
    // no line belongs to it. A line without "=" or quotes throws a QoSError. With multiLine
    // the value is a line count and the result the text of that many following lines, each
    // without its first character, joined with CR LF. "%Version" is read from the end of the
    // file's second line.
    QString GetQoSValue(QStringView name, const QString& defaultValue, bool multiLine = false) const;
    // The same for field `field` of class or filter entry `number` ("QOS_CLASS_3_PARENT").
    QString Value(Field field, qint32 number, const QString& defaultValue) const;
    // Whether any field of class `number` (or filter entry `number`) stands in the file.
    bool HasNumbered(bool filter, qint32 number) const;
    // Whether the file holds any variable of a qos.txt the reader knows.
    bool HasAnyVariable() const;
    // The name of such a field.
    static QString Name(Field field, qint32 number);

    static QString CleanLine(QStringView line);

private:
    QString valueOfLine(qsizetype line, bool multiLine) const;
    QString versionValue(const QString& defaultValue) const;
    QString followingLines(qsizetype line, const QString& countText) const;
    bool isText(qsizetype line) const;
    void index();
    std::optional<qsizetype> fieldLine(Field field, qint32 number) const;

    QString m_text; // the decoded file; the lines are views into it
    std::vector<QStringView> m_lines;
    // Where the leading word of each line ends: the "=" can only come after it.
    std::vector<qint32> m_wordEnds;
    // The description lines that start with "#": (m_textFrom, m_textTo].
    qsizetype m_textFrom = -1;
    qsizetype m_textTo = -1;
    // First line of each numbered field, by number; -1 where there is none.
    std::array<std::vector<qint32>, FieldCount> m_fields;
    std::vector<qint32> m_globals;
};
