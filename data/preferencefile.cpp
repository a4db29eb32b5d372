// SPDX-License-Identifier: MIT
#include "deviceid.h"
#include "editdata.h"
#include "settingsfile.h"

#include <QSettings>

#include <type_traits>

namespace {

// Gives `visit` every field but the device ID, with its key.
template <typename Data, typename Visit>
void visitFields(Data& data, const Visit& visit)
{
    visit(QLatin1String("Mode"), data.Mode);
    visit(QLatin1String("MidiInPort"), data.MidiInPort);
    visit(QLatin1String("ShortcutMidiInPort"), data.ShortcutMidiInPort);
    visit(QLatin1String("MidiOutPort"), data.MidiOutPort);
    visit(QLatin1String("ArrowKeyMode"), data.ArrowKeyMode);
    visit(QLatin1String("ShowKeyButton"), data.ShowKeyButton);
    visit(QLatin1String("NoteSongUp"), data.NoteSongUp);
    visit(QLatin1String("NoteSongDown"), data.NoteSongDown);
    visit(QLatin1String("NoteLocate"), data.NoteLocate);
    visit(QLatin1String("NoteDawPlay"), data.NoteDawPlay);
    visit(QLatin1String("NoteDawStop"), data.NoteDawStop);
    visit(QLatin1String("SendTextColor"), data.SendTextColor);
    visit(QLatin1String("NextTextColor"), data.NextTextColor);
}

const QLatin1String kDeviceId("DeviceId");

} // namespace

void EditData::readPreference(const QString& path)
{
    // These do not keep their value where the file has none.
    Mode = kModeProToolsBars;
    MidiInPort.clear();
    ShortcutMidiInPort.clear();
    MidiOutPort.clear();
    readSettingsFile(path, [this](const QSettings& file) {
        DeviceId = file.value(kDeviceId).toString();
        DeviceIdValue = parseDeviceId(DeviceId).value_or(DeviceIdValue);
        visitFields(*this, [&file](QLatin1String key, auto& field) {
            if (file.contains(key)) {
                field = file.value(key).template value<std::decay_t<decltype(field)>>();
            }
        });
    });
}

void EditData::writePreference(const QString& path)
{
    writeSettingsFile(path, [this](QSettings& file) {
        file.setValue(kDeviceId, formatDeviceId(DeviceIdValue));
        visitFields(*this,
                    [&file](QLatin1String key, const auto& field) { file.setValue(key, field); });
    });
}
