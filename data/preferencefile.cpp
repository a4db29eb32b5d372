// SPDX-License-Identifier: MIT
#include "deviceid.h"
#include "editdata.h"
#include "settingsfile.h"

#include <QSettings>

namespace {

const QString kMode = QStringLiteral("Mode");
const QString kMidiInPort = QStringLiteral("MidiInPort");
const QString kShortcutMidiInPort = QStringLiteral("ShortcutMidiInPort");
const QString kMidiOutPort = QStringLiteral("MidiOutPort");
const QString kDeviceId = QStringLiteral("DeviceId");
const QString kArrowKeyMode = QStringLiteral("ArrowKeyMode");
const QString kShowKeyButton = QStringLiteral("ShowKeyButton");
const QString kNoteSongUp = QStringLiteral("NoteSongUp");
const QString kNoteSongDown = QStringLiteral("NoteSongDown");
const QString kNoteLocate = QStringLiteral("NoteLocate");
const QString kNoteDawPlay = QStringLiteral("NoteDawPlay");
const QString kNoteDawStop = QStringLiteral("NoteDawStop");
const QString kSendTextColor = QStringLiteral("SendTextColor");
const QString kNextTextColor = QStringLiteral("NextTextColor");

template <typename Value>
void readIfPresent(const QSettings& file, const QString& key, Value& field)
{
    if (file.contains(key)) {
        field = file.value(key).value<Value>();
    }
}

} // namespace

void EditData::readPreference(const QString& path)
{
    readSettingsFile(path, [this](const QSettings& file) {
        Mode = file.value(kMode).toInt();
        MidiInPort = file.value(kMidiInPort).toString();
        ShortcutMidiInPort = file.value(kShortcutMidiInPort).toString();
        MidiOutPort = file.value(kMidiOutPort).toString();
        DeviceId = file.value(kDeviceId).toString();
        DeviceIdValue = parseDeviceId(DeviceId).value_or(DeviceIdValue);
        readIfPresent(file, kShowKeyButton, ShowKeyButton);
        readIfPresent(file, kArrowKeyMode, ArrowKeyMode);
        readIfPresent(file, kNoteSongUp, NoteSongUp);
        readIfPresent(file, kNoteSongDown, NoteSongDown);
        readIfPresent(file, kNoteLocate, NoteLocate);
        readIfPresent(file, kNoteDawPlay, NoteDawPlay);
        readIfPresent(file, kNoteDawStop, NoteDawStop);
        readIfPresent(file, kSendTextColor, SendTextColor);
        readIfPresent(file, kNextTextColor, NextTextColor);
    });
}

void EditData::writePreference(const QString& path)
{
    writeSettingsFile(path, [this](QSettings& file) {
        file.setValue(kMode, Mode);
        file.setValue(kMidiInPort, MidiInPort);
        file.setValue(kShortcutMidiInPort, ShortcutMidiInPort);
        file.setValue(kMidiOutPort, MidiOutPort);
        file.setValue(kDeviceId, formatDeviceId(DeviceIdValue));
        file.setValue(kArrowKeyMode, ArrowKeyMode);
        file.setValue(kShowKeyButton, ShowKeyButton);
        file.setValue(kNoteSongUp, NoteSongUp);
        file.setValue(kNoteSongDown, NoteSongDown);
        file.setValue(kNoteLocate, NoteLocate);
        file.setValue(kNoteDawPlay, NoteDawPlay);
        file.setValue(kNoteDawStop, NoteDawStop);
        file.setValue(kSendTextColor, SendTextColor);
        file.setValue(kNextTextColor, NextTextColor);
    });
}
