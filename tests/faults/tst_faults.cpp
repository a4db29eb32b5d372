// SPDX-License-Identifier: MIT
#include "datafiles.h"
#include "modalscript.h"
#include "showdesk.h"
#include "testcase.h"

#include <QDir>

#include <sys/mount.h>

namespace {

// A disk of its own over the directory of the data files, gone with the object.
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
        QCOMPARE(mount(nullptr, path.constData(), nullptr, on ? MS_REMOUNT | MS_RDONLY : MS_REMOUNT,
                       nullptr),
                 0);
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

void setDirectoriesInTheWay(bool on)
{
    for (const QString& path : {setListFilePath(), preferenceFilePath()}) {
        QVERIFY(on ? QFile::remove(path) : QDir().rmdir(path));
        QCOMPARE(on && QDir().mkdir(path), on);
    }
}

QByteArray files()
{
    QByteArray bytes;
    for (const QString& path : {setListFilePath(), preferenceFilePath()}) {
        QFile file(path);
        bytes += file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    return bytes;
}

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

} // namespace

// What VELT stands on fails while a show runs: the show goes on, and nothing is lost.
class TestFaults : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void onlyAnotherDawIsThere();
    void oneOfTwoDawsDies();
    void windowManagerDies();
    void savesFail_data();
    void savesFail();

private:
    std::unique_ptr<JackServer> jack;
    // One for all: the toolkit warns if it asks about one that has just ended.
    std::unique_ptr<WindowManager> windowManager;
};

void TestFaults::initTestCase()
{
    jack = std::make_unique<JackServer>();
    windowManager = std::make_unique<WindowManager>();
    if (!jack->isRunning() || !windowManager->isRunning()) {
        QSKIP(qPrintable(jack->why() + windowManager->why()));
    }
}

void TestFaults::onlyAnotherDawIsThere()
{
    ShowDesk desk;
    desk.daw->kill();
    desk.daw = std::make_unique<StandIn>("Studio One");
    desk.velt.window.activateWindow();
    ModalScript script;
    script.answer({QMessageBox::Warning, {}, "Process [Pro Tools] not found", QMessageBox::Ok},
                  QMessageBox::Ok);
    desk.confirmPreferences();
    desk.locate(0);
    QVERIFY(script.isDone());
    QCOMPARE(desk.daw->texts({"key"}), QStringList());
    confirmMode(desk.velt, "radioStudioBars");
    desk.locate(0);
    QTRY_COMPARE_WITH_TIMEOUT(desk.daw->count("located bar 12"), 1, ShowDesk::kPatienceMs);
}

void TestFaults::oneOfTwoDawsDies()
{
    const QString located = "located bar 12";
    ShowDesk desk;
    auto second = std::make_unique<StandIn>();
    desk.velt.window.activateWindow();
    desk.confirmPreferences();
    desk.locate(0);
    QTRY_COMPARE_WITH_TIMEOUT(desk.daw->count(located) + second->count(located), 1,
                              ShowDesk::kPatienceMs);
    if (second->has(located)) {
        std::swap(desk.daw, second);
    }
    QCOMPARE(second->texts({"key"}), QStringList());
    desk.daw->kill();
    desk.velt.press("Reset");
    desk.confirmPreferences();
    desk.locate(0);
    QTRY_COMPARE_WITH_TIMEOUT(second->count(located), 1, ShowDesk::kPatienceMs);
}

void TestFaults::windowManagerDies()
{
    ShowDesk desk;
    desk.locate(0);
    QTRY_COMPARE_WITH_TIMEOUT(desk.daw->count("located bar 12"), 1, ShowDesk::kPatienceMs);
    windowManager->kill();
    desk.playOn();
    windowManager = std::make_unique<WindowManager>();
    desk.playOn();
}

void TestFaults::savesFail_data()
{
    QTest::addColumn<QString>("fault");
    QTest::newRow("disk is full") << "full";
    QTest::newRow("disk is read-only") << "read-only";
    QTest::newRow("directories lie where the files were") << "directories";
}

void TestFaults::savesFail()
{
    QFETCH(QString, fault);
    const SmallDisk disk;
    if (!disk.isMounted) {
        QSKIP("only root can mount a disk of its own");
    }
    const auto fail = [&](bool on) {
        fault == "full"        ? disk.setFull(on)
        : fault == "read-only" ? disk.setReadOnly(on)
                               : setDirectoriesInTheWay(on);
    };
    ShowDesk desk; // Whose files lie on that disk.
    typeCue(desk.velt, 0, "before");
    confirmMode(desk.velt, "radioProBars");
    const QByteArray before = files();
    QVERIFY(before.contains("Cue=before"));
    fail(true);
    {
        const ModalScript noBox; // A failed save says nothing.
        typeCue(desk.velt, 2, "during");
        confirmMode(desk.velt, "radioProMarker");
    }
    fail(false);
    if (fault != "directories") {
        QCOMPARE(files(), before);
    }
    typeCue(desk.velt, 3, "after");
    confirmMode(desk.velt, "radioProMarker");
    const QByteArray after = files();
    for (const char* text :
         {"Cue=before", "Cue=during", "Cue=after", "SongTitle=Middle", "Mode=1"}) {
        QVERIFY2(after.contains(text), text);
    }
}

VELT_DISPLAY_TEST_MAIN(TestFaults)
#include "tst_faults.moc"
