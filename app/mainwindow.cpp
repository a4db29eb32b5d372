// SPDX-License-Identifier: MIT
#include "mainwindow.h"

#include "aboutdialog.h"
#include "datafiles.h"
#include "editdialog.h"
#include "messageboxes.h"
#include "preferencedialog.h"
#include "qmidiin.h"
#include "qmidimessage.h"
#include "runcontrols.h"
#include "sendpanel.h"
#include "setlisttable.h"
#include "shownrun.h"
#include "tablelook.h"
#include "windowgeometry.h"

#include <QCoreApplication>
#include <QMenuBar>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr int kClickMs = 300; // How long a button that is pressed by code stays down.

// The notes with which the DAW reports the end of a song.
constexpr std::uint32_t kEndOfSongNote = 24;
constexpr std::uint32_t kOtherEndOfSongNote = 36;

} // namespace

MainWindow::MainWindow(QWidget* parent) : QMainWindow(parent)
{
    createMenu();
    createControls();
    createTable();
    createLayout();
    setWindowTitle(QStringLiteral("VELT"));
    readFiles();
    initialize();
    giveFocusToTable();
}

MainWindow::~MainWindow()
{
    writeGeometry(*this, *tableSetList, editor());
    midiPorts.close();
    hide(); // Whatever has the focus gives it up while all widgets that report it are still there.
    for (QWidget* widget : std::initializer_list<QWidget*>{
             groupBoxSend, editDialog, preferenceDialog, controls->pushReset, controls->pushEdit,
             controls->pushPreference, controls->comboShowList, tableSetList}) {
        delete widget;
    }
}

void MainWindow::createMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&About"));
    menu->addAction(tr("&AboutVELT"), this, &MainWindow::on_about);
}

void MainWindow::createControls()
{
    groupBoxSend = new SendPanel(this);
    controls = new RunControls(this);
    const std::pair<ExPushButton*, void (MainWindow::*)()> slotsOfButtons[] = {
        {groupBoxSend->sendLocate, &MainWindow::on_sendLocate_clicked},
        {groupBoxSend->sendDawStart, &MainWindow::on_sendDawStart_clicked},
        {groupBoxSend->sendDawStop, &MainWindow::on_sendDawStop_clicked},
        {groupBoxSend->send0, &MainWindow::on_send0_clicked},
        {groupBoxSend->sendTab, &MainWindow::on_sendTab_clicked},
        {groupBoxSend->sendSpace, &MainWindow::on_sendSpace_clicked},
        {groupBoxSend->sendEnter, &MainWindow::on_sendEnter_clicked},
        {controls->pushReset, &MainWindow::on_pushReset_clicked},
        {controls->pushEdit, &MainWindow::on_pushEdit_clicked},
        {controls->pushPreference, &MainWindow::on_pushPreference_clicked}};
    for (const auto& [button, slot] : slotsOfButtons) {
        connect(button, &QPushButton::clicked, this, slot);
    }
    connect(controls->comboShowList, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &MainWindow::on_comboShowList_currentIndexChanged);
}

void MainWindow::createTable()
{
    tableSetList = new SetListTable(this);
    connect(tableSetList, &QTableWidget::cellDoubleClicked, this,
            &MainWindow::on_tableSetList_doubleclicked);
    connect(tableSetList, &QTableWidget::cellChanged, this,
            &MainWindow::on_tableSetList_cellChanged);
    connect(tableSetList, &QTableWidget::itemSelectionChanged, this,
            &MainWindow::on_tableSetList_itemSelectionChanged);
    shownRun = std::make_unique<ShownRun>(editData, *controls, *tableSetList,
                                          *groupBoxSend->sendLocate, daw);
}

void MainWindow::createLayout()
{
    auto* central = new QWidget;
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(10, 10, 10, 10);
    layout->setSpacing(1);
    layout->addWidget(groupBoxSend);
    layout->addLayout(controls, 2);
    layout->addWidget(controls->comboShowList);
    layout->addWidget(tableSetList, 1);
    setCentralWidget(central);
}

void MainWindow::readFiles()
{
    editData.readEdit(setListFilePath());
    editData.readPreference(preferenceFilePath());
    editorPlace = readGeometry(*this, *tableSetList);
}

void MainWindow::initialize()
{
    setPreferenceData();
    setShowData();
    connect(midiPorts.midiIn, &QMidiIn::midiMessageReceived, this, &MainWindow::onMidiReceive);
    connect(midiPorts.shortcutMidiIn, &QMidiIn::midiMessageReceived, this,
            &MainWindow::onShortcutMidiReceive);
    midiPorts.open(); // At start-up a port that cannot be opened just stays closed.
}

void MainWindow::quit()
{
    if (editDialog) {
        editDialog->saveChanges();
    }
    close();
    QCoreApplication::quit();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    tableSetList->storeOpenCell();
    QMainWindow::closeEvent(event);
}

void MainWindow::on_about()
{
    AboutDialog about(x() + 150, y() + 50, nullptr);
    about.exec();
    giveFocusToTable();
}

EditDialog& MainWindow::editor()
{
    if (!editDialog) {
        editDialog = new EditDialog(&editData, this);
        placeEditor(*editDialog, editorPlace);
    }
    return *editDialog;
}

void MainWindow::on_pushEdit_clicked()
{
    editor().setDispFromEdit();
    editor().exec();
    shownRun->showChanges();
    giveFocusToTable();
}

