#pragma once

#include <QIcon>
#include <QKeySequence>
#include <QList>
#include <QString>

#include <functional>
#include <map>
#include <optional>
#include <vector>

class QAction;
class QObject;

// The commands that the main window's menus and toolbars offer. A tool is named in code by
// this enum, so that a misspelt key cannot compile; its key text lives once, in the window's
// table, and is the object name of its action, by which tests and accessibility tools find it.
enum class Tool {
    // Toolbar1
    New,
    Open,
    Save,
    // the menu items
    FileNew,
    FileOpen,
    FileSaveAs,
    FileExportPage,
    FilePrint,
    FileExit,
    HelpAbout,
    PageSize,
    Problems,
    EditFind,
    EditFindNext,
    EditFindPrevious,
    // Everything from here on is a page tool, which RunPageTool runs by its key: the buttons of
    // tbrPage, then the menu of the NewObject button.
    NewObject,
    NewMainClass,
    NewSubClass,
    NewFilter,
    DeleteObject,
    DefaultClass,
    Calc,
    OptDown,
    OptUp,
    MainClassSelect,
    SubClassSelect,
    FilterSelect,
    Config,
};

constexpr bool IsPageTool(Tool tool)
{
    return tool >= Tool::NewObject;
}

// One row of the table: what the tool's action shows, when it is enabled, what it does.
struct ToolRow
{
    Tool tool{};
    const char* key = nullptr;
    QString text{};
    QIcon icon{};
    QList<QKeySequence> shortcuts{};
    QString tip{};                   // the tool tip and the status tip
    std::function<bool()> enabled{}; // none: always enabled
    std::function<void()> run{};
    // An action the window has already (the calculator panel's own show/hide action): it takes
    // the row's key, text, icon and tip, and a click keeps doing what it did.
    QAction* given = nullptr;
};

// The actions of a window, made from its table of tools.
class WindowTools final
{
public:
    // The actions are made as children of owner.
    WindowTools(QObject* owner, std::vector<ToolRow> rows);

    QAction* action(Tool tool) const;
    // The tool of a key text; none for a key the table does not have.
    std::optional<Tool> Find(const QString& key) const;
    // What a click on the tool's button does.
    void Run(Tool tool) const;
    // Whether the tool can act now, by its row's query.
    bool Allows(Tool tool) const;
    // Every action enabled or disabled as its query says.
    void UpdateEnabled() const;

private:
    const ToolRow& row(Tool tool) const;

    std::map<Tool, ToolRow> m_rows;
    std::map<Tool, QAction*> m_actions;
};
