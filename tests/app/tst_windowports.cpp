// SPDX-License-Identifier: MIT
#include "apptestcase.h"
#include "modalscript.h"
#include "scriptedmidi.h"

using ScriptedMidi::state;

namespace {

EditData dataWithPorts()
{
    EditData data = sampleData();
    data.MidiInPort = "DAW";
    data.ShortcutMidiInPort = "Pedal";
    data.MidiOutPort = "Twin"; // There are two.
    data.DeviceIdValue = 0x7F;
    return data;
}

const QStringList kOpened{"RtMidi Input Client: open 1 as RtMidi Input",
                          "RtMidi Input Client: open 0 as RtMidi Input",
                          "RtMidi Output Client: open 2 as RtMidi Output"};
const QStringList kClosed{"RtMidi Input Client: close", "RtMidi Input Client: close",
                          "RtMidi Output Client: close"};

} // namespace

// The operator window's ports, on a MIDI system that the test scripts.
class TestWindowPorts : public AppTestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        AppTestCase::init();
        state = {};
        state.ports = QStringList{"Pedal", "DAW", "Twin", "Twin"};
    }

    void openFromStartToEnd()
    {
        {
            const Operator op(dataWithPorts());
            QCOMPARE(state.calls, kOpened);
        }
        QCOMPARE(state.calls, kOpened + kClosed);
    }

    void anEmptiedNameKeepsThePortClosed()
    {
        const Operator op(dataWithPorts());
        state.calls.clear();
        ModalScript script;
        script.expect([](QWidget* dialog) {
            dialog->findChild<QComboBox*>("comboShortcutMidiIn")->setCurrentText({});
            dialog->findChild<QPushButton*>("pushOK")->click();
        });
        op.press("Pref.");
        QCOMPARE(state.calls, kClosed + QStringList({kOpened[0], kOpened[2]}));
    }

    void aPortThatCannotBeOpened()
    {
        state.openError = "no more clients";
        Operator op(dataWithPorts()); // Without a box, which nobody would answer.
        ModalScript script;
        for (const char* title :
             {"Midi In Open Error", "Shortcut Midi In Open Error", "Midi Out Open Error"}) {
            script.answer({QMessageBox::Critical, title, state.openError, QMessageBox::Ok},
                          QMessageBox::Ok);
        }
        op.window.midiReconnect();
    }

    void aMessageThatCannotBeSent()
    {
        const Operator op(dataWithPorts());
        state.sendError = "cable broken";
        {
            ModalScript script;
            script.answer(
                {QMessageBox::Critical, "Midi Send Error", "cable broken", QMessageBox::Ok},
                QMessageBox::Ok);
            op.press("DAW PLAY");
        }
        state = {};
        op.press("DAW PLAY");
        op.press("DAW STOP");
        QCOMPARE(state.calls, (QStringList{"RtMidi Output Client: send F0 7F 7F 06 02 F7",
                                           "RtMidi Output Client: send F0 7F 7F 06 01 F7"}));
    }
};

VELT_TEST_MAIN(TestWindowPorts)
#include "tst_windowports.moc"
