// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QString>

// The colours of the rehearsal's window: dark and calm, for a dark stage.
namespace Look {

inline const QColor kWindow(0x11, 0x17, 0x1B);
inline const QColor kPanel(0x0B, 0x10, 0x13);
inline const QColor kText(0xC6, 0xD1, 0xD6);
inline const QColor kDim(0x84, 0x94, 0x9C);
inline const QColor kLocated(0xD8, 0xF3, 0xEC);
inline const QColor kTyping(0xF2, 0xB5, 0x4B);
inline const QColor kPlaying(0x4C, 0xC9, 0x7B);
inline const QColor kWrong(0xB3, 0x0F, 0x24);
inline const QColor kWrongText(0xFF, 0x6B, 0x78); // On the dark background.

QString styleSheet();

} // namespace Look
