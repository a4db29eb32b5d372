// SPDX-License-Identifier: MIT
// What a user does in the editor, told as stories.
#include "datafiles.h"
#include "editor.h"
#include "modalscript.h"
#include "testcase.h"

#include <QFileDialog>
#include <QHeaderView>
#include <QTemporaryDir>

namespace {

constexpr QMessageBox::StandardButtons kOkCancel = QMessageBox::Ok | QMessageBox::Cancel;
constexpr QMessageBox::StandardButtons kSaveNoCancel =
    QMessageBox::Save | QMessageBox::No | QMessageBox::Cancel;

const QString kDelete = QStringLiteral("Do you really want to delete this?");
const QString kDeleteUsed =
    QStringLiteral("This Song is used for SetList. Do you really want to delete this?");
const QString kDeleteAll = QStringLiteral("Do you really want to delete all?");
const QString kSave = QStringLiteral("Contents have been changed. Do you want to save changes?");
const QString kRead =
    QStringLiteral("Contents have been changed. Do you want to read the configuration file?");

// Six songs A to F with the ids 1 to 6; two shows: A, B, space, C, B and B, E.
EditData tour()
{
    EditData data;
    const auto entry = [&](char title) {
        EditDataSet set;
        set.SetType = title == '-' ? kSetTypeSpace : kSetTypeSong;
        if (title == '-') {
            set.SpaceName = QStringLiteral("MC");
        } else {
            set.Song = data.SongList[title - 'A'];
        }
        return set;
    };
    for (char title = 'A'; title <= 'F'; ++title) {
        const int id = ++data.MaxSongId;
        data.SongList.push_back({id, QString(QLatin1Char(title)), {}, id + 10, id + 100});
    }
    data.ShowList = {
        {QStringLiteral("Hall"), {}, {entry('A'), entry('B'), entry('-'), entry('C'), entry('B')}},
        {QStringLiteral("Club"), {}, {entry('B'), entry('E')}},
    };
    return data;
}

// The titles that a table shows; names of spaces in brackets.
QString shortly(const QTableWidget* table)
{
    QStringList words;
    for (int row = 0; row < table->rowCount(); ++row) {
        const QTableWidgetItem* item = table->item(row, 0);
        const bool isGrey = item->background().color() == QColor(0xCD, 0xCD, 0xCD);
        words += isGrey ? QLatin1Char('[') + item->text() + QLatin1Char(']') : item->text();
    }
    return words.join(QLatin1Char(' '));
}

// Reads a file that this process has written, past the settings class's own cache.
EditData readCopy(const QString& path)
{
    const QTemporaryDir folder;
    const QString copy = folder.filePath(QStringLiteral("copy.ini"));
    QFile::copy(path, copy);
    EditData data;
    data.readEdit(copy);
    return data;
}

// Lets the file dialog that comes next take `path`, or be cancelled if there is none.
void chooseFile(ModalScript& script, const QString& caption, const QString& path)
{
    script.expect([=](QWidget* window) {
        auto* dialog = qobject_cast<QFileDialog*>(window);
        QVERIFY(dialog);
        QCOMPARE(dialog->windowTitle(), caption);
        QCOMPARE(dialog->nameFilters(),
                 QStringList({QStringLiteral("All File(*.*)"), QStringLiteral("Ini File(*.ini)")}));
        QCOMPARE(dialog->selectedNameFilter(), QStringLiteral("Ini File(*.ini)"));
        QVERIFY(dialog->testOption(QFileDialog::DontUseCustomDirectoryIcons));
        dialog->selectFile(path);
        QMetaObject::invokeMethod(dialog, path.isEmpty() ? "reject" : "accept",
                                  Qt::QueuedConnection);
    });
}

} // namespace

