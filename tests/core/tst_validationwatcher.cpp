#include "base/scriptedprompt.h"
#include "check/validationwatcher.h"
#include "file/qosreader.h"
#include "inputs/bandwidthfield.h"
#include "model/document.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/qoscommon.h"
#include "model/qosconnector.h"

#include <QFile>
#include <QTest>

// The bandwidth colours follow every change that can alter them, without the check button.
class TestValidationWatcher : public QObject
{
    Q_OBJECT

    // On a 1000kbit down line: main classes A and B (400 each, maximum 1000) and two sub
    // classes A1 and A2 under A (300 each, maximum 800). Everything is valid.
    struct Tree
    {
        ScriptedPrompt prompt;
        Document doc{&prompt};
        ValidationWatcher watcher{doc.Down1()};
        QHash<QString, QoSClass*> classes;

        Tree()
        {
            doc.Common1()->SetQoSInternetBandDown(QStringLiteral("1000kbit"));
            for (const char* step : {"add A 400kbit 1000kbit", "add B 400kbit 1000kbit",
                                     "add A1 300kbit 800kbit A", "add A2 300kbit 800kbit A"})
                run(QString::fromLatin1(step));
            QCoreApplication::processEvents();
        }
        // "A.min B.max": the flags that are invalid; every other flag is valid.
        QString invalid() const
        {
            QStringList out;
            for (const char* name : {"A", "B", "A1", "A2"}) {
                const QoSClass* c = classes.value(QString::fromLatin1(name));
                if (!c)
                    continue;
                if (!c->MinField()->IsValid())
                    out << QString::fromLatin1(name) + QStringLiteral(".min");
                if (!c->MaxField()->IsValid())
                    out << QString::fromLatin1(name) + QStringLiteral(".max");
            }
            return out.join(u' ');
        }
        // One step of a row: "B.min=700kbit", "A.max=500kbit", "line=700kbit", "line-field=500"
        // (typed into the common page's field), "cut A1", "plug B A1" (B hung under A1),
        // "delete B", "clear" (the document), "add A1 300kbit 800kbit A" (name, minimum, maximum
        // and, for a sub class, its parent).
        void run(const QString& step)
        {
            const QStringList words = step.split(u' ');
            if (words[0] == u"cut") {
                classes.value(words[1])->LineTop()->EditCut();
            } else if (words[0] == u"plug") {
                classes.value(words[1])->AddParentQoSObject(classes.value(words[2])->Name());
            } else if (words[0] == u"delete") {
                classes.take(words[1])->EditDelete();
            } else if (words[0] == u"clear") {
                doc.SetModified(false);
                QVERIFY(doc.ClearDocument());
                classes.clear();
            } else if (words[0] == u"add") {
                const QoSClass* parent = classes.value(words.value(4));
                classes.insert(words[1], doc.Down1()->AddClass(parent ? QString::number(parent->ClassIdx())
                                                                      : QStringLiteral("0"),
                                                               {.minBandwidth = words[2],
                                                                .maxBandwidth = words[3],
                                                                .direction = QStringLiteral("down"),
                                                                .prio = QStringLiteral("0"),
                                                                .caption = words[1]}));
            } else {
                const QString target = step.section(u'=', 0, 0);
                const QString value = step.section(u'=', 1);
                if (target == u"line")
                    doc.Common1()->SetQoSInternetBandDown(value);
                else if (target == u"line-field")
                    doc.Common1()->BandDownField()->SetValue(value);
                else if (target.endsWith(u".min"))
                    classes.value(target.chopped(4))->SetQoSMinBandWidth(value);
                else
                    classes.value(target.chopped(4))->SetQoSMaxBandWidth(value);
            }
        }
    };

private slots:
    void colorsFollowTheNumbers_data()
    {
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QString>("invalid");
        // clang-format off
        QTest::newRow("a main minimum overbooks the line") << QStringList{"B.min=700kbit"} << "A.min B.min";
        QTest::newRow("and back") << QStringList{"B.min=700kbit", "B.min=400kbit"} << "";
        QTest::newRow("the line speed falls") << QStringList{"line=700kbit"} << "A.min A.max B.min B.max";
        QTest::newRow("the line speed is typed into its field")
            << QStringList{"line-field=500"} << "A.min A.max B.min B.max";
        QTest::newRow("a parent's maximum falls below its children") << QStringList{"A.max=500kbit"}
                                                                        << "A1.min A1.max A2.min A2.max";
        QTest::newRow("a sibling's minimum rises") << QStringList{"A1.min=800kbit"} << "A1.min A2.min";
        QTest::newRow("cutting a line moves the class among the main classes")
            << QStringList{"cut A1"} << "A.min B.min A1.min";
        QTest::newRow("plugging a class under another sets its new limit") << QStringList{"plug B A1"} << "B.max";
        QTest::newRow("deleting a sibling frees the group") << QStringList{"B.min=700kbit", "delete B"} << "";
        QTest::newRow("deleting a parent makes its children main classes")
            << QStringList{"B.min=500kbit", "delete A"} << "B.min A1.min A2.min";
        QTest::newRow("a new main class overbooks the line") << QStringList{"add C 300kbit 1000kbit"} << "A.min B.min";
        QTest::newRow("a new sub class overbooks its parent") << QStringList{"add A3 500kbit 800kbit A"} << "A1.min A2.min";
        QTest::newRow("a cleared document starts afresh") << QStringList{"clear", "add A 1200kbit 1000kbit"} << "A.min";
        // clang-format on
    }
    void colorsFollowTheNumbers()
    {
        QFETCH(QStringList, steps);
        QFETCH(QString, invalid);
        Tree tree;
        QCOMPARE(tree.invalid(), QString());
        for (const QString& step : steps)
            tree.run(step);
        QCoreApplication::processEvents();
        QCOMPARE(tree.invalid(), invalid);
    }

