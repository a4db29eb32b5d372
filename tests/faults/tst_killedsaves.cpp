// SPDX-License-Identifier: MIT
#include "editdata.h"
#include "testcase.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <atomic>
#include <csignal>
#include <random>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr int kKills = 500;
constexpr unsigned int kSeed = 20'240'229;
constexpr int kLongestLifeUs = 40'000; // Of the saves after the first, each of some milliseconds.
constexpr int kFirstSaveMs = 4000;     // Less than a save waits for a live process.

// What the process that saves tells the one that kills it, in memory that both share.
struct Progress
{
    std::atomic<int> started{0}; // The version whose saving began last.
    std::atomic<int> saved{0};   // The version that was saved last.
    std::atomic<int> isBegun{0}; // The first save of this life is done.
};

// Six digits that appear in every text of both files.
QString stampOf(int version)
{
    return QStringLiteral("<%1>").arg(version, 6, 10, QLatin1Char('0'));
}

EditData dataOf(int version)
{
    constexpr int kSongs = 200;
    const QString stamp = stampOf(version);
    EditData data;
    data.ShowList = {{stamp, stamp, {}}};
    for (int id = 1; id <= kSongs; ++id) {
        const EditDataSong song{id, stamp, stamp, id, id};
        data.SongList.push_back(song);
        data.ShowList[0].SetList.push_back({kSetTypeSong, song, {}, stamp});
    }
    data.MidiInPort = data.ShortcutMidiInPort = data.MidiOutPort = stamp;
    return data;
}

class Files
{
public:
    Files()
    {
        save(0);
        firstSetList = bytes(setList());
        firstPreference = bytes(preference());
    }

    void save(int version) const
    {
        EditData data = dataOf(version);
        data.writeEdit(setList());
        data.writePreference(preference());
    }

    // The set list is saved first.
    [[nodiscard]] bool areWhole(int older, int newer) const
    {
        return (isWhole(setList(), firstSetList, older) ||
                isWhole(setList(), firstSetList, newer)) &&
               (isWhole(preference(), firstPreference, older) ||
                (isWhole(preference(), firstPreference, newer) &&
                 isWhole(setList(), firstSetList, newer)));
    }

    // What lies beside the two.
    [[nodiscard]] int leftovers() const
    {
        return QDir(home.path())
                   .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)
                   .size() -
               2;
    }

private:
    [[nodiscard]] QString setList() const { return home.filePath(QStringLiteral("a.ini")); }
    [[nodiscard]] QString preference() const { return home.filePath(QStringLiteral("b.ini")); }

    static QByteArray bytes(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static bool isWhole(const QString& path, QByteArray first, int version)
    {
        return bytes(path) == first.replace(stampOf(0).toLatin1(), stampOf(version).toLatin1());
    }

    QTemporaryDir home;
    QByteArray firstSetList;
    QByteArray firstPreference;
};

[[noreturn]] void saveForEver(const Files& files, Progress& progress)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (;;) {
        const int version = progress.saved + 1;
        progress.started = version;
        files.save(version);
        progress.saved = version;
        progress.isBegun = 1;
    }
}

} // namespace

// A process that saves set list and preferences without a pause is killed again and again.
class KilledSavesTest : public TestCase
{
    Q_OBJECT

private slots:
    void filesAreWholeAfterEachKill();

private:
    // Saves in a process for a while, and kills it.
    void killASave(const Files& files, Progress& progress, int lifeUs)
    {
        progress.isBegun = 0;
        const pid_t child = fork();
        if (child == 0) {
            saveForEver(files, progress);
        }
        QElapsedTimer waited;
        waited.start();
        while (progress.isBegun == 0 && !waited.hasExpired(kFirstSaveMs)) {
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
        longestMs = std::max(longestMs, waited.elapsed());
        std::this_thread::sleep_for(std::chrono::microseconds(lifeUs));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
    }

    qint64 longestMs = 0;
};

void KilledSavesTest::filesAreWholeAfterEachKill()
{
    const Files files;
    void* shared =
        mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    auto& progress = *new (shared) Progress;
    std::mt19937 random(kSeed);
    std::uniform_int_distribution<int> lifeUs(0, kLongestLifeUs);
    int savesKilled = 0;
    int leftovers = 0;
    for (int count = 1; count <= kKills; ++count) {
        killASave(files, progress, lifeUs(random));
        QVERIFY2(progress.isBegun == 1, "the first save waits for what the last kill left");
        QVERIFY2(files.areWhole(progress.saved, progress.started),
                 qPrintable(QString::number(count)));
        savesKilled += progress.started != progress.saved ? 1 : 0;
        leftovers += files.leftovers();
    }
    QVERIFY(savesKilled >= kKills / 2);
    QVERIFY(leftovers > 0); // Some were killed while they wrote.
    files.save(0);
    QCOMPARE(files.leftovers(), 0);
    qInfo("%d saves, %d of them killed, %d with files left; longest first save %lld ms",
          progress.saved.load(), savesKilled, leftovers, longestMs);
}

VELT_TEST_MAIN(KilledSavesTest)
#include "tst_killedsaves.moc"
