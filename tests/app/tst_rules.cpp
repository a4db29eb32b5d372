// SPDX-License-Identifier: MIT
#include "run.h"
#include "testcase.h"
#include "windowgeometry.h"

#include <QRect>

Q_DECLARE_METATYPE(Run)

namespace {

// A letter is a song, a blank a space, an x an entry of an unknown kind.
std::vector<EditDataSet> setList(const QString& kinds)
{
    std::vector<EditDataSet> entries;
    for (const QChar kind : kinds) {
        EditDataSet entry;
        entry.SetType = kind == ' ' ? kSetTypeSpace : kind == 'x' ? 5 : kSetTypeSong;
        entries.push_back(entry);
    }
    return entries;
}

} // namespace

// The rules of a run, and where a window is put.
class TestRules : public TestCase
{
    Q_OBJECT

private slots:
    void nextPos_data()
    {
        QTest::addColumn<QString>("entries");
        QTest::addColumn<int>("pos");
        QTest::addColumn<int>("next");
        QTest::newRow("the following") << "ab" << 0 << 1;
        QTest::newRow("from the start") << "ab" << -1 << 0;
        QTest::newRow("over spaces") << "a  b" << 0 << 3;
        QTest::newRow("over an unknown kind") << "axb" << 0 << 2;
        QTest::newRow("after the last") << "ab " << 1 << -1;
        QTest::newRow("outside") << "ab" << 7 << -1;
        QTest::newRow("below -1") << "ab" << -2 << -1;
        QTest::newRow("empty") << "" << -1 << -1;
    }

    void nextPos()
    {
        QFETCH(QString, entries);
        QFETCH(int, pos);
        QTEST(Run::getNextPos(pos, setList(entries)), "next");
    }

    void afterAnEdit_data()
    {
        QTest::addColumn<Run>("after");
        QTest::addColumn<Run>("expected");
        const auto entries = setList("ab c");
        const Run running{true, 0, 1};
        QTest::newRow("both") << running.moved(2, 3, setList("  bc")) << Run{true, 2, 3};
        QTest::newRow("a song in between") << running.moved(0, 2, entries) << Run{true, 0, 1};
        QTest::newRow("the sent has gone") << running.moved(-1, 0, entries) << Run{true, -1, 0};
        QTest::newRow("the next has gone")
            << running.moved(0, -1, setList("a ")) << Run{false, 0, -1};
        QTest::newRow("both have gone") << running.moved(-1, -1, entries) << Run{false, -1, -1};
        QTest::newRow("a run that began on a space")
            << Run{true, -1, -1}.moved(-1, -1, entries) << Run{true, -1, -1};
        QTest::newRow("no run") << Run{false, 0, -1}.moved(1, -1, entries) << Run{false, 1, -1};
    }

    void afterAnEdit()
    {
        QFETCH(Run, after);
        QFETCH(Run, expected);
        QCOMPARE(after.sentPos, expected.sentPos);
        QCOMPARE(after.nextPos, expected.nextPos);
        QCOMPARE(after.operationOn, expected.operationOn);
    }

    void place_data()
    {
        QTest::addColumn<QRect>("stored");
        QTest::addColumn<QRect>("placed");
        // Screens: 1000 x 800, and at its right 600 x 400.
        QTest::newRow("visible") << QRect(100, 50, 500, 700) << QRect(100, 50, 500, 700);
        QTest::newRow("partly visible") << QRect(-490, 50, 500, 700) << QRect(-490, 50, 500, 700);
        QTest::newRow("left") << QRect(-2000, 50, 500, 700) << QRect(0, 50, 500, 700);
        QTest::newRow("above") << QRect(200, -900, 500, 700) << QRect(200, 20, 500, 700);
        QTest::newRow("below the second")
            << QRect(1400, 600, 150, 200) << QRect(1400, 200, 150, 200);
        QTest::newRow("right, too large")
            << QRect(1700, 100, 700, 500) << QRect(1000, 20, 700, 500);
    }

    void place()
    {
        QFETCH(QRect, stored);
        QTEST(visiblePlace(stored, {{0, 0, 1000, 800}, {1000, 0, 600, 400}}, 20), "placed");
    }
};

VELT_TEST_MAIN(TestRules)
#include "tst_rules.moc"
