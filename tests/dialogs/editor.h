// SPDX-License-Identifier: MIT
#pragma once

#include "dialogtest.h"
#include "editdialog.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>

// The editor, opened on some data, and a user's mouse and keyboard on it.
class Editor
{
public:
    explicit Editor(EditData contents = {}) : data(std::move(contents))
    {
        dialog.setDispFromEdit();
        dialog.show();
        activate();
    }

    template <typename Widget = QPushButton>
    Widget* find(const QString& name)
    {
        return dialog.findChild<Widget*>(name);
    }

    bool isEnabled(const QString& name) { return find<QWidget>(name)->isEnabled(); }

    void press(const QString& name) { QTest::mouseClick(find(name), Qt::LeftButton); }

    // Presses a button that asks a question, which is answered.
    void press(const QString& name, const QString& question, QMessageBox::StandardButton answer)
    {
        script.answerQuestion(question, kOkCancel, answer);
        press(name);
    }

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

    EditData data;
    FakeWindow window;
    EditDialog dialog{&data, &window};
    ModalScript script;
    QTableWidget* songs = find<QTableWidget>("tableSongList");
    QTableWidget* shows = find<QTableWidget>("tableShowList");
    QTableWidget* set = find<QTableWidget>("tableSetList");
    QListWidget* offered = find<QListWidget>("listWidgetSong");
};
