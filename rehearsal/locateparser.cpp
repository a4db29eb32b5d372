// SPDX-License-Identifier: MIT
#include "locateparser.h"

#include "dawkeys.h"
#include "mackeys.h"

struct LocateParser::Sequence
{
    Daw daw;
    Target target;
    int opener;
    bool openerWithCommand;
    int closer;
};

const LocateParser::Sequence LocateParser::kSequences[] = {
    {Daw::ProTools, Target::Bar, kKeyKeypadEquals, false, kKeyKeypadEnter},
    {Daw::ProTools, Target::Marker, kKeyKeypadDecimal, false, kKeyKeypadDecimal},
    {Daw::StudioOne, Target::Bar, kKeyT, true, kKeyReturn},
    {Daw::StudioOne, Target::Marker, kKeySemicolon, true, kKeyKeypadEnter},
};

namespace {

QString strokeLabel(int macKey, bool command)
{
    return (command ? QStringLiteral("Cmd+") : QString()) + keyLabel(macKey);
}

} // namespace

LocateParser::LocateParser(Daw ofDaw) : daw(ofDaw)
{
}

std::optional<Target> LocateParser::openTarget() const
{
    return open ? std::optional(open->target) : std::nullopt;
}

std::optional<DawEvent> LocateParser::press(int macKey, bool command)
{
    return open ? pressInEntry(macKey, command) : pressOutside(macKey, command);
}

bool LocateParser::openBy(int macKey, bool command)
{
    for (const Sequence& sequence : kSequences) {
        if (sequence.daw == daw && sequence.opener == macKey &&
            sequence.openerWithCommand == command) {
            open = &sequence;
            number.clear();
            keys = QStringList{strokeLabel(macKey, command)};
            lost = false;
            return true;
        }
    }
    return false;
}

std::optional<DawEvent> LocateParser::pressInEntry(int macKey, bool command)
{
    keys += strokeLabel(macKey, command);
    const int digit = command ? -1 : keypadDigit(macKey);
    if (digit >= 0) {
        const QString longer = number + QString::number(digit);
        bool fits = false;
        static_cast<void>(longer.toInt(&fits));
        if (!fits) {
            return wrong(QStringLiteral("number too large"));
        }
        number = longer;
        return std::nullopt;
    }

    const bool closes = macKey == open->closer && !command;
    if (closes && !number.isEmpty()) {
        const DawEvent located{DawEvent::Located, open->target, number.toInt(), QString()};
        open = nullptr;
        return located;
    }
    const DawEvent broken =
        wrong(closes ? QStringLiteral("no number") : QStringLiteral("key does not belong here"));
    openBy(macKey, command);
    return broken;
}

std::optional<DawEvent> LocateParser::pressOutside(int macKey, bool command)
{
    if (openBy(macKey, command) || command) {
        return std::nullopt;
    }
    const bool wasLost = lost;
    const int digit = keypadDigit(macKey);
    lost = lost && digit >= 0; // Anything but a digit ends the rest of a wrong sequence.
    if (macKey == kKeySpace) {
        return DawEvent{DawEvent::TogglePlay, Target::Bar, 0, QString()};
    }
    if (macKey == kKeyKeypadEnter && daw == Daw::StudioOne && !wasLost) {
        return DawEvent{DawEvent::Play, Target::Bar, 0, QString()};
    }
    if (digit > 0 && !wasLost) {
        keys = QStringList{keyLabel(macKey)};
        return wrong(QStringLiteral("no entry is open"));
    }
    return std::nullopt;
}

DawEvent LocateParser::wrong(const QString& reason)
{
    open = nullptr;
    number.clear();
    lost = true;
    return {DawEvent::WrongSequence, Target::Bar, 0,
            keys.join(QLatin1Char(' ')) + QStringLiteral(" (") + reason + QLatin1Char(')')};
}
