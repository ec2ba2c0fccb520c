// The main window's tools: the one table of its commands, the menus and toolbars that list
// them, and running a page tool by its key.

#include "frmmain.h"

#include "findbar.h"

#include "app/editorsession.h"
#include "base/userprompt.h"
#include "model/objectpage.h"
#include "page/pageprinter.h"
#include "page/pagerenderer.h"
#include "pagetoolsdialog.h"
#include "problemsdock.h"
#include "toolicons.h"

#include <QActionGroup>
#include <QApplication>
#include <QDockWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStyle>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>

namespace {

// The buttons of tbrPage in their order, as the page-tools dialog lists them.
constexpr Tool PageBar[] = {Tool::NewObject, Tool::NewMainClass, Tool::NewSubClass,
                            Tool::NewFilter, Tool::DeleteObject, Tool::DefaultClass,
                            Tool::Calc,      Tool::OptDown,      Tool::OptUp};

QIcon themed(const char* name, QStyle::StandardPixmap fallback)
{
    return QIcon::fromTheme(QString::fromLatin1(name), QApplication::style()->standardIcon(fallback));
}

QIcon drawn(ToolIcons::Picture picture)
{
    return ToolIcons::icon(picture);
}

} // namespace

void frmMain::buildTools()
{
    using Picture = ToolIcons::Picture;
    // The file commands act on the values: the field that holds the focus is asked first.
    const auto fileCommand = [this](bool (EditorSession::*command)()) {
        return [this, command] {
            if (focusedFieldLetsGo())
                (m_session.get()->*command)();
        };
    };
    // So do the page commands, which act on the object page shown and do nothing on "Allgemein".
    const auto pageCommand = [this](auto command) {
        return [this, command] {
            if (!focusedFieldLetsGo())
                return;
            if (ObjectPage* page = CurrentPage())
                (m_session.get()->*command)(page);
        };
    };
    // Whether a tool can act is the session's to say, for the page shown.
    const auto onPage = [this](bool (EditorSession::*query)(const ObjectPage*) const) {
        return [this, query] { return (m_session.get()->*query)(CurrentPage()); };
    };
    // A choice from the NewObject button's menu makes the button run that tool from now on.
    const auto choose = [this](Tool tool) {
        return [this, tool] {
            if (focusedFieldLetsGo())
                chooseNewObject(tool);
        };
    };
    const auto showPage = [this](int index) {
        return [this, index] {
            if (focusedFieldLetsGo())
                m_tabStrip->setCurrentIndex(index);
        };
    };
    const QString newTip = QStringLiteral("Neue Konfiguration beginnen");
    const QString openTip = QStringLiteral("Konfiguration aus einer qos.txt öffnen");
    const QString saveTip = QStringLiteral("Konfiguration als qos.txt speichern");
    const QIcon newIcon = themed("document-new", QStyle::SP_FileIcon);
    const QIcon openIcon = themed("document-open", QStyle::SP_DialogOpenButton);
    const QIcon saveIcon = themed("document-save-as", QStyle::SP_DialogSaveButton);

    std::vector<ToolRow> rows{
        {.tool = Tool::New,
         .key = "New",
         .text = QStringLiteral("Neu"),
         .icon = newIcon,
         .tip = newTip,
         .run = fileCommand(&EditorSession::New)},
        {.tool = Tool::Open,
         .key = "Open",
         .text = QStringLiteral("Öffnen"),
         .icon = openIcon,
         .tip = openTip,
         .run = fileCommand(&EditorSession::Open)},
        // There is no save to the current file: every save asks for a name.
        {.tool = Tool::Save,
         .key = "Save",
         .text = QStringLiteral("Speichern"),
         .icon = saveIcon,
         .tip = saveTip,
         .enabled = [this] { return m_session->CanSave(); },
         .run = fileCommand(&EditorSession::SaveAs)},

        {.tool = Tool::FileNew,
         .key = "itmFileNew",
         .text = QStringLiteral("&Neu"),
         .icon = newIcon,
         .shortcuts = {QKeySequence(QKeySequence::New)},
         .tip = newTip,
         .run = fileCommand(&EditorSession::New)},
        {.tool = Tool::FileOpen,
         .key = "itmFileOpen",
         .text = QStringLiteral("Ö&ffnen..."),
         .icon = openIcon,
         .shortcuts = {QKeySequence(QKeySequence::Open)},
         .tip = openTip,
         .run = fileCommand(&EditorSession::Open)},
        // Ctrl+S as well: every save asks for a name anyway.
        {.tool = Tool::FileSaveAs,
         .key = "itmFileSaveAs",
         .text = QStringLiteral("Speichern &unter..."),
         .icon = saveIcon,
         .shortcuts = {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), QKeySequence(Qt::CTRL | Qt::Key_S)},
         .tip = saveTip,
         .run = fileCommand(&EditorSession::SaveAs)},
        // The object page shown, as a picture or on paper, drawn as it is shown.
        {.tool = Tool::FileExportPage,
         .key = "itmFileExportPage",
         .text = QStringLiteral("Seite &exportieren..."),
         .tip = QStringLiteral("Angezeigte Seite als SVG- oder PNG-Bild speichern"),
         .enabled = [this] { return CurrentPage() != nullptr; },
         .run =
             [this] {
                 if (ObjectPage* page = CurrentPage(); page && focusedFieldLetsGo())
                     ExportObjectPage(page, m_session->CurrentFile(), m_tabStrip->currentWidget()->font());
             }},
        {.tool = Tool::FilePrint,
         .key = "itmFilePrint",
         .text = QStringLiteral("&Drucken..."),
         .icon = themed("document-print", QStyle::SP_FileDialogContentsView),
         .shortcuts = {QKeySequence(QKeySequence::Print)},
         .tip = QStringLiteral("Angezeigte Seite in der Druckvorschau zeigen und drucken"),
         .enabled = [this] { return CurrentPage() != nullptr; },
         .run =
             [this] {
                 if (ObjectPage* page = CurrentPage(); page && focusedFieldLetsGo())
                     PagePrinter::Preview(page, m_session->CurrentFile(), m_tabStrip->currentWidget()->font(),
                                          this);
             }},
        {.tool = Tool::FileExit,
         .key = "itmFileExit",
         .text = QStringLiteral("&Beenden"),
         .icon = themed("application-exit", QStyle::SP_DialogCloseButton),
         .shortcuts = {QKeySequence(Qt::CTRL | Qt::Key_Q)},
         .tip = QStringLiteral("Tarnwick beenden"),
         .run = [this] { close(); }},
        {.tool = Tool::HelpAbout,
         .key = "itmHelpAbout",
         .text = QStringLiteral("Ü&ber Tarnwick..."),
         .icon = themed("help-about", QStyle::SP_MessageBoxInformation),
         .shortcuts = {QKeySequence(Qt::Key_F1)},
         .tip = QStringLiteral("Version und Versionsgeschichte"),
         .run = [this] { showAbout(); }},
        {.tool = Tool::PageSize,
         .key = "itmPageSize",
         .text = QStringLiteral("Seiten&größe..."),
         .tip = QStringLiteral("Spalten und Zeilen der angezeigten Seite einstellen"),
         .enabled = onPage(&EditorSession::CanChangePageSize),
         .run =
             [this] {
                 if (ObjectPage* page = CurrentPage(); page && focusedFieldLetsGo())
                     page->PageSizeCommand();
             }},
        // Finding a box: the bar asks the field that holds the focus itself, and a step that
        // cannot leave that field stays where it is.
        {.tool = Tool::EditFind,
         .key = "itmEditFind",
         .text = QStringLiteral("&Suchen..."),
         .icon = themed("edit-find", QStyle::SP_FileDialogContentsView),
         .shortcuts = {QKeySequence(Qt::CTRL | Qt::Key_F)},
         .tip = QStringLiteral("Klasse oder Filter nach Beschriftung, Adresse oder Port suchen"),
         .run = [this] { m_findBar->Open(); }},
        {.tool = Tool::EditFindNext,
         .key = "itmEditFindNext",
         .text = QStringLiteral("&Weitersuchen"),
         .shortcuts = {QKeySequence(Qt::Key_F3)},
         .tip = QStringLiteral("Zum nächsten Treffer der letzten Suche"),
         .run = [this] { m_findBar->FindNext(true); }},
        {.tool = Tool::EditFindPrevious,
         .key = "itmEditFindPrevious",
         .text = QStringLiteral("&Rückwärts suchen"),
         .shortcuts = {QKeySequence(Qt::SHIFT | Qt::Key_F3)},
         .tip = QStringLiteral("Zum vorherigen Treffer der letzten Suche"),
         .run = [this] { m_findBar->FindNext(false); }},

        {.tool = Tool::NewObject,
         .key = "NewObject",
         .text = QStringLiteral("Neue Hauptklasse"),
         .icon = drawn(Picture::NewMainClass),
         .tip = QStringLiteral("Neues Objekt der zuletzt gewählten Art anlegen"),
         .enabled = [this] { return m_tools->Allows(m_newObjectTool); },
         .run =
             [this] {
                 if (focusedFieldLetsGo())
                     m_tools->Run(m_newObjectTool);
             }},
        {.tool = Tool::NewMainClass,
         .key = "NewMainClass",
         .text = QStringLiteral("Neue Hauptklasse"),
         .icon = drawn(Picture::NewMainClass),
         .tip = QStringLiteral("Neue Hauptklasse auf der angezeigten Seite anlegen"),
         .enabled = onPage(&EditorSession::CanNewMainClass),
         .run = pageCommand(&EditorSession::NewMainClass)},
        {.tool = Tool::NewSubClass,
         .key = "NewSubClass",
         .text = QStringLiteral("Neue Unterklasse"),
         .icon = drawn(Picture::NewSubClass),
         .tip = QStringLiteral("Neue Unterklasse unter der ausgewählten Klasse anlegen"),
         .enabled = onPage(&EditorSession::CanNewSubClass),
         .run = pageCommand(&EditorSession::NewSubClass)},
        {.tool = Tool::NewFilter,
         .key = "NewFilter",
         .text = QStringLiteral("Neuer Filter"),
         .icon = drawn(Picture::NewFilter),
         .tip = QStringLiteral("Neuen Filter unter der ausgewählten Klasse anlegen"),
         .enabled = onPage(&EditorSession::CanNewFilter),
         .run = pageCommand(&EditorSession::NewFilter)},
        {.tool = Tool::DeleteObject,
         .key = "DeleteObject",
         .text = QStringLiteral("Löschen"),
         .icon = drawn(Picture::DeleteObject),
         .tip = QStringLiteral("Ausgewählte Klasse oder ausgewählten Filter löschen"),
         .enabled = onPage(&EditorSession::CanDeleteObject),
         .run = pageCommand(&EditorSession::DeleteObject)},
        {.tool = Tool::DefaultClass,
         .key = "DefaultClass",
         .text = QStringLiteral("Standardklasse"),
         .icon = drawn(Picture::DefaultClass),
         .tip = QStringLiteral("Ausgewählte Klasse zur Standardklasse ihrer Richtung machen"),
         .enabled = onPage(&EditorSession::CanMakeDefaultClass),
         .run = pageCommand(&EditorSession::MakeDefaultClass)},
        // The panel's own show/hide action: it follows the panel's close button too, and a
        // minimised window does not uncheck it. Showing it leaves every value as it is.
        {.tool = Tool::Calc,
         .key = "Calc",
         .text = QStringLiteral("Klassenrechner"),
         .icon = drawn(Picture::Calc),
         .tip = QStringLiteral("Klassenrechner ein- oder ausblenden"),
         .enabled = onPage(&EditorSession::CanShowCalculator),
         .run = [this] { m_calculatorDock->setVisible(m_calculatorDock->isHidden()); },
         .given = m_calculatorDock->toggleViewAction()},
        // The dock's own show/hide action, as the calculator's; showing it puts the focus in its list.
        {.tool = Tool::Problems,
         .key = "Problems",
         .text = QStringLiteral("Prüfung"),
         .icon = drawn(Picture::Problems),
         .shortcuts = {QKeySequence(Qt::Key_F8)},
         .tip = QStringLiteral("Liste der Probleme des Dokuments ein- oder ausblenden"),
         .run = [this] { m_problemsDock->setVisible(m_problemsDock->isHidden()); },
         .given = m_problemsDock->toggleViewAction()},
        {.tool = Tool::OptDown,
         .key = "optDown",
         .text = QStringLiteral("Down"),
         .icon = drawn(Picture::Down),
         .tip = QStringLiteral("Seite Down zeigen"),
         .run = showPage(1)},
        {.tool = Tool::OptUp,
         .key = "optUp",
         .text = QStringLiteral("Up"),
         .icon = drawn(Picture::Up),
         .tip = QStringLiteral("Seite Up zeigen"),
         .run = showPage(2)},

        {.tool = Tool::MainClassSelect,
         .key = "MainClassSelect",
         .text = QStringLiteral("Neue Hauptklasse"),
         .icon = drawn(Picture::NewMainClass),
         .enabled = onPage(&EditorSession::CanChooseNewObject),
         .run = choose(Tool::NewMainClass)},
        {.tool = Tool::SubClassSelect,
         .key = "SubClassSelect",
         .text = QStringLiteral("Neue Unterklasse"),
         .icon = drawn(Picture::NewSubClass),
         .enabled = onPage(&EditorSession::CanChooseNewObject),
         .run = choose(Tool::NewSubClass)},
        {.tool = Tool::FilterSelect,
         .key = "FilterSelect",
         .text = QStringLiteral("Neuer Filter"),
         .icon = drawn(Picture::NewFilter),
         .enabled = onPage(&EditorSession::CanChooseNewObject),
         .run = choose(Tool::NewFilter)},
        // Choosing the toolbar's buttons leaves every value as it is.
        {.tool = Tool::Config,
         .key = "Config",
         .text = QStringLiteral("Werkzeugleiste anpassen..."),
         .run = [this] { configurePageTools(); }},
    };
    m_tools = std::make_unique<WindowTools>(this, std::move(rows));

    m_tools->action(Tool::FileExit)->setMenuRole(QAction::QuitRole);
    // Neither is pressed while "Allgemein" is shown.
    auto* directions = new QActionGroup(this);
    directions->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    for (Tool direction : {Tool::OptDown, Tool::OptUp}) {
        m_tools->action(direction)->setCheckable(true);
        directions->addAction(m_tools->action(direction));
    }
}

