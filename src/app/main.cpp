#include "app/dialogprompt.h"
#include "app/statusbarline.h"
#include "document/document.h"
#include "document/qosreader.h"
#include "page/objectpageview.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QMainWindow>
#include <QStatusBar>
#include <QTabWidget>
#include <QTranslator>

// Until the main window arrives: the two object pages of one document in tabs, and a status
// bar. A qos.txt named on the command line is read at start.
int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tarnwick"));
    // Qt's own texts (file dialogs, the edit menus of text boxes) in German where installed.
    QTranslator qtGerman;
    if (qtGerman.load(QLocale(QLocale::German, QLocale::Germany), QStringLiteral("qtbase"), QStringLiteral("_"),
                      QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&qtGerman);

    QMainWindow window;
    window.setObjectName(QStringLiteral("frmMain"));
    window.setWindowTitle(QStringLiteral("Tarnwick"));
    DialogPrompt prompt(&window);
    StatusBarLine status(window.statusBar());
    Document document(&prompt);
    document.setStatusLine(&status);

    auto* tabs = new QTabWidget(&window);
    tabs->setObjectName(QStringLiteral("TabStrip1"));
    for (ObjectPage* page : {document.Down1(), document.Up1()}) {
        auto* view = new ObjectPageView(page, tabs);
        view->setPrompt(&prompt);
        view->setStatusLine(&status);
        tabs->addTab(view, page == document.Down1() ? QStringLiteral("Down") : QStringLiteral("Up"));
    }
    window.setCentralWidget(tabs);
    window.resize(1100, 720);
    window.show();

    const QStringList args = QApplication::arguments();
    if (args.size() > 1) {
        const ImportReport report = ImportQoSText(document, args.at(1));
        document.SetModified(false);
        if (!report.complete)
            prompt.Message(report.Message(), UserPrompt::Icon::Warning);
    }
    status.SetStatusText(QStringLiteral("Bereit"));
    const int result = app.exec();
    delete tabs; // the views go before the document they show
    return result;
}
