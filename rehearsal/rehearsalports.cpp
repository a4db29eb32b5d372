// SPDX-License-Identifier: MIT
#include "rehearsalports.h"

#include "clock.h"

#include <QThread>

namespace {

constexpr const char* kMmcClient = "Rehearsal MMC";
constexpr const char* kMmcPort = "commands";
constexpr const char* kDawClient = "Rehearsal DAW";
constexpr const char* kFootSwitchClient = "Rehearsal Foot switch";
constexpr const char* kNotesPort = "notes";

constexpr std::size_t kInboxLimit = 10000;
constexpr qint64 kLeaveUs = 50000; // Two cycles of a slow MIDI server.

// Opens the virtual port and returns the name under which `lister`, of the other direction, sees
// it. Empty: it did not appear, as on a system without virtual ports.
QString openVirtual(MidiPort& port, const char* client, const char* name, MidiPort& lister)
{
    const QStringList before = lister.getPorts();
    port.openVirtualPort(QLatin1String(name));
    QString
        newest; // Two of one name over ALSA: both are named otherwise now, the newest comes last.
    for (const QString& seen : lister.getPorts()) {
        if (seen.startsWith(QLatin1String(client)) && !before.contains(seen)) {
            newest = seen;
        }
    }
    return newest;
}

} // namespace

RehearsalPorts::RehearsalPorts(QObject* parent)
    : QObject(parent),
      input(kMmcClient, {}, callback, this),
      outputs{{{kDawClient, {}}, {kFootSwitchClient, {}}}}
{
    input.setIgnoreTypes(false, true, true); // MMC is System Exclusive.
}

RehearsalPorts::~RehearsalPorts()
{
    close();
}

bool RehearsalPorts::open()
{
    close();
    try {
        MidiOutput& daw = outputs.at(DawNotes);
        inputPortName = openVirtual(input, kMmcClient, kMmcPort, daw);
        outputNames.at(DawNotes) = openVirtual(daw, kDawClient, kNotesPort, input);
        outputNames.at(FootSwitch) =
            openVirtual(outputs.at(FootSwitch), kFootSwitchClient, kNotesPort, input);
    } catch (const RtMidiError&) { // NOLINT(bugprone-empty-catch): some name is empty, then.
    }
    if (isOpen()) {
        return true;
    }
    close();
    return false;
}

void RehearsalPorts::close()
{
    const qint64 leftToLeaveUs = kLeaveUs - (monotonicUs() - sentUs);
    if (isOpen() && sentUs != 0 && leftToLeaveUs > 0) {
        QThread::usleep(static_cast<unsigned long>(leftToLeaveUs));
    }
    input.dropBackEnd();
    inputPortName.clear();
    for (MidiOutput& output : outputs) {
        output.dropBackEnd();
    }
    outputNames = {};
}

bool RehearsalPorts::isOpen() const
{
    return !inputPortName.isEmpty() && !outputNames[DawNotes].isEmpty() &&
           !outputNames[FootSwitch].isEmpty() && input.isServerAlive();
}

bool RehearsalPorts::send(Out out, const std::vector<unsigned char>& bytes)
{
    try {
        if (!isOpen() || !outputs.at(out).send(bytes)) {
            return false;
        }
    } catch (const RtMidiError&) {
        return false;
    }
    sentUs = monotonicUs();
    return true;
}

RehearsalPorts::Inbox RehearsalPorts::takeInbox()
{
    const std::lock_guard<std::mutex> lock(inboxLock);
    Inbox taken = std::move(inbox);
    inbox = {};
    taken.takenUs = monotonicUs();
    return taken;
}

void RehearsalPorts::callback(double, std::vector<unsigned char>* bytes, void* ports)
{
    auto* self = static_cast<RehearsalPorts*>(ports);
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
