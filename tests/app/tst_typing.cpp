// SPDX-License-Identifier: MIT
#include "apptestcase.h"
#include "datafiles.h"
#include "modalscript.h"

#include <QInputMethodEvent>
#include <QTimer>

#include <functional>

namespace {

QByteArray setListFile()
{
    QFile file(setListFilePath());
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

constexpr int kRow = 2; // Its cue is typed; row 1 is a space, rows 2 and 3 are songs.
constexpr int kCue = 1;

using Act = std::function<void(const Operator&)>;

} // namespace
Q_DECLARE_METATYPE(Act)

// Cells that are open for typing, while the operator's feet and the DAW go on.
class TestTyping : public AppTestCase
{
    Q_OBJECT

private slots:
    void staysOpen_data()
    {
        QTest::addColumn<Act>("act");
        QTest::addColumn<int>("selected"); // The row, afterwards.
        QTest::addColumn<QStringList>("looks");
        const auto click = [](const QString& name) {
            return Act([name](const Operator& op) { op.press(name); });
        };
        const auto note = [](int number, const QString& button) {
            return Act([number, button](const Operator& op) {
                op.controllerNote(number);
                QTRY_VERIFY(!op.button(button)->isDown());
            });
        };
        QTest::newRow("LOCATE by mouse") << click("LOCATE") << kRow << kSecondSent;
        QTest::newRow("LOCATE by foot switch") << note(31, "LOCATE") << kRow << kSecondSent;
        QTest::newRow("DAW PLAY") << note(33, "DAW PLAY") << kRow << kFirstSent;
        QTest::newRow("DAW STOP") << note(35, "DAW STOP") << kRow << kFirstSent;
        QTest::newRow("key button") << click("Key Space") << kRow << kFirstSent;
        QTest::newRow("Reset") << click("Reset") << kRow
                               << QStringList{"sent", "space", "plain", "plain"};
        QTest::newRow("Song UP") << note(28, "LOCATE") << kRow - 1 << kFirstSent;
        QTest::newRow("Song DOWN") << note(29, "LOCATE") << kRow + 1 << kFirstSent;
        QTest::newRow("AutoLocate of the row")
            << Act([](const Operator& op) { op.endOfSong(); }) << kRow << kSecondSent;
        QTest::newRow("AutoLocate twice") << Act([](const Operator& op) {
            op.endOfSong();
            op.endOfSong();
        }) << kRow << QStringList{"plain", "space", "plain", "sent"};
        QTest::newRow("AutoStop") << Act([](const Operator& op) {
            op.mode->setCurrentText("AutoStop");
            op.endOfSong();
            QTRY_VERIFY(!op.button("DAW STOP")->isDown());
        }) << kRow << kFirstSent;
        QTest::newRow("a box") << Act([](const Operator& op) {
            const_cast<Operator&>(op).window.setPreferenceData();
            Recording::setApplications({"Finder"});
            ModalScript script;
            script.answer(
                {QMessageBox::Warning, {}, "Process [Pro Tools] not found", QMessageBox::Ok},
                QMessageBox::Ok);
            op.press("DAW PLAY");
            const_cast<Operator&>(op).window.activateWindow();
            QTRY_VERIFY(op.window.isActiveWindow());
        }) << kRow << kFirstSent;
    }

    void staysOpen()
    {
        QFETCH(Act, act);
        const Operator op;
        op.press("LOCATE");
        QLineEdit* editor = op.edit(kRow, kCue);
        QTest::keyClicks(editor, "wait for Mara");
        editor->setSelection(13, -4); // "Mara", from its end
        const QByteArray file = setListFile();
        Recording::takeEvents();
        act(op);
        Recording::takeEvents();
        QTEST(op.selectedRow(), "selected");
        QTEST(op.looks(), "looks");
        QVERIFY(op.openEditor());
        QCOMPARE(op.window.focusWidget(), op.openEditor());
        QCOMPARE(op.table->item(kRow, kCue)->text(), QString());
        QCOMPARE(setListFile(), file);

        QTest::keyClicks(op.openEditor(), "Jo 0"); // In place of what is selected.
        QCOMPARE(op.openEditor()->text(), QString("wait for Jo 0"));
        QTest::keyClick(op.openEditor(), Qt::Key_Escape);
        QVERIFY(!op.openEditor());
        QCOMPARE(op.table->item(kRow, kCue)->text(), QString());
        QCOMPARE(op.table->currentRow(), op.selectedRow());
        QVERIFY(op.table->hasFocus());
        QVERIFY(Recording::takeEvents().isEmpty());
        QCOMPARE(setListFile(), file);
    }

    void keyGoesNoFurther_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<int>("mode");
        for (const int mode : {0, 2}) {
            const auto row = [mode](const char* name, int key, Qt::KeyboardModifiers modifiers) {
                QTest::addRow("%s, mode %d", name, mode) << key << modifiers << mode;
            };
            row("Return", Qt::Key_Return, {});
            row("Enter", Qt::Key_Enter, Qt::KeypadModifier);
            row("Ctrl+Enter", Qt::Key_Enter, Qt::ControlModifier);
            row("Shift+Tab", Qt::Key_Backtab, Qt::ShiftModifier);
            row("Tab", Qt::Key_Tab, {});
            row("Escape", Qt::Key_Escape, {});
            row("Ctrl+Space", Qt::Key_Space, Qt::ControlModifier);
            row("Ctrl+0", Qt::Key_0, Qt::ControlModifier);
        }
    }

