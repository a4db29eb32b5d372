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
    data.MidiOutPort = "Second 131:0"; // Numbers of another day.
    return data;
}

void answer(ModalScript& script, const char* title, const char* text)
{
    script.answer({QMessageBox::Critical, title, text, QMessageBox::Ok}, QMessageBox::Ok);
}

} // namespace

// The window's ports, on a scripted MIDI system.
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
        const QStringList closing{"RtMidi Input Client closes", "RtMidi Input Client closes",
                                  "RtMidi Output Client closes"};
        {
            WindowDriver velt(dataWithPorts());
            QCOMPARE(FakeMidi::calls,
                     (QStringList{"RtMidi Input Client opens Second 24:0 as RtMidi Input",
                                  "RtMidi Input Client opens First 20:0 as RtMidi Input",
                                  "RtMidi Output Client opens Second 24:0 as RtMidi Output"}));
            FakeMidi::calls.clear();
            velt.window.midiReconnect();
            QCOMPARE(FakeMidi::calls.filter("closes"), closing);
            QCOMPARE(FakeMidi::calls.filter("opens").size(), 3);
            FakeMidi::calls.clear();
        }
        QCOMPARE(FakeMidi::calls, closing);
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
            QVERIFY(velt.isFocusOnTable());
        }
        QVERIFY(velt.dawIn->isPortOpen());
        QVERIFY(!velt.controllerIn->isPortOpen());
    }

    void buttonsNeedTheDaw_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<int>("command"); // Of MMC; 0: none.
        QTest::newRow("LOCATE") << "LOCATE" << 1;
        QTest::newRow("PLAY") << "DAW PLAY" << 2;
        QTest::newRow("STOP") << "DAW STOP" << 1;
        QTest::newRow("key") << "Key 0" << 0;
    }

    void buttonsNeedTheDaw()
    {
        QFETCH(QString, button);
        QFETCH(int, command);
        EditData data = dataWithPorts();
        data.DeviceIdValue = 0xFF;
        const WindowDriver velt(data);
        Recording::setApplications({"Finder", "pro tools", "Studio One"});
        {
            ModalScript script;
            script.expect([&velt](QWidget* shown) {
                auto* box = qobject_cast<QMessageBox*>(shown);
                QCOMPARE(box->icon(), QMessageBox::Warning);
                QCOMPARE(box->windowTitle(), QString());
                QCOMPARE(box->text(), QString("Process [Pro Tools] not found"));
                QCOMPARE(box->standardButtons(), QMessageBox::StandardButtons(QMessageBox::Ok));
                velt.controllerNote(31); // Foot switch presses do not pile up boxes.
                QTRY_VERIFY(!velt.button("LOCATE")->isDown());
                box->button(QMessageBox::Ok)->click();
            });
            velt.press(button);
        }
        QVERIFY(velt.isFocusOnTable());
        QVERIFY(!velt.isRunning());
        QVERIFY(FakeMidi::sent.empty());
        QVERIFY(Recording::takeEvents().isEmpty());

        Recording::setApplications({"Pro Tools"}); // Once it runs, the next press finds it.
        velt.press(button);
        QCOMPARE(Recording::takeEvents().isEmpty(), button.startsWith("DAW"));
        std::vector<std::vector<unsigned char>> mmc;
        if (command != 0) {
            mmc = {{0xF0, 0x7F, 0xFF, 6, static_cast<unsigned char>(command), 0xF7}};
        }
        QCOMPARE(FakeMidi::sent, mmc);
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
