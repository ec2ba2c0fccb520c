#include "model/classvalues.h"

#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"

#include <QSet>

namespace {

QSet<QString> classCaptions(const Document& document)
{
    QSet<QString> titles;
    for (const QoSObject* o : document.Objects())
        if (o->IsClass())
            titles.insert(o->Caption());
    return titles;
}

} // namespace

std::optional<QoSError> ClassValues::GiveTo(QoSClass& c, QoSClass* parent) const
{
    Document& document = *c.document();
    int number = classIdx;
    if (number == 0) {
        number = c.ClassIdx();
        // A class named after its number must not take the title of another: a file keeps the
        // captions of an older numbering ("Class 2" may be class 1 now), so a number whose
        // title is taken is passed over, as a number that is taken is.
        if (caption.isEmpty()) {
            const QSet<QString> titles = classCaptions(document);
            while (titles.contains(QStringLiteral("Class ") + QString::number(number)))
                number = document.NextClassCounter();
        }
    }

    std::optional<QoSError> error;
    const auto keep = [&error](const auto& set) {
        try {
            set();
        } catch (const QoSError& e) {
            if (!error)
                error = e;
        }
    };
    // As setting QoSParent to the parent's number, without looking the number up again.
    if (parent)
        c.AddParentQoSObject(parent);
    c.SetQoSDirection(direction);

    const auto line = [&] { return document.Common1()->LineBandwidth(direction); };
    keep([&] {
        if (!minBandwidth.isEmpty())
            c.SetQoSMinBandWidth(minBandwidth);
        else if (!parent)
            c.SetQoSMinBandWidth(c.GetObjectPage()->ClassCount() >= 2 ? QStringLiteral("0") : line());
        else
            c.SetQoSMinBandWidthKBit(1);
    });
    keep([&] {
        if (!maxBandwidth.isEmpty())
            c.SetQoSMaxBandWidth(maxBandwidth);
        else if (!parent)
            c.SetQoSMaxBandWidth(line());
        else
            c.SetQoSMaxBandWidthKBit(parent->QoSMaxBandWidthKBit());
    });

    if (parent)
        c.SetQoSDirection(parent->QoSDirection());

    c.SetQoSPrio(prio);
    c.SetClassIdx(number);
    c.SetDefaultClass(defaultClass);
    // Every box has a visible, distinct title from birth, as reading a file would name it.
    c.SetCaption(caption.isEmpty() ? QStringLiteral("Class ") + QString::number(number) : caption);
    // The cell was given at birth; MatrixX and MatrixY need not be set again.
    c.SetVisible(visible);
    return error;
}
