// SPDX-License-Identifier: MIT
#include "baretable.h"

#include "tablelook.h"

#include <QAbstractEventDispatcher>

namespace {

constexpr int kRowHeight = 10;

void insertRow(QTableWidget* table, int row, std::initializer_list<QTableWidgetItem*> items)
{
    table->insertRow(row);
    table->setRowHeight(row, kRowHeight);
    int column = 0;
    for (QTableWidgetItem* item : items) {
        table->setItem(row, column++, item);
    }
}

QTableWidgetItem* numberItem(int number)
{
    auto* item = new QTableWidgetItem(QString::number(number));
    item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return item;
}

template <typename Record, typename Insert>
void fill(QTableWidget* table, const std::vector<Record>& records, const Insert& insert)
{
    table->setUpdatesEnabled(false);
    table->setRowCount(0);
    int row = 0;
    for (const Record& record : records) {
        insert(table, row++, record);
    }
    table->setUpdatesEnabled(true);
    table->setCurrentCell(0, 0);
}

} // namespace

std::unique_ptr<QTableWidget> makeBareTable(const QTableWidget& table)
{
    auto bare = std::make_unique<QTableWidget>(0, table.columnCount());
    TableLook::styleTable(bare.get());
    TableLook::styleHeader(bare->horizontalHeader());
    bare->horizontalHeader()->setStretchLastSection(true);
    bare->verticalHeader()->hide();
    bare->resize(table.size());
    for (int column = 0; column < table.columnCount(); ++column) {
        bare->setColumnWidth(column, table.columnWidth(column));
    }
    return bare;
}

void insertBareEntry(QTableWidget* table, int row, const EditDataSet& entry)
{
    const bool isSpace = entry.SetType == kSetTypeSpace;
    auto* title = new QTableWidgetItem(isSpace ? entry.SpaceName : entry.Song.SongTitle);
    auto* cue = new QTableWidgetItem(entry.Cue);
    if (isSpace) {
        title->setTextAlignment(Qt::AlignCenter);
        for (QTableWidgetItem* item : {title, cue}) {
            item->setBackground(Qt::lightGray);
            item->setForeground(Qt::black);
        }
    } else {
        title->setFlags(title->flags() & ~Qt::ItemIsEditable);
    }
    insertRow(table, row, {title, cue});
}

void fillBareSetList(QTableWidget* table, const std::vector<EditDataSet>& setList)
{
    fill(table, setList, insertBareEntry);
}

void fillBareShows(QTableWidget* table, const std::vector<EditDataShow>& shows)
{
    fill(table, shows, [](QTableWidget* into, int row, const EditDataShow& show) {
        insertRow(into, row,
                  {new QTableWidgetItem(show.ShowTitle), new QTableWidgetItem(show.ShowMemo)});
    });
}

void fillBareSongs(QTableWidget* table, const std::vector<EditDataSong>& songs)
{
    fill(table, songs, [](QTableWidget* into, int row, const EditDataSong& song) {
        insertRow(into, row,
                  {new QTableWidgetItem(song.SongTitle), new QTableWidgetItem(song.SongMemo),
                   numberItem(song.Marker), numberItem(song.Bar)});
    });
}

void paintAll()
{
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) {
    }
}
