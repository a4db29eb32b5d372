// SPDX-License-Identifier: MIT
#include "mackeys.h"
#include "qkeyeventsend.h"
#include "qkeyeventsendmac.h"
#include "recordingplatform.h"
#include "testcase.h"

using Recording::Application;
using Recording::Event;
using Recording::Events;

class KeySendTest : public TestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
        Recording::reset();
    }
    void cleanup()
    {
        QCOMPARE(Recording::unreleased(), 0);
        TestCase::cleanup();
    }

    void findsApplicationsByName();
    void keepsASnapshot();
    void listsAtMost256();
    void cutsLongNames_data();
    void cutsLongNames();
    void translatesDigits_data();
    void translatesDigits();
    void typesWholeSequences();
    void ignoresPositionsOutsideTheList();
    void pairsKeysAndKeysyms();
};

void KeySendTest::findsApplicationsByName()
{
    Recording::setApplications({{"Finder"},
                                {"velt", Application::Own},
                                {"pro tools"},
                                {"Pro Tools", Application::Nameless},
                                {"Pro Tools"},
                                {"Pro Tools"},
                                {"Pro Tools Intro"},
                                {"\xc3\xa9"}});
    QKeyEventSend sender;
    QCOMPARE(sender.getPosFromProcName(QStringLiteral("Finder")), -1); // Nothing listed yet.
    sender.setProcNameList();

    QCOMPARE(sender.getPosFromProcName(QStringLiteral("Finder")), 0);
    QCOMPARE(sender.getPosFromProcName(QStringLiteral("pro tools")), 1);
    QCOMPARE(sender.getPosFromProcName(QStringLiteral("Pro Tools")), 2);
    QCOMPARE(sender.getPosFromProcName(QStringLiteral("Pro Tools Intro")), 4);
    QCOMPARE(sender.getPosFromProcName(QStringLiteral("Pro")), -1);
    QCOMPARE(sender.getPosFromProcName(QStringLiteral("velt")), -1);
    // One character for each byte of the name.
    QCOMPARE(sender.getPosFromProcName(QString::fromLatin1("\xc3\xa9")), 5);

    // The list leaves out two applications before this position: the key must not slip.
    sender.sendKeyEvent(2, 0x31, false, true);
    QCOMPARE(Recording::takeEvents(), Recording::press(4, 0x31));
}

void KeySendTest::keepsASnapshot()
{
    Recording::setApplications({{"Finder"}, {"Pro Tools"}});
    QKeyEventSend sender;
    sender.setProcNameList();
    Recording::setApplications({{"Pro Tools"}});
    QCOMPARE(sender.getPosFromProcName(QStringLiteral("Pro Tools")), 1);
    sender.sendKeyEvent(1, 0x30, false, true);
    QCOMPARE(Recording::takeEvents(), Recording::press(Recording::kGone, 0x30));
    QCOMPARE(Recording::enumerations(), 1);

    sender.setProcNameList();
    QCOMPARE(sender.getPosFromProcName(QStringLiteral("Pro Tools")), 0);
    QCOMPARE(sender.getPosFromProcName(QStringLiteral("Finder")), -1);
}

void KeySendTest::listsAtMost256()
{
    QVector<Application> applications(255, Application("other"));
    applications.prepend(Application("velt", Application::Own));
    applications << Application("last") << Application("beyond");
    Recording::setApplications(applications);
    QKeyEventSend sender;
    sender.setProcNameList();
    QCOMPARE(sender.getPosFromProcName(QStringLiteral("last")), 255);
    QCOMPARE(sender.getPosFromProcName(QStringLiteral("beyond")), -1);
    sender.sendKeyEvent(255, 0x24, false, true);
    QCOMPARE(Recording::takeEvents(), Recording::press(256, 0x24));
}

