// SPDX-License-Identifier: MIT
#include "tablelook.h"

#include "celldelegate.h"
#include "editdata.h"

#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>

namespace TableLook {

namespace {

constexpr int kRowHeight = 10; // Asked for; the style keeps rows as high as the text needs.

const QColor kSelectionBackground{0xB4, 0xEF, 0xEF};
const QColor kSpaceBackground{0xCD, 0xCD, 0xCD};

QString titleOf(const EditDataSet& entry)
{
    return entry.SetType == kSetTypeSpace ? entry.SpaceName : entry.Song.SongTitle;
}

// The title item of a set-list row, which knows the entry that it was made for.
class TitleItem : public QTableWidgetItem
{
public:
    explicit TitleItem(const EditDataSet& entry)
        : QTableWidgetItem(titleOf(entry)), kind(entry.SetType), songId(entry.Song.Id)
    {
    }

    std::int32_t kind;
    std::int32_t songId;
};

const TitleItem* titleItem(const QTableWidget* table, int row)
{
    return dynamic_cast<const TitleItem*>(table->item(row, kTitleColumn));
}

// The desktop's style, without the gradients that some draw over the colours of cells and headers.
class FlatStyle : public QProxyStyle
{
public:
    explicit FlatStyle(QObject* owner) { setParent(owner); }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        if (element == PE_FrameFocusRect) {
            painter->setPen(option->palette.color(QPalette::Highlight).darker(150));
            painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
            return;
        }
        const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option);
        if (element != PE_PanelItemViewItem || !item) {
            QProxyStyle::drawPrimitive(element, option, painter, widget);
        } else {
            const bool isSelected = item->state.testFlag(State_Selected);
            painter->fillRect(item->rect, isSelected ? item->palette.brush(QPalette::Highlight)
                                                     : item->backgroundBrush);
        }
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override
    {
        if (element != CE_HeaderSection) {
            QProxyStyle::drawControl(element, option, painter, widget);
            return;
        }
        const QColor fill = option->palette.color(QPalette::Button);
        painter->fillRect(option->rect, fill);
        painter->setPen(fill.lighter(160));
        painter->drawLine(option->rect.topRight(), option->rect.bottomRight());
    }
};

} // namespace

void stylePaper(QWidget* widget)
{
    QPalette palette = widget->palette();
    palette.setBrush(QPalette::All, QPalette::Base, Qt::white);
    palette.setBrush(QPalette::All, QPalette::AlternateBase, Qt::white);
    palette.setBrush(QPalette::All, QPalette::Text, Qt::black);
    widget->setPalette(palette);
}

void styleTable(QTableWidget* table)
{
    table->setStyle(new FlatStyle(table));
    table->setItemDelegate(new CellDelegate(table));
    stylePaper(table);
    QPalette palette = table->palette();
    palette.setBrush(QPalette::All, QPalette::Highlight, kSelectionBackground);
    palette.setBrush(QPalette::All, QPalette::HighlightedText, kSelectedText);
    table->setPalette(palette);
}

void styleHeader(QHeaderView* header)
{
    header->setStyle(new FlatStyle(header));
    header->setStyleSheet(
        QStringLiteral("::section{Background-color:#185466;color:#FFFFFF;border-width:1px;}"));
    header->setHighlightSections(false);
}

void insertRow(QTableWidget* table, int row, std::initializer_list<QTableWidgetItem*> cells)
{
    table->insertRow(row);
    table->setRowHeight(row, kRowHeight);
    int column = 0;
    for (QTableWidgetItem* cell : cells) {
        table->setItem(row, column++, cell);
    }
}

void insertEntry(QTableWidget* table, int row, const EditDataSet& entry)
{
    const bool isSpace = entry.SetType == kSetTypeSpace;
    auto* title = new TitleItem(entry);
    auto* cue = new QTableWidgetItem(entry.Cue);
    if (isSpace) {
        title->setTextAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
        for (QTableWidgetItem* item : {static_cast<QTableWidgetItem*>(title), cue}) {
            item->setBackground(kSpaceBackground);
            item->setForeground(kSelectedText);
        }
    } else {
        title->setFlags(title->flags() & ~Qt::ItemIsEditable);
    }
    insertRow(table, row, {title, cue});
}

bool isEntryOf(const QTableWidget* table, int row, const EditDataSet& entry)
{
    const TitleItem* title = titleItem(table, row);
    if (!title || title->kind != entry.SetType) {
        return false;
    }
    return entry.SetType == kSetTypeSpace ? title->text() == entry.SpaceName
                                          : title->songId == entry.Song.Id;
}

bool showsEntry(const QTableWidget* table, int row, const EditDataSet& entry)
{
    const TitleItem* title = titleItem(table, row);
    const QTableWidgetItem* cue = table->item(row, kCueColumn);
    return title && cue && title->kind == entry.SetType && title->text() == titleOf(entry) &&
           cue->text() == entry.Cue;
}

} // namespace TableLook
