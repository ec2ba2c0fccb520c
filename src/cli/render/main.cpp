#include "clisession.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "page/pagerenderer.h"

#include <QApplication>
#include <QImage>
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

// tarnwick-render FILE PICTURE.png [down|up]: draws one page of FILE with the editor's own
// boxes, as tarnwick-cli render does (it starts this program).
int main(int argc, char* argv[])
{
    // Drawn on the offscreen platform, so that no display is needed and the picture does not
    // depend on one.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments().mid(1);
    if (args.size() < 2 || args.size() > 3) {
        line(QStringLiteral("Aufruf: tarnwick-render DATEI BILD.png [down|up]"));
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
    const QImage image = RenderObjectPage(page, &error);
    if (image.isNull()) {
        line(QStringLiteral("Fehler: ") + error);
        return Failed;
    }
    if (!image.save(args[1], "PNG")) {
        line(QStringLiteral("Fehler: Das Bild \"%1\" kann nicht geschrieben werden.").arg(args[1]));
        return Failed;
    }
    return Ok;
}
