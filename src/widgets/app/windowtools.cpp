#include "windowtools.h"

#include <QAction>

WindowTools::WindowTools(QObject* owner, std::vector<ToolRow> rows)
{
    for (ToolRow& r : rows) {
        QAction* a = r.given ? r.given : new QAction(owner);
        a->setObjectName(QString::fromLatin1(r.key));
        a->setText(r.text);
        a->setIcon(r.icon);
        if (!r.shortcuts.isEmpty())
            a->setShortcuts(r.shortcuts);
        a->setToolTip(r.tip);
        a->setStatusTip(r.tip);
        if (!r.given)
            QObject::connect(a, &QAction::triggered, owner, r.run);
        m_actions.emplace(r.tool, a);
        m_rows.emplace(r.tool, std::move(r));
    }
}

const ToolRow& WindowTools::row(Tool tool) const
{
    const auto it = m_rows.find(tool);
    Q_ASSERT_X(it != m_rows.end(), "WindowTools", "a tool without a row in the table");
    return it->second;
}

QAction* WindowTools::action(Tool tool) const
{
    const auto it = m_actions.find(tool);
    Q_ASSERT_X(it != m_actions.end(), "WindowTools", "a tool without a row in the table");
    return it->second;
}

std::optional<Tool> WindowTools::Find(const QString& key) const
{
    for (const auto& [tool, r] : m_rows)
        if (key == QLatin1String(r.key))
            return tool;
    return std::nullopt;
}

void WindowTools::Run(Tool tool) const
{
    row(tool).run();
}

bool WindowTools::Allows(Tool tool) const
{
    const ToolRow& r = row(tool);
    return !r.enabled || r.enabled();
}

void WindowTools::UpdateEnabled() const
{
    for (const auto& [tool, a] : m_actions)
        a->setEnabled(Allows(tool));
}
