// SPDX-License-Identifier: MIT
#include "midibackend.h"
#include "qmidiin.h"
#include "qmidiout.h"
#include "testcase.h"

#include <map>

namespace {

// A library class whose constructor refuses a back end or makes one with so many ports.
struct FakePort
{
    static constexpr int kRefused = -1;
    static std::map<RtMidi::Api, int> portsOf;

    FakePort(RtMidi::Api tried, const std::string&) : api(tried)
    {
        if (portsOf.at(api) == kRefused) {
            throw RtMidiError("refused", RtMidiError::DRIVER_ERROR);
        }
    }
    [[nodiscard]] unsigned int getPortCount() const
    {
        return static_cast<unsigned int>(portsOf.at(api));
    }

    RtMidi::Api api;
};
std::map<RtMidi::Api, int> FakePort::portsOf;

int refusals = 0;

} // namespace

// These stand in for the library's own, which is linked as a shared library behind this program:
// a machine on which no back end can be constructed.
RtMidiIn::RtMidiIn(RtMidi::Api, const std::string&, unsigned int)
{
    throw RtMidiError("no MIDI here " + std::to_string(++refusals), RtMidiError::DRIVER_ERROR);
}
RtMidiOut::RtMidiOut(RtMidi::Api, const std::string&)
{
    throw RtMidiError("no MIDI here " + std::to_string(++refusals), RtMidiError::DRIVER_ERROR);
}

class TestMidiBackEnd : public TestCase
{
    Q_OBJECT

private slots:
    void choosesTheBackEnd()
    {
        std::vector<RtMidi::Api> compiled;
        RtMidi::getCompiledApi(compiled);
        if (compiled.size() < 2) {
            QSKIP("the library was built with one back end only");
        }
        const auto chosen = [&](int ofLibrary, int ofFirst, int ofSecond) {
            for (const RtMidi::Api api : compiled) {
                FakePort::portsOf[api] = FakePort::kRefused;
            }
            FakePort::portsOf[RtMidi::UNSPECIFIED] = ofLibrary;
            FakePort::portsOf[compiled[0]] = ofFirst;
            FakePort::portsOf[compiled[1]] = ofSecond;
            return makeBackEnd<FakePort>("client")->api;
        };
        QCOMPARE(chosen(0, 1, 1), RtMidi::UNSPECIFIED);
        QCOMPARE(chosen(-1, 0, 2), compiled[1]);
        QCOMPARE(chosen(-1, 1, 2), compiled[0]);
        QCOMPARE(chosen(-1, 0, 0), compiled[0]);
        QCOMPARE(chosen(-1, -1, 0), compiled[1]);
        QVERIFY_EXCEPTION_THROWN(chosen(-1, -1, -1), RtMidiError);
    }

    void portsLiveWithoutAnyBackEnd()
    {
        QMidiIn in;
        QMidiOut out;
        QCOMPARE(in.getPorts() + out.getPorts(), QStringList());
        refusals = 0;
        QVERIFY_EXCEPTION_THROWN(in.openPort(0), RtMidiError);
        QVERIFY_EXCEPTION_THROWN(in.openPort(QStringLiteral("a name")), RtMidiError);
        QVERIFY_EXCEPTION_THROWN(out.openPort(0), RtMidiError);
        QVERIFY2(refusals >= 3, "an opening did not try anew to get a back end");
        in.setIgnoreTypes(false, false, false);
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
