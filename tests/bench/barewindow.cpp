// SPDX-License-Identifier: MIT
// The floor of a start: a window with the operator window's widgets, which looks like it and lists
// the same show, three MIDI connections, with their ports open where the preferences name them, and
// the same files parsed; by the libraries alone.
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>
#include <QTableWidget>

#include <RtMidi.h>

namespace {

QString pathOf(const QString& name)
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + '/' + name;
}

void setFont(QWidget* widget, int points, bool bold = false)
{
    QFont font = widget->font();
    font.setPointSize(points);
    font.setBold(bold);
    widget->setFont(font);
}

QWidget* sendButtons()
{
    auto* frame = new QGroupBox;
    frame->setStyleSheet(
        "QGroupBox {background-color:#ffcc00;border-style: solid;border-radius: 10;}");
    auto* layout = new QHBoxLayout(frame);
    for (const char* icon : {"locate", "play", "stop", "zero", "tab", "space", "enter"}) {
        auto* button = new QPushButton;
        button->setStyleSheet("QPushButton {height: 30px;background-color:#767471;"
                              "border-style: solid;border-radius: 10;}");
        button->setIcon(QIcon(QString(":/img/img/%1.ico").arg(icon)));
        button->setIconSize(QSize(24, 24));
        layout->addWidget(button);
    }
    return frame;
}

QLayout* runControls()
{
    auto* layout = new QHBoxLayout;
    auto* mode = new QComboBox;
    mode->addItems({"Manual", "AutoStop", "AutoLocate"});
    setFont(mode, 10);
    layout->addWidget(mode);
    for (const char* text : {"Reset", "Edit", "Pref."}) {
        auto* button = new QPushButton(text);
        setFont(button, 10);
        layout->addWidget(button);
    }
    return layout;
}

QWidget* showSelector(const QSettings& file)
{
    auto* shows = new QComboBox;
    setFont(shows, 12, true);
    for (int n = 1; n <= file.value("ShowDataNum").toInt(); ++n) {
        shows->addItem(file.value(QString("ShowData%1/ShowTitle").arg(n)).toString());
    }
    return shows;
}

QWidget* setListTable(const QSettings& file)
{
    const int count = file.value("ShowData1/SetNum").toInt();
    auto* table = new QTableWidget(count, 2);
    table->setHorizontalHeaderLabels({"SongTitle", "Cue"});
    table->horizontalHeader()->setStyleSheet(
        "::section{Background-color:#185466;color:#FFFFFF;border-width:1px;}");
    table->horizontalHeader()->setStretchLastSection(true);
    table->verticalHeader()->hide();
    for (int row = 0; row < count; ++row) {
        const QString entry = QString("ShowData1/SetData%1/").arg(row + 1);
        const QString song = QString("SongData%1/").arg(file.value(entry + "SongId").toInt());
        table->setItem(row, 0, new QTableWidgetItem(file.value(song + "SongTitle").toString()));
        table->setItem(row, 1, new QTableWidgetItem(file.value(entry + "Cue").toString()));
    }
    return table;
}

// Opens the port of that name. False if there is none.
bool open(RtMidi& port, const QString& name)
{
    if (name.isEmpty()) {
        return true;
    }
    for (unsigned int i = 0; i < port.getPortCount(); ++i) {
        if (port.getPortName(i) == name.toStdString()) {
            port.openPort(i);
            return true;
        }
    }
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_XCB_GL_INTEGRATION", "none"); // As the program does.
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "1");
    const QApplication application(argc, argv);
    QApplication::setApplicationName("VELT");

    RtMidiIn dawIn(RtMidi::UNIX_JACK);
    RtMidiIn controllerIn(RtMidi::UNIX_JACK);
    RtMidiOut dawOut(RtMidi::UNIX_JACK);
    const QSettings shows(pathOf("VELTSetting.ini"), QSettings::IniFormat);
    const QSettings preferences(pathOf("VELTPreference.ini"), QSettings::IniFormat);
    if (shows.allKeys().isEmpty() || preferences.allKeys().isEmpty()) {
        return 1; // A floor that parses nothing would be no floor.
    }
    if (!open(dawIn, preferences.value("MidiInPort").toString()) ||
        !open(controllerIn, preferences.value("ShortcutMidiInPort").toString()) ||
        !open(dawOut, preferences.value("MidiOutPort").toString())) {
        return 1;
    }

    QMainWindow window;
    window.menuBar()->addMenu("&About")->addAction("&AboutVELT");
    window.setCentralWidget(new QWidget);
    auto* layout = new QVBoxLayout(window.centralWidget());
    layout->addWidget(sendButtons());
    layout->addLayout(runControls());
    layout->addWidget(showSelector(shows));
    layout->addWidget(setListTable(shows));
    window.setGeometry(100, 100, 500, 800);
    window.show();
    return QApplication::exec();
}
