// SPDX-License-Identifier: MIT
#include "editdata.h"
#include "filetest.h"

#include <csignal>

#include <sys/resource.h>

// What a set list shows: the titles of songs, and the names of spaces in brackets.
static QString titles(const EditDataShow& show)
{
    QStringList result;
    for (const EditDataSet& entry : show.SetList) {
        result << (entry.SetType == kSetTypeSpace ? QStringLiteral("[%1]").arg(entry.SpaceName)
                                                  : entry.Song.SongTitle);
    }
    return result.join(QLatin1Char(' '));
}

class SetListFileTest : public FileTest
{
    Q_OBJECT

private slots:
    void readsAndWritesTheAgreedKeys()
    {
        const QByteArray content(
            "[General]\nShowDataNum=1\nSongDataNum=1\n\n[ShowData1]\nSetData1\\Cue=go\n"
            "SetData1\\SetType=0\nSetData1\\SongId=-5\nSetData1\\SpaceName=\nSetData2\\Cue=\n"
            "SetData2\\SetType=1\nSetData2\\SpaceName=MC\nSetNum=2\nShowMemo=note\nShowTitle="
            "Gig\n\n"
            "[SongData1]\nBar=3\nId=-5\nMarker=4\nSongMemo=slow\nSongTitle=One\n");
        EditData data;
        data.readEdit(fileWith(content));
        const EditDataShow& show = data.ShowList.at(0);
        QCOMPARE(titles(show), QStringLiteral("One [MC]"));
        QVERIFY(show.SetList[0].Song.Bar == 3 && show.SetList[0].Song.Marker == 4);
        QVERIFY(show.SetList[1].Song.Id == 0 && data.MaxSongId == 0);
        const QString path = freshPath();
        data.writeEdit(path);
        QCOMPARE(bytes(path), content);
    }

