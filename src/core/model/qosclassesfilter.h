#pragma once

#include <QList>
#include <QString>
#include <optional>

class QoSClass;
class QoSObject;

// A selection of classes, for instance all main classes of the down direction
// (direction "down", parent "0").
class QoSClassesFilter
{
public:
    QoSClass* Item(int index) const { return m_items.value(index); }
    // Collects every class of objects whose direction and parent number match the given
    // criteria; a criterion left out matches every class. Filters and connectors never match.
    void Filter(const std::optional<QString>& direction, const std::optional<QString>& parent,
                const QList<QoSObject*>& objects);
    int count() const { return int(m_items.size()); }
    void Remove(int index);

    QList<QoSClass*>::const_iterator begin() const { return m_items.cbegin(); }
    QList<QoSClass*>::const_iterator end() const { return m_items.cend(); }

private:
    QList<QoSClass*> m_items;
};
