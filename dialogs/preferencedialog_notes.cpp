// SPDX-License-Identifier: MIT
// The notes of the MIDI controller in the preferences.
#include "preferencedialog.h"

#include "editdata.h"
#include "tablelook.h"
#include "ui_preferencedialog.h"

#include <QComboBox>
#include <QLineEdit>

#include <algorithm>

namespace {

constexpr int kHighestNote = 127;
constexpr int kSemitones = 12;    // Of an octave.
constexpr int kLabelMargins = 24; // Beside the row labels, in pixels, both sides together.

// What the boxes list. Note 0 is the C of the lowest octave.
const QString kNoteNames = QStringLiteral("C D E F G A B");
const QString kOctaves = QStringLiteral("-1 0 1 2 3 4 5 6 7 8 9");

// How far the listed notes, the white keys, lie above the octave's C.
constexpr std::array<int, 7> kNoteSemitones{0, 2, 4, 5, 7, 9, 11};

// By row of the table, whose labels stand in the form.
constexpr std::array<std::int32_t EditData::*, 5> kNotes{
    &EditData::NoteSongUp, &EditData::NoteSongDown, &EditData::NoteLocate, &EditData::NoteDawPlay,
    &EditData::NoteDawStop};

// Lists these values, separated by blanks, and nothing else.
void setItems(QComboBox* box, const QString& items)
{
    box->clear();
    box->addItems(items.split(QLatin1Char(' ')));
}

// An editable box, whose line edit shows the value centred. A listed value that is typed is chosen
// at once. Any other text gives way to the chosen value, unless the Return key adds it to the list.
QComboBox* makeNoteBox(const QString& items, QLineEdit*& edit, QWidget* parent)
{
    auto* box = new QComboBox(parent);
    edit = new QLineEdit(box);
    edit->setAlignment(Qt::AlignCenter);
    box->setLineEdit(edit);
    setItems(box, items);
    QObject::connect(edit, &QLineEdit::textEdited, box, [box](const QString& text) {
        const int index = box->findText(text, Qt::MatchFixedString);
        if (index != -1) {
            box->setCurrentIndex(index);
        }
    });
    QObject::connect(edit, &QLineEdit::editingFinished, box,
                     [box] { box->setCurrentIndex(box->currentIndex()); });
    return box;
}

} // namespace

void PreferenceDialog::setUpNoteTable()
{
    QTableWidget* table = ui->tableMidiCont;
    TableLook::styleTable(table);
    TableLook::styleHeader(table->verticalHeader());
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    for (std::size_t i = 0; i < noteRows.size(); ++i) {
        NoteWidgets& row = noteRows[i];
        row.noteNameCombo = makeNoteBox(kNoteNames, row.noteNameEdit, table);
        row.octaveCombo = makeNoteBox(kOctaves, row.octaveEdit, table);
        const int tableRow = static_cast<int>(i);
        table->setCellWidget(tableRow, 0, row.noteNameCombo);
        table->setCellWidget(tableRow, 1, row.octaveCombo);
        for (QComboBox* box : {row.noteNameCombo, row.octaveCombo}) {
            box->setAccessibleName(table->verticalHeaderItem(tableRow)->text());
            connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                    &PreferenceDialog::on_comboMidiCont_currentIndexChanged);
        }
    }
    // The table itself takes no keys: it hands the focus to the first box.
    table->setFocusProxy(noteRows.front().noteNameCombo);
    fitNoteTable();
}

// All rows are seen at once, each label and value whole, with any font.
void PreferenceDialog::fitNoteTable()
{
    QTableWidget* table = ui->tableMidiCont;
    QHeaderView* header = table->verticalHeader();
    const QSize box = noteRows.front().octaveCombo->sizeHint();
    header->setDefaultAlignment(Qt::AlignCenter);
    header->setDefaultSectionSize(std::max(header->defaultSectionSize(), box.height()));
    header->setMinimumWidth(header->sizeHint().width() + kLabelMargins);
    const int frame = 2 * table->frameWidth();
    table->setMinimumWidth(header->minimumWidth() + table->columnCount() * box.width() + frame);
    table->setFixedHeight(header->defaultSectionSize() * table->rowCount() + frame);
}

void PreferenceDialog::setNotesFromEdit()
{
    for (std::size_t i = 0; i < kNotes.size(); ++i) {
        const NoteWidgets& row = noteRows[i];
        setItems(row.noteNameCombo, kNoteNames); // Without what Return has added.
        setItems(row.octaveCombo, kOctaves);
        setComboFromMidiNote(editData->*kNotes[i], row.noteNameCombo, row.octaveCombo);
    }
}

void PreferenceDialog::setEditFromNotes()
{
    for (std::size_t i = 0; i < kNotes.size(); ++i) {
        setMidiNoteFromCombo(editData->*kNotes[i], noteRows[i].noteNameCombo,
                             noteRows[i].octaveCombo);
    }
}

void PreferenceDialog::setMidiNoteFromCombo(int& note, QComboBox* nameCombo, QComboBox* octaveCombo)
{
    const auto name = static_cast<std::size_t>(nameCombo->currentIndex()); // None: a huge one.
    const int semitone = name < kNoteSemitones.size() ? kNoteSemitones[name] : 0;
    note = std::clamp(semitone + kSemitones * octaveCombo->currentIndex(), 0, kHighestNote);
}

void PreferenceDialog::setComboFromMidiNote(int note, QComboBox* nameCombo, QComboBox* octaveCombo)
{
    const int shown = std::clamp(note, 0, kHighestNote);
    const auto* const semitone =
        std::find(kNoteSemitones.begin(), kNoteSemitones.end(), shown % kSemitones);
    const bool isWhiteKey = semitone != kNoteSemitones.end();
    octaveCombo->setCurrentIndex(shown / kSemitones);
    nameCombo->setCurrentIndex(isWhiteKey ? static_cast<int>(semitone - kNoteSemitones.begin())
                                          : 0);
}
