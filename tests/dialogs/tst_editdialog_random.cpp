// SPDX-License-Identifier: MIT
// A long random walk through the editor by mouse and keyboard. After each step every row must show
// its element of the data, the show displayed must be the one that a plain account of the steps
// says, and no button may be enabled that has nothing to act on. VELT_STEPS and VELT_SEED make it
// longer or another one.
#include "editor.h"

#include <QMap>

#include <random>
#include <set>

namespace {

constexpr int kCrowd = 10; // Longer tables get no more rows of their own.

// The last two leave little to walk on, and are pressed seldom.
const std::vector<QString> kButtons{
    "pushShowListAdd",    "pushShowListDuplicate", "pushShowListDelete", "pushSongListAdd",
    "pushSongListDelete", "pushSongInsert",        "pushAddSpace",       "pushSetDelete",
    "pushSetUp",          "pushSetDown",           "pushShowListAllDel", "pushSongListAllDel"};
// The table in which a button adds and selects a row.
const QMap<QString, QTableWidget * Editor::*> kFillers{{"pushShowListAdd", &Editor::shows},
                                                       {"pushShowListDuplicate", &Editor::shows},
                                                       {"pushSongListAdd", &Editor::songs},
                                                       {"pushAddSpace", &Editor::set}};

bool hasSelection(const QAbstractItemView* view)
{
    return view->selectionModel()->hasSelection();
}

int firstSelected(const QTableWidget* table)
{
    return hasSelection(table) ? table->selectedItems().first()->row() : -1;
}

// Each selected row once, ascending.
std::vector<int> selectedRows(const QTableWidget* table)
{
    std::set<int> rows;
    for (const QTableWidgetItem* item : table->selectedItems()) {
        rows.insert(item->row());
    }
    return {rows.begin(), rows.end()};
}

// What a table or list shows, row by row; behind two columns of text come numbers.
QStringList texts(const QAbstractItemView* view)
{
    QStringList all;
    for (int row = 0; row < view->model()->rowCount(); ++row) {
        for (int column = 0; column < view->model()->columnCount(); ++column) {
            const QString text = view->model()->index(row, column).data().toString();
            all << (column < 2 ? text : QString::number(qMax(0, text.toInt())));
        }
    }
    return all;
}

// The walk, and its account of what the steps must have led to.
class Walk
{
public:
    explicit Walk(unsigned seed) : random(seed) { open(); }

    void step()
    {
        QTableWidget* const tables[] = {editor->songs, editor->shows, editor->set};
        const bool wasChanged = isChanged;
        const int action = pick(30);
        if (action < 5) {
            type(tables[pick(3)]);
        } else if (action < 12) {
            click(tables[pick(3)]);
        } else if (action < 15) {
            click(editor->offered);
        } else if (action < 29) {
            press(kButtons[pick(50) == 0 ? 10 + pick(2) : pick(10)]);
        } else {
            closeAndReopen();
        }
        if (isChanged && !wasChanged) {
            closeAndReopen(); // The first change must make the difference.
        }
    }

    void verifyStates() const
    {
        const std::vector<int> entries = selectedRows(editor->set);
        const int last = editor->set->rowCount() - 1;
        const auto needs = [this](const char* name, bool isPossible) {
            QVERIFY2(isPossible || !editor->isEnabled(name), name);
        };
        needs("pushShowListDelete", editor->shows->rowCount() > 0);
        needs("pushSongListDelete", hasSelection(editor->songs));
        needs("pushSongInsert", shown != -1);
        needs("pushSetUp", !entries.empty() && entries.front() > 0);
        needs("pushSetDown", !entries.empty() && entries.back() < last);
        needs("pushSetDelete", !entries.empty());
        for (const char* name : {"pushAddSpace", "listWidgetSong", "tableSetList"}) {
            QVERIFY2(editor->isEnabled(name) == (shown != -1), name);
        }
    }

    void verifyTexts() const
    {
        QStringList shows;
        for (const EditDataShow& show : editor->data.ShowList) {
            shows << show.ShowTitle << show.ShowMemo;
        }
        QCOMPARE(texts(editor->shows), shows);

        QStringList songs;
        QStringList offered;
        QMap<int, QString> titles;
        for (const EditDataSong& song : editor->data.SongList) {
            songs << song.SongTitle << song.SongMemo << QString::number(song.Marker)
                  << QString::number(song.Bar);
            offered << song.SongTitle;
            titles[song.Id] = song.SongTitle;
        }
        offered.removeAll({});
        QCOMPARE(texts(editor->songs), songs);
        QCOMPARE(texts(editor->offered), offered);

        QStringList entries;
        const std::vector<EditDataSet> none;
        for (const EditDataSet& entry :
             shown == -1 ? none : editor->data.ShowList.at(shown).SetList) {
            const bool isSpace = entry.SetType == kSetTypeSpace;
            entries << (isSpace ? entry.SpaceName : titles.value(entry.Song.Id)) << entry.Cue;
        }
        QCOMPARE(texts(editor->set), entries);
    }

private:
    int pick(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }

