// SPDX-License-Identifier: MIT
#include "qmidiin.h"

#include "jackwatch.h"
#include "midibackend.h"
#include "mididecoder.h"
#include "qmidimessage.h"

#include <QCoreApplication>
#include <QDebug>
#include <QEvent>

#include <iostream>
#include <utility>

namespace {

constexpr auto kClientName = "RtMidi Input Client";
constexpr auto kPortName = "RtMidi Input";
constexpr int kTracedChannelBase = 144; // A note-on of channel 1 is traced as channel 0.

void writeTrace(double stampSeconds, const std::vector<unsigned char>& bytes)
{
    qDebug() << "channel" << static_cast<int>(bytes.front()) - kTracedChannelBase;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        std::cout << "Byte " << i << " = " << static_cast<int>(bytes[i]) << ", ";
    }
    std::cout << "stamp = " << stampSeconds << '\n' << std::flush;
}

// Posted to a message, writes its trace on the message's thread, in turn with all that is posted
// there.
class TraceOfMessage : public QEvent
{
public:
    TraceOfMessage(double stampSeconds, std::vector<unsigned char> traced)
        : QEvent(User), stamp(stampSeconds), bytes(std::move(traced))
    {
    }
    ~TraceOfMessage() override { writeTrace(stamp, bytes); }
    Q_DISABLE_COPY_MOVE(TraceOfMessage)

private:
    double stamp;
    std::vector<unsigned char> bytes;
};

// Owns a message; posted to the message itself, it frees it behind all that was posted there
// before. (A queued functor would not do: the thread that posts it holds on to it for a moment
// longer, and could be the last to let go.)
class EndOfMessage : public QEvent
{
public:
    explicit EndOfMessage(std::unique_ptr<QMidiMessage> message)
        : QEvent(User), owner(std::move(message))
    {
    }

private:
    std::unique_ptr<QMidiMessage> owner;
};

} // namespace

QMidiIn::QMidiIn(QObject* parent) : QObject(parent)
{
    qRegisterMetaType<QMidiMessage*>();
    backEndOrNull();
}

QMidiIn::~QMidiIn()
{
    dropBackEnd();
}

QStringList QMidiIn::getPorts()
{
    RtMidiIn* midi = backEndOrNull();
    return midi ? portNames(*midi) : QStringList();
}

void QMidiIn::openPort(unsigned int index)
{
    openChecked(backEndOrThrow(), index, kPortName);
    portOpened();
}

void QMidiIn::openPort(const QString& name)
{
    const int index = portNames(backEndOrThrow()).indexOf(name);
    if (index >= 0) {
        openPort(static_cast<unsigned int>(index));
    }
}

void QMidiIn::openVirtualPort(const QString& name)
{
    backEndOrThrow().openVirtualPort(name.toStdString());
    portOpened();
}

void QMidiIn::closePort()
{
    if (backEnd && !closeQuietly(*backEnd, watch)) {
        dropBackEnd();
    }
}

bool QMidiIn::isPortOpen() const
{
    return backEnd && backEnd->isPortOpen();
}

void QMidiIn::setIgnoreTypes(bool sysEx, bool timing, bool activeSensing)
{
    ignored = {sysEx, timing, activeSensing};
    if (backEnd) {
        backEnd->ignoreTypes(sysEx, timing, activeSensing);
    }
}

void QMidiIn::dropBackEnd()
{
    letGo(std::move(backEnd));
    watch.reset();
}

void QMidiIn::onMidiMessageReceive(QMidiMessage* message)
{
    message->moveToThread(thread());
    emit midiMessageReceived(message);
}

void QMidiIn::callback(double timeStamp, std::vector<unsigned char>* bytes, void* port)
{
    if (bytes->empty()) {
        return;
    }
    auto* self = static_cast<QMidiIn*>(port);
    std::unique_ptr<QMidiMessage> owner = decodeMidi(timeStamp, *bytes);
    QMidiMessage* message = owner.get();
    message->moveToThread(self->thread());
    // Three events for the port's thread, in this order: the trace, the delivery, the end. None is
    // the port's own, so that a port that goes away before they are handled takes nothing with it
    // that a receiver is still to get.
    QCoreApplication::postEvent(message, new TraceOfMessage(timeStamp, *bytes));
    self->onMidiMessageReceive(message);
    QCoreApplication::postEvent(message, new EndOfMessage(std::move(owner)));
}

void QMidiIn::portOpened()
{
    if (!watch) {
        watch = JackWatch::ofProcess(backEnd->getCurrentApi());
    }
    if (watch) {
        watch->graphChanged();
    }
}

RtMidiIn& QMidiIn::backEndOrThrow()
{
    JackWatch::requireAnswer();
    if (!backEnd) {
        backEnd = makeBackEnd<RtMidiIn>(kClientName);
        backEnd->setCallback(callback, this);
        backEnd->ignoreTypes(ignored.sysEx, ignored.timing, ignored.activeSensing);
    }
    return *backEnd;
}

RtMidiIn* QMidiIn::backEndOrNull()
{
    try {
        return backEnd ? backEnd.get() : &backEndOrThrow();
    } catch (const RtMidiError&) {
        return nullptr;
    }
}
