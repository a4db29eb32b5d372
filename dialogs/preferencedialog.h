// SPDX-License-Identifier: MIT
#pragma once

#include "editdata.h"
#include "savingdialog.h"

#include <QColor>

#include <array>
#include <memory>

class QComboBox;
class QLineEdit;
class QMidiIn;
class QMidiOut;
class QPushButton;

namespace Ui {
class PreferenceDialog;
}

// The preferences: DAW mode, MIDI ports, MMC device ID, key options, controller notes and row
// colours. The operator window makes one and fills it by setDispFromEdit() before each exec().
//
// The DAW mode is stored in the shared data at the click on its button, even if the dialog is then
// left without saving. Everything else is stored by OK, or by Save where closing asks; then the
// preference file is written and the operator window told. Leaving by CANCEL or Escape stores
// nothing and does not ask.
//
// The ports are only asked for the names in the system. A port that is null, or that cannot reach
// a MIDI system, has none.
class PreferenceDialog : public SavingDialog
{
    Q_OBJECT

public:
    // Nothing is owned; all must outlive the dialog.
    PreferenceDialog(EditData* sharedData, QMidiIn* dawIn, QMidiIn* shortcutIn, QMidiOut* dawOut,
                     QWidget* parent);
    ~PreferenceDialog() override;

    // Fills every widget from the preferences and lists the ports. A stored port that is not there
    // shows as the first one that is, and so is stored by OK; for the controller, as none.
    void setDispFromEdit();

    // Stores what the widgets show, except the DAW mode. A device ID without a digit leaves the
    // number as it was.
    void setEditFromDisp();

    // The note of a row of the controller table, 0 to 127: a higher one counts as 127, no octave as
    // 0, a name that is not in the list as C.
    static void setMidiNoteFromCombo(int& note, QComboBox* nameCombo, QComboBox* octaveCombo);

    // Shows a note in a row of the controller table: a black key as the C of its octave, a note
    // outside 0 to 127 as the nearest one inside.
    static void setComboFromMidiNote(int note, QComboBox* nameCombo, QComboBox* octaveCombo);

    // Fills a button with a colour in all its states. An invalid colour shows as black, which is
    // how text of that colour is drawn.
    static void setColorButtonStyle(QPushButton* button, const QColor& colour);

private slots:
    void on_comboMidiIn_currentIndexChanged(const QString& arg1)
    {
        markIf(arg1 != editData->MidiInPort);
    }
    void on_comboShortcutMidiIn_currentIndexChanged(const QString& arg1)
    {
        markIf(arg1 != editData->ShortcutMidiInPort);
    }
    void on_comboMidiOut_currentIndexChanged(const QString& arg1)
    {
        markIf(arg1 != editData->MidiOutPort);
    }
    void on_comboMidiCont_currentIndexChanged(int index) { markIf(index != -1); }
    void on_radioProBars_clicked(bool checked) { storeMode(checked, kModeProToolsBars); }
    void on_radioProMarker_clicked(bool checked) { storeMode(checked, kModeProToolsMarker); }
    void on_radioStudioBars_clicked(bool checked) { storeMode(checked, kModeStudioOneBars); }
    void on_radioStudioMarker_clicked(bool checked) { storeMode(checked, kModeStudioOneMarker); }
    void on_editDeviceID_textChanged(const QString& arg1) { markIf(arg1 != editData->DeviceId); }
    void on_checkBoxArrowKey_clicked() { markIf(true); }
    void on_checkBoxShowKey_clicked() { markIf(true); }
    void on_pushSendColor_clicked() { chooseColor(sendColor); }
    void on_pushNextColor_clicked() { chooseColor(nextColor); }
    void on_pushOK_clicked() { saveAndClose(); }
    void on_pushCancel_clicked() { closeWithoutQuestion(); }

protected:
    void save() override;
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    // The editors of one row of the controller table, children of the table.
    struct NoteWidgets
    {
        QLineEdit* noteNameEdit = nullptr;
        QLineEdit* octaveEdit = nullptr;
        QComboBox* noteNameCombo = nullptr;
        QComboBox* octaveCombo = nullptr;
    };

    // Controller notes: preferencedialog_notes.cpp.
    void setUpNoteTable();
    void fitNoteTable();
    void setNotesFromEdit();
    void setEditFromNotes();

    void setUpColorFocus();
    void connectSlots();
    void setDeviceIdFromEdit();
    void storeMode(bool checked, int mode); // A mode is the place of its button in the form.
    void showColors();
    void chooseColor(QColor& colour);
    void markIf(bool isChange)
    {
        edit([isChange] { return isChange; });
    }

    std::unique_ptr<Ui::PreferenceDialog> ui;
    EditData* editData;
    QMidiIn* dawMidiIn;
    QMidiIn* shortcutMidiIn;
    QMidiOut* dawMidiOut;
    QColor sendColor; // Being edited, as is nextColor.
    QColor nextColor;
    std::array<NoteWidgets, 5> noteRows;
};
