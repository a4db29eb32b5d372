// SPDX-License-Identifier: MIT
#include "rehearsalwindow.h"

#include "clock.h"
#include "dawkeys.h"
#include "eventlog.h"
#include "locatedisplay.h"
#include "look.h"
#include "noteroll.h"
#include "usage.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>

namespace {

// Modifier keys are no part of a sequence.
bool isModifier(int key)
{
    return (key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock) || key == Qt::Key_AltGr ||
           key == Qt::Key_Super_L || key == Qt::Key_Super_R;
}

} // namespace

RehearsalWindow::RehearsalWindow(Daw daw)
    : parser(daw),
      player(ports),
      display(new LocateDisplay(dawName(daw))),
      log(new EventLog),
      roll(new NoteRoll),
      midiState(new QLabel)
{
    setWindowTitle(dawName(daw));
    setStyleSheet(Look::styleSheet());
    resize(900, 720);

    midiState->setWordWrap(true);
    auto* grid = new QGridLayout;
    addButtons(grid);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(display, 2);
    layout->addWidget(log, 1);
    layout->addWidget(roll);
    layout->addLayout(grid);
    layout->addWidget(midiState);

    connect(&ports, &RehearsalPorts::received, this, &RehearsalWindow::takeMidi,
            Qt::QueuedConnection);
    connect(&player, &NotePlayer::played, this,
            [this](bool wasSent, bool isOn, int note, RehearsalPorts::Out out) {
                report(takeMidi(), noteText(wasSent, isOn, note, out));
                if (wasSent || !isOn) {
                    roll->showNote(note, isOn ? NotePlayer::kVelocity : 0);
                }
                if (!wasSent) {
                    showMidiState();
                }
            });
    openMidi();
}

RehearsalWindow::~RehearsalWindow()
{
    player.releaseAll();
}

void RehearsalWindow::addButtons(QGridLayout* grid)
{
    constexpr RehearsalPorts::Out kPedal = RehearsalPorts::FootSwitch;
    constexpr RehearsalPorts::Out kDaw = RehearsalPorts::DawNotes;
    grid->addWidget(new QLabel(tr("Foot switch")), 0, 0);
    grid->addWidget(addNoteButton(Qt::Key_F1, tr("Song UP"), kPedal, 28), 0, 1);
    grid->addWidget(addNoteButton(Qt::Key_F2, tr("Song DOWN"), kPedal, 29), 0, 2);
    grid->addWidget(addNoteButton(Qt::Key_F3, tr("LOCATE"), kPedal, 31), 0, 3);
    grid->addWidget(addNoteButton(Qt::Key_F4, tr("DAW PLAY"), kPedal, 33), 0, 4);
    grid->addWidget(addNoteButton(Qt::Key_F5, tr("DAW STOP"), kPedal, 35), 0, 5);

    grid->addWidget(new QLabel(windowTitle()), 1, 0);
    grid->addWidget(addNoteButton(Qt::Key_F6, tr("End of song"), kDaw, 24), 1, 1);
    grid->addWidget(addNoteButton(Qt::Key_F7, tr("End of song"), kDaw, 36), 1, 2);
    grid->addWidget(addButton(Qt::Key_F8, tr("Reopen MIDI\nF8"), [this] { openMidi(); }), 1, 5);
    for (int column = 1; column <= 5; ++column) {
        grid->setColumnStretch(column, 1);
    }
}

QPushButton* RehearsalWindow::addButton(int key, const QString& text,
                                        const std::function<void()>& act)
{
    auto* button = new QPushButton(text);
    button->setFocusPolicy(Qt::NoFocus);
    connect(button, &QPushButton::pressed, this, act);
    actions.push_back({key, button, act});
    return button;
}

QPushButton* RehearsalWindow::addNoteButton(int key, const QString& text, RehearsalPorts::Out out,
                                            int note)
{
    return addButton(key, tr("%1\nF%2 · %3").arg(text).arg(key - Qt::Key_F1 + 1).arg(note),
                     [=] { player.strike(out, note); });
}

void RehearsalWindow::openMidi()
{
    player.releaseAll();
    roll->clear(); // The end of a note whose sender is gone does not come.
    if (!ports.open()) {
        report(takeMidi(), QStringLiteral("no midi"));
    }
    showMidiState();
}

