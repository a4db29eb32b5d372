// SPDX-License-Identifier: MIT
// What each button and cell of the editor does to songs, shows and set lists.
#include "editor.h"

namespace {

const QMap<QString, QString> kQuestions{
    {"delete", "Do you really want to delete this?"},
    {"used", "This Song is used for SetList. Do you really want to delete this?"},
    {"all", "Do you really want to delete all?"}};

// One letter for each song, - for a space, ? for no title.
QString letters(const QAbstractItemView* view)
{
    QString all;
    for (int row = 0; row < view->model()->rowCount(); ++row) {
        const QModelIndex title = view->model()->index(row, 0);
        const bool isGrey = title.data(Qt::BackgroundRole).value<QBrush>().color() == 0xCDCDCD;
        all += isGrey ? "-" : title.data().toString().isEmpty() ? "?" : title.data().toString();
    }
    return all;
}

QString letters(const std::vector<EditDataSet>& setList)
{
    QString all;
    for (const EditDataSet& entry : setList) {
        const QString& title = entry.Song.SongTitle;
        all += entry.SetType == kSetTypeSpace ? "-" : title.isEmpty() ? "?" : title;
    }
    return all;
}

// One letter for the buttons that are enabled.
QString enabled(Editor& editor)
{
    const std::pair<QChar, QString> buttons[] = {
        {'S', "pushShowListDelete"}, {'C', "pushShowListDuplicate"},
        {'L', "pushSongListDelete"}, {'I', "pushSongInsert"},
        {'P', "pushAddSpace"},       {'O', "listWidgetSong"},
        {'T', "tableSetList"},       {'U', "pushSetUp"},
        {'D', "pushSetDown"},        {'X', "pushSetDelete"}};
    QString all;
    for (const auto& [letter, name] : buttons) {
        all += editor.isEnabled(name) ? QString(letter) : QString();
    }
    return all;
}

// "songs 4 2" clicks the rows, from the second on with Control; "type set 0 1 cue" types into row
// 0, column 1; "SetDelete delete" presses a button and says OK to the question, "!delete" says
// Cancel.
void play(Editor& editor, const QString& step)
{
    QStringList words = step.split(' ');
    const QString verb = words.takeFirst();
    const QMap<QString, QAbstractItemView*> views{{"songs", editor.songs},
                                                  {"shows", editor.shows},
                                                  {"set", editor.set},
                                                  {"offered", editor.offered}};
    if (views.contains(verb)) {
        Qt::KeyboardModifiers modifiers = Qt::NoModifier;
        for (const QString& row : words) {
            editor.click(views[verb], row.toInt(), 0, modifiers);
            modifiers = Qt::ControlModifier;
        }
    } else if (verb == "type") {
        editor.type(qobject_cast<QTableWidget*>(views[words[0]]), words[1].toInt(),
                    words[2].toInt(), words.value(3));
    } else {
        for (QString question : words) {
            const bool agrees = !question.startsWith('!');
            editor.script.answerQuestion(kQuestions[question.remove('!')], kOkCancel,
                                         agrees ? QMessageBox::Ok : QMessageBox::Cancel);
        }
        editor.press("push" + verb);
    }
}

} // namespace

class EditDialogStepsTest : public TestCase
{
    Q_OBJECT

private slots:
    void step_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QString>("songs");
        QTest::addColumn<QString>("shows");
        QTest::addColumn<QString>("set");
        QTest::addColumn<QString>("on");
        QTest::addColumn<bool>("isChanged");
        const QString songs = "ABCDEF";
        const QString shows = "Hall:AB-CB Club:BE Bar:";
        const auto row = [](const char* name, const char* steps, const QString& songsAfter,
                            const QString& showsAfter, const char* set, const char* on,
                            bool isChanged = true) {
            QTest::newRow(name) << steps << songsAfter << showsAfter << set << on << isChanged;
        };
        row("nothing", "shows 0", songs, shows, "AB-CB", "SCPOT", false);

        row("song at the end", "SongListAdd", "ABCDEF?", shows, "AB-CB", "SCPOT");
        row("song below", "songs 1;SongListAdd", "AB?CDEF", shows, "AB-CB", "SCLPOT");
        row("song titled", "songs 1;SongListAdd;type songs 2 0 n", "ABnCDEF", shows, "AB-CB",
            "SCLPOT");
        row("song renamed", "type songs 1 0 b", "AbCDEF", "Hall:Ab-Cb Club:bE Bar:", "Ab-Cb",
            "SCLPOT");
        row("title emptied", "type songs 1 0", "A?CDEF", "Hall:A?-C? Club:?E Bar:", "A?-C?",
            "SCLPOT");
        row("song's memo", "set 1;type songs 0 1 m", songs, shows, "AB-CB", "SCLPOT");
        row("unused song gone", "songs 5;SongListDelete delete", "ABCDE", shows, "AB-CB", "SCPOT");
        row("used songs gone", "songs 3 4 1;SongListDelete used", "ACF",
            "Hall:A-C Club: Bar:", "A-C", "SCPOT");
        row("song kept", "songs 1;SongListDelete !used", songs, shows, "AB-CB", "SCLPOT", false);
        row("all songs gone", "SongListAllDel all", "", "Hall: Club: Bar:", "", "SCPOT");
        row("all songs kept", "SongListAllDel !all", songs, shows, "AB-CB", "SCPOT", false);