    void keepsEveryText()
    {
        const QStringList texts = {QStringLiteral(u"\u6b4c\u8a5e \u30ab\u30bf\u30ab\u30ca"),
                                   QStringLiteral(u"\U0001F3B5a") + QChar(0xd83c),
                                   QStringLiteral(" a,b;c=\"d\\e\" [f]/%41%2F#'g' "),
                                   QStringLiteral("a\r\nb\tc\n") + QChar(0) + QLatin1Char('0'),
                                   QStringLiteral("@Invalid()"),
                                   QStringLiteral("@@Variant(\\0)"),
                                   QString(10'000, QChar(0x6b4c))};
        for (const QString& text : texts) {
            EditData data;
            data.SongList = {{1, text, text, -2, INT_MAX}};
            data.ShowList = {{text, text, {{kSetTypeSpace, {}, text, text}}}};
            const QString path = freshPath();
            data.writeEdit(path);
            data.readEdit(fileWith(bytes(path)));
            const EditDataSong& song = data.SongList.at(0);
            const EditDataShow& show = data.ShowList.at(0);
            const EditDataSet& space = show.SetList.at(0);
            QVERIFY(song.Marker == -2 && song.Bar == INT_MAX);
            for (const QString& field : {song.SongTitle, song.SongMemo, show.ShowTitle,
                                         show.ShowMemo, space.SpaceName, space.Cue}) {
                QCOMPARE(field, text);
            }
        }
    }

    void readsHandWrittenFile()
    {
        EditData data;
        data.readEdit(fileWith("[General]\nSongDataNum=4\nShowDataNum=2\n"
                               "[SongData1]\nId=7\nSongTitle=First\nBar=x\n"
                               "[SongData2]\nId=7\nSongTitle=Twin\n[SongData3]\nSongTitle=Zero\n"
                               "[SongData5]\nId=99\nSongTitle=Beyond\n[ShowData1]\nSetNum=7\n"
                               "SetData1\\SetType=0\nSetData1\\SongId=8\nSetData2\\SongId=7\n"
                               "SetData3\\SetType=2\nSetData4\\SetType=1\nSetData4\\SongId=7\n"
                               "SetData5\\SetType=0\nSetData5\\SongId=7\nSetData07\\SetType=1\n"
                               "SetData8\\SetType=1\n"));
        QVERIFY(data.SongList.size() == 4 && data.SongList[0].Bar == 0 && data.MaxSongId == 7);
        // Entries 6 and 7 are not in the file and read as those of the song with Id 0.
        QCOMPARE(titles(data.ShowList.at(0)), QStringLiteral("First [] First Zero Zero"));
        QVERIFY(data.ShowList.size() == 2 && data.ShowList[1].SetList.empty());
        const QString missing = freshPath();
        data.readEdit(missing);
        QVERIFY(data.SongList.empty() && data.ShowList.empty() && data.MaxSongId == 0);
        QVERIFY(!QFile::exists(missing));
    }

    void writingDropsUntitledAndKeepsStaleKeys()
    {
        EditData data;
        for (std::int32_t id = 1; id <= 12; ++id) {
            data.SongList.push_back({id, QString::number(id), {}, 0, 0});
        }
        const EditDataSet first{kSetTypeSong, data.SongList[0], {}, {}};
        data.ShowList = {{QStringLiteral("A"), {}, {}}, {QStringLiteral("B"), {}, {first, first}}};
        const QString path = freshPath();
        data.writeEdit(path);

        data.SongList.resize(6);
        data.SongList[0].SongTitle.clear();
        data.ShowList[0].ShowTitle.clear();
        data.ShowList[1].SetList[0] = {kSetTypeSpace, {}, QStringLiteral("MC"), {}};
        data.writeEdit(path);
        QVERIFY(data.SongList.size() == 5 && data.ShowList.size() == 1);
        QVERIFY(bytes(path).contains("[SongData12]"));
        data.readEdit(fileWith(bytes(path)));
        QVERIFY(data.SongList.size() == 5 && data.SongList[0].Id == 2 && data.MaxSongId == 6);
        QVERIFY(data.ShowList.size() == 1 && data.ShowList[0].ShowTitle == QLatin1String("B"));
        QCOMPARE(titles(data.ShowList[0]), QStringLiteral("[MC]"));
    }

    void survivesHostileFiles()
    {
        const QByteArray show("SetNum=2147483647\nSetData100000\\SetType=1\n"
                              "SetData100001\\SetType=1\n");
        const QByteArray shows = "ShowDataNum=2\n[ShowData1]\n" + show + "[ShowData2]\n" + show;
        struct Case
        {
            QByteArray content;
            std::size_t songs;
            std::size_t entries;
        };
        for (const Case& file : std::initializer_list<Case>{
                 {"SongDataNum=2147483647\nShowDataNum=2147483647\n", 100'000, 0},
                 {"SongDataNum=-1\n" + shows, 0, 2}, // The spaces.
                 {"SongDataNum=1\n" + shows, 1,
                  100'000 + 2 * 2}, // And entries of the song with Id 0.
                 {"SongDataNum=1, 2\nShowDataNum=@Invalid()\n", 0, 0},
                 {QByteArray("\x7f\x45LF\0\0=\n[\n]\n=\n\\x\n[a]b\n\0", 22), 0, 0},
                 {"SongDataNum=1\n" + kHarmfulValues, 1, 0}}) {
            const QString path = fileWith("[General]\n" + file.content);
            EditData data;
            data.readEdit(path);
            QCOMPARE(data.SongList.size(), file.songs);
            std::size_t entries = 0;
            for (const EditDataShow& read : data.ShowList) {
                entries += read.SetList.size();
            }
            QCOMPARE(entries, file.entries);

            data.SongList = {{1, QStringLiteral("One"), {}, 0, 0}};
            data.writeEdit(path);
            data.readEdit(fileWith(bytes(path)));
            QCOMPARE(data.SongList.at(0).SongTitle, QStringLiteral("One"));
        }
    }

    void failedWriteKeepsOldFile_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<rlim_t>("bytesFree");
        const QString old = fileWith("[General]\nSongDataNum=0\n");
        QTest::newRow("below a file") << old + QLatin1String("/a.ini") << RLIM_INFINITY;
        QTest::newRow("a directory") << dir.path() << RLIM_INFINITY;
        QTest::newRow("full disk") << old << rlim_t{0};
        QTest::newRow("disk with room for a part") << old << rlim_t{300};
        QTest::newRow("disk with room for a part, no old file") << freshPath() << rlim_t{300};
        // The part ends with a line, and has as many lines as keys are written, and more.
        QByteArray manyKeys = "[General]\nSongDataNum=0\n[Old]\n";
        for (char key = 'a'; key <= 'g'; ++key) {
            manyKeys += key + QByteArray("=") + QByteArray(40, key) + '\n';
        }
        const rlim_t part = manyKeys.size() + sizeof "ShowDataNum=0\n\n\n[SongData1]\nBar=0";
        QTest::newRow("disk with room for some lines") << fileWith(manyKeys) << part;
    }

    void failedWriteKeepsOldFile()
    {
        QFETCH(const QString, path);
        QFETCH(const rlim_t, bytesFree);
        const bool existed = QFile::exists(path);
        const QByteArray before = bytes(path);
        EditData data;
        data.SongList = {{1, QString(300, QLatin1Char('a')), {}, 0, 0}, {}};
        rlimit limit{}; // The largest size of a file: writing beyond it fails as on a full disk.
        getrlimit(RLIMIT_FSIZE, &limit);
        const rlimit tight{bytesFree, limit.rlim_max};
        std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &tight);
        data.writeEdit(path);
        setrlimit(RLIMIT_FSIZE, &limit);
        QCOMPARE(bytes(path), before);
        QCOMPARE(QFile::exists(path), existed);
        QCOMPARE(data.SongList.size(), 1U); // The untitled one goes all the same.
    }
};

VELT_TEST_MAIN(SetListFileTest)
#include "tst_setlistfile.moc"
