// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

// The content of an INI file with its serialised values, save colours, escaped so that QSettings
// reads them as text. QSettings believes what such a value says of its type, length and depth: a
// damaged one ends the program. VELT itself serialises only colours.
QByteArray escapeSerialisedValues(QByteArray content);
