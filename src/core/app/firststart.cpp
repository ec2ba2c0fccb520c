#include "app/firststart.h"

#include "model/document.h"
#include "model/objectpage.h"
#include "model/qoscommon.h"

void FirstStart::Apply(Document& document)
{
    for (ObjectPage* page : {document.Down1(), document.Up1()}) {
        qint32 cols = Cols;
        qint32 rows = Rows;
        page->SetGridDimensions(cols, rows);
    }
    QoSCommon& common = *document.Common1();
    common.SetQoSInternetBandDown(InternetBandDown());
    common.SetQoSInternetBandUp(InternetBandUp());
    common.SetQoSInternetDev(InternetDev());
    common.SetQoSLocalBand(LocalBand());
    common.SetQoSLocalNetDev(LocalNetDev());
    common.SetQoSVersion(Version());
    common.SetQoSInternetDefaultDown(DefaultClass());
    common.SetQoSInternetDefaultUp(DefaultClass());
}
