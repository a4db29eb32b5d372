// SPDX-License-Identifier: MIT
#pragma once

#include "editdata.h"
#include "settingsfile.h"

#include <QStringList>
#include <QVariantMap>

#include <utility>
#include <vector>

// What `velt --check` looks at, as plain values.
struct CheckFacts
{
    EditData data; // As VELT reads it from its files.
    QString folder;
    std::vector<std::pair<QString, SettingsFileState>> files; // The set-list file first.
    QVariantMap setListKeys;                                  // All that the set-list file holds.
    bool isSetListParsed = true;   // False if it has lines that are no settings.
    QString backupPath;            // Of the set-list file; empty if there is none.
    bool isPreferenceWhole = true; // False if it has such lines, or lacks what all files have.

    bool isMac = false;
    bool canType = false; // Into other programs. Without an X server they cannot be seen either.
    QStringList programs; // That the key sender sees.

    struct Port
    {
        QString opened;      // What the window would open now; empty if nothing.
        QStringList present; // Except VELT's own.
    };
    QString midiSystem;       // Empty: none runs. As MidiPort::systemName() has it.
    QString wantedMidiSystem; // Empty: any.
    bool isMidiStalled = false;
    Port dawInput, controllerInput, dawOutput;
};

// Takes them from this machine. Changes nothing there: no file, no port, no key. Needs a
// QCoreApplication of the program's name. Main thread only.
CheckFacts gatherFacts();
