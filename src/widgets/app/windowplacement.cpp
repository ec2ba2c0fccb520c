#include "windowplacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

QList<QRect> WindowPlacement::Screens()
{
    QList<QRect> screens;
    if (QScreen* primary = QGuiApplication::primaryScreen())
        screens << primary->availableGeometry();
    for (QScreen* s : QGuiApplication::screens())
        if (s != QGuiApplication::primaryScreen())
            screens << s->availableGeometry();
    return screens;
}

WindowSettings WindowPlacement::Of(const QWidget* window)
{
    WindowSettings w;
    const bool normal =
        !(window->windowState() & (Qt::WindowMaximized | Qt::WindowMinimized | Qt::WindowFullScreen));
    w.normalGeometry =
        normal || !window->normalGeometry().isValid() ? window->geometry() : window->normalGeometry();
    w.windowState = window->isMinimized()   ? WindowSettings::Minimized
                    : window->isMaximized() ? WindowSettings::Maximized
                                            : WindowSettings::Normal;
    return w;
}

void WindowPlacement::Restore(QWidget* window, const WindowSettings& settings)
{
    window->setGeometry(settings.normalGeometry);
    if (settings.windowState == WindowSettings::Maximized)
        window->setWindowState(Qt::WindowMaximized);
}
