// SPDX-License-Identifier: MIT
#include "desktop.h"
#include "editdata.h"
#include "midipeer.h"
#include "qmidiin.h"
#include "qmidimessage.h"
#include "qmidiout.h"
#include "standin.h"
#include "testcase.h"

#include <QDir>

#include <csignal>

namespace {

// All events but keys.
QStringList results(StandIn& rehearsal)
{
    return rehearsal.events().filter(QRegularExpression("^(?!key )"));
}

} // namespace

class TestRehearsal : public TestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
        midi.reset(); // Before another takes its name.
        midi = std::make_unique<MidiSystem>();
        SKIP_WITHOUT(*midi);
    }

    void understandsKeys()
    {
        // Control and Shift also arrive as keys, and do no harm.
        StandIn studio("Studio One");
        StandIn::type("ctrl+t KP_3 Shift_L KP_4 Return ctrl+semicolon KP_8 KP_9 KP_Enter ctrl+t "
                      "Escape space");
        const QStringList expected = {"located bar 34", "located marker 89",
                                      "wrong sequence Cmd+T another key (key does not belong here)",
                                      "transport playing"};
        QTRY_COMPARE(results(studio), expected);
        QVERIFY(studio.has("key down 0x29 cmd"));
        QVERIFY(studio.has("key up other 0xFF1B"));
    }

    void takesMmcAndPlaysNotes()
    {
        StandIn rehearsal;
        QMidiOut out;
        openByName(out, StandIn::kMmcPort);
        for (const Bytes& message : {Bytes{0xF0, 0x7F, 0x00, 0x06, 0x02, 0xF7},
                                     {0xF0, 0x7F, 0x7F, 0x06, 0x01, 0xF7},
                                     {0xF0, 0x7F, 0x7F, 0x06, 0x03, 0xF7},
                                     {0xF0, 0x7E, 0x7F, 0x06, 0x02, 0xF7}}) {
            out.sendRawMessage(message);
        }
        QStringList expected = {"midi F0 7F 00 06 02 F7", "transport playing",
                                "midi F0 7F 7F 06 01 F7", "transport stopped",
                                "midi F0 7F 7F 06 03 F7",  // Deferred Play is not Play.
                                "midi F0 7E 7F 06 02 F7"}; // Not real time, so no MMC.
        QTRY_COMPARE(results(rehearsal), expected);

        QStringList heard;
        QMidiIn in;
        connect(&in, &QMidiIn::midiMessageReceived, this, [&](QMidiMessage* note) {
            heard << QString("%1 %2").arg(note->getStatus(), 0, 16).arg(note->getPitch());
        });
        in.openPort(StandIn::kFootSwitchPort);
        settle();
        StandIn::type("F5");
        QTRY_COMPARE(heard, (QStringList{"90 35", "80 35"}));
        StandIn::type("F7");
        QTRY_VERIFY(rehearsal.has("sent note off 36 daw notes"));
        // A note that sounds ends before it is struck again, or the program with it.
        rehearsal.press("note 128\nend\nnote 28\nnote 28\nquit");
        QVERIFY(rehearsal.endsInOrder());
        expected += QStringList{"sent note on 35 foot switch", "sent note off 35 foot switch",
                                "sent note on 36 daw notes",   "sent note off 36 daw notes",
                                "unknown command note 128",    "unknown command end",
                                "sent note on 28 foot switch", "sent note off 28 foot switch",
                                "sent note on 28 foot switch", "sent note off 28 foot switch"};
        QCOMPARE(results(rehearsal), expected);
        QTRY_COMPARE(heard, (QStringList{"90 35", "80 35", "90 28", "80 28", "90 28", "80 28"}));
    }

    void comesBackAfterTheMidiServerDied()
    {
        midi.reset();
        JackServer jack;
        SKIP_WITHOUT(jack);
        StandIn rehearsal;
        jack.kill();
        // The JACK library may report it a moment later.
        QTRY_VERIFY((rehearsal.press("note 31"), rehearsal.has("not sent note on 31 foot switch")));
        QVERIFY2(jack.restart(), qPrintable(jack.why()));
        StandIn::type("F8");
        QTRY_VERIFY_WITH_TIMEOUT(rehearsal.has("key up other 0xFFC5"), 30000);
        rehearsal.press("note 33");
        QTRY_VERIFY_WITH_TIMEOUT(rehearsal.has("sent note on 33 foot switch"), 30000);
        QVERIFY(rehearsal.endsInOrder(SIGTERM));
    }

    void worksWithoutMidiAndEndsInOrder()
    {
        midi.reset();
        JackServer jack; // Names a MIDI system,
        jack.kill();     // which is not there.
        StandIn rehearsal;
        rehearsal.press("note 31");
        QTRY_VERIFY(rehearsal.has("not sent note off 31 foot switch"));
        rehearsal.closeInput(); // The end of input does not end the program.
        StandIn::type("space");
        QTRY_VERIFY(rehearsal.has("transport playing"));
        QVERIFY(rehearsal.endsInOrder(SIGINT));
    }

    void practises()
    {
        const QDir settings(qEnvironmentVariable("XDG_CONFIG_HOME"));
        const QString shows = settings.filePath("velt-rehearsal/VELT/VELTSetting.ini");
        EditData data;
        for (const std::size_t expectedShows : {3U, 1U}) {
            StandIn rehearsal(QStringList{"--practise", "Studio One"});
            QTRY_COMPARE(Desktop::windows("VELT").size(), 1);
            data.readEdit(shows); // The sample, and what was made of it the time before.
            QCOMPARE(data.ShowList.size(), expectedShows);
            data.ShowList.resize(1);
            data.writeEdit(shows);
            rehearsal.press("note 29\nnote 31"); // The second entry is the first song.
            QTRY_VERIFY_WITH_TIMEOUT(rehearsal.has("located bar 5"), 20000);
            QTRY_VERIFY(rehearsal.has("midi F0 7F 7F 06 01 F7"));
            QVERIFY(rehearsal.endsInOrder(SIGTERM));
            QTRY_COMPARE(Desktop::windows("VELT").size(), 0);
        }
        QVERIFY(!settings.exists("VELT")); // The user's own.
    }

private:
    std::unique_ptr<MidiSystem> midi;
};

VELT_DISPLAY_TEST_MAIN(TestRehearsal)
#include "tst_rehearsal.moc"
