// SPDX-License-Identifier: MIT
#include "midibackend.h"

QStringList portNames(RtMidi& backEnd)
{
    QStringList names;
    for (unsigned int index = 0; index < backEnd.getPortCount(); ++index) {
        names.append(QString::fromStdString(backEnd.getPortName(index)));
    }
    return names;
}

void openChecked(RtMidi& backEnd, unsigned int index, const std::string& portName)
{
    if (index >= backEnd.getPortCount()) {
        throw RtMidiError("There is no MIDI port of the number " + std::to_string(index) + ".",
                          RtMidiError::INVALID_PARAMETER);
    }
    backEnd.openPort(index, portName);
}
