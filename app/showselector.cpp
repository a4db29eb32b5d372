// SPDX-License-Identifier: MIT
#include "showselector.h"

#include <QSignalBlocker>

#include <algorithm>

void ShowSelector::list(const std::vector<EditDataShow>& shows)
{
    clear();
    QStringList titles;
    for (const EditDataShow& show : shows) {
        titles << show.ShowTitle;
    }
    addItems(titles);
}

void ShowSelector::listQuietly(const std::vector<EditDataShow>& shows, int selected)
{
    const QSignalBlocker noSignals(this);
    list(shows);
    setCurrentIndex(selected);
}

bool ShowSelector::lists(const std::vector<EditDataShow>& shows) const
{
    int index = 0;
    return count() == static_cast<int>(shows.size()) &&
           std::all_of(shows.begin(), shows.end(), [&](const EditDataShow& show) {
               return show.ShowTitle == itemText(index++);
           });
}

int ShowSelector::placeOfSelected(const std::vector<EditDataShow>& shows) const
{
    const auto isSelected = [this](const EditDataShow& show) {
        return show.ShowTitle == currentText();
    };
    const int index = currentIndex();
    const bool isPlaceThere = index >= 0 && index < static_cast<int>(shows.size());
    if (index < 0) {
        return -1;
    }
    if (isPlaceThere && isSelected(shows[static_cast<std::size_t>(index)])) {
        return index;
    }
    const auto moved = std::find_if(shows.begin(), shows.end(), isSelected);
    if (moved != shows.end()) {
        return static_cast<int>(moved - shows.begin());
    }
    return isPlaceThere && findText(shows[static_cast<std::size_t>(index)].ShowTitle) == -1 ? index
                                                                                            : -1;
}
