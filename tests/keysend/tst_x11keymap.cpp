// SPDX-License-Identifier: MIT
#include "mackeys.h"
#include "testcase.h"
#include "x11keymap.h"

namespace {

// Some keys of an American keyboard, from keycode 8 on, with two levels of two groups each.
struct KeyMap
{
    KeyMap()
    {
        set(28, 't', 'T');
        set(47, ';', ':');
        set(91, 0xff9f, 0xffae); // KP_Delete, KP_Decimal
        set(90, 0xff9e, 0xffb0); // KP_Insert, KP_0
        set(60, 0xffae, 0xffae); // A keypad point that real keyboards do not have.
        set(kNumLockKey, 0xff7f, 0);
    }
    void set(std::size_t keycode, xcb_keysym_t plain, xcb_keysym_t shifted, std::size_t group = 0)
    {
        keysyms[(keycode - 8) * 4 + 2 * group] = plain;
        keysyms[(keycode - 8) * 4 + 2 * group + 1] = shifted;
    }
    // The keycode, and 0x100 for Shift, 0x1000 for Mod2, 0x2000 for Mod3; 0 if there is none.
    [[nodiscard]] int stroke(xcb_keysym_t keysym) const
    {
        std::vector<xcb_keycode_t> modifierKeys(16); // Two for each.
        modifierKeys[numLockRow * 2 + 1] = kNumLockKey;
        const X11KeyMap map(8, 4, keysyms, modifierKeys);
        const auto found = map.stroke(*findMacKeyOfKeysym(keysym));
        return (found.state << 8) + found.keycode;
    }

    static constexpr xcb_keycode_t kNumLockKey = 77;
    std::vector<xcb_keysym_t> keysyms = std::vector<xcb_keysym_t>(248UL * 4);
    std::size_t numLockRow = 4;
};

} // namespace

class TestX11KeyMap : public TestCase
{
    Q_OBJECT

private slots:
    void knowsTheKeys_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<xcb_keysym_t>("keysym");
        QTest::addColumn<int>("keycode"); // Without a key map.
        QTest::newRow("T") << 0x11 << 0x74U << 28;
        QTest::newRow("Return") << 0x24 << 0xff0dU << 36;
        QTest::newRow(";") << 0x29 << 0x3bU << 47;
        QTest::newRow("Tab") << 0x30 << 0xff09U << 23;
        QTest::newRow("Space") << 0x31 << 0x20U << 65;
        QTest::newRow(".") << 0x41 << 0xffaeU << 91;
        QTest::newRow("Enter") << 0x4c << 0xff8dU << 104;
        QTest::newRow("=") << 0x51 << 0xffbdU << 125;
        constexpr int kKeycodes[] = {90, 87, 88, 89, 83, 84, 85, 79, 80, 81};
        for (int digit = 0; digit <= 9; ++digit) {
            QTest::newRow(qPrintable(QString::number(digit)))
                << 0x52 + digit + (digit >= 8 ? 1 : 0) << 0xffb0U + static_cast<unsigned>(digit)
                << kKeycodes[digit];
        }
    }
    void knowsTheKeys()
    {
        QFETCH(int, code);
        QFETCH(xcb_keysym_t, keysym);
        QCOMPARE(findMacKey(code), findMacKeyOfKeysym(keysym));
        const QByteArray name = findMacKey(code)->name;
        QCOMPARE(name, QTest::currentDataTag());
        QTEST(int(X11KeyMap(8, 0, {}, {}).stroke(*findMacKey(code)).keycode), "keycode");
        bool isDigit = false;
        const int digit = name.toInt(&isDigit);
        QCOMPARE(keypadDigit(code), isDigit ? digit : -1);
    }

    void findsTheStroke()
    {
        KeyMap map;
        QCOMPARE(map.stroke('t'), 28);
        QCOMPARE(map.stroke(0xffb0), 0x1000 + 90);
        QCOMPARE(map.stroke(0xffae), 0x1000 + 91); // Where it is on real keyboards.
        QCOMPARE(map.stroke(0xffbd), 125);         // On no key: its usual place.
        map.numLockRow = 5;
        QCOMPARE(map.stroke(0xffb0), 0x2000 + 90);
        map.set(KeyMap::kNumLockKey, 0, 0);
        QCOMPARE(map.stroke(0xffb0), 0x100 + 90);

        KeyMap german;
        german.set(47, 0xf6, 0xd6); // odiaeresis
        german.set(59, ',', ';');
        german.set(24, ';', ':', 1);    // The second group does not count.
        german.set(91, 0xff9f, 0xffac); // KP_Separator
        QCOMPARE(german.stroke(';'), 0x100 + 59);
        QCOMPARE(german.stroke(0xffae), 0x1000 + 60);
    }
};

VELT_TEST_MAIN(TestX11KeyMap)
#include "tst_x11keymap.moc"
