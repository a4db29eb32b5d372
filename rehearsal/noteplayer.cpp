// SPDX-License-Identifier: MIT
#include "noteplayer.h"

namespace {

constexpr int kNoteMs = 100;
constexpr unsigned char kNoteOn = 0x90; // On the first channel.
constexpr unsigned char kNoteOff = 0x80;

} // namespace

NotePlayer::NotePlayer(RehearsalPorts& midiPorts) : ports(midiPorts)
{
}

void NotePlayer::releaseAll()
{
    for (const auto& [key, timer] : timers) {
        if (timer->isActive()) {
            timer->stop();
            send(false, key.first, key.second);
        }
    }
}

void NotePlayer::strike(RehearsalPorts::Out out, int note)
{
    auto& timer = timers[{out, note}];
    if (!timer) {
        timer = std::make_unique<QTimer>();
        timer->setSingleShot(true);
        timer->setInterval(kNoteMs);
        connect(timer.get(), &QTimer::timeout, this, [=] { send(false, out, note); });
    }
    if (timer->isActive()) {
        send(false, out, note);
    }
    send(true, out, note);
    timer->start();
}

void NotePlayer::send(bool isOn, RehearsalPorts::Out out, int note)
{
    const auto pitch = static_cast<unsigned char>(note);
    const bool wasSent =
        isOn ? ports.send(out, {kNoteOn, pitch, kVelocity}) : ports.send(out, {kNoteOff, pitch, 0});
    emit played(wasSent, isOn, note, out);
}
