// SPDX-License-Identifier: MIT
#include "editdata.h"
#include "midipeer.h"
#include "noteroll.h"
#include "qmidiin.h"
#include "qmidimessage.h"
#include "qmidiout.h"
#include "rehearsalwindow.h"
#include "servers.h"
#include "testcase.h"

#include <QDir>
#include <QGraphicsRectItem>
#include <QStandardPaths>

#include <csignal>

namespace {

// The program under test.
class Rehearsal : public QProcess
{
public:
    explicit Rehearsal(const QString& daw = "Pro Tools") : Rehearsal(QStringList{daw}) {}
    explicit Rehearsal(const QStringList& arguments)
    {
        setStandardErrorFile(nullDevice());
        start(REHEARSAL, arguments);
        if (!QTest::qWaitFor([this] { return has("ready"); }, 20000)) {
            qFatal("the program does not get ready");
        }
    }
    ~Rehearsal() override
    {
        kill();
        waitForFinished();
    }

    // Types into its window, which has not the focus: no window manager is there.
    static void type(const QString& keys)
    {
        const QStringList arguments = {
            "search", "--onlyvisible", "--name", "^(Pro Tools|Studio One)$",
            "key",    "--delay",       "20"};
        QCOMPARE(execute("xdotool", arguments + keys.split(' ')), 0);
    }
    static int windows(const QString& title)
    {
        QProcess search;
        search.start("xdotool", {"search", "--onlyvisible", "--name", '^' + title + '$'});
        search.waitForFinished();
        return search.readAllStandardOutput().count('\n');
    }
    bool has(const char* event) { return events().contains(event); }
    // What it has reported since it was ready, the keys left out.
    QStringList results()
    {
        return events().mid(seen.indexOf("ready") + 1).filter(QRegularExpression("^(?!key )"));
    }
    bool hasEndedInOrder()
    {
        return waitForFinished() && exitStatus() == NormalExit && exitCode() == 0;
    }

private:
    // Without their times, which are checked: three decimals, never backwards.
    const QStringList& events()
    {
        static const QRegularExpression form(R"(^(\d+\.\d{3}) (\S.*)$)");
        while (canReadLine()) {
            const auto line = form.match(readLine().trimmed());
            const double time = line.captured(1).toDouble();
            seen << (line.hasMatch() && time >= last ? line.captured(2) : "bad line");
            last = time;
        }
        return seen;
    }

    QStringList seen;
    double last = 0;
};

} // namespace

