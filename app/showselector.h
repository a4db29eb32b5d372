// SPDX-License-Identifier: MIT
#pragma once

#include "editdata.h"
#include "exwidgets.h"

#include <vector>

// The selector of the show that the window shows. What it lists can be older than the data model:
// the editor changes the shows without telling, until they are saved.
class ShowSelector : public ExComboBox
{
    Q_OBJECT

public:
    using ExComboBox::ExComboBox;

    // Lists the shows and selects one, without a signal if that is wanted.
    void list(const std::vector<EditDataShow>& shows);
    void listQuietly(const std::vector<EditDataShow>& shows, int selected);
    [[nodiscard]] bool lists(const std::vector<EditDataShow>& shows) const;

    // Where the selected show is in `shows` now, -1 if it has gone. It is the one of the same
    // title, at its place or elsewhere; else the one at its place, if that got a title that is not
    // listed.
    [[nodiscard]] int placeOfSelected(const std::vector<EditDataShow>& shows) const;
};
