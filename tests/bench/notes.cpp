// SPDX-License-Identifier: MIT
// A note of the foot switch from the wire to the program's slot, over the MIDI server.
#include "benchmarks.h"
#include "comparison.h"
#include "qmidiin.h"
#include "qmidimessage.h"
#include "windowdriver.h"

#include <QEventLoop>
#include <QTimer>

#include <RtMidi.h>

#include <atomic>
#include <chrono>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr Target kTarget{0, 15}; // Whatever the floor is.
constexpr int kNotes = 201;
constexpr int kLostAfterMs = 1000;
constexpr unsigned int kPeriodUs = 5333;    // Of the server: 256 frames at 48,000 a second.
constexpr unsigned int kPhaseStepUs = 3296; // Spreads the notes over the period.
const std::vector<unsigned char> kNoteOn{0x90, 100, 100}; // Assigned to nothing.

const std::string kClient = "Foot switch";
const std::string kPort = kClient + ":notes";

double msSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

class FootSwitch
{
public:
    FootSwitch() { port.openVirtualPort("notes"); }

    void play()
    {
        played = Clock::now();
        port.sendMessage(&kNoteOn);
    }
    [[nodiscard]] double msSincePlayed() const { return msSince(played); }

private:
    RtMidiOut port{RtMidi::UNIX_JACK, kClient};
    Clock::time_point played;
};

// The floor: RtMidi's own thread.
class BareInput
{
public:
    explicit BareInput(const FootSwitch& footSwitch) : from(footSwitch)
    {
        port.setCallback(receive, this);
        for (unsigned int i = 0; i < port.getPortCount(); ++i) {
            if (port.getPortName(i) == kPort) {
                port.openPort(i);
            }
        }
    }

    // Of the last note; waits for it if need be.
    double takeMs()
    {
        for (int waitedMs = 0; ms == 0 && waitedMs < kLostAfterMs; ++waitedMs) {
            usleep(1000);
        }
        return ms.exchange(0);
    }

private:
    static void receive(double, std::vector<unsigned char>*, void* self)
    {
        auto* input = static_cast<BareInput*>(self);
        input->ms = input->from.msSincePlayed();
    }

    const FootSwitch& from;
    std::atomic<double> ms{0};
    RtMidiIn port{RtMidi::UNIX_JACK, "Bare"};
};

void measureNotes(benchmark::State& state)
{
    FootSwitch footSwitch;
    BareInput bare(footSwitch);
    EditData data = sampleData();
    data.ShortcutMidiInPort = QString::fromStdString(kPort);
    const WindowDriver velt(data);

    double slotMs = 0;
    QEventLoop loop;
    QObject::connect(velt.controllerIn, &QMidiIn::midiMessageReceived, &loop, [&] {
        slotMs = footSwitch.msSincePlayed();
        loop.quit();
    });
    QTimer patience;
    QObject::connect(&patience, &QTimer::timeout, &loop, &QEventLoop::quit);
    Comparison ms;
    for (unsigned int i = 0; i < kNotes; ++i) {
        usleep(i * kPhaseStepUs % kPeriodUs);
        slotMs = 0;
        patience.start(kLostAfterMs);
        footSwitch.play();
        loop.exec();
        const double bareMs = bare.takeMs();
        if (slotMs == 0 || bareMs == 0) {
            throw std::runtime_error("a note was lost");
        }
        ms.ours(slotMs);
        ms.floor(bareMs);
    }
    ms.report(state, kTarget);
}

} // namespace

void addNotes()
{
    add("note from the wire to the slot (ms)", measureNotes);
}
