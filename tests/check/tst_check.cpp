// SPDX-License-Identifier: MIT
#include "checkfacts.h"
#include "findings.h"
#include "testcase.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

using Change = void (*)(CheckFacts&);
Q_DECLARE_METATYPE(Change)

namespace {

// A machine on which there is nothing to put right.
CheckFacts goodMachine()
{
    CheckFacts facts;
    facts.files = {{"shows", SettingsFileState::Usable}, {"places", SettingsFileState::Missing}};
    facts.canType = true;
    facts.programs = QStringList{"panel", "Pro Tools"};
    facts.midiSystem = "JACK";
    facts.data.MidiOutPort = "MMC:in";
    facts.data.ShortcutMidiInPort = "Pedal:notes";
    facts.data.MidiInPort = "DAW:notes";
    facts.dawOutput = {true, {"MMC:in"}};
    facts.controllerInput = facts.dawInput = {true, {"Pedal:notes", "DAW:notes"}};
    return facts;
}

// Without those that are ok.
QStringList linesOf(const Findings& findings)
{
    QStringList lines;
    for (const auto& [severity, line] : findings.all) {
        if (severity != Severity::Ok) {
            lines += (severity == Severity::Note ? "note " : "problem ") + line;
        }
    }
    return lines;
}

// As many lines as are expected, each with the text that is. Quotes are single there.
void compare(QStringList lines, const QStringList& expected)
{
    lines.replaceInStrings("\"", "'");
    QVERIFY2(lines.size() == expected.size(), qPrintable(lines.join('\n')));
    for (int i = 0; i < lines.size(); ++i) {
        QVERIFY2(lines[i].contains(expected[i]), qPrintable(lines[i]));
    }
}

} // namespace

class TestCheck : public TestCase
{
    Q_OBJECT

private slots:
    void machine_data();
    void machine();
    void files_data();
    void files();
    void commandLine_data();
    void commandLine();

private:
    // Runs the program without a display and MIDI server, on the configuration in `home`.
    static void run(QProcess& velt, const QStringList& arguments, const QString& home);
};

void TestCheck::machine_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char* name, Change change, const QStringList& expected) {
        QTest::newRow(name) << change << expected;
    };
    row("all is well", [](CheckFacts&) {}, {});
    row("no DAW", [](CheckFacts& facts) { facts.programs.removeLast(); },
        {"problem DAW: 'Pro Tools' is not running. Start it, and leave its window open. (Programs "
         "seen: 'panel')"});
    row("a DAW of another name",
        [](CheckFacts& facts) { facts.programs.last() = "pro tools 2024"; },
        {"'pro tools 2024' is, but VELT types only into a program named exactly 'Pro Tools'"});
    row("the other DAW", [](CheckFacts& facts) { facts.data.Mode = kModeStudioOneBars; },
        {"'Studio One' is not running. 'Pro Tools' is: in Pref. choose its Mode"});
    row("no mode", [](CheckFacts& facts) { facts.data.Mode = 4; },
        {"problem DAW: no Mode is chosen"});
    row("no X server", [](CheckFacts& facts) { facts.canType = false, facts.programs.clear(); },
        {"problem DAW: no X server answers"});
    row("a Mac without permission",
        [](CheckFacts& facts) {
            facts.isMac = true, facts.canType = false, facts.programs.clear();
        },
        {"problem DAW: this Mac does not let VELT type", "is not running"});
    row("a port that has gone",
        [](CheckFacts& facts) {
            facts.dawOutput = {false, {"Synth"}};
        },
        {"problem DAW Midi Output: 'MMC:in' is not there; LOCATE does not stop the DAW, DAW PLAY "
         "and DAW STOP do nothing. Plug in"});
    row("a port of nearly that name",
        [](CheckFacts& facts) {
            facts.controllerInput = {false, {"DAW:notes", "pedals-notes", "Pedal"}};
        },
        {"problem Midi Controller Input: 'Pedal:notes' is not there; the foot switch does nothing. "
         "'pedals-notes' is: if that is the one"});
    row("a port with an addition to its name",
        [](CheckFacts& facts) {
            facts.dawInput = {false, {"xDAW:notes on the second machine"}};
        },
        {"'xDAW:notes on the second machine' is: if"});
    row("VELT's own port",
        [](CheckFacts& facts) { facts.data.MidiInPort = "RtMidi Output Client:x"; },
        {"problem DAW Midi Input: 'RtMidi Output Client:x' is VELT's own"});
    row("no ports are chosen",
        [](CheckFacts& facts) {
            facts.data.MidiInPort = facts.data.ShortcutMidiInPort = facts.data.MidiOutPort = "";
        },
        {"problem DAW Midi Output: no port", "note Midi Controller Input: no",
         "note DAW Midi Input: no"});
    row("no MIDI", [](CheckFacts& facts) { facts.midiSystem.clear(); },
        {"problem MIDI: no MIDI system is running"});
    row("no ports",
        [](CheckFacts& facts) { facts.dawInput = facts.controllerInput = facts.dawOutput = {}; },
        {"problem MIDI: JACK is running, but without any port", "DAW Midi Output", "Controller",
         "DAW Midi Input"});
    row("MIDI stalled", [](CheckFacts& facts) { facts.isMidiStalled = true; },
        {"problem MIDI: the MIDI system does not answer"});
    row("another MIDI system", [](CheckFacts& facts) { facts.wantedMidiSystem = "alsa"; },
        {"problem MIDI: VELT_MIDI is 'alsa'"});
    row("this MIDI system", [](CheckFacts& facts) { facts.wantedMidiSystem = "jack"; }, {});
    row("a device ID that is none", [](CheckFacts& facts) { facts.data.DeviceIdValue = 0x80; },
        {"problem MMC DeviceID: no DAW has the number 80"});
    row("full disk", [](CheckFacts& facts) { facts.files[0].second = SettingsFileState::DiskFull; },
        {"problem Files: the disk is full, and VELT cannot save shows;"});
}

