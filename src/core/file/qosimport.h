#pragma once

#include "file/qosfiletable.h"

#include <QPointer>
#include <QString>
#include <QStringView>

#include <optional>
#include <utility>
#include <vector>

class Document;
class ObjectPage;
class QoSClass;
class QoSError;
class StatusWindow;
struct ImportReport;

// Builds the document from the lines of a qos.txt: the common settings, the down page's size,
// every class, then every filter entry, made on their pages by the pages' own AddClass and
// AddFilter. What the pages refuse is counted in the report; the first error is thrown as a
// QoSError that names the class or filter entry, after the report was told where it stopped
// and how far it got.
class QoSImport
{
public:
    QoSImport(Document& doc, const QoSFileTable& file, ImportReport& report);

    void run();

private:
    using Field = QoSFileTable::Field;
    struct Cell
    {
        std::optional<qint16> x;
        std::optional<qint16> y;
    };

    QString where() const;
    QoSError located(const QoSError& e) const;
    QString value(QStringView name, const QString& defaultValue, bool multiLine = false) const;
    QString value(Field field, qint32 number, const QString& defaultValue) const;
    void message(const QString& text);
    void readCommon();
    template <typename Set> void setBandwidth(QStringView name, const QString& defaultValue, Set set);
    void readPageSize();
    qint32 readCount(const QString& name, const QString& what);
    Cell readCell(Field field, qint32 number);
    void readClass(qint32 n, qint32 classes, bool layout);
    void refused(bool filter, const ObjectPage* page, const QString& noFurtherLevel);
    void linkLaterParents();
    void readFilter(qint32 m, bool layout);

    Document& m_doc;
    const QoSFileTable& m_file;
    StatusWindow* m_status;
    ImportReport& m_report;
    enum class Place { Header, Class, Filter, Done } m_place = Place::Header;
    qint32 m_number = 0;
    std::vector<std::pair<QPointer<QoSClass>, qint32>> m_laterParents;
};
