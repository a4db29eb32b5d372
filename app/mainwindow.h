// SPDX-License-Identifier: MIT
#pragma once

#include "daw.h"
#include "editdata.h"
#include "exwidgets.h"
#include "mackeys.h"
#include "midiports.h"
#include "operatorwindow.h"

#include <QMainWindow>

#include <memory>

class EditDialog;
class PreferenceDialog;
class QMidiMessage;
class RunControls;
class SendPanel;
class SetListTable;
class ShownRun;

// The operator window: shows one show's set list, steps through it, and drives the DAW. It owns the
// data model, the MIDI ports and the two dialogs, which edit the data model in place and call back
// through OperatorWindow. Main thread only; locating blocks for the pauses between keys.
//
// Row i of the table is entry i of the shown show. MIDI input acts while a dialog is open and edits
// the data, and a message box runs the event loop: no index is used without a check against the
// data as it is then, and none is carried over a box.
class MainWindow : public QMainWindow, public OperatorWindow, public KeyAndFocusOwner
{
    Q_OBJECT

public:
    // Reads the three files, opens the MIDI ports silently and shows the first show.
    explicit MainWindow(QWidget* parent);
    // Writes the geometry file and closes the MIDI ports.
    ~MainWindow() override;
    Q_DISABLE_COPY_MOVE(MainWindow)

    // Ends the program, as when the session ends: stores what is being typed and what the editor
    // has not saved, and asks nothing.
    void quit();

    // OperatorWindow
    void setShowData() override;
    void setPreferenceData() override;
    void midiReconnect() override;

    // KeyAndFocusOwner
    void onKeyEvent(QKeyEvent* event) override;
    void onFocus() override;
    [[nodiscard]] bool isOperationOn() const override;
    void giveFocusToTable() override; // Not while a cell is open: typing wins.

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent*) override {} // Keys come by onKeyEvent() alone.
    void focusInEvent(QFocusEvent*) override { setFocusFlag(true); }
    void focusOutEvent(QFocusEvent*) override { setFocusFlag(false); }

private slots:
    void onMidiReceive(QMidiMessage* pMidMsg);
    void onShortcutMidiReceive(QMidiMessage* pMidMsg);
    void on_about();
    void on_sendLocate_clicked();
    void on_sendDawStart_clicked() { sendTransport(true); }
    void on_sendDawStop_clicked() { sendTransport(false); }
    void on_send0_clicked() { sendKey(kKeyKeypad0); }
    void on_sendTab_clicked() { sendKey(kKeyTab); }
    void on_sendSpace_clicked() { sendKey(kKeySpace); }
    void on_sendEnter_clicked() { sendKey(kKeyKeypadEnter); }
    void on_pushReset_clicked();
    void on_pushEdit_clicked();
    void on_pushPreference_clicked();
    void on_comboShowList_currentIndexChanged(int index);
    void on_tableSetList_doubleclicked(int row, int column);
    void on_tableSetList_cellChanged(int row, int column);
    void on_tableSetList_itemSelectionChanged();

private:
    void createMenu();
    void createControls();
    void createTable();
    void createLayout();
    void readFiles();
    void initialize();
    EditDialog& editor();
    void sendTransport(bool start);
    void sendKey(unsigned char key);
    void setFocusFlag(bool hasFocus);

    bool focusFlag = false; // The window itself holds the keyboard focus.
    SetListTable* tableSetList = nullptr;
    bool inUpdate = false;            // Guards show switching, double clicks and cell edits.
    EditDialog* editDialog = nullptr; // Built when first needed, as the preferences dialog.
    QRect editorPlace;
    PreferenceDialog* preferenceDialog = nullptr;
    EditData editData;
    SendPanel* groupBoxSend = nullptr;
    RunControls* controls = nullptr;
    std::unique_ptr<ShownRun> shownRun;
    MidiPorts midiPorts{editData, this};
    Daw daw{editData, *midiPorts.midiOut, *this};
};