class EditDialogTest : public TestCase
{
    Q_OBJECT

private slots:
    void standsWhereItWasDesigned_data();
    void standsWhereItWasDesigned();
    void looksLikeTheOtherTables();
    void maintainsShows();
    void handsOutSongIds();
    void keepsSetListsInStepWithSongs();
    void insertsAndMovesEntries();
    void endsInEveryWay_data();
    void endsInEveryWay();
    void keepsWhatIsBeingTyped();
    void pressesNoButtonUnasked();
    void savesAndOpensFiles();
    void bringsAnyTextBackFromTheFile_data();
    void bringsAnyTextBackFromTheFile();
};

void EditDialogTest::standsWhereItWasDesigned_data()
{
    QTest::addColumn<QRect>("designed"); // At 1173 x 675: half is 317.
    QTest::addColumn<QRect>("large");    // At 1400 x 901: half is 430.
    const auto row = [](const char* name, QRect designed, QRect large) {
        QTest::newRow(name) << designed << large;
    };
    row("groupBoxSong", {10, 10, 491, 317}, {10, 10, 491, 430});
    row("tableSongList", {30, 80, 451, 227}, {30, 80, 451, 340});
    row("groupBoxShow", {10, 337, 491, 272}, {10, 450, 491, 385});
    row("pushShowListAdd", {20, 367, 101, 31}, {20, 480, 101, 31});
    row("pushShowListDuplicate", {130, 367, 101, 31}, {130, 480, 101, 31});
    row("tableShowList", {20, 407, 461, 182}, {20, 520, 461, 295});
    row("groupBoxSet", {511, 10, 652, 599}, {511, 10, 879, 825});
    row("listWidgetSong", {521, 40, 131, 554}, {521, 40, 131, 780});
    row("pushSongInsert", {150, 302, 41, 41}, {150, 415, 41, 41});
    row("pushAddSpace", {710, 40, 111, 28}, {710, 40, 111, 28});
    row("pushSetDelete", {830, 40, 111, 28}, {830, 40, 111, 28});
    row("tableSetList", {710, 70, 392, 519}, {710, 70, 619, 745});
    row("pushSetUp", {1113, 70, 41, 41}, {1340, 70, 41, 41});
    row("pushSetDown", {1113, 120, 41, 41}, {1340, 120, 41, 41});
    row("pushOK", {10, 625, 131, 41}, {10, 851, 131, 41});
    row("pushSaveAs", {430, 625, 131, 41}, {430, 851, 131, 41});
}

void EditDialogTest::standsWhereItWasDesigned()
{
    QFETCH(QRect, designed);
    QFETCH(QRect, large);
    Editor editor;
    auto* widget = editor.dialog.findChild<QWidget*>(QLatin1String(QTest::currentDataTag()));
    const bool isFrame = widget->inherits("QGroupBox");
    const auto isReachable = [&] {
        const QPoint centre = widget->mapTo(&editor.dialog, widget->rect().center());
        const QWidget* hit = editor.dialog.childAt(centre);
        return isFrame || hit == widget || widget->isAncestorOf(hit);
    };
    QCOMPARE(editor.dialog.size(), QSize(1173, 675));
    QCOMPARE(widget->geometry(), designed);
    QVERIFY(isReachable());
    for (const QSize size : {QSize(1, 1), QSize(300, 60), QSize(700, 2000), QSize(3000, 200)}) {
        editor.dialog.resize(size);
        QVERIFY(!widget->grab().isNull() || widget->size().isEmpty());
    }
    editor.dialog.resize(1400, 901);
    QCOMPARE(widget->geometry(), large);
    QVERIFY(isReachable());
}

void EditDialogTest::looksLikeTheOtherTables()
{
    Editor editor(tour());
    QCOMPARE(editor.dialog.windowTitle(), QStringLiteral("Edit"));
    for (const QTableWidget* table : {editor.songs, editor.shows, editor.set}) {
        QCOMPARE(table->palette().color(QPalette::Disabled, QPalette::Highlight),
                 QColor(0xB4, 0xEF, 0xEF));
        QVERIFY(table->verticalHeader()->isHidden());
        QVERIFY(table->horizontalHeader()->stretchLastSection());
    }
    QCOMPARE(editor.songs->item(5, 2)->text(), QStringLiteral("16"));
    QCOMPARE(editor.songs->item(5, 3)->text(), QStringLiteral("106"));
    QCOMPARE(editor.songs->item(5, 3)->textAlignment(), int(Qt::AlignRight | Qt::AlignVCenter));
    for (const auto* button : editor.dialog.findChildren<QPushButton*>()) {
        QVERIFY(!button->text().isEmpty() || !button->accessibleName().isEmpty());
    }
}

