#pragma once

#include "model/qosobject.h"

#include "inputs/ipfield.h"
#include "inputs/optionfield.h"
#include "inputs/portfield.h"
#include "inputs/typefield.h"

// A filter: which traffic (address, ports, type, option) goes into the class above it.
class QoSFilter final : public QoSObject
{
    Q_OBJECT
    Q_PROPERTY(QString QoSIP READ QoSIP WRITE SetQoSIP)
    Q_PROPERTY(QString QoSPort READ QoSPort WRITE SetQoSPort)
    Q_PROPERTY(QString QoSType READ QoSType WRITE SetQoSType)
    Q_PROPERTY(QString QoSOption READ QoSOption WRITE SetQoSOption)
public:
    QoSFilter(Document* document, ObjectPage* page, const QString& name);

    QString TypeName() const override { return QStringLiteral("QoSFilter"); }

    // The parent class's number as text, "0" without a parent.
    QString QoSClass() const;
    void SetQoSClass(const QString& number);
    void AddParentQoSObject(const QString& name) override;
    void AddParentQoSObject(::QoSClass* parent) override;

    // The address with the address field's own rules ("10.0.0.0/8/9" is held as "10.0.0.0/8").
    QString QoSIP() const;
    void SetQoSIP(const QString& ip);
    QString QoSPort() const;
    void SetQoSPort(const QString& port);
    QString QoSType() const { return m_type->Text(); }
    void SetQoSType(const QString& type);
    QString QoSOption() const { return m_option->Text(); }
    void SetQoSOption(const QString& option);
    IpField* IpInput() const { return m_ip; }
    PortField* PortInput() const { return m_port; }
    TypeField* TypeInput() const { return m_type; }
    OptionField* OptionInput() const { return m_option; }

    // When the user leaves the type field: an empty type with ports becomes "client". The
    // focus going to a popup (the type's own menu) or to another window is no leaving.
    void TypeFieldLeft(Qt::FocusReason reason = Qt::OtherFocusReason);

    qint16 FilterIdx() const { return m_filterIdx; }
    void SetFilterIdx(qint16 idx);

    // The number of ports of the list as decimal text.
    QString FilterCount() const;

    void EditDelete() override;

private:
    void fieldEdited(const QString& key);
    void portEdited();

    // The fields live inside the filter; the pointers are what views and rules hold.
    IpField m_ipField;
    PortField m_portField;
    TypeField m_typeField;
    OptionField m_optionField;
    IpField* m_ip = &m_ipField;
    PortField* m_port = &m_portField;
    TypeField* m_type = &m_typeField;
    OptionField* m_option = &m_optionField;
    qint16 m_filterIdx = 0;
};
