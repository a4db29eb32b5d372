// SPDX-License-Identifier: MIT
#include "datafiles.h"
#include "displaystatus.h"
#include "filetest.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QFileInfo>

class DataFilesTest : public FileTest
{
    Q_OBJECT

private slots:
    void filesLieInTheConfigurationDirectory()
    {
        const QString home = qEnvironmentVariable("XDG_CONFIG_HOME") + QLatin1String("/VELT/");
        QCOMPARE(setListFilePath(), home + QLatin1String("VELTSetting.ini"));
        QCOMPARE(preferenceFilePath(), home + QLatin1String("VELTPreference.ini"));
        QCOMPARE(displayStatusFilePath(), home + QLatin1String("DispStatus.ini"));
        QVERIFY(!QFileInfo::exists(home));
        writeDisplayStatus(displayStatusFilePath(), {});
        QVERIFY(QFileInfo::exists(displayStatusFilePath()));
    }

    void onlyAbandonedLocksAreRemoved()
    {
        const QString path = freshPath();
        QFile lock(path + QLatin1String(".lock"));
        const auto makeLock = [&lock](const QByteArray& content, int ageSeconds) {
            lock.open(QIODevice::WriteOnly);
            lock.write(content);
            lock.flush();
            lock.setFileTime(QDateTime::currentDateTime().addSecs(-ageSeconds),
                             QFileDevice::FileModificationTime);
            lock.close();
        };
        makeLock("1\nvelt\n", 10);
        removeAbandonedLock(path);
        QVERIFY(lock.exists());
        for (const int ageSeconds : {0, 10, -100}) { // The clock may have been set back since.
            makeLock({}, ageSeconds);
            QElapsedTimer timer;
            timer.start();
            writeDisplayStatus(path, {});
            QVERIFY(timer.elapsed() < 5'000); // The settings class would have waited for 30 s.
            QVERIFY(bytes(path).contains("Width=500") && !lock.exists());
        }
    }

    void geometrySurvives()
    {
        const QString path = freshPath();
        writeDisplayStatus(path, {{-5, 20, 640, 480}, 77, {1, 2, 3, 4}});
        QCOMPARE(bytes(path), QByteArray("[General]\nColumnWidth=77\nEditHeight=4\nEditWidth=3\n"
                                         "EditX=1\nEditY=2\nHeight=480\nWidth=640\nX=-5\nY=20\n"));
        const DisplayStatus read = readDisplayStatus(fileWith(bytes(path)));
        QCOMPARE(read.window, QRect(-5, 20, 640, 480));
        QCOMPARE(read.columnWidth, 77);
        QCOMPARE(read.editor, QRect(1, 2, 3, 4));
    }

    void geometryHasDefaults()
    {
        const QRect window(100, 100, 500, 800);
        for (const auto& [content, expected] : std::initializer_list<std::pair<QByteArray, QRect>>{
                 {"", window},
                 {kHarmfulValues + "Width=a\nHeight=1, 2\nColumnWidth=@Invalid()\n", window},
                 {"Width=0\nX=400\nY=400\nHeight=300\nEditX=5\n", {100, 100, 500, 300}},
                 {"Width=600\nHeight=0\nX=-400\n", {-400, 0, 600, 800}},
                 {"Width=600\nHeight=99999999999\nX=2147483647\nColumnWidth=4294967299\n"
                  "EditWidth=-2147483648\n",
                  {0, 0, 600, 800}}}) {
            const DisplayStatus status = readDisplayStatus(fileWith("[General]\n" + content));
            QCOMPARE(status.window, expected);
            QCOMPARE(status.columnWidth, 180);
            QCOMPARE(status.editor.width(), 0);
        }
    }
};

VELT_TEST_MAIN(DataFilesTest)
#include "tst_datafiles.moc"
