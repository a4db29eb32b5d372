// SPDX-License-Identifier: MIT
#include "apptestcase.h"
#include "modalscript.h"

// Notes from the DAW and from the operator's controller. Messages are handed to the window's own
// ports, as if they had arrived there.
class TestMidiReactions : public AppTestCase
{
    Q_OBJECT

private slots:
    void autoLocateToTheEnd()
    {
        const WindowDriver velt;
        velt.press("LOCATE");
        Recording::takeEvents();
        velt.select(1);
        velt.mode->setFocus();
        velt.endOfSong(36);
        QCOMPARE(Recording::takeEvents(), bar({0x53, 0x52, 0x57}));
        QCOMPARE(velt.rowMarks(), kSecondSent);
        QCOMPARE(velt.selectedRow(), 1);
        QVERIFY(velt.mode->hasFocus());

        velt.endOfSong(24);
        QCOMPARE(Recording::takeEvents(), bar({0x55, 0x55}));
        QCOMPARE(velt.rowMarks(), (QStringList{"plain", "space", "plain", "sent"}));
        QCOMPARE(velt.selectedRow(), 1);
        QVERIFY(!velt.isRunning());
    }

    void otherModes()
    {
        const WindowDriver velt;
        velt.mode->setCurrentText("AutoStop");
        velt.endOfSong(); // Without a run nothing happens.
        QVERIFY(!velt.button("DAW STOP")->isDown());
        velt.press("LOCATE");
        velt.endOfSong();
        QVERIFY(velt.button("DAW STOP")->isDown());
        QTRY_VERIFY(!velt.button("DAW STOP")->isDown());

        velt.mode->setCurrentText("Manual"); // The mode can change during a run.
        velt.endOfSong();
        QVERIFY(!velt.button("DAW STOP")->isDown());
        QVERIFY(velt.isRunning());
        QCOMPARE(Recording::takeEvents(), bar({0x53, 0x54}));
        QCOMPARE(velt.rowMarks(), kFirstSent);
    }

    void notesThatAreNone()
    {
        const WindowDriver velt;
        velt.press("LOCATE");
        Recording::takeEvents();
        WindowDriver::receive(velt.dawIn, MIDI_NOTE_ON, 24, 0); // No note off.
        WindowDriver::receive(velt.dawIn, MIDI_NOTE_ON, 24, 100);
        WindowDriver::receive(velt.dawIn, MIDI_NOTE_OFF, 25, 0);
        WindowDriver::receive(velt.dawIn, MIDI_CONTROL_CHANGE, 24, 0);
        WindowDriver::receive(velt.controllerIn, MIDI_NOTE_ON, 31, 0);
        WindowDriver::receive(velt.controllerIn, MIDI_NOTE_OFF, 31, 100);
        WindowDriver::receive(velt.controllerIn, MIDI_NOTE_ON, 30, 100);
        QVERIFY(!velt.button("LOCATE")->isDown());
        QVERIFY(Recording::takeEvents().isEmpty());
        QCOMPARE(velt.rowMarks(), kFirstSent);
    }

    void controllerThroughTheShow()
    {
        EditData data = sampleData();
        data.ShowKeyButton = false;
        WindowDriver velt(data);
        QVERIFY(velt.frame->isVisible());
        for (const auto* button : velt.frame->findChildren<QPushButton*>()) {
            QVERIFY(!button->isVisible()); // They still work.
        }
        velt.shows->setFocus();
        velt.controllerNote(29);
        velt.controllerNote(29);
        QCOMPARE(velt.selectedRow(), 2);
        velt.controllerNote(28);
        QCOMPARE(velt.selectedRow(), 1);
        velt.controllerNote(29);

        velt.controllerNote(31);
        velt.controllerNote(31); // Within the 300 ms: still one click.
        QTRY_COMPARE(velt.rowMarks(), kSecondSent);
        QCOMPARE(Recording::takeEvents(), bar({0x53, 0x52, 0x57}));
        for (const auto& [note, name] : {std::pair(33, "DAW PLAY"), std::pair(35, "DAW STOP")}) {
            velt.controllerNote(note);
            QVERIFY(velt.button(name)->isDown());
            QTRY_VERIFY(!velt.button(name)->isDown());
        }

        // Up and Down work on a window that takes no input, as under a modal dialog.
        velt.window.setEnabled(false);
        velt.controllerNote(29);
        QCOMPARE(velt.selectedRow(), 3);
        QVERIFY(Recording::takeEvents().isEmpty());
    }

    void sameNoteTwice()
    {
        EditData data = sampleData();
        data.NoteSongDown = data.NoteLocate = 40;
        const WindowDriver velt(data);
        velt.controllerNote(40);
        QCOMPARE(velt.selectedRow(), 1);
        QVERIFY(!velt.button("LOCATE")->isDown());
    }

    // The editor changes the very data that the notes act on.
    void notesWhileTheEditorIsOpen()
    {
        EditData data = sampleData(); // Becomes Opener, talk, Middle, Opener, Closer.
        std::vector<EditDataSet>& setList = data.ShowList[0].SetList;
        setList.insert(setList.begin() + 3, setList[0]);
        const WindowDriver velt(data);
        ModalScript script;
        script.expect([&velt](QWidget* editor) {
            const auto locateAfterDeleting = [&](int song, int row) {
                editor->findChild<QTableWidget*>("tableSongList")->selectRow(song);
                editor->findChild<QPushButton*>("pushSongListDelete")->click();
                velt.table->setCurrentCell(row, 0);
                velt.press("LOCATE");
            };
            velt.press("LOCATE"); // As the foot switch does.
            QCOMPARE(Recording::takeEvents(), bar({0x53, 0x54}));
            locateAfterDeleting(2, 4); // The last row has no entry any more,
            locateAfterDeleting(1, 2); // and into the next one another song has moved.
            velt.endOfSong();
            editor->findChild<QPushButton*>("pushCancel")->click();
        });
        for (int i = 0; i < 2; ++i) {
            script.answerQuestion(
                "This Song is used for SetList. Do you really want to delete this?",
                QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok);
        }
        velt.press("Edit");
        QVERIFY(Recording::takeEvents().isEmpty());
        // The window shows the data again as it is now.
        QVERIFY(!velt.isRunning());
        QCOMPARE(velt.rowMarks(), (QStringList{"plain", "space", "plain"}));
    }
};

VELT_TEST_MAIN(TestMidiReactions)
#include "tst_midireactions.moc"
