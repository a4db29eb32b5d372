// SPDX-License-Identifier: MIT
#include "editdata.h"
#include "noteroll.h"
#include "rehearsalwindow.h"
#include "servers.h"
#include "testcase.h"

#include <QGraphicsRectItem>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <RtMidi.h>

#include <csignal>

namespace {

using Bytes = std::vector<unsigned char>;

// The program under test, on a display of its own.
class Rehearsal
{
public:
    explicit Rehearsal(const XServer& server) : display(server.display())
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DISPLAY"), display);
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime.path());
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), settings());
        process.setProcessEnvironment(environment);
        // What the MIDI libraries say there is no business of a test, unless it fails.
        process.setStandardErrorFile(runtime.filePath(QStringLiteral("errors")));
    }
    ~Rehearsal() { stop(); }
    Q_DISABLE_COPY_MOVE(Rehearsal)

    bool start(const QStringList& arguments = {})
    {
        process.start(QStringLiteral(REHEARSAL), arguments);
        return process.waitForStarted() && QTest::qWaitFor([this] { return has("ready"); }, 20000);
    }
    void stop()
    {
        process.terminate();
        if (!process.waitForFinished(20000)) {
            process.kill();
            process.waitForFinished();
        }
    }
    [[nodiscard]] QString settings() const { return runtime.filePath(QStringLiteral("config")); }
    void command(const QByteArray& line) { process.write(line + '\n'); }
    [[nodiscard]] QString comm() const
    {
        QFile file(QStringLiteral("/proc/%1/comm").arg(process.processId()));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed()
                                              : QString();
    }

    [[nodiscard]] QString window(const QString& title) const // Empty: there is none.
    {
        return xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                        QStringLiteral("--name"), QLatin1Char('^') + title + QLatin1Char('$')});
    }
    // Types into the window of this title, which has not the focus: no window manager is there.
    void type(const QString& title, const QString& keys) const
    {
        QVERIFY2(!window(title).isEmpty(), qPrintable(title));
        xdotool(QStringList{QStringLiteral("key"), QStringLiteral("--window"), window(title),
                            QStringLiteral("--delay"), QStringLiteral("20")} +
                keys.split(QLatin1Char(' ')));
    }

    // All events so far without their times, which are checked: three decimals, never backwards.
    QStringList events()
    {
        static const QRegularExpression form(QStringLiteral("^(\\d+\\.\\d{3}) (\\S.*)$"));
        output += process.readAllStandardOutput();
        QStringList texts;
        double last = 0;
        for (const QByteArray& line : output.left(output.lastIndexOf('\n')).split('\n')) {
            const auto match = form.match(QString::fromUtf8(line));
            if (!match.hasMatch() || match.captured(1).toDouble() < last) {
                return {QStringLiteral("bad line: ") + QString::fromUtf8(line)};
            }
            last = match.captured(1).toDouble();
            texts += match.captured(2);
        }
        return texts;
    }
    bool has(const char* event) { return events().contains(QLatin1String(event)); }
    QStringList eventsFrom(const char* prefix)
    {
        return events().filter(QRegularExpression(QLatin1Char('^') + QLatin1String(prefix)));
    }

    QProcess process;

private:
    QString xdotool(const QStringList& arguments) const // NOLINT(modernize-use-nodiscard)
    {
        QProcess tool;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DISPLAY"), display);
        tool.setProcessEnvironment(environment);
        tool.start(QStringLiteral("xdotool"), arguments);
        tool.waitForFinished();
        return QString::fromLatin1(tool.readAllStandardOutput()).trimmed();
    }

    QString display;
    QTemporaryDir runtime;
    QByteArray output;
};

