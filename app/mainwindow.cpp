// SPDX-License-Identifier: MIT
#include "mainwindow.h"

#include "aboutdialog.h"
#include "datafiles.h"
#include "displaystatus.h"
#include "editdialog.h"
#include "preferencedialog.h"
#include "tablelook.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QScopedValueRollback>

MainWindow::MainWindow(QWidget* parent) : QMainWindow(parent)
{
    createMenu();
    createSendButtons();
    createRunControls();
    createTable();
    createLayout();
    setWindowTitle(QStringLiteral("VELT"));
    restoreGeometryAndData();
    initialize();
    giveFocusToTable();
}

MainWindow::~MainWindow()
{
    saveGeometry();
    midiPorts.close();
    hide(); // Whatever has the focus gives it up while all widgets that report it are still there.
    delete groupBoxSend;
    delete editDialog;
    delete preferenceDialog;
    delete pushReset;
    delete pushEdit;
    delete pushPreference;
    delete comboShowList;
    delete tableSetList;
}

void MainWindow::createMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&About"));
    auto* about = new QAction(tr("&AboutVELT"), this);
    connect(about, &QAction::triggered, this, &MainWindow::on_about);
    menu->addAction(about);
}

ExPushButton* MainWindow::createSendButton(const QString& icon, const QString& spokenName,
                                           void (MainWindow::*slot)())
{
    auto* button = new ExPushButton(this);
    connect(button, &QPushButton::clicked, this, slot);
    setSendButtonStyle(button, QStringLiteral(":/img/img/") + icon);
    button->setAccessibleName(spokenName);
    return button;
}

void MainWindow::createSendButtons()
{
    groupBoxSend = new QGroupBox;
    sendLocate = createSendButton(QStringLiteral("locate.ico"), tr("LOCATE"),
                                  &MainWindow::on_sendLocate_clicked);
    setSendButtonEnabled(sendLocate, false);
    sendDawStart = createSendButton(QStringLiteral("play.ico"), tr("DAW PLAY"),
                                    &MainWindow::on_sendDawStart_clicked);
    setSendButtonEnabled(sendDawStart, true);
    sendDawStop = createSendButton(QStringLiteral("stop.ico"), tr("DAW STOP"),
                                   &MainWindow::on_sendDawStop_clicked);
    setSendButtonEnabled(sendDawStop, true);
    send0 =
        createSendButton(QStringLiteral("zero.ico"), tr("Key 0"), &MainWindow::on_send0_clicked);
    setSendButtonEnabled(send0, true);
    sendTab =
        createSendButton(QStringLiteral("tab.ico"), tr("Key Tab"), &MainWindow::on_sendTab_clicked);
    sendSpace = createSendButton(QStringLiteral("space.ico"), tr("Key Space"),
                                 &MainWindow::on_sendSpace_clicked);
    sendEnter = createSendButton(QStringLiteral("enter.ico"), tr("Key Enter"),
                                 &MainWindow::on_sendEnter_clicked);
}

ExPushButton* MainWindow::createPushButton(const QString& text, void (MainWindow::*slot)())
{
    auto* button = new ExPushButton(this);
    connect(button, &QPushButton::clicked, this, slot);
    button->setText(text);
    QFont font = button->font();
    font.setPointSize(10);
    button->setFont(font);
    return button;
}

void MainWindow::createRunControls()
{
    comboMode = new ExComboBox(this);
    comboMode->addItems(
        {QStringLiteral("Manual"), QStringLiteral("AutoStop"), QStringLiteral("AutoLocate")});
    comboMode->setCurrentIndex(2);
    QFont modeFont = comboMode->font();
    modeFont.setPointSize(10);
    comboMode->setFont(modeFont);
    comboMode->setAccessibleName(tr("Run mode"));

    pushReset = createPushButton(tr("Reset"), &MainWindow::on_pushReset_clicked);
    pushReset->setEnabled(false);
    // The focus rule of the "Edit" button goes by its text, which therefore stays untranslated.
    pushEdit = createPushButton(QStringLiteral("Edit"), &MainWindow::on_pushEdit_clicked);
    pushPreference = createPushButton(tr("Pref."), &MainWindow::on_pushPreference_clicked);

    comboShowList = new ExComboBox(this);
    connect(comboShowList, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &MainWindow::on_comboShowList_currentIndexChanged);
    QFont showFont = comboShowList->font();
    showFont.setPointSize(12);
    showFont.setBold(true);
    comboShowList->setFont(showFont);
    comboShowList->setAccessibleName(tr("Show"));
}

