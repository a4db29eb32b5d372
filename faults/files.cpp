// SPDX-License-Identifier: MIT
#include "desk.h"
#include "faults.h"
#include "report.h"

#include <QElapsedTimer>

#include <sys/mount.h>

namespace {

const QString kExpected =
    QStringLiteral("no message, as a failed save is silent; the old files stay, VELT answers; the "
                   "next save that can be made has all changes");

// A disk of its own over a directory, gone with the object.
class SmallDisk
{
public:
    explicit SmallDisk(const QString& directory) : path(directory.toLocal8Bit())
    {
        isMounted = mount("velt-faults", path.constData(), "tmpfs", 0, "size=64k") == 0;
    }
    ~SmallDisk()
    {
        if (isMounted) {
            umount2(path.constData(), MNT_DETACH);
        }
    }
    Q_DISABLE_COPY_MOVE(SmallDisk)

    bool isMounted = false;

    void setReadOnly(bool on)
    {
        require(mount(nullptr, path.constData(), nullptr, on ? MS_REMOUNT | MS_RDONLY : MS_REMOUNT,
                      nullptr) == 0,
                QStringLiteral("the disk cannot be mounted again"));
    }

private:
    QByteArray path;
};

// Saves while `isBroken`, which `set` brings about and ends.
QString failAndRecover(Desk& desk, bool oldFilesStay, const std::function<void(bool isBroken)>& set)
{
    const auto files = [&] {
        return bytesOf(desk.home.setList()) + bytesOf(desk.home.preference());
    };
    desk.velt->typeCue(1, QStringLiteral("before"));
    desk.velt->confirmPreferences();
    const QByteArray before = files();
    require(before.contains("Cue=before") && before.contains("Mode=0"),
            QStringLiteral("the save before failed"));
    set(true);
    desk.velt->typeCue(2, QStringLiteral("during"));
    desk.velt->confirmPreferences({QStringLiteral("Right")});
    const int answeredMs = desk.velt->answers();
    require(desk.velt->windows() == 1, QStringLiteral("a message came"));
    set(false);
    require(!oldFilesStay || files() == before, QStringLiteral("an old file did not stay"));
    desk.velt->typeCue(3, QStringLiteral("after"));
    desk.velt->confirmPreferences();
    const QByteArray after = files();
    for (const char* text : {"Cue=before", "Cue=during", "Cue=after", "SongDataNum=14", "Mode=1"}) {
        require(after.contains(text), QStringLiteral("%1 was lost").arg(QLatin1String(text)));
    }
    return QStringLiteral("answered in %1 ms; all changes are in the next save").arg(answeredMs);
}

QString fullDisk(Desk& desk)
{
    const QString filler = desk.home.files() + QStringLiteral("/filler");
    return failAndRecover(desk, true, [&](bool isFull) {
        if (!isFull) {
            QFile::remove(filler);
            return;
        }
        QFile file(filler);
        require(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered),
                QStringLiteral("the disk cannot be filled"));
        while (file.write(QByteArray(512, 'x')) > 0) {
        }
    });
}

QString filesReplacedByDirectories(Desk& desk)
{
    return failAndRecover(desk, false, [&](bool areDirectories) {
        for (const QString& path : {desk.home.setList(), desk.home.preference()}) {
            const bool done =
                areDirectories ? QFile::remove(path) && QDir().mkdir(path) : QDir().rmdir(path);
            require(done, QStringLiteral("a file cannot be replaced"));
        }
    });
}

