// SPDX-License-Identifier: MIT
#include "qkeyeventsend.h"
#include "qkeyeventsendmac.h"
#include "recordingplatform.h"
#include "testcase.h"

using namespace Recording;

class TestKeySend : public TestCase
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        QCOMPARE(unreleased(), 0);
        reset();
        TestCase::cleanup();
    }

    void findsApplicationsByName()
    {
        setApplications({Application("Finder"), Application("velt", Application::Own),
                         Application("pro tools"), Application("Pro Tools", Application::Nameless),
                         Application("Pro Tools"), Application("Pro Tools"),
                         Application("\xc3\xa9")});
        QKeyEventSend sender;
        sender.setProcNameList();
        QCOMPARE(sender.getPosFromProcName("pro tools"), 1);
        QCOMPARE(sender.getPosFromProcName("Pro Tools"), 2);
        QCOMPARE(sender.getPosFromProcName("Pro"), -1);
        QCOMPARE(sender.getPosFromProcName("velt"), -1);
        // One character for each byte of the name.
        QCOMPARE(sender.getPosFromProcName(QString::fromLatin1("\xc3\xa9")), 4);
        // The list leaves out two applications before this position: the key must not slip.
        sender.sendKeyEvent(2, 0x31, false, true);
        QCOMPARE(takeEvents(), press(4, 0x31));

        setApplications({{"Pro Tools"}}); // What is listed is a snapshot.
        QCOMPARE(sender.getPosFromProcName("Pro Tools"), 2);
        sender.sendKeyEvent(0, 0x30, false, true);
        QCOMPARE(takeEvents(), press(kGone, 0x30));
        sender.setProcNameList();
        QCOMPARE(sender.getPosFromProcName("Pro Tools"), 0);
    }

    void listsAtMost256()
    {
        QVector<Application> applications(255, Application("other"));
        applications << Application("last") << Application("beyond");
        setApplications(applications);
        QKeyEventSend sender;
        sender.setProcNameList();
        QCOMPARE(sender.getPosFromProcName("last"), 255);
        QCOMPARE(sender.getPosFromProcName("beyond"), -1);
    }

    void cutsLongNames_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<int>("kept"); // In bytes.
        QTest::newRow("last character fits") << QByteArray(252, 'a') + "\xc3\xa9" << 254;
        QTest::newRow("last character does not fit") << QByteArray(253, 'a') + "\xc3\xa9" << 253;
        QTest::newRow("four bytes") << QByteArray(251, 'a') + "\xf0\x9f\x8e\xb5 more" << 251;
    }
    void cutsLongNames()
    {
        QFETCH(QByteArray, name);
        setApplications({{name.constData()}});
        QKeyEventSendMac backEnd;
        backEnd.setProcessName();
        QTEST(static_cast<int>(strlen(backEnd.getProcName(0))), "kept");
        QVERIFY(name.startsWith(backEnd.getProcName(0)));
    }

    void typesKeys_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<bool>("isVirtualKey");
        QTest::addColumn<int>("code");
        QTest::newRow("Tab, not the digit 0") << 0x30 << true << 0x30;
        QTest::newRow("before the digits") << '0' - 1 << false << 0x2f;
        QTest::newRow("first digit") << int('0') << false << 0x52;
        QTest::newRow("last digit") << int('9') << false << 0x5c;
        QTest::newRow("after the digits") << '9' + 1 << false << 0x3a;
    }
    void typesKeys()
    {
        QFETCH(int, key);
        QFETCH(bool, isVirtualKey);
        QFETCH(int, code);
        setApplications({{"Finder"}, {"Studio One"}});
        QKeyEventSend sender;
        sender.setProcNameList();
        sender.sendKeyEvent(1, static_cast<unsigned char>(key), false, isVirtualKey);
        QCOMPARE(takeEvents(), press(1, code));
        sender.sendKeyEvent(1, static_cast<unsigned char>(key), true, isVirtualKey);
        QCOMPARE(takeEvents(), press(1, code, kCommand));
        QKeyEventSendMac().sendKeyEvent(1, static_cast<unsigned char>(code), 2); // Only 1 is true.
        QCOMPARE(takeEvents(), press(1, code).mid(0, 3));
        sender.sendKeyEvent(2, static_cast<unsigned char>(key), true, isVirtualKey);
        sender.sendKeyEvent(-1, static_cast<unsigned char>(key), true, isVirtualKey);
        QCOMPARE(takeEvents(), (Events{pause(100000), pause(100000)}));
    }
};

VELT_TEST_MAIN(TestKeySend)
#include "tst_keysend.moc"
