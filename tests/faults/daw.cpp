// SPDX-License-Identifier: MIT
#include "desk.h"
#include "faults.h"
#include "report.h"

namespace {

void startDaw(Desk& desk, const QString& name)
{
    desk.daw = std::make_unique<StandIn>(name);
    require(desk.daw->isReady(), QStringLiteral("the stand-in DAW does not start"));
}

QString killedInARun()
{
    Desk desk;
    desk.locateByKeys(1, QStringLiteral("bar 5"));
    desk.daw->kill();
    desk.velt->select(2);
    desk.velt->click(Velt::Locate);
    const int answeredMs = desk.velt->answers();
    startDaw(desk, QStringLiteral("Pro Tools"));
    desk.playOnAfterConfirming();
    return QStringLiteral("answered in %1 ms; the show went on").arg(answeredMs);
}

QString underAnotherName()
{
    Desk desk;
    desk.daw->kill();
    startDaw(desk, QStringLiteral("Studio One"));
    desk.velt->confirmPreferences();
    desk.velt->select(1);
    desk.velt->click(Velt::Locate);
    await([&] { return desk.velt->windows() == 2; }, QStringLiteral("the warning"));
    desk.velt->answers();
    desk.velt->pressReturn();
    await([&] { return desk.velt->windows() == 1; }, QStringLiteral("the warning to close"));
    require(desk.daw->texts({QStringLiteral("key")}).isEmpty(),
            QStringLiteral("the other DAW got keys"));
    desk.velt->confirmPreferences({QStringLiteral("Down"), QStringLiteral("Down")});
    desk.locateByKeys(1, QStringLiteral("bar 5"));
    return QStringLiteral("the warning came, nothing was typed; in the other mode it was located");
}

QString twoOfOneName()
{
    Desk desk;
    StandIn second(QStringLiteral("Pro Tools"));
    require(second.isReady(), QStringLiteral("the second DAW does not start"));
    const QString place = QStringLiteral("located bar 105");
    desk.velt->confirmPreferences();
    desk.velt->select(2);
    desk.velt->click(Velt::Locate);
    await([&] { return desk.daw->count(place) + second.count(place) == 1; },
          QStringLiteral("one of them to be located"));
    desk.velt->answers();
    const bool wasFirst = desk.daw->count(place) == 1;
    StandIn& other = wasFirst ? second : *desk.daw;
    require(other.texts({QStringLiteral("key")}).isEmpty(), QStringLiteral("both got keys"));
    (wasFirst ? *desk.daw : second).kill();
    desk.velt->click(Velt::Reset);
    desk.velt->confirmPreferences();
    desk.velt->select(2);
    desk.velt->click(Velt::Locate);
    await([&] { return other.count(place) == 1; }, QStringLiteral("the other to be located"));
    return QStringLiteral("one got all keys; when it was killed, the other did");
}

QString windowManagerKilled()
{
    Desk desk;
    desk.locateByKeys(1, QStringLiteral("bar 5"));
    desk.windowManager->kill();
    const int answeredMs = desk.velt->answers();
    desk.playOn();
    desk.startWindowManager();
    desk.velt->answers();
    desk.playOn();
    return QStringLiteral("answered in %1 ms; the show went on, without and with a new one")
        .arg(answeredMs);
}

} // namespace

void dawFaults(Report& report)
{
    report.fault(QStringLiteral("DAW killed in a run, LOCATE pressed, DAW started again"),
                 QStringLiteral("VELT answers in %1 ms; after confirmed preferences the show goes "
                                "on")
                     .arg(Velt::kAnswerMs),
                 killedInARun);
    report.fault(QStringLiteral("DAW gone, one of another name there"),
                 QStringLiteral("a warning, and no key to the wrong one; right with the other DAW "
                                "mode"),
                 underAnotherName);
    report.fault(QStringLiteral("two DAWs of the same name, one of them killed"),
                 QStringLiteral("the keys go to one of them; then to the other"), twoOfOneName);
    report.fault(QStringLiteral("window manager killed in a run, and started again"),
                 QStringLiteral("VELT answers in %1 ms, the show goes on").arg(Velt::kAnswerMs),
                 windowManagerKilled);
}
