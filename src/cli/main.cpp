#include "clisession.h"
#include "diffcommand.h"
#include "jsonreport.h"

#include "base/qoserror.h"
#include "base/version.h"
#include "check/documentcheck.h"
#include "file/qoswriter.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringList>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>
#include <vector>

namespace {

enum ExitCode { Ok = 0, Failed = 1, Usage = 2 };

// Standard output may be a full disk or a closed pipe: what could not be written is an error.
bool outputFailed = false;
int outputErrno = 0;

void write(FILE* stream, const QByteArray& bytes)
{
    if (std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream) != size_t(bytes.size()) &&
        !outputFailed) {
        outputFailed = stream == stdout;
        outputErrno = errno;
    }
}

void line(FILE* stream, const QString& text)
{
    write(stream, text.toUtf8() + '\n');
}

QString systemReason(int error)
{
    switch (error) {
    case ENOSPC:
        return QStringLiteral("kein Platz mehr auf dem Datenträger");
    case EPIPE:
        return QStringLiteral("die Ausgabe wurde geschlossen");
    case EBADF:
        return QStringLiteral("keine Ausgabe geöffnet");
    case EIO:
        return QStringLiteral("Ein-/Ausgabefehler");
    case EFBIG:
        return QStringLiteral("die Datei wird zu groß");
    case EDQUOT:
        return QStringLiteral("das Kontingent ist erschöpft");
    case EINVAL:
        return QStringLiteral("die Ausgabe nimmt keine Daten an");
    case EACCES:
    case EPERM:
        return QStringLiteral("keine Berechtigung");
    case EROFS:
        return QStringLiteral("der Datenträger ist schreibgeschützt");
    default:
        // The system's own text follows the locale and is English more often than not.
        return QStringLiteral("Systemfehler %1").arg(error);
    }
}

// A standard stream that was closed before the start leaves its descriptor free, and the next
// file the program opens would take it: the output would go there, or fail with a reason
// that names something else. The descriptor is held by /dev/null, read-only, so that a
// write still fails, and fails as "no output".
void holdClosedStreams()
{
    for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(fd, F_GETFD) != -1 || errno != EBADF)
            continue;
        const int held = ::open("/dev/null", O_RDONLY);
        if (held >= 0 && held != fd) {
            ::dup2(held, fd);
            ::close(held);
        }
    }
}

// Flushes standard output; a failed or short write turns the exit code into 1.
int finish(int code)
{
    if (std::fflush(stdout) != 0 && !outputFailed) {
        outputFailed = true;
        outputErrno = errno;
    }
    if (!outputFailed)
        return code;
    line(stderr, QStringLiteral("Fehler: Die Ausgabe konnte nicht geschrieben werden: %1.")
                     .arg(systemReason(outputErrno)));
    return Failed;
}

// An import that stopped early is told on one line; the exit code stays as it is.
void reportEarlyStop(const CliSession& session)
{
    if (!session.report().complete)
        line(stderr, session.report().Message());
}

int usageError(const QString& text)
{
    line(stderr, text + QStringLiteral(" (tarnwick-cli --help zeigt die Befehle)"));
    return Usage;
}

void help()
{
    line(stdout, QStringLiteral(
                     "Aufruf: tarnwick-cli BEFEHL DATEI\n"
                     "\n"
                     "Befehle:\n"
                     "  export DATEI   liest eine qos.txt und gibt sie so aus, wie der Editor sie speichert\n"
                     "  json DATEI     gibt das gelesene Dokument als JSON aus\n"
                     "  check DATEI    nennt die Probleme des Dokuments wie die Prüfung im Editor\n"
                     "  render DATEI BILD.svg|BILD.png [down|up]\n"
                     "                 zeichnet die Seite (Vorgabe down) so, wie der Editor sie zeigt;\n"
                     "                 die Endung wählt das Format: SVG (Texte bleiben Text) oder PNG\n"
                     "  diff ALT NEU [--json]\n"
                     "                 nennt, was sich zwischen zwei Dateien geändert hat: allgemeine\n"
                     "                 Einstellungen, Klassen und Filter (Rückgabe 0 gleich, 1 verschieden)\n"
                     "  --help         zeigt diese Hilfe\n"
                     "  --version      zeigt die Version\n"
                     "\n"
                     "Rückgabewerte: 0 in Ordnung, 1 Fehler im Dokument, 2 falscher Aufruf oder Datei "
                     "nicht lesbar."));
}

