// SPDX-License-Identifier: MIT
#include "desk.h"

#include "report.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QTest>

#include <thread>

namespace {

constexpr int kPatienceMs = 15'000;
const QString kMmcStop = QStringLiteral("midi F0 7F 7F 06 01 F7");
const QString kMmcPlay = QStringLiteral("midi F0 7F 7F 06 02 F7");

// Where things are in a window of 480 by 800 pixels.
constexpr QPoint kButtons[] = {{50, 56}, {113, 56}, {177, 56}, {267, 93}, {429, 93}};
constexpr int kTitleX = 80;
constexpr int kCueX = 330;
constexpr int kFirstRowY = 169;
constexpr int kRowHeight = 21;

QString xdotool(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"), arguments);
    process.waitForFinished(kPatienceMs);
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

QString number(int value)
{
    return QString::number(value);
}

void clickAt(const QString& window, QPoint at, int times = 1)
{
    xdotool({QStringLiteral("windowraise"), window, QStringLiteral("mousemove"),
             QStringLiteral("--window"), window, number(at.x()), number(at.y()),
             QStringLiteral("click"), QStringLiteral("--repeat"), number(times),
             QStringLiteral("--delay"), QStringLiteral("2"), QStringLiteral("1")});
}

QPoint cell(int row, int x)
{
    return {x, kFirstRowY + row * kRowHeight};
}

} // namespace

void await(const std::function<bool()>& condition, const QString& what)
{
    require(QTest::qWaitFor(condition, kPatienceMs), QStringLiteral("waited in vain for ") + what);
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

Home::Home()
{
    fill();
}

void Home::fill() const
{
    QDir().mkpath(files());
    const QDir samples(QStringLiteral(VELT_SAMPLE_SHOW));
    for (const QString& name : samples.entryList(QDir::Files)) {
        QFile::copy(samples.filePath(name), files() + QLatin1Char('/') + name);
    }
    QFile geometry(files() + QStringLiteral("/DispStatus.ini"));
    geometry.open(QIODevice::WriteOnly);
    geometry.write("[General]\nX=20\nY=50\nWidth=480\nHeight=800\n");
}

Velt::Velt(const Home& home)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.path());
    process.setProcessEnvironment(environment);
    process.setStandardOutputFile(logs.filePath(QStringLiteral("out")));
    process.setStandardErrorFile(logs.filePath(QStringLiteral("err")));
    process.start(QStringLiteral(VELT_PROGRAM), QStringList());
    await(
        [this] {
            window = find(QStringLiteral("^VELT$")).value(0);
            return !window.isEmpty();
        },
        QStringLiteral("VELT's window"));
    answers();
}

Velt::~Velt()
{
    process.terminate();
    if (!process.waitForFinished(kPatienceMs)) {
        process.kill();
        process.waitForFinished();
    }
}

QStringList Velt::find(const QString& title)
{
    return xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                    QStringLiteral("--all"), QStringLiteral("--pid"),
                    QString::number(process.processId()), QStringLiteral("--name"), title})
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void Velt::click(Button button, int times)
{
    clickAt(window, kButtons[button], times);
}

void Velt::select(int row)
{
    clickAt(window, cell(row, kTitleX));
}

void Velt::enterCue(int row, const QString& text)
{
    clickAt(window, cell(row, kCueX));
    answers();
    xdotool({QStringLiteral("type"), text});
    answers();
}

void Velt::typeCue(int row, const QString& text)
{
    enterCue(row, text);
    pressReturn();
    answers();
}

void Velt::typeCueAndDie(int row, const QString& text, const Home& home, int afterUs)
{
    enterCue(row, text);
    const QString lock = home.setList() + QStringLiteral(".lock"); // There while it saves.
    QFile::remove(lock); // That of the last one that died.
    QProcess key;
    key.start(QStringLiteral("xdotool"), {QStringLiteral("key"), QStringLiteral("Return")});
    const QDeadlineTimer end(kPatienceMs);
    while (!QFile::exists(lock) && !end.hasExpired()) {
    }
    require(!end.hasExpired(), QStringLiteral("no save began"));
    std::this_thread::sleep_for(std::chrono::microseconds(afterUs));
    process.kill();
    process.waitForFinished();
    key.waitForFinished();
}

