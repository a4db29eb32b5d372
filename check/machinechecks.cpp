// SPDX-License-Identifier: MIT
#include "checkfacts.h"
#include "dawmodes.h"
#include "deviceid.h"
#include "findings.h"

#include <QRegularExpression>

#include <algorithm>
#include <numeric>

namespace {

constexpr std::uint8_t kHighestDeviceId = 0x7F;

// How many letters must be changed, put in or taken out to make one text of the other.
int distance(const QString& one, const QString& other)
{
    std::vector<int> row(static_cast<std::size_t>(other.size()) + 1);
    std::iota(row.begin(), row.end(), 0);
    for (int i = 0; i < one.size(); ++i) {
        int diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 1; j < row.size(); ++j) {
            const int changed = diagonal + (one[i] == other[static_cast<int>(j) - 1] ? 0 : 1);
            diagonal = std::exchange(row[j], std::min({changed, row[j] + 1, row[j - 1] + 1}));
        }
    }
    return row.back();
}

// Letters and digits alone, in lower case.
QString folded(const QString& name)
{
    QString kept;
    std::copy_if(name.begin(), name.end(), std::back_inserter(kept),
                 [](QChar c) { return c.isLetterOrNumber(); });
    return kept.toLower();
}

// The name that differs least from the wanted one, in quotes; empty if none is like it.
QString nameLike(const QString& wanted, const QStringList& names)
{
    const QString key = folded(wanted);
    QString best;
    int least = static_cast<int>(key.size()) / 3 + 1;
    for (const QString& name : names) {
        const QString candidate = folded(name);
        const int difference = candidate.contains(key) ? 0 : distance(key, candidate);
        if (difference < least) {
            best = quoted(name);
            least = difference;
        }
    }
    return best;
}

QString wayToDaw(const QString& daw, const QStringList& programs)
{
    const auto other = std::find_if(programs.begin(), programs.end(), [](const QString& program) {
        return modeOfProcess(program) != -1;
    });
    if (other != programs.end()) {
        return text("%1 is: in Pref. choose its Mode, look at all three ports, OK. Or start %2",
                    quoted(*other), daw);
    }
    const QString like = nameLike(daw, programs);
    return like.isEmpty() ? text("Start it, and leave its window open")
                          : text("%1 is, but VELT types only into a program named exactly \"%2\". "
                                 "Start that one, or give it that name",
                                 like, daw);
}

QString wayToPort(const CheckFacts& facts, const QString& chosen, const QStringList& present)
{
    const QString like = nameLike(chosen, present);
    if (!like.isEmpty()) {
        return text("%1 is: if that is the one, choose it in Pref., look at all three ports, OK",
                    like);
    }
    const bool mayBeOnJack = facts.midiSystem == text("ALSA") && facts.wantedMidiSystem.isEmpty();
    return text("Plug in its device or start its program%1. Then Pref., look at all three ports, "
                "OK%2",
                present.isEmpty() ? QString() : text(", or choose another (%1)", listed(present)),
                text(mayBeOnJack ? ". Is it on JACK? Then start VELT as VELT_MIDI=jack velt" : ""));
}

// Two devices of one name: ALSA's numbers, which may change, are all that tells them apart.
bool isOneOfSeveral(const CheckFacts& facts, const CheckFacts::Port& port)
{
    static const QRegularExpression numbers(QStringLiteral(" [0-9]+:[0-9]+\\z"));
    return port.present.count(port.opened) > 1 ||
           (facts.midiSystem == text("ALSA") && port.opened.contains(numbers));
}

void checkPort(const CheckFacts& facts, const char* field, const QString& chosen,
               const CheckFacts::Port& port, Severity ifNotChosen, const char* without,
               Findings& findings)
{
    const QString name = text(field);
    const QString harm = text(without);
    if (chosen.isEmpty()) {
        findings.add(ifNotChosen,
                     "%1: no port is chosen; %2. Choose it in Pref., look at all three ports, OK",
                     name, harm);
    } else if (chosen.startsWith(QLatin1String("RtMidi"))) {
        findings.problem("%1: %2 is VELT's own; %3. Choose another in Pref., look at all three "
                         "ports, OK",
                         name, quoted(chosen), harm);
    } else if (port.opened.isEmpty()) {
        findings.problem("%1: %2 is not there; %3. %4", name, quoted(chosen), harm,
                         wayToPort(facts, chosen, port.present));
    } else if (isOneOfSeveral(facts, port)) {
        findings.add(Severity::Note,
                     "%1: VELT opens %2, one of several ports of that name. Try whether it is the "
                     "right one. If not, choose another in Pref., look at all three ports, OK",
                     name, quoted(port.opened));
    } else {
        findings.add(Severity::Ok, "%1: %2 is there", name, quoted(chosen));
    }
}

// Of actions on one note, the window does the first.
void checkNotes(const EditData& data, Findings& findings)
{
    const std::pair<const char*, std::int32_t> actions[] = {{"Song UP", data.NoteSongUp},
                                                            {"Song DOWN", data.NoteSongDown},
                                                            {"LOCATE", data.NoteLocate},
                                                            {"DAW PLAY", data.NoteDawPlay},
                                                            {"DAW STOP", data.NoteDawStop}};
    for (const auto* action = std::begin(actions); action != std::end(actions); ++action) {
        const auto* const first =
            std::find_if(std::begin(actions), action,
                         [action](const auto& other) { return other.second == action->second; });
        if (first != action) {
            findings.problem("Midi Controller: %1 and %2 have the same note, so the foot switch "
                             "does only %1. Give %2 another in Pref., look at all three ports, OK",
                             text(first->first), text(action->first));
        }
    }
}

} // namespace

QString quoted(const QString& name)
{
    return QLatin1Char('"') + name + QLatin1Char('"');
}

