// SPDX-License-Identifier: MIT
#include "commandline.h"

#include "checkfacts.h"
#include "findings.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int kFoundProblem = 1;
constexpr int kUsageError = 2;

// QApplication takes these, for the window.
const char* const kQtOptionsWithValue =
    "display geometry icon name platform platformpluginpath platformtheme plugin qmljsdebugger "
    "qwindowgeometry qwindowicon qwindowtitle session style stylesheet title visual";
const char* const kQtFlags = "dograb nograb qdebug qdevel reverse testability widgetcount";

void declareOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        text("Locates the songs of a live show in the DAW. Without options the window opens."));
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions); // As Qt's.
    parser.addOptions(
        {{text("check"),
          text("Says what to put right before the show: DAW, MIDI, files, shows. Changes "
               "nothing. Exit status 1 if it finds a problem.")},
         {text("show"), text("With --check: looks at this show only."), text("title")},
         {{text("h"), text("help")}, text("Shows this.")},
         {{text("v"), text("version")}, text("Shows the version.")}});
    for (const char* const names : {kQtOptionsWithValue, kQtFlags}) {
        const QStringList ofQt = text(names).split(QLatin1Char(' '));
        for (const QString& name : ofQt) {
            QCommandLineOption option(name, {}, text(names == kQtFlags ? "" : "value"));
            option.setFlags(QCommandLineOption::HiddenFromHelp);
            parser.addOption(option);
        }
    }
}

QString errorOf(QCommandLineParser& parser, const QStringList& arguments)
{
    if (!parser.parse(arguments)) {
        return parser.errorText();
    }
    if (!parser.positionalArguments().isEmpty()) {
        return text("Unexpected argument '%1'.", parser.positionalArguments().constFirst());
    }
    return parser.isSet(text("show")) && !parser.isSet(text("check"))
               ? text("--show goes with --check.")
               : QString();
}

void print(const QString& words, std::FILE* stream = stdout)
{
    std::fputs(words.toUtf8().constData(), stream);
}

// The most important first, each on one line whatever the names in it hold.
int check(const QString& show)
{
    const CheckFacts facts = gatherFacts();
    Findings findings;
    checkDaw(facts, findings);
    checkFiles(facts, findings);
    checkShows(facts, show, findings);
    checkMidi(facts, findings);
    std::stable_sort(findings.all.begin(), findings.all.end(),
                     [](const auto& one, const auto& other) { return one.first < other.first; });
    for (auto& [severity, line] : findings.all) {
        std::replace_if(
            line.begin(), line.end(), [](QChar c) { return c.category() == QChar::Other_Control; },
            QLatin1Char(' '));
        const char* const word = severity == Severity::Problem ? "problem"
                                 : severity == Severity::Note  ? "note"
                                                               : "ok";
        print(text(word).leftJustified(9) + line + QLatin1Char('\n'));
    }
    return findings.all.front().first == Severity::Problem ? kFoundProblem : 0;
}

} // namespace

std::optional<int> runCommandLine(int argc, char** argv)
{
    QStringList arguments;
    std::transform(argv, argv + argc, std::back_inserter(arguments),
                   [](const char* argument) { return QString::fromUtf8(argument); });
    QCommandLineParser parser;
    declareOptions(parser);
    const QString error = errorOf(parser, arguments);
    if (!error.isEmpty()) {
        print(text("velt: %1\nvelt --help lists the options.\n", error), stderr);
        return kUsageError;
    }
    if (!parser.isSet(text("help")) && !parser.isSet(text("version")) &&
        !parser.isSet(text("check"))) {
        return std::nullopt;
    }
    const QCoreApplication application(argc, argv);
    if (parser.isSet(text("help"))) {
        print(parser.helpText());
        return 0;
    }
    if (parser.isSet(text("version"))) {
        print(text("velt %1\n").arg(text(VELT_VERSION)));
        return 0;
    }
    return check(parser.value(text("show")));
}
