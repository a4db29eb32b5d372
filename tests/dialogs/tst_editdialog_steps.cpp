// SPDX-License-Identifier: MIT
// What each button and cell of the editor does to songs, shows and set lists.
#include "editor.h"

#include <QTimer>

#include <random>

namespace {

const QMap<QString, QString> kQuestions{
    {"delete", "Do you really want to delete this?"},
    {"used", "This Song is used for SetList. Do you really want to delete this?"},
    {"all", "Do you really want to delete all?"}};

QString orMark(const QString& title)
{
    return title.isEmpty() ? "?" : title;
}

// One letter for each song, - for a space, ? for no title.
QString letters(const QAbstractItemView* view)
{
    QString all;
    for (int row = 0; row < view->model()->rowCount(); ++row) {
        const QModelIndex title = view->model()->index(row, 0);
        const bool isGrey = title.data(Qt::BackgroundRole).value<QBrush>().color() == 0xCDCDCD;
        all += isGrey ? "-" : orMark(title.data().toString());
    }
    return all;
}

QString letters(const std::vector<EditDataSet>& setList)
{
    QString all;
    for (const EditDataSet& entry : setList) {
        all += entry.SetType == kSetTypeSpace ? "-" : orMark(entry.Song.SongTitle);
    }
    return all;
}

// What the data holds.
QString songsHeld(const Editor& editor)
{
    QString all;
    for (const EditDataSong& song : editor.data.SongList) {
        all += orMark(song.SongTitle);
    }
    return all;
}

QStringList showsHeld(const Editor& editor)
{
    QStringList all;
    for (const EditDataShow& show : editor.data.ShowList) {
        all << orMark(show.ShowTitle) + ":" + letters(show.SetList);
    }
    return all;
}

// One letter for the buttons that are enabled; those of one letter always are together.
QString enabled(Editor& editor)
{
    const std::pair<QString, QStringList> groups[] = {
        {"S", {"pushShowListDelete", "pushShowListDuplicate"}},
        {"P", {"pushAddSpace", "listWidgetSong", "tableSetList"}},
        {"L", {"pushSongListDelete"}},
        {"I", {"pushSongInsert"}},
        {"U", {"pushSetUp"}},
        {"D", {"pushSetDown"}},
        {"X", {"pushSetDelete"}}};
    QString all;
    for (const auto& [letter, names] : groups) {
        for (const QString& name : names) {
            all += editor.isEnabled(name) ? letter : QString();
        }
    }
    return all.replace("SS", "S").replace("PPP", "P");
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
            if (row.toInt() < views[verb]->model()->rowCount()) {
                editor.click(views[verb], row.toInt(), 0, modifiers);
            }
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
    // What comes of the steps: the songs, each show's set list, which of them is displayed, which
    // buttons are enabled, whether something is unsaved.
    void step_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QString>("songs");
        QTest::addColumn<QString>("shows");
        QTest::addColumn<int>("shown");
        QTest::addColumn<QString>("on");
        QTest::addColumn<bool>("changed");
        const QString all = "ABCDEF";
        const QString tour = "1:AB-CB 2:BE 3:";
        const auto row = [](const char* name, const char* steps, const QString& songs,
                            const QString& shows, int shown, const char* on, bool changed = true) {
            QTest::newRow(name) << steps << songs << shows << shown << on << changed;
        };
        row("nothing", "shows 0", all, tour, 0, "SP", false);
        row("song at the end", "SongListAdd", "ABCDEF?", tour, 0, "SP");
        row("song below", "songs 1;SongListAdd;type songs 2 0 n", "ABnCDEF", tour, 0, "SPL");
        row("song renamed", "type songs 1 0 b", "AbCDEF", "1:Ab-Cb 2:bE 3:", 0, "SPL");
        row("title emptied", "type songs 1 0", "A?CDEF", "1:A?-C? 2:?E 3:", 0, "SPL");
        row("song's memo", "set 1;type songs 0 1 m", all, tour, 0, "SPL");
        row("unused song gone", "songs 5;SongListDelete delete", "ABCDE", tour, 0, "SP");
        row("used songs gone", "songs 3 4 1;SongListDelete used", "ACF", "1:A-C 2: 3:", 0, "SP");
        row("song kept", "songs 1;SongListDelete !used", all, tour, 0, "SPL", false);
        row("all songs gone", "SongListAllDel all", "", "1: 2: 3:", 0, "SP");
        row("all songs kept", "SongListAllDel !all", all, tour, 0, "SP", false);
        row("show chosen", "shows 1", all, tour, 1, "SP", false);
        row("show below", "ShowListAdd", all, "1:AB-CB ?: 2:BE 3:", 1, "SP");
        row("show on top", "ShowListAllDel all;ShowListAdd", all, "?:", 0, "P");
        row("show doubled", "shows 1;ShowListDuplicate", all, "1:AB-CB 2:BE 2:BE 3:", 2, "SP");
        row("show titled", "type shows 2 0 c", all, "1:AB-CB 2:BE c:", 2, "SP");
        row("first show gone", "ShowListDelete delete", all, "2:BE 3:", 0, "SP");
        row("last show gone", "shows 2;ShowListDelete delete", all, "1:AB-CB 2:BE", 1, "SP");
        row("only show gone", "ShowListDelete delete;ShowListDelete delete;ShowListDelete delete",
            all, "", -1, "");
        row("show kept", "ShowListDelete !delete", all, tour, 0, "SP", false);
        row("all shows gone", "ShowListAllDel all", all, "", -1, "");
        row("songs chosen", "offered 5 3", all, tour, 0, "SPI", false);
        row("songs at the end", "offered 5 3;SongInsert", all, "1:AB-CBDF 2:BE 3:", 0, "SP");
        row("songs below", "offered 5 3;set 2;SongInsert", all, "1:AB-DFCB 2:BE 3:", 0, "SPUDX");
        row("space on top", "AddSpace", all, "1:-AB-CB 2:BE 3:", 0, "SP");
        row("space below", "set 1;AddSpace", all, "1:AB--CB 2:BE 3:", 0, "SPUDX");
        row("space selected", "set 1;AddSpace;SetDelete delete", all, tour, 0, "SP");
        row("space named", "type set 2 0 Intro", all, tour, 0, "SPUDX");
        row("cue", "type set 4 1 cue", all, tour, 0, "SPUX");
        row("block up", "set 3 2;SetUp", all, "1:A-CBB 2:BE 3:", 0, "SPUDX");
        row("block up again", "set 3 2;SetUp;SetUp", all, "1:-CABB 2:BE 3:", 0, "SPDX");
        row("scattered down", "set 0 3;SetDown", all, "1:BA-BC 2:BE 3:", 0, "SPUX");
        row("entries gone", "set 4 0;SetDelete delete", all, "1:B-C 2:BE 3:", 0, "SP");
        row("entries kept", "set 4;SetDelete !delete", all, tour, 0, "SPUX", false);
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
        QCOMPARE(letters(editor.shows), QString(shows).remove(QRegularExpression(":[^ ]* ?")));
        QCOMPARE(letters(editor.offered), QString(songs).remove('?'));
        QTEST(enabled(editor), "on");

        QCOMPARE(songsHeld(editor), songs);
        QCOMPARE(showsHeld(editor).join(' '), shows);
        QFETCH(const int, shown);
        QCOMPARE(letters(editor.set), showsHeld(editor).value(shown).section(':', 1));

        QFETCH(const bool, changed);
        if (changed) {
            answerSaveQuestion(editor.script, QMessageBox::No);
        }
        editor.dialog.close();
        QVERIFY(editor.script.isDone());
        QVERIFY(!editor.dialog.isVisible());
    }

