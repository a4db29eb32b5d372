// SPDX-License-Identifier: MIT
#pragma once

#include "editdata.h"
#include "run.h"

#include <vector>

class Daw;
class ExPushButton;
class RunControls;
class SetListTable;

// The shown show and the run through it: locates its entries in the DAW, and keeps show selector,
// table and controls in step with the data model and with Run. Main thread only.
//
// The data model can change under it at any time, by the editor: no entry is used without a check
// that it is the one that its row shows, by kind and song Id, or by name for a space. Nor is one
// carried over a message box, which runs the event loop.
class ShownRun
{
public:
    // Nothing is owned; all outlive the object. `locate` is enabled while there are rows.
    ShownRun(EditData& data, RunControls& runControls, SetListTable& setListTable,
             ExPushButton& locate, Daw& drivenDaw);

    // Lists all shows and shows the first, without a run.
    void showFirst();
    // Shows the show that was selected, without marks.
    void showSelected();
    // The data has changed: stays on the show and goes on with the run, if they are still there.
    void showChanges();

    [[nodiscard]] bool isRunning() const { return run.operationOn; }

    // LOCATE: begins a run if there is none, and locates the selected entry, else the one last
    // located. A space only begins the run.
    void locateSelected();
    // Locates the entry marked next, whatever is selected.
    void locateNext();
    // Reset.
    void end() { setRun(run.ended()); }
    // The selected row keeps the text colour of its mark.
    void colorSelection();

    // Takes over what was typed into a cell. True if it differs from the data.
    bool takeTyped(int row, int column);

private:
    std::vector<EditDataSet>* setList(); // Null if no show is shown, or it has gone.
    EditDataSet* entryAt(int pos);       // Null if there is none.
    EditDataSet* entryOfRow(int row);    // Null too if it is not the one that the row shows.
    bool isSong(int row);                // It is there, and a song.
    void fillTable();
    void locateEntry(int pos, int rowToSelect);
    void setRun(const Run& now);
    void redrawRow(int row, SEND_STATE state);

    EditData& editData;
    RunControls& controls;
    SetListTable& table;
    ExPushButton& sendLocate;
    Daw& daw;
    Run run;
};
