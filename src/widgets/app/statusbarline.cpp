#include "statusbarline.h"

#include <QStatusBar>

StatusBarLine::StatusBarLine(QStatusBar* bar) : m_panel(new QLabel(bar))
{
    m_panel->setObjectName(QStringLiteral("pnlStatus"));
    m_panel->setAccessibleName(QStringLiteral("Statuszeile"));
    m_panel->setAccessibleDescription(QStringLiteral("Statuszeile"));
    bar->addWidget(m_panel, 1);
}

void StatusBarLine::SetStatusText(const QString& text)
{
    if (!m_panel)
        return;
    // A screen reader reads what the line says; the description says what it is.
    m_panel->setText(text);
    m_panel->setAccessibleName(text.isEmpty() ? QStringLiteral("Statuszeile") : text);
}

void StatusBarLine::ClearStatusText(const QString& ifShowing)
{
    if (m_panel && m_panel->text() == ifShowing)
        SetStatusText(QString());
}
