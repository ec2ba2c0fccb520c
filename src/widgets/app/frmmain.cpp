#include "frmmain.h"

#include "page/objectpageview.h"

#include "aboutbox.h"
#include "app/appproperties.h"
#include "app/editorsession.h"
#include "classcalculatorpanel.h"
#include "dialogprompt.h"
#include "document/qoscommonpage.h"
#include "frmstatus.h"
#include "inputs/leavecheck.h"
#include "model/classcalculator.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "statusbarline.h"
#include "toolicons.h"

#include <QActionGroup>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QCloseEvent>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QDockWidget>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStatusBar>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

// The keys of tbrPage in the order of its buttons.
const char* const PageToolKeys[] = {"NewObject", "NewMainClass", "NewSubClass",
                                    "NewFilter", "DeleteObject", "DefaultClass",
                                    "Calc",      "optDown",      "optUp"};

QIcon themed(const char* name, QStyle::StandardPixmap fallback)
{
    return QIcon::fromTheme(QString::fromLatin1(name), QApplication::style()->standardIcon(fallback));
}

} // namespace

frmMain::frmMain(UserPrompt* prompt, const QString& configPath, QWidget* parent)
    : QMainWindow(parent), m_ownPrompt(prompt ? nullptr : std::make_unique<DialogPrompt>(this)),
      m_prompt(prompt ? prompt : m_ownPrompt.get()), m_document(std::make_unique<Document>(m_prompt)),
      m_session(std::make_unique<EditorSession>(*m_document)),
      m_calculator(std::make_unique<ClassCalculator>()),
      m_properties(std::make_unique<AppProperties>(
          *m_document, configPath.isEmpty() ? AppProperties::DefaultPath() : configPath)),
      m_frmStatus(new frmStatus(this))
{
    setObjectName(QStringLiteral("frmMain"));
    setWindowIcon(ToolIcons::icon(QStringLiteral("Tarnwick")));
    m_document->setStatusWindow(m_frmStatus);

    buildActions();
    buildStatusBar(); // the page views tell the status line
    buildPages();
    buildMenus();
    buildToolbars();

    connect(m_document.get(), &Document::modifiedChanged, this, [this](bool modified) {
        setWindowModified(modified);
        m_pnlModified->setVisible(modified);
        m_actions.value(QStringLiteral("Save"))->setEnabled(modified);
    });
    connect(m_session.get(), &EditorSession::currentFileChanged, this, &frmMain::updateTitle);
    connect(m_session.get(), &EditorSession::recentFilesChanged, this, &frmMain::updateRecentFiles);
    connect(m_tabStrip, &QTabWidget::currentChanged, this, &frmMain::pageShown);
    for (ObjectPage* page : {m_document->Down1(), m_document->Up1()})
        connect(page, &ObjectPage::selectionChanged, this, &frmMain::updatePageTools);

    loadSettings();
    pageShown();
    updateTitle();
    // The start leaves the document empty and unmodified, whatever config.ini set.
    m_document->SetModified(false);
    setWindowModified(false);
    m_pnlModified->setVisible(false);
    m_actions.value(QStringLiteral("Save"))->setEnabled(false);
}

frmMain::~frmMain()
{
    // The views go before the document they show.
    m_calculator->SetPage(nullptr);
    disconnect(m_document.get(), nullptr, this, nullptr);
    for (ObjectPage* page : {m_document->Down1(), m_document->Up1()})
        disconnect(page, nullptr, this, nullptr);
    delete m_calculatorDock;
    delete takeCentralWidget();
    m_document->setStatusWindow(nullptr);
    m_document->setStatusLine(nullptr);
}

QAction* frmMain::action(const QString& key, const QString& text, const QIcon& icon, const QString& tip)
{
    auto* a = new QAction(icon, text, this);
    a->setObjectName(key);
    a->setToolTip(tip);
    a->setStatusTip(tip);
    m_actions.insert(key, a);
    return a;
}