void MainWindow::createTable()
{
    tableSetList = new ExTableWidget(this);
    TableLook::styleTable(tableSetList);
    connect(tableSetList, &QTableWidget::cellDoubleClicked, this,
            &MainWindow::on_tableSetList_doubleclicked);
    connect(tableSetList, &QTableWidget::cellChanged, this,
            &MainWindow::on_tableSetList_cellChanged);
    connect(tableSetList, &QTableWidget::itemSelectionChanged, this,
            &MainWindow::on_tableSetList_itemSelectionChanged);
    tableSetList->setColumnCount(2);
    tableSetList->setHorizontalHeaderLabels({tr("SongTitle"), tr("Cue")});
    TableLook::styleHeader(tableSetList->horizontalHeader());
    tableSetList->horizontalHeader()->setStretchLastSection(true);
    tableSetList->verticalHeader()->hide();
    tableSetList->setSelectionMode(QAbstractItemView::SingleSelection);
    tableSetList->setAccessibleName(tr("Set list"));
}

void MainWindow::createLayout()
{
    auto* sendLayout = new QHBoxLayout(groupBoxSend);
    sendLayout->setSpacing(1);
    for (ExPushButton* button :
         {sendLocate, sendDawStart, sendDawStop, send0, sendTab, sendSpace, sendEnter}) {
        sendLayout->addWidget(button);
    }

    auto* controls = new QHBoxLayout;
    controls->addStretch();
    controls->addWidget(comboMode);
    controls->addSpacing(10);
    controls->addWidget(pushReset);
    controls->addWidget(pushEdit);
    controls->addWidget(pushPreference);

    auto* central = new QWidget;
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(10, 10, 10, 10);
    layout->setSpacing(1);
    layout->addWidget(groupBoxSend);
    layout->addLayout(controls, 2);
    layout->addWidget(comboShowList);
    layout->addWidget(tableSetList, 1);
    setCentralWidget(central);
}

void MainWindow::restoreGeometryAndData()
{
    const DisplayStatus status = readDisplayStatus(displayStatusFilePath());
    setGeometry(status.window);
    tableSetList->setColumnWidth(0, status.columnWidth);

    editData.readEdit(setListFilePath());
    editData.readPreference(preferenceFilePath());

    editDialog = new EditDialog(&editData, this);
    if (status.editor.width() != 0) {
        editDialog->setGeometry(status.editor);
    } else {
        editDialog->move(x() + 30, y() - 10);
    }
    preferenceDialog = new PreferenceDialog(&editData, midiPorts.midiIn, midiPorts.shortcutMidiIn,
                                            midiPorts.midiOut, this);
}

void MainWindow::initialize()
{
    setPreferenceData();
    setShowData();
    connectMidi();
    midiPorts.open(); // At start-up a port that cannot be opened just stays closed.
}

void MainWindow::saveGeometry() const
{
    writeDisplayStatus(displayStatusFilePath(),
                       {geometry(), tableSetList->columnWidth(0), editDialog->geometry()});
}

void MainWindow::setShowData()
{
    if (operationOn) {
        setOperationOff(); // Its marks go with the rows.
    }
    comboShowList->clear();
    QStringList titles;
    for (const EditDataShow& show : editData.ShowList) {
        titles << show.ShowTitle;
    }
    comboShowList->addItems(titles); // Shows the first.
    processPos = -1;
}

void MainWindow::on_comboShowList_currentIndexChanged(int index)
{
    if (inUpdate) {
        return;
    }
    const QScopedValueRollback<bool> guard(inUpdate, true);
    {
        const TableLook::Refill refill(tableSetList);
        const std::vector<EditDataSet>* setList = shownSetList();
        if (setList) {
            for (const EditDataSet& entry : *setList) {
                insertSet(tableSetList->rowCount(), entry, NOT_SENT);
            }
        }
        if (index >= 0) {
            sentPos = -1;
            nextPos = -1;
        }
    }
    selectedRow(0);
    setSendButtonEnabled(sendLocate, tableSetList->rowCount() > 0);
    giveFocusToTable();
}

