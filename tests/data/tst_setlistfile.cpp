// SPDX-License-Identifier: MIT
#include "editdata.h"
#include "filetest.h"
#include "settingsfile.h"

// What a set list shows: the titles of songs, and the names of spaces in brackets.
static QString titles(const EditDataShow& show)
{
    QStringList result;
    for (const EditDataSet& entry : show.SetList) {
        result << (entry.SetType == kSetTypeSpace ? QString("[%1]").arg(entry.SpaceName)
                                                  : entry.Song.SongTitle);
    }
    return result.join(QChar(' '));
}

class TestSetListFile : public FileTest
{
    Q_OBJECT

private slots:
    void readsAndWritesTheAgreedKeys()
    {
        const QByteArray content(
            "[General]\nShowDataNum=2\nSongDataNum=2\n\n[ShowData1]\nSetNum=0\nShowMemo=\n"
            "ShowTitle=Rehearsal\n\n[ShowData2]\nSetData1\\Cue=go\nSetData1\\SetType=0\n"
            "SetData1\\SongId=-5\nSetData1\\SpaceName=\nSetData2\\Cue=\nSetData2\\SetType=1\n"
            "SetData2\\SpaceName=MC\nSetNum=2\nShowMemo=note\nShowTitle=Gig\n\n"
            "[SongData1]\nBar=3\nId=-5\nMarker=4\nSongMemo=slow\nSongTitle=One\n\n"
            "[SongData2]\nBar=0\nId=7\nMarker=0\nSongMemo=\nSongTitle=Two\n");
        EditData data;
        data.readEdit(fileWith(content));
        QCOMPARE(titles(data.ShowList.at(1)), QString("One [MC]"));
        QCOMPARE(data.SongList.at(0).Bar, 3);
        const QString path = freshPath();
        data.writeEdit(path);
        QCOMPARE(bytes(path), content);

        // What has no title is dropped and the rest moves up; keys that nobody reads stay.
        data.SongList[0].SongTitle.clear();
        data.ShowList[0].ShowTitle.clear();
        data.ShowList[1].SetList[0] = {kSetTypeSpace, {}, "Intro", {}};
        data.writeEdit(path);
        QCOMPARE(data.SongList.size(), 1U);
        QVERIFY(bytes(path).contains("[SongData2]"));
        data.readEdit(fileWith(bytes(path)));
        QVERIFY(data.SongList.size() == 1 && data.SongList[0].Id == 7 && data.MaxSongId == 7);
        QVERIFY(data.ShowList.size() == 1 && data.ShowList[0].ShowTitle == "Gig");
        QCOMPARE(titles(data.ShowList[0]), QString("[Intro] [MC]"));
    }

