// SPDX-License-Identifier: MIT
#include "editdata.h"
#include "report.h"

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

// A process that saves set list and preferences without a pause is killed again and again, at
// random moments, and started anew.

namespace {

constexpr int kKills = 500;
constexpr unsigned int kSeed = 20'240'229;
constexpr int kLongestLifeUs = 40'000; // Of the saves behind the first, each of some milliseconds.
constexpr int kSaveMs = 1000;          // None may take longer.
constexpr int kGiveUpMs = 60'000;

// What the process that saves tells the one that kills it. Lies in memory that both share.
struct Progress
{
    std::atomic<int> started{0}; // The version whose saving was begun last.
    std::atomic<int> saved{0};   // The version that was saved last.
    std::atomic<int> isBegun{0}; // The first save of this life has been done.
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
        setListTemplate = bytes(setList());
        preferenceTemplate = bytes(preference());
    }

    void save(int version)
    {
        EditData data = dataOf(version);
        data.writeEdit(setList());
        data.writePreference(preference());
    }

    bool areWhole(int version) const
    {
        return bytes(setList()) == expected(setListTemplate, version) &&
               bytes(preference()) == expected(preferenceTemplate, version);
    }

    // One of the two versions; the set list, which is saved first, no older than the preferences.
    bool areWhole(int older, int newer) const
    {
        return areWhole(older) || areWhole(newer) ||
               (bytes(setList()) == expected(setListTemplate, newer) &&
                bytes(preference()) == expected(preferenceTemplate, older));
    }

    int locks() const { return dir().entryList({QStringLiteral("*.lock")}, QDir::Files).size(); }
    int emptyLocks() const
    {
        int found = 0;
        for (const QFileInfo& lock : dir().entryInfoList({QStringLiteral("*.lock")}, QDir::Files)) {
            found += lock.size() == 0 ? 1 : 0;
        }
        return found;
    }
    int temporaries() const { return dir().entryList(QDir::Files).size() - 2 - locks(); }

    QString setList() const { return home.filePath(QStringLiteral("VELTSetting.ini")); }
    QString preference() const { return home.filePath(QStringLiteral("VELTPreference.ini")); }

private:
    static QByteArray bytes(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static QByteArray expected(QByteArray content, int version)
    {
        return content.replace(stampOf(0).toLatin1(), stampOf(version).toLatin1());
    }
    QDir dir() const { return {home.path()}; }

    QTemporaryDir home;
    QByteArray setListTemplate;
    QByteArray preferenceTemplate;
};

[[noreturn]] void saveForEver(Files& files, Progress& progress)
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

struct Tally
{
    qint64 longestSaveMs = 0; // Of the first ones after a kill.
    int locks = 0;
    int emptyLocks = 0;
    int savesKilled = 0;
};

void killDuringSaves(Files& files, Progress& progress, Tally& tally)
{
    std::mt19937 random(kSeed);
    std::uniform_int_distribution<int> lifeUs(0, kLongestLifeUs);
    for (int kill = 1; kill <= kKills; ++kill) {
        progress.isBegun = 0;
        const pid_t child = fork();
        if (child == 0) {
            saveForEver(files, progress);
        }
        QElapsedTimer waited;
        waited.start();
        while (progress.isBegun == 0 && !waited.hasExpired(kGiveUpMs)) {
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
        tally.longestSaveMs = std::max(tally.longestSaveMs, waited.elapsed());
        std::this_thread::sleep_for(std::chrono::microseconds(lifeUs(random)));
        ::kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        tally.locks += files.locks();
        tally.emptyLocks += files.emptyLocks();
        tally.savesKilled += progress.started != progress.saved ? 1 : 0;
        require(files.areWhole(progress.saved, progress.started),
                QStringLiteral("a file is broken or lost after kill %1").arg(kill));
    }
}

} // namespace

int main()
{
    Files files;
    void* shared =
        mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    auto* progress = new (shared) Progress;
    Tally tally;
    Report report;

    report.fault(QStringLiteral("a process killed %1 times while it saves").arg(kKills),
                 QStringLiteral("set list and preferences are each the last version or the one "
                                "that was being saved, whole"),
                 [&] {
                     killDuringSaves(files, *progress, tally);
                     require(
                         tally.savesKilled >= kKills / 2,
                         QStringLiteral("only %1 kills came during a save").arg(tally.savesKilled));
                     return QStringLiteral("%1 saves, %2 of them killed, none broken or lost; %3 "
                                           "temporary files left")
                         .arg(progress->saved.load())
                         .arg(tally.savesKilled)
                         .arg(files.temporaries());
                 });
    report.fault(QStringLiteral("the first save after each of these kills"),
                 QStringLiteral("waits for no lock that was left, under %1 ms").arg(kSaveMs), [&] {
                     QString happened =
                         QStringLiteral("longest %1 ms; %2 locks left, %3 of them empty")
                             .arg(tally.longestSaveMs)
                             .arg(tally.locks)
                             .arg(tally.emptyLocks);
                     require(tally.longestSaveMs < kSaveMs, happened);
                     return happened;
                 });
    report.fault(QStringLiteral("a process killed after it made a lock, before it filled it"),
                 QStringLiteral("the save right afterwards takes under %1 ms").arg(kSaveMs), [&] {
                     QFile lock(files.setList() + QStringLiteral(".lock"));
                     lock.open(QIODevice::WriteOnly);
                     lock.close();
                     QElapsedTimer timer;
                     timer.start();
                     files.save(kKills);
                     QString happened = QStringLiteral("%1 ms").arg(timer.elapsed());
                     require(!timer.hasExpired(kSaveMs) && files.areWhole(kKills), happened);
                     return happened;
                 });
    return report.exitCode();
}
