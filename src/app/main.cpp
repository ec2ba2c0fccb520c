#include "app/editorsession.h"
#include "app/frmmain.h"
#include "base/version.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDateTime>
#include <QElapsedTimer>
#include <QLibraryInfo>
#include <QLocale>
#include <QTimer>
#include <QTranslator>

#include <cstdio>

// tarnwick [DATEI]: the editor, opening DATEI at start as "Öffnen" would.
int main(int argc, char* argv[])
{
    QElapsedTimer sinceStart;
    sinceStart.start();
    const auto names = [] {
        // The settings live in ~/.config/tarnwick; people read the name with a capital.
        QCoreApplication::setApplicationName(QStringLiteral("tarnwick"));
        QCoreApplication::setApplicationVersion(TarnwickVersion());
    };
    // The command line is read before the window system is touched: --help, --version and a
    // wrong option are answered on a machine without a display too.
    QStringList files;
    {
        QCoreApplication commandLine(argc, argv);
        names();
        QCommandLineParser parser;
        parser.setApplicationDescription(
            QStringLiteral("Editor für die QoS-Konfiguration qos.txt eines Routers"));
        parser.addHelpOption();
        parser.addVersionOption();
        parser.addPositionalArgument(QStringLiteral("DATEI"),
                                     QStringLiteral("qos.txt, die beim Start geöffnet wird"));
        parser.process(commandLine);
        files = parser.positionalArguments();
    }

    QApplication app(argc, argv);
    names();
    QApplication::setApplicationDisplayName(QStringLiteral("Tarnwick"));
    QApplication::setDesktopFileName(QStringLiteral("tarnwick"));
    // Qt's own texts (file dialogs, the edit menus of text boxes) in German where installed.
    QTranslator qtGerman;
    if (qtGerman.load(QLocale(QLocale::German, QLocale::Germany), QStringLiteral("qtbase"),
                      QStringLiteral("_"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&qtGerman);

    frmMain window;
    // TARNWICK_STARTUP_TRACE=1 prints how long the start took up to the first painted window, then quits.
    if (qEnvironmentVariableIsSet("TARNWICK_STARTUP_TRACE"))
        QObject::connect(&window, &frmMain::firstPainted, &app, [&] {
            std::printf("first paint after %lld ms (at %lld ms since the epoch)\n",
                        static_cast<long long>(sinceStart.elapsed()),
                        static_cast<long long>(QDateTime::currentMSecsSinceEpoch()));
            std::fflush(stdout);
            QTimer::singleShot(0, &app, &QCoreApplication::quit);
        });
    window.showAsSaved();
    if (!files.isEmpty()) {
        const QString file = files.first();
        // After the window is up, so that the progress of a large file shows over it.
        QTimer::singleShot(0, &window, [&window, file] { window.session().OpenFile(file); });
    }
    return app.exec();
}
