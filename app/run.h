// SPDX-License-Identifier: MIT
#pragma once

#include "editdata.h"

#include <vector>

// The look of a set-list row. Spaces look the same in every state.
enum SEND_STATE {
    NOT_SENT = 0, // plain
    SENT = 1,     // the entry last located
    NEXT = 2      // the song entry after it
};

// What the end of a song does during a run: the index of the item in the run-mode selector.
enum RunMode { MANUAL = 0, AUTO_STOP = 1, AUTO_LOCATE = 2 };

// Where the operator is in a set list. A plain value: each step returns the state after it, and the
// operator window shows the difference. Positions are indexes of entries, which are also rows of
// the table; -1 is none.
struct Run
{
    bool operationOn = false; // A run is in progress.
    int sentPos = -1;         // The entry last located; outlives the run.
    int nextPos = -1;         // The song entry marked next.

    [[nodiscard]] SEND_STATE stateOf(int pos) const;

    // The first song entry after `pos`; -1 if there is none or `pos` is below -1.
    static int getNextPos(int pos, const std::vector<EditDataSet>& setList);

    // The entry that LOCATE takes: the selected one, else the one last located.
    [[nodiscard]] int posToLocate(int selectedPos) const
    {
        return selectedPos != -1 ? selectedPos : sentPos;
    }

    // LOCATE was pressed and the DAW is there.
    [[nodiscard]] Run begun() const { return {true, sentPos, nextPos}; }

    // The song entry `pos` was sent. The run ends if no song entry follows.
    [[nodiscard]] Run located(int pos, const std::vector<EditDataSet>& setList) const;

    // Reset, or the last song entry was sent.
    [[nodiscard]] Run ended() const { return {false, sentPos, -1}; }

    // The set list was edited: the marked entries are now at `newSentPos` and `newNextPos`, -1
    // where they have gone. The run goes on if there is a song entry to come.
    [[nodiscard]] Run moved(int newSentPos, int newNextPos,
                            const std::vector<EditDataSet>& setList) const;
};
