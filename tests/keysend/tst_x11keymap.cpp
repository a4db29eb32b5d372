// SPDX-License-Identifier: MIT
#include "testcase.h"
#include "x11keymap.h"

namespace {

constexpr int kFirst = 8;
constexpr std::size_t kPerKeycode = 4; // Two levels of two groups.
constexpr int kNumLockKey = 77;
constexpr int kShift = 1;
constexpr int kMod2 = 1 << 4;
constexpr int kMod3 = 1 << 5;

// Key maps differ from the one of an American keyboard by what a row says.
struct KeyMap
{
    KeyMap()
    {
        set(28, 't', 'T');
        set(47, ';', ':');
        set(91, 0xff9f, 0xffae);  // KP_Delete, KP_Decimal
        set(90, 0xff9e, 0xffb0);  // KP_Insert, KP_0
        set(129, 0xffae, 0xffae); // A keypad point that real keyboards do not have.
        set(kNumLockKey, 0xff7f, 0);
    }
    void set(int keycode, xcb_keysym_t plain, xcb_keysym_t shifted)
    {
        const std::size_t at = static_cast<std::size_t>(keycode - kFirst) * kPerKeycode;
        keysyms[at] = plain;
        keysyms[at + 1] = shifted;
    }
    [[nodiscard]] X11KeyMap read() const
    {
        std::vector<xcb_keycode_t> rows(16); // Two keys for each modifier.
        rows[0] = 50;                        // Shift
        if (numLockRow) {
            rows[numLockRow * 2 + 1] = kNumLockKey;
        }
        return {kFirst, kPerKeycode, keysyms, rows};
    }

    std::vector<xcb_keysym_t> keysyms = std::vector<xcb_keysym_t>(248 * kPerKeycode);
    std::size_t numLockRow = 4;
};

} // namespace

Q_DECLARE_METATYPE(KeyMap)

class X11KeyMapTest : public TestCase
{
    Q_OBJECT

private slots:
    void findsTheStroke_data();
    void findsTheStroke();
    void knowsOnlyItsKeys();
};

void X11KeyMapTest::findsTheStroke_data()
{
    QTest::addColumn<KeyMap>("map");
    QTest::addColumn<uint>("keysym");
    QTest::addColumn<int>("keycode");
    QTest::addColumn<int>("state");

    KeyMap plain;
    QTest::newRow("letter") << plain << uint('t') << 28 << 0;
    QTest::newRow("digit with Num Lock") << plain << 0xffb0U << 90 << kMod2;
    QTest::newRow("point where it is, not on 129") << plain << 0xffaeU << 91 << kMod2;
    QTest::newRow("missing: usual place") << plain << 0xffbdU << 125 << 0;
    QTest::newRow("missing digit: with Num Lock") << plain << 0xffb9U << 81 << kMod2;

    KeyMap german;
    german.set(47, 0xf6, 0xd6); // odiaeresis
    german.set(59, ',', ';');
    german.set(91, 0xff9f, 0xffac); // KP_Separator
    QTest::newRow("shifted elsewhere") << german << uint(';') << 59 << kShift;
    QTest::newRow("point elsewhere") << german << 0xffaeU << 129 << kMod2;

    KeyMap secondGroup;
    secondGroup.set(47, 0x6de, 0x6fe);
    secondGroup.keysyms[(24 - kFirst) * kPerKeycode + 2] = ';';
    QTest::newRow("other group does not count") << secondGroup << uint(';') << 47 << 0;

    KeyMap moved;
    moved.numLockRow = 5;
    QTest::newRow("Num Lock elsewhere") << moved << 0xffb0U << 90 << kMod3;
    moved.numLockRow = 0;
    QTest::newRow("no Num Lock: Shift") << moved << 0xffb0U << 90 << kShift;

    KeyMap digitsOnly;
    digitsOnly.set(90, 0xffb0, 0xffb0);
    digitsOnly.numLockRow = 0;
    QTest::newRow("digit without level") << digitsOnly << 0xffb0U << 90 << 0;
}

void X11KeyMapTest::findsTheStroke()
{
    QFETCH(KeyMap, map);
    QFETCH(uint, keysym);
    const auto stroke = map.read().stroke(keysym);
    QVERIFY(stroke);
    QTEST(int(stroke->keycode), "keycode");
    QTEST(int(stroke->state), "state");
}

void X11KeyMapTest::knowsOnlyItsKeys()
{
    QVERIFY(!KeyMap().read().stroke('T'));
    QVERIFY(!KeyMap().read().stroke(0));
    QCOMPARE(int(X11KeyMap(kFirst, 0, {}, {}).stroke('t')->keycode), 28); // A server may be bare.
}

VELT_TEST_MAIN(X11KeyMapTest)
#include "tst_x11keymap.moc"
