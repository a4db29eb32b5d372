// SPDX-License-Identifier: MIT
#include "apptestcase.h"

// Which keys press which button, whatever has the focus; the styles of buttons and frame.
class TestKeyboard : public AppTestCase
{
    Q_OBJECT

private slots:
    void keysAndButtonsFollowTheMode()
    {
        const std::tuple<Qt::Key, QString, int> keys[] = {{Qt::Key_0, "Key 0", 0x52},
                                                          {Qt::Key_Tab, "Key Tab", 0x30},
                                                          {Qt::Key_Space, "Key Space", 0x31},
                                                          {Qt::Key_Enter, "Key Enter", 0x4C}};
        for (const int mode : {0, 1, 2, 3}) {
            EditData data = sampleData();
            data.Mode = mode;
            const Operator op(data);
            for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Left, Qt::Key_Right, Qt::Key_L}) {
                QTest::keyClick(op.table, key);
            }
            for (const auto& [key, name, code] : keys) {
                const bool works = name == "Key 0" || (name == "Key Enter") == (mode > 1);
                const QPushButton* button = op.button(name);
                QCOMPARE(button->isEnabled(), works);
                QVERIFY(button->styleSheet().contains(works ? "#767471" : "#b3b0ab"));
                QVERIFY(!button->isDown());
                QTest::keyClick(op.table, key);
                QCOMPARE(button->isDown(), works);
                QTRY_VERIFY(!button->isDown());
                const int daw = mode > 1 ? kStudioOne : kProTools;
                QCOMPARE(Recording::takeEvents(),
                         works ? Recording::press(daw, code) : Recording::Events());
            }
            QCOMPARE(op.selectedRow(), 0);
        }
    }

    void cueColumnTakesKeysUntilARunIsOn()
    {
        const Operator op;
        op.select(2, 1);
        QTest::keyClick(op.table, Qt::Key_0);
        QVERIFY(op.openEditor());
        QVERIFY(!op.button("Key 0")->isDown());
        QTest::keyClicks(op.openEditor(), " 7 0");
        QTest::keyClick(op.openEditor(), Qt::Key_Enter);
        QTRY_COMPARE(op.table->item(2, 1)->text(), QString("0 7 0"));
        QVERIFY(Recording::takeEvents().isEmpty());

        // Up and Down still move, and Tab stays the DAW's.
        op.select(2, 1);
        QTest::keyClick(op.table, Qt::Key_Down);
        QCOMPARE(op.selectedRow(), 3);
        QTest::keyClick(op.table, Qt::Key_Up);
        QCOMPARE(op.selectedRow(), 2);
        QTest::keyClick(op.table, Qt::Key_Tab);
        QVERIFY(op.button("Key Tab")->isDown());
        QTRY_VERIFY(!op.button("Key Tab")->isDown());

        op.press("LOCATE");
        op.select(3, 1);
        QTest::keyClick(op.table, Qt::Key_0);
        QVERIFY(op.button("Key 0")->isDown());
        QTRY_VERIFY(!op.button("Key 0")->isDown());
    }

    void focusedControlsIgnoreKeys()
    {
        const Operator op;
        op.mode->setFocus();
        for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_M}) {
            QTest::keyClick(op.mode, key);
        }
        QCOMPARE(op.mode->currentText(), QString("AutoLocate"));
        op.press("LOCATE");
        op.button("Reset")->setFocus();
        QTest::keyClick(op.button("Reset"), Qt::Key_Space);
        QVERIFY(op.isRunning());
        QVERIFY(op.button("Key Space")->isDown());

        // The Edit button passes the focus on.
        op.press("Reset");
        op.mode->setFocus();
        op.button("Edit")->setFocus(Qt::TabFocusReason);
        QVERIFY(op.table->hasFocus());
    }

    void frameShowsTheFocus()
    {
        const Operator op;
        QWidget* const widgets[] = {op.table, op.mode, op.shows, op.button("Pref."),
                                    op.button("Key 0")};
        for (QWidget* widget : widgets) {
            widget->setFocus();
            QVERIFY(widget->hasFocus());
            QVERIFY(op.frame->styleSheet().contains("background-color:#ffcc00;"));
        }
        QWidget elsewhere;
        elsewhere.show();
        elsewhere.activateWindow();
        QTRY_VERIFY(op.frame->styleSheet().contains("background-color:#4B4B4B;"));
    }
};

VELT_TEST_MAIN(TestKeyboard)
#include "tst_keyboard.moc"
