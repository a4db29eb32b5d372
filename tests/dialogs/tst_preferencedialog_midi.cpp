// SPDX-License-Identifier: MIT
#include "preferencedesk.h"
#include "qmidiin.h"
#include "qmidiout.h"
#include "servers.h"

class TestPreferenceDialogMidi : public TestCase
{
    Q_OBJECT

private slots:
    void realPorts()
    {
        JackServer server;
        if (!server.isRunning()) {
            QSKIP(qPrintable(server.why()));
        }
        QMidiOut workstation;
        workstation.openVirtualPort("Notes");
        auto footSwitch = std::make_unique<QMidiOut>();
        footSwitch->openVirtualPort("Foot switch");
        QMidiIn remote;
        remote.openVirtualPort("Remote");
        QMidiIn in;
        QMidiIn controller;
        QMidiOut out;
        const QStringList sources = in.getPorts();
        QCOMPARE(sources.size(), 2);

        PreferenceDesk desk(&in, &controller, &out);
        const auto* inBox = desk.find<QComboBox>("comboMidiIn");
        auto* controllerBox = desk.find<QComboBox>("comboShortcutMidiIn");
        desk.data.MidiInPort = sources[1];
        desk.data.ShortcutMidiInPort = sources[0].toUpper(); // Letter case counts: not there.
        desk.data.MidiOutPort = "Gone:out";
        desk.open([&] {
            QCOMPARE(inBox->count(), 2);
            QCOMPARE(inBox->currentText(), sources[1]);
            QCOMPARE(controllerBox->count(), 3);
            QCOMPARE(controllerBox->currentText(), QString());
            controllerBox->setCurrentIndex(2);
            desk.click("pushOK");
        });
        QCOMPARE(desk.data.MidiInPort, sources[1]);
        QCOMPARE(desk.data.ShortcutMidiInPort, sources[1]);
        QCOMPARE(desk.data.MidiOutPort, out.getPorts().value(0));

        footSwitch.reset(); // Unplugged: gone from the lists, but not yet from what is stored.
        desk.open([&] {
            QCOMPARE(inBox->count(), 1);
            QCOMPARE(controllerBox->currentText(), QString());
            const ModalScript script; // A question would fail it.
            desk.dialog.close();
        });
        QCOMPARE(desk.data.ShortcutMidiInPort, sources[1]);
    }
};

VELT_TEST_MAIN(TestPreferenceDialogMidi)
#include "tst_preferencedialog_midi.moc"
