#include "model/qosfilter.h"

#include "inputs/ipfield.h"
#include "inputs/portfield.h"
#include "model/document.h"
#include "model/history.h"
#include "model/objectpage.h"
#include "model/qosclass.h"

QoSFilter::QoSFilter(Document* document, ObjectPage* page, const QString& name)
    : QoSObject(document, page, name)
{
    m_ip->SetOwnerHook([this] { fieldEdited(QStringLiteral("QoSIP")); });
    m_port->SetOwnerHook([this] { portEdited(); });
    m_type->SetOwnerHook([this] { fieldEdited(QStringLiteral("QoSType")); });
    m_option->SetOwnerHook([this] { fieldEdited(QStringLiteral("QoSOption")); });
}

QString QoSFilter::QoSClass() const
{
    const ::QoSClass* parent = ParentQoSObject();
    return parent ? QString::number(parent->ClassIdx()) : QStringLiteral("0");
}

void QoSFilter::SetQoSClass(const QString& number)
{
    if (::QoSClass* c = m_document->ClassByNumberText(number))
        AddParentQoSObject(c);
}

void QoSFilter::AddParentQoSObject(const QString& name)
{
    AddParentQoSObject(qobject_cast<::QoSClass*>(m_document->Object(name)));
}

void QoSFilter::AddParentQoSObject(::QoSClass* parent)
{
    if (!parent || parent->GetObjectPage() != m_page || parent->HasChildClasses())
        return;
    LinkUnder(parent, QStringLiteral("QoSClass"));
}

QString QoSFilter::QoSIP() const
{
    if (const std::optional<QString> text = m_ip->TryText())
        return *text;
    // Mask bits too long for any number: keep what was typed rather than lose it.
    return m_ip->Address() + u'/' + m_ip->MaskBits();
}

void QoSFilter::SetQoSIP(const QString& ip)
{
    m_ip->SetText(ip);
}

QString QoSFilter::QoSPort() const
{
    return m_port->Port();
}

void QoSFilter::SetQoSPort(const QString& port)
{
    m_port->SetPort(port);
}

void QoSFilter::SetQoSType(const QString& type)
{
    // The step position stays: the next step goes on from the field's own counter.
    m_type->SetText(type);
}

void QoSFilter::SetQoSOption(const QString& option)
{
    m_option->SetText(option);
}

void QoSFilter::fieldEdited(const QString& key)
{
    markChanged(key);
    if (m_document->IsImporting())
        return; // the reader's settings are no edits of the user
    QString value;
    if (key == u"QoSIP")
        value = QoSIP();
    else if (key == u"QoSPort")
        value = QoSPort();
    else if (key == u"QoSType")
        value = QoSType();
    else
        value = QoSOption();
    m_document->history()->Add(this, key, value);
}

void QoSFilter::portEdited()
{
    fieldEdited(QStringLiteral("QoSPort"));
    // A port list needs a type: the first port makes an empty type "client", and an emptied
    // list clears whatever type was chosen.
    if (QoSType().isEmpty() && !m_port->Port().isEmpty())
        SetQoSType(QStringLiteral("client"));
    else if (!QoSType().isEmpty() && m_port->Port().isEmpty())
        SetQoSType(QString());
}

void QoSFilter::TypeFieldLeft(Qt::FocusReason reason)
{
    if (reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason)
        return;
    if (QoSType().isEmpty() && !m_port->Port().isEmpty())
        SetQoSType(QStringLiteral("client"));
}

void QoSFilter::SetFilterIdx(qint16 idx)
{
    if (idx == m_filterIdx)
        return;
    m_filterIdx = idx;
    if (IsWatched())
        emit propertyChanged(QStringLiteral("FilterIdx"));
}

QString QoSFilter::FilterCount() const
{
    return QString::number(m_port->count());
}

void QoSFilter::EditDelete()
{
    if (::QoSClass* parent = ParentQoSObject())
        parent->RemoveChildQoSQbject(this);
    if (m_page)
        m_page->Remove(this); // deletes this object: nothing may follow
}
