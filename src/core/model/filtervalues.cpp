#include "model/filtervalues.h"

#include "model/qosfilter.h"

std::optional<QoSError> FilterValues::GiveTo(QoSFilter& f, QoSClass& c) const
{
    const int number = filterIdx == 0 ? f.FilterIdx() : filterIdx;
    // Linked first, so that the field edits below already belong to a filter of the class.
    f.AddParentQoSObject(&c);
    f.SetQoSIP(ip);
    std::optional<QoSError> error;
    try {
        f.SetQoSPort(port);
    } catch (const QoSError& e) {
        error = e;
    }
    f.SetQoSType(type);
    f.SetQoSOption(option);
    f.SetFilterIdx(number >= -32768 && number <= 32767 ? qint16(number) : qint16(0));
    f.SetCaption(caption);
    f.SetVisible(visible);
    return error;
}
