// SPDX-License-Identifier: MIT
#include "apptestcase.h"
#include "datafiles.h"
#include "displaystatus.h"
#include "editdialog.h"
#include "qmidiin.h"
#include "qmidiout.h"

#include <QDir>
#include <QElapsedTimer>
#include <QScreen>

namespace {

void write(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).path());
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
    void firstStart()
    {
        QDir directory = QFileInfo(displayStatusFilePath()).dir();
        directory.removeRecursively();
        {
            const MainWindow window(nullptr);
            QCOMPARE(window.geometry(), QRect(100, 100, 500, 800));
            QCOMPARE(window.findChild<QTableWidget*>()->columnWidth(0), 180);
            QVERIFY(!directory.exists());
        }
        // Written at the end, and nothing else.
        QCOMPARE(directory.entryList(QDir::Files), QStringList("DispStatus.ini"));
    }

    void geometry()
    {
        {
            Operator op;
            op.window.setGeometry(40, 50, 640, 480);
            op.table->setColumnWidth(0, 222);
        }
        const MainWindow kept(nullptr);
        QCOMPARE(kept.geometry(), QRect(40, 50, 640, 480));
        QCOMPARE(kept.findChild<QTableWidget*>()->columnWidth(0), 222);

        write(displayStatusFilePath(), "[General]\nWidth=0\nX=400\nEditWidth=900\nEditHeight=700\n"
                                       "EditX=20\nEditY=30\nColumnWidth=0\n");
        const MainWindow window(nullptr);
        QCOMPARE(window.geometry(), QRect(100, 100, 500, 800));
        QCOMPARE(window.findChild<EditDialog*>()->geometry(), QRect(20, 30, 900, 700));
    }

    void placeOnADisplayThatIsGone()
    {
        write(displayStatusFilePath(), "[General]\nWidth=500\nHeight=500\nX=-5000\nY=300\n"
                                       "EditWidth=600\nEditHeight=500\nEditX=40\nEditY=9000\n");
        const MainWindow window(nullptr);
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY(screen.contains(window.geometry()));
        QVERIFY(screen.contains(window.findChild<EditDialog*>()->geometry()));
    }

    void longTitleLeavesTheWidth()
    {
        EditData data = sampleData();
        data.ShowList[0].ShowTitle = QString(76, 'W');
        Operator op(data);
        op.window.resize(500, 600);
        QCOMPARE(op.window.width(), 500);
        QCOMPARE(op.window.minimumSizeHint(), Operator().window.minimumSizeHint());
    }

    void firstShowIsShown()
    {
        Operator op;
        QCOMPARE(op.looks(), kPlain);
        QCOMPARE(op.table->item(1, 0)->textAlignment(), int(Qt::AlignHCenter | Qt::AlignVCenter));
        QCOMPARE(op.table->item(1, 1)->foreground().color(), QColor(Qt::black));
        QCOMPARE(op.selectedRow(), 0);
        QVERIFY(op.table->hasFocus());
        QVERIFY(op.button("LOCATE")->isEnabled());

        // Saved shows come back from the first, with nothing marked.
        op.press("LOCATE");
        op.shows->setCurrentIndex(1);
        op.window.setShowData();
        QCOMPARE(op.shows->currentText(), QString("Friday"));
        QCOMPARE(op.looks(), kPlain);
        QVERIFY(!op.isRunning());
    }

    void absentPorts()
    {
        EditData data = sampleData();
        data.MidiInPort = data.ShortcutMidiInPort = data.MidiOutPort = "Nobody:here";
        Operator op(data); // A message box would never be answered.
        op.window.midiReconnect();
        QVERIFY(!op.dawIn->isPortOpen() && !op.controllerIn->isPortOpen());
        QVERIFY(!op.window.findChild<QMidiOut*>()->isPortOpen());
        op.press("DAW PLAY");
        op.press("LOCATE");
        QCOMPARE(op.looks(), kFirstSent);
    }

    void brokenFiles()
    {
        QByteArray noise;
        for (unsigned int i = 0, x = 7; i < 20000; ++i, x = x * 1664525 + 1013904223) {
            noise.append(static_cast<char>(x >> 24));
        }
        write(setListFilePath(), noise);
        write(preferenceFilePath(), noise);
        write(displayStatusFilePath(), noise);
        MainWindow window(nullptr);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
    }

    void largeShowsSwitchAtOnce()
    {
        EditData data = sampleData();
        data.ShowList[1].SetList.assign(200, data.ShowList[0].SetList[0]);
        const Operator op(data);
        QElapsedTimer timer;
        timer.start();
        op.shows->setCurrentIndex(1);
        QCOMPARE(op.table->rowCount(), 200);
        QVERIFY2(timer.elapsed() < 50, qPrintable(QString::number(timer.elapsed())));
    }
};

VELT_TEST_MAIN(TestStartup)
#include "tst_startup.moc"
