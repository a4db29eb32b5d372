// SPDX-License-Identifier: MIT
#include "midipeer.h"
#include "modalscript.h"
#include "recordingplatform.h"
#include "servers.h"
#include "testcase.h"
#include "windowdriver.h"

#include <QDir>

#include <RtMidi.h>

#include <fcntl.h>
#include <unistd.h>

namespace {

const Bytes kMmcStop{0xF0, 0x7F, 0x7F, 0x06, 0x01, 0xF7};

// With the numbers of the client and the port, as RtMidi has it.
QString nameWithNumbers(const QString& shown)
{
    RtMidiIn lister(RtMidi::LINUX_ALSA);
    for (unsigned int i = 0; i < lister.getPortCount(); ++i) {
        QString name = QString::fromStdString(lister.getPortName(i));
        if (name.startsWith(shown + ' ')) {
            return name;
        }
    }
    return {};
}

// A foot switch on a cable: a card of the kernel module snd-virmidi.
class Device
{
public:
    Device() { open(); }
    ~Device() { plug(true); }
    Q_DISABLE_COPY_MOVE(Device)

    [[nodiscard]] bool isPlugged() const { return file != -1; }
    // In the names of its ports.
    [[nodiscard]] QString name() const { return QString("VirMIDI %1-0").arg(card); }
    void plug(bool in)
    {
        if (in != isPlugged()) {
            close(std::exchange(file, -1));
            QFile driver(QString("/sys/bus/platform/drivers/snd_virmidi/") +
                         (in ? "bind" : "unbind"));
            if (driver.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
                driver.write("snd_virmidi.0");
            }
            open();
        }
    }
    void play(const Bytes& bytes) const
    {
        QCOMPARE(write(file, bytes.data(), bytes.size()), ssize_t(bytes.size()));
    }
    [[nodiscard]] bool hears(const Bytes& message)
    {
        for (unsigned char byte = 0; read(file, &byte, 1) == 1;) {
            heard.push_back(byte);
        }
        return heard == message;
    }
    // Also begins to listen, which a card does when it is read.
    void forget()
    {
        (void)hears({});
        heard.clear();
    }

private:
    void open()
    {
        const QDir cards("/sys/bus/platform/drivers/snd_virmidi/snd_virmidi.0/sound");
        card = cards.entryList({"card*"}).value(0).mid(4);
        const QString path = QString("/dev/snd/midiC%1D0").arg(card);
        file = ::open(path.toLocal8Bit(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    }

    QString card; // Its number.
    int file = -1;
    Bytes heard;
};

} // namespace

// Ports over the ALSA sequencer, which numbers clients in the order in which they come.
class TestAlsa : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!MidiSystem::isAlsa()) {
            QSKIP("this machine has no ALSA sequencer");
        }
        const MidiSystem used;
    }

    void clientsStartInAnotherOrder()
    {
        auto source = std::make_unique<PeerSource>();
        const QString yesterday = nameWithNumbers(PeerSource::port());
        QVERIFY(!yesterday.isEmpty());
        source.reset();
        const RtMidiOut first(RtMidi::LINUX_ALSA);
        source = std::make_unique<PeerSource>();
        QVERIFY(nameWithNumbers(PeerSource::port()) != yesterday);
        for (const QString& stored : {PeerSource::port(), yesterday}) {
            QMidiIn in;
            int received = 0;
            connect(&in, &QMidiIn::midiMessageReceived, this, [&received] { ++received; });
            QVERIFY(in.getPorts().contains(PeerSource::port()));
            in.openPort(stored);
            source->send({0x90, 31, 100});
            QTRY_COMPARE(received, 1);
        }
    }

    void twoOfOneNameAreToldApart()
    {
        PeerSource one;
        PeerSource other;
        const QStringList names = QMidiIn().getPorts().filter(PeerSource::port());
        QCOMPARE(names.size(), 2);
        std::array<QMidiIn, 2> inputs;
        std::array<QVector<int>, 2> received;
        for (std::size_t i = 0; i < 2; ++i) {
            connect(&inputs[i], &QMidiIn::midiMessageReceived, this,
                    [&, i](const QMidiMessage* note) { received[i] << int(note->getPitch()); });
            inputs[i].openPort(names[int(i)]);
        }
        one.send({0x90, 1, 100});
        other.send({0x90, 2, 100});
        QTRY_COMPARE(received[0].size() + received[1].size(), 2);
        QCOMPARE(received[0].value(0) + received[1].value(0), 3); // One each.
    }

    void unpluggedInARunAndBack()
    {
        Device device;
        if (!device.isPlugged()) {
            QSKIP("there is no card of snd-virmidi, or no right to unplug it");
        }
        EditData data = sampleData();
        data.DeviceIdValue = 0x7F;
        data.ShortcutMidiInPort = QMidiIn().getPorts().filter(device.name()).value(0);
        data.MidiOutPort = QMidiOut().getPorts().filter(device.name()).value(0);
        Recording::setApplications({"Pro Tools"});
        const WindowDriver velt(data);
        const QStringList firstSent{"sent", "space", "next", "plain"};
        const QStringList secondSent{"plain", "space", "sent", "next"};
        const auto footSwitchLocates = [&](int row, const QStringList& marks) {
            velt.select(row);
            device.forget();
            device.play({0x90, 31, 100});
            QTRY_COMPARE(velt.rowMarks(), marks);
            QTRY_VERIFY(device.hears(kMmcStop));
        };
        footSwitchLocates(0, firstSent);

        device.plug(false);
        QVERIFY(!device.isPlugged());
        {
            const ModalScript noBox;
            velt.select(2);
            velt.press("LOCATE");
            QCOMPARE(velt.rowMarks(), secondSent);
        }
        device.plug(true);
        velt.press("Reset");
        ModalScript script;
        script.expect([](QWidget* dialog) {
            dialog->findChild<QPushButton*>("pushOK")->click(); // It shows the ports again.
        });
        velt.press("Pref.");
        footSwitchLocates(0, firstSent);
    }
};

VELT_TEST_MAIN(TestAlsa)
#include "tst_alsa.moc"
