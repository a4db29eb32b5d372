// SPDX-License-Identifier: MIT
#include "operatorfixture.h"

#include "datafiles.h"
#include "qmidiin.h"
#include "qmidimessage.h"

#include <QDir>
#include <QStandardPaths>
#include <QTest>

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

EditDataSong song(int id, const QString& title, int bar, int marker)
{
    EditDataSong made;
    made.Id = id;
    made.SongTitle = title;
    made.Bar = bar;
    made.Marker = marker;
    return made;
}

EditDataSet songEntry(const EditDataSong& song, const QString& cue)
{
    EditDataSet entry;
    entry.Song = song;
    entry.Cue = cue;
    return entry;
}

EditDataSet spaceEntry(const QString& name, const QString& cue)
{
    EditDataSet entry;
    entry.SetType = kSetTypeSpace;
    entry.SpaceName = name;
    entry.Cue = cue;
    return entry;
}

EditData sampleData()
{
    EditData data;
    data.SongList = {song(1, "Opener", 12, 1), song(2, "Middle", 105, 7),
                     song(3, "Closer", 33, 10)};
    data.ShowList.resize(2);
    data.ShowList[0].ShowTitle = "Friday";
    data.ShowList[0].SetList = {songEntry(data.SongList[0], "lights up"), spaceEntry("talk"),
                                songEntry(data.SongList[1]), songEntry(data.SongList[2])};
    data.ShowList[1].ShowTitle = "Empty";
    return data;
}

Operator::Operator(EditData initial)
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

QPushButton* Operator::button(const QString& name) const
{
    for (QPushButton* candidate : window.findChildren<QPushButton*>()) {
        if (candidate->text() == name || candidate->accessibleName() == name) {
            return candidate;
        }
    }
    qFatal("there is no button %s", qPrintable(name));
}

void Operator::press(const QString& name) const
{
    QTest::mouseClick(button(name), Qt::LeftButton);
}

void Operator::select(int row, int column) const
{
    const QRect cell = table->visualItemRect(table->item(row, column));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
}

int Operator::selectedRow() const
{
    const auto selected = table->selectedItems();
    return selected.isEmpty() ? -1 : selected.first()->row();
}

QLineEdit* Operator::edit(int row, int column) const
{
    table->setCurrentCell(row, column);
    table->editItem(table->item(row, column));
    return openEditor();
}

QLineEdit* Operator::openEditor() const
{
    return qobject_cast<QLineEdit*>(table->indexWidget(table->currentIndex()));
}

bool Operator::isFocusOnTable() const
{
    return window.focusWidget() == table;
}

QStringList Operator::looks() const
{
    const auto look = [this](const QTableWidgetItem* item) {
        const bool isEmphasized = item->font().bold() && item->font().italic();
        const QColor text = item->foreground().color();
        if (item->background().color() == QColor(0xCD, 0xCD, 0xCD)) {
            return "space";
        }
        if (!isEmphasized && item->foreground().style() == Qt::NoBrush) {
            return "plain";
        }
        if (isEmphasized && text == data.SendTextColor) {
            return "sent";
        }
        if (isEmphasized && text == data.NextTextColor) {
            return "next";
        }
        return "?";
    };
    QStringList all;
    for (int row = 0; row < table->rowCount(); ++row) {
        const QString title = look(table->item(row, 0));
        all << (title == look(table->item(row, 1)) ? title : "?");
    }
    return all;
}

bool Operator::isRunning() const
{
    const bool running = button("Reset")->isEnabled();
    if (button("Edit")->isEnabled() == running || button("Pref.")->isEnabled() == running ||
        shows->isEnabled() == running) {
        QTest::qFail("the buttons disagree on whether a run is in progress", __FILE__, __LINE__);
    }
    return running;
}

void Operator::controllerNote(int note, int velocity) const
{
    QMidiMessage message;
    message.setStatus(MIDI_NOTE_ON)
        ->setPitch(static_cast<std::uint32_t>(note))
        ->setVelocity(static_cast<std::uint32_t>(velocity));
    controllerIn->onMidiMessageReceive(&message);
}

void Operator::endOfSong(int note) const
{
    QMidiMessage message;
    message.setStatus(MIDI_NOTE_OFF)->setPitch(static_cast<std::uint32_t>(note));
    dawIn->onMidiMessageReceive(&message);
}
