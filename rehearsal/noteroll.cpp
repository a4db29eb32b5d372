// SPDX-License-Identifier: MIT
#include "noteroll.h"

#include "look.h"
#include "qmidimessage.h"

#include <QGraphicsRectItem>

namespace {

constexpr int kNotes = 128;
constexpr int kMinimumHeight = 48;
constexpr int kMaximumHeight = 96;

} // namespace

NoteRoll::NoteRoll(QWidget* parent) : QMidiPianoRoll(parent)
{
    setFocusPolicy(Qt::NoFocus);
    setInteractive(false);
    setFrameStyle(NoFrame);
    setStyleSheet(QStringLiteral("background: %1").arg(Look::kPanel.name()));
    setRenderHint(QPainter::Antialiasing);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setMinimumHeight(kMinimumHeight);
    setMaximumHeight(kMaximumHeight);
    setAccessibleName(tr("Notes on the wire"));
    // The keys are translucent when lit.
    scene()->addRect(sceneRect(), Qt::NoPen, Qt::white)->setZValue(-1);
}

void NoteRoll::showNote(int note, int velocity)
{
    QMidiMessage message;
    message.setStatus(velocity > 0 ? MIDI_NOTE_ON : MIDI_NOTE_OFF)
        ->setPitch(static_cast<std::uint32_t>(note))
        ->setVelocity(static_cast<std::uint32_t>(velocity));
    onMidiReceive(&message);
}

void NoteRoll::clear()
{
    for (int note = 0; note < kNotes; ++note) {
        showNote(note, 0);
    }
}

void NoteRoll::resizeEvent(QResizeEvent* event)
{
    QMidiPianoRoll::resizeEvent(event);
    fitInView(sceneRect(), Qt::IgnoreAspectRatio);
}