void frmMain::buildActions()
{
    // The file commands act on the values: the field that holds the focus is asked first.
    const auto fileCommand = [this](auto command) {
        return [this, command] {
            if (focusedFieldLetsGo())
                (m_session.get()->*command)();
        };
    };

    // Toolbar1
    connect(action(QStringLiteral("New"), QStringLiteral("Neu"), themed("document-new", QStyle::SP_FileIcon),
                   QStringLiteral("Neue Konfiguration beginnen")),
            &QAction::triggered, this, fileCommand(&EditorSession::New));
    connect(action(QStringLiteral("Open"), QStringLiteral("Öffnen"),
                   themed("document-open", QStyle::SP_DialogOpenButton),
                   QStringLiteral("Konfiguration aus einer qos.txt öffnen")),
            &QAction::triggered, this, fileCommand(&EditorSession::Open));
    // There is no save to the current file: every save asks for a name.
    connect(action(QStringLiteral("Save"), QStringLiteral("Speichern"),
                   themed("document-save-as", QStyle::SP_DialogSaveButton),
                   QStringLiteral("Konfiguration als qos.txt speichern")),
            &QAction::triggered, this, fileCommand(&EditorSession::SaveAs));

    // Menu items
    QAction* a =
        action(QStringLiteral("itmFileNew"), QStringLiteral("&Neu"),
               m_actions.value(QStringLiteral("New"))->icon(), QStringLiteral("Neue Konfiguration beginnen"));
    a->setShortcut(QKeySequence::New);
    connect(a, &QAction::triggered, this, fileCommand(&EditorSession::New));
    a = action(QStringLiteral("itmFileOpen"), QStringLiteral("Ö&ffnen..."),
               m_actions.value(QStringLiteral("Open"))->icon(),
               QStringLiteral("Konfiguration aus einer qos.txt öffnen"));
    a->setShortcut(QKeySequence::Open);
    connect(a, &QAction::triggered, this, fileCommand(&EditorSession::Open));
    a = action(QStringLiteral("itmFileSaveAs"), QStringLiteral("Speichern &unter..."),
               m_actions.value(QStringLiteral("Save"))->icon(),
               QStringLiteral("Konfiguration als qos.txt speichern"));
    // Ctrl+S as well: every save asks for a name anyway.
    a->setShortcuts({QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), QKeySequence(Qt::CTRL | Qt::Key_S)});
    connect(a, &QAction::triggered, this, fileCommand(&EditorSession::SaveAs));
    a = action(QStringLiteral("itmFileExit"), QStringLiteral("&Beenden"),
               themed("application-exit", QStyle::SP_DialogCloseButton), QStringLiteral("Tarnwick beenden"));
    a->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    a->setMenuRole(QAction::QuitRole);
    connect(a, &QAction::triggered, this, &QWidget::close);
    a = action(QStringLiteral("itmHelpAbout"), QStringLiteral("Ü&ber Tarnwick..."),
               themed("help-about", QStyle::SP_MessageBoxInformation),
               QStringLiteral("Version und Versionsgeschichte"));
    a->setShortcut(QKeySequence(Qt::Key_F1));
    connect(a, &QAction::triggered, this, &frmMain::showAbout);
    a = action(QStringLiteral("itmPageSize"), QStringLiteral("Seiten&größe..."), QIcon(),
               QStringLiteral("Spalten und Zeilen der angezeigten Seite einstellen"));
    connect(a, &QAction::triggered, this, [this] {
        if (ObjectPage* page = CurrentPage(); page && focusedFieldLetsGo())
            page->PageSizeCommand();
    });

    // tbrPage
    const struct
    {
        const char* key;
        const char* text;
        const char* tip;
    } tools[] = {
        {"NewMainClass", "Neue Hauptklasse", "Neue Hauptklasse auf der angezeigten Seite anlegen"},
        {"NewSubClass", "Neue Unterklasse", "Neue Unterklasse unter der ausgewählten Klasse anlegen"},
        {"NewFilter", "Neuer Filter", "Neuen Filter unter der ausgewählten Klasse anlegen"},
        {"DeleteObject", "Löschen", "Ausgewählte Klasse oder ausgewählten Filter löschen"},
        {"DefaultClass", "Standardklasse", "Ausgewählte Klasse zur Standardklasse ihrer Richtung machen"},
        {"optDown", "Down", "Seite Down zeigen"},
        {"optUp", "Up", "Seite Up zeigen"},
    };
    for (const auto& t : tools) {
        const QString key = QString::fromLatin1(t.key);
        connect(action(key, QString::fromUtf8(t.text), ToolIcons::icon(key), QString::fromUtf8(t.tip)),
                &QAction::triggered, this, [this, key] { RunPageTool(key); });
    }
    // Neither is pressed while "Allgemein" is shown.
    auto* directions = new QActionGroup(this);
    directions->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    for (const char* key : {"optDown", "optUp"}) {
        QAction* d = m_actions.value(QString::fromLatin1(key));
        d->setCheckable(true);
        directions->addAction(d);
    }
    connect(action(QStringLiteral("NewObject"), QStringLiteral("Neue Hauptklasse"),
                   ToolIcons::icon(QStringLiteral("NewMainClass")),
                   QStringLiteral("Neues Objekt der zuletzt gewählten Art anlegen")),
            &QAction::triggered, this, [this] { RunPageTool(QStringLiteral("NewObject")); });
    const struct
    {
        const char* key;
        const char* text;
    } choices[] = {{"MainClassSelect", "Neue Hauptklasse"},
                   {"SubClassSelect", "Neue Unterklasse"},
                   {"FilterSelect", "Neuer Filter"},
                   {"Config", "Werkzeugleiste anpassen..."}};
    for (const auto& c : choices) {
        const QString key = QString::fromLatin1(c.key);
        QAction* choice = action(key, QString::fromUtf8(c.text), QIcon(), QString());
        connect(choice, &QAction::triggered, this, [this, key] { RunPageTool(key); });
    }
    m_actions.value(QStringLiteral("MainClassSelect"))
        ->setIcon(ToolIcons::icon(QStringLiteral("NewMainClass")));
    m_actions.value(QStringLiteral("SubClassSelect"))
        ->setIcon(ToolIcons::icon(QStringLiteral("NewSubClass")));
    m_actions.value(QStringLiteral("FilterSelect"))->setIcon(ToolIcons::icon(QStringLiteral("NewFilter")));
}

