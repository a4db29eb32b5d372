// SPDX-License-Identifier: MIT
#include "windowmanager.h"

#include "servers.h"
#include "x11connection.h"

#include <QTest>

namespace {

// As the Extended Window Manager Hints have it: a window of the manager's that names itself.
bool isManaged(X11Connection& server)
{
    const auto named = [&server](xcb_window_t window) {
        return server.numbers(server.askNumbers(window, X11Connection::SupportingWmCheck));
    };
    const auto check = named(server.root());
    return !check.empty() && named(check[0]) == check;
}

} // namespace

WindowManager::WindowManager(bool isWanted)
{
    if (!isWanted) {
        return;
    }
    process.setProcessChannelMode(QProcess::SeparateChannels);
    process.start("openbox", {"--sm-disable"});
    isMissing = !process.waitForStarted();
    if (!isMissing) {
        X11Connection server;
        isMissing = !QTest::qWaitFor([&server] { return isManaged(server); }, 10000);
    }
    if (isMissing) {
        failIfServersAreNeeded("openbox does not manage windows");
    }
}

WindowManager::~WindowManager()
{
    process.terminate();
    process.waitForFinished();
}

void WindowManager::kill()
{
    process.kill();
    process.waitForFinished();
}