// The other end of one of the program's ports, by its full name. On a busy machine the server may
// refuse a client at first. Null: not to be had.
template <class Port>
std::unique_ptr<Port> otherEnd(const QString& name)
{
    std::unique_ptr<Port> port;
    const auto opens = [&] {
        try {
            port.reset(); // The old client goes before the new one comes.
            port = std::make_unique<Port>(RtMidi::UNIX_JACK, "Test");
            for (unsigned i = 0; i < port->getPortCount(); ++i) {
                if (QString::fromStdString(port->getPortName(i)) == name) {
                    port->openPort(i);
                    return true;
                }
            }
        } catch (const RtMidiError&) {
            // Once more, then.
        }
        return false;
    };
    if (!QTest::qWaitFor(opens, 10000)) {
        port.reset();
    }
    return port;
}

// Listens to one of the program's outputs.
class Ear
{
public:
    explicit Ear(const QString& name) : port(otherEnd<RtMidiIn>(name)) {}

    [[nodiscard]] bool isOpen() const { return port != nullptr; }
    QString heard() // Everything so far, one message a line.
    {
        for (port->getMessage(&message); !message.empty(); port->getMessage(&message)) {
            for (const unsigned char byte : message) {
                text += QString::asprintf("%02X ", static_cast<unsigned>(byte));
            }
            text.back() = QLatin1Char('\n');
        }
        return text;
    }

private:
    std::unique_ptr<RtMidiIn> port;
    Bytes message;
    QString text;
};

} // namespace

class RehearsalTest : public TestCase
{
    Q_OBJECT

    std::unique_ptr<XServer> screen;

private slots:
    void initTestCase();
    void understandsPostedKeys_data();
    void understandsPostedKeys();
    void takesMmc();
    void playsNotes();
    void showsTheNotesOnTheWire();
    void practises();
    void comesBackAfterTheMidiServerDied();
    void worksWithoutMidi();
    void endsInOrder_data();
    void endsInOrder();
    void saysHowItIsUsed();
};

void RehearsalTest::initTestCase()
{
    screen = std::make_unique<XServer>();
    if (!screen->isRunning()) {
        QSKIP(qPrintable(screen->why()));
    }
    if (QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty()) {
        QSKIP("xdotool is not installed");
    }
}

void RehearsalTest::understandsPostedKeys_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("events"); // After "ready"; key releases left out; one a line.

    QTest::newRow("Pro Tools") << QStringList() << QStringLiteral("Pro Tools")
                               << QStringLiteral("KP_Equal KP_1 KP_0 KP_5 KP_Enter KP_Decimal KP_7 "
                                                 "KP_Decimal Tab KP_Equal Escape space")
                               << QStringLiteral("down 0x51\ndown 0x53\ndown 0x52\ndown 0x57\n"
                                                 "down 0x4C\nlocated bar 105\n"
                                                 "down 0x41\ndown 0x59\ndown 0x41\n"
                                                 "located marker 7\ndown 0x30\ndown 0x51\n"
                                                 "down other 0xFF1B\nwrong sequence = another key "
                                                 "(key does not belong here)\n"
                                                 "down 0x31\ntransport playing");
    QTest::newRow("Studio One") << QStringList(QStringLiteral("Studio One"))
                                << QStringLiteral("Studio One")
                                << QStringLiteral("ctrl+t KP_3 Shift_L KP_4 Return "
                                                  "ctrl+semicolon KP_8 KP_9 KP_Enter")
                                << QStringLiteral(
                                       "down other 0xFFE3\ndown 0x11 cmd\ndown 0x55\n"
                                       "down other 0xFFE1\ndown 0x56\ndown 0x24\nlocated bar 34\n"
                                       "down other 0xFFE3\ndown 0x29 cmd\ndown 0x5B\n"
                                       "down 0x5C\ndown 0x4C\nlocated marker 89");
}

