// SPDX-License-Identifier: MIT
#include "check.h"
#include "deviceid.h"
#include "editdata.h"
#include "settingsfile.h"

#include <QSettings>

// A preference file: QSettings meets no serialised values but colours, and what is read can be
// saved, into the same file and into a new one, and read again.

namespace {

EditData read(const QString& path)
{
    EditData data;
    data.readPreference(path);
    return data;
}

void checkIsHarmless(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::UnknownType: // "@Invalid()"
    case QMetaType::QString:
    case QMetaType::QStringList:
    case QMetaType::QColor:
        break;
    case QMetaType::QVariantList:
        for (const QVariant& member : value.toList()) {
            checkIsHarmless(member);
        }
        break;
    default:
        check(false, "of serialised values, colours alone are read");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const InputFile file(bytes, size);
    readSettingsFile(InputFile::path(), [](const QSettings& settings) {
        for (const QString& key : settings.allKeys()) {
            checkIsHarmless(settings.value(key));
        }
    });
    const EditData data = read(InputFile::path());
    check(data.DeviceIdValue == parseDeviceId(data.DeviceId).value_or(0),
          "the device ID is that of its text");
    for (const QColor& color : {data.SendTextColor, data.NextTextColor}) {
        check(color.name(QColor::HexArgb).size() == 9, "a colour can be shown");
    }
    InputFile::checkSaving(
        read, [](const QString& path, EditData& saved) { saved.writePreference(path); });
    return 0;
}
