// SPDX-License-Identifier: MIT
#include "midibackend.h"
#include "qmidiin.h"
#include "qmidiout.h"
#include "testcase.h"

// A library class to which only one of the back ends shows ports.
struct FakePort
{
    FakePort(RtMidi::Api tried, const std::string&) : api(tried) {}
    [[nodiscard]] int getPortCount() const { return api == RtMidi::UNIX_JACK ? 1 : 0; }
    RtMidi::Api api;
};

// Linked before RtMidi's own: as on a machine on which no back end can be constructed.
RtMidiIn::RtMidiIn(RtMidi::Api, const std::string&, unsigned int)
{
    throw RtMidiError("no MIDI here", RtMidiError::DRIVER_ERROR);
}
RtMidiOut::RtMidiOut(RtMidi::Api, const std::string&)
{
    throw RtMidiError("no MIDI here", RtMidiError::DRIVER_ERROR);
}

class TestMidiBackEnd : public TestCase
{
    Q_OBJECT

private slots:
    void prefersABackEndWithPorts()
    {
        QCOMPARE(firstUsableBackEnd<FakePort>("client")->api, RtMidi::UNIX_JACK);
    }

    void portsLiveWithoutAnyBackEnd()
    {
        QMidiIn in;
        QMidiOut out;
        QCOMPARE(in.getPorts() + out.getPorts(), QStringList());
        QVERIFY_EXCEPTION_THROWN(in.openPort(QStringLiteral("a name")), RtMidiError);
        QVERIFY_EXCEPTION_THROWN(out.openPort(0), RtMidiError);
        in.closePort();
        in.dropBackEnd();
        out.sendNoteOn(1, 60, 100);
        out.closePort();
        out.dropBackEnd();
        QVERIFY(!in.isPortOpen() && !out.isPortOpen());
    }
};

VELT_TEST_MAIN(TestMidiBackEnd)
#include "tst_midibackend.moc"
