#include "history.h"

History::History(QObject* parent) : QObject(parent)
{
    Clear();
}

void History::Add(const QObject* object, const QString& procName)
{
    Add(object, procName, object ? object->property(procName.toLatin1().constData()) : QVariant());
}

void History::Add(const QObject* object, const QString& procName, const QVariant& value)
{
    HistoryItem item;
    item.ObjectName = object ? object->objectName() : QString();
    item.PropertyName = procName;
    item.Value = value;
    m_items.append(item);
    ++m_count;
    emit added(item);
}

void History::Clear()
{
    m_items = {};
    m_count = 0;
    emit cleared();
}
