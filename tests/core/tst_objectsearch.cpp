#include "app/objectsearch.h"
#include "base/scriptedprompt.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qosfilter.h"

#include <QTest>

// Finding boxes by caption, address and port, and stepping through the matches of both pages.
class TestObjectSearch : public QObject
{
    Q_OBJECT

    // Both pages, made in an order unlike the reading order, so that a search that walks the
    // registry or a page's list instead of the pictures gives itself away:
    //   Up:   "Web up" (0,0)                                   made first
    //   Down: "Web A" (0,0), "Web B" (1,0), "Web C" (0,1) under A, made A, C, B;
    //         a filter "Telefon" (0,4) under C, made last.
    struct Pages
    {
        ScriptedPrompt prompt;
        Document doc{&prompt};

        Pages()
        {
            ObjectPage* down = doc.Down1();
            doc.Up1()->AddClass(nullptr, klass(QStringLiteral("Web up"), QStringLiteral("up"), 0, 0));
            QoSClass* a =
                down->AddClass(nullptr, klass(QStringLiteral("Web A"), QStringLiteral("down"), 0, 0));
            QoSClass* c = down->AddClass(a, klass(QStringLiteral("Web C"), QStringLiteral("down"), 0, 1));
            down->AddClass(nullptr, klass(QStringLiteral("Web B"), QStringLiteral("down"), 1, 0));
            down->AddFilter(c, {.ip = QStringLiteral("192.168.1.20"),
                                .port = QStringLiteral("5060,6000-6010"),
                                .caption = QStringLiteral("Telefon"),
                                .x = 0,
                                .y = 4});
        }
        static ClassValues klass(const QString& caption, const QString& direction, qint16 x, qint16 y)
        {
            return {.direction = direction, .prio = QStringLiteral("0"), .caption = caption, .x = x, .y = y};
        }
        QoSObject* named(const QString& caption) const
        {
            for (QoSObject* o : doc.Objects())
                if (o->Caption() == caption)
                    return o;
            return nullptr;
        }
        static QString captions(const QList<QoSObject*>& boxes)
        {
            QStringList out;
            for (const QoSObject* o : boxes)
                out << o->Caption();
            return out.join(u'|');
        }
    };

private slots:
    void matches_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("ip");
        QTest::addColumn<QString>("port");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("found");

