// SPDX-License-Identifier: MIT
#include "preferencedialog.h"

#include "datafiles.h"
#include "deviceid.h"
#include "editdata.h"
#include "messageboxes.h"
#include "operatorwindow.h"
#include "qmidiin.h"
#include "qmidiout.h"
#include "ui_preferencedialog.h"

#include <QCloseEvent>
#include <QRegularExpressionValidator>
#include <QScopedValueRollback>

#include <RtMidi.h>

#include <algorithm>

namespace {

// Where the dialog opens, from the operator window's top left corner, in pixels.
constexpr QPoint kPlace{30, -10};

template <class Port>
QStringList portNames(Port* port)
{
    if (!port) {
        return {};
    }
    try {
        return port->getPorts();
    } catch (const RtMidiError&) {
        return {}; // No MIDI system: opening the ports after OK tells the operator.
    }
}

void fillPorts(QComboBox* combo, const QStringList& names, const QString& stored)
{
    combo->clear();
    combo->addItems(names);
    combo->setCurrentIndex(std::max(0, names.indexOf(stored)));
}

} // namespace

PreferenceDialog::PreferenceDialog(EditData* sharedData, QMidiIn* dawIn, QMidiIn* shortcutIn,
                                   QMidiOut* dawOut, QWidget* parent)
    : QDialog(parent),
      ui(std::make_unique<Ui::PreferenceDialog>()),
      parentWindow(dynamic_cast<OperatorWindow*>(parent)),
      editData(sharedData),
      dawMidiIn(dawIn),
      shortcutMidiIn(shortcutIn),
      dawMidiOut(dawOut)
{
    ui->setupUi(this);
    setWindowFlags(Qt::Window | Qt::WindowCloseButtonHint);
    if (parent) {
        move(parent->pos() + kPlace);
    }
    ui->editDeviceID->setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("[0-9a-fA-F]+")), ui->editDeviceID));
    ui->checkBoxArrowKey->hide();
    setUpNoteTable();
    setUpColorFocus();
    connectSlots();
}

PreferenceDialog::~PreferenceDialog() = default;

// The form leaves this to us: connecting by name would complain of the slot that serves all boxes
// of the note table. The port boxes have no editor, so their text changes with their index.
void PreferenceDialog::connectSlots()
{
    using Self = PreferenceDialog;
    connect(ui->comboMidiIn, &QComboBox::currentTextChanged, this,
            &Self::on_comboMidiIn_currentIndexChanged);
    connect(ui->comboShortcutMidiIn, &QComboBox::currentTextChanged, this,
            &Self::on_comboShortcutMidiIn_currentIndexChanged);
    connect(ui->comboMidiOut, &QComboBox::currentTextChanged, this,
            &Self::on_comboMidiOut_currentIndexChanged);
    connect(ui->radioProBars, &QRadioButton::clicked, this, &Self::on_radioProBars_clicked);
    connect(ui->radioProMarker, &QRadioButton::clicked, this, &Self::on_radioProMarker_clicked);
    connect(ui->radioStudioBars, &QRadioButton::clicked, this, &Self::on_radioStudioBars_clicked);
    connect(ui->radioStudioMarker, &QRadioButton::clicked, this,
            &Self::on_radioStudioMarker_clicked);
    connect(ui->editDeviceID, &QLineEdit::textChanged, this, &Self::on_editDeviceID_textChanged);
    connect(ui->checkBoxArrowKey, &QCheckBox::clicked, this, &Self::on_checkBoxArrowKey_clicked);
    connect(ui->checkBoxShowKey, &QCheckBox::clicked, this, &Self::on_checkBoxShowKey_clicked);
    connect(ui->pushSendColor, &QPushButton::clicked, this, &Self::on_pushSendColor_clicked);
    connect(ui->pushNextColor, &QPushButton::clicked, this, &Self::on_pushNextColor_clicked);
    connect(ui->pushOK, &QPushButton::clicked, this, &Self::on_pushOK_clicked);
    connect(ui->pushCancel, &QPushButton::clicked, this, &Self::on_pushCancel_clicked);
}

void PreferenceDialog::setDispFromEdit()
{
    const QScopedValueRollback<bool> updating(isUpdating, true);
    setModeFromEdit();
    ui->editDeviceID->setText(editData->DeviceId);
    if (ui->editDeviceID->text() != editData->DeviceId || !ui->editDeviceID->hasAcceptableInput()) {
        // A hand-edited text that the field cannot hold: what it stands for.
        ui->editDeviceID->setText(
            editData->DeviceId.isEmpty() ? QString() : formatDeviceId(editData->DeviceIdValue));
    }
    ui->checkBoxArrowKey->setChecked(editData->ArrowKeyMode);
    ui->checkBoxShowKey->setChecked(editData->ShowKeyButton);
    setPortsFromEdit();
    setNotesFromEdit();
    setColorsFromEdit();
    // And not on the button that closed the dialog before.
    for (QRadioButton* radio :
         {ui->radioProBars, ui->radioProMarker, ui->radioStudioBars, ui->radioStudioMarker}) {
        if (radio->isChecked()) {
            radio->setFocus();
        }
    }
    isChanged = false;
}

