// SPDX-License-Identifier: MIT
#include "practice.h"

#include "dawmodes.h"
#include "displaystatus.h"
#include "editdata.h"
#include "rehearsalports.h"
#include "usage.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QScreen>
#include <QStandardPaths>

#include <algorithm>

namespace {

constexpr int kMargin = 30; // Pixels around VELT's window, for its frame.
constexpr QSize kVeltSize(480, 800);
constexpr int kEndMs = 5000;

// What the user has changed in an earlier rehearsal stays.
void putSample(const QString& name, const QString& path)
{
    if (!QFile::exists(path) && QFile::copy(QStringLiteral(":/show/") + name, path)) {
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    }
}

// Names the ports at each start: those of a second rehearsal are numbered, and confirming the
// preferences without MIDI has stored none.
void namePorts(const QString& preferencePath, Daw daw, const RehearsalPorts& ports)
{
    EditData preferences;
    preferences.readPreference(preferencePath);
    if (dawMode(preferences.Mode).daw.process != dawName(daw)) {
        preferences.Mode = modeOfProcess(dawName(daw));
    }
    if (ports.isOpen()) {
        preferences.MidiInPort = ports.outputName(RehearsalPorts::DawNotes);
        preferences.ShortcutMidiInPort = ports.outputName(RehearsalPorts::FootSwitch);
        preferences.MidiOutPort = ports.inputName();
    }
    preferences.writePreference(preferencePath);
}

void prepareSettings(Daw daw, const RehearsalPorts& ports, const QScreen& screen)
{
    const QString folder = Practice::settingsFolder() + QStringLiteral("/VELT/");
    const QString preferences = QStringLiteral("VELTPreference.ini");
    const QString shows = QStringLiteral("VELTSetting.ini");
    QDir().mkpath(folder);
    putSample(shows, folder + shows);
    putSample(preferences, folder + preferences);
    namePorts(folder + preferences, daw, ports);
    const QString geometry = folder + QStringLiteral("DispStatus.ini");
    if (!QFile::exists(geometry)) {
        DisplayStatus first;
        first.window = Practice::veltGeometry(screen);
        writeDisplayStatus(geometry, first);
    }
}

// Installed, both programs are in one folder; in a build they are in neighbouring ones.
QString veltProgram()
{
    const QString here = QCoreApplication::applicationDirPath();
    const QString beside = QStandardPaths::findExecutable(QStringLiteral("velt"),
                                                          {here, here + QStringLiteral("/../app")});
    return beside.isEmpty() ? QStringLiteral("velt") : beside;
}

} // namespace

QRect Practice::veltGeometry(const QScreen& screen)
{
    const QRect room = screen.availableGeometry().adjusted(kMargin, kMargin, -kMargin, -kMargin);
    return {room.topLeft(), kVeltSize.boundedTo(room.size())};
}

QString Practice::settingsFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/velt-rehearsal");
}

Practice::~Practice()
{
    disconnect(&velt, nullptr, this, nullptr);
    if (velt.state() != QProcess::NotRunning) {
        velt.terminate();
        velt.waitForFinished(kEndMs);
    }
}

void Practice::start(Daw daw, const RehearsalPorts& ports, const QScreen& screen)
{
    prepareSettings(daw, ports, screen);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), settingsFolder());
    velt.setProcessEnvironment(environment);
    velt.setStandardInputFile(QProcess::nullDevice());
    velt.setStandardOutputFile(QProcess::nullDevice());
    velt.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    connect(&velt, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        emit failed(error == QProcess::FailedToStart
                        ? QStringLiteral("velt cannot be started: ") + velt.errorString()
                        : QStringLiteral("velt has failed: ") + velt.errorString());
    });
    connect(&velt, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            [this](int, QProcess::ExitStatus how) {
                if (how == QProcess::NormalExit) {
                    emit ended();
                }
            });
    velt.start(veltProgram(), QStringList());
}
