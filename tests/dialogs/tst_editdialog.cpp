// SPDX-License-Identifier: MIT
// What a user does in the editor, told as stories.
#include "datafiles.h"
#include "editor.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>

namespace {

const QString kDelete = "Do you really want to delete this?";
const QString kDeleteUsed = "This Song is used for SetList. Do you really want to delete this?";
const QString kDeleteAll = "Do you really want to delete all?";
const QString kRead = "Contents have been changed. Do you want to read the configuration file?";

// Six songs A to F with the ids 1 to 6; three shows: A, B, space, C, B; B, E; none.
EditData tour()
{
    EditData data;
    for (char title = 'A'; title <= 'F'; ++title) {
        const int id = ++data.MaxSongId;
        data.SongList.push_back({id, QChar(title), {}, id + 10, id + 100});
    }
    const auto entries = [&data](const QByteArray& titles) {
        std::vector<EditDataSet> setList;
        for (const char title : titles) {
            setList.push_back(title == '-'
                                  ? EditDataSet{kSetTypeSpace, {}, "MC", {}}
                                  : EditDataSet{kSetTypeSong, data.SongList[title - 'A'], {}, {}});
        }
        return setList;
    };
    data.ShowList = {{"Hall", {}, entries("AB-CB")}, {"Club", {}, entries("BE")}, {"Bar", {}, {}}};
    return data;
}

// The titles that a table shows; names of spaces in brackets.
QString shortly(const QTableWidget* table)
{
    QStringList words;
    for (int row = 0; row < table->rowCount(); ++row) {
        const QTableWidgetItem* item = table->item(row, 0);
        const bool isGrey = item->background().color() == QColor(0xCD, 0xCD, 0xCD);
        words << (isGrey ? "[" + item->text() + "]" : item->text());
    }
    return words.join(' ');
}

EditData read(const QString& path)
{
    EditData data;
    data.readEdit(path);
    return data;
}

// Presses OPEN or SAVE AS and chooses a file, or cancels the file dialog if the path is empty.
void chooseFile(Editor& editor, const QString& button, const QString& path)
{
    editor.script.expect([=](QWidget* window) {
        auto* dialog = qobject_cast<QFileDialog*>(window);
        QVERIFY(dialog);
        const QString what = button == "pushOpen" ? "Open" : "Save";
        QCOMPARE(dialog->windowTitle(), what + " Setting File");
        QCOMPARE(dialog->nameFilters(), QStringList({"All File(*.*)", "Ini File(*.ini)"}));
        QCOMPARE(dialog->selectedNameFilter(), QString("Ini File(*.ini)"));
        // As typed: what is selected in the list can change until its directory has been read.
        dialog->findChild<QLineEdit*>("fileNameEdit")->setText(path);
        QMetaObject::invokeMethod(dialog, path.isEmpty() ? "reject" : "accept",
                                  Qt::QueuedConnection);
    });
    editor.press(button);
}

} // namespace

class EditDialogTest : public TestCase
{
    Q_OBJECT

private slots:
    void standsWhereItWasDesigned() // At 1173 x 675.
    {
        const std::map<QString, QRect> places{
            {"groupBoxSong", {10, 10, 491, 317}},    {"tableSongList", {30, 80, 451, 227}},
            {"groupBoxShow", {10, 337, 491, 272}},   {"pushShowListAdd", {20, 367, 101, 31}},
            {"tableShowList", {20, 407, 461, 182}},  {"groupBoxSet", {511, 10, 652, 599}},
            {"listWidgetSong", {521, 40, 131, 554}}, {"pushSongInsert", {150, 302, 41, 41}},
            {"pushAddSpace", {710, 40, 111, 28}},    {"pushSetDelete", {830, 40, 111, 28}},
            {"tableSetList", {710, 70, 392, 519}},   {"pushSetUp", {1113, 70, 41, 41}},
            {"pushSetDown", {1113, 120, 41, 41}},    {"pushOK", {10, 625, 131, 41}},
            {"pushCancel", {150, 625, 131, 41}},     {"pushOpen", {290, 625, 131, 41}},
            {"pushSaveAs", {430, 625, 131, 41}}};
        Editor editor;
        for (const auto& [name, place] : places) {
            const auto* widget = editor.find<QWidget>(name);
            const QPoint centre = widget->mapTo(&editor.dialog, widget->rect().center());
            const QWidget* hit = editor.dialog.childAt(centre);
            QVERIFY2(widget->geometry() == place, qPrintable(name));
            QVERIFY(name.startsWith("group") || hit == widget || widget->isAncestorOf(hit));
        }
        for (const QSize size : {QSize(1, 1), QSize(300, 60), QSize(1400, 901)}) {
            editor.dialog.resize(size);
            QVERIFY(!editor.dialog.grab().isNull());
        }
        QCOMPARE(editor.set->geometry(), QRect(710, 70, 619, 745));
    }

