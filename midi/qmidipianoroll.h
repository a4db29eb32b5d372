// SPDX-License-Identifier: MIT
#pragma once

#include <QGraphicsView>

#include <cstdint>
#include <memory>
#include <vector>

class QGraphicsRectItem;
class QGraphicsScene;
class QMidiMessage;

// A piano keyboard of the 128 MIDI notes whose keys light up with the notes of the input ports that
// are connected to onMidiReceive(): blue, the stronger the louder. All channels light the same
// keys.
class QMidiPianoRoll : public QGraphicsView
{
    Q_OBJECT

public:
    explicit QMidiPianoRoll(QWidget* parent = nullptr);
    ~QMidiPianoRoll() override;

    // Whether a note is a black key. True for every negative number.
    static bool isSemiTone(int note);

public slots: // NOLINT(readability-redundant-access-specifiers): not to Qt
    // Note-on and note-off light and clear a key; a velocity of 0 makes it transparent. Other
    // messages, and notes outside 0 to 127, do nothing.
    void onMidiReceive(QMidiMessage* message);

private:
    int addKey(int note, float x); // Returns the width to the next key, without the gap.

    std::unique_ptr<QGraphicsScene> keyScene;
    std::int32_t keyWidth = 10;           // In units of the scene, as the height.
    std::int32_t keyHeight = 60;          // Of a white key; a black one has half of it.
    std::vector<QGraphicsRectItem*> keys; // By note number; they belong to the scene.
};
