#pragma once

#include <QList>
#include <QObject>
#include <QVariant>

class QObject;

// One recorded edit: which box, which property, and the value it held at that moment.
struct HistoryItem
{
    QString ObjectName;
    QString PropertyName;
    QVariant Value;
};

// The record of filter field edits for the whole run. It is the ground for a later undo:
// Restore and Remove are accepted and do nothing; nothing takes entries back yet.
class History : public QObject
{
    Q_OBJECT
public:
    explicit History(QObject* parent = nullptr);

    void Add(const QObject* object, const QString& procName);
    // The same when the caller already holds the property's current value.
    void Add(const QObject* object, const QString& procName, const QVariant& value);
    void Restore() {}
    void Remove() {}
    void Clear();

    qint32 count() const { return m_count; }
    const QList<HistoryItem>& Items() const { return m_items; }

signals:
    void added(const HistoryItem& item);
    void cleared();

private:
    QList<HistoryItem> m_items;
    qint32 m_count = 0;
};
