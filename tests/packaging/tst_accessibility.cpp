// SPDX-License-Identifier: MIT
#include "editdata.h"
#include "servers.h"
#include "testcase.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QSet>
#include <QTemporaryDir>

namespace {

constexpr auto kBus = "velt test accessibility"; // The connection's name.
constexpr int kReplyMs = 10000;

// What a screen reader sees of a program: an object on the accessibility bus (AT-SPI 2).
class Accessible
{
public:
    enum Role : uint { // As AT-SPI numbers them.
        CheckBox = 7,
        ComboBox = 11,
        Desktop = 14,
        Graphic = 27,
        MenuItem = 35,
        PushButton = 43,
        RadioButton = 44,
        Table = 55,
        Text = 61
    };

    static Accessible desktop() // Its children are the programs.
    {
        return {"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"};
    }

    QString name() const
    {
        const QVariant value = call("org.freedesktop.DBus.Properties", "Get", {kObject, "Name"});
        return value.value<QDBusVariant>().variant().toString();
    }
    uint role() const { return call(kObject, "GetRole").toUInt(); }

    QVector<Accessible> children() const
    {
        QVector<Accessible> found;
        const auto list = call(kObject, "GetChildren").value<QDBusArgument>();
        for (list.beginArray(); !list.atEnd();) {
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
    QVector<Accessible> descendants() const
    {
        QVector<Accessible> all;
        for (const Accessible& child : children()) {
            all.append(child);
            all += child.descendants();
        }
        return all;
    }

    // Presses the descendant of that role and name, if there is one. Does not wait for what comes
    // of it: the program may open a modal window.
    void press(Role wanted, const QString& wantedName) const
    {
        for (const Accessible& object : descendants()) {
            if (object.role() == wanted && object.name() == wantedName) {
                QDBusConnection(kBus).send(
                    object.message("org.a11y.atspi.Action", "DoAction", {0}));
                return;
            }
        }
    }

    QString service;
    QString path; // Empty: no object.

private:
    static constexpr auto kObject = "org.a11y.atspi.Accessible";

    QDBusMessage message(const char* interface, const char* method,
                         const QVariantList& arguments) const
    {
        QDBusMessage made = QDBusMessage::createMethodCall(service, path, interface, method);
        made.setArguments(arguments);
        return made;
    }
    QVariant call(const char* interface, const char* method,
                  const QVariantList& arguments = {}) const
    {
        const QDBusMessage made = message(interface, method, arguments);
        return QDBusConnection(kBus).call(made, QDBus::Block, kReplyMs).arguments().value(0);
    }
};

} // namespace

Q_DECLARE_METATYPE(Accessible::Role)

// What a screen reader finds in the running program, on a session of its own.
class TestAccessibility : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyControlHasAName_data();
    void everyControlHasAName();
    void cleanupTestCase();

private:
    QString startBus(); // Returns why not, if not.
    bool startProgram();
    static Accessible window(const QString& title);

