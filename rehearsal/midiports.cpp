// SPDX-License-Identifier: MIT
#include "midiports.h"

#include "clock.h"
#include "jackwatch.h"

#include <QThread>

#include <algorithm>

namespace {

constexpr const char* kMmcClient = "Rehearsal MMC";
constexpr const char* kMmcPort = "commands";
constexpr const char* kDawClient = "Rehearsal DAW";
constexpr const char* kFootSwitchClient = "Rehearsal Foot switch";
constexpr const char* kNotesPort = "notes";

constexpr unsigned kQueueLimit = 100; // Unused by the library where a callback is set.
constexpr std::size_t kInboxLimit = 10000;
constexpr std::chrono::milliseconds kPatience{1500};
constexpr qint64 kLeaveUs = 50000; // Two periods of a slow MIDI server.

QStringList portNames(RtMidi& lister)
{
    QStringList names;
    const unsigned count = lister.getPortCount();
    for (unsigned i = 0; i < count; ++i) {
        names += QString::fromStdString(lister.getPortName(i));
    }
    return names;
}

// Opens the virtual port and returns the name under which it appears in the list of `lister`, which
// must be of the other direction. Empty: it did not appear, as on a system without virtual ports.
QString openVirtual(RtMidi& port, const char* client, const char* name, RtMidi& lister)
{
    const QStringList before = portNames(lister);
    port.openVirtualPort(name);
    for (const QString& seen : portNames(lister)) {
        if (seen.startsWith(QLatin1String(client)) && !before.contains(seen)) {
            return seen;
        }
    }
    return {};
}

} // namespace

MidiPorts::MidiPorts(QObject* parent) : QObject(parent)
{
}

MidiPorts::~MidiPorts()
{
    close();
}

bool MidiPorts::open()
{
    close();
    std::vector<RtMidi::Api> systems;
    RtMidi::getCompiledApi(systems);
    return std::any_of(systems.begin(), systems.end(), [this](RtMidi::Api api) {
        try {
            if (openWith(api)) {
                return true;
            }
        } catch (const RtMidiError&) {
            // The next system may do; if none does, the caller says that there is no MIDI.
        }
        close();
        return false;
    });
}

bool MidiPorts::openWith(RtMidi::Api api)
{
    JackWatch::requireAnswer();
    input = std::make_unique<RtMidiIn>(api, kMmcClient, kQueueLimit);
    Output& daw = outputs.at(DawNotes);
    Output& footSwitch = outputs.at(FootSwitch);
    daw.port = std::make_unique<RtMidiOut>(api, kDawClient);
    footSwitch.port = std::make_unique<RtMidiOut>(api, kFootSwitchClient);

    // MMC is System Exclusive, which the library drops by default.
    input->ignoreTypes(false, true, true);
    input->setCallback(&MidiPorts::callback, this);
    inputPortName = openVirtual(*input, kMmcClient, kMmcPort, *daw.port);
    daw.name = openVirtual(*daw.port, kDawClient, kNotesPort, *input);
    footSwitch.name = openVirtual(*footSwitch.port, kFootSwitchClient, kNotesPort, *input);
    watch = JackWatch::ofProcess(api);
    if (watch) {
        watch->isConnected(); // From here on it notices if the server goes.
    }
    return !inputPortName.isEmpty() && !daw.name.isEmpty() && !footSwitch.name.isEmpty();
}

void MidiPorts::close()
{
    const qint64 leftToLeaveUs = kLeaveUs - (monotonicUs() - sentUs);
    if (isOpen() && sentUs != 0 && leftToLeaveUs > 0) {
        QThread::usleep(static_cast<unsigned long>(leftToLeaveUs));
    }
    // All objects go before a new one is made: the JACK library does not survive a new client
    // beside those of a server that died.
    letGo(std::move(input));
    for (Output& output : outputs) {
        letGo(std::move(output.port));
        output.name.clear();
    }
    watch.reset();
    inputPortName.clear();
}

bool MidiPorts::isOpen() const
{
    return input && (!watch || watch->isServerAlive());
}

bool MidiPorts::send(Out out, const std::vector<unsigned char>& bytes)
{
    // The library would hang on a JACK server that takes nothing.
    if (!isOpen() || (watch && watch->standsStill(kPatience))) {
        return false;
    }
    try {
        outputs.at(out).port->sendMessage(&bytes);
    } catch (const RtMidiError&) {
        return false;
    }
    sentUs = monotonicUs();
    return true;
}

MidiPorts::Inbox MidiPorts::takeInbox()
{
    const std::lock_guard<std::mutex> lock(inboxLock);
    Inbox taken = std::move(inbox);
    inbox = {};
    taken.takenUs = monotonicUs();
    return taken;
}

void MidiPorts::callback(double, std::vector<unsigned char>* bytes, void* ports)
{
    auto* self = static_cast<MidiPorts*>(ports);
    bool isFirst = false;
    {
        const std::lock_guard<std::mutex> lock(self->inboxLock);
        Inbox& inbox = self->inbox;
        isFirst = inbox.messages.empty();
        if (inbox.messages.size() < kInboxLimit) {
            inbox.messages.push_back({monotonicUs(), *bytes});
        } else {
            ++inbox.dropped;
        }
    }
    if (isFirst) {
        emit self->received();
    }
}