int exportCommand(CliSession& session)
{
    // One line per message box, even for a text that breaks lines itself.
    for (QString message : session.Messages())
        line(stderr, message.replace(u'\n', u' '));
    reportEarlyStop(session);
    QByteArray bytes;
    try {
        bytes = ExportQoSBytes(session.document());
    } catch (const QoSError&) {
        line(stderr, QStringLiteral("Bei der Erstellung sind Fehler aufgetreten!"));
        return Failed;
    }
    write(stdout, bytes);
    return Ok;
}

// The picture is drawn by a companion that links the widgets; the other commands start faster
// without them.
int renderCommand(const QStringList& args)
{
    const QString renderer = QCoreApplication::applicationDirPath() + QStringLiteral("/tarnwick-render");
    std::vector<QByteArray> owned{QFile::encodeName(renderer)};
    for (const QString& a : args.mid(1))
        owned.push_back(QFile::encodeName(a));
    std::vector<char*> argv;
    for (QByteArray& a : owned)
        argv.push_back(a.data());
    argv.push_back(nullptr);
    std::fflush(stdout);
    std::fflush(stderr);
    ::execv(argv[0], argv.data());
    line(stderr, QStringLiteral("Fehler: \"%1\" kann nicht gestartet werden.").arg(renderer));
    return Usage;
}

int checkCommand(CliSession& session)
{
    const CheckReport report = CheckDocument(session.document(), session.report());
    for (const QString& text : report.problems)
        line(stdout, text);
    for (const QString& text : report.summaries)
        line(stdout, text);
    return report.problems.isEmpty() ? Ok : Failed;
}

} // namespace

int main(int argc, char* argv[])
{
    // A closed pipe is an output error like any other, not a reason to die without a word.
    std::signal(SIGPIPE, SIG_IGN);
    holdClosedStreams();
    QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments().mid(1);
    if (args.isEmpty())
        return usageError(QStringLiteral("Fehler: kein Befehl angegeben."));
    const QString& command = args[0];
    if (command == u"--help" || command == u"-h") {
        help();
        return finish(Ok);
    }
    if (command == u"--version" || command == u"-v") {
        line(stdout, QStringLiteral("tarnwick-cli ") + TarnwickVersion());
        return finish(Ok);
    }
    if (command == u"diff") {
        const DiffCommand diff(args.mid(1));
        if (!diff.usageError().isEmpty())
            return usageError(diff.usageError());
        const DiffCommand::Result result = diff.Run();
        for (const QString& text : result.errors)
            line(stderr, text);
        write(stdout, result.output);
        const int code = finish(result.code);
        std::fflush(stderr);
        std::_Exit(code);
    }
    if (command != u"export" && command != u"json" && command != u"check" && command != u"render")
        return usageError(QStringLiteral("Fehler: unbekannter Befehl \"%1\".").arg(command));
    if (args.size() < 2)
        return usageError(QStringLiteral("Fehler: beim Befehl \"%1\" fehlt die Datei.").arg(command));
    const bool render = command == u"render";
    if (render && args.size() < 3)
        return usageError(QStringLiteral("Fehler: beim Befehl \"render\" fehlt der Name des Bildes."));
    if (args.size() > (render ? 4 : 2))
        return usageError(QStringLiteral("Fehler: zu viele Argumente für \"%1\".").arg(command));
    const QString direction = render && args.size() > 3 ? args[3] : QStringLiteral("down");
    if (direction != u"down" && direction != u"up")
        return usageError(
            QStringLiteral("Fehler: die Seite heißt \"down\" oder \"up\", nicht \"%1\".").arg(direction));
    if (render)
        return renderCommand(args);

    // The document lives until the process ends: taking thousands of boxes apart one by one
    // just before exit would cost more than reading them.
    auto* session = new CliSession;
    if (!session->Open(args[1])) {
        line(stderr, QStringLiteral("Fehler: ") + session->error());
        delete session; // nothing was read, so this is cheap; returning from main checks for leaks
        return Usage;
    }
    int code = Ok;
    if (command == u"export") {
        code = exportCommand(*session);
    } else if (command == u"json") {
        reportEarlyStop(*session);
        write(stdout, JsonReport(*session));
    } else {
        code = checkCommand(*session);
    }
    code = finish(code);
    std::fflush(stderr);
    std::_Exit(code);
}
