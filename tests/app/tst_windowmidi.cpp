// SPDX-License-Identifier: MIT
#include "apptestcase.h"
#include "fakemidi.h"
#include "modalscript.h"
#include "qmidiin.h"

namespace {

EditData dataWithPorts()
{
    EditData data = sampleData();
    data.MidiInPort = "Second";
    data.ShortcutMidiInPort = "First";
    data.MidiOutPort = "Second";
    return data;
}

void answer(ModalScript& script, const char* title, const char* text)
{
    script.answer({QMessageBox::Critical, title, text, QMessageBox::Ok}, QMessageBox::Ok);
}

} // namespace

// The window's ports, on a MIDI system that does as it is told.
class TestWindowMidi : public AppTestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        AppTestCase::init();
        FakeMidi::failing = "";
        FakeMidi::sent.clear();
        FakeMidi::calls.clear();
    }

    void portsAreOpenFromStartToEnd()
    {
        {
            const WindowDriver velt(dataWithPorts());
            QCOMPARE(FakeMidi::calls,
                     (QStringList{"RtMidi Input Client opens Second as RtMidi Input",
                                  "RtMidi Input Client opens First as RtMidi Input",
                                  "RtMidi Output Client opens Second as RtMidi Output"}));
            FakeMidi::calls.clear();
        }
        QCOMPARE(FakeMidi::calls,
                 (QStringList{"RtMidi Input Client closes", "RtMidi Input Client closes",
                              "RtMidi Output Client closes"}));
    }

    void absentPortsAreNoError()
    {
        EditData data = dataWithPorts();
        data.MidiInPort = data.ShortcutMidiInPort = data.MidiOutPort = "Nobody:here";
        const ModalScript noBox;
        WindowDriver velt(data);
        velt.window.midiReconnect();
        QVERIFY(!velt.dawIn->isPortOpen());
        QVERIFY(!velt.controllerIn->isPortOpen());
        velt.press("DAW PLAY");
        velt.press("LOCATE");
        QCOMPARE(velt.rowMarks(), kFirstSent);
        QVERIFY(FakeMidi::sent.empty());
    }

    void portsThatCannotBeOpened()
    {
        FakeMidi::failing = "open";
        std::unique_ptr<WindowDriver> velt;
        {
            const ModalScript noBoxAtStart;
            velt = std::make_unique<WindowDriver>(dataWithPorts());
        }
        ModalScript script;
        answer(script, "Midi In Open Error", "no open");
        answer(script, "Shortcut Midi In Open Error", "no open");
        answer(script, "Midi Out Open Error", "no open");
        velt->window.midiReconnect();
    }

    void preferencesShowWhatIsStoredAndOpenTheirPorts()
    {
        const WindowDriver velt(dataWithPorts());
        for (const char* leave : {"pushCancel", "pushOK"}) {
            ModalScript script;
            script.expect([leave](QWidget* dialog) {
                auto* controller = dialog->findChild<QComboBox*>("comboShortcutMidiIn");
                QCOMPARE(controller->currentText(), QString("First"));
                controller->setCurrentIndex(0); // No port.
                dialog->findChild<QPushButton*>(leave)->click();
            });
            velt.press("Pref.");
        }
        QVERIFY(velt.dawIn->isPortOpen());
        QVERIFY(!velt.controllerIn->isPortOpen());
    }

    void transport_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<int>("command");
        QTest::newRow("PLAY") << "DAW PLAY" << 2;
        QTest::newRow("STOP") << "DAW STOP" << 1;
        QTest::newRow("LOCATE") << "LOCATE" << 1;
    }

    void transport()
    {
        QFETCH(QString, button);
        QFETCH(int, command);
        EditData data = dataWithPorts();
        data.DeviceIdValue = 0xFF;
        const WindowDriver velt(data);
        Recording::setApplications({"Finder"});
        {
            ModalScript script;
            script.answer(
                {QMessageBox::Warning, {}, "Process [Pro Tools] not found", QMessageBox::Ok},
                QMessageBox::Ok);
            velt.press(button);
        }
        QVERIFY(FakeMidi::sent.empty()); // The DAW is not there.
        Recording::setApplications({"Pro Tools"});
        velt.press(button);
        const std::vector<unsigned char> mmc{
            0xF0, 0x7F, 0xFF, 6, static_cast<unsigned char>(command), 0xF7};
        QCOMPARE(FakeMidi::sent, std::vector<std::vector<unsigned char>>{mmc});
    }

    // The box runs the event loop, and the foot switch locates another song meanwhile.
    void sendError()
    {
        const WindowDriver velt(dataWithPorts());
        FakeMidi::failing = "send";
        ModalScript script;
        script.expect([&velt](QWidget* shown) {
            auto* box = qobject_cast<QMessageBox*>(shown);
            QCOMPARE(box->windowTitle(), QString("Midi Send Error"));
            QCOMPARE(box->text(), QString("no send"));
            QCOMPARE(box->icon(), QMessageBox::Critical);
            FakeMidi::failing = "";
            velt.table->setCurrentCell(2, 0);
            velt.press("LOCATE");
            QCOMPARE(velt.rowMarks(), kSecondSent);
            box->button(QMessageBox::Ok)->click();
        });
        velt.press("LOCATE");
        QCOMPARE(velt.rowMarks(), kFirstSent);
        QCOMPARE(Recording::takeEvents(), bar({0x53, 0x52, 0x57}) + bar({0x53, 0x54}));
    }
};

VELT_TEST_MAIN(TestWindowMidi)
#include "tst_windowmidi.moc"