void RehearsalTest::understandsPostedKeys()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, name);
    QFETCH(QString, keys);
    QFETCH(QString, events);
    Rehearsal rehearsal(*screen);
    QVERIFY(rehearsal.start(arguments));
    QCOMPARE(rehearsal.comm(), name);
    rehearsal.type(name, keys);
    // Control and Shift arrive as keys of their own when xdotool types them, and do no harm.
    const QStringList expected = events.split(QLatin1Char('\n'));
    const auto seen = [&] {
        QStringList all = rehearsal.events();
        all = all.mid(all.indexOf(QStringLiteral("ready")) + 1);
        QStringList kept;
        for (QString& event : all) {
            if (!event.startsWith(QLatin1String("key up"))) {
                kept += event.replace(QLatin1String("key down"), QLatin1String("down"));
            }
        }
        return kept;
    };
    QTRY_COMPARE(seen().size(), expected.size());
    QCOMPARE(seen(), expected);
    QTRY_COMPARE(rehearsal.eventsFrom("key down").size(), rehearsal.eventsFrom("key up").size());
}

void RehearsalTest::takesMmc()
{
    const JackServer server;
    if (!server.isRunning()) {
        QSKIP(qPrintable(server.why()));
    }
    Rehearsal rehearsal(*screen);
    QVERIFY(rehearsal.start());
    std::unique_ptr<RtMidiOut> sender;
    const Bytes hello = {0xB0, 0x00, 0x00}; // On a busy machine a new connection may not hold.
    const auto isHeard = [&] {
        sender = otherEnd<RtMidiOut>(QStringLiteral("Rehearsal MMC:commands"));
        if (sender) {
            sender->sendMessage(&hello);
        }
        return QTest::qWaitFor([&] { return rehearsal.has("midi B0 00 00"); }, 2000);
    };
    QVERIFY(QTest::qWaitFor(isHeard, 20000));
    const int before = rehearsal.events().size();
    for (const Bytes& message :
         {Bytes{0xF0, 0x7F, 0x00, 0x06, 0x02, 0xF7}, Bytes{0xF0, 0x7F, 0x7F, 0x06, 0x01, 0xF7},
          Bytes{0xF0, 0x7F, 0x7F, 0x06, 0x03, 0xF7}, Bytes{0xF0, 0x7E, 0x7F, 0x06, 0x02, 0xF7},
          Bytes{0x99, 0x24, 0x64}, Bytes{0xF0, 0x7F, 0x05, 0x06, 0x02, 0xF7}}) {
        sender->sendMessage(&message);
    }
    const QStringList expected = {
        QStringLiteral("midi F0 7F 00 06 02 F7"), QStringLiteral("transport playing"),
        QStringLiteral("midi F0 7F 7F 06 01 F7"), QStringLiteral("transport stopped"),
        QStringLiteral("midi F0 7F 7F 06 03 F7"), // Deferred Play is not Play.
        QStringLiteral("midi F0 7E 7F 06 02 F7"), // Not real time, so no MMC.
        QStringLiteral("midi 99 24 64"),          QStringLiteral("midi F0 7F 05 06 02 F7"),
        QStringLiteral("transport playing")};
    QTRY_COMPARE(rehearsal.events().mid(before).size(), expected.size());
    QCOMPARE(rehearsal.events().mid(before), expected);
}

void RehearsalTest::playsNotes()
{
    const JackServer server;
    if (!server.isRunning()) {
        QSKIP(qPrintable(server.why()));
    }
    Rehearsal rehearsal(*screen);
    QVERIFY(rehearsal.start());
    Ear footSwitch(QStringLiteral("Rehearsal Foot switch:notes"));
    Ear daw(QStringLiteral("Rehearsal DAW:notes"));
    QVERIFY(footSwitch.isOpen() && daw.isOpen());

    rehearsal.command("note 31");
    rehearsal.command("end 24");
    QString pedalExpected = QStringLiteral("90 1F 64\n80 1F 00\n");
    QString dawExpected = QStringLiteral("90 18 64\n80 18 00\n");
    QTRY_COMPARE(footSwitch.heard(), pedalExpected);
    QTRY_COMPARE(daw.heard(), dawExpected);
    QTRY_COMPARE(rehearsal.eventsFrom("sent").size(), 4);
    QVERIFY(rehearsal.has("sent note on 31 foot switch"));
    QVERIFY(rehearsal.has("sent note off 24 daw notes"));

    rehearsal.type(QStringLiteral("Pro Tools"), QStringLiteral("F5 F7"));
    pedalExpected += QStringLiteral("90 23 64\n80 23 00\n");
    dawExpected += QStringLiteral("90 24 64\n80 24 00\n");
    QTRY_COMPARE(footSwitch.heard(), pedalExpected);
    QTRY_COMPARE(daw.heard(), dawExpected);

    // A note that sounds when it is struck again, or when the program is told to go, ends first.
    rehearsal.command("note 28\nnote 28\nnote 128\nend\nquit");
    pedalExpected += QStringLiteral("90 1C 64\n80 1C 00\n90 1C 64\n80 1C 00\n");
    QTRY_COMPARE(footSwitch.heard(), pedalExpected);
    QTRY_COMPARE(rehearsal.process.state(), QProcess::NotRunning);
    QCOMPARE(rehearsal.process.exitCode(), 0);
    QCOMPARE(rehearsal.eventsFrom("unknown command"),
             (QStringList{QStringLiteral("unknown command note 128"),
                          QStringLiteral("unknown command end")}));
}

