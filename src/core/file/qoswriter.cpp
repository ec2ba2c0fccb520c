#include "file/qoswriter.h"

#include "file/qosnumbering.h"
#include "file/qossections.h"
#include "file/qostextbuffer.h"
#include "file/qostextsize.h"
#include "file/readbackcheck.h"
#include "model/document.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"

namespace {

template <typename Text> Text exportAs(Document& doc)
{
    QoSCommon& common = *doc.Common1();
    common.SetQoSInternetDefaultUp(QString());
    common.SetQoSInternetDefaultDown(QString());

    ReadBackCheck::Common(common);
    const QoSNumbering numbering(doc);
    // Exactly "up" is up; any other direction counts as down. Of several, the last wins.
    for (const QoSNumbering::Box& b : numbering.boxes()) {
        auto* c = qobject_cast<QoSClass*>(b.object);
        if (!c || !c->DefaultClass())
            continue;
        if (c->QoSDirection() == u"up")
            common.SetQoSInternetDefaultUp(QString::number(c->ClassIdx()));
        else
            common.SetQoSInternetDefaultDown(QString::number(c->ClassIdx()));
    }

    // The sections are written twice: counted, and then into a buffer of that size, so that a
    // file of some hundred thousand lines is written without the buffer ever growing.
    const QoSSections sections(doc, numbering);
    QoSTextSize size;
    sections.Write(size);
    QoSTextBuffer<Text> text(size.size());
    sections.Write(text);
    return text.take();
}

} // namespace

QString ExportQoSText(Document& doc)
{
    return exportAs<QString>(doc);
}

QByteArray ExportQoSBytes(Document& doc)
{
    return exportAs<QByteArray>(doc);
}
