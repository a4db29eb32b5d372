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
            const WindowDriver velt(data);
            for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Left, Qt::Key_Right, Qt::Key_L}) {
                QTest::keyClick(velt.table, key);
            }
            for (const auto& [key, name, code] : keys) {
                const bool works = name == "Key 0" || (name == "Key Enter") == (mode > 1);
                const QPushButton* button = velt.button(name);
                QCOMPARE(button->isEnabled(), works);
                QVERIFY(button->styleSheet().contains(works ? "#767471" : "#b3b0ab"));
                QVERIFY(!button->isDown());
                QTest::keyClick(velt.table, key);
                QCOMPARE(button->isDown(), works);
                QTRY_VERIFY(!button->isDown());
                const int daw = mode > 1 ? kStudioOne : kProTools;
                QCOMPARE(Recording::takeEvents(),
                         works ? Recording::press(daw, code) : Recording::Events());
            }
            QCOMPARE(velt.selectedRow(), 0);
        }
    }

    void cueColumnTakesKeysUntilARunIsOn()
    {
        const WindowDriver velt;
        velt.select(2, 1);
        QTest::keyClick(velt.table, Qt::Key_0);
        QVERIFY(velt.openEditor());
        QVERIFY(!velt.button("Key 0")->isDown());
        QTest::keyClicks(velt.openEditor(), " 7 0");
        QTest::keyClick(velt.openEditor(), Qt::Key_Enter);
        QTRY_COMPARE(velt.table->item(2, 1)->text(), QString("0 7 0"));
        QVERIFY(Recording::takeEvents().isEmpty());

        // Up and Down still move, and Tab stays the DAW's.
        velt.select(2, 1);
        QTest::keyClick(velt.table, Qt::Key_Down);
        QCOMPARE(velt.selectedRow(), 3);
        QTest::keyClick(velt.table, Qt::Key_Up);
        QCOMPARE(velt.selectedRow(), 2);
        QTest::keyClick(velt.table, Qt::Key_Tab);
        QVERIFY(velt.button("Key Tab")->isDown());
        QTRY_VERIFY(!velt.button("Key Tab")->isDown());

        velt.press("LOCATE");
        velt.select(3, 1);
        QTest::keyClick(velt.table, Qt::Key_0);
        QVERIFY(velt.button("Key 0")->isDown());
        QTRY_VERIFY(!velt.button("Key 0")->isDown());
    }

    void focusedControlsIgnoreKeys()
    {
        const WindowDriver velt;
        velt.mode->setFocus();
        for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_M}) {
            QTest::keyClick(velt.mode, key);
        }
        QCOMPARE(velt.mode->currentText(), QString("AutoLocate"));
        velt.press("LOCATE");
        velt.button("Reset")->setFocus();
        QTest::keyClick(velt.button("Reset"), Qt::Key_Space);
        QVERIFY(velt.isRunning());
        QVERIFY(velt.button("Key Space")->isDown());

        // The Edit button passes the focus on.
        velt.press("Reset");
        velt.mode->setFocus();
        velt.button("Edit")->setFocus(Qt::TabFocusReason);
        QVERIFY(velt.table->hasFocus());
    }

    void frameShowsTheFocus()
    {
        const WindowDriver velt;
        QWidget* const widgets[] = {velt.table, velt.mode, velt.shows, velt.button("Pref."),
                                    velt.button("Key 0")};
        for (QWidget* widget : widgets) {
            widget->setFocus();
            QVERIFY(widget->hasFocus());
            QVERIFY(velt.frame->styleSheet().contains("background-color:#ffcc00;"));
        }
        QWidget elsewhere;
        elsewhere.show();
        elsewhere.activateWindow();
        QTRY_VERIFY(velt.frame->styleSheet().contains("background-color:#4B4B4B;"));
    }
};

VELT_TEST_MAIN(TestKeyboard)
#include "tst_keyboard.moc"