void frmMain::buildMenus()
{
    const auto add = [this](QMenu* menu, std::initializer_list<Tool> tools) {
        for (Tool t : tools)
            menu->addAction(m_tools->action(t));
    };
    QMenu* file = menuBar()->addMenu(QStringLiteral("&Datei"));
    add(file, {Tool::FileNew, Tool::FileOpen});
    m_recentMenu = file->addMenu(QStringLiteral("&Zuletzt geöffnet"));
    m_recentMenu->setObjectName(QStringLiteral("mnuRecentFiles"));
    add(file, {Tool::FileSaveAs});
    file->addSeparator();
    add(file, {Tool::FileExportPage, Tool::FilePrint});
    file->addSeparator();
    add(file, {Tool::FileExit});
    updateRecentFiles();

    QMenu* edit = menuBar()->addMenu(QStringLiteral("&Bearbeiten"));
    add(edit, {Tool::EditFind, Tool::EditFindNext, Tool::EditFindPrevious});

    QMenu* page = menuBar()->addMenu(QStringLiteral("&Seite"));
    add(page,
        {Tool::NewMainClass, Tool::NewSubClass, Tool::NewFilter, Tool::DeleteObject, Tool::DefaultClass});
    page->addSeparator();
    add(page, {Tool::Calc, Tool::Problems, Tool::PageSize});
    page->addSeparator();
    add(page, {Tool::OptDown, Tool::OptUp});

    QMenu* help = menuBar()->addMenu(QStringLiteral("&Hilfe"));
    add(help, {Tool::HelpAbout});
}

