// SPDX-License-Identifier: MIT
// A long random walk through the editor by mouse and keyboard. After each step every row must show
// its element of the data, and what is displayed and enabled must be what a plain account of the
// steps says. VELT_STEPS and VELT_SEED make it longer or another one.
#include "editor.h"
#include "modalscript.h"
#include "testcase.h"

#include <QMap>

#include <random>

namespace {

constexpr int kDefaultSteps = 3000;
constexpr int kDefaultSeed = 20240607;
constexpr int kCrowd = 10; // Longer lists are not filled further.

const char* const kFillingButtons[] = {"pushShowListAdd", "pushShowListDuplicate",
                                       "pushSongListAdd", "pushAddSpace", "pushSongInsert"};
const char* const kOtherButtons[] = {"pushShowListDelete", "pushSongListDelete", "pushSetDelete",
                                     "pushSetUp",          "pushSetDown",        "pushSetUp",
                                     "pushSetDown"};
const char* const kAllDelButtons[] = {"pushShowListAllDel", "pushSongListAllDel"};

int fromEnvironment(const char* name, int otherwise)
{
    return qEnvironmentVariableIsSet(name) ? qEnvironmentVariableIntValue(name) : otherwise;
}

int firstSelected(const QTableWidget* table)
{
    const auto items = table->selectedItems();
    return items.isEmpty() ? -1 : items.first()->row();
}

// What the first columns of a table or list show, row by row.
QStringList texts(const QAbstractItemView* view, int columns)
{
    QStringList all;
    for (int row = 0; row < view->model()->rowCount(); ++row) {
        for (int column = 0; column < columns; ++column) {
            all << view->model()->index(row, column).data().toString();
        }
    }
    return all;
}

// The walk and its account of what the steps must have led to.
class Walk
{
public:
    explicit Walk(unsigned seed) : random(seed) { open(); }

    void step();
    void verifyStates();
    void verifyTexts();
    [[nodiscard]] bool isDone() const { return script.isDone(); }

private:
    // What a button may act on, before it is pressed.
    struct Before
    {
        int show, shows, song, entry;
        bool offers, used;
        std::vector<int> entries;
    };

    int pick(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }
    template <std::size_t n>
    const char* pick(const char* const (&names)[n])
    {
        return names[pick(static_cast<int>(n))];
    }

    void click(QAbstractItemView* view);
    void click(QAbstractItemView* view, int row, int column, Qt::KeyboardModifiers modifiers);
    void type(QTableWidget* table);
    void press(const QByteArray& name);
    void accountForShows(const QByteArray& name, const Before& before);
    void accountForSongs(const QByteArray& name, const Before& before);
    void accountForEntries(const QByteArray& name, const Before& before);
    void closeAndReopen();

    void open();
    void display(int show);
    void selectEntries();
    bool usesSelectedSongs();

    std::minstd_rand random;
    std::unique_ptr<Editor> editor;
    ModalScript script;

    int shown = -1;
    bool isChanged = false;
    bool isOfferSelected = false;
    bool showButtons = false, songDelete = false, insert = false;
    bool up = false, down = false, setDelete = false;
};

} // namespace

void Walk::open()
{
    editor = std::make_unique<Editor>(editor ? editor->data : EditData());
    isOfferSelected = isChanged = songDelete = false;
    showButtons = !editor->data.ShowList.empty();
    display(showButtons ? 0 : -1);
}

void Walk::display(int show)
{
    shown = show;
    up = down = setDelete = false;
    insert = show != -1 && isOfferSelected;
}

void Walk::selectEntries()
{
    const std::vector<int> rows = selectedRows(editor->set);
    setDelete = !rows.empty();
    up = setDelete && rows.front() != 0;
    down = setDelete && rows.back() != editor->set->rowCount() - 1;
}

bool Walk::usesSelectedSongs()
{
    for (const int row : selectedRows(editor->songs)) {
        for (const EditDataShow& show : editor->data.ShowList) {
            for (const EditDataSet& entry : show.SetList) {
                if (entry.Song.Id == editor->data.SongList[row].Id) {
                    return true;
                }
            }
        }
    }
    return false;
}

void Walk::click(QAbstractItemView* view)
{
    const Qt::KeyboardModifiers modifiers[] = {Qt::NoModifier, Qt::ControlModifier,
                                               Qt::ShiftModifier};
    const int rows = view->model()->rowCount();
    if (rows != 0 && view->isEnabled()) {
        click(view, pick(rows), pick(view->model()->columnCount()), modifiers[pick(3)]);
    }
}

