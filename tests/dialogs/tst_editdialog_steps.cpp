// SPDX-License-Identifier: MIT
// What each button and cell of the editor does to songs, shows and set lists.
#include "editor.h"

namespace {

const QMap<QString, QString> kQuestions{
    {"delete", "Do you really want to delete this?"},
    {"used", "This Song is used for SetList. Do you really want to delete this?"},
    {"all", "Do you really want to delete all?"}};

// What the editor shows: the songs, and each show with its set list.
QString overview(const Editor& editor)
{
    QString all = letters(editor.songs);
    for (int row = 0; row < editor.shows->rowCount(); ++row) {
        editor.shows->setCurrentCell(row, 0);
        const QString title = editor.shows->item(row, 0)->text();
        all += " " + (title.isEmpty() ? "?" : title) + ":" + letters(editor.set);
    }
    return all;
}

// One letter for the widgets that are enabled; those of one letter always are together.
QString enabled(Editor& editor)
{
    const std::pair<const char*, const char*> widgets[] = {
        {"S", "pushShowListDelete"}, {"S", "pushShowListDuplicate"},
        {"P", "pushAddSpace"},       {"P", "listWidgetSong"},
        {"P", "tableSetList"},       {"L", "pushSongListDelete"},
        {"I", "pushSongInsert"},     {"U", "pushSetUp"},
        {"D", "pushSetDown"},        {"X", "pushSetDelete"}};
    QString all;
    for (const auto& [letter, name] : widgets) {
        all += editor.find<QWidget>(name)->isEnabled() ? letter : "";
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

class TestEditDialogSteps : public TestCase
{
    Q_OBJECT

private slots:
    // What comes of the steps: the songs, each show's set list, the displayed one, which buttons
    // are enabled, whether something is unsaved.
    void step_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QString>("songs");
        QTest::addColumn<QString>("shows");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("on");
        QTest::addColumn<bool>("changed");
        const QString all = "ABCDEF";
        const QString tour = " 1:AB-CB 2:BE 3:";
        const auto row = [](const char* name, const char* steps, const QString& songs,
                            const QString& shows, const QString& shown, const char* on,
                            bool changed = true) {
            QTest::newRow(name) << steps << songs << shows << shown << on << changed;
        };
        row("nothing", "shows 0", all, tour, "AB-CB", "SP", false);
        row("song at the end", "SongListAdd", "ABCDEF?", tour, "AB-CB", "SP");
        row("song below", "songs 1;SongListAdd;type songs 2 0 n", "ABnCDEF", tour, "AB-CB", "SPL");
        row("song renamed", "type songs 1 0 b", "AbCDEF", " 1:Ab-Cb 2:bE 3:", "Ab-Cb", "SPL");
        row("title emptied", "type songs 1 0", "A?CDEF", " 1:A?-C? 2:?E 3:", "A?-C?", "SPL");
        row("song's memo", "set 1;type songs 0 1 m", all, tour, "AB-CB", "SPL");
        row("unused song gone", "songs 5;SongListDelete delete", "ABCDE", tour, "AB-CB", "SP");
        row("used songs gone", "songs 3 4 1;SongListDelete used", "ACF", " 1:A-C 2: 3:", "A-C",
            "SP");
        row("song kept", "songs 1;SongListDelete !used", all, tour, "AB-CB", "SPL", false);
        row("all songs gone", "SongListAllDel all", "", " 1: 2: 3:", "", "SP");
        row("show chosen", "shows 1", all, tour, "BE", "SP", false);
        row("show below", "ShowListAdd", all, " 1:AB-CB ?: 2:BE 3:", "", "SP");
        row("show on top", "ShowListAllDel all;ShowListAdd", all, " ?:", "", "P");
        row("show doubled", "shows 1;ShowListDuplicate", all, " 1:AB-CB 2:BE 2:BE 3:", "BE", "SP");
        row("show titled", "type shows 2 0 c", all, " 1:AB-CB 2:BE c:", "", "SP");
        row("show gone", "shows 1;ShowListDelete delete", all, " 1:AB-CB 3:", "", "SP");
        row("last show gone", "shows 2;ShowListDelete delete", all, " 1:AB-CB 2:BE", "BE", "SP");
        row("only show gone", "ShowListDelete delete;ShowListDelete delete;ShowListDelete delete",
            all, "", "", "");
        row("all shows gone", "ShowListAllDel all", all, "", "", "");
        row("songs chosen", "offered 5 3", all, tour, "AB-CB", "SPI", false);
        row("songs at the end", "offered 5 3;SongInsert", all, " 1:AB-CBDF 2:BE 3:", "AB-CBDF",
            "SP");
        row("songs below", "offered 5 3;set 2;SongInsert", all, " 1:AB-DFCB 2:BE 3:", "AB-DFCB",
            "SPUDX");
        row("space on top", "AddSpace", all, " 1:-AB-CB 2:BE 3:", "-AB-CB", "SP");
        row("space below", "set 1;AddSpace", all, " 1:AB--CB 2:BE 3:", "AB--CB", "SPUDX");
        row("space selected", "set 1;AddSpace;SetDelete delete", all, tour, "AB-CB", "SP");
        row("block up", "set 3 2;SetUp", all, " 1:A-CBB 2:BE 3:", "A-CBB", "SPUDX");
        row("block up again", "set 3 2;SetUp;SetUp", all, " 1:-CABB 2:BE 3:", "-CABB", "SPDX");
        row("block down", "set 1 2;SetDown", all, " 1:ACB-B 2:BE 3:", "ACB-B", "SPUDX");
        row("scattered down", "set 0 3;SetDown", all, " 1:BA-BC 2:BE 3:", "BA-BC", "SPUX");
        row("entries gone", "set 4 0;SetDelete delete", all, " 1:B-C 2:BE 3:", "B-C", "SP");
        row("entries kept", "set 4;SetDelete !delete", all, tour, "AB-CB", "SPUX", false);
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
        QTEST(enabled(editor), "on");
        QCOMPARE(letters(editor.offered), QString(songs).remove('?'));
        QTEST(letters(editor.set), "shown");
        QCOMPARE(overview(editor), songs + shows);
        QCOMPARE(overview(Editor(editor.data)), songs + shows);
        QFETCH(const bool, changed);
        if (changed) {
            answerSaveQuestion(editor.script, QMessageBox::No);
        }
        editor.dialog.close();
        QVERIFY(editor.script.isDone());
        QVERIFY(!editor.dialog.isVisible());
    }

    void storesEachCell()
    {
        Editor editor;
        editor.type(editor.shows, 0, 1, "show's memo");
        editor.type(editor.set, 2, 0, "Intro");
        QVERIFY(!editor.beginTyping(editor.set, 1, 0, "no")); // A song's title.
        QVERIFY(editor.beginTyping(editor.set, 2, 1, "cue"));
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Enter}) { // Not a key of the table.
            QTest::keyClick(editor.dialog.focusWidget(), key, Qt::ControlModifier);
            QCOMPARE(editor.set->selectedItems().size(), 2);
        }
        const EditDataShow& show = editor.data.ShowList[0];
        QCOMPARE(QStringList({show.ShowMemo, show.SetList[2].SpaceName, show.SetList[2].Cue}),
                 QStringList({"show's memo", "Intro", "cue"}));

        const QString texts[] = {"a\r\nb\nc\rd", "memo", "77", "88"};
        for (int column = 0; column < 4; ++column) {
            editor.type(editor.songs, 1, column, texts[column]);
        }
        for (const EditDataSong& copy : {editor.data.SongList[1], show.SetList[4].Song,
                                         editor.data.ShowList[1].SetList[0].Song}) {
            QCOMPARE(copy.SongTitle, QString("a b c d"));
            QCOMPARE(copy.SongMemo, QString("memo"));
            QCOMPARE(copy.Marker, 77);
            QCOMPARE(copy.Bar, 88);
        }
        play(editor, "SongListAllDel all");
        play(editor, "SongListAdd");
        QCOMPARE(editor.data.SongList[0].Id, 7); // No Id is used again.
    }
};

VELT_TEST_MAIN(TestEditDialogSteps)
#include "tst_editdialog_steps.moc"
