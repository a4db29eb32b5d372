// SPDX-License-Identifier: MIT
// What a user does in the editor, told as stories.
#include "datafiles.h"
#include "editor.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QScrollBar>
#include <QTemporaryDir>

Q_DECLARE_METATYPE(QMessageBox::StandardButton)

namespace {

const QString kRead = "Contents have been changed. Do you want to read the configuration file?";

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

class TestEditDialog : public TestCase
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
            QVERIFY2(name.startsWith("group") || hit == widget || widget->isAncestorOf(hit),
                     qPrintable(name)); // Nothing lies over it.
        }
        editor.dialog.resize(1, 1); // Nothing gets a negative size.
        editor.dialog.resize(1400, 901);
        QCOMPARE(editor.set->geometry(), QRect(710, 70, 619, 745));
    }

    void showsTextsAndPictures()
    {
        Editor editor;
        QCOMPARE(texts(editor.dialog),
                 QString("Song List,All Del,Show List,All Del,Set List,Add New,Delete,Add New,"
                         "Duplicate,Delete,AddSpace,Delete,OK,CANCEL,OPEN,SAVE AS"));
        for (const QString name : {"Up", "Down"}) {
            const QIcon picture(":/img/img/" + name + ".ico");
            QCOMPARE(editor.find("pushSet" + name)->icon().pixmap(30).toImage(),
                     picture.pixmap(30).toImage());
        }
        const std::pair<QTableWidget*, QStringList> headings[] = {
            {editor.songs, {"SongTitle", "Memo", "Marker", "Bar"}},
            {editor.shows, {"ShowTitle", "Memo"}},
            {editor.set, {"SongTitle", "Cue"}}};
        for (const auto& [table, labels] : headings) {
            for (int column = 0; column < labels.size(); ++column) {
                QCOMPARE(table->horizontalHeaderItem(column)->text(), labels[column]);
            }
            QCOMPARE(table->horizontalScrollBar()->maximum(), 0); // All columns are seen.
        }
        const EditDataSong& song = editor.data.SongList[1];
        QCOMPARE(editor.songs->item(1, 2)->text(), QString::number(song.Marker));
        QCOMPARE(editor.songs->item(1, 3)->text(), QString::number(song.Bar));
        editor.type(editor.songs, 0, 0, QString(60, 'W')); // Can be read by scrolling.
        QTRY_VERIFY(editor.offered->horizontalScrollBar()->maximum() > 100);
    }

    // Bar and marker reach the DAW as keys: only digits may.
    void readsNumbers()
    {
        Editor editor;
        const std::pair<const char*, int> bars[] = {{"129", 129}, {"-5", 0}, {" 7 ", 7},
                                                    {"12a", 0},   {"8", 8},  {"99999999999", 0}};
        for (const auto& [text, bar] : bars) {
            editor.type(editor.songs, 5, 3, text);
            QVERIFY2(editor.data.SongList[5].Bar == bar, text);
            QCOMPARE(editor.songs->item(5, 3)->text(), QString(text));
        }
    }

    void tabGoesToTheNextEditableCell_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QPoint>("from"); // Column, row.
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<QPoint>("to");
        const QPoint none(-1, -1); // No cell is open, and the focus stays.
        QTest::newRow("next row") << "tableShowList" << QPoint(1, 0) << Qt::Key_Tab << QPoint(0, 1);
        QTest::newRow("last bar") << "tableSongList" << QPoint(3, 5) << Qt::Key_Tab << none;
        QTest::newRow("title") << "tableSetList" << QPoint(1, 0) << Qt::Key_Tab << QPoint(1, 1);
        QTest::newRow("space") << "tableSetList" << QPoint(1, 1) << Qt::Key_Tab << QPoint(0, 2);
        QTest::newRow("back") << "tableSetList" << QPoint(1, 4) << Qt::Key_Backtab << QPoint(1, 3);
        QTest::newRow("first") << "tableSongList" << QPoint(0, 0) << Qt::Key_Backtab << none;
    }

    void tabGoesToTheNextEditableCell()
    {
        QFETCH(const QString, table);
        QFETCH(const QPoint, from);
        QFETCH(const Qt::Key, key);
        QFETCH(const QPoint, to);
        Editor editor;
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

    void isPaperOnADarkDesktop()
    {
        const QPalette before = QApplication::palette();
        QApplication::setPalette(QPalette(Qt::white, Qt::black));
        Editor editor;
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

    // A cell that is still open when the editor is left is not lost.
    void endsInEveryWay_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QMessageBox::StandardButton>("answer");
        QTest::addColumn<bool>("writes");
        QTest::newRow("OK") << "pushOK" << QMessageBox::NoButton << true;
        QTest::newRow("CANCEL") << "pushCancel" << QMessageBox::NoButton << false;
        QTest::newRow("closed, Save") << "" << QMessageBox::Save << true;
        QTest::newRow("closed, No") << "" << QMessageBox::No << false;
    }

    void endsInEveryWay()
    {
        QFETCH(const QString, button);
        QFETCH(const QMessageBox::StandardButton, answer);
        QFETCH(const bool, writes);
        const QString text = "  夜明けの歌, \"Live\" 🎸  ";
        QFile::remove(setListFilePath());
        Editor editor;
        QVERIFY(editor.beginTyping(editor.songs, 0, 1, text));
        if (button.isEmpty()) {
            answerSaveQuestion(editor.script, QMessageBox::Cancel);
            editor.dialog.close();
            QVERIFY(editor.dialog.isVisible());
            answerSaveQuestion(editor.script, answer);
            editor.dialog.close();
        } else {
            editor.find(button)->click(); // Leaves the focus alone, as on some platforms.
        }
        QVERIFY(!editor.dialog.isVisible());
        QCOMPARE(editor.window.calls, writes ? QStringList("setShowData") : QStringList());
        QCOMPARE(QFile::exists(setListFilePath()), writes);
        Editor again(writes ? read(setListFilePath()) : editor.data); // Nothing is taken back.
        QCOMPARE(again.songs->item(0, 1)->text(), text);
    }

    void pressesNoButtonUnasked()
    {
        Editor editor;
        const auto pressByKey = [&](const char* name, Qt::Key key) -> QWidget* {
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
        editor.click(editor.offered, 0);
        QVERIFY(pressByKey("pushSongInsert", Qt::Key_Space) == editor.offered);
        editor.click(editor.set, 1);
        QVERIFY(pressByKey("pushSetUp", Qt::Key_Space) == editor.set);
        QTest::keyClick(&editor.dialog, Qt::Key_Escape); // Closes without a question.
        QVERIFY(!editor.dialog.isVisible());
        QCOMPARE(editor.window.calls, QStringList());
    }

    void savesAndOpensFiles()
    {
        QFile::remove(setListFilePath());
        const QTemporaryDir folder;
        const QString path = folder.filePath("tour.ini");
        Editor editor;
        editor.click(editor.shows, 1);
        editor.type(editor.set, 0, 1, "cue");
        chooseFile(editor, "pushSaveAs", {}); // Saves nothing.
        chooseFile(editor, "pushSaveAs", path);
        QCOMPARE(read(path).ShowList[1].SetList[0].Cue, QString("cue"));
        QCOMPARE(editor.shows->currentRow(), 1); // Nothing was removed: the user stays there.
        chooseFile(editor, "pushOpen", {});      // All is saved: no question.

        // What has no title is removed by writing; the rows follow.
        editor.type(editor.shows, 0, 0, {});
        chooseFile(editor, "pushSaveAs", folder.filePath("show.ini"));
        QCOMPARE(letters(editor.shows), QString("23"));
        editor.type(editor.songs, 0, 0, {});
        chooseFile(editor, "pushSaveAs", folder.filePath("song.ini"));
        QCOMPARE(letters(editor.songs), QString("BCDEF"));
        editor.type(editor.set, 1, 1, "last");

        // OPEN asks while there are changes; an escaped file dialog changes nothing.
        editor.script.answerQuestion(kRead, kOkCancel, QMessageBox::Cancel);
        editor.press("pushOpen");
        for (const QString& from : {QString(), path}) {
            QCOMPARE(editor.data.ShowList[0].SetList[1].Cue, QString("last"));
            editor.script.answerQuestion(kRead, kOkCancel, QMessageBox::Ok);
            chooseFile(editor, "pushOpen", from);
        }
        QCOMPARE(letters(editor.shows), QString("123"));
        chooseFile(editor, "pushOpen", {});      // Unchanged: no question.
        QCOMPARE(editor.window.calls.size(), 3); // Once for each file saved.
        QVERIFY(!QFile::exists(setListFilePath()));
    }
};

VELT_TEST_MAIN(TestEditDialog)
#include "tst_editdialog.moc"
