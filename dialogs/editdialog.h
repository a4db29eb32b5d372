// SPDX-License-Identifier: MIT
#pragma once

#include "editdata.h"
#include "savingdialog.h"

#include <functional>
#include <memory>
#include <vector>

namespace Ui {
class EditDialog;
} // namespace Ui

// The editor of songs, shows and set lists. The operator window makes one and calls
// setDispFromEdit() and exec() each time it opens it.
//
// There is no working copy: each change is in the operator window's data at once, and neither
// CANCEL nor a close without saving takes it back. OK and the Save answer write the set-list file,
// SAVE AS and OPEN use one that the user picks. Failures of the files are silent. Between two
// actions of the user, row i of each table shows element i of its list.
class EditDialog : public SavingDialog
{
    Q_OBJECT

public:
    // The data outlives the dialog. The tables stay empty until setDispFromEdit().
    EditDialog(EditData* sharedData, QWidget* parent);
    ~EditDialog() override;

    // Shows the data with the first show's set list; no changes count as unsaved.
    void setDispFromEdit();

    // Stores the cell that is being typed in, and saves unsaved changes without asking: the program
    // is about to end. Nothing while the editor is closed.
    void saveChanges();

private slots:
    void on_pushShowListAdd_clicked();
    void on_pushShowListDuplicate_clicked();
    void on_pushShowListDelete_clicked();
    void on_pushShowListAllDel_clicked();
    void on_tableShowList_currentCellChanged(int currentRow, int currentColumn, int previousRow,
                                             int previousColumn);
    void on_tableShowList_cellChanged(int row, int column);

    void on_pushSongListAdd_clicked();
    void on_pushSongListDelete_clicked();
    void on_pushSongListAllDel_clicked();
    void on_tableSongList_itemSelectionChanged();
    void on_tableSongList_cellChanged(int row, int column);

    void on_pushSongInsert_clicked();
    void on_pushAddSpace_clicked();
    void on_pushSetDelete_clicked();
    void on_tableSetList_itemSelectionChanged();
    void on_pushSetUp_clicked() { moveSelectedEntries(-1); }
    void on_pushSetDown_clicked() { moveSelectedEntries(1); }
    void on_tableSetList_cellChanged(int row, int column);
    void on_listWidgetSong_itemSelectionChanged();

    void on_pushOpen_clicked();
    void on_pushSaveAs_clicked();
    void on_pushOK_clicked();
    void on_pushCancel_clicked();

protected:
    void save() override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    // edit() with `work` that changes something, if the user agrees to the question.
    void editIfConfirmed(const QString& question, const std::function<void()>& work);

    void setUpTables();
    void storeOpenCell();
    void write(const QString& path);

    // These change widgets: they are called in changeWidgets() or edit().
    // What disables the button that was pressed gives the focus to a table or list: Qt
    // would hand it on to the next button, such as from Delete to All Del.
    void fillShowTable();
    void setShowButtonsEnabled(bool enabled);
    void insertShow(int row, const EditDataShow& show);
    void fillSongTable();
    void setSongListView();
    void changeSetLists(const std::function<void(std::vector<EditDataSet>&)>& change);
    void setSetList(int showIndex); // -1: no set list.
    void setEntryButtons(const std::vector<int>& selectedRows);
    void moveSelectedEntries(int step);

    std::unique_ptr<Ui::EditDialog> ui;
    EditData* editData;
    std::vector<EditDataSong> songListView;             // Row by row what listWidgetSong offers.
    std::vector<EditDataSet>* currentSetList = nullptr; // In ShowList: what tableSetList shows.
};
