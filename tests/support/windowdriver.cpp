// SPDX-License-Identifier: MIT
#include "windowdriver.h"

#include "datafiles.h"
#include "qmidiin.h"

#include <QDir>
#include <QStandardPaths>

namespace {

// Runs before the window is made, which reads the files when it is constructed.
QWidget* writeFiles(EditData& data)
{
    QDir(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation)).removeRecursively();
    data.writeEdit(setListFilePath());
    data.writePreference(preferenceFilePath());
    return nullptr;
}

} // namespace

EditData sampleData()
{
    EditData data;
    data.SongList = {
        {1, "Opener", {}, 1, 12}, {2, "Middle", {}, 7, 105}, {3, "Closer", {}, 10, 33}};
    data.ShowList = {{"Friday",
                      {},
                      {{kSetTypeSong, data.SongList[0], {}, "lights up"},
                       {kSetTypeSpace, {}, "talk", {}},
                       {kSetTypeSong, data.SongList[1], {}, {}},
                       {kSetTypeSong, data.SongList[2], {}, {}}}},
                     {"Empty", {}, {}}};
    return data;
}

WindowDriver::WindowDriver(EditData initial)
    : window(writeFiles(initial)),
      table(window.findChild<QTableWidget*>()),
      mode(window.findChildren<QComboBox*>().at(0)),
      shows(window.findChildren<QComboBox*>().at(1)),
      frame(window.findChild<QGroupBox*>()),
      dawIn(window.findChildren<QMidiIn*>().at(0)),
      controllerIn(window.findChildren<QMidiIn*>().at(1)),
      data(initial)
{
    window.show();
    window.activateWindow();
    [this] { QVERIFY(QTest::qWaitForWindowActive(&window)); }();
}

QPushButton* WindowDriver::button(const QString& name) const
{
    for (QPushButton* candidate : window.findChildren<QPushButton*>()) {
        if (candidate->text() == name || candidate->accessibleName() == name) {
            return candidate;
        }
    }
    qFatal("there is no button %s", qPrintable(name));
}

void WindowDriver::select(int row, int column) const
{
    const QRect cell = table->visualItemRect(table->item(row, column));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
}

void WindowDriver::doubleClick(int row, int column) const
{
    select(row, column);
    const QRect cell = table->visualItemRect(table->item(row, column));
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
}

int WindowDriver::selectedRow() const
{
    const auto selected = table->selectedItems();
    return selected.isEmpty() ? -1 : selected.first()->row();
}

QLineEdit* WindowDriver::edit(int row, int column) const
{
    table->setCurrentCell(row, column);
    table->editItem(table->item(row, column));
    return openEditor();
}

QLineEdit* WindowDriver::openEditor() const
{
    for (auto* candidate : table->findChildren<QLineEdit*>()) {
        if (candidate->isVisible()) {
            return candidate;
        }
    }
    return nullptr;
}

QStringList WindowDriver::rowMarks() const
{
    const auto look = [this](const QTableWidgetItem* item) {
        const bool isEmphasized = item->font().bold() && item->font().italic();
        const QColor text = item->foreground().color();
        if (item->background().color() == QColor(0xCD, 0xCD, 0xCD)) {
            return "space";
        }
        if (!isEmphasized) {
            return item->foreground().style() == Qt::NoBrush ? "plain" : "?";
        }
        return text == data.SendTextColor ? "sent" : text == data.NextTextColor ? "next" : "?";
    };
    QStringList all;
    for (int row = 0; row < table->rowCount(); ++row) {
        const QString title = look(table->item(row, 0));
        all << (title == look(table->item(row, 1)) ? title : "?");
    }
    return all;
}

bool WindowDriver::isRunning() const
{
    const bool running = button("Reset")->isEnabled();
    if (button("Edit")->isEnabled() == running || button("Pref.")->isEnabled() == running ||
        shows->isEnabled() == running) {
        QTest::qFail("the buttons disagree on whether a run is in progress", __FILE__, __LINE__);
    }
    return running;
}

void WindowDriver::receive(QMidiIn* port, QMidiStatus status, int pitch, int velocity)
{
    QMidiMessage message;
    message.setStatus(status)
        ->setPitch(static_cast<std::uint32_t>(pitch))
        ->setVelocity(static_cast<std::uint32_t>(velocity));
    port->onMidiMessageReceive(&message);
}
