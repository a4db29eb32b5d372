// SPDX-License-Identifier: MIT
#pragma once

#include "editdata.h"
#include "run.h"

#include <vector>

class ExPushButton;
class RunControls;
class SetListTable;

// The shown show and the run through it: keeps show selector, table and controls in step with the
// data model and with Run. What is sent to the DAW, the window decides. Main thread only.
//
// The data model can change under it at any time, by the editor: no entry is used without a check
// that it is the one that its row shows, by kind and song Id, or by name for a space.
class ShownRun
{
public:
    // Nothing is owned; all outlive the object. `locate` is enabled while there are rows.
    ShownRun(EditData& data, RunControls& runControls, SetListTable& setListTable,
             ExPushButton& locate);

    // Lists all shows and shows the first, without a run.
    void showFirst();
    // Shows the show that was selected, without marks.
    void showSelected();
    // The data has changed: stays on the show and goes on with the run, as far as both are still
    // there.
    void showChanges();

    [[nodiscard]] bool isRunning() const { return run.operationOn; }
    [[nodiscard]] int nextPos() const { return run.nextPos; }
    // The entry that LOCATE takes, -1 if there is none.
    [[nodiscard]] int posToLocate() const;
    // True if there is an entry at `pos` and it is the one that the row shows.
    [[nodiscard]] bool isThere(int pos);
    // True if it is a song entry, too.
    [[nodiscard]] bool isSong(int pos);
    // A copy of the entry that is there.
    EditDataSet entry(int pos);

    void begin() { setRun(run.begun()); }
    void end() { setRun(run.ended()); }
    // Takes the marks off, until markLocated() or end().
    void unmark();
    // Marks an entry as sent and its follower as next, selects a row and scrolls to the marks.
    // Nothing if the entry has gone.
    void markLocated(int pos, int rowToSelect);
    // The selected row keeps the text colour of its mark.
    void colorSelection();

    // Takes over what was typed into a cell. True if it differs from the data.
    bool takeTyped(int row, int column);

private:
    std::vector<EditDataSet>* setList(); // Null if no show is shown, or it has gone.
    EditDataSet* entryAt(int pos);       // Null if there is none.
    EditDataSet* entryOfRow(int row);    // Null too if it is not the one that the row shows.
    void fillTable();
    void setRun(const Run& now);
    void redrawRow(int row, SEND_STATE state);

    EditData& editData;
    RunControls& controls;
    SetListTable& table;
    ExPushButton& sendLocate;
    Run run;
};