void EditDialogTest::maintainsShows()
{
    Editor editor(tour());
    ModalScript script;
    editor.press("pushShowListDuplicate");
    QCOMPARE(editor.data.ShowList[1].ShowTitle, QStringLiteral("Hall"));
    QCOMPARE(editor.shows->currentRow(), 1);
    editor.type(editor.set, 0, 1, QStringLiteral("slower")); // The copy has its own set list.
    QCOMPARE(editor.data.ShowList[1].SetList[0].Cue, QStringLiteral("slower"));
    QCOMPARE(editor.data.ShowList[0].SetList[0].Cue, QString());

    editor.press("pushShowListAdd");
    editor.typeAtOnce("New");
    QTRY_COMPARE(editor.data.ShowList[2].ShowTitle, QStringLiteral("New"));
    QCOMPARE(editor.set->rowCount(), 0);
    editor.click(editor.shows, 3);
    QCOMPARE(shortly(editor.set), QStringLiteral("B E"));
    script.answerQuestion(kDelete, kOkCancel, QMessageBox::Ok);
    editor.press("pushShowListDelete"); // The last: the one above is displayed.
    editor.press("pushAddSpace");
    QCOMPARE(editor.data.ShowList[2].SetList.size(), std::size_t(1));
}

void EditDialogTest::handsOutSongIds()
{
    EditData data;
    data.SongList = {{3, QStringLiteral("x"), {}, 0, 0}, {7, QStringLiteral("y"), {}, 0, 0}};
    data.MaxSongId = 7;
    Editor editor(data);
    ModalScript script;
    editor.press("pushSongListAdd"); // Nothing selected: at the end.
    QCOMPARE(editor.data.SongList[2].Id, 8);
    QCOMPARE(editor.offered->count(), 2);
    editor.type(editor.songs, 2, 0, QStringLiteral("z"));
    QCOMPARE(editor.offered->count(), 3);
    QVERIFY(!editor.isEnabled("pushSongListDelete")); // Until the user selects.
    editor.click(editor.songs, 0);
    editor.click(editor.songs, 2);
    script.answerQuestion(kDelete, kOkCancel, QMessageBox::Ok);
    editor.press("pushSongListDelete");
    editor.click(editor.songs, 0);
    editor.press("pushSongListAdd");
    QCOMPARE(editor.data.SongList[1].Id, 9);

    const struct
    {
        const char* text;
        int bar;
    } typed[] = {{"129", 129}, {" 7 ", 7}, {"-5", 0}, {"12a", 0}, {"99999999999", 0}, {"", 0}};
    for (const auto& [text, bar] : typed) {
        editor.type(editor.songs, 1, 3, QString::fromLatin1(text));
        QCOMPARE(editor.data.SongList[1].Bar, bar);
        QCOMPARE(editor.songs->item(1, 3)->text(), QString::fromLatin1(text));
    }
}

