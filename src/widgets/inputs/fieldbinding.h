#pragma once

#include <QObject>
#include <QPointer>

// Points an input widget at a core field, or at its own one when given none, and drops the
// connections to the field it showed before. When a bound field goes away (its class or
// filter was deleted), the widget falls back to its own field. The caller then connects
// the new field's signals and shows its state.
template <typename Field, typename Widget>
void bindField(Widget* widget, QPointer<Field>& current, Field* field, Field& own)
{
    if (current)
        QObject::disconnect(current, nullptr, widget, nullptr);
    current = field ? field : &own;
    if (current != &own)
        QObject::connect(current, &QObject::destroyed, widget, [widget] { widget->setField(nullptr); });
}