void MainWindow::on_pushPreference_clicked()
{
    if (midiPorts.isSystemEmpty()) {
        midiPorts.reopen(); // So that the ports of a server that came back can be chosen.
    }
    if (!preferenceDialog) {
        preferenceDialog = new PreferenceDialog(&editData, midiPorts.midiIn,
                                                midiPorts.shortcutMidiIn, midiPorts.midiOut, this);
    }
    preferenceDialog->setDispFromEdit();
    preferenceDialog->exec();
    giveFocusToTable();
}

void MainWindow::setPreferenceData()
{
    tableSetList->setMarkColors(editData.SendTextColor, editData.NextTextColor);
    groupBoxSend->setKeyButtonsFor(editData.Mode);
    groupBoxSend->setSendButtonIsShow(editData.ShowKeyButton);
    daw.forgetProcess();
}

void MainWindow::midiReconnect()
{
    for (const MidiPorts::Problem& problem : midiPorts.reopen()) {
        MessageBoxes::critical(this, problem.title, problem.text);
    }
}

void MainWindow::setShowData()
{
    shownRun->showFirst();
    daw.forgetProcess();
}

void MainWindow::on_comboShowList_currentIndexChanged(int)
{
    if (inUpdate) {
        return;
    }
    const QScopedValueRollback<bool> guard(inUpdate, true);
    shownRun->showSelected();
    giveFocusToTable();
}

bool MainWindow::isOperationOn() const
{
    return shownRun->isRunning();
}

void MainWindow::on_tableSetList_itemSelectionChanged()
{
    shownRun->colorSelection();
}

void MainWindow::on_tableSetList_cellChanged(int row, int column)
{
    if (inUpdate) {
        return;
    }
    const QScopedValueRollback<bool> guard(inUpdate, true);
    if (shownRun->takeTyped(row, column)) {
        editData.writeEdit(setListFilePath());
        // Writing removes untitled shows. Not at once: the cell is still being closed.
        const auto showChanges = [this] { shownRun->showChanges(); };
        QMetaObject::invokeMethod(this, showChanges, Qt::QueuedConnection);
    }
}

void MainWindow::on_tableSetList_doubleclicked(int row, int column)
{
    if (inUpdate) {
        return;
    }
    const QScopedValueRollback<bool> guard(inUpdate, true);
    if (row >= 0 && column == TableLook::kTitleColumn) {
        groupBoxSend->sendLocate->animateClick(kClickMs);
    }
}

void MainWindow::on_sendLocate_clicked()
{
    shownRun->locateSelected();
    giveFocusToTable();
}

void MainWindow::on_pushReset_clicked()
{
    shownRun->end();
    giveFocusToTable();
}

void MainWindow::sendTransport(bool start)
{
    daw.sendTransport(start);
    giveFocusToTable();
}

void MainWindow::sendKey(unsigned char key)
{
    daw.sendKey(key);
    giveFocusToTable();
}

void MainWindow::onMidiReceive(QMidiMessage* pMidMsg)
{
    if (!pMidMsg || !shownRun->isRunning() || pMidMsg->getStatus() != MIDI_NOTE_OFF) {
        return;
    }
    const std::uint32_t note = pMidMsg->getPitch();
    if (note != kEndOfSongNote && note != kOtherEndOfSongNote) {
        return;
    }
    const int mode = controls->comboMode->currentIndex();
    if (mode == AUTO_STOP) {
        groupBoxSend->sendDawStop->animateClick(kClickMs);
    } else if (mode == AUTO_LOCATE) {
        shownRun->locateNext();
    }
}

void MainWindow::onShortcutMidiReceive(QMidiMessage* pMidMsg)
{
    if (!pMidMsg || pMidMsg->getStatus() != MIDI_NOTE_ON || pMidMsg->getVelocity() == 0) {
        return;
    }
    const auto note = static_cast<std::int32_t>(pMidMsg->getPitch());
    if (note == editData.NoteSongUp) {
        tableSetList->step(Qt::Key_Up);
    } else if (note == editData.NoteSongDown) {
        tableSetList->step(Qt::Key_Down);
    } else if (note == editData.NoteLocate) {
        groupBoxSend->sendLocate->animateClick(kClickMs);
    } else if (note == editData.NoteDawPlay) {
        groupBoxSend->sendDawStart->animateClick(kClickMs);
    } else if (note == editData.NoteDawStop) {
        groupBoxSend->sendDawStop->animateClick(kClickMs);
    }
}

void MainWindow::onKeyEvent(QKeyEvent* event)
{
    if (ExPushButton* button = groupBoxSend->buttonOfKey(event->key(), editData.Mode)) {
        button->animateClick(kClickMs);
    }
}

void MainWindow::setFocusFlag(bool hasFocus)
{
    focusFlag = hasFocus;
    onFocus();
}

void MainWindow::onFocus()
{
    if (focusFlag || controls->hasFocusFlag() || groupBoxSend->hasFocusFlag() ||
        tableSetList->hasFocusFlag()) {
        groupBoxSend->setFocusStyleOn();
    } else {
        groupBoxSend->setFocusStyleOff();
    }
}

void MainWindow::giveFocusToTable()
{
    if (!tableSetList->openEditor()) {
        tableSetList->setFocus(Qt::OtherFocusReason);
    }
}
