// SPDX-License-Identifier: MIT
#include "qmidimessage.h"
#include "qmidipianoroll.h"
#include "testcase.h"

#include <QGraphicsRectItem>

#include <map>

class TestMidiPianoRoll : public TestCase
{
    Q_OBJECT

private slots:
    void laysOutAndLightsTheKeys()
    {
        QMidiPianoRoll roll;
        std::map<qreal, QGraphicsRectItem*> keys; // By their left edge.
        int black = 0;
        for (QGraphicsItem* item : roll.scene()->items()) {
            auto* key = qgraphicsitem_cast<QGraphicsRectItem*>(item);
            keys[key->rect().left()] = key;
            const bool isBlack = key->zValue() == 2;
            black += isBlack ? 1 : 0;
            QCOMPARE(key->rect().size(), QSizeF(10, isBlack ? 30 : 60));
        }
        QCOMPARE(keys.size(), std::size_t(128));
        QCOMPARE(black, 53);
        for (const int x : {0, 6, 12, 18, 24, 35, 41, 47, 53, 59, 65, 71, 82}) {
            QVERIFY2(keys.count(410 + x) == 1, qPrintable(QString::number(x)));
        }
        QVERIFY(!QMidiPianoRoll::isSemiTone(60) && QMidiPianoRoll::isSemiTone(61));
        QVERIFY(QMidiPianoRoll::isSemiTone(-12));

        const auto play = [&](QMidiStatus status, std::uint32_t pitch, std::uint32_t velocity) {
            QMidiMessage message;
            message.setStatus(status)->setChannel(10)->setPitch(pitch)->setVelocity(velocity);
            roll.onMidiReceive(&message);
        };
        const QGraphicsRectItem* c = keys[410];
        const QGraphicsRectItem* cSharp = keys[416];
        play(MIDI_NOTE_ON, 60, 127);
        play(MIDI_CONTROL_CHANGE, 60, 1);
        QCOMPARE(c->brush(), QBrush(QColor(0, 0, 200, 254)));
        play(MIDI_NOTE_ON, 60, 0);
        QCOMPARE(c->brush(), QBrush(QColor(0, 0, 200, 0)));
        play(MIDI_NOTE_OFF, 60, 0);
        QCOMPARE(c->brush(), QBrush(Qt::white));
        QCOMPARE(cSharp->brush(), QBrush(Qt::black));
        play(MIDI_NOTE_ON, 61, 1);
        play(MIDI_NOTE_OFF, 61, 0);
        QCOMPARE(cSharp->brush(), QBrush(Qt::black));
        play(MIDI_NOTE_ON, 128, 100); // No key has this number, nor the next.
        play(MIDI_NOTE_OFF, 0xFFFFFFFF, 100);
    }
};

VELT_TEST_MAIN(TestMidiPianoRoll)
#include "tst_midipianoroll.moc"