void frmMain::buildPages()
{
    m_tabStrip = new QTabWidget(this);
    m_tabStrip->setObjectName(QStringLiteral("TabStrip1"));
    m_tabStrip->setDocumentMode(true);

    m_common1 = new QoSCommonPage(m_document->Common1());
    m_common1->setPrompt(m_prompt);
    m_common1->setStatusLine(m_document.get());
    auto* scroll = new QScrollArea;
    scroll->setObjectName(QStringLiteral("scrCommon1"));
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidget(m_common1);
    m_tabStrip->addTab(scroll, QStringLiteral("Allgemein"));
    m_tabStrip->addTab(createPageView(m_document->Down1(), m_tabStrip), QStringLiteral("Down"));
    m_tabStrip->addTab(createPageView(m_document->Up1(), m_tabStrip), QStringLiteral("Up"));
    setCentralWidget(m_tabStrip);
    // A page switch leaves the field that holds the focus: it is asked before the switch.
    m_tabStrip->tabBar()->installEventFilter(this);
    m_tabStrip->installEventFilter(this);

    m_calculatorPanel = new ClassCalculatorPanel(m_calculator.get());
    m_calculatorPanel->setPrompt(m_prompt);
    m_calculatorPanel->setStatusLine(m_document.get());
    m_calculatorDock = new QDockWidget(QStringLiteral("Klassenrechner"), this);
    m_calculatorDock->setObjectName(QStringLiteral("dockClassCalculator"));
    m_calculatorDock->setWidget(m_calculatorPanel);
    m_calculatorDock->setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable |
                                  QDockWidget::DockWidgetFloatable);
    addDockWidget(Qt::RightDockWidgetArea, m_calculatorDock);

    // "Calc" is the panel's own show/hide action: it follows the panel's close button too,
    // and a minimised window does not uncheck it.
    QAction* calc = m_calculatorDock->toggleViewAction();
    calc->setObjectName(QStringLiteral("Calc"));
    calc->setText(QStringLiteral("Klassenrechner"));
    calc->setIcon(ToolIcons::icon(QStringLiteral("Calc")));
    calc->setToolTip(QStringLiteral("Klassenrechner ein- oder ausblenden"));
    calc->setStatusTip(calc->toolTip());
    m_actions.insert(QStringLiteral("Calc"), calc);
}

