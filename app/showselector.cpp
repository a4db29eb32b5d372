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

bool ShowSelector::isUpToDate(const std::vector<EditDataShow>& shows) const
{
    int index = 0;
    return count() == static_cast<int>(shows.size()) &&
           std::all_of(shows.begin(), shows.end(), [&](const EditDataShow& show) {
               return show.ShowTitle == itemText(index++);
           });
}

int ShowSelector::indexOfSelected(const std::vector<EditDataShow>& shows) const
{
    const int index = currentIndex();
    if (index < 0) {
        return -1;
    }
    const auto place = static_cast<std::size_t>(index);
    const EditDataShow* const there = place < shows.size() ? &shows[place] : nullptr;
    const auto isSelected = [this](const EditDataShow& show) {
        return show.ShowTitle == currentText();
    };
    if (there && isSelected(*there)) {
        return index;
    }
    const auto moved = std::find_if(shows.begin(), shows.end(), isSelected);
    if (moved != shows.end()) {
        return static_cast<int>(moved - shows.begin());
    }
    const bool isRenamed = there && findText(there->ShowTitle) == -1;
    return isRenamed ? index : -1;
}