// A mode of a hand-edited file that is none of the four leaves the buttons as they are.
void PreferenceDialog::setModeFromEdit()
{
    switch (editData->Mode) {
    case kModeProToolsBars:
        ui->radioProBars->setChecked(true);
        break;
    case kModeProToolsMarker:
        ui->radioProMarker->setChecked(true);
        break;
    case kModeStudioOneBars:
        ui->radioStudioBars->setChecked(true);
        break;
    case kModeStudioOneMarker:
        ui->radioStudioMarker->setChecked(true);
        break;
    default:
        break;
    }
}

void PreferenceDialog::setPortsFromEdit()
{
    fillPorts(ui->comboMidiIn, portNames(dawMidiIn), editData->MidiInPort);
    fillPorts(ui->comboShortcutMidiIn, QStringList{QString()} + portNames(shortcutMidiIn),
              editData->ShortcutMidiInPort);
    fillPorts(ui->comboMidiOut, portNames(dawMidiOut), editData->MidiOutPort);
}

void PreferenceDialog::setEditFromDisp()
{
    editData->DeviceId = ui->editDeviceID->text();
    editData->DeviceIdValue = parseDeviceId(editData->DeviceId).value_or(editData->DeviceIdValue);
    editData->ArrowKeyMode = ui->checkBoxArrowKey->isChecked();
    editData->ShowKeyButton = ui->checkBoxShowKey->isChecked();
    editData->MidiInPort = ui->comboMidiIn->currentText();
    editData->ShortcutMidiInPort = ui->comboShortcutMidiIn->currentText();
    editData->MidiOutPort = ui->comboMidiOut->currentText();
    setEditFromNotes();
    setEditFromColors();
}

void PreferenceDialog::markIfChanged(const QString& shown, const QString& stored)
{
    if (isUpdating) {
        return;
    }
    const QScopedValueRollback<bool> updating(isUpdating, true);
    if (shown != stored) {
        isChanged = true;
    }
}

void PreferenceDialog::on_comboMidiIn_currentIndexChanged(const QString& arg1)
{
    markIfChanged(arg1, editData->MidiInPort);
}

void PreferenceDialog::on_comboShortcutMidiIn_currentIndexChanged(const QString& arg1)
{
    markIfChanged(arg1, editData->ShortcutMidiInPort);
}

void PreferenceDialog::on_comboMidiOut_currentIndexChanged(const QString& arg1)
{
    markIfChanged(arg1, editData->MidiOutPort);
}

void PreferenceDialog::on_editDeviceID_textChanged(const QString& arg1)
{
    markIfChanged(arg1, editData->DeviceId);
}

void PreferenceDialog::storeMode(bool checked, int mode)
{
    if (checked && editData->Mode != mode) {
        editData->Mode = mode;
        isChanged = true;
    }
}

void PreferenceDialog::on_radioProBars_clicked(bool checked)
{
    storeMode(checked, kModeProToolsBars);
}

void PreferenceDialog::on_radioProMarker_clicked(bool checked)
{
    storeMode(checked, kModeProToolsMarker);
}

void PreferenceDialog::on_radioStudioBars_clicked(bool checked)
{
    storeMode(checked, kModeStudioOneBars);
}

void PreferenceDialog::on_radioStudioMarker_clicked(bool checked)
{
    storeMode(checked, kModeStudioOneMarker);
}

void PreferenceDialog::on_checkBoxArrowKey_clicked()
{
    if (!isUpdating) {
        isChanged = true;
    }
}

void PreferenceDialog::on_checkBoxShowKey_clicked()
{
    if (!isUpdating) {
        isChanged = true;
    }
}

void PreferenceDialog::savePreferences()
{
    setEditFromDisp();
    editData->writePreference(preferenceFilePath());
    isChanged = false;
    if (parentWindow) {
        parentWindow->setPreferenceData();
        parentWindow->midiReconnect();
    }
}

void PreferenceDialog::on_pushOK_clicked()
{
    savePreferences();
    close();
}

void PreferenceDialog::on_pushCancel_clicked()
{
    isChanged = false;
    close();
}

void PreferenceDialog::closeEvent(QCloseEvent* event)
{
    if (isChanged) {
        const auto answer = MessageBoxes::askToSave(this);
        if (answer == QMessageBox::Save) {
            savePreferences();
        } else if (answer == QMessageBox::No) {
            isChanged = false;
        } else {
            event->ignore();
            return;
        }
    }
    QDialog::closeEvent(event);
}
