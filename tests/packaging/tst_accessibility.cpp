// SPDX-License-Identifier: MIT
#include "accessible.h"
#include "editdata.h"
#include "testcase.h"

#include <QSet>
#include <QTemporaryDir>

// What a screen reader finds in the running program.
class TestAccessibility : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyControlHasAName_data();
    void everyControlHasAName();
    void cleanupTestCase();

private:
    bool startProgram();
    Accessible window(const QString& title) const;

    std::unique_ptr<XServer> screen;
    std::unique_ptr<AccessibilityBus> bus;
    QTemporaryDir home;
    ServerProcess program;
};

void TestAccessibility::initTestCase()
{
    screen = std::make_unique<XServer>();
    if (!screen->isRunning()) {
        QSKIP(qPrintable(screen->why()));
    }
    bus = std::make_unique<AccessibilityBus>(screen->display());
    if (!bus->isRunning()) {
        QSKIP(qPrintable(bus->why()));
    }
    EditData data;
    data.SongList.resize(1);
    data.SongList[0].SongTitle = "Song";
    data.ShowList.resize(1);
    data.ShowList[0].ShowTitle = "Friday";
    data.ShowList[0].SetList.resize(1);
    data.ShowList[0].SetList[0].Song = data.SongList[0];
    data.writeEdit(home.filePath("VELT/VELTSetting.ini"));

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", screen->display());
    environment.insert("QT_QPA_PLATFORM", "xcb");
    environment.insert("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    environment.insert("DBUS_SESSION_BUS_ADDRESS", bus->sessionAddress());
    environment.insert("XDG_CONFIG_HOME", home.path());
    environment.insert("JACK_DEFAULT_SERVER", "velt-nobody");
    environment.insert("JACK_NO_START_SERVER", "1");
    program.setProcessEnvironment(environment);
    program.setStandardErrorFile(QProcess::nullDevice());
    QVERIFY(startProgram());
}

// Qt 5.15 now and then misses the bus when a program starts, whatever the program.
bool TestAccessibility::startProgram()
{
    constexpr int kAttempts = 5;
    for (int i = 0; i < kAttempts; ++i) {
        program.start(VELT_PROGRAM, QStringList());
        if (QTest::qWaitFor([this] { return !window("VELT").isNull(); }, 5000)) {
            return true;
        }
        program.kill();
        program.waitForFinished();
    }
    return false;
}

Accessible TestAccessibility::window(const QString& title) const
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
    QTest::addColumn<Accessible::Role>("openerRole");
    QTest::addColumn<QString>("opener"); // In the operator window; empty: the window itself.
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
    QFETCH(Accessible::Role, openerRole);
    QFETCH(QString, opener);
    QFETCH(QString, title);
    QFETCH(int, controls);
    if (!opener.isEmpty()) {
        window("VELT").find(openerRole, opener).press();
        QTRY_VERIFY(!window(title).isNull());
    }

    const QSet<uint> controlRoles = {
        Accessible::CheckBox,    Accessible::ComboBox, Accessible::Graphic, Accessible::PushButton,
        Accessible::RadioButton, Accessible::Table,    Accessible::Text};
    QStringList nameless;
    int found = 0;
    for (const Accessible& object : window(title).descendants()) {
        if (controlRoles.contains(object.role())) {
            ++found;
            nameless += object.name().isEmpty() ? QStringList(object.roleName()) : QStringList();
        }
    }
    QCOMPARE(nameless, QStringList());
    QVERIFY2(found >= controls, qPrintable(QString::number(found)));

    const Accessible cancel = window(title).find(Accessible::PushButton, "CANCEL");
    if (!cancel.isNull()) {
        cancel.press();
    }
}

void TestAccessibility::cleanupTestCase()
{
    program.kill();
    program.waitForFinished();
    bus.reset();
}

VELT_TEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
