// SPDX-License-Identifier: MIT
#pragma once

#include <QRegularExpression>
#include <QTest>

#include <functional>
#include <memory>

// Base of every test class. A test function fails on any Qt warning that it did not announce. A
// class with its own init() or cleanup() calls the base's from there.
class TestCase : public QObject
{
    Q_OBJECT

protected:
    // Announces a warning that contains this pattern; the test function fails if it does not come.
    static void expectWarning(const QString& pattern);

protected slots:
    void init();
    void cleanup();
};

// Where VELT's files lie, with a '/' at the end, if both XDG_CONFIG_HOME and, for macOS,
// CFFIXED_USER_HOME name this home directory.
QString filesIn(const QString& home);

// Runs one test class: on the offscreen platform unless QT_QPA_PLATFORM says otherwise, as an
// application named like the program, with an empty configuration home that goes away afterwards.
int runTestCase(int argc, char** argv, const std::function<std::unique_ptr<TestCase>()>& make);

// The same on a real X server of the test's own, which the environment variable DISPLAY names; the
// test runs in a child process. Skipped, with the reason, where no X server can be started.
int runTestCaseOnDisplay(int argc, char** argv,
                         const std::function<std::unique_ptr<TestCase>()>& make);

#define VELT_TEST_MAIN(Class)                                                                      \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        return runTestCase(argc, argv, [] { return std::make_unique<Class>(); });                  \
    }

#define VELT_DISPLAY_TEST_MAIN(Class)                                                              \
    int main(int argc, char** argv)                                                                \
    {                                                                                              \
        return runTestCaseOnDisplay(argc, argv, [] { return std::make_unique<Class>(); });         \
    }