void KeySendTest::cutsLongNames_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("kept");
    const auto row = [](const char* label, int filling, const char* end, int kept) {
        QTest::newRow(label) << QByteArray(filling, 'a') + end << kept;
    };
    row("fits", 254, "", 254);
    row("one byte too many", 255, "", 254);
    row("two-byte character fits", 252, "\xc3\xa9", 254);
    row("two-byte character across the end", 253, "\xc3\xa9", 253);
    row("four-byte character across the end", 251, "\xf0\x9f\x8e\xb5 and more", 251);
    row("three-byte character before the end", 251, "\xe2\x82\xac\xe2\x82\xac", 254);
    row("very long", 5000, "", 254);
}

void KeySendTest::cutsLongNames()
{
    QFETCH(QByteArray, name);
    QFETCH(int, kept);
    Recording::setApplications({{name.constData()}, {"Pro Tools"}});
    QKeyEventSendMac backEnd;
    backEnd.setProcessName();
    QCOMPARE(backEnd.getProcNameCount(), 2);
    QCOMPARE(QByteArray(backEnd.getProcName(0)), name.left(kept));
    QCOMPARE(QByteArray(backEnd.getProcName(1)), QByteArray("Pro Tools"));
}

void KeySendTest::translatesDigits_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("isVirtualKey");
    QTest::addColumn<int>("code");
    QTest::newRow("0") << int('0') << false << 0x52;
    QTest::newRow("7") << int('7') << false << 0x59;
    QTest::newRow("8 leaves out 0x5a") << int('8') << false << 0x5b;
    QTest::newRow("9") << int('9') << false << 0x5c;
    QTest::newRow("before 0") << int('0') - 1 << false << 0x2f;
    QTest::newRow("after 9") << int('9') + 1 << false << 0x3a;
    QTest::newRow("Tab is no 0") << 0x30 << true << 0x30;
    QTest::newRow("highest code") << 0xff << true << 0xff;
}

void KeySendTest::translatesDigits()
{
    QFETCH(int, key);
    QFETCH(bool, isVirtualKey);
    QFETCH(int, code);
    Recording::setApplications({{"Pro Tools"}});
    QKeyEventSend sender;
    sender.setProcNameList();
    sender.sendKeyEvent(0, static_cast<unsigned char>(key), false, isVirtualKey);
    QCOMPARE(Recording::takeEvents(), Recording::press(0, code));
}

void KeySendTest::typesWholeSequences()
{
    Recording::setApplications({{"Finder"}, {"Studio One"}});
    QKeyEventSend sender;
    sender.setProcNameList();
    const int daw = sender.getPosFromProcName(QStringLiteral("Studio One"));

    QKeyEventSend::pause(100000);
    sender.sendKeyEvent(daw, 0x11, true, true);
    for (const char digit : {'1', '0', '5'}) {
        sender.sendKeyEvent(daw, static_cast<unsigned char>(digit), false, false);
    }
    sender.sendKeyEvent(daw, 0x24, false, true);
    QCOMPARE(Recording::takeEvents(), Events{Recording::pause(100000)} +
                                          Recording::press(1, 0x11, Recording::kCommand) +
                                          Recording::presses(1, {0x53, 0x52, 0x57, 0x24}));

    // The back end takes exactly 1 for Command.
    QKeyEventSendMac().sendKeyEvent(1, 0x29, 2);
    QCOMPARE(Recording::takeEvents(), Recording::press(1, 0x29).mid(0, 3));
}

void KeySendTest::ignoresPositionsOutsideTheList()
{
    Recording::setApplications({{"Pro Tools"}});
    QKeyEventSend sender;
    sender.setProcNameList();
    for (const int pos : {-1, 1, 256}) {
        sender.sendKeyEvent(pos, 0x31, false, true);
        QCOMPARE(Recording::takeEvents(), Events{Recording::pause(100000)});
    }
}

void KeySendTest::pairsKeysAndKeysyms()
{
    int pairs = 0;
    for (int code = -1; code <= 0xff; ++code) {
        if (const auto keysym = keysymForMacKey(code)) {
            QCOMPARE(macKeyForKeysym(*keysym), std::optional(code));
            ++pairs;
        }
    }
    QCOMPARE(pairs, 18);
    QVERIFY(!macKeyForKeysym(0xff9e)); // Keypad 0 without Num Lock.
}

VELT_TEST_MAIN(KeySendTest)
#include "tst_keysend.moc"
