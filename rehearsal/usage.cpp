// SPDX-License-Identifier: MIT
#include "usage.h"

QString dawName(Daw daw)
{
    return daw == Daw::ProTools ? QStringLiteral("Pro Tools") : QStringLiteral("Studio One");
}

std::optional<Daw> dawOfName(const QString& name)
{
    for (const Daw daw : {Daw::ProTools, Daw::StudioOne}) {
        if (dawName(daw) == name) {
            return daw;
        }
    }
    return std::nullopt;
}

QString usageText()
{
    return QStringLiteral(
        R"(Usage: velt-rehearsal [--practise] ["Pro Tools" | "Studio One"]
Stands in for a digital audio workstation (DAW), so that a show can be practised without one. Its
process has the DAW's name ("Pro Tools" if none is given); it understands the keys that locate a
song there, takes MMC, and has a foot switch and end-of-song notes to press.

With --practise it starts VELT beside it, on settings that hold a sample show and name its ports.
They lie apart from the user's own, in velt-rehearsal in the configuration folder, and keep what is
edited; delete that folder to start again. Closing VELT ends the rehearsal.

MIDI ports, as VELT shows them (those of a second stand-in are numbered):
  Rehearsal MMC:commands         takes MMC Play and Stop, for any device ID
  Rehearsal DAW:notes            sends the end-of-song notes
  Rehearsal Foot switch:notes    sends the controller's notes

The environment variable VELT_MIDI (alsa, jack or core) names the MIDI system, as for VELT.

Keys in its window (all others belong to the DAW):
  F1 to F5   foot switch: Song UP, Song DOWN, LOCATE, DAW PLAY, DAW STOP
  F6, F7     end of song, note 24 and note 36
  F8         open the MIDI ports again
The DAW's own keys, while no number is being typed: Space starts and stops the transport; keypad
Enter starts it in Studio One. Keypad 0, Tab and the like do nothing. Shift, Control, Num Lock and
their kind are reported, but are never part of what is typed.

Commands on standard input, one a line (its end does not end the program):
  note N     presses key N (0 to 127) of the foot switch: note on, 100 ms later note off
  end N      the same on the DAW's own port
  quit       ends the program

Standard output gets one line an event, at once: the time in ms (CLOCK_MONOTONIC), then
  ready                        the window is shown, and MIDI is open or known to be absent
  midi F0 7F 00 06 01 F7       a MIDI message that arrived, in hexadecimal
  midi dropped N               N messages more than could be kept
  no midi                      the MIDI ports could not be opened
  key down 0x51                a key, by its macOS virtual key code; then "key up 0x51".
  key down 0x11 cmd            " cmd": with Command (Control here)
  key down 0x52 repeat         " repeat": from a held key; the DAW ignores it
  key down other 0xFF1B        a key without a code here, by its X keysym
  located bar 105
  located marker 7
  wrong sequence = 1 Tab (key does not belong here)
  transport playing            or "stopped": on every MMC Play or Stop, Space and Enter
  sent note on 31 foot switch  and "off"; "daw notes" for the other port
  not sent note on 31 ...      because no MIDI is there
  unknown command TEXT         on standard input
  velt cannot be started: WHY  with --practise; or "velt has failed: WHY"
)");
}
