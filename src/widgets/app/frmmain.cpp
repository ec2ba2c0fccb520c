#include "frmmain.h"

#include "page/objectpageview.h"

#include "aboutbox.h"
#include "app/appproperties.h"
#include "app/editorsession.h"
#include "check/problemwatcher.h"
#include "classcalculatorpanel.h"
#include "dialogprompt.h"
#include "document/qoscommonpage.h"
#include "frmstatus.h"
#include "inputs/leavecheck.h"
#include "model/classcalculator.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qosobject.h"
#include "problemsdock.h"
#include "statusbarline.h"
#include "toolicons.h"
#include "windowplacement.h"

#include <QAction>
#include <QClipboard>
#include <QCloseEvent>
#include <QDir>
#include <QDockWidget>
#include <QFileInfo>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollArea>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

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
    setWindowIcon(ToolIcons::icon(ToolIcons::Picture::Program));
    m_document->setStatusWindow(m_frmStatus);

    buildStatusBar(); // the page views tell the status line
    buildPages();
    buildProblems();
    buildTools(); // the calculator's panel and the problem dock bring their own show/hide actions
    buildMenus();
    buildToolbars();

    connect(m_document.get(), &Document::modifiedChanged, this, [this](bool modified) {
        setWindowModified(modified);
        m_pnlModified->setVisible(modified);
        updateTools();
    });
    connect(m_session.get(), &EditorSession::currentFileChanged, this, &frmMain::updateTitle);
    connect(m_session.get(), &EditorSession::recentFilesChanged, this, &frmMain::updateRecentFiles);
    connect(m_tabStrip, &QTabWidget::currentChanged, this, &frmMain::pageShown);
    for (ObjectPage* page : {m_document->Down1(), m_document->Up1()})
        connect(page, &ObjectPage::selectionChanged, this, &frmMain::updateTools);

    loadSettings();
    pageShown();
    updateTitle();
    // The start leaves the document empty and unmodified, whatever config.ini set.
    m_document->SetModified(false);
    setWindowModified(false);
    m_pnlModified->setVisible(false);
    updateTools();
}

frmMain::~frmMain()
{
    // The views go before the document they show.
    m_calculator->SetPage(nullptr);
    disconnect(m_document.get(), nullptr, this, nullptr);
    for (ObjectPage* page : {m_document->Down1(), m_document->Up1()})
        disconnect(page, nullptr, this, nullptr);
    delete m_calculatorDock;
    delete m_problemsDock;
    delete takeCentralWidget();
    m_document->setStatusWindow(nullptr);
    m_document->setStatusLine(nullptr);
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
    const WindowSettings w = m_properties->Load(WindowPlacement::Screens());
    WindowPlacement::Restore(this, w);
    m_calculatorDock->setVisible(w.calculator);
    m_tools->action(Tool::Calc)->setChecked(w.calculator); // a hidden window sends no show event
    m_problemsDock->setVisible(w.problems);
    m_tools->action(Tool::Problems)->setChecked(w.problems);
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
    WindowSettings w = WindowPlacement::Of(this);
    w.calculator = !m_calculatorDock->isHidden();
    w.problems = !m_problemsDock->isHidden();
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

bool frmMain::ShowObject(QoSObject* object)
{
    ObjectPage* page = object ? object->GetObjectPage() : nullptr;
    if (!page)
        return false;
    for (int i = 0; i < m_tabStrip->count(); ++i) {
        auto* view = qobject_cast<ObjectPageView*>(m_tabStrip->widget(i));
        if (!view || view->page() != page)
            continue;
        if (!focusedFieldLetsGo())
            return false;
        m_tabStrip->setCurrentIndex(i);
        view->focusObject(object);
        return true;
    }
    return false;
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
    m_tools->action(Tool::OptDown)->setChecked(index == 1);
    m_tools->action(Tool::OptUp)->setChecked(index == 2);
    updateTools();
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