    // Checks wait for the event loop, so that a file read in one go is checked once.
    void checksWaitForTheEventLoop()
    {
        Tree tree;
        tree.run(QStringLiteral("B.min=700kbit"));
        QVERIFY(tree.watcher.Pending());
        QCOMPARE(tree.invalid(), QString());
        tree.watcher.Flush();
        QVERIFY(!tree.watcher.Pending());
        QCOMPARE(tree.invalid(), QStringLiteral("A.min B.min"));
    }

    void sumBeyond32BitsLeavesTheGroupAsItWas()
    {
        Tree tree;
        tree.run(QStringLiteral("B.min=700kbit"));
        QCoreApplication::processEvents();
        tree.run(QStringLiteral("A.min=2000000000kbit"));
        tree.run(QStringLiteral("B.min=2000000000kbit"));
        QCoreApplication::processEvents();
        QCOMPARE(tree.invalid(), QStringLiteral("A.min B.min"));
    }

    // The colours the watcher leaves for a file read in one go agree with what the check
    // button gives afterwards.
    void colorsAgreeWithTheCheckButton()
    {
        ScriptedPrompt prompt;
        Document doc(&prompt);
        ValidationWatcher watcher(doc.Down1());
        // Two main classes of 600 on a 1000kbit line; a sub class whose maximum is above its parent's.
        QFile file(QStringLiteral(TARNWICK_TEST_DATA "/overbooked.qos.txt"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        ImportQoSBytes(doc, file.readAll());
        QCoreApplication::processEvents();
        auto flags = [&doc] {
            QString out;
            for (QoSObject* o : doc.Down1()->ContainedObjects())
                if (auto* c = qobject_cast<QoSClass*>(o))
                    out += QString(c->MinField()->IsValid() ? u'+' : u'-') +
                           (c->MaxField()->IsValid() ? u'+' : u'-') + u' ';
            return out;
        };
        const QString watched = flags();
        for (QoSObject* o : doc.Down1()->ContainedObjects())
            if (auto* c = qobject_cast<QoSClass*>(o); c && !c->ParentQoSObject())
                c->Validate(true);
        QCOMPARE(watched, flags());
        QVERIFY(watched.contains(u'-')); // the case is not trivially valid
    }
};

QTEST_GUILESS_MAIN(TestValidationWatcher)
#include "tst_validationwatcher.moc"
