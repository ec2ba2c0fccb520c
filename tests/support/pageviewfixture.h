#pragma once

// A page view on the offscreen platform over a page built from a short script (see
// pagescript.h), with the helpers the widget tests share: settling the posted work (widgets
// near the viewport, bandwidth checks), finding box widgets and dragging a box by its title.

#include "base/scriptedprompt.h"
#include "model/qosobjectbox.h"
#include "page/objectpageview.h"
#include "page/objectpane.h"
#include "page/tittlebar.h"
#include "pagescript.h"

#include <QApplication>
#include <QTest>

#include <functional>

struct PageViewFixture
{
    ScriptedPrompt prompt;
    Document doc{&prompt};
    ObjectPage* page;
    ObjectPageView* view;

    explicit PageViewFixture(const QString& script = QString(), bool up = false)
        : page(up ? doc.Up1() : doc.Down1())
    {
        PageScript::run(page, script);
        view = new ObjectPageView(page);
        view->setPrompt(&prompt);
        view->resize(1000, 760);
        view->show();
        QApplication::setActiveWindow(view);
        settle();
        prompt.clear();
    }
    ~PageViewFixture()
    {
        delete view;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    static void settle()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    QoSObjectBox* box(const QoSObject* object) const { return object ? view->box(object->Name()) : nullptr; }
    QoSClass* cls(int n) { return PageScript::cls(doc, n); }
    QoSFilter* flt(int n) { return PageScript::flt(doc, n); }
    QoSObject* named(const QString& shortName) { return PageScript::byShortName(doc, shortName); }

    // The top-left corner of a cell, in page pixels.
    QPoint cellCorner(int x, int y) const
    {
        const ObjectPageProperties& p = page->prop();
        return QPoint(int(x * p.ColWidth / 15.0), int(y * p.RowHeight / 15.0));
    }

    // Presses a box's title, moves the mouse in a few steps so that the box's top-left corner
    // comes to topLeft (page pixels), calls beforeRelease and lets go.
    void drag(QoSObject* object, const QPoint& topLeft, const std::function<void()>& beforeRelease = {})
    {
        QoSObjectBox* b = box(object);
        QVERIFY(b);
        TittleBar* title = b->titleBar();
        const QPoint grab = title->pos() + QPoint(8, 4); // in the box
        QTest::mousePress(title, Qt::LeftButton, {}, grab - title->pos());
        const QPoint from = b->mapToGlobal(grab);
        const QPoint to = view->pane()->mapToGlobal(topLeft - view->scrollPosition() + grab);
        for (int i = 1; i <= 4; ++i)
            QTest::mouseMove(b, b->mapFromGlobal(from + (to - from) * i / 4));
        if (beforeRelease)
            beforeRelease();
        QTest::mouseRelease(b, Qt::LeftButton, {}, b->mapFromGlobal(to));
        settle();
    }
};
