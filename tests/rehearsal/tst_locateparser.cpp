// SPDX-License-Identifier: MIT
#include "dawkeys.h"
#include "locateparser.h"
#include "testcase.h"

Q_DECLARE_METATYPE(Daw)

// Key presses are written as they are called on the keyboard ("kp=", "kpEnter", "Return"), with
// "cmd+" for Command. Events come out as "bar 105", "marker 7", "wrong <text>", "toggle", "play".
class LocateParserTest : public TestCase
{
    Q_OBJECT

private slots:
    void understandsKeys_data();
    void understandsKeys();
    void showsTheEntryBeingTyped();
};

namespace {

int codeOf(const QString& key)
{
    static const QHash<QString, int> codes = {
        {QStringLiteral("kp="), 0x51},     {QStringLiteral("kp."), 0x41},
        {QStringLiteral("kpEnter"), 0x4C}, {QStringLiteral("T"), 0x11},
        {QStringLiteral(";"), 0x29},       {QStringLiteral("Return"), 0x24},
        {QStringLiteral("Tab"), 0x30},     {QStringLiteral("Space"), 0x31},
    };
    static const QVector<int> digits = {0x52, 0x53, 0x54, 0x55, 0x56, 0x57, 0x58, 0x59, 0x5B, 0x5C};
    bool isDigit = false;
    const int digit = key.toInt(&isDigit);
    return isDigit ? digits.at(digit) : codes.value(key, kOtherKey);
}

QString textOf(const DawEvent& event)
{
    switch (event.kind) {
    case DawEvent::Located:
        return QString::fromLatin1(event.place == Place::Bar ? "bar %1" : "marker %1")
            .arg(event.number);
    case DawEvent::WrongSequence:
        return QStringLiteral("wrong ") + event.text;
    case DawEvent::TogglePlay:
        return QStringLiteral("toggle");
    case DawEvent::Play:
        return QStringLiteral("play");
    }
    return {};
}

QStringList feed(LocateParser& parser, const QString& keys)
{
    QStringList events;
    for (const QString& key : keys.split(QLatin1Char(' '))) {
        const bool command = key.startsWith(QLatin1String("cmd+"));
        const auto event = parser.press(codeOf(command ? key.mid(4) : key), command);
        if (event) {
            events += textOf(*event);
        }
    }
    return events;
}

} // namespace

void LocateParserTest::understandsKeys_data()
{
    QTest::addColumn<Daw>("daw");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("events"); // One a line.
    const auto row = [](const char* name, Daw daw, const char* keys, const char* events) {
        QTest::newRow(name) << daw << QString::fromLatin1(keys) << QString::fromLatin1(events);
    };
    constexpr Daw kPro = Daw::ProTools;
    constexpr Daw kStudio = Daw::StudioOne;

    row("pro bar", kPro, "kp= 1 0 5 kpEnter", "bar 105");
    row("pro marker", kPro, "kp. 7 kp.", "marker 7");
    row("pro, every digit", kPro, "kp= 1 2 3 4 5 6 7 8 9 0 kpEnter kp. 9 8 kp.",
        "bar 1234567890\nmarker 98");
    row("zero", kPro, "kp= 0 kpEnter", "bar 0");
    row("largest number", kPro, "kp= 2 1 4 7 4 8 3 6 4 7 kpEnter", "bar 2147483647");
    row("number too large", kPro, "kp= 2 1 4 7 4 8 3 6 4 8 5 kpEnter kp= 3 kpEnter",
        "wrong = 2 1 4 7 4 8 3 6 4 8 (number too large)\nbar 3");
    row("studio bar", kStudio, "cmd+T 3 3 Return", "bar 33");
    row("studio marker", kStudio, "cmd+; 1 0 kpEnter", "marker 10");

    row("wrong closer", kStudio, "cmd+T 3 3 kpEnter cmd+; 1 Return cmd+T 4 Return",
        "wrong Cmd+T 3 3 Enter (key does not belong here)\n"
        "wrong Cmd+; 1 Return (key does not belong here)\nbar 4");
    row("the other DAW's keys", kPro, "cmd+T 3 3 Return",
        "wrong 3 (no entry is open)"); // Once: the rest is swallowed.
    row("opener without Command", kStudio, "T 5 Return", "wrong 5 (no entry is open)");
    row("digit with Command", kPro, "kp= cmd+5", "wrong = Cmd+5 (key does not belong here)");
    row("closer with Command", kPro, "kp= 5 cmd+kpEnter",
        "wrong = 5 Cmd+Enter (key does not belong here)");
    row("digit of the main row", kPro, "kp= other kpEnter",
        "wrong = another key (key does not belong here)");
    row("no number", kPro, "kp= kpEnter kp= 8 kpEnter", "wrong = Enter (no number)\nbar 8");
    row("rest of a wrong sequence", kPro, "kp= 1 Tab 0 5 kpEnter kp= 7 kpEnter",
        "wrong = 1 Tab (key does not belong here)\nbar 7");
    row("recovers at the very key", kPro, "kp= 1 kp= 2 kpEnter kp= 3 kp. 4 kp.",
        "wrong = 1 = (key does not belong here)\nbar 2\n"
        "wrong = 3 . (key does not belong here)\nmarker 4");
    row("point after point", kPro, "kp. kp. 7 kp.", "wrong . . (no number)\nmarker 7");
    row("wrong again after a swallowed rest", kPro, "5 5 kpEnter 6",
        "wrong 5 (no entry is open)\nwrong 6 (no entry is open)");
    row("swallowed Enter does not start", kStudio, "5 kpEnter kpEnter",
        "wrong 5 (no entry is open)\nplay");

    row("operator's single keys", kPro, "Tab 0 kpEnter Return Space", "toggle");
    row("operator's single keys, studio", kStudio, "0 kpEnter Tab Space", "play\ntoggle");
    row("space inside an entry", kPro, "kp= 1 Space", "wrong = 1 Space (key does not belong here)");
}

void LocateParserTest::understandsKeys()
{
    QFETCH(Daw, daw);
    QFETCH(QString, keys);
    QFETCH(QString, events);
    LocateParser parser(daw);
    QCOMPARE(feed(parser, keys).join(QLatin1Char('\n')), events);
}

void LocateParserTest::showsTheEntryBeingTyped()
{
    LocateParser parser(Daw::ProTools);
    QVERIFY(!parser.openPlace());
    feed(parser, QStringLiteral("kp. 1 2"));
    QVERIFY(parser.openPlace() == Place::Marker);
    QCOMPARE(parser.digits(), QStringLiteral("12"));
    feed(parser, QStringLiteral("kp."));
    QVERIFY(!parser.openPlace());
}

VELT_TEST_MAIN(LocateParserTest)
#include "tst_locateparser.moc"
