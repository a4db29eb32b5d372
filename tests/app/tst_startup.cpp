// SPDX-License-Identifier: MIT
#include "apptestcase.h"
#include "datafiles.h"
#include "displaystatus.h"
#include "editdialog.h"
#include "qmidiin.h"
#include "qmidiout.h"

#include <QDir>
#include <QElapsedTimer>

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
            WindowDriver velt;
            velt.window.setGeometry(40, 50, 640, 480);
            velt.table->setColumnWidth(0, 222);
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

    void firstShowIsShown()
    {
        WindowDriver velt;
        QCOMPARE(velt.rowMarks(), kPlain);
        QCOMPARE(velt.table->item(1, 0)->textAlignment(), int(Qt::AlignHCenter | Qt::AlignVCenter));
        QCOMPARE(velt.table->item(1, 1)->foreground().color(), QColor(Qt::black));
        QCOMPARE(velt.selectedRow(), 0);
        QVERIFY(velt.table->hasFocus());
        QVERIFY(velt.button("LOCATE")->isEnabled());

        // Saved shows come back from the first, with nothing marked.
        velt.press("LOCATE");
        velt.shows->setCurrentIndex(1);
        velt.window.setShowData();
        QCOMPARE(velt.shows->currentText(), QString("Friday"));
        QCOMPARE(velt.rowMarks(), kPlain);
        QVERIFY(!velt.isRunning());
    }

    void absentPorts()
    {
        EditData data = sampleData();
        data.MidiInPort = data.ShortcutMidiInPort = data.MidiOutPort = "Nobody:here";
        WindowDriver velt(data); // A message box would never be answered.
        velt.window.midiReconnect();
        QVERIFY(!velt.dawIn->isPortOpen() && !velt.controllerIn->isPortOpen());
        QVERIFY(!velt.window.findChild<QMidiOut*>()->isPortOpen());
        velt.press("DAW PLAY");
        velt.press("LOCATE");
        QCOMPARE(velt.rowMarks(), kFirstSent);
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
        const WindowDriver velt(data);
        QElapsedTimer timer;
        timer.start();
        velt.shows->setCurrentIndex(1);
        QCOMPARE(velt.table->rowCount(), 200);
        QVERIFY2(timer.elapsed() < 50, qPrintable(QString::number(timer.elapsed())));
    }
};

VELT_TEST_MAIN(TestStartup)
#include "tst_startup.moc"