// Only what a click really changes runs a handler.
void Walk::click(QAbstractItemView* view, int row, int column, Qt::KeyboardModifiers modifiers)
{
    const auto selectedBefore = view->selectionModel()->selectedIndexes();
    const QModelIndex before = view->currentIndex();
    editor->click(view, row, column, modifiers);
    const QModelIndex now = view->currentIndex();
    if (view == editor->shows) {
        if (now.row() != before.row()) {
            display(now.row());
        }
        showButtons = showButtons || now != before;
    } else if (view->selectionModel()->selectedIndexes() == selectedBefore) {
        return;
    } else if (view == editor->songs) {
        songDelete = view->selectionModel()->hasSelection();
    } else if (view == editor->set) {
        selectEntries();
    } else {
        insert = isOfferSelected = view->selectionModel()->hasSelection();
    }
}

void Walk::type(QTableWidget* table)
{
    if (table->rowCount() == 0) {
        return;
    }
    const int row = pick(table->rowCount());
    const int column = pick(table->columnCount());
    const QString texts[] = {QString(), QStringLiteral("-3"), QString::number(pick(1000)),
                             QStringLiteral("曲 %1").arg(pick(100))};
    const QString text = texts[pick(4)];
    click(table, row, column, Qt::NoModifier);
    if (!(table->item(row, column)->flags() & Qt::ItemIsEditable)) {
        QVERIFY(!editor->beginTyping(table, row, column, text));
    } else if (table->item(row, column)->text() != text) {
        editor->type(table, row, column, text);
        isChanged = true;
        if (table == editor->songs) {
            isOfferSelected = false;
            display(shown);
        }
    }
}

void Walk::press(const QByteArray& name)
{
    if (!editor->isEnabled(name)) {
        return;
    }
    const Before before{firstSelected(editor->shows),
                        editor->shows->rowCount(),
                        firstSelected(editor->songs),
                        firstSelected(editor->set),
                        !editor->offered->selectedItems().isEmpty(),
                        name == "pushSongListDelete" && usesSelectedSongs(),
                        selectedRows(editor->set)};
    const bool needsShow = name == "pushShowListDelete" || name == "pushShowListDuplicate";
    if (needsShow && before.show == -1) {
        editor->press(name);
        return;
    }
    const bool isConfirmed = pick(3) != 0;
    if (name.contains("Del")) {
        const QString use =
            before.used ? QStringLiteral("This Song is used for SetList. ") : QString();
        const QString what = name.contains("All") ? QStringLiteral("all") : QStringLiteral("this");
        script.answerQuestion(use + QStringLiteral("Do you really want to delete %1?").arg(what),
                              QMessageBox::Ok | QMessageBox::Cancel,
                              isConfirmed ? QMessageBox::Ok : QMessageBox::Cancel);
    }
    editor->press(name);
    if (name.contains("Del") && !isConfirmed) {
        return;
    }
    isChanged = isChanged || name != "pushSongInsert" || before.offers;
    if (name.startsWith("pushShow")) {
        accountForShows(name, before);
    } else if (name.startsWith("pushSongList")) {
        accountForSongs(name, before);
    } else {
        accountForEntries(name, before);
    }
}

void Walk::accountForShows(const QByteArray& name, const Before& before)
{
    int left = before.shows + 1;
    if (name == "pushShowListAdd" || name == "pushShowListDuplicate") {
        display(before.show + 1);
        QCOMPARE(selectedRows(editor->shows), std::vector<int>{before.show + 1});
    } else {
        left = name == "pushShowListDelete" ? before.shows - 1 : 0;
        showButtons = left > 0;
        display(qMin(before.show, left - 1));
    }
    QCOMPARE(editor->shows->rowCount(), left);
}

void Walk::accountForSongs(const QByteArray& name, const Before& before)
{
    if (name == "pushSongListAdd") {
        const int last = editor->songs->rowCount() - 1;
        QCOMPARE(selectedRows(editor->songs),
                 std::vector<int>{before.song == -1 ? last : before.song + 1});
        return;
    }
    if (before.used || name == "pushSongListAllDel") {
        display(shown);
    }
    isOfferSelected = songDelete = false;
}

void Walk::accountForEntries(const QByteArray& name, const Before& before)
{
    std::vector<int> selected = before.entries;
    if (name == "pushAddSpace") {
        QCOMPARE(selectedRows(editor->set), std::vector<int>{before.entry + 1});
    } else if (name == "pushSetDelete") {
        up = down = setDelete = false;
    } else if (name == "pushSongInsert") {
        QCOMPARE(selectedRows(editor->set).size(), selected.size());
        selectEntries();
        isOfferSelected = insert = false;
    } else {
        for (int& row : selected) {
            row += name == "pushSetUp" ? -1 : 1;
        }
        QCOMPARE(selectedRows(editor->set), selected);
        selectEntries();
    }
}

void Walk::closeAndReopen()
{
    const QMessageBox::StandardButton answers[] = {QMessageBox::Save, QMessageBox::No,
                                                   QMessageBox::Cancel};
    const auto answer = isChanged ? answers[pick(3)] : QMessageBox::NoButton;
    if (isChanged) {
        script.answerQuestion(
            QStringLiteral("Contents have been changed. Do you want to save changes?"),
            QMessageBox::Save | QMessageBox::No | QMessageBox::Cancel, answer);
    }
    editor->dialog.close();
    QCOMPARE(editor->window.refreshes, answer == QMessageBox::Save ? 1 : 0);
    QCOMPARE(editor->dialog.isVisible(), answer == QMessageBox::Cancel);
    if (answer != QMessageBox::Cancel) {
        open();
    }
}

