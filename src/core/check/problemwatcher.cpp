#include "check/problemwatcher.h"

#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"

ProblemWatcher::ProblemWatcher(Document* document, QObject* parent) : QObject(parent), m_document(document)
{
    connect(m_document, &Document::objectAdded, this, [this](QoSObject* object) {
        watch(object);
        schedule();
    });
    connect(m_document, &Document::objectRemoved, this, &ProblemWatcher::schedule);
    connect(m_document, &Document::cleared, this, &ProblemWatcher::schedule);
    // The boxes of an import have their cells only once the pages have placed them.
    for (ObjectPage* page : {m_document->Down1(), m_document->Up1()})
        connect(page, &ObjectPage::placed, this, &ProblemWatcher::schedule);
    // The common page's editors write into the fields directly, so the fields are heard too.
    QoSCommon* common = m_document->Common1();
    connect(common, &QoSCommon::propertyChanged, this, &ProblemWatcher::schedule);
    for (BandwidthField* field : {common->BandDownField(), common->BandUpField(), common->LocalBandField()})
        connect(field, &BandwidthField::Change, this, &ProblemWatcher::schedule);
    for (QoSObject* o : m_document->Objects())
        watch(o);
    schedule();
}

void ProblemWatcher::watch(QoSObject* object)
{
    // Captions and cells are part of every line, so any property counts.
    connect(object, &QoSObject::propertyChanged, this, &ProblemWatcher::schedule);
    connect(object, &QoSObject::parentChanged, this, &ProblemWatcher::schedule);
    if (auto* c = qobject_cast<QoSClass*>(object))
        for (BandwidthField* field : {c->MinField(), c->MaxField()})
            connect(field, &BandwidthField::validChanged, this, &ProblemWatcher::schedule);
}

void ProblemWatcher::SetImportReport(const ImportReport& report)
{
    m_import = report;
    schedule();
}

void ProblemWatcher::schedule()
{
    if (m_pending)
        return;
    m_pending = true;
    QMetaObject::invokeMethod(this, &ProblemWatcher::afterValidation, Qt::QueuedConnection);
}

void ProblemWatcher::afterValidation()
{
    // A ValidationWatcher that heard the same change has queued its check by now; this goes
    // behind it.
    QMetaObject::invokeMethod(this, &ProblemWatcher::Update, Qt::QueuedConnection);
}

void ProblemWatcher::Update()
{
    m_pending = false;
    // While a file is read the boxes have no cells yet; the pages say when they have.
    if (m_document->IsImporting())
        return;
    QList<Problem> problems = ListProblems(*m_document, m_import);
    if (problems == m_problems)
        return;
    m_problems = std::move(problems);
    emit problemsChanged();
}
