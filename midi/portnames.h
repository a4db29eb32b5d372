// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

#include <RtMidi.h>

// The names of MIDI ports as they are shown, stored and compared, made from RtMidi's names of all
// ports of one direction.
//
// RtMidi ends an ALSA name in the numbers of the client and the port: "Rehearsal DAW:notes 129:0".
// Programs are numbered in the order in which they start, so the numbers change from day to day.
// Names over other MIDI systems stay as they are.

// Without the numbers; ports that would then read the same keep them.
QStringList shownPortNames(RtMidi::Api api, const QStringList& names);

// The index of the port that a stored name stands for, or -1: the one that is shown so, else over
// ALSA the first that differs only in the numbers, which either may lack.
int indexOfPort(RtMidi::Api api, const QStringList& names, const QString& stored);
