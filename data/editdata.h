// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QString>

#include <cstdint>
#include <vector>

// The records of a show: plain values with public fields, named like the keys that store them in
// the files. Everything here is used from the main thread only.

// A song of the library.
struct EditDataSong
{
    std::int32_t Id = 0; // Unique in SongList; handed-out ids start at 1.
    QString SongTitle;
    QString SongMemo;
    std::int32_t Marker = 0; // The DAW marker to locate to in the marker modes.
    std::int32_t Bar = 0;    // The bar to locate to in the bar modes.
};

// Kinds of set-list entries, the values of EditDataSet::SetType.
constexpr std::int32_t kSetTypeSong = 0;
constexpr std::int32_t kSetTypeSpace = 1;

// An entry of a set list: a song, or a named space between songs.
struct EditDataSet
{
    std::int32_t SetType = kSetTypeSong;
    EditDataSong Song; // Of a song entry: a copy of the song with this Id. Of a space: defaults.
    QString SpaceName; // Of a space: what the title column shows.
    QString Cue;
};

// A show and its running order.
struct EditDataShow
{
    QString ShowTitle;
    QString ShowMemo;
    std::vector<EditDataSet> SetList;
};

// DAW modes, the values of EditData::Mode. Anything else is treated as Pro Tools.
constexpr std::int32_t kModeProToolsBars = 0;
constexpr std::int32_t kModeProToolsMarker = 1;
constexpr std::int32_t kModeStudioOneBars = 2;
constexpr std::int32_t kModeStudioOneMarker = 3;

// The one data model: the preferences, the song library and the shows. The operator window holds
// the only instance; the editor and the preferences dialog change it in place.
//
// The four file operations take the file's full path, report nothing and never throw: what cannot
// be read leaves the documented defaults, what cannot be written leaves the old file as it was.
// The set-list operations touch only the lists and MaxSongId, the preference operations only the
// preference fields.
class EditData
{
public:
    // Replaces ShowList, SongList and MaxSongId by the contents of a set-list file. A missing or
    // unreadable file leaves both lists empty and MaxSongId 0. Song entries whose song is not in
    // the file, and entries of an unknown kind, are dropped. Reads no more than 100,000 songs,
    // 100,000 shows, and 100,000 entries of a show; once 100,000 entries were missing, a show ends
    // at its next missing one. Defined in setlistfile.cpp.
    void readEdit(const QString& path);

    // Writes ShowList and SongList to a set-list file and syncs it to the disk. Songs and shows
    // without a title are not written, and are removed from the lists. The first write of
    // setListFilePath() in a process leaves a copy of the old file at setListBackupPath().
    void writeEdit(const QString& path);

    // Sets the preference fields from a preference file. Mode, the port names and DeviceId are
    // always set (a missing key gives 0 or an empty text); the others keep their value where the
    // file has none. DeviceIdValue keeps its value where DeviceId holds no hexadecimal digit.
    // Defined in preferencefile.cpp.
    void readPreference(const QString& path);

    // Writes all preference fields and syncs them to the disk. The device ID is written from
    // DeviceIdValue as two upper-case hexadecimal digits, whatever the text DeviceId says.
    void writePreference(const QString& path);

    std::int32_t Mode = kModeProToolsBars;
    QString MidiInPort;             // "DAW Midi Input": end-of-song notes from the DAW.
    QString ShortcutMidiInPort;     // "Midi Controller Input": the operator's foot switch or pads.
    QString MidiOutPort;            // "DAW Midi Output": MMC to the DAW.
    QString DeviceId;               // The MMC device ID as last read or typed, hexadecimal.
    std::uint8_t DeviceIdValue = 0; // What is sent and saved.
    bool ArrowKeyMode = false;
    bool ShowKeyButton = true;

    // Controller notes, 0 to 127 (a hand-edited file may hold others).
    std::int32_t NoteSongUp = 28;
    std::int32_t NoteSongDown = 29;
    std::int32_t NoteLocate = 31;
    std::int32_t NoteDawPlay = 33;
    std::int32_t NoteDawStop = 35;

    QColor SendTextColor{QStringLiteral("#BB0000")}; // The row last located.
    QColor NextTextColor{QStringLiteral("#0000BB")}; // The row that comes next.

    std::vector<EditDataShow> ShowList;
    std::vector<EditDataSong> SongList;
    std::int32_t MaxSongId = 0; // The next new song gets MaxSongId + 1; never lowered by deleting.
};
