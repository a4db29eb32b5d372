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
    // Rows, marks and keys of AutoLocate are among those of a run.
    void autoLocateKeepsTheFocus()
    {
        const WindowDriver velt;
        velt.press("LOCATE");
        velt.mode->setFocus();
        velt.endOfSong(36);
        QCOMPARE(velt.rowMarks(), kSecondSent);
        QVERIFY(velt.mode->hasFocus());
    }

    void autoLocateShowsNoBox()
    {
        WindowDriver velt;
        velt.press("LOCATE");
        velt.window.setPreferenceData(); // Confirmed preferences that were open when the run began,
        Recording::setApplications({"Finder"}); // and the DAW has gone.
        Recording::takeEvents();
        const ModalScript noBox;
        velt.endOfSong();
        QVERIFY(Recording::takeEvents().isEmpty());
        QCOMPARE(velt.rowMarks(), kFirstSent);
        QVERIFY(velt.isRunning());
    }

    void otherModes_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<bool>("isInRun");
        QTest::addColumn<bool>("stops");
        QTest::newRow("AutoStop") << "AutoStop" << true << true;
        QTest::newRow("AutoStop, no run") << "AutoStop" << false << false;
        QTest::newRow("Manual") << "Manual" << true << false;
    }

    void otherModes()
    {
        QFETCH(QString, mode);
        QFETCH(bool, isInRun);
        QFETCH(bool, stops);
        const WindowDriver velt;
        if (isInRun) {
            velt.press("LOCATE");
        }
        Recording::takeEvents();
        const QStringList marks = velt.rowMarks();
        velt.mode->setCurrentText(mode); // It can change during a run.
        velt.endOfSong();
        QCOMPARE(velt.button("DAW STOP")->isDown(), stops);
        QTRY_VERIFY(!velt.button("DAW STOP")->isDown());
        QCOMPARE(velt.isRunning(), isInRun);
        QVERIFY(Recording::takeEvents().isEmpty());
        QCOMPARE(velt.rowMarks(), marks);
    }

    void otherMessages_data()
    {
        QTest::addColumn<bool>("isFromDaw");
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("pitch");
        QTest::addColumn<int>("velocity");
        QTest::newRow("DAW: note on without velocity") << true << int(MIDI_NOTE_ON) << 24 << 0;
        QTest::newRow("DAW: note on") << true << int(MIDI_NOTE_ON) << 24 << 100;
        QTest::newRow("DAW: another note") << true << int(MIDI_NOTE_OFF) << 25 << 0;
        QTest::newRow("DAW: control change") << true << int(MIDI_CONTROL_CHANGE) << 24 << 0;
        QTest::newRow("controller: no velocity") << false << int(MIDI_NOTE_ON) << 31 << 0;
        QTest::newRow("controller: note off") << false << int(MIDI_NOTE_OFF) << 31 << 100;
        QTest::newRow("controller: another note") << false << int(MIDI_NOTE_ON) << 30 << 100;
    }

    void otherMessages()
    {
        QFETCH(bool, isFromDaw);
        QFETCH(int, status);
        QFETCH(int, pitch);
        QFETCH(int, velocity);
        const WindowDriver velt;
        velt.press("LOCATE");
        Recording::takeEvents();
        WindowDriver::receive(isFromDaw ? velt.dawIn : velt.controllerIn,
                              static_cast<QMidiStatus>(status), pitch, velocity);
        QVERIFY(!velt.button("LOCATE")->isDown());
        QVERIFY(Recording::takeEvents().isEmpty());
        QCOMPARE(velt.rowMarks(), kFirstSent);
        QCOMPARE(velt.selectedRow(), 0);
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

    void sameNoteTwice_data()
    {
        QTest::addColumn<int>("first"); // Of the assigned notes, from Song UP to DAW STOP.
        QTest::newRow("Song UP and DOWN") << 0;
        QTest::newRow("Song DOWN and LOCATE") << 1;
        QTest::newRow("LOCATE and DAW PLAY") << 2;
        QTest::newRow("DAW PLAY and STOP") << 3;
    }

    // The earlier of two actions with one note wins.
    void sameNoteTwice()
    {
        QFETCH(int, first);
        EditData data = sampleData();
        std::int32_t* const notes[] = {&data.NoteSongUp, &data.NoteSongDown, &data.NoteLocate,
                                       &data.NoteDawPlay, &data.NoteDawStop};
        *notes[first] = *notes[first + 1] = 40;
        const WindowDriver velt(data);
        velt.select(2);
        velt.controllerNote(40);
        QCOMPARE(velt.selectedRow(), first == 0 ? 1 : first == 1 ? 3 : 2);
        QCOMPARE(velt.button("LOCATE")->isDown(), first == 2);
        QCOMPARE(velt.button("DAW PLAY")->isDown(), first == 3);
        QVERIFY(!velt.button("DAW STOP")->isDown());
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
        // The window shows the data again as it is now, and the run goes on to the song that is
        // left.
        QVERIFY(velt.isRunning());
        QCOMPARE(velt.rowMarks(), (QStringList{"sent", "space", "next"}));
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
        const WindowDriver velt;
        ModalScript script;
        script.expect([&](QWidget* editor) {
            velt.press("LOCATE");
            edit(editor);
            Recording::takeEvents();
            velt.endOfSong();
            QCOMPARE(Recording::takeEvents(),
                     locates ? bar({0x53, 0x52, 0x57}) : Recording::Events());
            editor->findChild<QPushButton*>("pushCancel")->click();
        });
        if (qstrcmp(QTest::currentDataTag(), "show deleted") == 0) {
            script.answerQuestion("Do you really want to delete this?",
                                  QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok);
        }
        velt.press("Edit");
        QTEST(velt.rowMarks(), "looks");
        QTEST(velt.shows->currentText(), "show");
        QCOMPARE(velt.isRunning(), !velt.rowMarks().isEmpty());
    }
};

VELT_TEST_MAIN(TestMidiReactions)
#include "tst_midireactions.moc"
