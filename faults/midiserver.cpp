// SPDX-License-Identifier: MIT
#include "desk.h"
#include "faults.h"
#include "report.h"

namespace {

const QString kExpected =
    QStringLiteral("VELT answers in %1 ms, keys still locate; with the server back and the "
                   "preferences confirmed, all MIDI works")
        .arg(Velt::kAnswerMs);

// The server dies at the moment that `reach` leads to.
QString dieAndComeBack(const std::function<void(Desk&)>& reach)
{
    Desk desk;
    reach(desk);
    desk.jack.kill();
    const int answeredMs = desk.velt->answers();
    desk.locateByKeys(3, QStringLiteral("bar 209"));
    const int answeredAgainMs = desk.velt->answers();
    require(desk.jack.restart(), desk.jack.why());
    desk.reopenDawPorts();
    desk.velt->answers();
    const qint64 confirmedMs = desk.playOnAfterConfirming();
    return QStringLiteral("answered in %1 ms, after a LOCATE in %2 ms; preferences confirmed in %3 "
                          "ms; the show went on")
        .arg(answeredMs)
        .arg(answeredAgainMs)
        .arg(confirmedMs);
}

void inThePausesOfALocate(Desk& desk)
{
    desk.daw->forget();
    desk.velt->select(2);
    desk.velt->click(Velt::Locate);
    await([&] { return desk.daw->count(QStringLiteral("key down 0x51")) == 1; },
          QStringLiteral("the first key"));
}

QString confirmWithoutServer()
{
    Desk desk;
    desk.jack.kill();
    const qint64 confirmedMs = desk.velt->confirmPreferences(
        {}, {QStringLiteral("Midi In Open Error"), QStringLiteral("Shortcut Midi In Open Error"),
             QStringLiteral("Midi Out Open Error")});
    desk.locateByKeys(1, QStringLiteral("bar 5"));
    require(desk.jack.restart(), desk.jack.why());
    desk.reopenDawPorts();
    const qint64 againMs = desk.playOnAfterConfirming();
    return QStringLiteral("confirmed in %1 ms, and in %2 ms when the server was back; the show "
                          "went on")
        .arg(confirmedMs)
        .arg(againMs);
}

} // namespace

void midiServerFaults(Report& report)
{
    report.fault(QStringLiteral("MIDI server killed before the run"), kExpected,
                 [] { return dieAndComeBack([](Desk&) {}); });
    report.fault(QStringLiteral("MIDI server killed in a run, with a song playing"), kExpected, [] {
        return dieAndComeBack([](Desk& desk) {
            desk.locateByKeys(1, QStringLiteral("bar 5"));
            desk.velt->click(Velt::Play);
            await([&] { return desk.daw->count(QStringLiteral("transport playing")) == 1; },
                  QStringLiteral("the DAW to play"));
        });
    });
    report.fault(QStringLiteral("MIDI server killed in the pauses of a LOCATE"), kExpected,
                 [] { return dieAndComeBack([](Desk& desk) { inThePausesOfALocate(desk); }); });
    report.fault(QStringLiteral("MIDI server killed between two songs"), kExpected, [] {
        return dieAndComeBack([](Desk& desk) {
            desk.locateByKeys(1, QStringLiteral("bar 5"));
            desk.locateByKeys(2, QStringLiteral("bar 105"));
        });
    });
    report.fault(
        QStringLiteral("preferences confirmed while the MIDI server is dead"),
        QStringLiteral("a box for each port; keys still locate; with the server back and the "
                       "preferences confirmed again, all MIDI works"),
        confirmWithoutServer);
}