qint64 Velt::confirmPreferences(const QStringList& keys, const QStringList& boxes)
{
    const auto confirm = [this](const QString& title, const QStringList& keysBefore) {
        await([&] { return !find(title).isEmpty(); }, title);
        xdotool(QStringList{QStringLiteral("windowfocus"), QStringLiteral("--sync"),
                            find(title).value(0), QStringLiteral("key")} +
                keysBefore + QStringList{QStringLiteral("Return")});
    };
    click(Preferences);
    const QString title = QStringLiteral("^Preference$");
    await([&] { return !find(title).isEmpty(); }, title);
    answers();
    confirm(title, keys);
    QElapsedTimer timer;
    timer.start();
    for (const QString& box : boxes) {
        confirm(QLatin1Char('^') + box + QLatin1Char('$'), {});
    }
    await([&] { return find(title).isEmpty(); }, QStringLiteral("the preferences to close"));
    require(ping.answerMs(window.toUInt(), kPatienceMs) >= 0,
            QStringLiteral("the window does not answer after the preferences"));
    return timer.elapsed();
}

int Velt::windows()
{
    return find(QString()).size();
}

void Velt::pressReturn()
{
    xdotool({QStringLiteral("key"), QStringLiteral("Return")});
}

int Velt::answers()
{
    const int ms = ping.answerMs(window.toUInt(), kAnswerMs);
    require(process.state() == QProcess::Running && !process.waitForFinished(0),
            QStringLiteral("VELT is gone"));
    require(ms >= 0, QStringLiteral("the window does not answer in %1 ms").arg(kAnswerMs));
    return ms;
}

Desk::Desk()
{
    require(jack.isRunning(), jack.why());
    startWindowManager();
    daw = std::make_unique<StandIn>(QStringLiteral("Pro Tools"));
    require(daw->isReady(), QStringLiteral("the stand-in DAW does not start"));
    velt = std::make_unique<Velt>(home);
}

void Desk::startWindowManager()
{
    windowManager = std::make_unique<WindowManager>(true);
    require(!windowManager->isMissing, QStringLiteral("openbox is not installed"));
}

void Desk::reopenDawPorts()
{
    daw->forget();
    const QString window = xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                    QStringLiteral("--name"), QStringLiteral("^Pro Tools$")});
    xdotool({QStringLiteral("windowfocus"), QStringLiteral("--sync"), window, QStringLiteral("key"),
             QStringLiteral("F8")});
    await([this] { return daw->count(QStringLiteral("key up other 0xFFC5")) == 1; },
          QStringLiteral("the DAW to open its ports again"));
    require(daw->count(QStringLiteral("no midi")) == 0,
            QStringLiteral("the DAW cannot open its ports again"));
}

void Desk::locateByKeys(int row, const QString& place)
{
    daw->forget();
    velt->select(row);
    velt->click(Velt::Locate);
    await([&] { return daw->count(QStringLiteral("located ") + place) == 1; },
          QStringLiteral("the DAW to be at ") + place);
}

void Desk::playOn()
{
    locateByKeys(2, QStringLiteral("bar 105"));
    await([this] { return daw->count(kMmcStop) == 1; }, QStringLiteral("MMC Stop"));
    daw->press(QStringLiteral("note 33"));
    await([this] { return daw->count(kMmcPlay) == 1; },
          QStringLiteral("MMC Play after the foot switch"));
    daw->press(QStringLiteral("end 24"));
    await([this] { return daw->count(QStringLiteral("located bar 209")) == 1; },
          QStringLiteral("the next song after the end of one"));
    velt->click(Velt::Reset);
    velt->answers();
}

qint64 Desk::playOnAfterConfirming()
{
    velt->click(Velt::Reset);
    const qint64 ms = velt->confirmPreferences();
    playOn();
    return ms;
}