void frmMain::buildToolbars()
{
    m_toolbar1 = addToolBar(QStringLiteral("Datei"));
    m_toolbar1->setObjectName(QStringLiteral("Toolbar1"));
    m_toolbar1->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    for (Tool t : {Tool::New, Tool::Open, Tool::Save})
        m_toolbar1->addAction(m_tools->action(t));
    m_toolbar1->addSeparator();
    auto* generate = new QPushButton(themed("edit-copy", QStyle::SP_FileDialogDetailedView),
                                     QStringLiteral("&Generieren"), m_toolbar1);
    generate->setObjectName(QStringLiteral("Command2"));
    generate->setToolTip(QStringLiteral("qos.txt erzeugen und in die Zwischenablage einfügen"));
    // A click leaves the focus in the field, which is asked before the text is made.
    generate->setFocusPolicy(Qt::TabFocus);
    connect(generate, &QPushButton::clicked, this, &frmMain::generate);
    m_toolbar1->addWidget(generate);

    m_tbrPage = addToolBar(QStringLiteral("Seite"));
    m_tbrPage->setObjectName(QStringLiteral("tbrPage"));
    m_tbrPage->setToolButtonStyle(Qt::ToolButtonIconOnly);
    auto* newObject = new QToolButton(m_tbrPage);
    newObject->setObjectName(QStringLiteral("cmdNewObject"));
    newObject->setDefaultAction(m_tools->action(Tool::NewObject));
    newObject->setPopupMode(QToolButton::MenuButtonPopup);
    auto* menu = new QMenu(newObject);
    for (Tool t : {Tool::MainClassSelect, Tool::SubClassSelect, Tool::FilterSelect})
        menu->addAction(m_tools->action(t));
    menu->addSeparator();
    menu->addAction(m_tools->action(Tool::Config));
    newObject->setMenu(menu);
    m_newObjectOnBar = m_tbrPage->addWidget(newObject);
    m_newObjectOnBar->setObjectName(QStringLiteral("NewObjectButton"));
    m_tbrPage->addSeparator();
    for (Tool t :
         {Tool::NewMainClass, Tool::NewSubClass, Tool::NewFilter, Tool::DeleteObject, Tool::DefaultClass})
        m_tbrPage->addAction(m_tools->action(t));
    m_tbrPage->addSeparator();
    m_tbrPage->addAction(m_tools->action(Tool::Calc));
    m_tbrPage->addAction(m_tools->action(Tool::Problems));
    m_tbrPage->addSeparator();
    for (Tool t : {Tool::OptDown, Tool::OptUp}) {
        m_tbrPage->addAction(m_tools->action(t));
        // The two direction buttons read best with their words.
        if (auto* b = qobject_cast<QToolButton*>(m_tbrPage->widgetForAction(m_tools->action(t))))
            b->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    }

    m_findBar = new FindBar(this);
    addToolBar(Qt::BottomToolBarArea, m_findBar);
}