void TestCheck::machine()
{
    QFETCH(Change, change);
    QFETCH(QStringList, expected);
    CheckFacts facts = goodMachine();
    change(facts);
    Findings findings;
    checkDaw(facts, findings);
    checkFiles(facts, findings);
    checkMidi(facts, findings);
    compare(linesOf(findings), expected);
}

void TestCheck::files_data()
{
    QTest::addColumn<QString>("pattern"); // In the sample show; of what it is replaced...
    QTest::addColumn<QString>("by");      // ...by this.
    QTest::addColumn<QString>("show");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char* name, const char* pattern, const char* by,
                        const QStringList& expected, const char* show = "") {
        QTest::newRow(name) << pattern << by << show << expected;
    };
    row("sound", "(?!)", "", {});
    row("empty", "[\\s\\S]*", "", {"the file is damaged: it is no set list"});
    row("cut", "SetData2.SetType=0\nSetData2.SpaceName=\nSetData2.Cue=Strings[\\s\\S]*", "",
        {"is damaged: missing: 2 of 3 rows of 'Line check'. "});
    row("larger counts", "SongDataNum=14\nShowDataNum=3", "SongDataNum=15\nShowDataNum=2000000000",
        {"missing: 1 of 15 songs; missing: 1999999997 of 2000000000 shows. "});
    row("no count", "ShowDataNum=3", "", {"damaged: it does not count the shows."});
    row("no shows", "ShowDataNum=3", "ShowDataNum=0", {"problem  Shows: there are none yet"});
    row("a song too many", "SongDataNum=14", "SongDataNum=13",
        {"Friday': the songs of these rows are gone, and VELT leaves the rows out: 16.",
         "Saturday': the songs of these rows are gone, and VELT leaves the rows out: 13."});
    row("other lines", "^ShowTitle=Line check$", "ShowTitle=Line check\nLine",
        {"damaged: some lines cannot be read."});
    row("no numbers", "^(Bar=5|Id=14)$", "\\1x",
        {"these cannot be read: Bar of 'Harbour Lights', Id of 'Ferry at Five'",
         "Friday': the songs of these rows are gone, and VELT leaves the rows out: 16",
         "'Harbour Stage, Friday': LOCATE goes to 0, as there is no Bar for 'Harbour Lights'.",
         "Saturday': the songs of these rows are gone, and VELT leaves the rows out: 13",
         "'Old Mill Club, Saturday': LOCATE goes to 0"});
    row("unknown kind of row", "SetData3.SetType=0\nSetData3.SpaceName=\nSetData3.Cue=Choir",
        "SetData3\\SetType=2", {"these cannot be read: row 3 of 'Line check'"});
    row("no titles", "ShowTitle=Line check|SongTitle=Copper Wire", "",
        {"these cannot be read: title of song 7, title of show 3"});
    row("songs without a bar", "Bar=(513|585|801)", "Bar=0",
        {"there is no Bar for 'Copper Wire', 'The Clockmaker's Daughter', 'Every Window Lit'."},
        "line CHECK");
    row("a show without songs", "SetNum=3", "SetNum=0",
        {"note     Show 'Line check': it has no songs"});
    row("an empty show for tonight", "SetNum=3", "SetNum=0",
        {"problem  Show 'Line check': it has no songs"}, "Line check");
    row("no cues", "Cue=(Loop|Strings|Choir).*",
        "Cue=", {"note     Show 'Line check': it has no cues"}, "Line check");
    row("unknown show", "Line check", "Line\\x1b[2Jcheck",
        {"none is called 'Line check'. There are: 'Harbour Stage, Friday', 'Old Mill Club, "
         "Saturday', 'Line [2Jcheck'"},
        "Line check");
}

