// SPDX-License-Identifier: MIT
#include "preferencedialog.h"

#include "datafiles.h"
#include "deviceid.h"
#include "operatorwindow.h"
#include "qmidiin.h"
#include "qmidiout.h"
#include "ui_preferencedialog.h"

#include <QApplication>
#include <QColorDialog>
#include <QFocusFrame>
#include <QRegularExpressionValidator>
#include <QWheelEvent>

#include <RtMidi.h>

namespace {

// Where the dialog opens, from the operator window's top left corner, in pixels.
constexpr QPoint kPlace{30, -10};

template <class Port>
void fillPorts(QComboBox* combo, Port* port, const QString& stored, const QStringList& first = {})
{
    combo->clear();
    combo->addItems(first);
    int index = -1;
    try {
        if (port) {
            combo->addItems(port->getPorts());
            index = port->indexOf(stored);
        }
    } catch (const RtMidiError&) {
        // No MIDI system, no ports. A box says so after OK.
    }
    combo->setCurrentIndex(index == -1 ? 0 : static_cast<int>(first.size()) + index);
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

// Connecting by name would warn of the slot that serves all boxes of the note table. The text of a
// port box changes with its index.
void PreferenceDialog::connectSlots()
{
    using Self = PreferenceDialog;
    const auto connectPort = [this](QComboBox* box, void (Self::*slot)(const QString&)) {
        connect(box, &QComboBox::currentTextChanged, this, slot);
    };
    connectPort(ui->comboMidiIn, &Self::on_comboMidiIn_currentIndexChanged);
    connectPort(ui->comboShortcutMidiIn, &Self::on_comboShortcutMidiIn_currentIndexChanged);
    connectPort(ui->comboMidiOut, &Self::on_comboMidiOut_currentIndexChanged);
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

// The style sheets of the colour buttons leave no sign of the keyboard focus: a frame around the
// button shows it.
void PreferenceDialog::setUpColorFocus()
{
    auto* frame = new QFocusFrame(this);
    const QWidget* send = ui->pushSendColor;
    const QWidget* next = ui->pushNextColor;
    connect(qApp, &QApplication::focusChanged, frame, [=](QWidget*, QWidget* now) {
        frame->setWidget(now == send || now == next ? now : nullptr);
    });
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
        fillPorts(ui->comboMidiIn, dawMidiIn, editData->MidiInPort);
        fillPorts(ui->comboShortcutMidiIn, shortcutMidiIn, editData->ShortcutMidiInPort, {{}});
        fillPorts(ui->comboMidiOut, dawMidiOut, editData->MidiOutPort);
        setNotesFromEdit();
        sendColor = editData->SendTextColor;
        nextColor = editData->NextTextColor;
        showColors();
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
    editData->SendTextColor = sendColor;
    editData->NextTextColor = nextColor;
}

void PreferenceDialog::storeMode(bool checked, int mode)
{
    if (checked && editData->Mode != mode) {
        editData->Mode = mode;
        isChanged = true;
    }
}

void PreferenceDialog::showColors()
{
    setColorButtonStyle(ui->pushSendColor, sendColor);
    setColorButtonStyle(ui->pushNextColor, nextColor);
}

void PreferenceDialog::chooseColor(QColor& colour)
{
    edit([&] {
        const QColor chosen = QColorDialog::getColor(colour, this);
        if (chosen.isValid()) {
            colour = chosen;
            showColors();
        }
        return chosen.isValid();
    });
}

void PreferenceDialog::setColorButtonStyle(QPushButton* button, const QColor& colour)
{
    button->setStyleSheet(QStringLiteral(" QPushButton:hover {background-color:%1;} "
                                         " QPushButton:pressed {background-color:%1;"
                                         "border:1px solid %1;} "
                                         " QPushButton {background-color:%1;border-style: solid;"
                                         "border-radius: 5;} ")
                              .arg(colour.name(QColor::HexArgb)));
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