void frmMain::updateTools()
{
    m_tools->UpdateEnabled();
}

void frmMain::RunPageTool(const QString& key)
{
    const std::optional<Tool> tool = m_tools->Find(key);
    if (tool && IsPageTool(*tool))
        return m_tools->Run(*tool);
    // A key without a page command is asked about like a page command, and said so on a page.
    if (!focusedFieldLetsGo() || !CurrentPage())
        return;
    m_prompt->Message(
        QStringLiteral("Aktion für Button ") + key + QStringLiteral(" (") +
            QString::number(m_tbrPage->actions().indexOf(tool ? m_tools->action(*tool) : nullptr)) +
            QStringLiteral(") in tbrPage nicht definiert."),
        UserPrompt::Icon::Critical);
}

void frmMain::chooseNewObject(Tool tool)
{
    // The button takes the image and the command of the choice, and runs it.
    QAction* newObject = m_tools->action(Tool::NewObject);
    newObject->setIcon(m_tools->action(tool)->icon());
    newObject->setText(m_tools->action(tool)->text());
    m_newObjectTool = tool;
    updateTools();
    m_tools->Run(tool);
}

void frmMain::configurePageTools()
{
    QList<PageToolsDialog::Entry> entries;
    for (Tool t : PageBar) {
        QAction* a = m_tools->action(t);
        if (t == Tool::NewObject)
            // The drop-down button carries the text of its last choice: named by what it is, so
            // that no entry of the list reads like another.
            entries.append({QStringLiteral("Neues Objekt (mit Auswahlmenü)"), a->icon(), m_newObjectOnBar});
        else
            entries.append({a->text(), a->icon(), a});
    }
    PageToolsDialog dialog(entries, this);
    if (dialog.exec() == QDialog::Accepted)
        dialog.Apply();
}
