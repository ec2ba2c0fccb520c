#pragma once

#include "windowtools.h"

#include <QMainWindow>
#include <memory>

class AppProperties;
class ClassCalculator;
class ClassCalculatorPanel;
class Document;
class FindBar;
class EditorSession;
class ObjectPage;
class ProblemWatcher;
class ProblemsDock;
struct Problem;
class QAction;
class QDockWidget;
class QoSObject;
class QMenu;
class QTabWidget;
class QToolBar;
class QToolButton;
class QoSCommonPage;
class StatusBarLine;
class UserPrompt;
class frmStatus;

// The editor's window: the pages "Allgemein", "Down" and "Up" in a tab strip, the file
// toolbar Toolbar1 and the page toolbar tbrPage, the menus, the status bar with the modified
// indicator and the number of problems, the class calculator as a side panel and the
// problem list "Prüfung" as a dock. It holds the one document; what its commands decide
// lives in EditorSession and the core, the window only forwards and shows.
//
// The menus and toolbars are made from one table of tools (frmmaintools.cpp): its actions
// carry the toolbar keys as object names ("New", "Open", "Save", "NewMainClass", ...) and the
// menu items theirs ("itmFileNew", ...), so that they can be found and triggered.
class frmMain final : public QMainWindow
{
    Q_OBJECT
public:
    // prompt: who answers the questions (a dialog prompt when none); configPath: config.ini
    // (the user's configuration folder when empty).
    explicit frmMain(UserPrompt* prompt = nullptr, const QString& configPath = QString(),
                     QWidget* parent = nullptr);
    ~frmMain() override;

    Document& document() const { return *m_document; }
    EditorSession& session() const { return *m_session; }
    ClassCalculator& calculator() const { return *m_calculator; }
    // The object page of the tab shown; none on "Allgemein".
    ObjectPage* CurrentPage() const;
    QTabWidget* tabStrip() const { return m_tabStrip; }

    // Shows the window as config.ini left it: its normal rectangle, then maximised if it was.
    void showAsSaved();
    // Runs a page tool by its key, as a click on its button does; on an object page, a key that
    // names no page tool is reported as not defined.
    void RunPageTool(const QString& key);
    // Shows the page of a box, scrolls to the box and selects it, as a click on it would. Refused
    // (false) while the field that holds the focus may not be left.
    bool ShowObject(QoSObject* object);

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

signals:
    // Once, when the window has painted for the first time (start-up is measured to here).
    void firstPainted();

private:
    void buildTools();
    void buildMenus();
    void buildToolbars();
    void buildStatusBar();
    void buildPages();
    void loadSettings();
    void saveSettings();
    QWidget* createPageView(ObjectPage* page, QWidget* parent);
    void pageShown();
    void updateTools();
    void updateTitle();
    void updateRecentFiles();
    void chooseNewObject(Tool tool);
    void configurePageTools();
    void generate();
    // Whether the field that holds the focus may be left: its check on leaving (the address,
    // the port list) holds for a page switch and for commands that act on the value too.
    bool focusedFieldLetsGo() const;
    bool switchesPage(QObject* watched, QEvent* event) const;
    void showAbout();
    void buildProblems();
    void showProblem(const Problem& problem);

    std::unique_ptr<UserPrompt> m_ownPrompt;
    UserPrompt* m_prompt;
    std::unique_ptr<Document> m_document;
    std::unique_ptr<EditorSession> m_session;
    std::unique_ptr<ClassCalculator> m_calculator;
    std::unique_ptr<AppProperties> m_properties;
    std::unique_ptr<StatusBarLine> m_statusLine;
    std::unique_ptr<WindowTools> m_tools;
    frmStatus* m_frmStatus;
    QTabWidget* m_tabStrip = nullptr;
    QoSCommonPage* m_common1 = nullptr;
    QToolBar* m_toolbar1 = nullptr;
    QToolBar* m_tbrPage = nullptr;
    // The place of the NewObject drop-down button on tbrPage, which the page-tools dialog hides.
    QAction* m_newObjectOnBar = nullptr;
    QToolButton* m_pnlModified = nullptr;
    QDockWidget* m_calculatorDock = nullptr;
    ClassCalculatorPanel* m_calculatorPanel = nullptr;
    // The document's problems, followed from here on; the dock "Prüfung" shows them.
    std::unique_ptr<ProblemWatcher> m_problemWatcher;
    ProblemsDock* m_problemsDock = nullptr;
    FindBar* m_findBar = nullptr;
    QMenu* m_recentMenu = nullptr;
    // The tool the NewObject button runs: the one last chosen from its menu.
    Tool m_newObjectTool = Tool::NewMainClass;
    bool m_painted = false;
};