std::vector<EditDataSet>* MainWindow::shownSetList()
{
    const int index = comboShowList->currentIndex();
    if (index < 0 || index >= static_cast<int>(editData.ShowList.size())) {
        return nullptr;
    }
    EditDataShow& show = editData.ShowList[static_cast<std::size_t>(index)];
    // While the editor is open, another show may have moved to this place.
    return show.ShowTitle == comboShowList->currentText() ? &show.SetList : nullptr;
}

EditDataSet* MainWindow::shownEntry(int pos)
{
    std::vector<EditDataSet>* setList = shownSetList();
    if (!setList || pos < 0 || pos >= static_cast<int>(setList->size())) {
        return nullptr;
    }
    return &(*setList)[static_cast<std::size_t>(pos)];
}

bool MainWindow::isShowingModel()
{
    const int showCount = static_cast<int>(editData.ShowList.size());
    if (comboShowList->count() != showCount) {
        return false;
    }
    for (int i = 0; i < showCount; ++i) {
        if (comboShowList->itemText(i) !=
            editData.ShowList[static_cast<std::size_t>(i)].ShowTitle) {
            return false;
        }
    }
    const std::vector<EditDataSet>* setList = shownSetList();
    if (!setList) {
        return tableSetList->rowCount() == 0;
    }
    if (tableSetList->rowCount() != static_cast<int>(setList->size())) {
        return false;
    }
    for (int row = 0; row < tableSetList->rowCount(); ++row) {
        if (!TableLook::showsEntry(tableSetList, row, *shownEntry(row))) {
            return false;
        }
    }
    return true;
}

void MainWindow::insertSet(int row, const EditDataSet& entry, SEND_STATE state)
{
    TableLook::insertEntry(tableSetList, row, entry);
    if (entry.SetType == kSetTypeSpace || state == NOT_SENT) {
        return;
    }
    QFont emphasis;
    emphasis.setBold(true);
    emphasis.setItalic(true);
    const QColor& mark = state == SENT ? editData.SendTextColor : editData.NextTextColor;
    for (int column = 0; column < tableSetList->columnCount(); ++column) {
        QTableWidgetItem* item = tableSetList->item(row, column);
        item->setForeground(QBrush(mark));
        item->setFont(emphasis);
    }
}

void MainWindow::redrawRow(int row, SEND_STATE state)
{
    if (row < 0 || row >= tableSetList->rowCount()) {
        return;
    }
    if (const EditDataSet* entry = shownEntry(row)) {
        tableSetList->removeRow(row);
        insertSet(row, *entry, state);
    }
}

int MainWindow::selectedPos() const
{
    const QList<QTableWidgetItem*> selected = tableSetList->selectedItems();
    return selected.isEmpty() ? -1 : selected.first()->row();
}

void MainWindow::selectedRow(int row)
{
    const QList<QTableWidgetItem*> selected = tableSetList->selectedItems();
    if (!selected.isEmpty()) {
        selected.first()->setSelected(false);
    }
    if (row >= 0 && row < tableSetList->rowCount()) {
        tableSetList->item(row, 0)->setSelected(true);
        tableSetList->setCurrentCell(row, 0);
    }
}

void MainWindow::on_tableSetList_itemSelectionChanged()
{
    const int row = selectedPos();
    QColor text = TableLook::kSelectedText;
    if (row != -1 && row == sentPos) {
        text = editData.SendTextColor;
    } else if (row != -1 && row == nextPos) {
        text = editData.NextTextColor;
    }
    QPalette palette = tableSetList->palette();
    if (palette.color(QPalette::HighlightedText) == text) {
        return; // A palette that is given back is costly, and rows come and go in a locate.
    }
    palette.setBrush(QPalette::All, QPalette::HighlightedText, text);
    tableSetList->setPalette(palette);
}

void MainWindow::on_about()
{
    AboutDialog about(x() + 150, y() + 50, nullptr);
    about.exec();
    giveFocusToTable();
}

void MainWindow::on_pushEdit_clicked()
{
    editDialog->setDispFromEdit();
    editDialog->exec();
    if (!isShowingModel()) {
        setShowData();
    }
    giveFocusToTable();
}

void MainWindow::on_pushPreference_clicked()
{
    if (midiPorts.isSystemEmpty()) {
        midiPorts.reopen(); // So that the ports of a server that came back can be chosen.
    }
    preferenceDialog->setDispFromEdit();
    preferenceDialog->exec();
    giveFocusToTable();
}

void MainWindow::giveFocusToTable()
{
    tableSetList->setFocus(Qt::OtherFocusReason);
}
