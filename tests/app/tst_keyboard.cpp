// SPDX-License-Identifier: MIT
#include "apptestcase.h"

#include <QLayout>

// Which keys press which button, whatever has the focus; the styles of buttons and frame.
class TestKeyboard : public AppTestCase
{
    Q_OBJECT

private slots:
    void bindings_data();
    void bindings();
    void cueColumnTakesKeysUntilARunIsOn();
    void arrowsMoveInEveryColumn();
    void focusedControlsIgnoreKeys();
    void frameShowsTheFocus();
    void buttonsFollowTheMode();
    void checkBoxRoutesKeysToo();
};

void TestKeyboard::bindings_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("pressed");

    const QString none;
    QTest::newRow("space, Pro Tools bars") << 0 << int(Qt::Key_Space) << "Key Space";
    QTest::newRow("space, Pro Tools marker") << 1 << int(Qt::Key_Space) << "Key Space";
    QTest::newRow("space, Studio One") << 2 << int(Qt::Key_Space) << none;
    QTest::newRow("tab, Pro Tools") << 1 << int(Qt::Key_Tab) << "Key Tab";
    QTest::newRow("tab, Studio One") << 3 << int(Qt::Key_Tab) << none;
    QTest::newRow("keypad enter, Pro Tools") << 0 << int(Qt::Key_Enter) << none;
    QTest::newRow("keypad enter, Studio One") << 3 << int(Qt::Key_Enter) << "Key Enter";
    QTest::newRow("return") << 2 << int(Qt::Key_Return) << none;
    QTest::newRow("0, Pro Tools") << 0 << int(Qt::Key_0) << "Key 0";
    QTest::newRow("0, Studio One") << 2 << int(Qt::Key_0) << "Key 0";
    QTest::newRow("left") << 0 << int(Qt::Key_Left) << none;
    QTest::newRow("letter") << 0 << int(Qt::Key_L) << none;
}

void TestKeyboard::bindings()
{
    QFETCH(int, mode);
    QFETCH(int, key);
    QFETCH(QString, pressed);
    EditData data = sampleData();
    data.Mode = mode;
    const Operator op(data);

    QTest::keyClick(op.table, static_cast<Qt::Key>(key));

    const QHash<QString, int> codes{
        {"Key 0", 0x52}, {"Key Tab", 0x30}, {"Key Space", 0x31}, {"Key Enter", 0x4C}};
    for (auto code = codes.begin(); code != codes.end(); ++code) {
        QCOMPARE(op.button(code.key())->isDown(), code.key() == pressed);
    }
    QCOMPARE(op.selectedRow(), 0);
    if (!pressed.isEmpty()) {
        QTRY_VERIFY(!op.button(pressed)->isDown());
        QCOMPARE(Recording::takeEvents(),
                 Recording::press(mode < 2 ? kProTools : kStudioOne, codes[pressed]));
    }
}

void TestKeyboard::cueColumnTakesKeysUntilARunIsOn()
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

    // Tab stays the DAW's.
    op.select(2, 1);
    QTest::keyClick(op.table, Qt::Key_Tab);
    QVERIFY(op.button("Key Tab")->isDown());
    QTRY_VERIFY(!op.button("Key Tab")->isDown());

    op.press("LOCATE");
    op.select(3, 1);
    QTest::keyClick(op.table, Qt::Key_0);
    QVERIFY(op.button("Key 0")->isDown());
    QTRY_VERIFY(!op.button("Key 0")->isDown());
}

void TestKeyboard::arrowsMoveInEveryColumn()
{
    const Operator op;
    for (const int column : {0, 1}) {
        op.select(0, column);
        QTest::keyClick(op.table, Qt::Key_Down);
        QCOMPARE(op.selectedRow(), 1);
        QTest::keyClick(op.table, Qt::Key_Up);
        QCOMPARE(op.selectedRow(), 0);
    }
}

void TestKeyboard::focusedControlsIgnoreKeys()
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

void TestKeyboard::frameShowsTheFocus()
{
    const Operator op;
    const QString on =
        " QGroupBox {background-color:#ffcc00;border-style: solid;border-radius: 10;} ";
    const QString off =
        " QGroupBox {background-color:#4B4B4B;border-style: solid;border-radius: 10;} ";
    QCOMPARE(op.frame->styleSheet(), on);
    for (QWidget* widget :
         {static_cast<QWidget*>(op.mode), static_cast<QWidget*>(op.shows),
          static_cast<QWidget*>(op.button("Pref.")), static_cast<QWidget*>(op.button("Key 0"))}) {
        widget->setFocus();
        QVERIFY(widget->hasFocus());
        QCOMPARE(op.frame->styleSheet(), on);
    }
    QWidget elsewhere;
    elsewhere.show();
    elsewhere.activateWindow();
    QTRY_COMPARE(op.frame->styleSheet(), off);
}

void TestKeyboard::buttonsFollowTheMode()
{
    const QString enabled =
        " QPushButton:hover {background-color:#C4EFEF;}  QPushButton:pressed "
        "{background-color:#ff6600;border:1px solid #cc0000;}  QPushButton {height: "
        "30px;background-color:#767471;border-style: solid;border-radius: 10;} ";
    QString disabled = enabled;
    disabled.replace("#767471", "#b3b0ab");
    for (const int mode : {0, 1, 2, 3, 4, -7}) {
        EditData data = sampleData();
        data.Mode = mode;
        const Operator op(data);
        const bool isStudioOne = mode == 2 || mode == 3;
        for (const char* name : {"Key Tab", "Key Space", "Key Enter"}) {
            const bool expected = (name == QString("Key Enter")) == isStudioOne;
            QCOMPARE(op.button(name)->isEnabled(), expected);
            QCOMPARE(op.button(name)->styleSheet(), expected ? enabled : disabled);
        }
    }
    EditData data = sampleData();
    data.ShowKeyButton = false;
    const Operator op(data);
    QVERIFY(op.frame->isVisible());
    for (const char* name :
         {"LOCATE", "DAW PLAY", "DAW STOP", "Key 0", "Key Tab", "Key Space", "Key Enter"}) {
        QVERIFY2(!op.button(name)->isVisible(), name);
    }
}

void TestKeyboard::checkBoxRoutesKeysToo()
{
    Operator op;
    auto* box = new ExCheckBox(&op.window);
    op.window.centralWidget()->layout()->addWidget(box);
    box->show();
    box->setFocus();
    QVERIFY(box->hasFocusFlag());
    QTest::keyClick(box, Qt::Key_0);
    QVERIFY(!box->isChecked());
    QVERIFY(op.button("Key 0")->isDown());
    op.table->setFocus();
    QVERIFY(!box->hasFocusFlag());
}

VELT_TEST_MAIN(TestKeyboard)
#include "tst_keyboard.moc"