QString listed(const QStringList& names)
{
    return names.isEmpty() ? text("none") : quoted(names.join(QStringLiteral("\", \"")));
}

void checkDaw(const CheckFacts& facts, Findings& findings)
{
    if (!facts.canType && facts.isMac) {
        findings.problem(
            "DAW: this Mac does not let VELT type. System Settings, Privacy & Security, "
            "Accessibility: add VELT and switch it on (for a check in Terminal, add "
            "Terminal too)");
    } else if (!facts.canType) {
        findings.problem(
            "DAW: no X server answers, so VELT can neither see the DAW nor type. Run the "
            "check on the desktop on which VELT and the DAW run");
    }
    if (facts.canType && facts.isMac) {
        findings.add(Severity::Ok, "DAW: this Mac lets VELT type (for a check in Terminal: it lets "
                                   "Terminal type; look for VELT under Accessibility)");
    }
    const DawMode& mode = dawMode(facts.data.Mode);
    const QString daw = mode.daw.process;
    if (!mode.number) {
        findings.problem("DAW: no Mode is chosen, so LOCATE types nothing. "
                         "Choose it in Pref., look at all three ports, OK");
    } else if (facts.programs.contains(daw)) {
        findings.add(Severity::Ok, "DAW: %1 is running", quoted(daw));
    } else if (facts.canType || facts.isMac) {
        findings.problem("DAW: %1 is not running. %2. (Programs seen: %3)", quoted(daw),
                         wayToDaw(daw, facts.programs), listed(facts.programs));
    }
}

void checkFiles(const CheckFacts& facts, Findings& findings)
{
    using State = SettingsFileState;
    const std::tuple<State, Severity, const char*> outcomes[] = {
        {State::Unreadable, Severity::Problem,
         "Files: VELT cannot read %1 and starts without what is in there. Allow yourself to read "
         "and write what is in %2"},
        {State::ReadOnly, Severity::Problem,
         "Files: VELT cannot save %1; what you change is lost when you quit, without a message. "
         "Allow yourself to write in %2 (is the disk read-only?)"},
        {State::DiskFull, Severity::Problem,
         "Files: the disk is full, and VELT cannot save %1; what you change is lost when you quit, "
         "without a message. Make room on the disk of %2"},
        {State::Missing, Severity::Ok, "Files: not there yet, VELT will make them: %1 in %2"},
        {State::Usable, Severity::Ok, "Files: can be read and saved: %1 in %2"},
    };
    if (!facts.isPreferenceWhole) {
        findings.problem("Files: the preferences (VELTPreference.ini) are damaged; what cannot be "
                         "read is as at the first start. Look at everything in Pref., put it "
                         "right, OK");
    }
    for (const auto& [state, severity, pattern] : outcomes) {
        QStringList names;
        for (const auto& [name, stateOfFile] : facts.files) {
            if (stateOfFile == state) {
                names += name;
            }
        }
        if (!names.isEmpty()) {
            findings.add(severity, pattern, names.join(QStringLiteral(", ")), facts.folder);
        }
    }
}

void checkMidi(const CheckFacts& facts, Findings& findings)
{
    if (facts.isMidiStalled) {
        findings.problem(
            "MIDI: the MIDI system does not answer. Restart it (JACK: its server), then "
            "VELT and the DAW");
        return;
    }
    const QStringList& inputs = facts.dawInput.present;
    const QStringList& outputs = facts.dawOutput.present;
    if (!facts.midiSystem.startsWith(facts.wantedMidiSystem, Qt::CaseInsensitive)) {
        findings.problem(
            "MIDI: VELT_MIDI is %1, which is not there. Start that, or take VELT_MIDI away "
            "(it may be alsa, jack or core)",
            quoted(facts.wantedMidiSystem));
    } else if (facts.midiSystem.isEmpty()) {
        findings.problem(
            "MIDI: no MIDI system is running. Start it (JACK: its server), then the DAW and "
            "your devices; in VELT Pref., look at all three ports, OK");
    } else if (inputs.isEmpty() && outputs.isEmpty()) {
        findings.problem(
            "MIDI: %1 is running, but without any port. Start the DAW and plug in your "
            "devices (on a Mac, look at the IAC Driver); in VELT Pref., look at all three "
            "ports, OK",
            facts.midiSystem);
    } else {
        findings.add(Severity::Ok, "MIDI: %1; inputs %2; outputs %3", facts.midiSystem,
                     listed(inputs), listed(outputs));
    }
    checkPort(facts, "DAW Midi Output", facts.data.MidiOutPort, facts.dawOutput, Severity::Problem,
              "LOCATE does not stop the DAW, DAW PLAY and DAW STOP do nothing", findings);
    checkPort(facts, "Midi Controller Input", facts.data.ShortcutMidiInPort, facts.controllerInput,
              Severity::Note, "the foot switch does nothing", findings);
    checkPort(facts, "DAW Midi Input", facts.data.MidiInPort, facts.dawInput, Severity::Note,
              "AutoStop and AutoLocate do nothing at the end of a song", findings);
    if (!facts.data.ShortcutMidiInPort.isEmpty()) {
        checkNotes(facts.data, findings);
    }
    if (facts.data.DeviceIdValue > kHighestDeviceId) {
        findings.problem(
            "MMC DeviceID: no DAW has the number %1. Type 7F in Pref., look at all three "
            "ports, OK",
            formatDeviceId(facts.data.DeviceIdValue));
    } else if (facts.data.DeviceIdValue == 0) {
        findings.add(Severity::Note,
                     "MMC DeviceID: it is 00, so only a DAW that has this ID stops and plays. 7F "
                     "is meant for all: type it in Pref., look at all three ports, OK");
    }
}