    void open()
    {
        editor = std::make_unique<Editor>(editor ? editor->data : EditData());
        isChanged = false;
        shown = editor->data.ShowList.empty() ? -1 : 0;
    }

    void click(QAbstractItemView* view)
    {
        if (view->model()->rowCount() == 0 || !view->isEnabled()) {
            return;
        }
        const Qt::KeyboardModifiers modifiers[] = {Qt::NoModifier, Qt::ControlModifier,
                                                   Qt::ShiftModifier};
        const int current = view->currentIndex().row();
        editor->click(view, pick(view->model()->rowCount()), pick(view->model()->columnCount()),
                      modifiers[pick(3)]);
        const int now = view->currentIndex().row();
        if (view == editor->shows && now != current) {
            shown = now;
            QVERIFY(editor->isEnabled("pushShowListDelete"));
        }
    }

    // Types into the current cell.
    void type(QTableWidget* table)
    {
        const QTableWidgetItem* cell = table->currentItem();
        if (!cell || !table->isEnabled()) {
            return;
        }
        const QString choice[] = {
            {}, "-3", QString::number(pick(1000)), QString("曲 %1").arg(pick(100))};
        const QString& text = choice[pick(4)];
        if (!(cell->flags() & Qt::ItemIsEditable)) {
            QVERIFY(!editor->beginTyping(table, cell->row(), cell->column(), text));
        } else if (cell->text() != text) {
            isChanged = true;
            editor->type(table, cell->row(), cell->column(), text);
            QVERIFY(table != editor->songs || !hasSelection(editor->offered));
        }
    }

    void press(const QString& name)
    {
        auto* const filled = kFillers.contains(name) ? (*editor).*kFillers[name] : nullptr;
        if (!editor->isEnabled(name) || (filled && filled->rowCount() > kCrowd)) {
            return;
        }
        const int show = firstSelected(editor->shows);
        const QStringList ofAShow{"pushShowListDelete", "pushShowListDuplicate"};
        const bool isIdle = show == -1 && ofAShow.contains(name);
        const bool asks = name.contains("Del") && !isIdle;
        const bool acts = !isIdle && (!asks || pick(3) != 0);
        const bool changes = acts && (name != "pushSongInsert" || hasSelection(editor->offered));
        const bool isAtEnd = name == "pushSongListAdd" && !hasSelection(filled);
        const int row = isAtEnd ? filled->rowCount() : filled ? firstSelected(filled) + 1 : -1;
        if (asks) {
            editor->script.expect([acts](QWidget* box) {
                const auto answer = acts ? QMessageBox::Ok : QMessageBox::Cancel;
                qobject_cast<QMessageBox*>(box)->button(answer)->click();
            });
        }
        editor->press(name);
        isChanged = isChanged || changes;
        if (acts) {
            account(name, show, filled, row);
        }
    }

    void account(const QString& name, int show, const QTableWidget* filled, int row)
    {
        if (name.startsWith("pushShowList")) {
            shown = filled ? row : qMin(show, editor->shows->rowCount() - 1);
        }
        if (filled) {
            QCOMPARE(selectedRows(filled), std::vector<int>{row});
            QVERIFY(editor->dialog.focusWidget() == filled); // To be typed in at once.
        }
        if (name == "pushShowListDuplicate") {
            const EditDataShow& copy = editor->data.ShowList[row];
            QCOMPARE(copy.ShowTitle, editor->data.ShowList[show].ShowTitle);
            QCOMPARE(copy.SetList.size(), editor->data.ShowList[show].SetList.size());
        }
    }

    void closeAndReopen()
    {
        const QMessageBox::StandardButton answers[] = {QMessageBox::Save, QMessageBox::No,
                                                       QMessageBox::Cancel};
        const auto answer = isChanged ? answers[pick(3)] : QMessageBox::NoButton;
        if (isChanged) {
            answerSaveQuestion(editor->script, answer);
        }
        editor->dialog.close();
        QCOMPARE(editor->window.calls.size(), answer == QMessageBox::Save ? 1 : 0);
        QCOMPARE(editor->dialog.isVisible(), answer == QMessageBox::Cancel);
        if (answer != QMessageBox::Cancel) {
            open();
        }
    }

    std::minstd_rand random;
    std::unique_ptr<Editor> editor;
    int shown = -1; // The show whose set list is displayed.
    bool isChanged = false;
};

} // namespace

class EditDialogRandomTest : public TestCase
{
    Q_OBJECT

private slots:
    void staysInStepWithTheData()
    {
        const unsigned seed = qEnvironmentVariable("VELT_SEED", "20240607").toUInt();
        const int steps = qEnvironmentVariable("VELT_STEPS", "3000").toInt();
        Walk walk(seed);
        for (int i = 0; i < steps; ++i) {
            walk.step();
            walk.verifyStates();
            walk.verifyTexts();
            QVERIFY2(!QTest::currentTestFailed(),
                     qPrintable(QString("step %1 of seed %2").arg(i).arg(seed)));
        }
    }
};

VELT_TEST_MAIN(EditDialogRandomTest)
#include "tst_editdialog_random.moc"
