// SPDX-License-Identifier: MIT
#include "qmidimessage.h"
#include "testcase.h"

using Bytes = std::vector<unsigned char>;

class TestMidiMessage : public TestCase
{
    Q_OBJECT

private slots:
    void encodesFields()
    {
        const auto encoded = [](std::uint32_t status, std::uint32_t channel, std::uint32_t pitch,
                                std::uint32_t velocity, std::uint32_t control,
                                std::uint32_t value) {
            QMidiMessage message;
            message.setStatus(static_cast<QMidiStatus>(status))->setChannel(channel);
            message.setPitch(pitch)->setVelocity(velocity)->setControl(control)->setValue(value);
            return message.getRawMessage();
        };
        QCOMPARE(QMidiMessage().getRawMessage(), Bytes());
        QCOMPARE(encoded(0x90, 1, 60, 100, 1, 1), (Bytes{0x90, 0x3C, 0x64}));
        QCOMPARE(encoded(0x80, 16, 60, 0, 1, 1), (Bytes{0x8F, 0x3C, 0x00}));
        QCOMPARE(encoded(0xB0, 2, 1, 1, 7, 127), (Bytes{0xB1, 0x07, 0x7F}));
        QCOMPARE(encoded(0xC0, 3, 1, 1, 1, 5), (Bytes{0xC2, 0x05}));
        // Channels out of range carry into the status; only the low byte of a field goes out.
        QCOMPARE(encoded(0x90, 0, 1, 2, 0, 0), (Bytes{0x8F, 1, 2}));
        QCOMPARE(encoded(0x90, 17, 0x1FF, 0x180, 0, 0), (Bytes{0xA0, 0xFF, 0x80}));
        // Without an encoding: pitch bend, a status with a channel in it, empty exclusive data.
        QCOMPARE(encoded(0xE0, 1, 0, 0, 0, 8192), Bytes());
        QCOMPARE(encoded(0x91, 1, 60, 100, 0, 0), Bytes());
        QCOMPARE(encoded(0xF0, 0, 0, 0, 0, 0), Bytes());
    }

    void completesSystemExclusiveData()
    {
        const Bytes play{0xF0, 0x7F, 0x7F, 0x06, 0x02, 0xF7};
        const Bytes unfinished(play.begin(), play.end() - 1);
        QMidiMessage message;
        QCOMPARE(message.setStatus(MIDI_SYSEX)->setSysExData(play)->getRawMessage(), play);
        message.clear();
        QCOMPARE(message.setStatus(MIDI_SYSEX)->setSysExData(unfinished)->getRawMessage(), play);
        QCOMPARE(message.getSysExData(), unfinished);
    }

    void encodesOnceAndCopiesEverything()
    {
        QObject parent;
        QMidiMessage message(&parent);
        message.setStatus(MIDI_NOTE_ON)->setPitch(60)->setVelocity(100)->setControl(5)->setValue(6);
        message.setDeltaTime(7.5)->setSysExData({0xF0, 1});
        QCOMPARE(message.getRawMessage(), (Bytes{0x90, 60, 100}));
        QCOMPARE(message.setPitch(61)->getRawMessage(), (Bytes{0x90, 60, 100}));

        QMidiMessage copy(message);
        QCOMPARE(copy.parent(), nullptr);
        QVERIFY(copy.getStatus() == MIDI_NOTE_ON && copy.getChannel() == 1);
        QVERIFY(copy.getPitch() == 61 && copy.getVelocity() == 100);
        QVERIFY(copy.getControl() == 5 && copy.getValue() == 6 && copy.getDeltaTime() == 7.5);
        QCOMPARE(copy.getSysExData(), (Bytes{0xF0, 1}));
        QCOMPARE(copy.getRawMessage(), (Bytes{0x90, 60, 100}));

        QCOMPARE(copy.setRawMessage({1})->getRawMessage(), Bytes{1});
        copy.clear();
        QCOMPARE(copy.getRawMessage(), Bytes());
        QCOMPARE(copy.setStatus(MIDI_NOTE_OFF)->getRawMessage(), (Bytes{0x80, 0, 0}));
        QVERIFY(copy.getValue() == 0 && copy.getDeltaTime() == 0 && copy.getSysExData().empty());
        QCOMPARE(message.getRawMessage(), (Bytes{0x90, 60, 100}));
    }
};

VELT_TEST_MAIN(TestMidiMessage)
#include "tst_midimessage.moc"
