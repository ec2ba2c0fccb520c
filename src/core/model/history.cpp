#include "model/history.h"

#include "model/qosobject.h"

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
    if (const auto* box = qobject_cast<const QoSObject*>(object))
        item.ObjectName = box->Name();
    else if (object)
        item.ObjectName = object->objectName();
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
