// SPDX-License-Identifier: MIT
#include "editdialog.h"

#include "datafiles.h"
#include "messageboxes.h"
#include "operatorwindow.h"
#include "tablelook.h"
#include "ui_editdialog.h"

#include <QCloseEvent>
#include <QFileDialog>
#include <QKeyEvent>
#include <QResizeEvent>
#include <QScopedValueRollback>

namespace {

const QString kFileFilter = QStringLiteral("All File(*.*);;Ini File(*.ini)");
const QString kInitialFilter = QStringLiteral("Ini File(*.ini)");

constexpr int kTop = 10;         // Of the group boxes, as of the dialog's left margin.
constexpr int kBottomSpace = 40; // Below the group boxes, not shared among them.
constexpr int kButtonsFromBottom = 50;

// Places a widget; a size that a small dialog has no room for becomes 0.
void place(QWidget* widget, int x, int y, int width, int height)
{
    widget->setGeometry(x, y, qMax(0, width), qMax(0, height));
}

} // namespace

EditDialog::EditDialog(EditData* sharedData, QWidget* parent)
    : QDialog(parent),
      ui(std::make_unique<Ui::EditDialog>()),
      parentWindow(dynamic_cast<OperatorWindow*>(parent)),
      editData(sharedData)
{
    setWindowFlags(Qt::Window | Qt::WindowCloseButtonHint);
    ui->setupUi(this);
    setUpTables();
    setUpSongListView();
}

EditDialog::~EditDialog() = default;

void EditDialog::setUpTables()
{
    for (QTableWidget* table : {ui->tableShowList, ui->tableSongList, ui->tableSetList}) {
        TableLook::styleTable(table);
        table->setTabKeyNavigation(
            false); // Tab leaves the table; in an open cell it goes on to the next.
        table->horizontalHeader()->setStretchLastSection(true);
        TableLook::styleHeader(table->horizontalHeader());
        table->verticalHeader()->hide();
    }
    ui->tableShowList->setColumnWidth(0, 170);
    ui->tableSongList->setColumnWidth(0, 130);
    ui->tableSongList->setColumnWidth(1, 150);
    ui->tableSongList->setColumnWidth(2, 70);
    ui->tableSongList->setColumnWidth(3, 70);
    ui->tableSetList->setColumnWidth(0, 170);
}

void EditDialog::setDispFromEdit()
{
    const QScopedValueRollback<bool> updating(isUpdating, true);
    ui->listWidgetSong->clearSelection();
    fillShowTable();
    fillSongTable();
    ui->tableShowList->setFocus(); // And not the button that closed the editor before.
    isChanged = false;
}

// The form has no layout manager. What a step does not compute keeps its designed value; the set
// list's area takes what the group box of the songs, which keeps its width, leaves free.
void EditDialog::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    const QSize size = event->size();
    const int half = (size.height() - kBottomSpace) / 2;
    placeSongs(half);
    placeShows(half);
    placeSetList(size.width(), 2 * half);
    placeBottomButtons(size.height());
}

void EditDialog::placeSongs(int half)
{
    place(ui->groupBoxSong, kTop, kTop, ui->groupBoxSong->width(), half);
    place(ui->tableSongList, ui->tableSongList->x(), 80, ui->tableSongList->width(), half - 90);
}

void EditDialog::placeShows(int half)
{
    place(ui->groupBoxShow, kTop, half + 20, ui->groupBoxShow->width(), half - 45);
    for (QPushButton* button :
         {ui->pushShowListAdd, ui->pushShowListDuplicate, ui->pushShowListDelete}) {
        button->move(button->x(), half + 50);
    }
    place(ui->tableShowList, ui->tableShowList->x(), half + 90, ui->tableShowList->width(),
          half - 135);
}

