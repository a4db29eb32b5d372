// SPDX-License-Identifier: MIT
#include "editdata.h"
#include "locatekeys.h"
#include "mainwindow.h"
#include "operatorfixture.h"
#include "testcase.h"

#include <limits>

// What is decided by values alone: the keys of a locate, the process, the next entry.
class TestLocateKeys : public TestCase
{
    Q_OBJECT

private slots:
    void keys_data();
    void keys();
    void process();
    void nextEntry_data();
    void nextEntry();
};

void TestLocateKeys::keys_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("expected"); // Digits as characters, Command as "cmd".
    QTest::addColumn<int>("pauseMs");

    QTest::newRow("Pro Tools, bar") << 0 << 105 << "51 '1 '0 '5 4C" << 100;
    QTest::newRow("Pro Tools, marker") << 1 << 7 << "41 '7 41" << 0;
    QTest::newRow("Studio One, bar") << 2 << 33 << "cmd11 '3 '3 24" << 0;
    QTest::newRow("Studio One, marker") << 3 << 10 << "cmd29 '1 '0 4C" << 0;
    QTest::newRow("zero") << 0 << 0 << "51 '0 4C" << 100;
    QTest::newRow("largest") << 1 << std::numeric_limits<int>::max()
                             << "41 '2 '1 '4 '7 '4 '8 '3 '6 '4 '7 41" << 0;
    QTest::newRow("a sign is no key") << 0 << -5 << "51 '0 4C" << 100;
    QTest::newRow("unknown mode") << 4 << 12 << "" << 0;
    QTest::newRow("negative mode") << -1 << 12 << "" << 0;
}

void TestLocateKeys::keys()
{
    QFETCH(int, mode);
    QFETCH(int, number);
    QFETCH(int, pauseMs);
    const bool byMarker = mode == 1 || mode == 3;
    const EditDataSong located =
        song(1, QString(), byMarker ? 999 : number, byMarker ? number : 999);

    const LocateKeys keys = locateKeys(mode, located);

    QStringList typed;
    for (const KeyStroke& stroke : keys.strokes) {
        typed << (stroke.isVirtualKey ? QString(stroke.isCmd ? "cmd" : "") +
                                            QString::number(stroke.key, 16).toUpper()
                                      : QString("'") + QLatin1Char(static_cast<char>(stroke.key)));
    }
    QTEST(typed.join(QLatin1Char(' ')), "expected");
    QCOMPARE(keys.pauseUs, static_cast<unsigned int>(pauseMs) * 1000);
}

void TestLocateKeys::process()
{
    const QStringList names{"Pro Tools", "Pro Tools", "Studio One", "Studio One", "Pro Tools"};
    for (int mode = 0; mode < names.size(); ++mode) {
        QCOMPARE(dawProcessName(mode), names[mode]);
    }
    QCOMPARE(dawProcessName(-2), "Pro Tools");
}

void TestLocateKeys::nextEntry_data()
{
    QTest::addColumn<QVector<int>>("types");
    QTest::addColumn<int>("pos");
    QTest::addColumn<int>("next");

    QTest::newRow("song follows") << QVector<int>{0, 0} << 0 << 1;
    QTest::newRow("spaces are skipped") << QVector<int>{0, 1, 1, 0} << 0 << 3;
    QTest::newRow("only spaces follow") << QVector<int>{0, 1, 1} << 0 << -1;
    QTest::newRow("last") << QVector<int>{0, 0} << 1 << -1;
    QTest::newRow("from the start") << QVector<int>{1, 0} << -1 << 1;
    QTest::newRow("before the start") << QVector<int>{0} << -2 << -1;
    QTest::newRow("behind the end") << QVector<int>{0} << 7 << -1;
    QTest::newRow("unknown kinds are skipped") << QVector<int>{0, 5, -1, 0} << 0 << 3;
    QTest::newRow("empty") << QVector<int>{} << -1 << -1;
}

void TestLocateKeys::nextEntry()
{
    QFETCH(QVector<int>, types);
    QFETCH(int, pos);
    std::vector<EditDataSet> setList(static_cast<std::size_t>(types.size()));
    for (int i = 0; i < types.size(); ++i) {
        setList[static_cast<std::size_t>(i)].SetType = types[i];
    }
    QTEST(MainWindow::getNextPos(pos, setList), "next");
}

VELT_TEST_MAIN(TestLocateKeys)
#include "tst_locatekeys.moc"
