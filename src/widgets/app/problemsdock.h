#pragma once

#include <QDockWidget>
#include <QList>

#include "check/problemlist.h"

class ProblemWatcher;
class QLabel;
class QListWidget;

// The dock "Prüfung": every problem of the document, one row each, as the watcher lists them,
// and their number for the status bar. A click or Enter on a row asks for its box to be shown.
class ProblemsDock final : public QDockWidget
{
    Q_OBJECT
public:
    ProblemsDock(ProblemWatcher* watcher, QWidget* parent = nullptr);

    QListWidget* list() const { return m_list; }
    // "Keine Probleme", "1 Problem", ...: a label for the status bar, which takes it over.
    QLabel* CountLabel() const { return m_count; }

signals:
    // The row's problem was chosen: its box, or the page "Allgemein" for a common value.
    void problemChosen(const Problem& problem);

private:
    void refill();
    void choose(int row);

    ProblemWatcher* m_watcher;
    QListWidget* m_list;
    QLabel* m_count;
    QList<Problem> m_shown;
};
