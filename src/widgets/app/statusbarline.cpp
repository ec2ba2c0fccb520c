#include "statusbarline.h"

#include <QStatusBar>

StatusBarLine::StatusBarLine(QStatusBar* bar) : m_panel(new QLabel(bar))
{
    m_panel->setObjectName(QStringLiteral("pnlStatus"));
    m_panel->setAccessibleName(QStringLiteral("Statuszeile"));
    bar->addWidget(m_panel, 1);
}

void StatusBarLine::SetStatusText(const QString& text)
{
    if (m_panel)
        m_panel->setText(text);
}