void Walk::verifyStates()
{
    const bool hasShow = shown != -1;
    const std::pair<const char*, bool> states[] = {{"pushShowListAdd", true},
                                                   {"pushShowListAllDel", true},
                                                   {"pushShowListDelete", showButtons},
                                                   {"pushShowListDuplicate", showButtons},
                                                   {"pushSongListAdd", true},
                                                   {"pushSongListAllDel", true},
                                                   {"pushSongListDelete", songDelete},
                                                   {"pushAddSpace", hasShow},
                                                   {"listWidgetSong", hasShow},
                                                   {"tableSetList", hasShow},
                                                   {"pushSongInsert", insert},
                                                   {"pushSetUp", up},
                                                   {"pushSetDown", down},
                                                   {"pushSetDelete", setDelete}};
    for (const auto& [name, isEnabled] : states) {
        QVERIFY2(editor->isEnabled(name) == isEnabled, name);
    }
    QCOMPARE(!editor->offered->selectedItems().isEmpty(), isOfferSelected);
}

void Walk::verifyTexts()
{
    const EditData& data = editor->data;
    QStringList shows;
    for (const EditDataShow& show : data.ShowList) {
        shows << show.ShowTitle << show.ShowMemo;
    }
    QCOMPARE(texts(editor->shows, 2), shows);

    QStringList songs;
    QStringList titles;
    QMap<int, QString> titleOf;
    for (const EditDataSong& song : data.SongList) {
        const int row = songs.size() / 2;
        QVERIFY(row < editor->songs->rowCount());
        QCOMPARE(qMax(0, editor->songs->item(row, 2)->text().toInt()), song.Marker);
        QCOMPARE(qMax(0, editor->songs->item(row, 3)->text().toInt()), song.Bar);
        songs << song.SongTitle << song.SongMemo;
        titles << (song.SongTitle.isEmpty() ? QStringList() : QStringList(song.SongTitle));
        titleOf[song.Id] = song.SongTitle;
    }
    QCOMPARE(texts(editor->songs, 2), songs);
    QCOMPARE(texts(editor->offered, 1), titles);

    QStringList entries;
    const std::vector<EditDataSet> none;
    for (const EditDataSet& entry : shown == -1 ? none : data.ShowList.at(shown).SetList) {
        const bool isSpace = entry.SetType == kSetTypeSpace;
        entries << (isSpace ? entry.SpaceName : entry.Song.SongTitle) << entry.Cue;
        if (!isSpace && titleOf.contains(entry.Song.Id)) {
            QCOMPARE(entry.Song.SongTitle, titleOf[entry.Song.Id]);
        }
    }
    QCOMPARE(texts(editor->set, 2), entries);
}

void Walk::step()
{
    QTableWidget* tables[] = {editor->songs, editor->shows, editor->set};
    const bool wasChanged = isChanged;
    const int action = pick(30);
    if (action < 5) {
        type(tables[pick(3)]);
    } else if (action < 12) {
        click(tables[pick(3)]);
    } else if (action < 15) {
        click(editor->offered);
    } else if (action < 22) {
        const char* name = pick(kFillingButtons);
        const QTableWidget* table = qstrncmp(name, "pushShow", 8) == 0      ? editor->shows
                                    : qstrcmp(name, "pushSongListAdd") == 0 ? editor->songs
                                                                            : editor->set;
        if (table->rowCount() < kCrowd) {
            press(name);
        }
    } else if (action < 28) {
        press(pick(kOtherButtons));
    } else if (action < 29) {
        press(pick(10) == 0 ? pick(kAllDelButtons) : "pushSetUp");
    } else {
        closeAndReopen();
    }
    if (isChanged && !wasChanged) {
        closeAndReopen(); // The first change must make the difference.
    }
}

class EditDialogRandomTest : public TestCase
{
    Q_OBJECT

private slots:
    void staysInStepWithTheData();
};

void EditDialogRandomTest::staysInStepWithTheData()
{
    const int seed = fromEnvironment("VELT_SEED", kDefaultSeed);
    const int steps = fromEnvironment("VELT_STEPS", kDefaultSteps);
    Walk walk(static_cast<unsigned>(seed));
    for (int i = 0; i < steps; ++i) {
        walk.step();
        walk.verifyStates();
        walk.verifyTexts();
        QVERIFY2(walk.isDone() && !QTest::currentTestFailed(),
                 qPrintable(QStringLiteral("step %1 of seed %2").arg(i).arg(seed)));
    }
}

VELT_TEST_MAIN(EditDialogRandomTest)
#include "tst_editdialog_random.moc"
