// SPDX-License-Identifier: MIT
#include "testcase.h"

#include "servers.h"

#include <QApplication>
#include <QDir>
#include <QMutex>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <cstdio>

namespace {

QMutex warningsLock; // Warnings may come from threads of libraries.
QStringList warnings;
QVector<QRegularExpression> announced;
std::atomic<QtMessageHandler> previousHandler = nullptr;

// The offscreen platform cannot raise windows or limit their size. Over X11 Qt asks about
// windows and frames that have just been closed: an answer with an error comes later, if at all.
bool isRemarkOfThePlatform(const QString& text)
{
    static const QRegularExpression xErrors(
        R"(^QXcbConnection: XCB error: (3 \(BadWindow\)|8 .*\(SetInputFocus\)))");
    return text.startsWith("This plugin does not support ") || xErrors.match(text).hasMatch();
}

void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (isRemarkOfThePlatform(text)) {
        return;
    }
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        const QMutexLocker lock(&warningsLock);
        warnings.append(text);
    }
    previousHandler.load()(type, context, text);
}

} // namespace

void TestCase::expectWarning(const QString& pattern)
{
    announced.append(QRegularExpression(pattern));
}

void TestCase::init()
{
    announced.clear();
    warnings.clear();
    previousHandler = qInstallMessageHandler(handleMessage);
}

void TestCase::cleanup()
{
    qInstallMessageHandler(previousHandler);
    const QMutexLocker lock(&warningsLock);
    for (const QRegularExpression& pattern : announced) {
        const auto found = std::find_if(warnings.begin(), warnings.end(), [&](const QString& text) {
            return text.contains(pattern);
        });
        if (found != warnings.end()) {
            warnings.erase(found);
        } else if (!QTest::currentTestFailed()) {
            QFAIL(qPrintable("a warning did not come: " + pattern.pattern()));
        }
    }
    QVERIFY2(warnings.isEmpty(), qPrintable(warnings.join('\n')));
}

QString filesIn(const QString& home)
{
#ifdef Q_OS_MACOS
    return home + "/Library/Preferences/VELT/";
#else
    return home + "/VELT/";
#endif
}

int runTestCase(int argc, char** argv, const std::function<std::unique_ptr<TestCase>()>& make)
{
    const QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    qputenv("CFFIXED_USER_HOME", home.path().toLocal8Bit());
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName("VELT");
    if (!QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation)
             .contains(QDir(home.path()).dirName())) {
        std::puts("FAIL: the tests would change the user's own shows");
        return 1;
    }
    const auto test = make();
    return QTest::qExec(test.get(), argc, argv);
}

int runTestCaseOnDisplay(int argc, char** argv,
                         const std::function<std::unique_ptr<TestCase>()>& make)
{
    constexpr const char* kIsChild = "VELT_TEST_ON_DISPLAY";
    if (qEnvironmentVariableIsSet(kIsChild)) {
        return runTestCase(argc, argv, make);
    }
    const QCoreApplication application(argc, argv);
    const XServer server;
    if (!server.isRunning()) {
        std::puts(qPrintable("Totals: 0 passed, skipped: " + server.why()));
        return 0;
    }
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(kIsChild), "1");
    environment.insert("DISPLAY", server.display());
    environment.insert("QT_QPA_PLATFORM", "xcb");
    environment.insert("QT_XCB_GL_INTEGRATION", "none"); // As velt.
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::ForwardedChannels);
    child.start(QCoreApplication::applicationFilePath(), QCoreApplication::arguments().mid(1));
    child.waitForFinished(-1);
    return child.exitStatus() == QProcess::NormalExit ? child.exitCode() : 1;
}
