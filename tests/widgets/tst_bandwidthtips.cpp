#include "check/bandwidthexplanation.h"
#include "inputs/inputbandwidth.h"
#include "model/qoscommon.h"
#include "pageviewfixture.h"

#include <QLineEdit>

namespace {

// The number box of a class box's minimum or maximum ("txtMin", "txtMax").
QLineEdit* numberBox(QoSObjectBox* box, const char* field)
{
    auto* input = box ? box->findChild<InputBandwidth*>(QLatin1String(field)) : nullptr;
    return input ? input->findChild<QLineEdit*>() : nullptr;
}

void setClass(QoSClass* c, const QString& caption, const QString& min, const QString& max)
{
    c->SetCaption(caption);
    c->SetQoSMinBandWidth(min);
    c->SetQoSMaxBandWidth(max);
}

} // namespace

// A red bandwidth says why in its tooltip and to a screen reader, and keeps saying the truth
// while its group changes around it.
class TestBandwidthTips : public QObject
{
    Q_OBJECT
private slots:
    void followsItsGroup_data()
    {
        QTest::addColumn<QString>("step");
        QTest::addColumn<bool>("red"); // the minimum of "VoIP" afterwards
        QTest::newRow("a sibling's minimum grows") << "Web.min=7000kbit" << true;
        QTest::newRow("the parent's maximum shrinks") << "Internet.max=7000kbit" << true;
        QTest::newRow("a sibling joins") << "add=500kbit" << true;
        QTest::newRow("a sibling is renamed") << "Web.caption=Mail" << true;
        QTest::newRow("the parent is renamed") << "Internet.caption=Uplink" << true;
        QTest::newRow("a sibling's minimum shrinks: valid") << "Web.min=4000kbit" << false;
    }

    // "VoIP" and "Web" under "Internet" guarantee 9000 of its 8000 kbit: both minimums are red.
    void followsItsGroup()
    {
        QFETCH(QString, step);
        QFETCH(bool, red);
        PageViewFixture f(QStringLiteral("C S1 S1"));
        f.doc.Common1()->SetQoSInternetBandDown(QStringLiteral("10000kbit"));
        const QHash<QString, QoSClass*> classes{{QStringLiteral("Internet"), f.cls(1)},
                                                {QStringLiteral("VoIP"), f.cls(2)},
                                                {QStringLiteral("Web"), f.cls(3)}};
        setClass(f.cls(1), QStringLiteral("Internet"), QStringLiteral("5000kbit"),
                 QStringLiteral("8000kbit"));
        setClass(f.cls(2), QStringLiteral("VoIP"), QStringLiteral("3000kbit"), QStringLiteral("4000kbit"));
        setClass(f.cls(3), QStringLiteral("Web"), QStringLiteral("6000kbit"), QStringLiteral("8000kbit"));
        f.settle();
        QLineEdit* min = numberBox(f.box(f.cls(2)), "txtMin");
        QLineEdit* max = numberBox(f.box(f.cls(2)), "txtMax");
        QVERIFY(min && max);
        QVERIFY(!f.cls(2)->MinField()->IsValid());
        QVERIFY(min->toolTip().contains(QStringLiteral("Zu viel: 1000 kbit")));
        QCOMPARE(min->accessibleDescription(), min->toolTip());

        const QString target = step.section(u'=', 0, 0);
        const QString value = step.section(u'=', 1);
        QoSClass* c = classes.value(target.section(u'.', 0, 0));
        if (target == u"add")
            f.page->AddClass(
                f.cls(1), {.minBandwidth = value, .maxBandwidth = value, .direction = f.page->Direction()});
        else if (target.endsWith(QStringLiteral(".min")))
            c->SetQoSMinBandWidth(value);
        else if (target.endsWith(QStringLiteral(".max")))
            c->SetQoSMaxBandWidth(value);
        else
            c->SetCaption(value);
        f.settle();

        QCOMPARE(!f.cls(2)->MinField()->IsValid(), red);
        const QString expected = ExplainBandwidth(*f.cls(2), BandwidthSide::Minimum);
        QCOMPARE(expected.isEmpty(), !red);
        QCOMPARE(min->toolTip(), expected);
        QCOMPARE(min->accessibleDescription(), expected);
        // The maximum was valid throughout and says nothing.
        QCOMPARE(max->toolTip(), QString());
        QCOMPARE(max->accessibleDescription(), QString());
    }

    // Boxes far from the visible part are made when the page scrolls to them: such a box
    // must know at once why its field is red.
    void aBoxMadeLaterExplainsAtOnce()
    {
        PageViewFixture f(QString(40, u'C').split(QString(), Qt::SkipEmptyParts).join(u' '));
        QoSClass* last = f.cls(40);
        QVERIFY(last);
        QVERIFY(!f.box(last));
        f.doc.Common1()->SetQoSInternetBandDown(QStringLiteral("1000kbit"));
        last->SetQoSMinBandWidth(QStringLiteral("1500kbit"));
        f.settle();
        QVERIFY(!last->MinField()->IsValid());
        f.view->ensureVisible(last);
        f.settle();
        QLineEdit* min = numberBox(f.box(last), "txtMin");
        QVERIFY(min);
        QVERIFY(min->toolTip().contains(QStringLiteral("aus 40 Klassen")));
        QCOMPARE(min->toolTip(), ExplainBandwidth(*last, BandwidthSide::Minimum));
        QCOMPARE(min->accessibleDescription(), min->toolTip());
    }
};

QTEST_MAIN(TestBandwidthTips)
#include "tst_bandwidthtips.moc"