void RehearsalTest::showsTheNotesOnTheWire()
{
    const JackServer server;
    if (!server.isRunning()) {
        QSKIP(qPrintable(server.why()));
    }
    RehearsalWindow window(Daw::ProTools);
    window.show();
    auto* roll = window.findChild<NoteRoll*>();
    const auto colorOfMiddleC = [roll] {
        const QRectF shown(roll->mapToScene(roll->viewport()->rect()).boundingRect());
        const QGraphicsItem* key = roll->scene()->itemAt(QPointF(413, 50), {});
        return shown.adjusted(-2, -2, 2, 2).contains(roll->sceneRect())
                   ? qgraphicsitem_cast<const QGraphicsRectItem*>(key)->brush().color()
                   : QColor();
    };
    QTRY_COMPARE(colorOfMiddleC(), QColor(Qt::white));
    window.runCommand(QStringLiteral("note 60"));
    QCOMPARE(colorOfMiddleC(), QColor(0, 0, 200, 200));
    QTRY_COMPARE(colorOfMiddleC(), QColor(Qt::white));

    std::unique_ptr<RtMidiOut> sender;
    const Bytes begin = {0x95, 60, 127};
    const Bytes end = {0x95, 60, 0}; // A note on without velocity ends the note.
    const auto isSeen = [&] {
        sender = otherEnd<RtMidiOut>(QStringLiteral("Rehearsal MMC:commands"));
        if (sender) {
            sender->sendMessage(&begin);
        }
        return QTest::qWaitFor([&] { return colorOfMiddleC() == QColor(0, 0, 200, 254); }, 2000);
    };
    QVERIFY(QTest::qWaitFor(isSeen, 20000)); // A new connection may not hold, as above.
    sender->sendMessage(&end);
    QTRY_COMPARE(colorOfMiddleC(), QColor(Qt::white));
}

void RehearsalTest::practises()
{
    auto server = std::make_unique<JackServer>();
    if (!server->isRunning()) {
        QSKIP(qPrintable(server->why()));
    }
    const QStringList arguments = {QStringLiteral("--practise"), QStringLiteral("Studio One")};
    const QString folder = QStringLiteral("/velt-rehearsal/VELT/");
    Rehearsal rehearsal(*screen);
    QVERIFY(rehearsal.start(arguments));
    QTRY_VERIFY(!rehearsal.window(QStringLiteral("VELT")).isEmpty());
    EditData data;
    data.readPreference(rehearsal.settings() + folder + QStringLiteral("VELTPreference.ini"));
    QCOMPARE(data.Mode, kModeStudioOneBars);
    QCOMPARE(data.MidiOutPort, QStringLiteral("Rehearsal MMC:commands"));
    QVERIFY(!QFile::exists(rehearsal.settings() + QStringLiteral("/VELT")));

    // The sample's second entry is its first song. All ports and keys go to the stand-in.
    const auto isLocated = [&] {
        rehearsal.command("note 29\nnote 31");
        return QTest::qWaitFor([&] { return !rehearsal.eventsFrom("located bar").isEmpty(); },
                               4000);
    };
    QVERIFY(QTest::qWaitFor(isLocated, 20000));
    QVERIFY(rehearsal.has("midi F0 7F 7F 06 01 F7"));

    // What is edited there is there again the next time, also without a MIDI system.
    const QString shows = rehearsal.settings() + folder + QStringLiteral("VELTSetting.ini");
    data.readEdit(shows);
    data.ShowList.resize(1);
    data.writeEdit(shows);
    rehearsal.stop();
    QTRY_VERIFY(rehearsal.window(QStringLiteral("VELT")).isEmpty());
    server.reset();
    QVERIFY(rehearsal.start(arguments));
    QTRY_VERIFY(!rehearsal.window(QStringLiteral("VELT")).isEmpty());
    data.readEdit(shows);
    QCOMPARE(data.ShowList.size(), std::size_t(1));
}

