// SPDX-License-Identifier: MIT
#include "checkfacts.h"
#include "dawmodes.h"
#include "findings.h"

#include <QHash>
#include <QSet>

#include <set>

namespace {

// Separated by commas; of many only the first, and how many more there are.
QString firstOf(const QStringList& words)
{
    constexpr int kMost = 8;
    const QString first = QStringList(words.mid(0, kMost)).join(QStringLiteral(", "));
    return words.size() <= kMost
               ? first
               : text("%1 and %2 more", first, static_cast<int>(words.size()) - kMost);
}

// Reads the set-list file for what EditData does not tell: what is damaged, or left out.
class SetListKeys
{
public:
    explicit SetListKeys(const CheckFacts& facts);

    QStringList damage;                 // In words.
    std::set<int> shows;                // The numbers of those that are counted and there.
    QHash<int, QStringList> goneOfShow; // The numbers of rows whose song is gone.

private:
    int number(const QString& key, const QString& what);
    QString title(const QString& key, const QString& what);
    std::set<int> groups(const QString& countKey, const QString& prefix, const QString& what);
    void readRows(int show, const QSet<int>& songIds);

    const QVariantMap& keys;
    QStringList unread;
};

SetListKeys::SetListKeys(const CheckFacts& facts) : keys(facts.setListKeys)
{
    if (!keys.contains(text("SongDataNum")) && !keys.contains(text("ShowDataNum"))) {
        damage += text("it is no set list of VELT's");
        return;
    }
    if (!facts.isSetListParsed) {
        damage += text("some lines cannot be read");
    }
    QSet<int> songIds;
    for (const int song : groups(text("SongDataNum"), text("SongData"), text("songs"))) {
        const QString group = text("SongData%1/", song);
        const QString name = title(group + text("SongTitle"), text("song %1", song));
        songIds += number(group + text("Id"), text("Id of %1", name));
        number(group + text("Bar"), text("Bar of %1", name));
        number(group + text("Marker"), text("Marker of %1", name));
    }
    shows = groups(text("ShowDataNum"), text("ShowData"), text("shows"));
    shows.erase(shows.upper_bound(static_cast<int>(facts.data.ShowList.size())), shows.end());
    for (const int show : shows) {
        readRows(show, songIds);
    }
    if (!unread.isEmpty()) {
        damage += text("these cannot be read: %1", firstOf(unread));
    }
}

void SetListKeys::readRows(int show, const QSet<int>& songIds)
{
    const QString group = text("ShowData%1/", show);
    const QString name = title(group + text("ShowTitle"), text("show %1", show));
    for (const int row :
         groups(group + text("SetNum"), group + text("SetData"), text("rows of %1", name))) {
        const QString rowGroup = group + text("SetData%1/", row);
        const int type = number(rowGroup + text("SetType"), text("row %1 of %2", row, name));
        if (type != kSetTypeSong && type != kSetTypeSpace) {
            unread += text("row %1 of %2", row, name);
        }
        if (type == kSetTypeSong &&
            !songIds.contains(keys.value(rowGroup + text("SongId")).toInt())) {
            goneOfShow[show] += word(row);
        }
    }
}

// What cannot be read is 0, as VELT takes it.
int SetListKeys::number(const QString& key, const QString& what)
{
    bool isNumber = false;
    const int result = keys.value(key).toInt(&isNumber);
    if (!isNumber) {
        unread += what;
    }
    return result;
}

// The title in quotes; where it is missing, what has none.
QString SetListKeys::title(const QString& key, const QString& what)
{
    const QString result = keys.value(key).toString();
    if (result.isEmpty()) {
        unread += text("title of %1", what);
    }
    return result.isEmpty() ? what : quoted(result);
}

// The numbers of groups such as SongData3 that are there and counted. Higher ones are left from
// earlier saves.
std::set<int> SetListKeys::groups(const QString& countKey, const QString& prefix,
                                  const QString& what)
{
    bool isNumber = false;
    const int count = keys.value(countKey).toInt(&isNumber);
    std::set<int> numbers;
    for (auto at = keys.lowerBound(prefix); at != keys.end() && at.key().startsWith(prefix); ++at) {
        const int n = at.key().mid(prefix.size()).section(QLatin1Char('/'), 0, 0).toInt();
        if (n > 0 && n <= count) {
            numbers.insert(n);
        }
    }
    const int missing = count - static_cast<int>(numbers.size());
    if (!isNumber) {
        damage += text("it does not count the %1", what);
    } else if (missing > 0) {
        damage += text("missing: %1 of %2 %3", missing, count, what);
    }
    return numbers;
}

// What the show is like as VELT reads it.
void checkEntries(const EditDataShow& show, const DawMode& mode, Severity ifEmpty,
                  Findings& findings)
{
    const QString name = quoted(show.ShowTitle);
    const QString number = text(mode.number == &EditDataSong::Bar ? "Bar" : "Marker");
    int songs = 0;
    bool hasCue = false;
    QStringList without;
    for (const EditDataSet& entry : show.SetList) {
        hasCue = hasCue || !entry.Cue.isEmpty();
        if (entry.SetType == kSetTypeSong) {
            ++songs;
            if (mode.number && entry.Song.*mode.number <= 0) {
                without += quoted(entry.Song.SongTitle);
            }
        }
    }
    without.removeDuplicates();
    if (songs == 0) {
        findings.add(ifEmpty, "Show %1: it has no songs. Put some in with Edit, Set List, OK",
                     name);
        return;
    }
    if (!without.isEmpty()) {
        findings.problem("Show %1: LOCATE goes to 0, as there is no %2 for %3. Type "
                         "it in Edit, Song List, column %2, OK",
                         name, number, firstOf(without));
    } else if (mode.number) {
        findings.add(Severity::Ok, "Show %1: songs: %2, each with its %3", name, songs, number);
    }
    if (!hasCue) {
        findings.add(Severity::Note,
                     "Show %1: it has no cues. If you want some, type them in the "
                     "column Cue",
                     name);
    }
}

} // namespace

