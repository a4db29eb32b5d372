// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

#include <utility>
#include <vector>

struct CheckFacts;

inline QString word(int number)
{
    return QString::number(number);
}

inline QString word(const QString& string)
{
    return string;
}

// A text in which %1, %2 and so on are replaced by words and numbers.
template <typename... Words>
QString text(const char* pattern, const Words&... words)
{
    if constexpr (sizeof...(words) == 0) {
        return QString::fromLatin1(pattern);
    } else {
        return QString::fromLatin1(pattern).arg(word(words)...);
    }
}

enum class Severity { Problem, Note, Ok };

// What an operator should know before the show: each a line that also says what to do about it.
class Findings
{
public:
    template <typename... Words>
    void add(Severity severity, const char* pattern, const Words&... words)
    {
        all.emplace_back(severity, text(pattern, words...));
    }
    template <typename... Words>
    void problem(const char* pattern, const Words&... words)
    {
        add(Severity::Problem, pattern, words...);
    }

    std::vector<std::pair<Severity, QString>> all;
};

// What follows from the facts. Each appends to the findings.
void checkDaw(const CheckFacts& facts, Findings& findings);
void checkFiles(const CheckFacts& facts, Findings& findings);
void checkMidi(const CheckFacts& facts, Findings& findings);
// Of all shows if the title is empty; upper and lower case are the same.
void checkShows(const CheckFacts& facts, const QString& title, Findings& findings);

QString quoted(const QString& name);
QString listed(const QStringList& names); // In quotes.