    // Random steps; questions are answered by OK.
    void staysInStepWithTheData()
    {
        const QStringList buttons{
            "SongListAdd", "SongListDelete", "ShowListAdd", "ShowListDelete", "SongInsert",
            "AddSpace",    "SetDelete",      "SetUp",       "SetDown",        "ShowListDuplicate"};
        const QStringList views{"songs %1 %2", "shows %1", "set %1 %2", "offered %1 %2"};
        std::minstd_rand random(1);
        Editor editor;
        for (int i = 0; i < 1000; ++i) {
            const auto pick = [&](int count) { return static_cast<int>(random()) % count; };
            QString step = buttons[pick(buttons.size())];
            if (pick(2) == 0) {
                step = views[pick(views.size())];
                step.replace("%1", QString::number(pick(8)))
                    .replace("%2", QString::number(pick(8)));
            }
            QTimer::singleShot(0, &editor.dialog, [] {
                if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                    box->button(QMessageBox::Ok)->click();
                }
            });
            play(editor, step);
            const int shown = editor.shows->currentRow();
            QCOMPARE(letters(editor.set), showsHeld(editor).value(shown).section(':', 1));
            QCOMPARE(letters(editor.songs), songsHeld(editor));
            QVERIFY(!QTest::currentTestFailed());
        }
    }

    void storesEachCell()
    {
        Editor editor;
        editor.type(editor.shows, 0, 1, "show's memo");
        editor.type(editor.set, 2, 0, "Intro");
        editor.type(editor.set, 2, 1, "cue");
        QVERIFY(!editor.beginTyping(editor.set, 1, 0, "no")); // A song's title.
        const EditDataShow& show = editor.data.ShowList[0];
        QCOMPARE(QStringList({show.ShowMemo, show.SetList[2].SpaceName, show.SetList[2].Cue}),
                 QStringList({"show's memo", "Intro", "cue"}));

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
};

VELT_TEST_MAIN(EditDialogStepsTest)
#include "tst_editdialog_steps.moc"
