#pragma once

#include "check/problemlist.h"
#include "file/importreport.h"

#include <QList>
#include <QObject>

class Document;
class QoSObject;

// Keeps the document's problem list true while the user works, without polling: every change
// that can alter it (a box added or removed, any property of a box, a link, a bandwidth flag,
// a line speed, the file opened or cleared) marks the list, and the list is made again once the
// event loop comes round, however many changes came before.
//
// The bandwidth flags are set by the pages' ValidationWatchers, which also wait for the event
// loop. The list waits one turn longer, so that the flags a change alters are already set
// when it is made; a flag that still changes later marks the list again.
class ProblemWatcher : public QObject
{
    Q_OBJECT
public:
    explicit ProblemWatcher(Document* document, QObject* parent = nullptr);

    const QList<Problem>& Problems() const { return m_problems; }
    // What the import of the file shown had to tell; an empty report after "Neu".
    void SetImportReport(const ImportReport& report);
    // Makes the list now; problemsChanged follows when it differs from the one before.
    void Update();
    bool Pending() const { return m_pending; }

signals:
    void problemsChanged();

private:
    void watch(QoSObject* object);
    void schedule();
    void afterValidation();

    Document* m_document;
    ImportReport m_import;
    QList<Problem> m_problems;
    bool m_pending = false;
};
