// SPDX-License-Identifier: MIT
#include "datafiles.h"
#include "modalscript.h"
#include "settingsfile.h"
#include "testcase.h"
#include "windowdriver.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <atomic>
#include <csignal>
#include <random>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

QByteArray bytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A small disk over the directory of the data files, gone with the object.
class SmallDisk
{
public:
    SmallDisk()
    {
        QDir().mkpath(directory);
        isMounted = mount("velt-faults", path.constData(), "tmpfs", 0, "size=64k") == 0;
    }
    ~SmallDisk() { umount2(path.constData(), MNT_DETACH); }
    Q_DISABLE_COPY_MOVE(SmallDisk)

    void setReadOnly(bool on) const
    {
        const unsigned long flags = on ? MS_REMOUNT | MS_RDONLY : MS_REMOUNT;
        QCOMPARE(mount(nullptr, path.constData(), nullptr, flags, nullptr), 0);
    }
    void setFull(bool on) const
    {
        QFile filler(directory + "/filler");
        if (!on) {
            QVERIFY(filler.remove());
            return;
        }
        QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        while (filler.write(QByteArray(512, 'x')) > 0) {
        }
    }

    bool isMounted = false;

private:
    QString directory = QFileInfo(setListFilePath()).path();
    QByteArray path = directory.toLocal8Bit();
};

void typeCue(const WindowDriver& velt, int row, const char* text)
{
    QTest::keyClicks(velt.edit(row, 1), text);
    QTest::keyClick(velt.openEditor(), Qt::Key_Return);
    QTRY_VERIFY(!velt.openEditor());
}

void confirmMode(const WindowDriver& velt, const char* radioButton)
{
    ModalScript script;
    script.expect([radioButton](QWidget* dialog) {
        dialog->findChild<QAbstractButton*>(radioButton)->click();
        dialog->findChild<QAbstractButton*>("pushOK")->click();
    });
    velt.press("Pref.");
}

// A set-list file with the number of its version in every text.
class Versions
{
public:
    void save(int version) const
    {
        const QString stamp = stampOf(version);
        EditData data;
        data.ShowList = {{stamp, stamp, {}}};
        for (int id = 1; id <= 200; ++id) {
            const EditDataSong song{id, stamp, stamp, id, id};
            data.SongList.push_back(song);
            data.ShowList[0].SetList.push_back({kSetTypeSong, song, {}, stamp});
        }
        data.writeEdit(path);
    }
    bool isWhole(int version) const
    {
        return bytes(path) == QByteArray(first).replace(stampOf(0), stampOf(version));
    }
    int leftovers() const // Files beside it.
    {
        const QDir dir(home.path(), {}, QDir::NoSort,
                       QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        return static_cast<int>(dir.count()) - 1;
    }

private:
    static QByteArray stampOf(int version)
    {
        return '<' + QByteArray::number(version).rightJustified(6, '0') + '>';
    }

    const QTemporaryDir home;
    const QString path = home.filePath("VELTSetting.ini");
    const QByteArray first = (save(0), bytes(path));
};

// How far the saving process is, in memory that it shares with the one that kills it.
struct Progress
{
    std::atomic<int> started{0};      // The version whose saving began last.
    std::atomic<int> saved{0};        // The version that was saved last.
    std::atomic<bool> isBegun{false}; // The first save of this life is done.
};

[[noreturn]] void saveForEver(const Versions& files, Progress& progress)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (;;) {
        files.save(++progress.started);
        progress.saved = progress.started.load();
        progress.isBegun = true;
    }
}

} // namespace

// What the data files stand on fails: nothing is lost.
class TestFaults : public TestCase
{
    Q_OBJECT

private slots:
    void diskFails_data()
    {
        QTest::addColumn<bool>("isFull");
        QTest::newRow("full") << true;
        QTest::newRow("read-only") << false;
    }

    void diskFails()
    {
        QFETCH(bool, isFull);
        const SmallDisk disk;
        if (!disk.isMounted) {
            QSKIP("only root can mount a disk");
        }
        const auto fail = [&](bool on) { isFull ? disk.setFull(on) : disk.setReadOnly(on); };
        const auto files = [] { return bytes(setListFilePath()) + bytes(preferenceFilePath()); };
        const WindowDriver velt; // Its files lie on that disk.
        typeCue(velt, 0, "before");
        confirmMode(velt, "radioProBars");
        const QByteArray before = files();
        QVERIFY(before.contains("Cue=before"));
        fail(true);
        QCOMPARE(settingsFileState(setListFilePath()),
                 isFull ? SettingsFileState::DiskFull : SettingsFileState::ReadOnly);
        {
            const ModalScript noBox; // A failed save says nothing.
            typeCue(velt, 2, "during");
            confirmMode(velt, "radioProMarker");
        }
        fail(false);
        QCOMPARE(settingsFileState(setListFilePath()), SettingsFileState::Usable);
        QCOMPARE(files(), before);
        typeCue(velt, 3, "after");
        confirmMode(velt, "radioProMarker");
        for (const char* text :
             {"Cue=before", "Cue=during", "Cue=after", "SongTitle=Middle", "Mode=1"}) {
            QVERIFY2(files().contains(text), text);
        }
    }

    // A process that saves without a pause is killed again and again.
    void filesAreWholeAfterEachKill()
    {
        constexpr int kKills = 500;
        constexpr int kFirstSaveMs = 4000; // Less than a save waits for a live process.
        const Versions files;
        void* shared = mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE,
                            MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        auto& progress = *new (shared) Progress;
        std::mt19937 random(20'240'229);
        std::uniform_int_distribution<int> lifeUs(0, 40'000); // A save takes some milliseconds.
        int savesKilled = 0;
        int leftovers = 0;
        for (int kill = 1; kill <= kKills; ++kill) {
            progress.isBegun = false;
            progress.started = progress.saved.load();
            const pid_t child = fork();
            if (child == 0) {
                saveForEver(files, progress);
            }
            QElapsedTimer waited;
            waited.start();
            while (!progress.isBegun && !waited.hasExpired(kFirstSaveMs)) {
                std::this_thread::sleep_for(std::chrono::microseconds(200));
            }
            std::this_thread::sleep_for(std::chrono::microseconds(lifeUs(random)));
            ::kill(child, SIGKILL);
            waitpid(child, nullptr, 0);
            QVERIFY2(progress.isBegun, "the first save waits for what the last kill left");
            QVERIFY2(files.isWhole(progress.saved) || files.isWhole(progress.started),
                     qPrintable(QString::number(kill)));
            savesKilled += progress.started != progress.saved ? 1 : 0;
            leftovers += files.leftovers();
        }
        QVERIFY(savesKilled >= kKills / 2);
        QVERIFY(leftovers > 0); // Some were killed while they wrote.
        files.save(0);
        QCOMPARE(files.leftovers(), 0);
        qInfo("%d of %d saves killed, %d files left", savesKilled, progress.saved.load(),
              leftovers);
    }
};

VELT_TEST_MAIN(TestFaults)
#include "tst_faults.moc"
