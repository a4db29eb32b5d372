// SPDX-License-Identifier: MIT
#include "look.h"

QString Look::styleSheet()
{
    return QStringLiteral(R"(
RehearsalWindow { background-color: %1; }
QLabel { color: %4; }
QPlainTextEdit { background-color: %2; color: %3; border: none; border-radius: 6px; padding: 6px; }
QPushButton {
    background-color: #1C272D; color: %3; border: 1px solid #32424A; border-radius: 6px;
    padding: 5px 4px; min-height: 32px;
}
QPushButton:hover { border-color: #4F6772; }
QPushButton:pressed { background-color: #185466; border-color: #2E8AA5; color: white; }
QScrollBar:vertical { background: %2; width: 10px; margin: 0; }
QScrollBar:horizontal { background: %2; height: 10px; margin: 0; }
QScrollBar::handle { background: #32424A; border-radius: 4px; min-height: 24px; min-width: 24px; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: none; }
)")
        .arg(kWindow.name(), kPanel.name(), kText.name(), kDim.name());
}
