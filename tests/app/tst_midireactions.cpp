// SPDX-License-Identifier: MIT
#include "apptestcase.h"
#include "modalscript.h"

#include <functional>

Q_DECLARE_METATYPE(std::function<void(QWidget*)>)

// Notes from the DAW and from the operator's controller. Messages are handed to the window's own
// ports, as if they had arrived there.
class TestMidiReactions : public AppTestCase
{
    Q_OBJECT

private slots:
    void autoLocateToTheEnd()
    {
        const Operator op;
        op.press("LOCATE");
        Recording::takeEvents();
        op.select(1);
        op.mode->setFocus();
        op.endOfSong(36);
        QCOMPARE(Recording::takeEvents(), bar({0x53, 0x52, 0x57}));
        QCOMPARE(op.looks(), kSecondSent);
        QCOMPARE(op.selectedRow(), 1);
        QVERIFY(op.mode->hasFocus());

        op.endOfSong(24);
        QCOMPARE(Recording::takeEvents(), bar({0x55, 0x55}));
        QCOMPARE(op.looks(), (QStringList{"plain", "space", "plain", "sent"}));
        QCOMPARE(op.selectedRow(), 1);
        QVERIFY(!op.isRunning());
    }

    void otherModes()
    {
        const Operator op;
        op.mode->setCurrentText("AutoStop");
        op.endOfSong(); // Without a run nothing happens.
        QVERIFY(!op.button("DAW STOP")->isDown());
        op.press("LOCATE");
        op.endOfSong();
        QVERIFY(op.button("DAW STOP")->isDown());
        QTRY_VERIFY(!op.button("DAW STOP")->isDown());

        op.mode->setCurrentText("Manual"); // The mode can change during a run.
        op.endOfSong();
        QVERIFY(!op.button("DAW STOP")->isDown());
        QVERIFY(op.isRunning());
        QCOMPARE(Recording::takeEvents(), bar({0x53, 0x54}));
        QCOMPARE(op.looks(), kFirstSent);
    }

    void notesThatAreNone()
    {
        const Operator op;
        op.press("LOCATE");
        Recording::takeEvents();
        Operator::receive(op.dawIn, MIDI_NOTE_ON, 24, 0); // No note off.
        Operator::receive(op.dawIn, MIDI_NOTE_ON, 24, 100);
        Operator::receive(op.dawIn, MIDI_NOTE_OFF, 25, 0);
        Operator::receive(op.dawIn, MIDI_CONTROL_CHANGE, 24, 0);
        Operator::receive(op.controllerIn, MIDI_NOTE_ON, 31, 0);
        Operator::receive(op.controllerIn, MIDI_NOTE_OFF, 31, 100);
        Operator::receive(op.controllerIn, MIDI_NOTE_ON, 30, 100);
        QVERIFY(!op.button("LOCATE")->isDown());
        QVERIFY(Recording::takeEvents().isEmpty());
        QCOMPARE(op.looks(), kFirstSent);
    }

    void controllerThroughTheShow()
    {
        EditData data = sampleData();
        data.ShowKeyButton = false;
        Operator op(data);
        QVERIFY(op.frame->isVisible());
        for (const auto* button : op.frame->findChildren<QPushButton*>()) {
            QVERIFY(!button->isVisible()); // They still work.
        }
        op.shows->setFocus();
        op.controllerNote(29);
        op.controllerNote(29);
        QCOMPARE(op.selectedRow(), 2);
        op.controllerNote(28);
        QCOMPARE(op.selectedRow(), 1);
        op.controllerNote(29);

        op.controllerNote(31);
        op.controllerNote(31); // Within the 300 ms: still one click.
        QTRY_COMPARE(op.looks(), kSecondSent);
        QCOMPARE(Recording::takeEvents(), bar({0x53, 0x52, 0x57}));
        for (const auto& [note, name] : {std::pair(33, "DAW PLAY"), std::pair(35, "DAW STOP")}) {
            op.controllerNote(note);
            QVERIFY(op.button(name)->isDown());
            QTRY_VERIFY(!op.button(name)->isDown());
        }

        // Up and Down work on a window that takes no input, as under a modal dialog.
        op.window.setEnabled(false);
        op.controllerNote(29);
        QCOMPARE(op.selectedRow(), 3);
        QVERIFY(Recording::takeEvents().isEmpty());
    }

    void sameNoteTwice()
    {
        EditData data = sampleData();
        data.NoteSongDown = data.NoteLocate = 40;
        const Operator op(data);
        op.controllerNote(40);
        QCOMPARE(op.selectedRow(), 1);
        QVERIFY(!op.button("LOCATE")->isDown());
    }