void TestCheck::files()
{
    QFETCH(QString, pattern);
    QFETCH(QString, by);
    QFETCH(QString, show);
    QFETCH(QStringList, expected);
    QTemporaryDir home;
    const QDir folder(filesIn(home.path()));
    folder.mkpath(".");
    QFile sample(SHOW "/VELTSetting.ini");
    QVERIFY(sample.open(QIODevice::ReadOnly));
    const QByteArray text =
        QString::fromUtf8(sample.readAll())
            .replace(QRegularExpression(pattern, QRegularExpression::MultilineOption), by)
            .toUtf8();
    QFile file(folder.filePath("VELTSetting.ini"));
    QVERIFY(file.open(QIODevice::ReadWrite));
    file.write(text);
    file.flush();
    QProcess velt;
    run(velt, {"--check", "--show", show}, home.path());
    const QByteArray output = velt.readAllStandardOutput();
    QVERIFY(output.lastIndexOf("\nproblem") < output.indexOf("\nok")); // In the order of weight.
    QStringList lines = QString::fromUtf8(output).split('\n');
    lines = lines.filter(QRegularExpression("^(problem|note) +Show"));
    compare(lines, expected);
    QCOMPARE(velt.readAllStandardError(), QByteArray());
    QCOMPARE(velt.exitCode(), 1); // No DAW there.
    QCOMPARE(folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{"VELTSetting.ini"});
    file.seek(0);
    QCOMPARE(file.readAll(), text);
}

void TestCheck::commandLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("prints");
    const auto row = [](const QStringList& arguments, int status, const char* prints) {
        QTest::newRow(qPrintable(arguments.join(' '))) << arguments << status << prints;
    };
    row({"--help"}, 0, "--show <title>");
    row({"-v"}, 0, "velt " VERSION "\n");
#ifndef Q_OS_MACOS
    row({"--check"}, 1, "problem  DAW: no X server answers");
#endif
    row({"--check", "--show="}, 1, "problem  MIDI: VELT_MIDI is \"jack\", which is not there");
    row({"--chekc"}, 2, "velt: Unknown option 'chekc'.\n");
    row({"-style", "fusion", "check"}, 2, "velt: Unexpected argument 'check'.\n");
    row({"--show", "Tonight"}, 2, "velt: --show goes with --check.\n");
    row({"--check", "--show"}, 2, "velt: Missing value after '--show'.\n");
    // Gets to the toolkit, which has no such platform.
    row({"-session", "a_1", "-style=fusion", "-platform", "none"}, -1,
        "Qt platform plugin \"none\"");
}

void TestCheck::commandLine()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, prints);
    QFETCH(int, status);
    QTemporaryDir home;
    QProcess velt;
    velt.setProcessChannelMode(QProcess::MergedChannels);
    run(velt, arguments, home.path());
    const QString output = velt.readAll();
    QVERIFY2(output.contains(prints), qPrintable(output));
    QCOMPARE(velt.exitStatus() == QProcess::NormalExit ? velt.exitCode() : -1, status);
}

void TestCheck::run(QProcess& velt, const QStringList& arguments, const QString& home)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("DISPLAY");
    environment.remove("QT_QPA_PLATFORM");
    environment.insert("XDG_CONFIG_HOME", home);
    environment.insert("CFFIXED_USER_HOME", home);
    environment.insert("VELT_MIDI", "jack");
    environment.insert("JACK_DEFAULT_SERVER", "velt-none");
    environment.insert("JACK_NO_START_SERVER", "1");
    velt.setProcessEnvironment(environment);
    velt.start(VELT, arguments);
    QVERIFY(velt.waitForFinished());
}

VELT_TEST_MAIN(TestCheck)
#include "tst_check.moc"
