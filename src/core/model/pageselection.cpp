#include "model/pageselection.h"

#include "model/qosclass.h"
#include "model/qosconnector.h"
#include "model/qosfilter.h"

QoSObject* PageSelection::Object() const
{
    if (m_class)
        return m_class;
    return m_filter;
}

QoSClass* PageSelection::Class() const
{
    return m_class;
}

QoSFilter* PageSelection::Filter() const
{
    return m_filter;
}

QoSConnector* PageSelection::Connector() const
{
    return m_connector;
}

bool PageSelection::SetObject(QoSObject* object)
{
    if (!object) {
        m_class = nullptr;
        m_filter = nullptr;
    } else if (auto* c = qobject_cast<QoSClass*>(object)) {
        m_class = c;
        m_filter = nullptr;
    } else if (auto* f = qobject_cast<QoSFilter*>(object)) {
        m_filter = f;
        m_class = nullptr;
    } else {
        return false;
    }
    return true;
}

void PageSelection::SetConnector(QoSConnector* connector)
{
    m_connector = connector;
}

void PageSelection::Forget(const QoSObject* object)
{
    if (m_class == object)
        m_class = nullptr;
    if (m_filter == object)
        m_filter = nullptr;
}

void PageSelection::Clear()
{
    m_class = nullptr;
    m_filter = nullptr;
    m_connector = nullptr;
}
