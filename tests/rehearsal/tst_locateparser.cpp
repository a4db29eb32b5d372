// SPDX-License-Identifier: MIT
#include "dawkeys.h"
#include "locateparser.h"
#include "testcase.h"

namespace {

// Keys are written one character each: digits, = . and E(nter) of the keypad, T ; R(eturn) S(pace)
// and tab (>), with ^ in front for Command.
int codeOf(char key)
{
    if (key >= '0' && key <= '9') {
        return 0x52 + key - '0' + (key >= '8' ? 1 : 0);
    }
    static const QHash<char, int> codes = {{'=', 0x51}, {'.', 0x41}, {'E', 0x4C}, {'T', 0x11},
                                           {';', 0x29}, {'R', 0x24}, {'S', 0x31}, {'>', 0x30}};
    return codes.value(key, kOtherKey);
}

QString textOf(const DawEvent& event)
{
    if (event.kind == DawEvent::Located) {
        return (event.target == Target::Bar ? "bar " : "marker ") + QString::number(event.number);
    }
    if (event.kind == DawEvent::WrongSequence) {
        return "wrong " + event.text;
    }
    return event.kind == DawEvent::Play ? "play" : "toggle";
}

} // namespace

class TestLocateParser : public TestCase
{
    Q_OBJECT

private slots:
    void understandsKeys_data()
    {
        QTest::addColumn<bool>("isStudioOne");
        QTest::addColumn<QByteArray>("keys");
        QTest::addColumn<QString>("events"); // One a line.
        const auto row = [](const char* name, bool isStudioOne, const char* keys,
                            const char* events) {
            QTest::newRow(name) << isStudioOne << QByteArray(keys) << QString(events);
        };
        row("every digit", false, "=1234567890E.98.", "bar 1234567890\nmarker 98");
        row("number too large", false, "=2147483647E=21474836485E=3E",
            "bar 2147483647\nwrong = 2 1 4 7 4 8 3 6 4 8 (number too large)\nbar 3");
        row("studio", true, "^T33R^;10E", "bar 33\nmarker 10");
        row("wrong closer", true, "^T33E^;1R^T4R",
            "wrong Cmd+T 3 3 Enter (key does not belong here)\n"
            "wrong Cmd+; 1 Return (key does not belong here)\nbar 4");
        row("other DAW's keys, rest swallowed", false, "^T33R", "wrong 3 (no entry is open)");
        row("opener without Command", true, "T5R", "wrong 5 (no entry is open)");
        row("digit with Command", false, "=^5", "wrong = Cmd+5 (key does not belong here)");
        row("closer with Command", false, "=5^E", "wrong = 5 Cmd+Enter (key does not belong here)");
        row("no number", false, "=E=8E", "wrong = Enter (no number)\nbar 8");
        row("rest of a wrong sequence", false, "=1>05E=7E",
            "wrong = 1 Tab (key does not belong here)\nbar 7");
        row("recovers at the very key", false, "=1=2E=3.4.",
            "wrong = 1 = (key does not belong here)\nbar 2\n"
            "wrong = 3 . (key does not belong here)\nmarker 4");
        row("wrong again after a swallowed rest", false, "55E6",
            "wrong 5 (no entry is open)\nwrong 6 (no entry is open)");
        row("swallowed Enter does not start", true, "5EE", "wrong 5 (no entry is open)\nplay");
        row("operator's single keys", false, ">0ERS", "toggle");
        row("operator's single keys, studio", true, "0E>S", "play\ntoggle");
    }

    void understandsKeys()
    {
        QFETCH(bool, isStudioOne);
        QFETCH(QByteArray, keys);
        LocateParser parser(isStudioOne ? Daw::StudioOne : Daw::ProTools);
        QStringList events;
        bool command = false;
        for (const char key : keys) {
            if (key != '^') {
                const auto event = parser.press(codeOf(key), command);
                events += event ? QStringList{textOf(*event)} : QStringList();
            }
            command = key == '^';
        }
        QTEST(events.join('\n'), "events");
    }
};

VELT_TEST_MAIN(TestLocateParser)
#include "tst_locateparser.moc"
