#pragma once

#include <QPointer>

class QoSClass;
class QoSConnector;
class QoSFilter;
class QoSObject;

// What is selected on a page: a class or a filter, never both, and a line apart from them.
// Each goes by itself when its object is deleted.
class PageSelection
{
public:
    QoSObject* Object() const;
    QoSClass* Class() const;
    QoSFilter* Filter() const;
    QoSConnector* Connector() const;

    // Selects a class or a filter, or with none neither; returns false for an object that is
    // neither, which leaves the selection as it was.
    bool SetObject(QoSObject* object);
    void SetConnector(QoSConnector* connector);
    // A box leaves the page.
    void Forget(const QoSObject* object);
    void Clear();

private:
    QPointer<QoSClass> m_class;
    QPointer<QoSFilter> m_filter;
    QPointer<QoSConnector> m_connector;
};
