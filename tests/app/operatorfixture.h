// SPDX-License-Identifier: MIT
#pragma once

#include "editdata.h"
#include "mainwindow.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>

class QMidiIn;

EditDataSong song(int id, const QString& title, int bar, int marker);
EditDataSet songEntry(const EditDataSong& song, const QString& cue = QString());
EditDataSet spaceEntry(const QString& name, const QString& cue = QString());

// A library of three songs (bars 12, 105, 33; markers 1, 7, 10) and two shows: "Friday" with song,
// space, song, song and "Empty" with nothing.
EditData sampleData();

// The operator window as an operator sees it, started on files with the given data.
class Operator
{
public:
    explicit Operator(EditData initial = sampleData());

    QPushButton* button(const QString& name) const; // By its text or spoken name.
    void press(const QString& name) const;          // Clicks; returns when the slot has run.
    void select(int row, int column = 0) const;     // Clicks into the table.
    int selectedRow() const;
    QLineEdit* edit(int row, int column) const; // Opens the cell's editor.
    QLineEdit* openEditor() const;              // Null if no cell is being edited.
    bool isFocusOnTable() const;                // Whatever window is the active one.
    QStringList looks() const; // Of each row: "plain", "sent", "next", "space" or "?".
    bool isRunning() const;    // By the buttons that a run locks; fails the test if they disagree.

    void controllerNote(int note, int velocity = 100) const; // Note on.
    void endOfSong(int note = 24) const;                     // Note off from the DAW.

    MainWindow window;
    QTableWidget* table;
    QComboBox* mode;
    QComboBox* shows;
    QGroupBox* frame;
    QMidiIn* dawIn;
    QMidiIn* controllerIn;

private:
    EditData data;
};
