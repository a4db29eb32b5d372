// SPDX-License-Identifier: MIT
#pragma once

#include "desktop.h"
#include "qmidiin.h"
#include "standin.h"
#include "windowdriver.h"

// The sample show with the stand-in DAW's ports.
inline EditData showData(int mode = kModeProToolsBars)
{
    EditData data = sampleData();
    data.Mode = mode;
    data.MidiInPort = StandIn::kNotesPort;
    data.ShortcutMidiInPort = StandIn::kFootSwitchPort;
    data.MidiOutPort = StandIn::kMmcPort;
    data.DeviceIdValue = 0x7F;
    return data;
}

// A DAW and VELT side by side, driven by real keys and a real mouse. Needs a display with a window
// manager and, for MIDI, a running JACK server.
struct ShowDesk
{
    explicit ShowDesk(const EditData& data = showData())
        : dawName(data.Mode < kModeStudioOneBars ? "Pro Tools" : "Studio One"),
          daw(std::make_unique<StandIn>(dawName)),
          velt(data)
    {
        velt.window.setGeometry(20, 40, 500, 600);
        velt.window.activateWindow();
        awaitMidi();
    }

    // What confirmed preferences do: everything is looked up and opened again.
    void confirmPreferences()
    {
        velt.window.setPreferenceData();
        velt.window.midiReconnect();
        awaitMidi();
    }
    // A connection that was just made may lose its first notes: plays one that does nothing.
    void awaitMidi()
    {
        if (!velt.controllerIn->isPortOpen()) {
            return;
        }
        int received = 0;
        const auto counting = QObject::connect(velt.controllerIn, &QMidiIn::midiMessageReceived,
                                               &velt.window, [&received] { ++received; });
        QTRY_VERIFY_WITH_TIMEOUT((daw->press("note 127"), received > 0), kPatienceMs);
        QObject::disconnect(counting);
        daw->forget();
    }
    void locate(int row)
    {
        velt.select(row);
        velt.press("LOCATE");
    }
    // Keys, MMC, foot switch and end of song all do their work.
    void playOn()
    {
        velt.window.activateWindow();
        daw->forget();
        locate(0);
        QTRY_COMPARE_WITH_TIMEOUT(daw->count("located bar 12"), 1, kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(daw->count(kMmcStop), 1, kPatienceMs);
        daw->press("note 33");
        QTRY_COMPARE_WITH_TIMEOUT(daw->count(kMmcPlay), 1, kPatienceMs);
        daw->press("end 24");
        QTRY_COMPARE_WITH_TIMEOUT(daw->count("located bar 105"), 1, kPatienceMs);
        velt.press("Reset");
    }

    static inline const QString kMmcStop = "midi F0 7F 7F 06 01 F7";
    static inline const QString kMmcPlay = "midi F0 7F 7F 06 02 F7";
    static constexpr int kPatienceMs = 20000; // For a busy machine.

    QString dawName;
    std::unique_ptr<StandIn> daw; // Its window is there before the operator's.
    WindowDriver velt;
};