// The one place where the pages' views are made.
QWidget* frmMain::createPageView(ObjectPage* page, QWidget* parent)
{
    auto* view = new ObjectPageView(page, parent);
    view->setObjectName(page->Name());
    view->setPrompt(m_prompt);
    view->setStatusLine(m_document.get()); // the document passes it on, and knows what it says
    return view;
}

void frmMain::buildMenus()
{
    QMenu* file = menuBar()->addMenu(QStringLiteral("&Datei"));
    file->addAction(m_actions.value(QStringLiteral("itmFileNew")));
    file->addAction(m_actions.value(QStringLiteral("itmFileOpen")));
    m_recentMenu = file->addMenu(QStringLiteral("&Zuletzt geöffnet"));
    m_recentMenu->setObjectName(QStringLiteral("mnuRecentFiles"));
    file->addAction(m_actions.value(QStringLiteral("itmFileSaveAs")));
    file->addSeparator();
    file->addAction(m_actions.value(QStringLiteral("itmFileExit")));
    updateRecentFiles();

    QMenu* page = menuBar()->addMenu(QStringLiteral("&Seite"));
    for (const char* key : {"NewMainClass", "NewSubClass", "NewFilter", "DeleteObject", "DefaultClass"})
        page->addAction(m_actions.value(QString::fromLatin1(key)));
    page->addSeparator();
    page->addAction(m_actions.value(QStringLiteral("Calc")));
    page->addAction(m_actions.value(QStringLiteral("itmPageSize")));
    page->addSeparator();
    page->addAction(m_actions.value(QStringLiteral("optDown")));
    page->addAction(m_actions.value(QStringLiteral("optUp")));

    QMenu* help = menuBar()->addMenu(QStringLiteral("&Hilfe"));
    help->addAction(m_actions.value(QStringLiteral("itmHelpAbout")));
}

void frmMain::buildToolbars()
{
    m_toolbar1 = addToolBar(QStringLiteral("Datei"));
    m_toolbar1->setObjectName(QStringLiteral("Toolbar1"));
    m_toolbar1->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    for (const char* key : {"New", "Open", "Save"})
        m_toolbar1->addAction(m_actions.value(QString::fromLatin1(key)));
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
    m_newObjectButton = new QToolButton(m_tbrPage);
    m_newObjectButton->setObjectName(QStringLiteral("cmdNewObject"));
    m_newObjectButton->setDefaultAction(m_actions.value(QStringLiteral("NewObject")));
    m_newObjectButton->setPopupMode(QToolButton::MenuButtonPopup);
    auto* menu = new QMenu(m_newObjectButton);
    for (const char* key : {"MainClassSelect", "SubClassSelect", "FilterSelect"})
        menu->addAction(m_actions.value(QString::fromLatin1(key)));
    menu->addSeparator();
    menu->addAction(m_actions.value(QStringLiteral("Config")));
    m_newObjectButton->setMenu(menu);
    m_tbrPage->addWidget(m_newObjectButton)->setObjectName(QStringLiteral("NewObjectButton"));
    m_tbrPage->addSeparator();
    for (const char* key : {"NewMainClass", "NewSubClass", "NewFilter", "DeleteObject", "DefaultClass"})
        m_tbrPage->addAction(m_actions.value(QString::fromLatin1(key)));
    m_tbrPage->addSeparator();
    m_tbrPage->addAction(m_actions.value(QStringLiteral("Calc")));
    m_tbrPage->addSeparator();
    for (const char* key : {"optDown", "optUp"}) {
        m_tbrPage->addAction(m_actions.value(QString::fromLatin1(key)));
        // The two direction buttons read best with their words.
        if (auto* b = qobject_cast<QToolButton*>(
                m_tbrPage->widgetForAction(m_actions.value(QString::fromLatin1(key)))))
            b->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    }
}

