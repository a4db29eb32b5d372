// SPDX-License-Identifier: MIT
#include "qmidipianoroll.h"

#include "qmidimessage.h"

#include <QGraphicsRectItem>

namespace {

constexpr int kNotes = 128;
constexpr int kNotesPerOctave = 12;
constexpr unsigned int kBlackKeys = 0x54A; // Bit n: note n of the octave, from C, is black.
constexpr int kKeyE = 4;                   // These two have no black key above them.
constexpr int kKeyB = 11;
constexpr float kGap = 1;
constexpr qreal kBlackZ = 2;

} // namespace

QMidiPianoRoll::QMidiPianoRoll(QWidget* parent)
    : QGraphicsView(parent), keyScene(std::make_unique<QGraphicsScene>())
{
    float x = 0;
    for (int note = 0; note < kNotes; ++note) {
        x += static_cast<float>(addKey(note, x)) + kGap;
    }
    setScene(keyScene.get());
}

QMidiPianoRoll::~QMidiPianoRoll() = default;

int QMidiPianoRoll::addKey(int note, float x)
{
    const int half = keyWidth / 2;
    if (isSemiTone(note)) {
        const int height = keyHeight / 2;
        QGraphicsRectItem* key =
            keyScene->addRect(x, 0, keyWidth, height, QPen(Qt::black), QBrush(Qt::black));
        key->setZValue(kBlackZ);
        keys.push_back(key);
        return half;
    }
    keys.push_back(keyScene->addRect(x, 0, keyWidth, keyHeight));
    const int n = note % kNotesPerOctave;
    return n == kKeyE || n == kKeyB ? keyWidth : half;
}

bool QMidiPianoRoll::isSemiTone(int note)
{
    return note < 0 || ((kBlackKeys >> (note % kNotesPerOctave)) & 1U) != 0;
}

void QMidiPianoRoll::onMidiReceive(QMidiMessage* message)
{
    const std::uint32_t pitch = message->getPitch();
    if (pitch >= keys.size()) {
        return;
    }
    if (message->getStatus() == MIDI_NOTE_ON) {
        const auto alpha = static_cast<int>(2 * message->getVelocity());
        keys[pitch]->setBrush(QColor(0, 0, 200, alpha));
    } else if (message->getStatus() == MIDI_NOTE_OFF) {
        keys[pitch]->setBrush(isSemiTone(static_cast<int>(pitch)) ? Qt::black : Qt::white);
    }
}
