// SPDX-License-Identifier: MIT
#include "accessible.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace {

constexpr auto kSession = "velt test session";
constexpr auto kAccessibility = "velt test accessibility";
constexpr int kReplyMs = 10000;

const QString kAccessibleInterface = "org.a11y.atspi.Accessible";

} // namespace

AccessibilityBus::AccessibilityBus(const QString& display)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_RUNTIME_DIR", runtime.path()); // There the socket is made.
    environment.insert("DISPLAY", display);                // Whose root window then names the bus.
    session.setProcessEnvironment(environment);
    session.start("dbus-daemon", {"--session", "--nofork", "--nopidfile", "--print-address"});
    if (!session.waitForStarted()) {
        reason = "dbus-daemon cannot be started: " + session.errorString();
        return;
    }
    while (!address.endsWith('\n') && session.waitForReadyRead(kReplyMs)) {
        address += QString::fromUtf8(session.readAllStandardOutput());
    }
    address = address.trimmed();
    auto bus = QDBusConnection::connectToBus(address, kSession);
    const QDBusMessage reply =
        bus.call(QDBusMessage::createMethodCall("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus",
                                                "GetAddress"),
                 QDBus::Block, kReplyMs);
    if (reply.type() != QDBusMessage::ReplyMessage) {
        reason = "no accessibility bus: " + reply.errorMessage();
        return;
    }
    QDBusConnection::connectToBus(reply.arguments().value(0).toString(), kAccessibility);
    // A program announces itself once, at its start: the registry must be there before.
    if (Accessible::desktop().role() != Accessible::Desktop) {
        reason = "the accessibility registry does not answer";
    }
}

AccessibilityBus::~AccessibilityBus()
{
    QDBusConnection::disconnectFromBus(kAccessibility);
    QDBusConnection::disconnectFromBus(kSession);
    session.terminate(); // The accessibility bus goes with it.
    session.waitForFinished();
}

Accessible Accessible::desktop()
{
    Accessible root;
    root.service = "org.a11y.atspi.Registry";
    root.path = "/org/a11y/atspi/accessible/root";
    return root;
}

QVariantList Accessible::call(const QString& interface, const QString& method,
                              const QVariantList& arguments) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    return QDBusConnection(kAccessibility).call(message, QDBus::Block, kReplyMs).arguments();
}

QString Accessible::name() const
{
    return call("org.freedesktop.DBus.Properties", "Get", {kAccessibleInterface, "Name"})
        .value(0)
        .value<QDBusVariant>()
        .variant()
        .toString();
}

uint Accessible::role() const
{
    return call(kAccessibleInterface, "GetRole").value(0).toUInt();
}

QString Accessible::roleName() const
{
    return call(kAccessibleInterface, "GetRoleName").value(0).toString();
}

QVector<Accessible> Accessible::children() const
{
    QVector<Accessible> found;
    const auto list = call(kAccessibleInterface, "GetChildren").value(0).value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        Accessible child;
        QDBusObjectPath childPath;
        list.beginStructure();
        list >> child.service >> childPath;
        list.endStructure();
        child.path = childPath.path();
        found.append(child);
    }
    list.endArray();
    return found;
}

void Accessible::press() const
{
    QDBusMessage message =
        QDBusMessage::createMethodCall(service, path, "org.a11y.atspi.Action", "DoAction");
    message.setArguments({0});
    QDBusConnection(kAccessibility).send(message);
}

QVector<Accessible> Accessible::descendants() const
{
    QVector<Accessible> all;
    for (const Accessible& child : children()) {
        all.append(child);
        all += child.descendants();
    }
    return all;
}

Accessible Accessible::find(Role wanted, const QString& wantedName) const
{
    for (const Accessible& object : descendants()) {
        if (object.role() == wanted && object.name() == wantedName) {
            return object;
        }
    }
    return {};
}