void frmMain::buildStatusBar()
{
    m_statusLine = std::make_unique<StatusBarLine>(statusBar());
    m_document->setStatusLine(m_statusLine.get());
    m_pnlModified = new QToolButton(statusBar());
    m_pnlModified->setObjectName(QStringLiteral("pnlModified"));
    m_pnlModified->setText(QStringLiteral("Geändert"));
    m_pnlModified->setToolTip(QStringLiteral("Datei wurde geändert"));
    m_pnlModified->setAccessibleName(QStringLiteral("Geändert"));
    m_pnlModified->setAccessibleDescription(
        QStringLiteral("Datei wurde geändert. Klicken entfernt die Markierung, ohne zu speichern."));
    m_pnlModified->setAutoRaise(true);
    // A click dismisses the indicator; the document is not saved by it.
    connect(m_pnlModified, &QToolButton::clicked, this, [this] { m_document->SetModified(false); });
    statusBar()->addPermanentWidget(m_pnlModified);
}

void frmMain::loadSettings()
{
    QList<QRect> screens;
    if (QScreen* primary = QGuiApplication::primaryScreen())
        screens << primary->availableGeometry();
    for (QScreen* s : QGuiApplication::screens())
        if (s != QGuiApplication::primaryScreen())
            screens << s->availableGeometry();
    const WindowSettings w = m_properties->Load(screens);
    setGeometry(w.normalGeometry);
    if (w.windowState == WindowSettings::Maximized)
        setWindowState(Qt::WindowMaximized);
    m_calculatorDock->setVisible(w.calculator);
    m_actions.value(QStringLiteral("Calc"))->setChecked(w.calculator); // a hidden window sends no show event
    m_session->SetRecentFiles(m_properties->RecentFiles());
}

void frmMain::showAsSaved()
{
    if (windowState() & Qt::WindowMaximized)
        showMaximized();
    else
        show();
}

void frmMain::saveSettings()
{
    WindowSettings w;
    const bool normal = !(windowState() & (Qt::WindowMaximized | Qt::WindowMinimized | Qt::WindowFullScreen));
    w.normalGeometry = normal || !normalGeometry().isValid() ? geometry() : normalGeometry();
    w.windowState = isMinimized()   ? WindowSettings::Minimized
                    : isMaximized() ? WindowSettings::Maximized
                                    : WindowSettings::Normal;
    w.calculator = !m_calculatorDock->isHidden();
    QString error;
    // Closing goes on (the settings are a convenience), but the user hears why the next start
    // will not look as this one ends.
    if (!m_properties->Save(w, m_session->RecentFiles(), &error))
        m_prompt->Message(error, UserPrompt::Icon::Warning);
}

void frmMain::closeEvent(QCloseEvent* event)
{
    if (!focusedFieldLetsGo() || !m_session->QueryClose()) {
        event->ignore();
        return;
    }
    saveSettings();
    event->accept();
}

bool frmMain::focusedFieldLetsGo() const
{
    return LeaveCheck::FocusedFieldLetsGo(this);
}

