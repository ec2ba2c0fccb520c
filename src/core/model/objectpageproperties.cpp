#include "model/objectpageproperties.h"

#include "base/numbers.h"

void ObjectPageProperties::SetObjectDimensions(qint32 height, qint32 width)
{
    ObjectHeight = height;
    ObjectWidth = width;
    RowHeight = Numbers::RoundToInt32(ObjectHeight * 1.4);
    ColWidth = Numbers::RoundToInt32(ObjectWidth * 1.1);
}
