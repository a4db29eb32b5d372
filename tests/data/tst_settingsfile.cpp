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

// Runs `act` in another process, which returns true if all went well.
pid_t start(const std::function<bool()>& act)
{
    const pid_t child = fork();
    if (child == 0) {
        _exit(act() ? 0 : 1);
    }
    return child;
}

bool endedWell(pid_t child)
{
    int status = -1;
    waitpid(child, &status, 0);
    return status == 0;
}

int valueOf(const QString& path, const QString& key)
{
    int value = 0;
    readSettingsFile(path, [&](const QSettings& file) { value = file.value(key).toInt(); });
    return value;
}

bool setValue(const QString& path, const QString& key, int value, int lockPatienceMs = 5000)
{
    const auto fill = [&](QSettings& file) { file.setValue(key, value); };
    return writeSettingsFile(path, fill, {}, lockPatienceMs);
}

QStringList namesIn(const QString& directory)
{
    return QDir(directory).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

void saveSong(const QString& path, const QString& title)
{
    EditData data;
    data.SongList = {{1, title, {}, 0, 0}};
    data.writeEdit(path);
}

QString firstSongOf(const QString& path)
{
    EditData data;
    data.readEdit(path);
    return data.SongList.empty() ? QString() : data.SongList[0].SongTitle;
}

// A run of the program that saves the standard set list, under each title in turn.
bool run(const QStringList& titles)
{
    return endedWell(start([&] {
        for (const QString& title : titles) {
            saveSong(setListFilePath(), title);
        }
        return firstSongOf(setListFilePath()) == titles.last();
    }));
}

} // namespace

// How files are saved: disks that fail, processes that are killed, two at a time.
class TestSettingsFile : public FileTest
{
    Q_OBJECT

private slots:
    void init()
    {
        FileTest::init();
        QDir(QFileInfo(setListFilePath()).path()).removeRecursively();
    }

    void writesAllOrNothing_data()
    {
        QTest::addColumn<QString>("place");
        QTest::addColumn<int>("room"); // Beside what the new file needs.
        QTest::addColumn<bool>("isWritten");
        const QString old = "old.ini";
        QTest::newRow("room for nothing") << old << -wholeFile.size() << false;
        QTest::newRow("room for a part of the old file") << old << -300 << false;
        QTest::newRow("room for all but the last byte") << old << -1 << false;
        QTest::newRow("room for a part of the end mark") << old << 5 << false;
        QTest::newRow("room enough") << old << 100 << true;
        QTest::newRow("a new file") << "new.ini" << -1 << false;
        QTest::newRow("below a file") << "old.ini/below.ini" << 100 << false;
        QTest::newRow("a directory") << "." << 100 << false;
    }

    void writesAllOrNothing()
    {
        QFETCH(QString, place);
        QFETCH(int, room);
        QFETCH(bool, isWritten);
        const QTemporaryDir home;
        const QString old = home.filePath("old.ini");
        QVERIFY(QFile::rename(fileWith(oldFile), old));
        {
            const FullDisk disk(static_cast<rlim_t>(wholeFile.size() + room));
            const bool result = writeSettingsFile(home.filePath(place), [](QSettings& file) {
                file.setValue("B", 20);
                file.setValue("A", QString(400, 'a'));
                file.setValue("zoo/Z", 1);
            });
            QCOMPARE(result, isWritten);
        }
        QCOMPARE(bytes(old), isWritten ? wholeFile : oldFile);
        QCOMPARE(namesIn(home.path()), QStringList("old.ini"));
    }

