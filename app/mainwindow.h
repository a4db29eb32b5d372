// SPDX-License-Identifier: MIT
#pragma once

#include "editdata.h"
#include "exwidgets.h"
#include "midiports.h"
#include "operatorwindow.h"
#include "qkeyeventsend.h"

#include <QMainWindow>

#include <vector>

class EditDialog;
class PreferenceDialog;
class QGroupBox;
class QMidiMessage;

// The operator window: shows one show's set list, steps through it, and drives the DAW by MIDI
// Machine Control and by keys typed into its process. It owns the data model, the MIDI ports, the
// key sender and the two dialogs, which edit the data model in place and call back through
// OperatorWindow. Main thread only; sending keys blocks for their pauses.
//
// Row i of the table is entry i of the shown show. MIDI input acts while a dialog is open and
// edits the data, and a message box runs the event loop: no index is used without a check against
// the data as it is then, and none is carried over a box.
//
// One source file per concern:
//   mainwindow.cpp           construction, layout, geometry, shutdown, show selector, rows
//   mainwindow_run.cpp       stepping through a set list: LOCATE, Reset, double click, cell edits
//   mainwindow_locate.cpp    the DAW's process, the locate keys, the key buttons, MMC
//   mainwindow_midi.cpp      reactions to MIDI input
//   mainwindow_keyboard.cpp  key bindings, focus frame, send-button styles
class MainWindow : public QMainWindow, public OperatorWindow, public KeyAndFocusOwner
{
    Q_OBJECT

public:
    // The look of a set-list row. Spaces look the same in every state.
    enum SEND_STATE {
        NOT_SENT = 0, // plain
        SENT = 1,     // the entry last located
        NEXT = 2      // the song entry after it
    };

    // Reads the three files, opens the MIDI ports silently and shows the first show.
    explicit MainWindow(QWidget* parent);
    // Writes the geometry file and closes the MIDI ports.
    ~MainWindow() override;
    Q_DISABLE_COPY_MOVE(MainWindow)

    // OperatorWindow
    void setShowData() override;
    void setPreferenceData() override;
    void midiReconnect() override;

    // KeyAndFocusOwner
    void onKeyEvent(QKeyEvent* event) override;
    void onFocus() override;
    [[nodiscard]] bool isOperationOn() const override { return operationOn; }
    void giveFocusToTable() override;

    // The first song entry behind `pos`, -1 if there is none or `pos` is below -1.
    static int getNextPos(int pos, const std::vector<EditDataSet>& setList);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private slots:
    void onMidiReceive(QMidiMessage* pMidMsg);
    void onShortcutMidiReceive(QMidiMessage* pMidMsg);
    void on_about();
    void on_sendLocate_clicked();
    void on_send0_clicked();
    void on_sendDawStart_clicked();
    void on_sendDawStop_clicked();
    void on_sendTab_clicked();
    void on_sendSpace_clicked();
    void on_sendEnter_clicked();
    void on_pushReset_clicked();
    void on_pushEdit_clicked();
    void on_pushPreference_clicked();
    void on_comboShowList_currentIndexChanged(int index);
    void on_tableSetList_doubleclicked(int row, int column);
    void on_tableSetList_cellChanged(int row, int column);
    void on_tableSetList_itemSelectionChanged();

private:
    // Construction and shutdown (mainwindow.cpp)
    void createMenu();
    void createSendButtons();
    ExPushButton* createSendButton(const QString& icon, const QString& spokenName,
                                   void (MainWindow::*slot)());
    void createRunControls();
    ExPushButton* createPushButton(const QString& text, void (MainWindow::*slot)());
    void createTable();
    void createLayout();
    void restoreGeometryAndData();
    void initialize();
    void saveGeometry() const;

    static constexpr int kClickMs = 300; // How long a button that is pressed by code stays down.

    // Shows and rows (mainwindow.cpp)
    std::vector<EditDataSet>* shownSetList(); // null when no show is shown
    EditDataSet* shownEntry(int pos);         // null when there is no such entry (any more)
    bool isShowingModel();                    // selector and table equal the data
    void insertSet(int row, const EditDataSet& entry, SEND_STATE state);
    void redrawRow(int row, SEND_STATE state); // nothing for a row that does not exist
    [[nodiscard]] int selectedPos() const;     // -1 when nothing is selected
    void selectedRow(int row);

    // The run (mainwindow_run.cpp)
    void setOperationOn();
    void setOperationOff();
    void setSendButtonIsShow(bool show);
    void locateSelected();
    void locateEntry(int pos);
    void unmark();
    void mark(int pos);
    bool isLocatable(int pos);
    void followWrittenShows();

    // Driving the DAW (mainwindow_locate.cpp)
    bool findProcess();        // Silently.
    bool isSendProcessExist(); // With a warning if there is none.
    void sendKeyEvent(const EditDataSet& entry);
    void sendKey(unsigned char key);
    void sendTransport(bool start);
    void sendMMC(bool start);

    // MIDI input (mainwindow_midi.cpp)
    void connectMidi();
    void locateNext();
    void pressTableKey(Qt::Key key);

    // Keyboard, focus and styles (mainwindow_keyboard.cpp)
    void setFocusFlag(bool hasFocus);
    void setFocusStyleOn();
    void setFocusStyleOff();
    void setFocusStyle(const QString& styleSheet);
    static void setSendButtonEnabled(ExPushButton* button, bool enabled);
    static void setSendButtonStyle(ExPushButton* button, const QString& iconPath);

    bool focusFlag = false;   // The window itself holds the keyboard focus.
    bool operationOn = false; // A run is in progress.
    ExTableWidget* tableSetList = nullptr;
    bool inUpdate = false; // Guards show switching, double clicks and cell edits.
    EditDialog* editDialog = nullptr;
    PreferenceDialog* preferenceDialog = nullptr;
    EditData editData;
    QGroupBox* groupBoxSend = nullptr;
    ExPushButton* sendLocate = nullptr;
    ExPushButton* sendDawStart = nullptr;
    ExPushButton* sendDawStop = nullptr;
    ExPushButton* send0 = nullptr;
    ExPushButton* sendTab = nullptr;
    ExPushButton* sendSpace = nullptr;
    ExPushButton* sendEnter = nullptr;
    ExComboBox* comboMode = nullptr;
    ExPushButton* pushReset = nullptr;
    ExPushButton* pushEdit = nullptr;
    ExPushButton* pushPreference = nullptr;
    ExComboBox* comboShowList = nullptr;
    MidiPorts midiPorts{editData, this};
    QKeyEventSend keyEventSend;
    int processPos = -1;        // The DAW in the key sender's process list; -1: not looked up yet.
    int sentPos = -1;           // The row last located; -1: none.
    int nextPos = -1;           // The row marked next; -1: none.
    bool isWarningOpen = false; // The "not found" box waits for an answer.
};
