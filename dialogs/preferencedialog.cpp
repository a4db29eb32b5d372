// SPDX-License-Identifier: MIT
#include "preferencedialog.h"

#include "datafiles.h"
#include "deviceid.h"
#include "editdata.h"
#include "operatorwindow.h"
#include "qmidiin.h"
#include "qmidiout.h"
#include "ui_preferencedialog.h"

#include <QRegularExpressionValidator>
#include <QWheelEvent>

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
    : SavingDialog(parent),
      ui(std::make_unique<Ui::PreferenceDialog>()),
      editData(sharedData),
      dawMidiIn(dawIn),
      shortcutMidiIn(shortcutIn),
      dawMidiOut(dawOut)
{
    ui->setupUi(this);
    if (parent) {
        move(parent->pos() + kPlace);
    }
    ui->editDeviceID->setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("[0-9a-fA-F]+")), ui->editDeviceID));
    ui->checkBoxArrowKey->hide();
    setUpNoteTable();
    setUpColorFocus();
    connectSlots();
    for (QComboBox* box : findChildren<QComboBox*>()) {
        box->installEventFilter(this);
    }
}

PreferenceDialog::~PreferenceDialog() = default;

// The form leaves this to us: connecting by name would complain of the slot that serves all boxes
// of the note table. The port boxes have no editor, so their text changes with their index.
void PreferenceDialog::connectSlots()
{
    using Self = PreferenceDialog;
    const auto connectPort = [this](QComboBox* box, void (Self::*slot)(const QString&)) {
        connect(box, &QComboBox::currentTextChanged, this, slot);
    };
    connectPort(ui->comboMidiIn, &Self::on_comboMidiIn_currentIndexChanged);
    connectPort(ui->comboShortcutMidiIn, &Self::on_comboShortcutMidiIn_currentIndexChanged);
    connectPort(ui->comboMidiOut, &Self::on_comboMidiOut_currentIndexChanged);
    for (QAbstractButton* button : ui->modes->buttons()) {
        connect(button, &QAbstractButton::clicked, this,
                [=](bool checked) { storeMode(checked, ui->modes->buttons().indexOf(button)); });
    }
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
    changeWidgets([this] {
        // A mode of a hand-edited file that no button has leaves the buttons as they are.
        if (QAbstractButton* mode = ui->modes->buttons().value(editData->Mode)) {
            mode->setChecked(true);
        }
        setDeviceIdFromEdit();
        ui->checkBoxArrowKey->setChecked(editData->ArrowKeyMode);
        ui->checkBoxShowKey->setChecked(editData->ShowKeyButton);
        setPortsFromEdit();
        setNotesFromEdit();
        setColorsFromEdit();
    });
    ui->modes->checkedButton()->setFocus(); // And not the button that closed the dialog before.
    isChanged = false;
}

// A hand-edited text that the field cannot hold shows as what it stands for.
void PreferenceDialog::setDeviceIdFromEdit()
{
    QLineEdit* field = ui->editDeviceID;
    field->setText(editData->DeviceId);
    if (!editData->DeviceId.isEmpty() &&
        (field->text() != editData->DeviceId || !field->hasAcceptableInput())) {
        field->setText(formatDeviceId(editData->DeviceIdValue));
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

void PreferenceDialog::markIf(bool isChange)
{
    edit([isChange] { return isChange; });
}

void PreferenceDialog::on_comboMidiIn_currentIndexChanged(const QString& arg1)
{
    markIf(arg1 != editData->MidiInPort);
}

void PreferenceDialog::on_comboShortcutMidiIn_currentIndexChanged(const QString& arg1)
{
    markIf(arg1 != editData->ShortcutMidiInPort);
}

void PreferenceDialog::on_comboMidiOut_currentIndexChanged(const QString& arg1)
{
    markIf(arg1 != editData->MidiOutPort);
}

void PreferenceDialog::on_editDeviceID_textChanged(const QString& arg1)
{
    markIf(arg1 != editData->DeviceId);
}

void PreferenceDialog::storeMode(bool checked, int mode)
{
    if (checked && editData->Mode != mode) {
        editData->Mode = mode;
        isChanged = true;
    }
}

void PreferenceDialog::save()
{
    setEditFromDisp();
    editData->writePreference(preferenceFilePath());
    isChanged = false;
    if (parentWindow) {
        parentWindow->setPreferenceData();
        parentWindow->midiReconnect();
    }
}

// A turn of the mouse wheel passes over a closed box to what it stands in.
bool PreferenceDialog::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::Wheel) {
        event->ignore();
        return true;
    }
    return QDialog::eventFilter(object, event);
}
