// SPDX-License-Identifier: MIT
#pragma once

#include "eventlog.h"
#include "events.h"
#include "locateparser.h"
#include "noteplayer.h"
#include "rehearsalports.h"

#include <QPushButton>
#include <QWidget>

#include <functional>
#include <vector>

class LocateDisplay;
class NoteRoll;
class QGridLayout;
class QLabel;

// The stand-in DAW's window. Every key that reaches it is the DAW's, except F1 to F8, which press
// the buttons. Keys that another program posts arrive while the window is not active: so it has no
// shortcuts, and no widget in it takes the focus.
//
// Everything that happens goes to the log and to standard output (see events.h). All on the main
// thread.
class RehearsalWindow : public QWidget
{
    Q_OBJECT

public:
    explicit RehearsalWindow(Daw daw);
    ~RehearsalWindow() override;

    [[nodiscard]] const RehearsalPorts& midiPorts() const { return ports; }

    // A line of standard input (see usage.h).
    void runCommand(const QString& line);
    // Reports any other problem.
    void reportProblem(const QString& text) { report(takeMidi(), text, EventLog::Bad); }

protected:
    void keyPressEvent(QKeyEvent* event) override { handleKey(event, true); }
    void keyReleaseEvent(QKeyEvent* event) override { handleKey(event, false); }
    bool focusNextPrevChild(bool) override { return false; } // Tab is a key of the DAW.
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Action
    {
        int key; // Of Qt.
        QPushButton* button;
        std::function<void()> act;
    };

    void addButtons(QGridLayout* grid);
    // A button that acts when it or its key is pressed down, as a foot switch does.
    QPushButton* addButton(int key, const QString& text, const std::function<void()>& act);
    QPushButton* addNoteButton(int key, const QString& text, RehearsalPorts::Out out, int note);
    void openMidi();
    void showMidiState();

    void handleKey(QKeyEvent* event, bool isDown);
    bool pressButton(const QKeyEvent& event, bool isDown); // False: no key of a button.
    void react(const DawEvent& event, qint64 timeUs);
    void setPlaying(bool plays, qint64 timeUs);
    // Handles the MIDI that has arrived; returns the time up to which it is complete.
    qint64 takeMidi();
    void report(qint64 timeUs, const QString& text, EventLog::Tone tone = EventLog::Plain);

    LocateParser parser;
    RehearsalPorts ports;
    NotePlayer player;
    bool isPlaying = false;
    bool isReady = false;
    std::vector<Action> actions;

    LocateDisplay* display;
    EventLog* log;
    NoteRoll* roll;
    QLabel* midiState;
};