bool frmMain::switchesPage(QObject* watched, QEvent* event) const
{
    // Only input turns a page; the tab strip is not asked about the events of its own end.
    const QEvent::Type type = event->type();
    if (type != QEvent::MouseButtonPress && type != QEvent::Wheel && type != QEvent::KeyPress)
        return false;
    QTabBar* bar = m_tabStrip->tabBar();
    if (watched == bar) {
        if (event->type() == QEvent::Wheel)
            return true;
        if (event->type() != QEvent::MouseButtonPress)
            return false;
        auto* mouse = static_cast<QMouseEvent*>(event);
        const int tab = bar->tabAt(mouse->position().toPoint());
        return mouse->button() == Qt::LeftButton && tab >= 0 && tab != bar->currentIndex();
    }
    if (watched == m_tabStrip && event->type() == QEvent::KeyPress) {
        // The keys with which the tab strip turns its pages from anywhere inside it.
        auto* key = static_cast<QKeyEvent*>(event);
        const int k = key->key();
        return (key->modifiers() & Qt::ControlModifier) &&
               (k == Qt::Key_Tab || k == Qt::Key_Backtab || k == Qt::Key_PageUp || k == Qt::Key_PageDown);
    }
    return false;
}

bool frmMain::eventFilter(QObject* watched, QEvent* event)
{
    // The page stays while the field's check fails; the field has said why and has the focus.
    if (switchesPage(watched, event) && !focusedFieldLetsGo())
        return true;
    return QMainWindow::eventFilter(watched, event);
}

void frmMain::paintEvent(QPaintEvent* event)
{
    QMainWindow::paintEvent(event);
    if (!m_painted) {
        m_painted = true;
        emit firstPainted();
    }
}

ObjectPage* frmMain::CurrentPage() const
{
    switch (m_tabStrip->currentIndex()) {
    case 1:
        return m_document->Down1();
    case 2:
        return m_document->Up1();
    default:
        return nullptr;
    }
}

void frmMain::pageShown()
{
    m_calculator->SetPage(CurrentPage());
    const int index = m_tabStrip->currentIndex();
    m_actions.value(QStringLiteral("optDown"))->setChecked(index == 1);
    m_actions.value(QStringLiteral("optUp"))->setChecked(index == 2);
    updatePageTools();
}

void frmMain::updatePageTools()
{
    ObjectPage* page = CurrentPage();
    const bool onPage = page != nullptr;
    const bool classSelected = page && page->SelectedClass();
    auto enable = [this](const char* key, bool on) {
        m_actions.value(QString::fromLatin1(key))->setEnabled(on);
    };
    enable("NewMainClass", onPage);
    enable("NewSubClass", classSelected);
    enable("NewFilter", classSelected);
    enable("DefaultClass", classSelected);
    enable("DeleteObject", page && page->SelectedObject());
    enable("itmPageSize", onPage);
    enable("Calc", onPage);
    const QString target = m_newObjectTag;
    enable("NewObject", m_actions.value(target)->isEnabled());
    enable("MainClassSelect", onPage);
    enable("SubClassSelect", onPage);
    enable("FilterSelect", onPage);
}

void frmMain::RunPageTool(const QString& key)
{
    // Showing the calculator or choosing the toolbar's buttons leaves every value as it is.
    if (key != u"Calc" && key != u"Config" && !focusedFieldLetsGo())
        return;
    ObjectPage* page = CurrentPage();
    if (key == u"NewObject")
        return RunPageTool(m_newObjectTag);
    if (key == u"MainClassSelect" || key == u"SubClassSelect" || key == u"FilterSelect")
        return chooseNewObject(key);
    if (key == u"Config")
        return configurePageTools();
    if (key == u"optDown" || key == u"optUp")
        return m_tabStrip->setCurrentIndex(key == u"optDown" ? 1 : 2);
    if (key == u"Calc") {
        m_calculatorDock->setVisible(m_calculatorDock->isHidden());
        return;
    }
    // The commands below act on an object page; on "Allgemein" they do nothing.
    if (!page)
        return;
    if (key == u"NewMainClass")
        m_session->NewMainClass(page);
    else if (key == u"NewSubClass")
        m_session->NewSubClass(page);
    else if (key == u"NewFilter")
        m_session->NewFilter(page);
    else if (key == u"DeleteObject")
        m_session->DeleteObject(page);
    else if (key == u"DefaultClass")
        m_session->MakeDefaultClass(page);
    else
        m_prompt->Message(QStringLiteral("Aktion für Button ") + key + QStringLiteral(" (") +
                              QString::number(m_tbrPage->actions().indexOf(m_actions.value(key))) +
                              QStringLiteral(") in tbrPage nicht definiert."),
                          UserPrompt::Icon::Critical);
}

