// SPDX-License-Identifier: MIT
#include "qmidimessage.h"
#include "qmidipianoroll.h"
#include "testcase.h"

#include <QGraphicsRectItem>

#include <map>

using Bytes = std::vector<unsigned char>;

// Messages, and the piano roll that shows them.
class TestMidiMessage : public TestCase
{
    Q_OBJECT

private slots:
    void encodesFields()
    {
        const auto encoded = [](std::uint32_t status, std::uint32_t channel, std::uint32_t pitch,
                                std::uint32_t velocity) {
            QMidiMessage message;
            message.setStatus(static_cast<QMidiStatus>(status))->setChannel(channel);
            return message.setPitch(pitch)->setVelocity(velocity)->setValue(5)->getRawMessage();
        };
        QCOMPARE(encoded(0x90, 1, 60, 100), (Bytes{0x90, 0x3C, 0x64}));
        QCOMPARE(encoded(0x80, 16, 60, 0), (Bytes{0x8F, 0x3C, 0x00}));
        QCOMPARE(encoded(0xC0, 3, 1, 1), (Bytes{0xC2, 0x05}));
        // Channels out of range carry into the status; only the low byte of a field goes out.
        QCOMPARE(encoded(0x90, 17, 0x1FF, 0x180), (Bytes{0xA0, 0xFF, 0x80}));
        // Without an encoding: pitch bend, a status with a channel in it, empty exclusive data.
        for (const std::uint32_t status : {0U, 0xE0U, 0x91U, 0xF0U}) {
            QCOMPARE(encoded(status, 1, 60, 100), Bytes());
        }

        const Bytes play{0xF0, 0x7F, 0x7F, 0x06, 0x02, 0xF7};
        const Bytes unfinished(play.begin(), play.end() - 1);
        for (const Bytes& data : {play, unfinished}) {
            QMidiMessage message;
            QCOMPARE(message.setStatus(MIDI_SYSEX)->setSysExData(data)->getRawMessage(), play);
            QCOMPARE(message.getSysExData(), data);
        }
    }

    void encodesOnceAndCopiesEverything()
    {
        const Bytes first{0xB1, 5, 6};
        QMidiMessage message;
        message.setStatus(MIDI_CONTROL_CHANGE)->setChannel(2)->setControl(5)->setValue(6);
        QCOMPARE(message.getRawMessage(), first);
        QCOMPARE(message.setControl(7)->getRawMessage(), first);
        QMidiMessage copy(message);
        QVERIFY(copy.getControl() == 7 && copy.getValue() == 6 && copy.getRawMessage() == first);
        copy.clear();
        QCOMPARE(copy.setStatus(MIDI_NOTE_OFF)->getRawMessage(), (Bytes{0x80, 0, 0}));
        QCOMPARE(copy.setRawMessage({1})->getRawMessage(), Bytes{1});
    }

    void lightsTheKeysOfThePianoRoll()
    {
        QMidiPianoRoll roll;
        std::map<qreal, QGraphicsRectItem*> keys; // By their left edge.
        for (QGraphicsItem* item : roll.scene()->items()) {
            auto* key = qgraphicsitem_cast<QGraphicsRectItem*>(item);
            keys[key->rect().left()] = key;
        }
        QCOMPARE(keys.size(), std::size_t(128));
        for (const int white : {0, 12, 24, 35, 47, 59, 71, 82}) {
            QVERIFY(keys[410 + white] && keys[410 + white]->rect().size() == QSizeF(10, 60));
        }
        for (const int black : {6, 18, 41, 53, 65}) {
            QVERIFY(keys[410 + black] && keys[410 + black]->rect().size() == QSizeF(10, 30));
        }
        QCOMPARE(roll.scene()->itemAt({417, 1}, {}), keys[416]); // Over the white ones.

        const auto play = [&](QMidiStatus status, std::uint32_t pitch, std::uint32_t velocity) {
            QMidiMessage message;
            message.setStatus(status)->setChannel(10)->setPitch(pitch)->setVelocity(velocity);
            roll.onMidiReceive(&message);
        };
        play(MIDI_NOTE_ON, 60, 127);
        play(MIDI_CONTROL_CHANGE, 60, 1);
        QCOMPARE(keys[410]->brush(), QBrush(QColor(0, 0, 200, 254)));
        play(MIDI_NOTE_ON, 60, 0);
        QCOMPARE(keys[410]->brush(), QBrush(QColor(0, 0, 200, 0)));
        play(MIDI_NOTE_OFF, 60, 0);
        QCOMPARE(keys[410]->brush(), QBrush(Qt::white));
        play(MIDI_NOTE_ON, 61, 1);
        play(MIDI_NOTE_OFF, 61, 0);
        QCOMPARE(keys[416]->brush(), QBrush(Qt::black));
        play(MIDI_NOTE_ON, 128, 100); // No key has this number.
    }
};

VELT_TEST_MAIN(TestMidiMessage)
#include "tst_midimessage.moc"
