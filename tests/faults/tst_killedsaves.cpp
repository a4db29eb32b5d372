// SPDX-License-Identifier: MIT
#include "editdata.h"
#include "testcase.h"

#include <QDir>
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
constexpr int kStampDigits = 6;
constexpr int kFirstSaveMs = 4000; // Less than a save waits for a live process.

// What the process that saves tells the one that kills it, in memory that both share.
struct Progress
{
    std::atomic<int> started{0}; // The version whose saving began last.
    std::atomic<int> saved{0};   // The version that was saved last.
    std::atomic<int> isBegun{0}; // The first save of this life is done.
};

// Appears in every text of both files.
QString stampOf(int version)
{
    return QStringLiteral("<%1>").arg(version, kStampDigits, 10, QLatin1Char('0'));
}

EditData dataOf(int version)
{
    const QString stamp = stampOf(version);
    EditData data;
    data.SongList.assign(200, {1, stamp, stamp, 2, 3});
    data.ShowList = {{stamp, stamp, {200, {kSetTypeSong, data.SongList[0], {}, stamp}}}};
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

    [[nodiscard]] bool areWhole(int older, int newer) const
    {
        const int setListVersion = versionOf(setList(), firstSetList);
        const int preferenceVersion = versionOf(preference(), firstPreference);
        return older <= preferenceVersion && preferenceVersion <= setListVersion && // Saved first.
               setListVersion <= newer;
    }

    // What lies beside the two.
    [[nodiscard]] int leftovers() const
    {
        const auto all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
        return QDir(home.path()).entryList(all).size() - 2;
    }

private:
    [[nodiscard]] QString setList() const { return home.filePath(QStringLiteral("a.ini")); }
    [[nodiscard]] QString preference() const { return home.filePath(QStringLiteral("b.ini")); }

    static QByteArray bytes(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    // Which of the versions the file is, by its first stamp; -1 if it is none.
    static int versionOf(const QString& path, QByteArray first)
    {
        const QByteArray content = bytes(path);
        const int version = content.mid(content.indexOf('<') + 1, kStampDigits).toInt();
        first.replace(stampOf(0).toLatin1(), stampOf(version).toLatin1());
        return content == first ? version : -1;
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
        progress.isBegun = 0;
        const pid_t child = fork();
        if (child == 0) {
            saveForEver(files, progress);
        }
        const bool isBegun =
            QTest::qWaitFor([&progress] { return progress.isBegun == 1; }, kFirstSaveMs);
        std::this_thread::sleep_for(std::chrono::microseconds(lifeUs(random)));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        QVERIFY2(isBegun, "the first save waits for what the last kill left");
        QVERIFY2(files.areWhole(progress.saved, progress.started),
                 qPrintable(QString::number(count)));
        savesKilled += progress.started != progress.saved ? 1 : 0;
        leftovers += files.leftovers();
    }
    QVERIFY(savesKilled >= kKills / 2);
    QVERIFY(leftovers > 0); // Some were killed while they wrote.
    files.save(0);
    QCOMPARE(files.leftovers(), 0);
    qInfo("%d saves, %d of them killed, %d with files left", progress.saved.load(), savesKilled,
          leftovers);
}

VELT_TEST_MAIN(KilledSavesTest)
#include "tst_killedsaves.moc"
