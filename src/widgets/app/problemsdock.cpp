#include "problemsdock.h"

#include "check/problemwatcher.h"

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QStyle>

ProblemsDock::ProblemsDock(ProblemWatcher* watcher, QWidget* parent)
    : QDockWidget(QStringLiteral("Prüfung"), parent), m_watcher(watcher), m_list(new QListWidget(this)),
      m_count(new QLabel)
{
    setObjectName(QStringLiteral("dockProblems"));
    setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable |
                QDockWidget::DockWidgetFloatable);
    m_list->setObjectName(QStringLiteral("lstProblems"));
    m_list->setAccessibleName(QStringLiteral("Probleme"));
    m_list->setAccessibleDescription(
        QStringLiteral("Alle Probleme des Dokuments. Eingabe oder ein Klick zeigt das Objekt."));
    m_list->setFocusPolicy(Qt::StrongFocus);
    m_list->setUniformItemSizes(true);
    setWidget(m_list);

    m_count->setObjectName(QStringLiteral("lblProblems"));
    m_count->setAccessibleDescription(QStringLiteral("Zahl der Probleme des Dokuments"));
    m_count->setToolTip(QStringLiteral("Zahl der Probleme des Dokuments; die Liste zeigt die Prüfung"));

    connect(m_list, &QListWidget::clicked, this, [this](const QModelIndex& index) { choose(index.row()); });
    connect(m_list, &QListWidget::activated, this, [this](const QModelIndex& index) { choose(index.row()); });
    connect(m_watcher, &ProblemWatcher::problemsChanged, this, &ProblemsDock::refill);
    refill();
}

void ProblemsDock::refill()
{
    // The row the keyboard stood on stays where it was, so that working down the list goes on.
    const int current = m_list->currentRow();
    m_shown = m_watcher->Problems();
    m_list->clear();
    const QIcon warning = QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
    for (const Problem& problem : std::as_const(m_shown)) {
        auto* item = new QListWidgetItem(warning, problem.text, m_list);
        const QString more = problem.detail.isEmpty() ? problem.text : problem.detail;
        item->setToolTip(more);
        item->setData(Qt::AccessibleDescriptionRole, more);
    }
    if (m_shown.isEmpty()) {
        // Says that the check ran, and is nothing to choose.
        auto* item = new QListWidgetItem(QStringLiteral("Keine Probleme"), m_list);
        item->setFlags(Qt::NoItemFlags);
    } else if (current >= 0) {
        m_list->setCurrentRow(qMin(current, int(m_shown.size()) - 1));
    }
    const QString count = ProblemCountText(m_shown.size());
    m_count->setText(count);
    m_count->setAccessibleName(count);
}

void ProblemsDock::choose(int row)
{
    if (row >= 0 && row < m_shown.size())
        emit problemChosen(m_shown.at(row));
}
