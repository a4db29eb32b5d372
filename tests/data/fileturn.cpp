// SPDX-License-Identifier: MIT
// Opens and saves the files of a large show once, for scripts/turns: `file-turn new|save
// DIRECTORY`.
#include "editdata.h"

#include <QDir>

namespace {

const char16_t* const kNames[] = {u"Çà et là, naïve", u"Ωδή στη χαρά", u"Подмосковные вечера",
                                  u"Գարուն",          u"שיר \"ערב\"",  u"أغنية الليل",
                                  u"रात का गीत",      u"பாடல்",         u"เพลงกลางคืน",
                                  u"ღამის სიმღერა",   u"밤의 노래",    u"夜のうた、歌詞"};
const char16_t* const kEmoji[] = {u"🎵", u"👩🏽‍🎤", u"🏳️‍🌈",
                                  u"\U0001F1EF\U0001F1F5", u""};

EditData newShow()
{
    constexpr int kSongs = 200;
    EditData data;
    data.ShowList.resize(1);
    for (int n = 1; n <= kSongs; ++n) {
        const QString name = QString::fromUtf16(kNames[n % 12]);
        const QString emoji = QString::fromUtf16(kEmoji[n % 5]);
        data.SongList.push_back({n, name + QString::number(n) + emoji, emoji + name, n, 4 * n});
        data.ShowList[0].SetList.push_back({kSetTypeSong, data.SongList.back(), {}, emoji});
        data.ShowList[0].SetList.push_back({kSetTypeSpace, {}, emoji + ", " + name, name});
    }
    data.ShowList[0].ShowTitle = data.MidiInPort = data.SongList[0].SongTitle;
    data.ShowList[0].ShowMemo = data.MidiOutPort = data.SongList[1].SongMemo;
    return data;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        return 2;
    }
    const QDir directory(argv[2]);
    const QString shows = directory.filePath("shows.ini");
    const QString preferences = directory.filePath("preferences.ini");
    EditData data;
    if (argv[1] == QByteArray("new")) {
        data = newShow();
    } else {
        data.readEdit(shows);
        data.readPreference(preferences);
    }
    data.writeEdit(shows);
    data.writePreference(preferences);
    return 0;
}