void frmMain::chooseNewObject(const QString& selectKey)
{
    const QString key = selectKey == u"MainClassSelect"  ? QStringLiteral("NewMainClass")
                        : selectKey == u"SubClassSelect" ? QStringLiteral("NewSubClass")
                                                         : QStringLiteral("NewFilter");
    // The button takes the image and the command of the choice, and runs it.
    QAction* newObject = m_actions.value(QStringLiteral("NewObject"));
    newObject->setIcon(m_actions.value(key)->icon());
    newObject->setText(m_actions.value(key)->text());
    m_newObjectTag = key;
    updatePageTools();
    RunPageTool(key);
}

void frmMain::configurePageTools()
{
    QDialog dialog(this);
    dialog.setObjectName(QStringLiteral("dlgPageTools"));
    dialog.setWindowTitle(QStringLiteral("Werkzeugleiste anpassen"));
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(new QLabel(QStringLiteral("Angezeigte Schaltflächen:"), &dialog));
    QList<QPair<QCheckBox*, QAction*>> boxes;
    for (const char* key : PageToolKeys) {
        QAction* a = m_actions.value(QString::fromLatin1(key));
        const bool newObject = qstrcmp(key, "NewObject") == 0;
        QAction* shown = newObject ? m_tbrPage->actions().value(0) : a;
        // The drop-down button carries the text of its last choice: named by what it is, so that
        // no entry of the list reads like another.
        auto* box =
            new QCheckBox(newObject ? QStringLiteral("Neues Objekt (mit Auswahlmenü)") : a->text(), &dialog);
        box->setIcon(a->icon());
        box->setChecked(shown->isVisible());
        layout->addWidget(box);
        boxes << qMakePair(box, shown);
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Abbrechen"));
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    if (dialog.exec() != QDialog::Accepted)
        return;
    for (const auto& [box, a] : std::as_const(boxes))
        a->setVisible(box->isChecked());
}

void frmMain::generate()
{
    if (!focusedFieldLetsGo())
        return;
    m_session->Generate([](const QString& text) {
        QClipboard* clipboard = QGuiApplication::clipboard();
        clipboard->clear();
        clipboard->setText(text);
    });
}

void frmMain::showAbout()
{
    AboutBox box(this);
    box.exec();
}

void frmMain::updateTitle()
{
    const QString file = m_session->CurrentFile();
    setWindowFilePath(file);
    setWindowTitle((file.isEmpty() ? QStringLiteral("Unbenannt") : QFileInfo(file).fileName()) +
                   QStringLiteral("[*] – Tarnwick"));
}

void frmMain::updateRecentFiles()
{
    m_recentMenu->clear();
    const QStringList files = m_session->RecentFiles();
    for (qsizetype i = 0; i < files.size(); ++i) {
        const QString path = files.at(i);
        QAction* a =
            m_recentMenu->addAction(QStringLiteral("&%1 %2").arg(i + 1).arg(QDir::toNativeSeparators(path)));
        a->setObjectName(QStringLiteral("itmRecentFile%1").arg(i + 1));
        connect(a, &QAction::triggered, this, [this, path] {
            if (focusedFieldLetsGo())
                m_session->OpenFile(path);
        });
    }
    m_recentMenu->setEnabled(!files.isEmpty());
}
