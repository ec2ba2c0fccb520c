#include "inputs/optionfield.h"
#include "inputs/priofield.h"
#include "inputs/typefield.h"

#include <QSignalSpy>
#include <QTest>

using KeyResult = OptionField::KeyResult;
Q_DECLARE_METATYPE(OptionField::KeyResult)

class TestChoiceFields : public QObject
{
    Q_OBJECT
private slots:
    void prioStep_data()
    {
        // clang-format off
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("delta");
        QTest::addColumn<QString>("after");
        QTest::newRow("up") << "1" << +1 << "2";
        QTest::newRow("3 wraps to 0") << "3" << +1 << "0";
        QTest::newRow("0 wraps to 3") << "0" << -1 << "3";
        QTest::newRow("empty up") << "" << +1 << "1";
        QTest::newRow("out of range folds") << "7" << +1 << "0";
        QTest::newRow("half rounds to even") << "2.5" << +1 << "0";
        QTest::newRow("sign of the remainder kept") << "-6" << +1 << "-1";
        QTest::newRow("absurd number") << "1e300" << -1 << "0";
        QTest::newRow("too long for a number") << QString(400, u'9') << +1 << "1";
        // clang-format on
    }
    void prioStep()
    {
        QFETCH(QString, value);
        QFETCH(int, delta);
        PrioField f;
        f.SetValue(value);
        delta > 0 ? f.Increment() : f.Decrement();
        QTEST(f.Value(), "after");
    }

    // A paste takes only what typing could, and changes the value once; the priority typed
    // character by character ends at the same value.
    void pasted_data()
    {
        // clang-format off
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("after");
        QTest::newRow("prio: letters after a digit dropped") << "prio" << "0" << "1hello" << "1";
        QTest::newRow("prio: the last digit wins") << "prio" << "0" << "2 1" << "1";
        QTest::newRow("prio: steps from what was typed before") << "prio" << "0" << "2+" << "3";
        QTest::newRow("prio: a sign steps, then the digit replaces") << "prio" << "2" << "-1" << "1";
        QTest::newRow("prio: minus steps down") << "prio" << "1" << "-" << "0";
        QTest::newRow("prio: nothing typable keeps the value") << "prio" << "2" << "7x'\n" << "2";
        QTest::newRow("type: a choice") << "type" << "" << " server\n" << "server";
        QTest::newRow("type: no choice") << "type" << "client" << "Server" << "client";
        QTest::newRow("type: a choice and more") << "type" << "client" << "server'" << "client";
        QTest::newRow("option: a choice") << "option" << "ACK" << "TOSMR" << "TOSMR";
        QTest::newRow("option: two choices are none") << "option" << "ACK" << "ICMP,TOSMD" << "ACK";
        // clang-format on
    }
    void pasted()
    {
        QFETCH(QString, field);
        QFETCH(QString, value);
        QFETCH(QString, text);
        QFETCH(QString, after);
        int changes = 0;
        QString result;
        if (field == u"prio") {
            PrioField f;
            f.SetValue(value);
            QSignalSpy spy(&f, &PrioField::Change);
            f.Paste(text);
            changes = int(spy.count());
            result = f.Value();
            PrioField typed;
            typed.SetValue(value);
            for (const QChar c : text)
                typed.TypeCharacter(c);
            QCOMPARE(typed.Value(), after);
        } else if (field == u"type") {
            TypeField f;
            f.SetText(value);
            QSignalSpy spy(&f, &TypeField::Change);
            f.Paste(text);
            changes = int(spy.count());
            result = f.Text();
        } else {
            OptionField f;
            f.SetText(value);
            QSignalSpy spy(&f, &OptionField::Change);
            f.Paste(text);
            changes = int(spy.count());
            result = f.Text();
        }
        QCOMPARE(result, after);
        QCOMPARE(changes, after == value ? 0 : 1);
    }

    void prioClearKeys()
    {
        for (const int key : {Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Space})
            QVERIFY(PrioField::ClearsOnKey(key));
        QVERIFY(!PrioField::ClearsOnKey(Qt::Key_0));
    }

    // The type and the option are choices: no typed character enters them, while the control
    // codes of the editing keys (Backspace, Ctrl+V) and keys that type nothing pass.
    void choicesTakeNoTypedCharacter_data()
    {
        QTest::addColumn<QChar>("typed");
        QTest::addColumn<bool>("taken");
        // clang-format off
        QTest::newRow("a blank") << QChar(u' ') << false;
        QTest::newRow("an umlaut") << QChar(u'ü') << false;
        QTest::newRow("Backspace") << QChar(8) << true;
        QTest::newRow("a key that types nothing") << QChar() << true;
        // clang-format on
    }
    void choicesTakeNoTypedCharacter()
    {
        QFETCH(QChar, typed);
        QTEST(TypeField::TakesCharacter(typed), "taken");
        QTEST(OptionField::TakesCharacter(typed), "taken");
    }

    void optionKeys_data()
    {
        // clang-format off
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<QString>("after");
        QTest::addColumn<KeyResult>("result");
        const Qt::KeyboardModifiers none = Qt::NoModifier, alt = Qt::AltModifier, shift = Qt::ShiftModifier,
                                    keypad = Qt::KeypadModifier;
        const int up = Qt::Key_Up, down = Qt::Key_Down, left = Qt::Key_Left, right = Qt::Key_Right;
        QTest::newRow("down") << "ACK" << down << none << "ICMP" << KeyResult::Stepped;
        QTest::newRow("right") << "ICMP" << right << none << "TOSMD" << KeyResult::Stepped;
        QTest::newRow("left") << "ICMP" << left << none << "ACK" << KeyResult::Stepped;
        QTest::newRow("up at first stays") << "ACK" << up << none << "ACK" << KeyResult::Stepped;
        QTest::newRow("down at last stays") << "TOSMC" << down << none << "TOSMC" << KeyResult::Stepped;
        QTest::newRow("empty down") << "" << down << none << "TOSMC" << KeyResult::Stepped;
        QTest::newRow("unknown text up") << "ack" << up << none << "TOSMC" << KeyResult::Stepped;
        QTest::newRow("keypad arrow") << "ACK" << down << keypad << "ICMP" << KeyResult::Stepped;
        QTest::newRow("alt opens menu") << "ACK" << down << alt << "ACK" << KeyResult::OpenMenu;
        QTest::newRow("shift does nothing") << "ACK" << down << shift << "ACK" << KeyResult::None;
        QTest::newRow("alt+shift does nothing") << "ACK" << down << (alt | shift) << "ACK" << KeyResult::None;
        QTest::newRow("letter empties") << "ACK" << int(Qt::Key_T) << none << "" << KeyResult::Emptied;
        QTest::newRow("digit empties") << "ACK" << int(Qt::Key_5) << none << "" << KeyResult::Emptied;
        QTest::newRow("delete empties") << "ACK" << int(Qt::Key_Delete) << none << "" << KeyResult::Emptied;
        QTest::newRow("backspace left alone") << "ACK" << int(Qt::Key_Backspace) << none << "ACK" << KeyResult::None;
        // clang-format on
    }
    void optionKeys()
    {
        QFETCH(QString, text);
        QFETCH(int, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        OptionField f;
        f.SetText(text);
        QTEST(f.KeyDown(key, modifiers), "result");
        QTEST(f.Text(), "after");
    }
};

QTEST_GUILESS_MAIN(TestChoiceFields)
#include "tst_choicefields.moc"