    void keepsEveryText_data()
    {
        QTest::addColumn<QString>("text");
        const auto row = [](const char* name, const QString& text) { QTest::newRow(name) << text; };
        row("all of Unicode", "\u6b4c\u8a5e \U0001F3B5a\U00010FFFD");
        row("signs of INI files", R"( a,b;c="d\e" [f]/%41%2F#'g' )");
        row("lines", "a\r\nb\tc\n");
        row("NUL", QString(1, QChar(0)) + "0");
        row("no value", "@Invalid()");
        row("serialised values", "@@Variant(\\0) =@Variant( ,@Variant(");
        row("serialised after blanks", "  @Variant(x), @DateTime(");
        row("10,000 characters", QString(10'000, QChar(0x6b4c)));
    }

    void keepsEveryText()
    {
        QFETCH(QString, text);
        EditData data;
        data.SongList = {{1, text, text, -2, INT_MAX}};
        data.ShowList = {{text, text, {{kSetTypeSpace, {}, text, text}}}};
        const QString path = freshPath();
        data.writeEdit(path);
        data.readEdit(path);
        const EditDataSong& song = data.SongList.at(0);
        const EditDataShow& show = data.ShowList.at(0);
        QVERIFY(song.Marker == -2 && song.Bar == INT_MAX);
        for (const QString& read : {song.SongTitle, song.SongMemo, show.ShowTitle, show.ShowMemo,
                                    show.SetList.at(0).SpaceName, show.SetList.at(0).Cue}) {
            QCOMPARE(read, text);
        }
    }

    void readsEveryEncoding_data()
    {
        QTest::addColumn<QByteArray>("mark"); // At the start of the file.
        QTest::addColumn<QByteArray>("title");
        const QByteArray utf8 = titleInTheFile.toUtf8();
        QTest::newRow("of Qt 5") << QByteArray() << QByteArray(R"("Caf\xe9 \x65e5 \xd83c\xdfb5")");
        QTest::newRow("of Qt 6") << QByteArray() << '"' + utf8 + '"';
        QTest::newRow("of Qt 6, damaged elsewhere") << QByteArray("; \xe9\n") << '"' + utf8 + '"';
        QTest::newRow("by hand, UTF-8") << QByteArray("\xef\xbb\xbf") << utf8;
        QTest::newRow("by hand, Latin-1")
            << QByteArray("; \xe9\n") << QByteArray("Caf\xe9 \\x65e5 \\xd83c\\xdfb5");
    }

    void readsEveryEncoding()
    {
        QFETCH(QByteArray, mark);
        QFETCH(QByteArray, title);
        const QString path = fileWith(mark + "[General]\nSongDataNum=1\nOther=" + title +
                                      "\n[SongData1]\nSongTitle=" + title + '\n');
        EditData data;
        data.readEdit(path);
        QCOMPARE(data.SongList.at(0).SongTitle, titleInTheFile);
        data.writeEdit(path);
        QString other; // Is kept by the save, though nobody reads it.
        readSettingsFile(path,
                         [&](const QSettings& file) { other = file.value("Other").toString(); });
        QCOMPARE(other, titleInTheFile);
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
        QCOMPARE(titles(data.ShowList.at(0)), QString("First [] First Zero Zero"));
        QVERIFY(data.ShowList.size() == 2 && data.ShowList[1].SetList.empty());
        data.readEdit(freshPath());
        QVERIFY(data.SongList.empty() && data.ShowList.empty() && data.MaxSongId == 0);
    }

    void survivesHostileFiles_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<std::size_t>("songs");
        QTest::addColumn<std::size_t>("entries"); // Of the last show.
        const auto row = [](const char* name, const QByteArray& content, std::size_t songs,
                            std::size_t entries) {
            QTest::newRow(name) << content << songs << entries;
        };
        const QByteArray show("SetNum=2147483647\nSetData100000\\SetType=1\n"
                              "SetData100001\\SetType=1\n");
        const QByteArray one = "ShowDataNum=1\n[ShowData1]\n" + show;
        const QByteArray two = "ShowDataNum=2\n[ShowData1]\n" + show + "[ShowData2]\n" + show;
        row("counts", "SongDataNum=2147483647\nShowDataNum=2147483647\n", 100'000, 0);
        row("entries without a song", "SongDataNum=-1\n" + one, 0, 1); // The space.
        row("entries of song 0", "SongDataNum=1\n" + one, 1, 100'000);
        row("what the first show left", "SongDataNum=1\n" + two, 1, 2);
        row("ill-typed counts", "SongDataNum=1, 2\nShowDataNum=@Invalid()\n", 0, 0);
        row("no text", QByteArray("\x7f\x45LF\0\0=\n[\n]\n=\n\\x\n[a]b\n\0", 22), 0, 0);
        row("serialised values", "SongDataNum=1\n" + kHarmfulValues, 1, 0);
    }

    void survivesHostileFiles()
    {
        QFETCH(QByteArray, content);
        const QString path = fileWith("[General]\n" + content);
        EditData data;
        data.readEdit(path);
        QTEST(data.SongList.size(), "songs");
        QTEST(data.ShowList.empty() ? 0 : data.ShowList.back().SetList.size(), "entries");

        data.SongList = {{1, "One", {}, 0, 0}};
        data.writeEdit(path);
        data.readEdit(path);
        QCOMPARE(data.SongList.at(0).SongTitle, QString("One"));
    }

private:
    const QString titleInTheFile = "Caf\u00e9 \u65e5 \U0001F3B5";
};

VELT_TEST_MAIN(TestSetListFile)
#include "tst_setlistfile.moc"