        row("show chosen", "shows 1", songs, shows, "BE", "SCPOT", false);
        row("show below", "ShowListAdd", songs, "Hall:AB-CB ?: Club:BE Bar:", "", "SCPOT");
        row("show on top", "ShowListAllDel all;ShowListAdd;ShowListAdd", songs, "?: ?:", "", "POT");
        row("show doubled", "shows 1;ShowListDuplicate", songs,
            "Hall:AB-CB Club:BE Club:BE Bar:", "BE", "SCPOT");
        row("show's memo", "type shows 0 1 m", songs, shows, "AB-CB", "SCPOT");
        row("show titled", "type shows 2 0 Pub", songs, "Hall:AB-CB Club:BE Pub:", "", "SCPOT");
        row("first show gone", "ShowListDelete delete", songs, "Club:BE Bar:", "BE", "SCPOT");
        row("last show gone", "shows 2;ShowListDelete delete", songs, "Hall:AB-CB Club:BE", "BE",
            "SCPOT");
        row("only show gone", "ShowListDelete delete;ShowListDelete delete;ShowListDelete delete",
            songs, "", "", "");
        row("show kept", "ShowListDelete !delete", songs, shows, "AB-CB", "SCPOT", false);
        row("all shows gone", "ShowListAllDel all", songs, "", "", "");

        row("songs chosen", "offered 5 3", songs, shows, "AB-CB", "SCIPOT", false);
        row("songs at the end", "offered 5 3;SongInsert", songs,
            "Hall:AB-CBDF Club:BE Bar:", "AB-CBDF", "SCPOT");
        row("songs below", "offered 5 3;set 2;SongInsert", songs,
            "Hall:AB-DFCB Club:BE Bar:", "AB-DFCB", "SCPOTUDX");
        row("space on top", "AddSpace", songs, "Hall:-AB-CB Club:BE Bar:", "-AB-CB", "SCPOT");
        row("space below", "set 1;AddSpace", songs, "Hall:AB--CB Club:BE Bar:", "AB--CB",
            "SCPOTUDX");
        row("space named", "type set 2 0 Intro", songs, shows, "AB-CB", "SCPOTUDX");
        row("cue", "type set 4 1 cue", songs, shows, "AB-CB", "SCPOTUX");
        row("first entry", "set 0", songs, shows, "AB-CB", "SCPOTDX", false);
        row("block up", "set 3 2;SetUp", songs, "Hall:A-CBB Club:BE Bar:", "A-CBB", "SCPOTUDX");
        row("block up again", "set 3 2;SetUp;SetUp", songs, "Hall:-CABB Club:BE Bar:", "-CABB",
            "SCPOTDX");
        row("scattered down", "set 0 3;SetDown", songs, "Hall:BA-BC Club:BE Bar:", "BA-BC",
            "SCPOTUX");
        row("entries gone", "set 4 0;SetDelete delete", songs, "Hall:B-C Club:BE Bar:", "B-C",
            "SCPOT");
        row("entries kept", "set 4;SetDelete !delete", songs, shows, "AB-CB", "SCPOTUX", false);
    }

    void step()
    {
        QFETCH(const QString, steps);
        QFETCH(const QString, songs);
        QFETCH(const QString, shows);
        Editor editor;
        for (const QString& step : steps.split(';')) {
            play(editor, step);
        }
        QCOMPARE(letters(editor.songs), songs);
        QCOMPARE(letters(editor.offered), QString(songs).remove('?'));
        QTEST(letters(editor.set), "set");
        QTEST(enabled(editor), "on");

        QString songsHeld;
        for (const EditDataSong& song : editor.data.SongList) {
            songsHeld += song.SongTitle.isEmpty() ? "?" : song.SongTitle;
        }
        QCOMPARE(songsHeld, songs);
        QStringList showsHeld;
        QString titles;
        for (const EditDataShow& show : editor.data.ShowList) {
            const QString title = show.ShowTitle.isEmpty() ? "?" : show.ShowTitle;
            titles += title;
            showsHeld << title + ":" + letters(show.SetList);
        }
        QCOMPARE(showsHeld.join(' '), shows);
        QCOMPARE(letters(editor.shows), titles);

        QFETCH(const bool, isChanged);
        if (isChanged) {
            answerSaveQuestion(editor.script, QMessageBox::No);
        }
        editor.dialog.close();
        QVERIFY(editor.script.isDone());
        QVERIFY(!editor.dialog.isVisible());
    }

    void copiesEachFieldOfASong()
    {
        Editor editor;
        const QString texts[] = {"b", "memo", "77", "88"};
        for (int column = 0; column < 4; ++column) {
            editor.type(editor.songs, 1, column, texts[column]);
        }
        for (const EditDataSong& copy :
             {editor.data.SongList[1], editor.data.ShowList[0].SetList[4].Song,
              editor.data.ShowList[1].SetList[0].Song}) {
            QCOMPARE(QStringList({copy.SongTitle, copy.SongMemo}), QStringList({"b", "memo"}));
            QCOMPARE(copy.Marker, 77);
            QCOMPARE(copy.Bar, 88);
        }
        play(editor, "SongListAllDel all");
        play(editor, "SongListAdd");
        QCOMPARE(editor.data.SongList[0].Id, 7); // No Id is used again.
    }

    void storesWhatIsTypedIntoShowsAndEntries()
    {
        Editor editor;
        editor.type(editor.shows, 0, 1, "memo");
        editor.type(editor.set, 2, 0, "Intro");
        editor.type(editor.set, 2, 1, "cue");
        QVERIFY(!editor.beginTyping(editor.set, 1, 0, "no")); // A song's title.
        const EditDataShow& show = editor.data.ShowList[0];
        QCOMPARE(QStringList({show.ShowMemo, show.SetList[2].SpaceName, show.SetList[2].Cue}),
                 QStringList({"memo", "Intro", "cue"}));
    }
};

VELT_TEST_MAIN(EditDialogStepsTest)
#include "tst_editdialog_steps.moc"