void RehearsalTest::comesBackAfterTheMidiServerDied()
{
    JackServer server;
    if (!server.isRunning()) {
        QSKIP(qPrintable(server.why()));
    }
    Rehearsal rehearsal(*screen);
    QVERIFY(rehearsal.start());
    server.kill();
    rehearsal.command("note 31");
    QTRY_VERIFY(rehearsal.has("not sent note on 31 foot switch"));

    QVERIFY2(server.restart(), qPrintable(server.why()));
    rehearsal.type(QStringLiteral("Pro Tools"), QStringLiteral("F8"));
    rehearsal.command("note 33");
    QTRY_VERIFY_WITH_TIMEOUT(rehearsal.has("sent note on 33 foot switch"), 20000);
    rehearsal.stop();
    QCOMPARE(rehearsal.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(rehearsal.process.exitCode(), 0);
}

void RehearsalTest::worksWithoutMidi()
{
    qputenv("JACK_DEFAULT_SERVER", "no-such-server");
    qputenv("JACK_NO_START_SERVER", "1");
    Rehearsal rehearsal(*screen);
    QVERIFY(rehearsal.start());
    if (!rehearsal.has("no midi")) {
        QSKIP("this machine has a MIDI system");
    }
    rehearsal.command("note 31");
    QTRY_VERIFY(rehearsal.has("not sent note off 31 foot switch"));
    rehearsal.type(QStringLiteral("Pro Tools"), QStringLiteral("KP_Decimal KP_2 KP_Decimal"));
    QTRY_VERIFY(rehearsal.has("located marker 2"));
}

void RehearsalTest::endsInOrder_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("terminated") << SIGTERM;
    QTest::newRow("interrupted") << SIGINT;
}

void RehearsalTest::endsInOrder()
{
    QFETCH(int, signal);
    Rehearsal rehearsal(*screen);
    QVERIFY(rehearsal.start());
    rehearsal.process.closeWriteChannel(); // The end of input does not end the program,
    rehearsal.type(QStringLiteral("Pro Tools"), QStringLiteral("space"));
    QTRY_VERIFY(rehearsal.has("transport playing"));
    ::kill(static_cast<pid_t>(rehearsal.process.processId()), signal); // but this does.
    QTRY_COMPARE(rehearsal.process.state(), QProcess::NotRunning);
    QCOMPARE(rehearsal.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(rehearsal.process.exitCode(), 0);
}

void RehearsalTest::saysHowItIsUsed()
{
    QProcess program;
    program.start(QStringLiteral(REHEARSAL), {QStringLiteral("--help")});
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitCode(), 0);
    QVERIFY(program.readAllStandardOutput().startsWith("Usage: velt-rehearsal"));

    program.start(QStringLiteral(REHEARSAL), {QStringLiteral("pro tools")});
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitCode(), 2);
    QVERIFY(program.readAllStandardError().contains("cannot stand in for \"pro tools\""));
}

VELT_TEST_MAIN(RehearsalTest)
#include "tst_rehearsal.moc"
