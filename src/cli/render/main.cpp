#include "app/pageexport.h"
#include "base/atomicfile.h"
#include "clisession.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "page/pagerenderer.h"

#include <QApplication>
#include <QStringList>

#include <cstdio>

namespace {

enum ExitCode { Ok = 0, Failed = 1, Usage = 2 };

void line(const QString& text)
{
    const QByteArray bytes = text.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stderr);
}

} // namespace

// tarnwick-render FILE PICTURE.svg|PICTURE.png [down|up]: draws one page of FILE with the
// editor's own boxes, as tarnwick-cli render does (it starts this program). The picture's
// ending chooses the format.
int main(int argc, char* argv[])
{
    // Drawn on the offscreen platform, so that no display is needed and the picture does not
    // depend on one.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments().mid(1);
    if (args.size() < 2 || args.size() > 3) {
        line(QStringLiteral("Aufruf: tarnwick-render DATEI BILD.svg|BILD.png [down|up]"));
        return Usage;
    }
    const PageExport::Format format = PageExport::FormatOf(args[1]);
    if (format == PageExport::Format::Unknown) {
        line(QStringLiteral("Fehler: das Bild \"%1\" endet weder auf .svg noch auf .png.").arg(args[1]));
        return Usage;
    }
    const QString direction = args.value(2, QStringLiteral("down"));
    if (direction != u"down" && direction != u"up") {
        line(QStringLiteral("Fehler: die Seite heißt \"down\" oder \"up\", nicht \"%1\".").arg(direction));
        return Usage;
    }
    CliSession session;
    if (!session.Open(args[0])) {
        line(QStringLiteral("Fehler: ") + session.error());
        return Usage;
    }
    for (QString message : session.Messages())
        line(message.replace(u'\n', u' '));
    if (!session.report().complete)
        line(session.report().Message());
    Document& doc = session.document();
    ObjectPage* page = direction == u"up" ? doc.Up1() : doc.Down1();
    QString error;
    const QByteArray picture = PageRenderer(page).picture(format, &error);
    if (picture.isEmpty()) {
        line(QStringLiteral("Fehler: ") + error);
        return Failed;
    }
    QString reason;
    if (!WriteFileAtomically(args[1], picture, &reason)) {
        line(
            QStringLiteral("Fehler: Das Bild \"%1\" kann nicht geschrieben werden. %2").arg(args[1], reason));
        return Failed;
    }
    return Ok;
}