void EditDialog::placeSetList(int windowWidth, int full)
{
    const int songsWidth = ui->groupBoxSong->width();
    place(ui->groupBoxSet, songsWidth + 20, kTop, windowWidth - songsWidth - 30, full - 35);
    place(ui->listWidgetSong, ui->groupBoxSet->x() + 10, 40, ui->listWidgetSong->width(),
          full - 80);
    ui->pushSongInsert->move(ui->pushSongInsert->x(), (full - 50) / 2 + ui->groupBoxSet->y());
    for (QPushButton* button : {ui->pushAddSpace, ui->pushSetDelete}) {
        button->move(button->x(), 40);
    }
    place(ui->tableSetList, ui->tableSetList->x(), 70, ui->groupBoxSet->width() - 260, full - 115);
    ui->pushSetUp->move(windowWidth - 60, ui->tableSetList->y());
    ui->pushSetDown->move(windowWidth - 60, ui->tableSetList->y() + 50);
}

void EditDialog::placeBottomButtons(int windowHeight)
{
    for (QPushButton* button : {ui->pushOK, ui->pushCancel, ui->pushOpen, ui->pushSaveAs}) {
        button->move(button->x(), windowHeight - kButtonsFromBottom);
    }
}

// Return confirms the cell that is being typed in; beyond that it presses no button but a focused
// one. No button is a default button, or Return in a table would press it.
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
    commitOpenCell();
    if (isChanged) {
        const QMessageBox::StandardButton answer = MessageBoxes::askToSave(this);
        if (answer == QMessageBox::Save) {
            saveSetListFile();
        } else if (answer == QMessageBox::No) {
            isChanged = false;
        } else {
            event->ignore();
            return;
        }
    }
    QDialog::closeEvent(event);
}

void EditDialog::on_pushOK_clicked()
{
    commitOpenCell();
    saveSetListFile();
    close();
}

void EditDialog::on_pushCancel_clicked()
{
    commitOpenCell();
    isChanged = false;
    close();
}

void EditDialog::on_pushOpen_clicked()
{
    commitOpenCell();
    if (isChanged &&
        !MessageBoxes::confirm(this, QStringLiteral("Contents have been changed. Do you want to "
                                                    "read the configuration file?"))) {
        return;
    }
    QString filter = kInitialFilter;
    const QString path = QFileDialog::getOpenFileName(this, QStringLiteral("Open Setting File"),
                                                      QString(), kFileFilter, &filter,
                                                      QFileDialog::DontUseCustomDirectoryIcons);
    if (!path.isEmpty()) {
        editData->readEdit(path);
        setDispFromEdit();
    }
}

void EditDialog::on_pushSaveAs_clicked()
{
    commitOpenCell();
    QString filter = kInitialFilter;
    const QString path = QFileDialog::getSaveFileName(this, QStringLiteral("Save Setting File"),
                                                      QString(), kFileFilter, &filter,
                                                      QFileDialog::DontUseCustomDirectoryIcons);
    if (path.isEmpty()) {
        return;
    }
    const auto songs = editData->SongList.size();
    const auto shows = editData->ShowList.size();
    editData->writeEdit(path);
    isChanged = false;
    if (songs != editData->SongList.size() || shows != editData->ShowList.size()) {
        setDispFromEdit(); // Writing has removed what has no title.
    }
    if (parentWindow) {
        parentWindow->setShowData();
    }
}

void EditDialog::saveChanges()
{
    if (!isVisible()) {
        return;
    }
    commitOpenCell();
    if (isChanged) {
        saveSetListFile();
    }
}

void EditDialog::saveSetListFile()
{
    editData->writeEdit(setListFilePath());
    isChanged = false;
    if (parentWindow) {
        parentWindow->setShowData();
    }
}

// A cell that is being typed in takes its text when it loses the focus. The close button in the
// window's title does not move the focus.
void EditDialog::commitOpenCell()
{
    for (QTableWidget* table : {ui->tableSongList, ui->tableShowList, ui->tableSetList}) {
        if (table->viewport()->isAncestorOf(focusWidget())) {
            table->setFocus();
        }
    }
}