    void failedValuesAreForgotten()
    {
        const QString path = fileWith("[General]\nMode=1\n");
        {
            const FullDisk disk(300);
            QVERIFY(!writeSettingsFile(path, [](QSettings& settings) {
                settings.setValue("Failed", QString(30'000, 'a'));
            }));
        }
        const QByteArray good("[General]\nMode=3\n");
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(good);
        file.close();
        QCOMPARE(valueOf(path, "Mode"), 3);
        QCOMPARE(bytes(path), good);
        QVERIFY(setValue(path, "Next", 4));
        QCOMPARE(bytes(path), good + "Next=4\n");
    }

    void damagedFileIsReadOnFullDisk()
    {
        const QString path = fileWith("[General]\n" + kHarmfulValues + "Mode=2\n");
        const FullDisk disk(0);
        QCOMPARE(valueOf(path, "Mode"), 2);
    }

    void linksAndPermissionsStay()
    {
        const QString path = fileWith("[General]\nMode=1\n");
        const QString link = freshPath();
        QVERIFY(QFile::link(path, link));
        QCOMPARE(chmod(qPrintable(path), 0640), 0);
        QVERIFY(setValue(link, "Mode", 2));
        QCOMPARE(QFileInfo(link).symLinkTarget(), path);
        QCOMPARE(valueOf(path, "Mode"), 2);
        struct stat status = {};
        QCOMPARE(stat(qPrintable(path), &status), 0);
        QCOMPARE(status.st_mode & 0777U, 0640U);
    }

    void writeProtectedFileStays()
    {
        const QString path = fileWith("[General]\nMode=1\n");
        constexpr uid_t kNobody = 65534; // In place of root, who can write to every file.
        const bool isRoot = chown(qPrintable(dir.path()), kNobody, 0) == 0;
        QCOMPARE(chown(qPrintable(path), isRoot ? kNobody : getuid(), getgid()), 0);
        using State = SettingsFileState;
        for (const auto& [mode, modeOfDirectory, state] :
             {std::tuple(0200U, 0700U, State::Unreadable),
              {0400U, 0700U, State::ReadOnly},
              {0600U, 0500U, State::ReadOnly},
              {0600U, 0700U, State::Usable}}) {
            QCOMPARE(chmod(qPrintable(path), mode), 0);
            QCOMPARE(chmod(qPrintable(dir.path()), modeOfDirectory), 0);
            const pid_t user = start([&, expected = state] {
                return (!isRoot || setuid(kNobody) == 0) && settingsFileState(path) == expected &&
                       setValue(path, "Mode", 2) == (expected == State::Usable);
            });
            QVERIFY(endedWell(user));
        }
    }

    void processesDoNotUndoEachOthersSaves()
    {
        constexpr int kPatientMs = 120'000; // The lock is not fair.
        const QString path = freshPath();
        const auto saveEach = [&path](const QString& group) {
            bool isSaved = true;
            for (int n = 0; n < 100; ++n) {
                isSaved = setValue(path, group + QString::number(n), n, kPatientMs) && isSaved;
            }
            return isSaved;
        };
        const pid_t child = start([&] { return saveEach("A"); });
        QVERIFY(saveEach("B"));
        QVERIFY(endedWell(child));
        qsizetype keys = 0;
        readSettingsFile(path, [&](const QSettings& file) { keys = file.allKeys().size(); });
        QCOMPARE(keys, 200);
    }

    void stoppedSaveFailsTheNextAndKilledOneDoesNot()
    {
        const QTemporaryDir home;
        const QString path = home.filePath("a.ini");
        const QString mode = "Mode";
        QVERIFY(setValue(path, mode, 1));
        const pid_t child = start([&] {
            return writeSettingsFile(path, [&](QSettings& file) {
                file.setValue(mode, 2);
                file.sync();
                raise(SIGSTOP);
            });
        });
        int status = 0;
        waitpid(child, &status, WUNTRACED);
        const bool isSavedBeside = setValue(path, mode, 3, 0);
        kill(child, SIGKILL);
        QVERIFY(WIFSTOPPED(status));
        QVERIFY(!isSavedBeside);
        QVERIFY(!endedWell(child));
        QCOMPARE(valueOf(path, mode), 1);
        QVERIFY(namesIn(home.path()).size() > 1);
        QVERIFY(setValue(path, mode, 4));
        QCOMPARE(valueOf(path, mode), 4);
        QCOMPARE(namesIn(home.path()), QStringList("a.ini"));
    }

    void firstSaveOfARunLeavesABackup()
    {
        const QString directory = QFileInfo(setListFilePath()).path();
        QVERIFY(run({"One", "Two"}));
        QCOMPARE(namesIn(directory), QStringList("VELTSetting.ini"));
        QVERIFY(run({"Three", "Four"}));
        QCOMPARE(firstSongOf(setListBackupPath()), QString("Two"));
        QVERIFY(QFile::remove(setListFilePath()));
        QVERIFY(run({"Five"}));
        QCOMPARE(firstSongOf(setListBackupPath()), QString("Two"));
        QCOMPARE(namesIn(directory), (QStringList{"VELTSetting-backup.ini", "VELTSetting.ini"}));
    }

    void failedSaveLeavesTheBackupToTheNext()
    {
        QVERIFY(run({QString(200, '1')}));
        QVERIFY(run({QString(200, '2')}));
        const QByteArray backup = bytes(setListBackupPath());
        const QByteArray saved = bytes(setListFilePath());
        QVERIFY(endedWell(start([&] {
            {
                const FullDisk disk(200);
                saveSong(setListFilePath(), "Three");
            }
            const bool isKept = bytes(setListBackupPath()) == backup;
            saveSong(setListFilePath(), "Four");
            return isKept;
        })));
        QCOMPARE(bytes(setListBackupPath()), saved);
        QCOMPARE(firstSongOf(setListFilePath()), QString("Four"));
    }

    void backupThatFailsStopsNothing()
    {
        QVERIFY(QDir().mkpath(setListBackupPath() + "/in the way"));
        QVERIFY(run({"One"}));
        QVERIFY(run({"Two"}));
    }

    void otherFilesGetNoBackup()
    {
        QVERIFY(run({"One"}));
        QVERIFY(endedWell(start([this] {
            const QString other = fileWith(oldFile);
            saveSong(other, "Two");
            const bool isNone = !QFile::exists(setListBackupPath());
            saveSong(setListFilePath(), "Three");
            return isNone;
        })));
        QCOMPARE(firstSongOf(setListBackupPath()), QString("One"));
    }

private:
    const QByteArray longLine = "A=" + QByteArray(400, 'a') + '\n';
    const QByteArray oldFile = "[General]\n" + longLine + "Z=1\n\n[zoo]\nZ=1\n";
    const QByteArray wholeFile = "[General]\n" + longLine + "B=20\nZ=1\n\n[zoo]\nZ=1\n";
};

VELT_TEST_MAIN(TestSettingsFile)
#include "tst_settingsfile.moc"