    std::unique_ptr<XServer> screen;
    QTemporaryDir home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    ServerProcess session;
    ServerProcess program;
};

void TestAccessibility::initTestCase()
{
    screen = std::make_unique<XServer>();
    if (!screen->isRunning()) {
        QSKIP(qPrintable(screen->why()));
    }
    environment.insert("DISPLAY", screen->display()); // Its root window comes to name the bus.
    environment.insert("XDG_RUNTIME_DIR", home.path());
    environment.insert("XDG_CONFIG_HOME", home.path());
    const QString why = startBus();
    if (!why.isEmpty()) {
        failIfServersAreNeeded(why);
        QSKIP(qPrintable(why));
    }

    EditData data;
    data.SongList.resize(1);
    data.SongList[0].SongTitle = "Song";
    data.ShowList.resize(1);
    data.ShowList[0].ShowTitle = "Friday";
    data.ShowList[0].SetList.resize(1);
    data.ShowList[0].SetList[0].Song = data.SongList[0];
    data.writeEdit(home.filePath("VELT/VELTSetting.ini"));
    QVERIFY(startProgram());
}

QString TestAccessibility::startBus()
{
    session.setProcessEnvironment(environment);
    session.start("dbus-daemon", {"--session", "--nofork", "--nopidfile", "--print-address"});
    if (!session.waitForStarted()) {
        return "dbus-daemon cannot be started: " + session.errorString();
    }
    QByteArray address;
    while (!address.endsWith('\n') && session.waitForReadyRead(kReplyMs)) {
        address += session.readAllStandardOutput();
    }
    environment.insert("DBUS_SESSION_BUS_ADDRESS", QString::fromUtf8(address.trimmed()));

    const QDBusMessage ask = QDBusMessage::createMethodCall("org.a11y.Bus", "/org/a11y/bus",
                                                            "org.a11y.Bus", "GetAddress");
    auto bus = QDBusConnection::connectToBus(address.trimmed(), "velt test session");
    const QDBusMessage reply = bus.call(ask, QDBus::Block, kReplyMs);
    if (reply.type() != QDBusMessage::ReplyMessage) {
        return "no accessibility bus: " + reply.errorMessage();
    }
    QDBusConnection::connectToBus(reply.arguments().value(0).toString(), kBus);
    // A program announces itself once, at its start: the registry must be there before.
    return Accessible::desktop().role() == Accessible::Desktop ? "" : "no accessibility registry";
}

// Qt 5.15 now and then misses the bus when a program starts, whatever the program.
bool TestAccessibility::startProgram()
{
    environment.insert("QT_QPA_PLATFORM", "xcb");
    environment.insert("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    environment.insert("JACK_DEFAULT_SERVER", "velt-nobody");
    environment.insert("JACK_NO_START_SERVER", "1");
    program.setProcessEnvironment(environment);
    program.setStandardErrorFile(QProcess::nullDevice());
    constexpr int kAttempts = 5;
    for (int i = 0; i < kAttempts; ++i) {
        program.start(VELT_PROGRAM, QStringList());
        if (QTest::qWaitFor([] { return !window("VELT").path.isEmpty(); }, 5000)) {
            return true;
        }
        program.kill();
        program.waitForFinished();
    }
    return false;
}

Accessible TestAccessibility::window(const QString& title)
{
    for (const Accessible& application : Accessible::desktop().children()) {
        for (const Accessible& child : application.children()) {
            if (child.name() == title) {
                return child;
            }
        }
    }
    return {};
}

void TestAccessibility::everyControlHasAName_data()
{
    QTest::addColumn<Accessible::Role>("role"); // What opens it from the operator window.
    QTest::addColumn<QString>("opener");
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("controls"); // At least so many are found.

    const auto button = Accessible::PushButton;
    QTest::newRow("operator window") << button << QString() << "VELT" << 13;
    QTest::newRow("editor") << button << "Edit"
                            << "Edit" << 19;
    QTest::newRow("preferences") << button << "Pref."
                                 << "Preference" << 15;
    QTest::newRow("about box") << Accessible::MenuItem << "AboutVELT"
                               << "About VELT" << 1;
}

void TestAccessibility::everyControlHasAName()
{
    QFETCH(Accessible::Role, role);
    QFETCH(QString, opener);
    QFETCH(QString, title);
    QFETCH(int, controls);
    window("VELT").press(role, opener);
    QTRY_VERIFY(!window(title).path.isEmpty());

    const QSet<uint> controlRoles = {
        Accessible::CheckBox,    Accessible::ComboBox, Accessible::Graphic, Accessible::PushButton,
        Accessible::RadioButton, Accessible::Table,    Accessible::Text};
    int found = 0;
    for (const Accessible& object : window(title).descendants()) {
        if (controlRoles.contains(object.role())) {
            ++found;
            const auto which = "control " + QByteArray::number(found) + " of the window, of role " +
                               QByteArray::number(object.role());
            QVERIFY2(!object.name().isEmpty(), which.constData());
        }
    }
    QVERIFY2(found >= controls, qPrintable(QString::number(found)));
    window(title).press(Accessible::PushButton, "CANCEL");
}

void TestAccessibility::cleanupTestCase()
{
    program.kill();
    program.waitForFinished();
    QDBusConnection::disconnectFromBus(kBus);
    QDBusConnection::disconnectFromBus("velt test session");
    session.terminate(); // The accessibility bus goes with it.
    session.waitForFinished();
}

VELT_TEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
