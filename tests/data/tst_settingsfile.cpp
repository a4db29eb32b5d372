// SPDX-License-Identifier: MIT
#include "datafiles.h"
#include "editdata.h"
#include "filetest.h"
#include "settingsfile.h"

#include <QDir>

#include <csignal>
#include <functional>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// No file can grow beyond a size, as on a disk that gets full.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytesFree)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit tight{bytesFree, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &tight);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before); }
    Q_DISABLE_COPY_MOVE(FullDisk)

private:
    rlimit before{};
};

// Runs `act` in a process of its own, which returns true if all went well.
pid_t fork(const std::function<bool()>& act)
{
    const pid_t child = ::fork();
    if (child == 0) {
        _exit(act() ? 0 : 1);
    }
    return child;
}

int statusOf(pid_t child)
{
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

int valueOf(const QString& path, const QString& key)
{
    int value = 0;
    readSettingsFile(path, [&](const QSettings& file) { value = file.value(key).toInt(); });
    return value;
}

bool setValue(const QString& path, const QString& key, int value)
{
    return writeSettingsFile(path, [&](QSettings& file) { file.setValue(key, value); });
}

// Saves 100 times, under a key that another process does not use, and looks whether its own value
// and those of the other stay.
bool saveBeside(const QString& path, const QString& ownKey, const QString& otherKey)
{
    int other = 0;
    for (int n = 1; n <= 100; ++n) {
        if (!setValue(path, ownKey, n) || valueOf(path, ownKey) != n ||
            valueOf(path, otherKey) < other) {
            return false;
        }
        other = valueOf(path, otherKey);
    }
    return true;
}

QStringList namesIn(const QString& directory)
{
    return QDir(directory).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

EditData dataWithSong(const QString& title)
{
    EditData data;
    data.SongList = {{1, title, {}, 0, 0}};
    return data;
}

QString firstSongOf(const QString& path)
{
    EditData data;
    data.readEdit(path);
    return data.SongList.empty() ? QString() : data.SongList[0].SongTitle;
}

QString standardDirectory()
{
    return QFileInfo(setListFilePath()).path();
}

bool saveSongs(const QStringList& titles)
{
    for (const QString& title : titles) {
        dataWithSong(title).writeEdit(setListFilePath());
    }
    return firstSongOf(setListFilePath()) == titles.last();
}

// A run of the program that saves set lists.
pid_t run(const QStringList& titles)
{
    return fork([&] { return saveSongs(titles); });
}

} // namespace

// How files are saved: disks that fail, processes that are killed, two at a time.
class SettingsFileTest : public FileTest
{
    Q_OBJECT

private slots:
    void init()
    {
        FileTest::init();
        QDir(standardDirectory()).removeRecursively();
    }

    void failedWriteChangesNothing_data()
    {
        QTest::addColumn<QString>("place");
        QTest::addColumn<qlonglong>("bytesFree");
        const auto row = [](const char* name, const char* place, qlonglong bytesFree) {
            QTest::newRow(name) << QString::fromLatin1(place) << bytesFree;
        };
        row("no room", "old.ini", 0);
        row("room for a part", "old.ini", 300);
        row("no room for a new file", "new.ini", 300);
        row("below a file", "old.ini/below.ini", 1 << 20);
        row("a directory", ".", 1 << 20);
    }

    void failedWriteChangesNothing()
    {
        QFETCH(QString, place);
        QFETCH(qlonglong, bytesFree);
        const QTemporaryDir home;
        const QString old = home.filePath(QStringLiteral("old.ini"));
        dataWithSong(QStringLiteral("Old")).writeEdit(old);
        const QByteArray before = bytes(old);
        const QString path = home.filePath(place);
        const QString oldSong = firstSongOf(path);
        EditData data = dataWithSong(QString(300, QLatin1Char('a')));
        data.SongList.push_back({});
        {
            const FullDisk disk(static_cast<rlim_t>(bytesFree));
            data.writeEdit(path);
        }
        QCOMPARE(data.SongList.size(), 1U); // The untitled one goes all the same.
        QCOMPARE(namesIn(home.path()), QStringList(QStringLiteral("old.ini")));
        QCOMPARE(bytes(old), before);
        QCOMPARE(firstSongOf(path), oldSong);
    }

    void failedValuesAreForgotten()
    {
        const QString path = fileWith("[General]\nMode=1\n");
        {
            const FullDisk disk(300);
            QVERIFY(!writeSettingsFile(path, [](QSettings& settings) {
                settings.setValue(QStringLiteral("Failed"), QString(30'000, QLatin1Char('a')));
            }));
        }
        const QByteArray good("[General]\nMode=3\n");
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(good);
        file.close();
        QCOMPARE(valueOf(path, QStringLiteral("Mode")), 3);
        QCOMPARE(bytes(path), good);
        QVERIFY(setValue(path, QStringLiteral("Next"), 4));
        QCOMPARE(bytes(path), good + "Next=4\n");
    }

    // Whichever is the first piece that the disk does not take.
    void noPartOfAFileIsTakenForTheWhole()
    {
        const QByteArray longLine = "A=" + QByteArray(400, 'a') + '\n';
        const QByteArray old = "[General]\n" + longLine + "Z=1\n\n[zoo]\nZ=1\n";
        const QByteArray whole = "[General]\n" + longLine + "B=20\nZ=1\n\n[zoo]\nZ=1\n";
        constexpr int kMostSpare = 30; // For what is in the staged file alone.
        for (int bytesFree = old.size() - kMostSpare; bytesFree < whole.size() + kMostSpare;
             ++bytesFree) {
            const QString path = fileWith(old);
            bool isWritten = false;
            {
                const FullDisk disk(static_cast<rlim_t>(bytesFree));
                isWritten = setValue(path, QStringLiteral("B"), 20);
            }
            QCOMPARE(bytes(path), isWritten ? whole : old);
        }
    }

    void damagedFileIsReadOnFullDisk()
    {
        const QString path = fileWith("[General]\n" + kHarmfulValues + "Mode=2\n");
        const FullDisk disk(0);
        QCOMPARE(valueOf(path, QStringLiteral("Mode")), 2);
    }

    void linksAndPermissionsStay()
    {
        const QString path = fileWith("[General]\nMode=1\n");
        const QString link = freshPath();
        QVERIFY(QFile::link(path, link));
        QCOMPARE(chmod(qPrintable(path), 0600), 0);
        QVERIFY(setValue(link, QStringLiteral("Mode"), 2));
        QCOMPARE(QFileInfo(link).symLinkTarget(), path);
        QCOMPARE(valueOf(path, QStringLiteral("Mode")), 2);
        struct stat status
        {
        };
        QCOMPARE(stat(qPrintable(path), &status), 0);
        QCOMPARE(status.st_mode & 0777U, 0600U);
    }

    void processesDoNotUndoEachOthersSaves()
    {
        const QString path = freshPath();
        const QString a = QStringLiteral("A");
        const QString b = QStringLiteral("B");
        const pid_t child = fork([&] { return saveBeside(path, a, b); });
        QVERIFY(saveBeside(path, b, a));
        QCOMPARE(statusOf(child), 0);
        QCOMPARE(valueOf(path, a), 100);
        QCOMPARE(valueOf(path, b), 100);
    }

    void killedSaveLeavesNothingInTheWay()
    {
        const QTemporaryDir home;
        const QString path = home.filePath(QStringLiteral("a.ini"));
        QVERIFY(setValue(path, QStringLiteral("Mode"), 1));
        const int status = statusOf(fork([&] {
            return writeSettingsFile(path, [](QSettings& file) {
                file.setValue(QStringLiteral("Mode"), 2);
                file.sync();
                raise(SIGKILL);
            });
        }));
        QVERIFY(WIFSIGNALED(status));
        QCOMPARE(valueOf(path, QStringLiteral("Mode")), 1);
        QVERIFY(namesIn(home.path()).size() > 1);
        QVERIFY(setValue(path, QStringLiteral("Mode"), 3));
        QCOMPARE(namesIn(home.path()), QStringList(QStringLiteral("a.ini")));
    }

    void stoppedSaveFailsTheNext()
    {
        const QString path = fileWith("[General]\nMode=1\n");
        const pid_t child = fork([&] {
            return writeSettingsFile(path, [](QSettings& file) {
                file.setValue(QStringLiteral("Mode"), 2);
                raise(SIGSTOP);
            });
        });
        int status = 0;
        waitpid(child, &status, WUNTRACED);
        QVERIFY(WIFSTOPPED(status));
        QVERIFY(!setValue(path, QStringLiteral("Mode"), 3));
        QCOMPARE(valueOf(path, QStringLiteral("Mode")), 1);
        kill(child, SIGCONT);
        QCOMPARE(statusOf(child), 0);
        QCOMPARE(valueOf(path, QStringLiteral("Mode")), 2);
    }

    void firstSaveOfARunLeavesABackup()
    {
        QCOMPARE(statusOf(run({QStringLiteral("One"), QStringLiteral("Two")})), 0);
        QCOMPARE(namesIn(standardDirectory()), QStringList(QStringLiteral("VELTSetting.ini")));
        QCOMPARE(statusOf(run({QStringLiteral("Three"), QStringLiteral("Four")})), 0);
        QCOMPARE(firstSongOf(setListBackupPath()), QStringLiteral("Two"));
        QCOMPARE(statusOf(run({QStringLiteral("Five")})), 0);
        QCOMPARE(firstSongOf(setListBackupPath()), QStringLiteral("Four"));
        QVERIFY(QFile::remove(setListFilePath()));
        QCOMPARE(statusOf(run({QStringLiteral("Six")})), 0);
        QCOMPARE(firstSongOf(setListBackupPath()), QStringLiteral("Four"));
        QCOMPARE(namesIn(standardDirectory()),
                 (QStringList{QStringLiteral("VELTSetting-backup.ini"),
                              QStringLiteral("VELTSetting.ini")}));
    }

    void partOfABackupReplacesNone()
    {
        QCOMPARE(statusOf(run({QString(200, QLatin1Char('1'))})), 0);
        QCOMPARE(statusOf(run({QString(200, QLatin1Char('2'))})), 0);
        const QByteArray backup = bytes(setListBackupPath());
        const pid_t child = fork([] {
            const FullDisk disk(200);
            return saveSongs({QStringLiteral("Three")});
        });
        QVERIFY(statusOf(child) != 0);
        QCOMPARE(bytes(setListBackupPath()), backup);
    }

    void backupThatFailsStopsNothing()
    {
        QVERIFY(QDir().mkpath(setListBackupPath() + QLatin1String("/in the way")));
        QCOMPARE(statusOf(run({QStringLiteral("One")})), 0);
        QCOMPARE(statusOf(run({QStringLiteral("Two")})), 0);
    }

    void otherFilesGetNoBackup()
    {
        QCOMPARE(statusOf(run({QStringLiteral("One")})), 0);
        const pid_t child = fork([] {
            const QString other = standardDirectory() + QLatin1String("/other.ini");
            dataWithSong(QStringLiteral("Two")).writeEdit(other);
            dataWithSong(QStringLiteral("Three")).writeEdit(other);
            return !QFile::exists(setListBackupPath()) && saveSongs({QStringLiteral("Four")});
        });
        QCOMPARE(statusOf(child), 0);
        QCOMPARE(firstSongOf(setListBackupPath()), QStringLiteral("One"));
    }
};

VELT_TEST_MAIN(SettingsFileTest)
#include "tst_settingsfile.moc"
