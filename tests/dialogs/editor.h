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

// Six songs A to F with the ids 1 to 6; three shows 1 to 3: A, B, space, C, B; B, E; none.
inline EditData tour()
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
    data.ShowList = {{"1", {}, entries("AB-CB")}, {"2", {}, entries("BE")}, {"3", {}, {}}};
    return data;
}

// One letter for each title in a table or list: - for a space, ? for none.
inline QString letters(const QAbstractItemView* view)
{
    QString all;
    for (int row = 0; row < view->model()->rowCount(); ++row) {
        const QModelIndex title = view->model()->index(row, 0);
        const bool isGrey = title.data(Qt::BackgroundRole).value<QBrush>().color() == 0xCDCDCD;
        all += isGrey ? "-" : title.data().toString().isEmpty() ? "?" : title.data().toString();
    }
    return all;
}

// The editor, opened on some data, and a user's mouse and keyboard on it.
class Editor
{
public:
    explicit Editor(EditData contents = tour()) : data(std::move(contents))
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

    void press(const QString& name) { QTest::mouseClick(find(name), Qt::LeftButton); }

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

    // Opens a cell and pastes a text into it; null if the cell cannot be edited.
    QLineEdit* beginTyping(QTableWidget* table, int row, int column, const QString& text)
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
        QCOMPARE(dialog.focusWidget(), static_cast<QWidget*>(table));
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
