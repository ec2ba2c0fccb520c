#pragma once

#include "app/frmmain.h"
#include "base/scriptedprompt.h"
#include "model/document.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QTest>

#include <memory>

// The real main window on the offscreen platform, its questions answered by a scripted prompt,
// with the look-ups the window tests share.
struct MainWindowFixture
{
    ScriptedPrompt prompt;
    std::unique_ptr<frmMain> w;

    explicit MainWindowFixture(const QString& config) : w(std::make_unique<frmMain>(&prompt, config)) {}
    Document& doc() const { return w->document(); }
    QAction* action(const char* key) const { return w->findChild<QAction*>(QString::fromLatin1(key)); }
    template <typename T> T* child(const char* name) const
    {
        return w->findChild<T*>(QString::fromLatin1(name));
    }
    QString status() const { return child<QLabel>("pnlStatus")->text(); }
    bool show(const QSize& size = QSize(1200, 1000)) const
    {
        w->resize(size);
        w->show();
        QApplication::setActiveWindow(w.get());
        return QTest::qWaitForWindowActive(w.get());
    }
};
