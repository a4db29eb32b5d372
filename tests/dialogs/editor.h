// SPDX-License-Identifier: MIT
#pragma once

#include "editdialog.h"
#include "operatorwindow.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

#include <set>

// Stands in for the operator window: counts what the editor tells it.
class WindowDouble : public QWidget, public OperatorWindow
{
public:
    void setShowData() override { ++refreshes; }
    void setPreferenceData() override {}
    void midiReconnect() override {}

    int refreshes = 0;
};

// The editor, opened on some data, and a user's mouse and keyboard on it.
class Editor
{
public:
    enum Opened { Shown, ToBeExecuted };

    explicit Editor(EditData contents = {}, Opened opened = Shown) : data(std::move(contents))
    {
        dialog.setDispFromEdit();
        if (opened == Shown) {
            dialog.show();
            activate();
        }
    }

    template <typename Widget = QPushButton>
    Widget* find(const QByteArray& name)
    {
        return dialog.findChild<Widget*>(QLatin1String(name));
    }

    bool isEnabled(const QByteArray& name) { return find<QWidget>(name)->isEnabled(); }

    void press(const QByteArray& name) { QTest::mouseClick(find(name), Qt::LeftButton); }

    // Waits until keys go to the dialog: after it was shown or a message box has gone.
    void activate()
    {
        dialog.activateWindow();
        QTRY_VERIFY(dialog.isActiveWindow());
    }

    void click(QAbstractItemView* view, int row, int column = 0,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        const QModelIndex index = view->model()->index(row, column);
        activate();
        view->scrollTo(index);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, modifiers,
                          view->visualRect(index).center());
    }

    // Clicks the first row, then the others with Control held down.
    void choose(QAbstractItemView* view, const std::vector<int>& rows)
    {
        for (const int row : rows) {
            click(view, row, 0, row == rows.front() ? Qt::NoModifier : Qt::ControlModifier);
        }
    }

    // Opens a cell and pastes a text into it; false if the cell cannot be edited.
    bool beginTyping(QTableWidget* table, int row, int column, const QString& text)
    {
        click(table, row, column);
        QTest::keyClick(table, Qt::Key_F2);
        auto* cell = qobject_cast<QLineEdit*>(dialog.focusWidget());
        if (cell) {
            cell->clear();
            QApplication::clipboard()->setText(text);
            cell->paste();
        }
        return cell;
    }

    // The same, confirmed by Return.
    void type(QTableWidget* table, int row, int column, const QString& text)
    {
        QVERIFY(beginTyping(table, row, column, text));
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
        QTRY_COMPARE(dialog.focusWidget(), static_cast<QWidget*>(table));
    }

    // Types without a click before: the first key opens the cell.
    void typeAtOnce(const char* text)
    {
        for (; *text; ++text) {
            QTest::keyClick(dialog.focusWidget(), *text);
        }
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    }

    EditData data;
    WindowDouble window;
    EditDialog dialog{&data, &window};
    QTableWidget* songs = find<QTableWidget>("tableSongList");
    QTableWidget* shows = find<QTableWidget>("tableShowList");
    QTableWidget* set = find<QTableWidget>("tableSetList");
    QListWidget* offered = find<QListWidget>("listWidgetSong");
};

// Each selected row once, ascending.
inline std::vector<int> selectedRows(const QTableWidget* table)
{
    std::set<int> rows;
    for (const QTableWidgetItem* item : table->selectedItems()) {
        rows.insert(item->row());
    }
    return {rows.begin(), rows.end()};
}
