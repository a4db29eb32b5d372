// SPDX-License-Identifier: MIT
#include "editdialog.h"

#include "datafiles.h"
#include "messageboxes.h"
#include "operatorwindow.h"
#include "tablelook.h"
#include "ui_editdialog.h"

#include <QFileDialog>
#include <QKeyEvent>
#include <QResizeEvent>

namespace {

constexpr int kTop = 10;         // Of the group boxes, as of the dialog's left margin.
constexpr int kBottomSpace = 40; // Below the group boxes, not shared among them.
constexpr int kButtonsFromBottom = 50;

// Places a widget; a size that a small dialog has no room for becomes 0.
void place(QWidget* widget, int x, int y, int width, int height)
{
    widget->setGeometry(x, y, qMax(0, width), qMax(0, height));
}

// Asks for a file with one of QFileDialog's functions; empty if the user cancels.
QString chooseFile(QWidget* parent, const QString& caption,
                   decltype(&QFileDialog::getOpenFileName) ask)
{
    QString filter = QStringLiteral("Ini File(*.ini)");
    return ask(parent, caption, QString(), QStringLiteral("All File(*.*);;Ini File(*.ini)"),
               &filter, QFileDialog::DontUseCustomDirectoryIcons);
}

} // namespace

EditDialog::EditDialog(EditData* sharedData, QWidget* parent)
    : SavingDialog(parent), ui(std::make_unique<Ui::EditDialog>()), editData(sharedData)
{
    ui->setupUi(this);
    setUpTables();
}

EditDialog::~EditDialog() = default;

void EditDialog::setUpTables()
{
    for (QTableWidget* table : {ui->tableShowList, ui->tableSongList, ui->tableSetList}) {
        TableLook::styleTable(table);
        TableLook::styleHeader(table->horizontalHeader());
    }
    ui->tableShowList->setColumnWidth(0, 170);
    ui->tableSongList->setColumnWidth(0, 130);
    ui->tableSongList->setColumnWidth(1, 150);
    ui->tableSongList->setColumnWidth(2, 70);
    ui->tableSongList->setColumnWidth(3, 70);
    ui->tableSetList->setColumnWidth(0, 170);
    TableLook::stylePaper(ui->listWidgetSong);
}

void EditDialog::setDispFromEdit()
{
    changeWidgets([this] {
        ui->listWidgetSong->clearSelection();
        fillShowTable();
        fillSongTable();
    });
    ui->tableShowList->setFocus(); // And not the button that closed the editor before.
    isChanged = false;
}

// The form has no layout manager. What is not computed here keeps its designed value; the set
// list's area takes what the group box of the songs leaves free.
void EditDialog::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    const int width = event->size().width();
    const int height = event->size().height();
    const int half = (height - kBottomSpace) / 2;
    const int full = 2 * half;
    const auto stretch = [](QWidget* widget, int y, int newHeight) {
        place(widget, widget->x(), y, widget->width(), newHeight);
    };
    const auto moveTo = [](std::initializer_list<QWidget*> widgets, int y) {
        for (QWidget* widget : widgets) {
            widget->move(widget->x(), y);
        }
    };
    stretch(ui->groupBoxSong, kTop, half);
    stretch(ui->tableSongList, 80, half - 90);
    stretch(ui->groupBoxShow, half + 20, half - 45);
    moveTo({ui->pushShowListAdd, ui->pushShowListDuplicate, ui->pushShowListDelete}, half + 50);
    stretch(ui->tableShowList, half + 90, half - 135);

    const int songsWidth = ui->groupBoxSong->width();
    place(ui->groupBoxSet, songsWidth + 20, kTop, width - songsWidth - 30, full - 35);
    place(ui->listWidgetSong, ui->groupBoxSet->x() + 10, 40, ui->listWidgetSong->width(),
          full - 80);
    moveTo({ui->pushSongInsert}, (full - 50) / 2 + kTop);
    place(ui->tableSetList, ui->tableSetList->x(), 70, ui->groupBoxSet->width() - 260, full - 115);
    ui->pushSetUp->move(width - 60, 70);
    ui->pushSetDown->move(width - 60, 120);
    moveTo({ui->pushOK, ui->pushCancel, ui->pushOpen, ui->pushSaveAs}, height - kButtonsFromBottom);
}

// Return presses no button but a focused one. No button is a default button, or Return in a table
// would press it.
void EditDialog::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QDialog::keyPressEvent(event);
        return;
    }
    if (auto* button = qobject_cast<QPushButton*>(focusWidget())) {
        button->click();
    }
}

void EditDialog::closeEvent(QCloseEvent* event)
{
    storeOpenCell();
    SavingDialog::closeEvent(event);
}

void EditDialog::on_pushOK_clicked()
{
    storeOpenCell();
    saveAndClose();
}

void EditDialog::on_pushCancel_clicked()
{
    storeOpenCell();
    closeWithoutQuestion();
}

void EditDialog::on_pushOpen_clicked()
{
    storeOpenCell();
    if (isChanged &&
        !MessageBoxes::confirm(this, QStringLiteral("Contents have been changed. Do you want to "
                                                    "read the configuration file?"))) {
        return;
    }
    const QString path =
        chooseFile(this, QStringLiteral("Open Setting File"), &QFileDialog::getOpenFileName);
    if (!path.isEmpty()) {
        editData->readEdit(path);
        setDispFromEdit();
    }
}

void EditDialog::on_pushSaveAs_clicked()
{
    storeOpenCell();
    const QString path =
        chooseFile(this, QStringLiteral("Save Setting File"), &QFileDialog::getSaveFileName);
    if (path.isEmpty()) {
        return;
    }
    const auto songs = editData->SongList.size();
    const auto shows = editData->ShowList.size();
    write(path);
    if (songs != editData->SongList.size() || shows != editData->ShowList.size()) {
        setDispFromEdit(); // Writing has removed what has no title.
    }
}

void EditDialog::saveChanges()
{
    if (!isVisible()) {
        return;
    }
    storeOpenCell();
    if (isChanged) {
        save();
    }
}

void EditDialog::save()
{
    write(setListFilePath());
}

void EditDialog::write(const QString& path)
{
    editData->writeEdit(path);
    isChanged = false;
    if (parentWindow) {
        parentWindow->setShowData();
    }
}

// A cell that is being typed in takes its text when it loses the focus. The close button in the
// window's title does not move the focus.
void EditDialog::storeOpenCell()
{
    for (QTableWidget* table : {ui->tableSongList, ui->tableShowList, ui->tableSetList}) {
        if (table->viewport()->isAncestorOf(focusWidget())) {
            table->setFocus();
        }
    }
}

void EditDialog::editIfConfirmed(const QString& question, const std::function<void()>& work)
{
    edit([&] {
        const bool isConfirmed = MessageBoxes::confirm(this, question);
        if (isConfirmed) {
            work();
        }
        return isConfirmed;
    });
}
