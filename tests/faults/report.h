// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>
#include <stdexcept>

// What an act of a fault throws when something is not as expected.
class NotAsExpected : public std::runtime_error
{
public:
    explicit NotAsExpected(const QString& what) : std::runtime_error(what.toStdString()) {}
};

inline void require(bool isSo, const QString& whatElse)
{
    if (!isSo) {
        throw NotAsExpected(whatElse);
    }
}

// Prints one line for each fault on standard output: PASS or FAIL, what was done, what was
// expected, what happened.
class Report
{
public:
    // `act` does what `done` says and returns what happened, or throws NotAsExpected.
    void fault(const QString& done, const QString& expected, const std::function<QString()>& act);

    // A fault that cannot be made on this machine.
    static void skip(const QString& done, const QString& why);

    // For the end of main().
    [[nodiscard]] int exitCode() const { return hasFailed ? 1 : 0; }

private:
    bool hasFailed = false;
};