void checkShows(const CheckFacts& facts, const QString& title, Findings& findings)
{
    const SettingsFileState state = facts.files.front().second;
    if (state == SettingsFileState::Unreadable) {
        return; // Told with the files.
    }
    const SetListKeys file(facts);
    if (state == SettingsFileState::Missing || (file.damage.isEmpty() && file.shows.empty())) {
        findings.problem("Shows: there are none yet. Press Edit and make songs, a show "
                         "and its set list, OK");
        return;
    }
    if (!file.damage.isEmpty()) {
        findings.problem(
            "Shows: the file is damaged: %1. Before anything else is saved: look at it in "
            "Edit, put it right or OPEN %2, OK",
            file.damage.join(QStringLiteral("; ")),
            facts.backupPath.isEmpty() ? text("a copy of yours") : facts.backupPath);
    }
    QStringList titles;
    bool isFound = title.isEmpty();
    for (const int number : file.shows) {
        const EditDataShow& show = facts.data.ShowList[static_cast<std::size_t>(number) - 1];
        titles += show.ShowTitle;
        if (!title.isEmpty() && show.ShowTitle.compare(title, Qt::CaseInsensitive) != 0) {
            continue;
        }
        isFound = true;
        const QStringList gone = file.goneOfShow.value(number);
        if (!gone.isEmpty()) {
            findings.problem(
                "Show %1: the songs of these rows are gone, and VELT leaves the rows out: "
                "%2. Put them in again with Edit, Set List, OK",
                quoted(show.ShowTitle), firstOf(gone));
        }
        checkEntries(show, dawMode(facts.data.Mode),
                     title.isEmpty() ? Severity::Note : Severity::Problem, findings);
    }
    if (!isFound) {
        findings.problem("Shows: none is called %1. There are: %2", quoted(title), listed(titles));
    }
}
