// SPDX-License-Identifier: MIT
#include "preferencedesk.h"
#include "qmidiin.h"
#include "qmidiout.h"
#include "servers.h"

#include <QElapsedTimer>

namespace {

// The dialog over the ports that the operator window has.
struct PortDesk
{
    QMidiIn in;
    QMidiIn controller;
    QMidiOut out;
    PreferenceDesk desk{&in, &controller, &out};
};

// Whatever has become of the MIDI system, the dialog opens at once and confirms.
void checkUsable(PreferenceDesk& desk)
{
    QElapsedTimer filling;
    filling.start();
    desk.dialog.setDispFromEdit();
    QVERIFY(filling.elapsed() < 1000);
    desk.open([&] { desk.click("pushOK"); });
    QCOMPARE(desk.owner.calls, kConfirmed);
}

} // namespace

class TestPreferenceDialogMidi : public TestCase
{
    Q_OBJECT

private slots:
    void absentServer();
    void realPorts();
    void deadServer();
};

void TestPreferenceDialogMidi::absentServer()
{
    qputenv("JACK_DEFAULT_SERVER", "velt-no-such-server");
    qputenv("JACK_NO_START_SERVER", "1");
    PortDesk ports;
    ports.desk.data.MidiInPort = QStringLiteral("Gone:in");
    checkUsable(ports.desk);
    QCOMPARE(ports.desk.data.MidiInPort, QString());
}

void TestPreferenceDialogMidi::realPorts()
{
    const JackServer server;
    if (!server.isRunning()) {
        QSKIP(qPrintable(server.why()));
    }
    QMidiOut workstation;
    workstation.openVirtualPort(QStringLiteral("Notes"));
    auto footSwitch = std::make_unique<QMidiOut>();
    footSwitch->openVirtualPort(QStringLiteral("Foot switch"));
    QMidiIn remote;
    remote.openVirtualPort(QStringLiteral("Remote"));

    PortDesk ports;
    const QStringList sources = ports.in.getPorts();
    const QStringList sinks = ports.out.getPorts();
    QCOMPARE(sources.size(), 2);
    QVERIFY(sources[1].endsWith(QLatin1String(":Foot switch")));
    QCOMPARE(sinks.size(), 1);

    PreferenceDesk& desk = ports.desk;
    const auto* in = desk.find<QComboBox>("comboMidiIn");
    auto* controller = desk.find<QComboBox>("comboShortcutMidiIn");
    const auto* out = desk.find<QComboBox>("comboMidiOut");
    desk.data.MidiInPort = sources[1];
    desk.data.ShortcutMidiInPort = sources[0].toUpper(); // Letter case counts: not there.
    desk.data.MidiOutPort = QStringLiteral("Gone:out");
    desk.open([&] {
        QCOMPARE(in->count(), 2);
        QCOMPARE(in->currentText(), sources[1]);
        QCOMPARE(controller->count(), 3);
        QCOMPARE(controller->currentText(), QString());
        QCOMPARE(out->currentText(), sinks[0]);
        controller->setCurrentIndex(2);
        desk.click("pushOK");
    });
    QCOMPARE(desk.data.MidiInPort, sources[1]);
    QCOMPARE(desk.data.ShortcutMidiInPort, sources[1]);
    QCOMPARE(desk.data.MidiOutPort, sinks[0]);

    footSwitch.reset(); // Unplugged: gone from the lists, but not yet from what is stored.
    desk.open([&] {
        QCOMPARE(in->count(), 1);
        QCOMPARE(controller->currentText(), QString());
        const ModalScript script; // A question would fail it.
        desk.dialog.close();
    });
    QCOMPARE(desk.data.ShortcutMidiInPort, sources[1]);
}

void TestPreferenceDialogMidi::deadServer()
{
    JackServer server;
    if (!server.isRunning()) {
        QSKIP(qPrintable(server.why()));
    }
    PortDesk ports;
    server.kill();
    checkUsable(ports.desk);
}

VELT_TEST_MAIN(TestPreferenceDialogMidi)
#include "tst_preferencedialog_midi.moc"