void EditDialogTest::keepsSetListsInStepWithSongs()
{
    Editor editor(tour());
    ModalScript script;
    editor.type(editor.songs, 1, 0, QStringLiteral("b"));
    editor.type(editor.songs, 1, 2, QStringLiteral("77"));
    QCOMPARE(shortly(editor.set), QStringLiteral("A b [MC] C b"));
    QCOMPARE(editor.data.ShowList[1].SetList[0].Song.Marker, 77);
    QCOMPARE(editor.offered->item(1)->text(), QStringLiteral("b"));

    editor.choose(editor.songs, {4, 1, 3});
    script.answerQuestion(kDeleteUsed, kOkCancel, QMessageBox::Ok);
    editor.press("pushSongListDelete");
    QCOMPARE(shortly(editor.songs), QStringLiteral("A C F"));
    QCOMPARE(shortly(editor.set), QStringLiteral("A [MC] C"));
    QVERIFY(editor.data.ShowList[1].SetList.empty());

    script.answerQuestion(kDeleteAll, kOkCancel, QMessageBox::Ok);
    editor.press("pushSongListAllDel");
    QVERIFY(editor.data.ShowList[0].SetList.empty()); // Without its space, too.
    editor.press("pushSongListAdd");
    QCOMPARE(editor.data.SongList[0].Id, 7);
}

void EditDialogTest::insertsAndMovesEntries()
{
    Editor editor(tour());
    ModalScript script;
    editor.choose(editor.offered, {5, 3, 4});
    editor.choose(editor.set, {2});
    editor.press("pushSongInsert");
    QCOMPARE(shortly(editor.set), QStringLiteral("A B [MC] D E F C B"));
    editor.choose(editor.set, {7, 3, 5});
    QVERIFY(!editor.isEnabled("pushSetDown"));
    editor.press("pushSetUp");
    QCOMPARE(shortly(editor.set), QStringLiteral("A B D [MC] F E B C"));
    editor.press("pushSetDown");
    editor.press("pushSetUp");
    editor.press("pushSetUp");
    editor.press("pushSetUp");
    QCOMPARE(shortly(editor.set), QStringLiteral("D A F B B [MC] E C"));
    QVERIFY(!editor.isEnabled("pushSetUp"));

    script.answerQuestion(kDelete, kOkCancel, QMessageBox::Ok);
    editor.press("pushSetDelete");
    QCOMPARE(shortly(editor.set), QStringLiteral("A B [MC] E C"));
    editor.press("pushAddSpace"); // Nothing selected: at the top.
    editor.typeAtOnce("Intro");
    QTRY_COMPARE(shortly(editor.set), QStringLiteral("[Intro] A B [MC] E C"));
    QVERIFY(!editor.beginTyping(editor.set, 1, 0, QStringLiteral("no"))); // A song's title.
}

void EditDialogTest::endsInEveryWay_data()
{
    QTest::addColumn<QString>("way"); // A button, or else close or Escape.
    QTest::addColumn<int>("answer");  // To the question; 0: none is asked.
    QTest::addColumn<bool>("writes"); // And then the operator window is told.
    const auto row = [](const char* way, int answer, bool writes) {
        QTest::addRow("%s, %d", way, answer) << QString::fromLatin1(way) << answer << writes;
    };
    row("pushOK", 0, true);
    row("pushCancel", 0, false);
    row("close", QMessageBox::Save, true);
    row("close", QMessageBox::No, false);
    row("Escape", 0, false);
}

void EditDialogTest::endsInEveryWay()
{
    QFETCH(QString, way);
    QFETCH(int, answer);
    QFETCH(bool, writes);
    QFile::remove(setListFilePath());
    Editor editor(tour(), Editor::ToBeExecuted);
    ModalScript script;
    script.expect([&](QWidget* dialog) {
        editor.type(editor.shows, 0, 1, QStringLiteral("changed"));
        if (way == QLatin1String("close")) {
            QMetaObject::invokeMethod(dialog, "close", Qt::QueuedConnection);
        } else if (way == QLatin1String("Escape")) {
            QTest::keyClick(dialog, Qt::Key_Escape);
        } else {
            editor.press(way.toLatin1());
        }
    });
    if (answer != 0) {
        script.answerQuestion(kSave, kSaveNoCancel, QMessageBox::StandardButton(answer));
    }
    editor.dialog.exec();
    QCOMPARE(editor.window.refreshes, writes ? 1 : 0);
    QCOMPARE(QFile::exists(setListFilePath()), writes);
    // Nothing is taken back, and nothing is unsaved when the editor is opened again.
    QCOMPARE(editor.data.ShowList[0].ShowMemo, QStringLiteral("changed"));
    editor.dialog.setDispFromEdit();
    editor.dialog.show();
    editor.dialog.close();
    QVERIFY(!editor.dialog.isVisible());
}

