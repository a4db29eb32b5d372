// SPDX-License-Identifier: MIT
#include "apptestcase.h"
#include "datafiles.h"
#include "displaystatus.h"
#include "editdialog.h"
#include "qmidiin.h"
#include "qmidiout.h"

#include <QDir>
#include <QElapsedTimer>
#include <QMenuBar>
#include <QSettings>
#include <QStandardPaths>

namespace {

QString configDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
}

void write(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(configDirectory());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace

// What the files give a starting window, and what a closing one writes.
class TestStartup : public AppTestCase
{
    Q_OBJECT

private slots:
    void init();
    void firstStart();
    void geometryOfTheFile();
    void geometryIsKept();
    void firstShowIsShown();
    void absentPorts();
    void brokenFiles_data();
    void brokenFiles();
    void largeShowsSwitchAtOnce();
};

void TestStartup::init()
{
    AppTestCase::init();
    QDir(configDirectory()).removeRecursively();
}

void TestStartup::firstStart()
{
    {
        MainWindow window(nullptr);
        QCOMPARE(window.geometry(), QRect(100, 100, 500, 800));
        QCOMPARE(window.windowTitle(), QString("VELT"));
        const auto* table = window.findChild<QTableWidget*>();
        QCOMPARE(table->columnWidth(0), 180);
        QCOMPARE(table->horizontalHeaderItem(0)->text(), QString("SongTitle"));
        QCOMPARE(table->horizontalHeaderItem(1)->text(), QString("Cue"));
        QCOMPARE(table->rowCount(), 0);
        const auto* mode = window.findChildren<QComboBox*>().at(0);
        QCOMPARE(mode->currentText(), QString("AutoLocate"));
        QCOMPARE(window.findChildren<QComboBox*>().at(1)->count(), 0);
        QCOMPARE(window.menuBar()->actions().at(0)->text(), QString("&About"));
        QVERIFY(!QFile::exists(configDirectory()));
    }
    QVERIFY(QFile::exists(displayStatusFilePath())); // Written at the end, and nothing else.
    QVERIFY(!QFile::exists(setListFilePath()));
    QVERIFY(!QFile::exists(preferenceFilePath()));
}

void TestStartup::geometryOfTheFile()
{
    write(displayStatusFilePath(), "[General]\nWidth=0\nX=400\nEditWidth=900\nEditHeight=700\n"
                                   "EditX=20\nEditY=30\nColumnWidth=0\n");
    const MainWindow window(nullptr);
    QCOMPARE(window.geometry(), QRect(100, 100, 500, 800));
    QCOMPARE(window.findChild<EditDialog*>()->geometry(), QRect(20, 30, 900, 700));
}

void TestStartup::geometryIsKept()
{
    {
        Operator op;
        op.window.setGeometry(40, 50, 640, 480);
        op.table->setColumnWidth(0, 222);
    }
    const MainWindow window(nullptr);
    QCOMPARE(window.geometry(), QRect(40, 50, 640, 480));
    QCOMPARE(window.findChild<QTableWidget*>()->columnWidth(0), 222);
}

void TestStartup::firstShowIsShown()
{
    Operator op;
    QCOMPARE(op.shows->count(), 2);
    QCOMPARE(op.shows->currentText(), QString("Friday"));
    QCOMPARE(op.looks(), (QStringList{"plain", "space", "plain", "plain"}));
    QCOMPARE(op.table->item(1, 0)->textAlignment(), int(Qt::AlignHCenter | Qt::AlignVCenter));
    QCOMPARE(op.table->item(1, 1)->foreground().color(), QColor(Qt::black));
    QCOMPARE(op.selectedRow(), 0);
    QVERIFY(op.table->hasFocus());
    QVERIFY(op.button("LOCATE")->isEnabled());
    QVERIFY(!op.isRunning());

    // Saved shows come back from the first, with nothing marked.
    op.press("LOCATE");
    op.press("Reset");
    op.shows->setCurrentIndex(1);
    op.window.setShowData();
    QCOMPARE(op.shows->currentIndex(), 0);
    QCOMPARE(op.looks(), (QStringList{"plain", "space", "plain", "plain"}));
}

void TestStartup::absentPorts()
{
    EditData data = sampleData();
    data.MidiInPort = "Nobody:here";
    data.ShortcutMidiInPort = "Nobody:there";
    data.MidiOutPort = "Nobody:anywhere";
    Operator op(data); // A message box would never be answered.
    op.window.midiReconnect();
    QVERIFY(!op.dawIn->isPortOpen());
    QVERIFY(!op.controllerIn->isPortOpen());
    QVERIFY(!op.window.findChild<QMidiOut*>()->isPortOpen());
    op.press("DAW PLAY");
    op.press("LOCATE");
    QCOMPARE(op.looks(), (QStringList{"sent", "space", "next", "plain"}));
}

void TestStartup::brokenFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QByteArray noise;
    for (unsigned int i = 0, x = 7; i < 20000; ++i, x = x * 1664525 + 1013904223) {
        noise.append(static_cast<char>(x >> 24));
    }
    QTest::newRow("noise") << noise;
    QTest::newRow("huge counts") << QByteArray("[General]\nSongDataNum=2147483647\n"
                                               "ShowDataNum=2147483647\n");
    QTest::newRow("ill-typed") << QByteArray("[General]\nSongDataNum=many\nShowDataNum=1\n"
                                             "[ShowData1]\nShowTitle=a, b\nSetNum=-4\n");
}

void TestStartup::brokenFiles()
{
    QFETCH(QByteArray, bytes);
    write(setListFilePath(), bytes);
    write(preferenceFilePath(), bytes);
    write(displayStatusFilePath(), bytes);
    QElapsedTimer started;
    started.start();
    MainWindow window(nullptr);
    window.show();
    QVERIFY2(started.elapsed() < 30000, qPrintable(QString::number(started.elapsed())));
    QCOMPARE(window.size().isEmpty(), false);
}

void TestStartup::largeShowsSwitchAtOnce()
{
    EditData data;
    for (int i = 1; i <= 5000; ++i) {
        data.SongList.push_back(song(i, QString("Song %1").arg(i), i, i));
    }
    data.ShowList.resize(100);
    for (std::size_t s = 0; s < data.ShowList.size(); ++s) {
        data.ShowList[s].ShowTitle = QString("Show %1").arg(s);
        for (std::size_t i = 0; i < 200; ++i) {
            data.ShowList[s].SetList.push_back(songEntry(data.SongList[s * 40 + i]));
        }
    }
    const Operator op(data);
    QElapsedTimer timer;
    timer.start();
    op.shows->setCurrentIndex(99);
    QCOMPARE(op.table->rowCount(), 200);
    QCOMPARE(op.table->item(199, 0)->text(), QString("Song 4160"));
    QVERIFY2(timer.elapsed() < 50, qPrintable(QString::number(timer.elapsed())));
}

VELT_TEST_MAIN(TestStartup)
#include "tst_startup.moc"