// The file is the last one, or the one that was being saved, whole; and the next start waits for
// nothing that was left.
QString killedInSaves(Desk& desk)
{
    constexpr int kKills = 20;
    constexpr int kStepUs = 400; // A save takes some milliseconds.
    constexpr int kStartMs = 5000;
    constexpr int kRow = 1;
    const auto cue = [](int n) { return QStringLiteral("cue%1").arg(n, 3, 10, QLatin1Char('0')); };
    desk.velt->typeCue(kRow, cue(0));
    QByteArray last = bytesOf(desk.home.setList());
    int lastCue = 0;
    int saved = 0;
    qint64 longestMs = 0;
    require(last.count("Cue=cue000") == 1, QStringLiteral("the first cue is not in the file"));
    for (int kill = 1; kill <= kKills; ++kill) {
        desk.velt->typeCueAndDie(kRow, cue(kill), desk.home, (kill - 1) * kStepUs);
        QByteArray next = last;
        next.replace(cue(lastCue).toLatin1(), cue(kill).toLatin1());
        const QByteArray found = bytesOf(desk.home.setList());
        require(found == last || found == next,
                QStringLiteral("the file is broken or lost after kill %1").arg(kill));
        if (found == next) {
            last = next;
            lastCue = kill;
            ++saved;
        }
        // For each client that was killed the server lets new ones wait, seconds at a time.
        require(desk.jack.restart(), desk.jack.why());
        QElapsedTimer start;
        start.start();
        desk.velt = std::make_unique<Velt>(desk.home);
        longestMs = std::max(longestMs, start.elapsed());
        require(longestMs < kStartMs, QStringLiteral("a start took %1 ms").arg(longestMs));
    }
    desk.reopenDawPorts();
    desk.playOnAfterConfirming();
    return QStringLiteral(
               "%1 kills, %2 of them after the save; longest start %3 ms; the show went on")
        .arg(kKills)
        .arg(saved)
        .arg(longestMs);
}

// Two programs save into the same files; the one that saves last wins.
QString twoInstances()
{
    Desk desk;
    Velt second(desk.home);
    desk.velt->typeCue(1, QStringLiteral("first"));
    second.typeCue(2, QStringLiteral("second"));
    const QByteArray saved = bytesOf(desk.home.setList());
    require(saved.contains("Cue=second") && saved.contains("SongDataNum=14"),
            QStringLiteral("the last save is not in the file"));
    desk.velt->confirmPreferences();
    second.confirmPreferences();
    const int answeredMs = std::max(desk.velt->answers(), second.answers());
    desk.playOn();
    return QStringLiteral("both answered in %1 ms, the show went on; the first one's change is %2")
        .arg(answeredMs)
        .arg(saved.contains("Cue=first") ? QStringLiteral("kept") : QStringLiteral("overwritten"));
}

} // namespace

void fileFaults(Report& report)
{
    const QString full = QStringLiteral("disk full during saves");
    const QString readOnly = QStringLiteral("disk mounted read-only during saves");
    if (SmallDisk(QDir::tempPath()).isMounted) {
        report.fault(full, kExpected, [] {
            Desk desk;
            const SmallDisk disk(desk.home.files());
            desk.home.fill();
            return fullDisk(desk);
        });
        report.fault(readOnly, kExpected, [] {
            Desk desk;
            SmallDisk disk(desk.home.files());
            desk.home.fill();
            return failAndRecover(desk, true, [&](bool isBroken) { disk.setReadOnly(isBroken); });
        });
    } else {
        const QString why = QStringLiteral("only root can mount a disk of its own");
        Report::skip(full, why);
        Report::skip(readOnly, why);
    }
    report.fault(QStringLiteral("files replaced by directories during saves"),
                 QStringLiteral("no message, VELT answers; the next save has all changes"), [] {
                     Desk desk;
                     return filesReplacedByDirectories(desk);
                 });
    report.fault(QStringLiteral("VELT killed 20 times while it saves a cue"),
                 QStringLiteral("the set list is whole, with the cue or without; the next start "
                                "takes under 5 s"),
                 [] {
                     Desk desk;
                     return killedInSaves(desk);
                 });
    report.fault(QStringLiteral("two instances on the same files"),
                 QStringLiteral("both answer, the files are whole, the one that saves last wins"),
                 twoInstances);
}
