// SPDX-License-Identifier: MIT
#include "events.h"

#include "dawkeys.h"

#include <cstdio>

QString midiText(const std::vector<unsigned char>& bytes)
{
    const auto raw = QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()),
                                             static_cast<int>(bytes.size()));
    return QStringLiteral("midi ") + QString::fromLatin1(raw.toHex(' ').toUpper());
}

QString keyText(const KeyPress& key)
{
    const bool isOther = key.macKey == kOtherKey;
    const quint32 code = isOther ? key.keysym : static_cast<quint32>(key.macKey);
    QString text =
        QStringLiteral("key ") + (key.isDown ? QStringLiteral("down ") : QStringLiteral("up "));
    text += isOther ? QStringLiteral("other 0x") : QStringLiteral("0x");
    text += QString::number(code, 16).toUpper().rightJustified(2, QLatin1Char('0'));
    text += key.command ? QStringLiteral(" cmd") : QString();
    text += key.isRepeat ? QStringLiteral(" repeat") : QString();
    return text;
}

QString locatedText(Target target, int number)
{
    return (target == Target::Bar ? QStringLiteral("located bar ")
                                  : QStringLiteral("located marker ")) +
           QString::number(number);
}

QString transportText(bool isPlaying)
{
    return isPlaying ? QStringLiteral("transport playing") : QStringLiteral("transport stopped");
}

QString noteText(bool wasSent, bool isOn, int note, RehearsalPorts::Out out)
{
    return (wasSent ? QStringLiteral("sent note ") : QStringLiteral("not sent note ")) +
           (isOn ? QStringLiteral("on ") : QStringLiteral("off ")) + QString::number(note) +
           (out == RehearsalPorts::FootSwitch ? QStringLiteral(" foot switch")
                                              : QStringLiteral(" daw notes"));
}

std::optional<bool> mmcStarts(const std::vector<unsigned char>& bytes)
{
    constexpr unsigned char kMmcStop = 0x01;
    constexpr unsigned char kMmcPlay = 0x02;
    if (bytes.size() != 6 || bytes[0] != 0xF0 || bytes[1] != 0x7F || bytes[3] != 0x06 ||
        bytes[5] != 0xF7 || (bytes[4] != kMmcPlay && bytes[4] != kMmcStop)) {
        return std::nullopt;
    }
    return bytes[4] == kMmcPlay;
}

std::optional<Note> noteOf(const std::vector<unsigned char>& bytes)
{
    constexpr unsigned kKindMask = 0xF0;
    constexpr unsigned kNoteOff = 0x80;
    constexpr unsigned kNoteOn = 0x90;
    const unsigned kind = bytes.size() == 3 ? bytes[0] & kKindMask : 0;
    if (kind != kNoteOn && kind != kNoteOff) {
        return std::nullopt;
    }
    return Note{bytes[1], kind == kNoteOn ? bytes[2] : 0};
}

void printEvent(qint64 timeUs, const QString& text)
{
    constexpr qint64 kUsPerMs = 1000;
    const QByteArray fraction = QByteArray::number(timeUs % kUsPerMs).rightJustified(3, '0');
    const QByteArray line =
        QByteArray::number(timeUs / kUsPerMs) + '.' + fraction + ' ' + text.toUtf8() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
    std::fflush(stdout);
}