// A cell that is still open when the window is closed is not lost.
void EditDialogTest::keepsWhatIsBeingTyped()
{
    ModalScript script;
    Editor closed(tour());
    QVERIFY(closed.beginTyping(closed.songs, 0, 0, QStringLiteral("open")));
    script.answerQuestion(kSave, kSaveNoCancel, QMessageBox::Save);
    closed.dialog.close();
    QCOMPARE(readCopy(setListFilePath()).SongList[0].SongTitle, QStringLiteral("open"));

    // Where a click on a button leaves the focus alone, as on some platforms.
    Editor confirmed(tour());
    QVERIFY(confirmed.beginTyping(confirmed.shows, 0, 1, QStringLiteral("memo")));
    confirmed.find("pushOK")->click();
    QCOMPARE(readCopy(setListFilePath()).ShowList[0].ShowMemo, QStringLiteral("memo"));
    Editor cancelled(tour());
    QVERIFY(cancelled.beginTyping(cancelled.set, 0, 1, QStringLiteral("cue")));
    cancelled.find("pushCancel")->click(); // Asks nothing.
    QCOMPARE(cancelled.data.ShowList[0].SetList[0].Cue, QStringLiteral("cue"));
}

void EditDialogTest::pressesNoButtonUnasked()
{
    Editor editor(tour());
    ModalScript script;
    const auto pressByKey = [&](const char* name, Qt::Key key) {
        editor.find(name)->setFocus();
        QTest::keyClick(editor.dialog.focusWidget(), key);
        return editor.dialog.focusWidget();
    };
    QCOMPARE(editor.dialog.focusWidget(), static_cast<QWidget*>(editor.shows));
    editor.type(editor.songs, 1, 1, QStringLiteral("typed"));
    QTest::keyClick(editor.dialog.focusWidget(), Qt::Key_Return); // Once too often.
    QVERIFY(editor.beginTyping(editor.songs, 1, 1, QStringLiteral("no")));
    QTest::keyClick(editor.dialog.focusWidget(), Qt::Key_Escape); // Of the cell, not the dialog.
    QVERIFY(editor.dialog.isVisible());
    QCOMPARE(editor.data.SongList.size(), std::size_t(6));
    QCOMPARE(editor.data.SongList[1].SongMemo, QStringLiteral("typed"));

    // A button that is disabled when it was pressed hands the focus to no other button.
    script.answerQuestion(kDeleteUsed, kOkCancel, QMessageBox::Ok);
    QVERIFY(pressByKey("pushSongListDelete", Qt::Key_Space) == editor.songs);
    editor.choose(editor.offered, {0});
    QVERIFY(pressByKey("pushSongInsert", Qt::Key_Space) == editor.offered);
    editor.choose(editor.set, {1});
    QVERIFY(pressByKey("pushSetUp", Qt::Key_Space) == editor.set);
    pressByKey("pushCancel", Qt::Key_Return);
    QVERIFY(!editor.dialog.isVisible());
}

