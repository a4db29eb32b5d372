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
    void messages_data()
    {
        QTest::addColumn<QString>("mode"); // Empty: AutoLocate.
        QTest::addColumn<QVector<int>>("message");
        QTest::addColumn<QString>("effect");
        using Bytes = QVector<int>;
        const Bytes end{MIDI_NOTE_OFF, 24, 0};
        QTest::newRow("end of song") << "" << end << "locate";
        QTest::newRow("the other note") << "" << Bytes{MIDI_NOTE_OFF, 36, 0} << "locate";
        QTest::newRow("AutoStop") << "AutoStop" << end << "stop";
        QTest::newRow("Manual") << "Manual" << end << "";
        QTest::newRow("note on without velocity") << "" << Bytes{MIDI_NOTE_ON, 24, 0} << "";
        QTest::newRow("note on") << "" << Bytes{MIDI_NOTE_ON, 24, 100} << "";
        QTest::newRow("another note") << "" << Bytes{MIDI_NOTE_OFF, 25, 0} << "";
        QTest::newRow("control change") << "" << Bytes{MIDI_CONTROL_CHANGE, 24, 0} << "";
        QTest::newRow("no run, AutoLocate") << "" << end << "";
        QTest::newRow("no run, AutoStop") << "AutoStop" << end << "";
        QTest::newRow("controller: no velocity") << "" << Bytes{MIDI_NOTE_ON, 31, 0} << "";
        QTest::newRow("controller: note off") << "" << Bytes{MIDI_NOTE_OFF, 31, 100} << "";
        QTest::newRow("controller: another note") << "" << Bytes{MIDI_NOTE_ON, 30, 100} << "";
    }

    void messages()
    {
        QFETCH(QString, mode);
        QFETCH(QVector<int>, message);
        QFETCH(QString, effect);
        const QString row = QTest::currentDataTag();
        const bool isInRun = !row.startsWith("no run");
        const WindowDriver velt;
        if (isInRun) {
            velt.press("LOCATE");
        }
        Recording::takeEvents();
        const QStringList marks = velt.rowMarks();
        if (!mode.isEmpty()) {
            velt.mode->setCurrentText(mode); // It can change during a run.
        }
        velt.mode->setFocus();
        WindowDriver::receive(row.startsWith("controller") ? velt.controllerIn : velt.dawIn,
                              static_cast<QMidiStatus>(message[0]), message[1], message[2]);
        QVERIFY(velt.mode->hasFocus());
        QVERIFY(!velt.button("LOCATE")->isDown());
        QCOMPARE(velt.button("DAW STOP")->isDown(), effect == "stop");
        QTRY_VERIFY(!velt.button("DAW STOP")->isDown());
        QCOMPARE(velt.isRunning(), isInRun);
        QCOMPARE(Recording::takeEvents(),
                 effect == "locate" ? bar({0x53, 0x52, 0x57}) : Recording::Events());
        QCOMPARE(velt.rowMarks(), effect == "locate" ? kSecondSent : marks);
        QCOMPARE(velt.selectedRow(), 0);
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
        velt.controllerNote(31); // Within the 300 ms of the click: no second one.
        QTRY_COMPARE(velt.rowMarks(), kSecondSent);
        QCOMPARE(Recording::takeEvents(), bar({0x53, 0x52, 0x57}));

        // Up and Down work on a window that takes no input, as under a modal dialog.
        velt.window.setEnabled(false);
        velt.controllerNote(29);
        QCOMPARE(velt.selectedRow(), 3);
        QVERIFY(Recording::takeEvents().isEmpty());
    }

    void sameNoteTwice_data()
    {
        QTest::addColumn<int>("first"); // Of the assigned notes, from Song UP to DAW STOP.
        QTest::addColumn<int>("row");   // The selected one, afterwards.
        QTest::addColumn<QString>("pressed");
        QTest::newRow("Song UP and DOWN") << 0 << 1 << "";
        QTest::newRow("Song DOWN and LOCATE") << 1 << 3 << "";
        QTest::newRow("LOCATE and DAW PLAY") << 2 << 2 << "LOCATE";
        QTest::newRow("DAW PLAY and STOP") << 3 << 2 << "DAW PLAY";
    }

    // The earlier of two actions with one note wins.
    void sameNoteTwice()
    {
        QFETCH(int, first);
        QFETCH(QString, pressed);
        EditData data = sampleData();
        std::int32_t* const notes[] = {&data.NoteSongUp, &data.NoteSongDown, &data.NoteLocate,
                                       &data.NoteDawPlay, &data.NoteDawStop};
        *notes[first] = *notes[first + 1] = 40;
        const WindowDriver velt(data);
        velt.select(2);
        velt.controllerNote(40);
        QTEST(velt.selectedRow(), "row");
        for (const char* name : {"LOCATE", "DAW PLAY", "DAW STOP"}) {
            QCOMPARE(velt.button(name)->isDown(), name == pressed);
        }
    }

    // What the editor can change during a run that the foot switch has begun.
    void runBesideTheEditor_data()
    {
        using Edit = std::function<void(QWidget*)>;
        QTest::addColumn<Edit>("edit");
        QTest::addColumn<QString>("question"); // Of the editor.
        QTest::addColumn<QStringList>("looks");
        QTest::addColumn<QString>("show");
        QTest::addColumn<int>("deadRow"); // Its entry has moved: nothing of it is located. Or -1.
        const auto type = [](const char* name, const char* table, int row, int column,
                             const char* show) {
            const auto edit = [=](QWidget* editor) {
                editor->findChild<QTableWidget*>(table)->item(row, column)->setText("New");
            };
            QTest::newRow(name) << Edit(edit) << "" << kSecondSent << show << -1;
        };
        const auto press = [](const char* table, int row, const char* button) {
            return Edit([=](QWidget* editor) {
                editor->findChild<QTableWidget*>(table)->selectRow(row);
                editor->findChild<QPushButton*>(button)->click();
            });
        };
        type("title", "tableSongList", 1, 0, "Friday");
        type("cue", "tableSetList", 2, 1, "Friday");
        type("show's title", "tableShowList", 0, 0, "New");
        type("other show's title", "tableShowList", 1, 0, "Friday");
        QTest::newRow("new show") << press("tableShowList", 0, "pushShowListAdd") << ""
                                  << kSecondSent << "Friday" << -1;
        QTest::newRow("next entry moved")
            << press("tableSetList", 2, "pushSetUp") << ""
            << QStringList{"sent", "next", "space", "plain"} << "Friday" << 2;
        QTest::newRow("next song deleted")
            << press("tableSongList", 1, "pushSongListDelete")
            << "This Song is used for SetList. Do you really want to delete this?"
            << QStringList{"sent", "space", "next"} << "Friday" << 3;
        QTest::newRow("show deleted")
            << press("tableShowList", 0, "pushShowListDelete")
            << "Do you really want to delete this?" << QStringList() << "Empty" << 2;
    }

    void runBesideTheEditor()
    {
        QFETCH(std::function<void(QWidget*)>, edit);
        QFETCH(QString, question);
        QFETCH(int, deadRow);
        const WindowDriver velt;
        ModalScript script;
        script.expect([&](QWidget* editor) {
            velt.press("LOCATE");
            edit(editor);
            Recording::takeEvents();
            if (deadRow != -1) {
                velt.table->setCurrentCell(deadRow, 0);
                velt.press("LOCATE");
            }
            velt.endOfSong();
            QCOMPARE(Recording::takeEvents(),
                     deadRow == -1 ? bar({0x53, 0x52, 0x57}) : Recording::Events());
            editor->findChild<QPushButton*>("pushCancel")->click();
        });
        if (!question.isEmpty()) {
            script.answerQuestion(question, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok);
        }
        velt.press("Edit");
        QTEST(velt.rowMarks(), "looks");
        QTEST(velt.shows->currentText(), "show");
        QCOMPARE(velt.isRunning(), !velt.rowMarks().isEmpty());
        QVERIFY(!velt.isRunning() || velt.selectedRow() == std::max(0, deadRow - 1)); // As moved.
        QVERIFY(velt.isFocusOnTable());
    }
};

VELT_TEST_MAIN(TestMidiReactions)
#include "tst_midireactions.moc"
