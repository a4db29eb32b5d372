// SPDX-License-Identifier: MIT
#include "apptestcase.h"

// Which keys press which button, whatever has the focus; the styles of buttons and frame.
class TestKeyboard : public AppTestCase
{
    Q_OBJECT

private slots:
    void keysFollowTheMode_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<QString>("button");
        QTest::addColumn<bool>("isEnabled");
        QTest::addColumn<int>("code");           // 0: the key does nothing.
        for (const int mode : {0, 1, 2, 3, 9}) { // 9: as only a file edited by hand can have.
            const bool isStudio = mode == 2 || mode == 3;
            const auto row = [mode](Qt::Key key, const char* button, bool isEnabled, int code) {
                QTest::addRow("%s, mode %d", button, mode)
                    << mode << key << button << isEnabled << code;
            };
            row(Qt::Key_0, "Key 0", true, 0x52);
            row(Qt::Key_Tab, "Key Tab", !isStudio, mode < 2 ? 0x30 : 0);
            row(Qt::Key_Space, "Key Space", !isStudio, mode < 2 ? 0x31 : 0);
            row(Qt::Key_Enter, "Key Enter", isStudio, isStudio ? 0x4C : 0);
        }
    }

    void keysFollowTheMode()
    {
        QFETCH(int, mode);
        QFETCH(Qt::Key, key);
        QFETCH(QString, button);
        QFETCH(bool, isEnabled);
        QFETCH(int, code);
        EditData data = sampleData();
        data.Mode = mode;
        data.ShowKeyButton = mode % 2 == 0; // A hidden button works all the same.
        const WindowDriver velt(data);
        const QPushButton* pressed = velt.button(button);
        QCOMPARE(pressed->isVisible(), data.ShowKeyButton);
        QCOMPARE(pressed->isEnabled(), isEnabled);
        QVERIFY(pressed->styleSheet().contains(isEnabled ? "#767471" : "#b3b0ab"));
        for (const Qt::Key other : {Qt::Key_Return, Qt::Key_Left, Qt::Key_Right, Qt::Key_L}) {
            QTest::keyClick(velt.table, other);
        }
        QTest::keyClick(velt.table, key);
        QCOMPARE(pressed->isDown(), code != 0);
        QTRY_VERIFY(!pressed->isDown());
        QCOMPARE(Recording::takeEvents(),
                 code == 0 ? Recording::Events()
                           : Recording::press(mode / 2 == 1 ? kStudioOne : kProTools, code));
        QCOMPARE(velt.selectedRow(), 0);
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