void RehearsalWindow::showMidiState()
{
    if (ports.isOpen()) {
        const auto cell = [](const QString& preference, const QString& port) {
            return QStringLiteral("<td width=\"33%\">%1<br><font color=\"%2\">%3</font></td>")
                .arg(preference, Look::kText.name(), port.toHtmlEscaped());
        };
        midiState->setText(
            QStringLiteral("<table width=\"100%\"><tr>") +
            cell(tr("DAW Midi Input"), ports.outputName(RehearsalPorts::DawNotes)) +
            cell(tr("Midi Controller Input"), ports.outputName(RehearsalPorts::FootSwitch)) +
            cell(tr("DAW Midi Output"), ports.inputName()) + QStringLiteral("</tr></table>"));
    } else {
        midiState->setText(
            QStringLiteral("<b><font color=\"%1\">%2</font></b>")
                .arg(Look::kWrongText.name(),
                     tr("No MIDI. Keys work; MMC, foot switch and end of song do not. "
                        "Start a MIDI server, then press F8.")));
    }
}

void RehearsalWindow::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    windowHandle()->installEventFilter(this);
}

bool RehearsalWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Expose && !isReady && windowHandle()->isExposed()) {
        isReady = true;
        report(takeMidi(), QStringLiteral("ready"));
    }
    return QWidget::eventFilter(watched, event);
}

void RehearsalWindow::handleKey(QKeyEvent* event, bool isDown)
{
    const qint64 timeUs = takeMidi();
    const KeyPress key = {isDown, dawKey(event->nativeVirtualKey()), event->nativeVirtualKey(),
                          event->modifiers().testFlag(Qt::ControlModifier), event->isAutoRepeat()};
    report(timeUs, keyText(key));
    if (key.isRepeat || pressButton(*event, isDown) || !isDown || isModifier(event->key())) {
        return;
    }
    if (const auto done = parser.press(key.macKey, key.command)) {
        react(*done, timeUs);
    }
    if (const auto target = parser.openTarget()) {
        display->showTyping(*target, parser.digits());
    }
}

bool RehearsalWindow::pressButton(const QKeyEvent& event, bool isDown)
{
    const auto action = std::find_if(actions.begin(), actions.end(),
                                     [&](const Action& a) { return a.key == event.key(); });
    if (action == actions.end()) {
        return false;
    }
    action->button->setDown(isDown);
    if (isDown) {
        action->act();
    }
    return true;
}

void RehearsalWindow::react(const DawEvent& event, qint64 timeUs)
{
    switch (event.kind) {
    case DawEvent::Located:
        display->showLocated(event.target, event.number);
        report(timeUs, locatedText(event.target, event.number), EventLog::Good);
        break;
    case DawEvent::WrongSequence:
        display->showWrong(event.text);
        report(timeUs, QStringLiteral("wrong sequence ") + event.text, EventLog::Bad);
        break;
    case DawEvent::TogglePlay:
        setPlaying(!isPlaying, timeUs);
        break;
    case DawEvent::Play:
        setPlaying(true, timeUs);
        break;
    }
}

void RehearsalWindow::setPlaying(bool plays, qint64 timeUs)
{
    isPlaying = plays;
    display->showPlaying(plays);
    report(timeUs, transportText(plays));
}

qint64 RehearsalWindow::takeMidi()
{
    const RehearsalPorts::Inbox inbox = ports.takeInbox();
    for (const RehearsalPorts::Message& message : inbox.messages) {
        report(message.timeUs, midiText(message.bytes));
        if (const auto starts = mmcStarts(message.bytes)) {
            setPlaying(*starts, message.timeUs);
        } else if (const auto note = noteOf(message.bytes)) {
            roll->showNote(note->key, note->velocity);
        }
    }
    if (inbox.dropped > 0) {
        report(inbox.takenUs, QStringLiteral("midi dropped %1").arg(inbox.dropped), EventLog::Bad);
    }
    return inbox.takenUs;
}

void RehearsalWindow::report(qint64 timeUs, const QString& text, EventLog::Tone tone)
{
    printEvent(timeUs, text);
    log->add(timeUs, text, tone);
}

void RehearsalWindow::runCommand(const QString& line)
{
    const QStringList words = line.simplified().split(QLatin1Char(' '));
    if (words == QStringList{QStringLiteral("quit")}) {
        QCoreApplication::quit();
        return;
    }
    constexpr int kHighestNote = 127;
    bool isNumber = false;
    const int note = words.value(1).toInt(&isNumber);
    const bool isNote = words.size() == 2 && isNumber && note >= 0 && note <= kHighestNote;
    if (isNote && words[0] == QLatin1String("note")) {
        player.strike(RehearsalPorts::FootSwitch, note);
    } else if (isNote && words[0] == QLatin1String("end")) {
        player.strike(RehearsalPorts::DawNotes, note);
    } else {
        report(takeMidi(), QStringLiteral("unknown command ") + line, EventLog::Bad);
    }
}
