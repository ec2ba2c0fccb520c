#include "file/qosnumbering.h"

#include "base/qoserror.h"
#include "file/qosreader.h"
#include "file/readbackcheck.h"
#include "inputs/portfield.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qosfilter.h"

QoSNumbering::QoSNumbering(Document& doc)
{
    for (ObjectPage* page : {doc.Down1(), doc.Up1()})
        for (QoSObject* o : page->ObjectsInWriteOrder())
            m_boxes.push_back({o, 0, 0});
    qint32 classes = 0;
    for (Box& b : m_boxes) {
        if (auto* c = qobject_cast<QoSClass*>(b.object)) {
            ReadBackCheck::Class(*c);
            c->SetClassIdx(++classes);
        } else if (auto* f = qobject_cast<QoSFilter*>(b.object)) {
            ReadBackCheck::Filter(*f);
        }
    }
    qint64 filters = 0;
    for (Box& b : m_boxes) {
        auto* f = qobject_cast<QoSFilter*>(b.object);
        if (!f)
            continue;
        // One entry per port of the list; a single port keeps the plain form.
        b.entries = f->PortInput()->count();
        if (!f->PortInput()->CountFits() || b.entries > MaxEntriesPerFilter)
            throw QoSError(QoSError::Kind::Overflow,
                           QStringLiteral("Der Filter \"%1\" mit den Ports '%2' steht für mehr als %3 "
                                          "Einträge; er wird nicht geschrieben.")
                               .arg(f->Caption(),
                                    f->QoSPort().size() > 60 ? f->QoSPort().left(60) + u'…' : f->QoSPort(),
                                    QString::number(MaxEntriesPerFilter)));
        // Entries are numbered without a 16-bit limit, so that every file that reads can be
        // written again; the filter's own 16-bit number keeps it only where it fits.
        b.first = filters + 1;
        f->SetFilterIdx(b.first <= 32767 ? qint16(b.first) : qint16(0));
        filters += b.entries;
    }
    // The reader takes at most so many classes and entries: a larger file would be written
    // and then could not be opened again.
    if (classes > MaxQoSObjectsInFile || filters > MaxQoSObjectsInFile)
        throw QoSError(
            QoSError::Kind::Overflow,
            QStringLiteral("Die Konfiguration ergibt %1 Klassen und %2 Filtereinträge; eine qos.txt "
                           "lässt sich nur mit höchstens %3 von jedem wieder lesen. Die Datei wird "
                           "nicht geschrieben.")
                .arg(QString::number(classes), QString::number(filters),
                     QString::number(MaxQoSObjectsInFile)));
    m_classes = classes;
    m_filters = filters;
}