class RehearsalTest : public TestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
        if (QStandardPaths::findExecutable("xdotool").isEmpty()) {
            failIfServersAreNeeded("xdotool is not installed");
            QSKIP("xdotool is not installed");
        }
        qputenv("JACK_DEFAULT_SERVER", "no-such-server");
        qputenv("JACK_NO_START_SERVER", "1");
    }

    void understandsKeys()
    {
        Rehearsal pro("Pro Tools");
        Rehearsal::type("KP_Equal KP_1 KP_0 KP_5 KP_Enter KP_Decimal KP_7 KP_Decimal Tab KP_Equal "
                        "Escape space");
        const QStringList expected = {"located bar 105", "located marker 7",
                                      "wrong sequence = another key (key does not belong here)",
                                      "transport playing"};
        QTRY_COMPARE(pro.results(), expected);
        QVERIFY(pro.has("key down 0x51") && pro.has("key up other 0xFF1B"));
        pro.kill();
        pro.waitForFinished();

        // Control and Shift arrive as keys of their own when they are typed so, and do no harm.
        Rehearsal studio("Studio One");
        Rehearsal::type("ctrl+t KP_3 Shift_L KP_4 Return ctrl+semicolon KP_8 KP_9 KP_Enter");
        QTRY_COMPARE(studio.results(), (QStringList{"located bar 34", "located marker 89"}));
        QVERIFY(studio.has("key down 0x29 cmd") && studio.has("key down other 0xFFE1"));
    }

    void takesMmcAndPlaysNotes()
    {
        const JackServer server;
        if (!server.isRunning()) {
            QSKIP(qPrintable(server.why()));
        }
        Rehearsal rehearsal;
        QMidiOut out;
        openByName(out, "Rehearsal MMC:commands");
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
        QTRY_COMPARE(rehearsal.results(), expected);

        QStringList heard;
        QMidiIn in;
        connect(&in, &QMidiIn::midiMessageReceived, this, [&](QMidiMessage* note) {
            heard << QString("%1 %2").arg(note->getStatus(), 0, 16).arg(note->getPitch());
        });
        in.openPort("Rehearsal Foot switch:notes");
        settle();
        Rehearsal::type("F5");
        QTRY_COMPARE(heard, (QStringList{"90 35", "80 35"}));
        Rehearsal::type("F7");
        QTRY_VERIFY(rehearsal.has("sent note off 36 daw notes"));
        // A note that sounds ends before it is struck again, or the program with it.
        rehearsal.write("note 128\nend\nnote 28\nnote 28\nquit\n");
        QVERIFY(rehearsal.hasEndedInOrder());
        expected += QStringList{"sent note on 35 foot switch", "sent note off 35 foot switch",
                                "sent note on 36 daw notes",   "sent note off 36 daw notes",
                                "unknown command note 128",    "unknown command end",
                                "sent note on 28 foot switch", "sent note off 28 foot switch",
                                "sent note on 28 foot switch", "sent note off 28 foot switch"};
        QCOMPARE(rehearsal.results(), expected);
        QTRY_COMPARE(heard, (QStringList{"90 35", "80 35", "90 28", "80 28", "90 28", "80 28"}));
    }

    void comesBackAfterTheMidiServerDied()
    {
        JackServer server;
        if (!server.isRunning()) {
            QSKIP(qPrintable(server.why()));
        }
        Rehearsal rehearsal;
        server.kill();
        rehearsal.write("note 31\n");
        QTRY_VERIFY(rehearsal.has("not sent note on 31 foot switch"));
        QVERIFY2(server.restart(), qPrintable(server.why()));
        Rehearsal::type("F8");
        rehearsal.write("note 33\n");
        QTRY_VERIFY_WITH_TIMEOUT(rehearsal.has("sent note on 33 foot switch"), 20000);
        rehearsal.terminate();
        QVERIFY(rehearsal.hasEndedInOrder());
    }

    void worksWithoutMidiAndEndsInOrder()
    {
        for (const int signal : {SIGTERM, SIGINT}) {
            Rehearsal rehearsal;
            rehearsal.write("note 31\n");
            QTRY_VERIFY(rehearsal.has("not sent note off 31 foot switch"));
            rehearsal.closeWriteChannel(); // The end of input does not end the program,
            Rehearsal::type("space");
            QTRY_VERIFY(rehearsal.has("transport playing"));
            ::kill(static_cast<pid_t>(rehearsal.processId()), signal); // but this does.
            QVERIFY(rehearsal.hasEndedInOrder());
        }
    }

    void showsTheNotesOnTheWire()
    {
        const JackServer server;
        if (!server.isRunning()) {
            QSKIP(qPrintable(server.why()));
        }
        RehearsalWindow window(Daw::ProTools);
        window.show();
        auto* roll = window.findChild<NoteRoll*>();
        const auto colorOfMiddleC = [roll] {
            const QGraphicsItem* key = roll->scene()->itemAt(QPointF(413, 50), {});
            return qgraphicsitem_cast<const QGraphicsRectItem*>(key)->brush().color();
        };
        QTRY_COMPARE(colorOfMiddleC(), QColor(Qt::white));
        window.runCommand("note 60");
        QCOMPARE(colorOfMiddleC(), QColor(0, 0, 200, 200));
        QTRY_COMPARE(colorOfMiddleC(), QColor(Qt::white));
        QMidiOut out;
        openByName(out, "Rehearsal MMC:commands");
        settle();
        out.sendRawMessage({0x95, 60, 127});
        QTRY_COMPARE(colorOfMiddleC(), QColor(0, 0, 200, 254));
        out.sendRawMessage({0x95, 60, 0}); // A note on without velocity ends the note.
        QTRY_COMPARE(colorOfMiddleC(), QColor(Qt::white));
    }

    void practises()
    {
        const JackServer server;
        if (!server.isRunning()) {
            QSKIP(qPrintable(server.why()));
        }
        const QDir settings(qEnvironmentVariable("XDG_CONFIG_HOME"));
        const QString shows = settings.filePath("velt-rehearsal/VELT/VELTSetting.ini");
        EditData data;
        for (const std::size_t expectedShows : {3U, 1U}) {
            Rehearsal rehearsal(QStringList{"--practise", "Studio One"});
            QTRY_COMPARE(rehearsal.windows("VELT"), 1);
            data.readEdit(shows); // The sample, and what was made of it the time before.
            QCOMPARE(data.ShowList.size(), expectedShows);
            data.ShowList.resize(1);
            data.writeEdit(shows);
            rehearsal.write("note 29\nnote 31\n"); // The second entry is the first song.
            QTRY_VERIFY(rehearsal.has("located bar 5") && rehearsal.has("midi F0 7F 7F 06 01 F7"));
            rehearsal.terminate();
            QVERIFY(rehearsal.hasEndedInOrder());
            QTRY_COMPARE(rehearsal.windows("VELT"), 0);
        }
        QVERIFY(!settings.exists("VELT")); // The user's own.
    }

    void saysHowItIsUsed()
    {
        QProcess program;
        program.start(REHEARSAL, {"pro tools"});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitCode(), 2);
        QVERIFY(program.readAllStandardError().contains("cannot stand in for \"pro tools\""));
    }
};

VELT_DISPLAY_TEST_MAIN(RehearsalTest)
#include "tst_rehearsal.moc"
