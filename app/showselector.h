// SPDX-License-Identifier: MIT
#pragma once

#include "editdata.h"
#include "exwidgets.h"

#include <vector>

// The selector of the show that the window shows. What it lists can be older than the data model:
// the editor tells of its changes only when they are saved.
class ShowSelector : public ExComboBox
{
    Q_OBJECT

public:
    using ExComboBox::ExComboBox;

    // Lists the shows and selects the first.
    void list(const std::vector<EditDataShow>& shows);
    // Lists the shows and selects one, without a signal.
    void listQuietly(const std::vector<EditDataShow>& shows, int selected);
    // True if it lists these shows.
    [[nodiscard]] bool isUpToDate(const std::vector<EditDataShow>& shows) const;

    // The index in `shows` of the selected show, -1 if it has gone. A show of the same title is
    // the same show, first at the same index, then elsewhere. Otherwise the one at the same index
    // is, if its title is not listed: it was renamed.
    [[nodiscard]] int indexOfSelected(const std::vector<EditDataShow>& shows) const;
};