        const QString none;
        QTest::newRow("caption in another case") << "Telefonie" << none << none << "TELEF" << true;
        QTest::newRow("blanks around the text") << "Telefonie" << none << none << "  fon " << true;
        QTest::newRow("blanks only") << "Telefonie" << none << none << "   " << false;
        QTest::newRow("address, part of it") << none << "192.168.1.20" << none << "168.1" << true;
        QTest::newRow("port, part of the text") << none << none << "8080"
                                                << "80" << true;
        QTest::newRow("port inside a range") << none << none << "21,6000-6010"
                                             << "6005" << true;
        QTest::newRow("port inside a reversed range") << none << none << "6010-6000"
                                                      << "6005" << true;
        QTest::newRow("port just past a range") << none << none << "6000-6010"
                                                << "6011" << false;
        QTest::newRow("port written with a zero before it") << none << none << "21,80"
                                                            << "080" << true;
        QTest::newRow("port a list does not hold") << none << none << "21,443"
                                                   << "80" << false;
    }
    void matches()
    {
        QFETCH(QString, caption);
        QFETCH(QString, ip);
        QFETCH(QString, port);
        QFETCH(QString, text);
        QFETCH(bool, found);
        ScriptedPrompt prompt;
        Document doc(&prompt);
        QoSClass* c = doc.Down1()->AddClass(
            nullptr, {.direction = QStringLiteral("down"), .prio = QStringLiteral("0")});
        QoSFilter* f = doc.Down1()->AddFilter(c, {.ip = ip, .port = port, .caption = caption});
        QVERIFY(f);
        QCOMPARE(ObjectSearch::Matches(*f, text), found);
        // A class has neither address nor port: only its caption counts.
        c->SetCaption(caption);
        QCOMPARE(ObjectSearch::Matches(*c, text),
                 found && caption.contains(text.trimmed(), Qt::CaseInsensitive));
    }

    // Down before up, each page row by row, each row left to right; not the order they were made in.
    void findsInReadingOrder()
    {
        Pages p;
        ObjectSearch search(p.doc);
        QCOMPARE(Pages::captions(search.FindAll(QStringLiteral("web"))),
                 QStringLiteral("Web A|Web B|Web C|Web up"));
        QCOMPARE(Pages::captions(search.FindAll(QStringLiteral("6003"))), QStringLiteral("Telefon"));
        QVERIFY(search.FindAll(QString()).isEmpty());
    }

    void next_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<bool>("forward");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<int>("index");
        QTest::addColumn<bool>("wrapped");

        QTest::newRow("nowhere yet, forward: the first") << "" << true << "Web A" << 1 << false;
        QTest::newRow("nowhere yet, back: the last") << "" << false << "Web up" << 4 << false;
        QTest::newRow("to the next row") << "Web B" << true << "Web C" << 3 << false;
        QTest::newRow("past the last: round to the first") << "Web up" << true << "Web A" << 1 << true;
        QTest::newRow("before the first: round to the last") << "Web A" << false << "Web up" << 4 << true;
        QTest::newRow("from a box that is no match") << "Telefon" << true << "Web up" << 4 << false;
        QTest::newRow("back from a box that is no match") << "Telefon" << false << "Web C" << 3 << false;
    }
    void next()
    {
        QFETCH(QString, from);
        QFETCH(bool, forward);
        QFETCH(QString, expected);
        QFETCH(int, index);
        QFETCH(bool, wrapped);
        Pages p;
        ObjectSearch search(p.doc);
        search.SetText(QStringLiteral("WEB"));
        const ObjectSearch::Hit hit = search.Next(p.named(from), forward);
        QVERIFY(hit.object);
        QCOMPARE(hit.object->Caption(), expected);
        QCOMPARE(hit.index, index);
        QCOMPARE(hit.count, 4);
        QCOMPARE(hit.wrapped, wrapped);
    }

    // Without a box to start from, a step goes on from the box last found, also when that box
    // was deleted since; a deleted box is never found.
    void goesOnFromTheBoxLastFound_data()
    {
        QTest::addColumn<QString>("found");
        QTest::addColumn<bool>("deleted");
        QTest::addColumn<bool>("forward");
        QTest::addColumn<QString>("expected");

        QTest::newRow("still there, forward") << "Web B" << false << true << "Web C";
        QTest::newRow("deleted, forward") << "Web B" << true << true << "Web C";
        QTest::newRow("deleted, back") << "Web B" << true << false << "Web A";
        QTest::newRow("deleted with its sub class") << "Web A" << true << true << "Web B";
        QTest::newRow("deleted, the last one, forward") << "Web up" << true << true << "Web A";
    }
    void goesOnFromTheBoxLastFound()
    {
        QFETCH(QString, found);
        QFETCH(bool, deleted);
        QFETCH(bool, forward);
        QFETCH(QString, expected);
        Pages p;
        ObjectSearch search(p.doc);
        search.SetText(QStringLiteral("web"));
        QoSObject* box = p.named(found);
        search.Found(box);
        if (deleted) {
            box->GetObjectPage()->SetSelectedObject(box);
            box->EditDelete();
            QVERIFY(!p.named(found));
        }
        for (int step = 0; step < 4; ++step) {
            const ObjectSearch::Hit hit = search.Next(nullptr, forward);
            QVERIFY(hit.object);
            QVERIFY(p.doc.Objects().contains(hit.object));
            if (step == 0)
                QCOMPARE(hit.object->Caption(), expected);
            search.Found(hit.object);
        }
    }
};

QTEST_GUILESS_MAIN(TestObjectSearch)
#include "tst_objectsearch.moc"