void EditDialogTest::savesAndOpensFiles()
{
    QFile::remove(setListFilePath());
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("tour.ini"));
    const QString saveCaption = QStringLiteral("Save Setting File");
    const QString openCaption = QStringLiteral("Open Setting File");
    Editor editor(tour());
    ModalScript script;
    editor.click(editor.shows, 1);
    editor.type(editor.set, 0, 1, QStringLiteral("cue"));
    chooseFile(script, saveCaption, QString());
    editor.press("pushSaveAs");
    QCOMPARE(editor.window.refreshes, 0);
    chooseFile(script, saveCaption, path);
    editor.press("pushSaveAs");
    QCOMPARE(readCopy(path).ShowList[1].SetList[0].Cue, QStringLiteral("cue"));
    QCOMPARE(editor.window.refreshes, 1);
    QVERIFY(!QFile::exists(setListFilePath()));
    QCOMPARE(editor.shows->currentRow(), 1); // Nothing was removed: the user stays where they are.

    // What has no title is removed by writing; the rows follow.
    editor.type(editor.shows, 0, 0, QString());
    editor.type(editor.songs, 0, 0, QString());
    chooseFile(script, saveCaption, path);
    script.expect([](QWidget* box) { // The toolkit asks whether to replace the file.
        QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::Yes),
                          Qt::LeftButton);
    });
    editor.press("pushSaveAs");
    QCOMPARE(shortly(editor.shows), QStringLiteral("Club"));
    QCOMPARE(shortly(editor.songs), QStringLiteral("B C D E F"));
    editor.type(editor.set, 1, 1, QStringLiteral("last"));
    QCOMPARE(editor.data.ShowList[0].SetList[1].Cue, QStringLiteral("last"));

    // OPEN asks while there are changes; an escaped file dialog changes nothing.
    script.answerQuestion(kRead, kOkCancel, QMessageBox::Cancel);
    editor.press("pushOpen");
    script.answerQuestion(kRead, kOkCancel, QMessageBox::Ok);
    chooseFile(script, openCaption, QString());
    editor.press("pushOpen");
    QCOMPARE(editor.data.ShowList[0].SetList[1].Cue, QStringLiteral("last"));
    script.answerQuestion(kRead, kOkCancel, QMessageBox::Ok);
    chooseFile(script, openCaption, path);
    editor.press("pushOpen");
    QCOMPARE(editor.set->item(0, 1)->text(), QStringLiteral("cue"));
    QCOMPARE(editor.set->item(1, 1)->text(), QString());
    chooseFile(script, openCaption, QString()); // Unchanged: no question.
    editor.press("pushOpen");
    editor.press("pushCancel");
    QVERIFY(script.isDone() && !editor.dialog.isVisible());
    QCOMPARE(editor.window.refreshes, 2);
    QVERIFY(!QFile::exists(setListFilePath()));
}

void EditDialogTest::bringsAnyTextBackFromTheFile_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("Japanese") << QStringLiteral("夜明けの歌（アコースティック）");
    QTest::newRow("quotes") << QStringLiteral("\"Live\" 'take'");
    QTest::newRow("separators") << QStringLiteral("a, b; c=d\\e / 100% %1 [x] #");
    QTest::newRow("line breaks") << QStringLiteral("one\ntwo\r\nthree\tfour");
    QTest::newRow("leading @") << QStringLiteral("@Invalid()");
    QTest::newRow("emoji") << QStringLiteral("🎸🥁 encore 👩‍🎤");
    QTest::newRow("spaces") << QStringLiteral("  outside  ");
    QTest::newRow("10,000 characters") << QString(10000, QLatin1Char('x'));
}

void EditDialogTest::bringsAnyTextBackFromTheFile()
{
    QFETCH(QString, text);
    Editor editor(tour());
    editor.type(editor.songs, 0, 0, text);
    editor.type(editor.songs, 0, 1, text);
    editor.type(editor.shows, 0, 0, text);
    editor.type(editor.set, 2, 0, text);
    editor.type(editor.set, 2, 1, text);
    QCOMPARE(editor.offered->item(0)->text(), text);
    editor.press("pushOK");
    const EditData read = readCopy(setListFilePath());
    QCOMPARE(read.SongList[0].SongTitle, text);
    QCOMPARE(read.SongList[0].SongMemo, text);
    QCOMPARE(read.ShowList[0].ShowTitle, text);
    QCOMPARE(read.ShowList[0].SetList[0].Song.SongTitle, text);
    QCOMPARE(read.ShowList[0].SetList[2].SpaceName, text);
    QCOMPARE(read.ShowList[0].SetList[2].Cue, text);
}

VELT_TEST_MAIN(EditDialogTest)
#include "tst_editdialog.moc"
