// SPDX-License-Identifier: MIT
#pragma once

#include "editdata.h"

#include <QTableWidget>

#include <memory>

// The floor of the program's tables: the same rows with the same items in the same look, by the
// toolkit alone.

// An empty table without a parent, as large as `table` and with its columns.
std::unique_ptr<QTableWidget> makeBareTable(const QTableWidget& table);

void insertBareEntry(QTableWidget* table, int row, const EditDataSet& entry);

// Replace all rows, and go to the first.
void fillBareSetList(QTableWidget* table, const std::vector<EditDataSet>& setList);
void fillBareShows(QTableWidget* table, const std::vector<EditDataShow>& shows);
void fillBareSongs(QTableWidget* table, const std::vector<EditDataSong>& songs);

// Handles events until there are none: what has changed is laid out and painted.
void paintAll();
