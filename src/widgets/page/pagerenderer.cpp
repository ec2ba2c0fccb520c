#include "pagerenderer.h"

#include "objectpageview.h"
#include "objectpane.h"

#include <QCoreApplication>

QImage RenderObjectPage(ObjectPage* page, QString* error)
{
    ObjectPageView view(page);
    view.setScrollBarsShown(false);
    const QSize size = view.pageSize();
    if (size.width() > MaxRenderSide || size.height() > MaxRenderSide ||
        qint64(size.width()) * size.height() > MaxRenderPixels) {
        if (error)
            *error =
                QStringLiteral("Die Seite ist mit %1 × %2 Pixeln zu groß für ein Bild (höchstens %3 Pixel je "
                               "Seite und %4 Millionen Pixel).")
                    .arg(size.width())
                    .arg(size.height())
                    .arg(MaxRenderSide)
                    .arg(MaxRenderPixels / 1'000'000);
        return {};
    }
    view.setAttribute(Qt::WA_DontShowOnScreen);
    view.resize(size);
    view.show();
    view.realizeAll();
    // The checks of the bandwidths and the widgets' own updates wait for the event loop.
    QCoreApplication::sendPostedEvents();
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    view.pane()->render(&image);
    return image;
}
