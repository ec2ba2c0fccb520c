// The main window's problem list: the watcher that follows the document, the dock "Prüfung"
// and the number of problems in the status bar.

#include "frmmain.h"

#include "app/editorsession.h"
#include "check/problemwatcher.h"
#include "model/qosobject.h"
#include "problemsdock.h"

#include <QLabel>
#include <QListWidget>
#include <QStatusBar>
#include <QTabWidget>

void frmMain::buildProblems()
{
    m_problemWatcher = std::make_unique<ProblemWatcher>(m_document.get());
    connect(m_session.get(), &EditorSession::lastImportChanged, m_problemWatcher.get(),
            &ProblemWatcher::SetImportReport);
    m_problemsDock = new ProblemsDock(m_problemWatcher.get(), this);
    addDockWidget(Qt::BottomDockWidgetArea, m_problemsDock);
    connect(m_problemsDock, &ProblemsDock::problemChosen, this, &frmMain::showProblem);
    // Shown by the user, the list takes the focus, so that the keyboard goes on there.
    connect(m_problemsDock->toggleViewAction(), &QAction::triggered, this, [this](bool shown) {
        if (shown)
            m_problemsDock->list()->setFocus(Qt::ShortcutFocusReason);
    });
    statusBar()->addPermanentWidget(m_problemsDock->CountLabel());
}

void frmMain::showProblem(const Problem& problem)
{
    if (problem.object) {
        ShowObject(problem.object);
    } else if (problem.common && focusedFieldLetsGo()) {
        m_tabStrip->setCurrentIndex(0);
    }
}
