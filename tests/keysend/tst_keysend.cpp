// SPDX-License-Identifier: MIT
#include "qkeyeventsend.h"
#include "qkeyeventsendmac.h"
#include "recordingplatform.h"
#include "testcase.h"

using namespace Recording;

class KeySendTest : public TestCase
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

    void cutsLongNames()
    {
        using Case = std::tuple<int, const char*, int>; // So many "a", what follows, bytes kept.
        for (const auto& [filling, end, kept] :
             {Case(255, "", 254), Case(252, "\xc3\xa9", 254), Case(253, "\xc3\xa9", 253),
              Case(251, "\xf0\x9f\x8e\xb5 and more", 251),
              Case(251, "\xe2\x82\xac\xe2\x82\xac", 254), Case(5000, "", 254)}) {
            const QByteArray name = QByteArray(filling, 'a') + end;
            setApplications({{name.constData()}});
            QKeyEventSendMac backEnd;
            backEnd.setProcessName();
            QCOMPARE(backEnd.getProcNameCount(), 1);
            QCOMPARE(QByteArray(backEnd.getProcName(0)), name.left(kept));
        }
    }

    void typesKeys()
    {
        setApplications({{"Finder"}, {"Studio One"}});
        QKeyEventSend sender;
        sender.setProcNameList();
        sender.sendKeyEvent(1, 0x11, true, true);
        QCOMPARE(takeEvents(), press(1, 0x11, kCommand));
        sender.sendKeyEvent(1, 0x30, false, true); // Tab, and not the digit 0.
        QCOMPARE(takeEvents(), press(1, 0x30));
        for (const auto& [key, code] : {std::pair('0' - 1, 0x2f),
                                        {'0', 0x52},
                                        {'7', 0x59},
                                        {'8', 0x5b},
                                        {'9', 0x5c},
                                        {'9' + 1, 0x3a}}) {
            sender.sendKeyEvent(1, static_cast<unsigned char>(key), false, false);
            QCOMPARE(takeEvents(), press(1, code));
        }
        for (const int outside : {-1, 2, 256}) {
            sender.sendKeyEvent(outside, 0x31, false, true);
            QCOMPARE(takeEvents(), Events{pause(100000)});
        }
        QKeyEventSendMac().sendKeyEvent(1, 0x29, 2); // Takes exactly 1 for Command.
        QCOMPARE(takeEvents(), press(1, 0x29).mid(0, 3));
    }
};

VELT_TEST_MAIN(KeySendTest)
#include "tst_keysend.moc"
