// SPDX-License-Identifier: MIT
#include "apptestcase.h"
#include "editdialog.h"
#include "modalscript.h"
#include "qmidiin.h"
#include "qmidimessage.h"

namespace {

void receive(QMidiIn* port, QMidiStatus status, int pitch, int velocity)
{
    QMidiMessage message;
    message.setStatus(status)
        ->setPitch(static_cast<std::uint32_t>(pitch))
        ->setVelocity(static_cast<std::uint32_t>(velocity));
    port->onMidiMessageReceive(&message);
}

} // namespace

// Notes from the DAW and from the operator's controller. Messages are handed to the window's own
// ports, as if they had arrived there.
class TestMidiReactions : public AppTestCase
{
    Q_OBJECT

private slots:
    void autoLocateToTheEnd();
    void autoStop();
    void manual();
    void notesThatAreNone();
    void controllerThroughTheShow();
    void sameNoteTwice();
    void notesWhileTheEditorIsOpen();
    void dataGoesWhileARunIsOn();
};

void TestMidiReactions::autoLocateToTheEnd()
{
    const Operator op;
    op.endOfSong(); // Without a run nothing happens.
    QVERIFY(Recording::takeEvents().isEmpty());

    op.press("LOCATE");
    Recording::takeEvents();
    op.select(1);
    op.mode->setFocus();
    op.endOfSong(36);
    QCOMPARE(Recording::takeEvents(), bar({0x53, 0x52, 0x57}));
    QCOMPARE(op.looks(), (QStringList{"plain", "space", "sent", "next"}));
    QCOMPARE(op.selectedRow(), 1);
    QVERIFY(op.mode->hasFocus());

    op.endOfSong(24);
    QCOMPARE(Recording::takeEvents(), bar({0x55, 0x55}));
    QCOMPARE(op.looks(), (QStringList{"plain", "space", "plain", "sent"}));
    QCOMPARE(op.selectedRow(), 1);
    QVERIFY(!op.isRunning());
    op.endOfSong(24);
    QVERIFY(Recording::takeEvents().isEmpty());
}

void TestMidiReactions::autoStop()
{
    const Operator op;
    op.press("LOCATE");
    Recording::takeEvents();
    op.mode->setCurrentText("AutoStop");
    op.endOfSong();
    QVERIFY(op.button("DAW STOP")->isDown());
    QTRY_VERIFY(!op.button("DAW STOP")->isDown());
    QVERIFY(Recording::takeEvents().isEmpty());
    QVERIFY(op.isRunning());
    QCOMPARE(op.looks(), (QStringList{"sent", "space", "next", "plain"}));
}

void TestMidiReactions::manual()
{
    const Operator op;
    op.mode->setCurrentText("Manual");
    op.press("LOCATE");
    Recording::takeEvents();
    op.endOfSong();
    QVERIFY(!op.button("DAW STOP")->isDown());
    QVERIFY(Recording::takeEvents().isEmpty());
    op.mode->setCurrentText("AutoLocate"); // The mode can change during a run.
    op.endOfSong();
    QCOMPARE(op.looks(), (QStringList{"plain", "space", "sent", "next"}));
}

void TestMidiReactions::notesThatAreNone()
{
    const Operator op;
    op.press("LOCATE");
    Recording::takeEvents();
    receive(op.dawIn, MIDI_NOTE_ON, 24, 0); // No note off.
    receive(op.dawIn, MIDI_NOTE_ON, 24, 100);
    receive(op.dawIn, MIDI_NOTE_OFF, 25, 0);
    receive(op.dawIn, MIDI_CONTROL_CHANGE, 24, 0);
    receive(op.controllerIn, MIDI_NOTE_ON, 31, 0);
    receive(op.controllerIn, MIDI_NOTE_OFF, 31, 100);
    receive(op.controllerIn, MIDI_NOTE_ON, 30, 100);
    for (const char* slot : {"onMidiReceive", "onShortcutMidiReceive"}) {
        QMetaObject::invokeMethod(const_cast<MainWindow*>(&op.window), slot,
                                  Q_ARG(QMidiMessage*, nullptr));
    }
    QVERIFY(!op.button("LOCATE")->isDown());
    QVERIFY(Recording::takeEvents().isEmpty());
    QCOMPARE(op.looks(), (QStringList{"sent", "space", "next", "plain"}));
}