    // Bar and marker reach the DAW as keys: nothing but digits may.
    void readsNumbers()
    {
        Editor editor(tour());
        const std::pair<QString, int> typed[] = {{"129", 129}, {" 7 ", 7},         {"-5", 0},
                                                 {"12a", 0},   {"99999999999", 0}, {"", 0}};
        for (const auto& [text, bar] : typed) {
            editor.type(editor.songs, 5, 3, text);
            QCOMPARE(editor.data.SongList[5].Bar, bar);
            QCOMPARE(editor.songs->item(5, 3)->text(), text);
        }
    }

    void tabGoesToTheNextCellThatCanBeEdited_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QPoint>("from"); // Column, row.
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<QPoint>("to");
        const QPoint none(-1, -1); // No cell is open, and the focus stays.
        QTest::newRow("next column")
            << "tableSongList" << QPoint(0, 0) << Qt::Key_Tab << QPoint(1, 0);
        QTest::newRow("next row") << "tableShowList" << QPoint(1, 0) << Qt::Key_Tab << QPoint(0, 1);
        QTest::newRow("last bar") << "tableSongList" << QPoint(3, 5) << Qt::Key_Tab << none;
        QTest::newRow("last memo") << "tableShowList" << QPoint(1, 2) << Qt::Key_Tab << none;
        QTest::newRow("last cue") << "tableSetList" << QPoint(1, 4) << Qt::Key_Tab << none;
        QTest::newRow("over a title")
            << "tableSetList" << QPoint(1, 0) << Qt::Key_Tab << QPoint(1, 1);
        QTest::newRow("to a space")
            << "tableSetList" << QPoint(1, 1) << Qt::Key_Tab << QPoint(0, 2);
        QTest::newRow("back over a title")
            << "tableSetList" << QPoint(1, 4) << Qt::Key_Backtab << QPoint(1, 3);
        QTest::newRow("first cue") << "tableSetList" << QPoint(1, 0) << Qt::Key_Backtab << none;
        QTest::newRow("first title") << "tableSongList" << QPoint(0, 0) << Qt::Key_Backtab << none;
    }

    void tabGoesToTheNextCellThatCanBeEdited()
    {
        QFETCH(const QString, table);
        QFETCH(const QPoint, from);
        QFETCH(const Qt::Key, key);
        QFETCH(const QPoint, to);
        Editor editor(tour());
        auto* view = editor.find<QTableWidget>(table);
        QVERIFY(editor.beginTyping(view, from.y(), from.x(), "7"));
        QTest::keyClick(editor.dialog.focusWidget(), key);
        QCOMPARE(view->item(from.y(), from.x())->text(), QString("7"));
        auto* cell = qobject_cast<QLineEdit*>(editor.dialog.focusWidget());
        if (!cell) {
            QCOMPARE(QPoint(-1, -1), to);
            QCOMPARE(editor.dialog.focusWidget(), static_cast<QWidget*>(view));
            return;
        }
        QCOMPARE(QPoint(view->currentColumn(), view->currentRow()), to);
        QCOMPARE(cell->selectedText(), view->currentItem()->text());
        QCOMPARE(view->selectedItems().size(), view->columnCount());
    }

    void keepsKeysInTheOpenCell()
    {
        struct Outside : QObject
        {
            bool eventFilter(QObject*, QEvent* event) override
            {
                keys += event->type() == QEvent::KeyPress ? 1 : 0;
                return false;
            }
            int keys = 0;
        } outside;
        Editor editor(tour());
        QVERIFY(editor.beginTyping(editor.set, 0, 1, "cue"));
        QPointer<QWidget> cell = editor.dialog.focusWidget();
        editor.set->installEventFilter(&outside);
        editor.set->viewport()->installEventFilter(&outside);
        for (const Qt::Key key : {Qt::Key_F5, Qt::Key_Space, Qt::Key_Enter}) {
            QTest::keyClick(cell, key, Qt::ControlModifier);
        }
        QCOMPARE(outside.keys, 0);
        QCOMPARE(editor.data.ShowList[0].SetList[0].Cue, QString("cue")); // Enter stored it.
    }

    void storesLineBreaksAsBlanks()
    {
        Editor editor(tour());
        editor.type(editor.songs, 0, 0, "one\r\ntwo\nthree\rfour");
        QCOMPARE(editor.data.SongList[0].SongTitle, QString("one two three four"));
        QCOMPARE(editor.set->item(0, 0)->text(), QString("one two three four"));
    }

    void isPaperOnADarkDesktop()
    {
        const QPalette before = QApplication::palette();
        QApplication::setPalette(QPalette(Qt::white, Qt::black));
        Editor editor(tour());
        QVERIFY(editor.beginTyping(editor.set, 0, 1, {}));
        for (const QWidget* paper :
             {editor.dialog.focusWidget(), editor.find<QWidget>("tableSongList"),
              editor.find<QWidget>("listWidgetSong")}) {
            for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
                QCOMPARE(paper->palette().color(group, QPalette::Base), QColor(Qt::white));
                QCOMPARE(paper->palette().color(group, QPalette::AlternateBase), QColor(Qt::white));
                QCOMPARE(paper->palette().color(group, QPalette::Text), QColor(Qt::black));
            }
        }
        QApplication::setPalette(before);
    }

    void keepsSetListsInStepWithSongs()
    {
        Editor editor(tour());
        editor.type(editor.songs, 1, 0, "b");
        editor.type(editor.songs, 1, 2, "77");
        QCOMPARE(shortly(editor.set), QString("A b [MC] C b"));
        QCOMPARE(editor.data.ShowList[1].SetList[0].Song.Marker, 77);

        editor.choose(editor.songs, {5});
        editor.press("pushSongListDelete", kDelete, QMessageBox::Ok);
        editor.choose(editor.songs, {3, 4, 1}); // The first of them is in no show.
        editor.press("pushSongListDelete", kDeleteUsed, QMessageBox::Ok);
        QCOMPARE(shortly(editor.songs), QString("A C"));
        QCOMPARE(shortly(editor.set), QString("A [MC] C"));
        QVERIFY(editor.data.ShowList[1].SetList.empty());

        editor.press("pushSongListAllDel", kDeleteAll, QMessageBox::Ok);
        QVERIFY(editor.data.ShowList[0].SetList.empty()); // Without its space, too.
        editor.press("pushSongListAdd");
        QCOMPARE(editor.data.SongList[0].Id, 7);
    }

    void insertsAndMovesEntries()
    {
        Editor editor(tour());
        editor.choose(editor.offered, {5, 3, 4});
        editor.choose(editor.set, {2});
        editor.press("pushSongInsert");
        QCOMPARE(shortly(editor.set), QString("A B [MC] D E F C B"));
        QVERIFY(!editor.isEnabled("pushSongInsert"));
        editor.choose(editor.set, {7, 3, 4});
        QVERIFY(!editor.isEnabled("pushSetDown"));
        editor.press("pushSetUp");
        QCOMPARE(shortly(editor.set), QString("A B D E [MC] F B C"));
        editor.press("pushSetDown");
        QCOMPARE(shortly(editor.set), QString("A B [MC] D E F C B"));
        editor.press("pushSetUp");
        editor.press("pushSetUp");
        editor.press("pushSetUp");
        QCOMPARE(shortly(editor.set), QString("D E A B B [MC] F C"));
        QVERIFY(!editor.isEnabled("pushSetUp"));

        editor.press("pushSetDelete", kDelete, QMessageBox::Ok);
        QCOMPARE(shortly(editor.set), QString("A B [MC] F C"));
        editor.press("pushAddSpace"); // Nothing selected: at the top.
        editor.type(editor.set, 0, 0, "Intro");
        QCOMPARE(shortly(editor.set), QString("[Intro] A B [MC] F C"));
        QVERIFY(!editor.beginTyping(editor.set, 1, 0, "no")); // A song's title.
    }

    void deletesTheSelectedShow()
    {
        Editor editor(tour());
        editor.choose(editor.shows, {1});
        editor.press("pushShowListDelete", kDelete, QMessageBox::Ok);
        QCOMPARE(shortly(editor.shows), QString("Hall Bar"));
    }

    // A cell that is still open when the editor is left is not lost.
    void endsInEveryWay()
    {
        const QString text = "  夜明けの歌, \"Live\" 🎸  ";
        // A button, close or Escape; the answer to the question, if any; whether it is written.
        const std::tuple<QString, QMessageBox::StandardButton, bool, QTableWidget * Editor::*>
            ends[] = {{"pushOK", QMessageBox::NoButton, true, &Editor::shows},
                      {"pushCancel", QMessageBox::NoButton, false, &Editor::set},
                      {"close", QMessageBox::Save, true, &Editor::songs},
                      {"close", QMessageBox::No, false, &Editor::set},
                      {"Escape", QMessageBox::NoButton, false, &Editor::shows}};
        for (const auto& [way, answer, writes, table] : ends) {
            QFile::remove(setListFilePath());
            Editor editor(tour());
            QVERIFY(editor.beginTyping(editor.*table, 0, 1, text));
            if (answer != QMessageBox::NoButton) {
                answerSaveQuestion(editor.script, answer);
            }
            if (way == "close") {
                editor.dialog.close();
            } else if (way == "Escape") {
                QTest::keyClick(editor.dialog.focusWidget(), Qt::Key_Return);
                QTest::keyClick(&editor.dialog, Qt::Key_Escape);
            } else {
                editor.find(way)->click(); // Leaves the focus alone, as on some platforms.
            }
            QVERIFY(!editor.dialog.isVisible());
            QCOMPARE(editor.window.calls.size(), writes ? 1 : 0);
            QCOMPARE(QFile::exists(setListFilePath()), writes);
            // Nothing is taken back.
            Editor again(writes ? read(setListFilePath()) : editor.data);
            QCOMPARE((again.*table)->item(0, 1)->text(), text);
        }
    }

    void pressesNoButtonUnasked()
    {
        Editor editor(tour());
        const auto pressByKey = [&](const char* name, Qt::Key key) {
            editor.find(name)->setFocus();
            QTest::keyClick(editor.dialog.focusWidget(), key);
            return editor.dialog.focusWidget();
        };
        QCOMPARE(editor.dialog.focusWidget(), static_cast<QWidget*>(editor.shows));
        editor.type(editor.songs, 1, 1, "typed");
        QTest::keyClick(editor.dialog.focusWidget(), Qt::Key_Return); // Once too often.
        QVERIFY(editor.beginTyping(editor.songs, 1, 1, "no"));
        QTest::keyClick(editor.dialog.focusWidget(), Qt::Key_Escape); // Of the cell alone.
        QVERIFY(editor.dialog.isVisible());
        QCOMPARE(editor.data.SongList.size(), std::size_t(6));
        QCOMPARE(editor.data.SongList[1].SongMemo, QString("typed"));

        // A button that is disabled when it was pressed hands the focus to no other button.
        editor.script.answerQuestion(kDeleteUsed, kOkCancel, QMessageBox::Ok);
        QVERIFY(pressByKey("pushSongListDelete", Qt::Key_Space) == editor.songs);
        editor.choose(editor.offered, {0});
        QVERIFY(pressByKey("pushSongInsert", Qt::Key_Space) == editor.offered);
        editor.choose(editor.set, {1});
        QVERIFY(pressByKey("pushSetUp", Qt::Key_Space) == editor.set);
        pressByKey("pushCancel", Qt::Key_Return);
        QVERIFY(!editor.dialog.isVisible());
    }

    void savesAndOpensFiles()
    {
        QFile::remove(setListFilePath());
        const QTemporaryDir folder;
        const QString path = folder.filePath("tour.ini");
        Editor editor(tour());
        editor.click(editor.shows, 1);
        editor.type(editor.set, 0, 1, "cue");
        chooseFile(editor, "pushSaveAs", {}); // Saves nothing.
        chooseFile(editor, "pushSaveAs", path);
        QCOMPARE(read(path).ShowList[1].SetList[0].Cue, QString("cue"));
        QCOMPARE(editor.shows->currentRow(), 1); // Nothing was removed: the user stays there.
        chooseFile(editor, "pushOpen", {});      // All is saved: no question.

        // What has no title is removed by writing; the rows follow.
        editor.type(editor.shows, 0, 0, {});
        editor.type(editor.songs, 0, 0, {});
        chooseFile(editor, "pushSaveAs", folder.filePath("untitled.ini"));
        QCOMPARE(shortly(editor.shows), QString("Club Bar"));
        QCOMPARE(shortly(editor.songs), QString("B C D E F"));
        editor.type(editor.set, 1, 1, "last");

        // OPEN asks while there are changes; an escaped file dialog changes nothing.
        editor.press("pushOpen", kRead, QMessageBox::Cancel);
        for (const QString& from : {QString(), path}) {
            QCOMPARE(editor.data.ShowList[0].SetList[1].Cue, QString("last"));
            editor.script.answerQuestion(kRead, kOkCancel, QMessageBox::Ok);
            chooseFile(editor, "pushOpen", from);
        }
        QCOMPARE(shortly(editor.shows), QString("Hall Club Bar"));
        chooseFile(editor, "pushOpen", {});      // Unchanged: no question.
        QCOMPARE(editor.window.calls.size(), 2); // Once for each file saved.
        QVERIFY(!QFile::exists(setListFilePath()));
    }
};

VELT_TEST_MAIN(EditDialogTest)
#include "tst_editdialog.moc"
