// SPDX-License-Identifier: MIT
#include "run.h"

#include <algorithm>

SEND_STATE Run::stateOf(int pos) const
{
    if (pos == -1) {
        return NOT_SENT;
    }
    return pos == sentPos ? SENT : pos == nextPos ? NEXT : NOT_SENT;
}

Run Run::located(int pos, const std::vector<EditDataSet>& setList) const
{
    const int next = getNextPos(pos, setList);
    return {operationOn && next != -1, pos, next};
}

Run Run::moved(int newSentPos, int newNextPos, const std::vector<EditDataSet>& setList) const
{
    if (!operationOn) {
        return {false, newSentPos, -1};
    }
    if (nextPos == -1) {
        return {true, newSentPos, -1}; // It began on a space, and nothing was sent since.
    }
    const int next = newSentPos != -1 ? getNextPos(newSentPos, setList) : newNextPos;
    return {next != -1, newSentPos, next};
}

int Run::getNextPos(int pos, const std::vector<EditDataSet>& setList)
{
    const std::int64_t first = std::int64_t{pos} + 1;
    if (first < 0 || first >= static_cast<std::int64_t>(setList.size())) {
        return -1;
    }
    const auto song =
        std::find_if(setList.begin() + first, setList.end(),
                     [](const EditDataSet& entry) { return entry.SetType == kSetTypeSong; });
    return song == setList.end() ? -1 : static_cast<int>(song - setList.begin());
}