    void keyGoesNoFurther()
    {
        QFETCH(int, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        QFETCH(int, mode);
        EditData data = sampleData();
        data.Mode = mode;
        const Operator op(data);
        for (const int column : {0, kCue}) { // The name of a space, and its cue.
            QLineEdit* editor = op.edit(1, column);
            QTest::keyClick(editor, Qt::Key(key), modifiers);
            // The key is still held down.
            QWidget* receiver = op.window.focusWidget();
            QKeyEvent repeat(QEvent::KeyPress, key, modifiers, {}, true);
            QCoreApplication::sendEvent(receiver, &repeat);
            for (const char* name : {"Key 0", "Key Tab", "Key Space", "Key Enter"}) {
                QVERIFY2(!op.button(name)->isDown(), name);
            }
        }
    }

    void tabGoesToTheNextCellThatCanBeEdited()
    {
        const Operator op;
        QTest::keyClick(op.edit(0, kCue), Qt::Key_Tab);
        QVERIFY(op.openEditor()); // The name of the space.
        QCOMPARE(op.table->currentRow(), 1);
        QCOMPARE(op.table->currentColumn(), 0);
        QTest::keyClick(op.openEditor(), Qt::Key_Tab);
        QTest::keyClick(op.openEditor(), Qt::Key_Tab);
        QCOMPARE(op.table->currentRow(), 2);
        QCOMPARE(op.table->currentColumn(), kCue); // Not the title of the song.
        QTest::keyClick(op.openEditor(), Qt::Key_Tab);
        QTest::keyClicks(op.openEditor(), "the last");
        QTest::keyClick(op.openEditor(), Qt::Key_Tab);
        QVERIFY(!op.openEditor());
        QVERIFY(op.table->hasFocus());
        QVERIFY(setListFile().contains("the last"));
    }

    void lineBreaksBecomeBlanks()
    {
        const Operator op;
        QLineEdit* editor = op.edit(0, kCue);
        editor->setText("one\r\ntwo\nthree");
        QTest::keyClick(editor, Qt::Key_Return);
        QCOMPARE(op.table->item(0, kCue)->text(), QString("one two three"));
        QVERIFY(setListFile().contains("one two three"));
    }

    void composedTextOpensNoCell()
    {
        const Operator op;
        op.select(kRow, kCue);
        QVERIFY(!op.table->testAttribute(Qt::WA_InputMethodEnabled));
        QInputMethodEvent composed;
        composed.setCommitString("にほん");
        QCoreApplication::sendEvent(op.table, &composed);
        QVERIFY(!op.openEditor());
        QVERIFY(op.edit(kRow, kCue)->testAttribute(Qt::WA_InputMethodEnabled));
    }

    void closingStoresTheCell_data()
    {
        QTest::addColumn<bool>("asked");
        QTest::newRow("close button") << true;
        QTest::newRow("end of the session") << false;
    }

    void closingStoresTheCell()
    {
        QFETCH(bool, asked);
        Operator op;
        QTest::keyClicks(op.edit(kRow, kCue), "last words");
        QTimer::singleShot(0, &op.window,
                           [&] { asked ? void(op.window.close()) : op.window.quit(); });
        QCoreApplication::exec();
        QVERIFY(setListFile().contains("last words"));
    }

    void endOfTheSessionSavesWhatTheEditorHas()
    {
        Operator op;
        ModalScript script;
        script.expect([&op](QWidget* editor) {
            editor->findChild<QTableWidget*>("tableSongList")->item(0, 0)->setText("Renamed");
            op.window.quit();
        });
        QTimer::singleShot(0, &op.window, [&op] { op.press("Edit"); });
        QCoreApplication::exec();
        QVERIFY(setListFile().contains("Renamed"));
    }

    void scrollingWaits()
    {
        EditData data = sampleData();
        data.ShowList[0].SetList.assign(60, data.ShowList[0].SetList[0]);
        Operator op(data);
        op.window.resize(500, 500);
        const auto isInView = [&op](int row) {
            return op.table->viewport()->rect().contains(
                op.table->visualItemRect(op.table->item(row, 0)));
        };
        op.press("LOCATE");
        for (int i = 0; i < 40; ++i) {
            op.endOfSong();
        }
        QCOMPARE(op.looks().at(40), QString("sent"));
        for (const int row : {40, 41, 42}) {
            QVERIFY2(isInView(row), qPrintable(QString::number(row)));
        }
        QCOMPARE(op.selectedRow(), 0);

        QLineEdit* editor = op.edit(0, kCue);
        QTRY_VERIFY(isInView(0));
        op.endOfSong();
        QVERIFY(isInView(0));
        QCOMPARE(op.openEditor(), editor);
        QTest::keyClick(editor, Qt::Key_Escape);
        QVERIFY(isInView(43));
    }
};

VELT_TEST_MAIN(TestTyping)
#include "tst_typing.moc"
