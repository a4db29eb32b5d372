// SPDX-License-Identifier: MIT
#include "preferencedialog.h"

#include "editdata.h"
#include "tablelook.h"
#include "ui_preferencedialog.h"

#include <QApplication>
#include <QColorDialog>
#include <QComboBox>
#include <QFocusFrame>
#include <QLineEdit>

#include <algorithm>
#include <string_view>

namespace {

constexpr int kHighestNote = 127;
constexpr int kSemitones = 12; // Of an octave.
constexpr int kNoteNameColumn = 0;
constexpr int kOctaveColumn = 1;
constexpr int kLabelMargins = 24; // Beside the row labels, in pixels, both sides together.

// The white keys, by index in a note-name box, and how far they lie above the octave's C.
constexpr std::string_view kNoteNames = "CDEFGAB";
constexpr std::array<int, 7> kNoteSemitones{0, 2, 4, 5, 7, 9, 11};

constexpr int kFirstOctave = -1; // What index 0 of an octave box says: note 0 is the C of -1.
constexpr int kOctaves = 11;

// What the controller does, by row of the table.
struct ControllerAction
{
    const char* label;
    std::int32_t EditData::*note;
};
constexpr std::array<ControllerAction, 5> kActions{{
    {QT_TRANSLATE_NOOP("PreferenceDialog", "Song UP"), &EditData::NoteSongUp},
    {QT_TRANSLATE_NOOP("PreferenceDialog", "Song DOWN"), &EditData::NoteSongDown},
    {QT_TRANSLATE_NOOP("PreferenceDialog", "LOCATE"), &EditData::NoteLocate},
    {QT_TRANSLATE_NOOP("PreferenceDialog", "DAW PLAY"), &EditData::NoteDawPlay},
    {QT_TRANSLATE_NOOP("PreferenceDialog", "DAW STOP"), &EditData::NoteDawStop},
}};

QStringList noteNameItems()
{
    QStringList names;
    for (const char name : kNoteNames) {
        names.append(QString(QLatin1Char(name)));
    }
    return names;
}

QStringList octaveItems()
{
    QStringList octaves;
    for (int i = 0; i < kOctaves; ++i) {
        octaves.append(QString::number(i + kFirstOctave));
    }
    return octaves;
}

// A box that shows its value centred, for which it needs an editor of its own. A listed value that
// is typed there is chosen at once, so that nothing typed is lost by the way the dialog is left;
// what is not listed gives way to the chosen value, unless the Return key adds it to the list.
QComboBox* makeNoteBox(const QStringList& items, QLineEdit* edit, QWidget* parent)
{
    auto* box = new QComboBox(parent);
    edit->setAlignment(Qt::AlignCenter);
    box->setLineEdit(edit);
    box->addItems(items);
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

void removeAddedItems(QComboBox* box, int listed)
{
    while (box->count() > listed) {
        box->removeItem(listed);
    }
}

} // namespace

void PreferenceDialog::setUpNoteTable()
{
    QTableWidget* table = ui->tableMidiCont;
    TableLook::styleTable(table);
    TableLook::styleHeader(table->verticalHeader());
    table->verticalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table->setSelectionMode(QAbstractItemView::NoSelection);

    QStringList labels;
    for (std::size_t i = 0; i < kActions.size(); ++i) {
        labels.append(tr(kActions[i].label));
        NoteWidgets& row = noteRows[i];
        row.noteNameEdit = new QLineEdit;
        row.octaveEdit = new QLineEdit;
        row.noteNameCombo = makeNoteBox(noteNameItems(), row.noteNameEdit, table);
        row.octaveCombo = makeNoteBox(octaveItems(), row.octaveEdit, table);
        table->setCellWidget(static_cast<int>(i), kNoteNameColumn, row.noteNameCombo);
        table->setCellWidget(static_cast<int>(i), kOctaveColumn, row.octaveCombo);
        for (QComboBox* box : {row.noteNameCombo, row.octaveCombo}) {
            box->setAccessibleName(labels.last());
            connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                    &PreferenceDialog::on_comboMidiCont_currentIndexChanged);
        }
    }
    table->setVerticalHeaderLabels(labels);
    // The keyboard has nothing to do in the table itself: it goes on to the first box.
    table->setFocusProxy(noteRows.front().noteNameCombo);
    fitNoteTable();
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
    for (std::size_t i = 0; i < kActions.size(); ++i) {
        const NoteWidgets& row = noteRows[i];
        removeAddedItems(row.noteNameCombo, static_cast<int>(kNoteNames.size()));
        removeAddedItems(row.octaveCombo, kOctaves);
        setComboFromMidiNote(editData->*kActions[i].note, row.noteNameCombo, row.octaveCombo);
    }
}

void PreferenceDialog::setEditFromNotes()
{
    for (std::size_t i = 0; i < kActions.size(); ++i) {
        setMidiNoteFromCombo(editData->*kActions[i].note, noteRows[i].noteNameCombo,
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

void PreferenceDialog::on_comboMidiCont_currentIndexChanged(int index)
{
    if (!isUpdating && index != -1) {
        isChanged = true;
    }
}

void PreferenceDialog::setColorsFromEdit()
{
    sendColor = editData->SendTextColor;
    nextColor = editData->NextTextColor;
    setColorButtonStyle(ui->pushSendColor, sendColor);
    setColorButtonStyle(ui->pushNextColor, nextColor);
}

void PreferenceDialog::setEditFromColors()
{
    editData->SendTextColor = sendColor;
    editData->NextTextColor = nextColor;
}

void PreferenceDialog::chooseColor(QColor& colour, QPushButton* button)
{
    if (isUpdating) {
        return;
    }
    const QColor chosen = QColorDialog::getColor(colour, this);
    if (chosen.isValid()) {
        colour = chosen;
        setColorButtonStyle(button, colour);
        isChanged = true;
    }
}

void PreferenceDialog::on_pushSendColor_clicked()
{
    chooseColor(sendColor, ui->pushSendColor);
}

void PreferenceDialog::on_pushNextColor_clicked()
{
    chooseColor(nextColor, ui->pushNextColor);
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
