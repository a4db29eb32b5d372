// SPDX-License-Identifier: MIT
#include "midibackend.h"
#include "qmidiin.h"
#include "qmidiout.h"
#include "testcase.h"

#include <algorithm>

Q_DECLARE_METATYPE(RtMidi::Api)

namespace {

using Apis = std::vector<RtMidi::Api>;

Apis compiledApis()
{
    Apis all;
    RtMidi::getCompiledApi(all);
    return all;
}

const RtMidi::Api kFirst = compiledApis().front();
const RtMidi::Api kLast = compiledApis().back();
constexpr RtMidi::Api kOwn = RtMidi::UNSPECIFIED; // RtMidi's choice.

QByteArray nameOf(RtMidi::Api api)
{
    return QByteArray::fromStdString(RtMidi::getApiName(api));
}

bool holds(const Apis& apis, RtMidi::Api api)
{
    return std::find(apis.begin(), apis.end(), api) != apis.end();
}

// A class like RtMidi's, of which some back ends cannot be constructed and some show a port.
struct FakePort
{
    FakePort(RtMidi::Api tried, const std::string&) : api(tried)
    {
        if (holds(failing, tried)) {
            throw RtMidiError("not this one", RtMidiError::DRIVER_ERROR);
        }
    }
    [[nodiscard]] unsigned int getPortCount() const { return holds(withPorts, api) ? 1 : 0; }

    RtMidi::Api api;
    static inline Apis failing;
    static inline Apis withPorts;
};

} // namespace

// Linked in place of RtMidi's own: as where no back end can be constructed.
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
    void init()
    {
        TestCase::init();
        FakePort::failing = FakePort::withPorts = {};
        qunsetenv("VELT_MIDI");
    }

    void choosesWhatCanBeUsed_data()
    {
        QTest::addColumn<QByteArray>("named"); // By VELT_MIDI.
        QTest::addColumn<Apis>("failing");
        QTest::addColumn<Apis>("withPorts");
        QTest::addColumn<RtMidi::Api>("chosen");
        QTest::newRow("RtMidi's own") << QByteArray() << Apis{} << Apis{kLast} << kOwn;
        QTest::newRow("named") << nameOf(kLast) << Apis{} << Apis{kFirst} << kLast;
        QTest::newRow("with ports") << QByteArray() << Apis{kOwn} << Apis{kLast} << kLast;
        QTest::newRow("all with ports") << QByteArray() << Apis{kOwn} << compiledApis() << kFirst;
        QTest::newRow("none with ports") << QByteArray() << Apis{kOwn} << Apis{} << kFirst;
        if (kFirst != kLast) { // A Mac has one.
            QTest::newRow("one left") << QByteArray() << Apis{kOwn, kFirst} << Apis{} << kLast;
        }
    }
    void choosesWhatCanBeUsed()
    {
        QFETCH(const QByteArray, named);
        QFETCH(const Apis, failing);
        QFETCH(const Apis, withPorts);
        qputenv("VELT_MIDI", named);
        FakePort::failing = failing;
        FakePort::withPorts = withPorts;
        QTEST(makeBackEnd<FakePort>("client")->api, "chosen");
    }

    void warnsOnceOfAMissingBackEnd()
    {
        expectWarning("\"oss\" is not available");
        qputenv("VELT_MIDI", "oss");
        QCOMPARE(makeBackEnd<FakePort>("client")->api, kOwn);
        FakePort::failing = {kLast};
        qputenv("VELT_MIDI", nameOf(kLast));
        QCOMPARE(makeBackEnd<FakePort>("client")->api, kOwn);
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
