// SPDX-License-Identifier: MIT
#pragma once

#include "editdata.h"
#include "mainwindow.h"
#include "qmidimessage.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

class QMidiIn;

// A library of three songs (bars 12, 105, 33; markers 1, 7, 10) and two shows: "Friday" with song,
// space, song, song and "Empty" with nothing.
EditData sampleData();

// The operator window as an operator sees it, started on files with the given data.
class WindowDriver
{
public:
    explicit WindowDriver(EditData initial = sampleData());

    QPushButton* button(const QString& name) const; // By its text or spoken name.
    // Clicks; returns when the slot has run.
    void press(const QString& name) const { QTest::mouseClick(button(name), Qt::LeftButton); }
    void select(int row, int column = 0) const; // Clicks into the table.
    void doubleClick(int row, int column) const;
    int selectedRow() const;
    QLineEdit* edit(int row, int column) const; // Opens the cell's editor.
    QLineEdit* openEditor() const;              // Null if no cell is being edited.
    // Whatever window is the active one.
    bool isFocusOnTable() const { return window.focusWidget() == table; }
    QStringList rowMarks() const; // Of each row: "plain", "sent", "next", "space" or "?".
    bool isRunning() const; // By the buttons that a run locks; fails the test if they disagree.

    static void receive(QMidiIn* port, QMidiStatus status, int pitch, int velocity);
    void controllerNote(int note) const { receive(controllerIn, MIDI_NOTE_ON, note, 100); }
    void endOfSong(int note = 24) const { receive(dawIn, MIDI_NOTE_OFF, note, 0); }

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
