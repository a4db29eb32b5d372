// SPDX-License-Identifier: MIT
#include "checkfacts.h"
#include "datafiles.h"
#include "findings.h"
#include "qkeyeventsend.h"
#include "qmidiin.h"
#include "qmidiout.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <RtMidi.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <future>
#include <thread>

namespace {

constexpr std::chrono::seconds kPatience{10};

void gatherFiles(CheckFacts& facts)
{
    facts.data.readPreference(preferenceFilePath());
    facts.data.readEdit(setListFilePath());
    readSettingsFile(setListFilePath(), [&facts](const QSettings& file) {
        const QStringList keys = file.allKeys();
        for (const QString& key : keys) {
            facts.setListKeys.insert(key, file.value(key));
        }
        facts.isSetListParsed = file.status() == QSettings::NoError;
    });
    facts.backupPath =
        QFileInfo(setListBackupPath()).isReadable() ? setListBackupPath() : QString();
    facts.folder = QFileInfo(setListFilePath()).path();
    facts.files = {
        {text("shows (VELTSetting.ini)"), settingsFileState(setListFilePath())},
        {text("preferences (VELTPreference.ini)"), settingsFileState(preferenceFilePath())},
        {text("window places (DispStatus.ini)"), settingsFileState(displayStatusFilePath())}};
    const SettingsFileState preferences = facts.files[1].second;
    if (preferences != SettingsFileState::Missing && preferences != SettingsFileState::Unreadable) {
        readSettingsFile(preferenceFilePath(), [&facts](const QSettings& file) {
            const char* const always[] = {"Mode", "MidiInPort", "ShortcutMidiInPort", "MidiOutPort",
                                          "DeviceId"};
            facts.isPreferenceWhole =
                file.status() == QSettings::NoError &&
                std::all_of(std::begin(always), std::end(always),
                            [&file](const char* key) { return file.contains(text(key)); });
        });
    }
}

void gatherPrograms(CheckFacts& facts)
{
#ifdef Q_OS_MACOS
    facts.isMac = true;
#endif
    facts.canType = QKeyEventSend::canType();
    QKeyEventSend sender;
    sender.setProcNameList();
    for (const QString& bytes : sender.procNames()) {
        facts.programs += QString::fromUtf8(bytes.toLatin1());
    }
    facts.programs.removeDuplicates();
}

CheckFacts::Port portOf(MidiPort& midi, const QString& chosen)
{
    static const QRegularExpression notOwn(QStringLiteral("^(?!RtMidi)"));
    try {
        const QStringList ports = midi.getPorts();
        return {ports.value(midi.indexOf(chosen)), ports.filter(notOwn)};
    } catch (const RtMidiError&) {
        return {};
    }
}

void gatherMidi(CheckFacts& facts)
{
    QMidiIn input;
    QMidiOut output;
    facts.midiSystem = input.isSystemRunning() ? input.systemName() : QString();
    facts.dawOutput = portOf(output, facts.data.MidiOutPort);
    facts.controllerInput = portOf(input, facts.data.ShortcutMidiInPort);
    facts.dawInput = portOf(input, facts.data.MidiInPort);
}

} // namespace

CheckFacts gatherFacts()
{
    // Libraries tell there at length what is missing.
    static_cast<void>(std::freopen("/dev/null", "w", stderr));
    CheckFacts facts;
    gatherFiles(facts);
    gatherPrograms(facts);
    facts.wantedMidiSystem = qEnvironmentVariable("VELT_MIDI");
    std::packaged_task<CheckFacts()> task([facts]() mutable {
        gatherMidi(facts);
        return facts;
    });
    std::future<CheckFacts> withMidi = task.get_future();
    std::thread(std::move(task)).detach(); // A JACK server that is stalled keeps it for good.
    if (withMidi.wait_for(kPatience) == std::future_status::ready) {
        return withMidi.get();
    }
    facts.isMidiStalled = true;
    return facts;
}