void TestMidiReactions::controllerThroughTheShow()
{
    EditData data = sampleData();
    data.ShowKeyButton = false; // Hidden buttons still work.
    const Operator op(data);
    op.shows->setFocus();
    op.controllerNote(29);
    op.controllerNote(29);
    QCOMPARE(op.selectedRow(), 2);
    op.controllerNote(28);
    QCOMPARE(op.selectedRow(), 1);
    op.controllerNote(29);

    op.controllerNote(31);
    op.controllerNote(31); // Within the 300 ms: still one click.
    QTRY_COMPARE(op.looks(), (QStringList{"plain", "space", "sent", "next"}));
    QCOMPARE(Recording::takeEvents(), bar({0x53, 0x52, 0x57}));

    for (const auto& control : {std::pair<int, const char*>(33, "DAW PLAY"), {35, "DAW STOP"}}) {
        op.controllerNote(control.first);
        QVERIFY(op.button(control.second)->isDown());
        QTRY_VERIFY(!op.button(control.second)->isDown());
    }

    // Up and Down work on a window that takes no input, as under a modal dialog.
    const_cast<MainWindow&>(op.window).setEnabled(false);
    op.controllerNote(29);
    QCOMPARE(op.selectedRow(), 3);
    const_cast<MainWindow&>(op.window).setEnabled(true);
    QVERIFY(Recording::takeEvents().isEmpty());
}

void TestMidiReactions::sameNoteTwice()
{
    EditData data = sampleData();
    data.NoteSongDown = 40;
    data.NoteLocate = 40;
    const Operator op(data);
    op.controllerNote(40);
    QCOMPARE(op.selectedRow(), 1);
    QVERIFY(!op.button("LOCATE")->isDown());
}

// The editor changes the very data that the notes act on.
void TestMidiReactions::notesWhileTheEditorIsOpen()
{
    const Operator op;
    op.select(3);
    ModalScript script;
    script.expect([&op](QWidget* editor) {
        QVERIFY(qobject_cast<EditDialog*>(editor));
        const auto tables = editor->findChildren<QTableWidget*>();
        QVERIFY(!tables.isEmpty());
        QTest::mouseClick(editor->findChild<QPushButton*>("pushSongListAllDel"), Qt::LeftButton);
        op.controllerNote(29);
        op.controllerNote(28);
        op.controllerNote(31); // The entry is gone.
        QTRY_VERIFY(!op.button("LOCATE")->isDown());
        editor->close();
    });
    script.answerQuestion("Do you really want to delete all?",
                          QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok);
    script.answerQuestion("Contents have been changed. Do you want to save changes?",
                          QMessageBox::Save | QMessageBox::No | QMessageBox::Cancel,
                          QMessageBox::No);
    op.press("Edit");
    QVERIFY(Recording::takeEvents().isEmpty());
    QVERIFY(!op.isRunning());
    // The window shows the data again as it is now.
    QCOMPARE(op.table->rowCount(), 0);
    QVERIFY(!op.button("LOCATE")->isEnabled());
}

void TestMidiReactions::dataGoesWhileARunIsOn()
{
    const Operator op;
    ModalScript script;
    script.expect([&op](QWidget* editor) {
        op.press("LOCATE"); // As the foot switch does.
        QTRY_COMPARE(op.looks(), (QStringList{"sent", "space", "next", "plain"}));
        QTest::mouseClick(editor->findChild<QPushButton*>("pushShowListAllDel"), Qt::LeftButton);
        Recording::takeEvents();
        op.endOfSong();
        op.press("LOCATE");
        editor->findChild<QPushButton*>("pushCancel")->click();
    });
    script.answerQuestion("Do you really want to delete all?",
                          QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok);
    op.press("Edit");
    QVERIFY(Recording::takeEvents().isEmpty());
    QCOMPARE(op.shows->count(), 0);
    op.press("Reset");
    QVERIFY(!op.isRunning());
}

VELT_TEST_MAIN(TestMidiReactions)
#include "tst_midireactions.moc"