    // The editor changes the very data that the notes act on.
    void notesWhileTheEditorIsOpen()
    {
        EditData data = sampleData(); // Becomes Opener, talk, Middle, Opener, Closer.
        std::vector<EditDataSet>& setList = data.ShowList[0].SetList;
        setList.insert(setList.begin() + 3, setList[0]);
        const Operator op(data);
        ModalScript script;
        script.expect([&op](QWidget* editor) {
            const auto locateAfterDeleting = [&](int song, int row) {
                editor->findChild<QTableWidget*>("tableSongList")->selectRow(song);
                editor->findChild<QPushButton*>("pushSongListDelete")->click();
                op.table->setCurrentCell(row, 0);
                op.press("LOCATE");
            };
            op.press("LOCATE"); // As the foot switch does.
            QCOMPARE(Recording::takeEvents(), bar({0x53, 0x54}));
            locateAfterDeleting(2, 4); // The last row has no entry any more,
            locateAfterDeleting(1, 2); // and into the next one another song has moved.
            op.endOfSong();
            editor->findChild<QPushButton*>("pushCancel")->click();
        });
        for (int i = 0; i < 2; ++i) {
            script.answerQuestion(
                "This Song is used for SetList. Do you really want to delete this?",
                QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok);
        }
        op.press("Edit");
        QVERIFY(Recording::takeEvents().isEmpty());
        // The window shows the data again as it is now, and the run goes on to the song that is
        // left.
        QVERIFY(op.isRunning());
        QCOMPARE(op.looks(), (QStringList{"sent", "space", "next"}));
    }

    // What the editor can change while it is open, beside a run that the foot switch has begun.
    void runBesideTheEditor_data()
    {
        using Edit = std::function<void(QWidget*)>;
        QTest::addColumn<Edit>("edit");
        QTest::addColumn<QStringList>("looks");
        QTest::addColumn<QString>("show");
        QTest::addColumn<bool>(
            "locates"); // The foot switch still does, before the editor is closed.
        const auto type = [](const char* table, int row, int column, const QString& text) {
            return Edit([=](QWidget* editor) {
                editor->findChild<QTableWidget*>(table)->item(row, column)->setText(text);
            });
        };
        const auto press = [](const char* table, int row, const char* button) {
            return Edit([=](QWidget* editor) {
                editor->findChild<QTableWidget*>(table)->selectRow(row);
                editor->findChild<QPushButton*>(button)->click();
            });
        };
        QTest::newRow("nothing") << Edit([](QWidget*) {}) << kSecondSent << "Friday" << true;
        QTest::newRow("title") << type("tableSongList", 1, 0, "New") << kSecondSent << "Friday"
                               << true;
        QTest::newRow("cue") << type("tableSetList", 2, 1, "New") << kSecondSent << "Friday"
                             << true;
        QTest::newRow("show's title")
            << type("tableShowList", 0, 0, "Sunday") << kSecondSent << "Sunday" << true;
        QTest::newRow("other show's title")
            << type("tableShowList", 1, 0, "Sunday") << kSecondSent << "Friday" << true;
        QTest::newRow("new show") << press("tableShowList", 0, "pushShowListAdd") << kSecondSent
                                  << "Friday" << true;
        QTest::newRow("sent entry moved")
            << press("tableSetList", 2, "pushSetUp")
            << QStringList{"sent", "next", "space", "plain"} << "Friday" << false;
        QTest::newRow("show deleted")
            << press("tableShowList", 0, "pushShowListDelete") << QStringList() << "Empty" << false;
    }

    void runBesideTheEditor()
    {
        QFETCH(std::function<void(QWidget*)>, edit);
        QFETCH(bool, locates);
        const Operator op;
        ModalScript script;
        script.expect([&](QWidget* editor) {
            op.press("LOCATE");
            edit(editor);
            Recording::takeEvents();
            op.endOfSong();
            QCOMPARE(Recording::takeEvents(),
                     locates ? bar({0x53, 0x52, 0x57}) : Recording::Events());
            editor->findChild<QPushButton*>("pushCancel")->click();
        });
        if (qstrcmp(QTest::currentDataTag(), "show deleted") == 0) {
            script.answerQuestion("Do you really want to delete this?",
                                  QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok);
        }
        op.press("Edit");
        QTEST(op.looks(), "looks");
        QTEST(op.shows->currentText(), "show");
        QCOMPARE(op.isRunning(), !op.looks().isEmpty());
    }
};

VELT_TEST_MAIN(TestMidiReactions)
#include "tst_midireactions.moc"
