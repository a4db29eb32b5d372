// SPDX-License-Identifier: MIT
#include "apptestcase.h"
#include "modalscript.h"

#include <QInputMethodEvent>
#include <QTimer>

#include <functional>

namespace {

constexpr int kRow = 2; // Its cue is typed; row 1 is a space, rows 2 and 3 are songs.
constexpr int kCue = 1;

using Act = std::function<void(const WindowDriver&)>;

} // namespace
Q_DECLARE_METATYPE(Act)

// Cells that are open for typing while the foot switch and the DAW act.
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
            return Act([name](const WindowDriver& velt) { velt.press(name); });
        };
        const auto note = [](int number, const QString& button) {
            return Act([number, button](const WindowDriver& velt) {
                velt.controllerNote(number);
                QTRY_VERIFY(!velt.button(button)->isDown());
            });
        };
        QTest::newRow("LOCATE by mouse") << click("LOCATE") << kRow << kSecondSent;
        QTest::newRow("LOCATE by foot switch") << note(31, "LOCATE") << kRow << kSecondSent;
        QTest::newRow("DAW PLAY") << note(33, "DAW PLAY") << kRow << kFirstSent;
        QTest::newRow("DAW STOP") << note(35, "DAW STOP") << kRow << kFirstSent;
        QTest::newRow("key button") << click("Key Space") << kRow << kFirstSent;
        QTest::newRow("Reset") << click("Reset") << kRow
                               << QStringList{"sent", "space", "plain", "plain"};
        QTest::newRow("Reset, nothing is selected") << Act([](const WindowDriver& velt) {
            velt.openEditor()->del();
            velt.press("Reset");
        }) << kRow << QStringList{"sent", "space", "plain", "plain"};
        QTest::newRow("Song UP") << note(28, "LOCATE") << kRow - 1 << kFirstSent;
        QTest::newRow("Song DOWN") << note(29, "LOCATE") << kRow + 1 << kFirstSent;
        QTest::newRow("AutoLocate of the row")
            << Act([](const WindowDriver& velt) { velt.endOfSong(); }) << kRow << kSecondSent;
        QTest::newRow("AutoLocate twice") << Act([](const WindowDriver& velt) {
            velt.endOfSong();
            velt.endOfSong();
        }) << kRow << QStringList{"plain", "space", "plain", "sent"};
        QTest::newRow("AutoStop") << Act([](const WindowDriver& velt) {
            velt.mode->setCurrentText("AutoStop");
            velt.endOfSong();
            QTRY_VERIFY(!velt.button("DAW STOP")->isDown());
        }) << kRow << kFirstSent;
        QTest::newRow("another window") << Act([](const WindowDriver& velt) {
            {
                QWidget other;
                other.show();
                other.activateWindow();
                QTRY_VERIFY(other.isActiveWindow());
            }
            const_cast<WindowDriver&>(velt).window.activateWindow();
            QTRY_VERIFY(velt.window.isActiveWindow());
        }) << kRow << kFirstSent;
        QTest::newRow("a box") << Act([](const WindowDriver& velt) {
            const_cast<WindowDriver&>(velt).window.setPreferenceData();
            Recording::setApplications({"Finder"});
            ModalScript script;
            script.answer(
                {QMessageBox::Warning, {}, "Process [Pro Tools] not found", QMessageBox::Ok},
                QMessageBox::Ok);
            velt.press("DAW PLAY");
            const_cast<WindowDriver&>(velt).window.activateWindow();
            QTRY_VERIFY(velt.window.isActiveWindow());
        }) << kRow << kFirstSent;
    }

    void staysOpen()
    {
        QFETCH(Act, act);
        const WindowDriver velt;
        velt.press("LOCATE");
        QLineEdit* editor = velt.edit(kRow, kCue);
        QTest::keyClicks(editor, "wait for Mara!");
        editor->setSelection(13, -4); // "Mara", from its end
        const QByteArray file = setListFile();
        Recording::takeEvents();
        act(velt);
        Recording::takeEvents();
        QTEST(velt.selectedRow(), "selected");
        QTEST(velt.rowMarks(), "looks");
        QVERIFY(velt.openEditor());
        QCOMPARE(velt.window.focusWidget(), velt.openEditor());
        QCOMPARE(velt.table->item(kRow, kCue)->text(), QString());
        QCOMPARE(setListFile(), file);

        QTest::keyClicks(velt.openEditor(), "Jo 0"); // In place of what is selected.
        QCOMPARE(velt.openEditor()->text(), QString("wait for Jo 0!"));
        QTest::keyClick(velt.openEditor(), Qt::Key_Escape);
        QVERIFY(!velt.openEditor());
        QCOMPARE(velt.table->item(kRow, kCue)->text(), QString());
        QCOMPARE(velt.table->currentRow(), velt.selectedRow());
        QVERIFY(velt.table->hasFocus());
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
        const WindowDriver velt(data);
        const int last = velt.table->rowCount() - 1;
        // A cell that Tab finds no cell after, the name of a space, and its cue.
        for (const auto& [row, column] : {std::pair(last, kCue), {1, 0}, {1, kCue}}) {
            QTest::keyClick(velt.edit(row, column), Qt::Key(key), modifiers);
            // The key is still held down; its repeats come in two ways.
            QWidget* receiver = velt.window.focusWidget();
            QKeyEvent repeat(QEvent::KeyPress, key, modifiers, {}, true);
            QCoreApplication::sendEvent(receiver, &repeat);
            QKeyEvent release(QEvent::KeyRelease, key, modifiers);
            QKeyEvent press(QEvent::KeyPress, key, modifiers);
            release.setTimestamp(1000);
            press.setTimestamp(1000);
            QCoreApplication::sendEvent(receiver, &release);
            QCoreApplication::sendEvent(receiver, &press);
            for (const char* name : {"Key 0", "Key Tab", "Key Space", "Key Enter"}) {
                QVERIFY2(!velt.button(name)->isDown(), name);
            }
        }
    }

    void composedTextOpensNoCell()
    {
        const WindowDriver velt;
        velt.select(kRow, kCue);
        QVERIFY(!velt.table->testAttribute(Qt::WA_InputMethodEnabled));
        QInputMethodEvent composed;
        composed.setCommitString("にほん");
        QCoreApplication::sendEvent(velt.table, &composed);
        QVERIFY(!velt.openEditor());
        QVERIFY(velt.edit(kRow, kCue)->testAttribute(Qt::WA_InputMethodEnabled));
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
        WindowDriver velt;
        QTest::keyClicks(velt.edit(kRow, kCue), "last words");
        QTimer::singleShot(0, &velt.window,
                           [&] { asked ? void(velt.window.close()) : velt.window.quit(); });
        QCoreApplication::exec();
        QVERIFY(setListFile().contains("last words"));
    }

    void endOfTheSessionSavesWhatTheEditorHas()
    {
        WindowDriver velt;
        ModalScript script;
        script.expect([&velt](QWidget* editor) {
            editor->findChild<QTableWidget*>("tableSongList")->item(0, 0)->setText("Renamed");
            velt.window.quit();
        });
        QTimer::singleShot(0, &velt.window, [&velt] { velt.press("Edit"); });
        QCoreApplication::exec();
        QVERIFY(setListFile().contains("Renamed"));
    }

    void scrollingWaits()
    {
        EditData data = sampleData();
        data.ShowList[0].SetList.assign(60, data.ShowList[0].SetList[0]);
        WindowDriver velt(data);
        velt.window.resize(500, 500);
        const auto isInView = [&velt](int row) {
            return velt.table->viewport()->rect().contains(
                velt.table->visualItemRect(velt.table->item(row, 0)));
        };
        velt.press("LOCATE");
        for (int i = 0; i < 40; ++i) {
            velt.endOfSong();
        }
        QCOMPARE(velt.rowMarks().at(40), QString("sent"));
        for (const int row : {40, 41, 42}) {
            QVERIFY2(isInView(row), qPrintable(QString::number(row)));
        }
        QCOMPARE(velt.selectedRow(), 0);

        QLineEdit* editor = velt.edit(0, kCue);
        QTRY_VERIFY(isInView(0));
        velt.endOfSong();
        QVERIFY(isInView(0));
        QCOMPARE(velt.openEditor(), editor);
        QTest::keyClick(editor, Qt::Key_Escape);
        QVERIFY(isInView(43));
    }
};

VELT_TEST_MAIN(TestTyping)
#include "tst_typing.moc"
