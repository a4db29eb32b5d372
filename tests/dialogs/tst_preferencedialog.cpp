// SPDX-License-Identifier: MIT
#include "preferencedesk.h"

#include <QApplication>
#include <QColorDialog>
#include <QHeaderView>
#include <QWheelEvent>

using DeskAct = std::function<void(PreferenceDesk&)>;
Q_DECLARE_METATYPE(DeskAct)

namespace {

const QStringList kConfirmed{"setPreferenceData", "midiReconnect"};

// The preference file of a new EditData that was confirmed untouched.
const QByteArray kUntouched =
    "[General]\nArrowKeyMode=false\nDeviceId=00\nMidiInPort=First\nMidiOutPort=First\nMode=0\n"
    "NextTextColor=@Variant(\\0\\0\\0\\x43\\x1\\xff\\xff\\0\\0\\0\\0\\xbb\\xbb\\0\\0)\n"
    "NoteDawPlay=33\nNoteDawStop=35\nNoteLocate=31\nNoteSongDown=29\nNoteSongUp=28\n"
    "SendTextColor=@Variant(\\0\\0\\0\\x43\\x1\\xff\\xff\\xbb\\xbb\\0\\0\\0\\0\\0\\0)\n"
    "ShortcutMidiInPort=\nShowKeyButton=true\n";

// The lines in which a preference file is another one; none if there is no file.
QByteArray changes(const QString& path = preferenceFilePath())
{
    QFile file(path);
    QByteArrayList lines =
        file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QByteArrayList();
    for (const QByteArray& line : kUntouched.split('\n')) {
        lines.removeOne(line);
    }
    return lines.join('\n');
}

// The same of the file that this data gives.
QByteArray changes(EditData data)
{
    const QString copy = preferenceFilePath() + ".copy";
    data.writePreference(copy);
    return changes(copy);
}

QComboBox* noteBox(const PreferenceDesk& desk, int row, int column)
{
    return qobject_cast<QComboBox*>(
        desk.find<QTableWidget>("tableMidiCont")->cellWidget(row, column));
}

DeskAct click(const char* button)
{
    return [=](PreferenceDesk& desk) { desk.click(button); };
}

// Chooses the second port, which may be the one that is stored.
using StoredPort = QString EditData::*;
DeskAct choosePort(const char* name, StoredPort stored = nullptr)
{
    return [=](PreferenceDesk& desk) {
        if (stored) {
            desk.data.*stored = "Second";
        }
        desk.find<QComboBox>(name)->setCurrentText("Second");
    };
}

// Clicks a colour button and picks a colour, or leaves the chooser if the colour is invalid.
DeskAct chooseColor(const char* button, const QColor& initial, const QColor& colour)
{
    return [=](PreferenceDesk& desk) {
        ModalScript script;
        script.expect([&](QWidget* window) {
            auto* chooser = qobject_cast<QColorDialog*>(window);
            QVERIFY(chooser);
            QCOMPARE(chooser->options(), QColorDialog::ColorDialogOptions());
            QCOMPARE(chooser->currentColor(), initial);
            chooser->setCurrentColor(colour.isValid() ? colour : QColor(Qt::green));
            QTest::keyClick(chooser, colour.isValid() ? Qt::Key_Return : Qt::Key_Escape);
        });
        desk.click(button);
    };
}

// Replaces the text of a line by typing.
void type(QLineEdit* line, const QString& text)
{
    line->setFocus();
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClicks(line, text);
}

DeskAct typeDeviceId(const char* text)
{
    return [=](PreferenceDesk& desk) { type(desk.find<QLineEdit>("editDeviceID"), text); };
}

DeskAct pressInNoteBox(int row, int column, Qt::Key key)
{
    return [=](PreferenceDesk& desk) { QTest::keyClick(noteBox(desk, row, column), key); };
}

void turnWheelOverNotes(PreferenceDesk& desk)
{
    QWidget* box = noteBox(desk, 2, 1);
    const QPoint centre = box->rect().center();
    QWheelEvent turn(centre, box->mapToGlobal(centre), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                     Qt::NoScrollPhase, false);
    QApplication::sendEvent(box, &turn);
    QVERIFY(!turn.isAccepted()); // What the box stands in may scroll.
}

using Buttons = QVector<QMessageBox::StandardButton>;

// Closes the dialog, once for each answer to the question whether to save; without answers, there
// must be no question.
DeskAct close(const Buttons& answers)
{
    return [=](PreferenceDesk& desk) {
        ModalScript script;
        for (const auto answer : answers) {
            QVERIFY(desk.dialog.isVisible());
            answerSaveQuestion(script, answer);
            desk.dialog.close();
        }
        desk.dialog.close();
    };
}

} // namespace

class TestPreferenceDialog : public TestCase
{
    Q_OBJECT

private slots:
    void opensAsDesigned()
    {
        PreferenceDesk desk;
        desk.owner.move(100, 200);
        const PreferenceDialog placed(&desk.data, nullptr, nullptr, nullptr, &desk.owner);
        QCOMPARE(QRect(placed.pos(), placed.size()), QRect(130, 190, 1003, 503));
        QCOMPARE(texts(desk.dialog),
                 QString("Mode,ProTools / Bars,ProTools / Marker,StudioOne / Bars,"
                         "StudioOne / Marker,Midi Controller Input,DAW Midi Input,"
                         "DAW Midi Output,MMC DeviceID,Show key button,Arrow key mode,"
                         "Midi Controller Assign,Color,Send,Next,OK,CANCEL"));
        for (const auto& [name, title] : {std::pair("comboMidiIn", "DAW Midi Input"),
                                          std::pair("comboMidiOut", "DAW Midi Output")}) {
            QCOMPARE(desk.find(name)->parent()->property("title").toString(), QString(title));
        }
        const auto* table = desk.find<QTableWidget>("tableMidiCont");
        const QStringList actions{"Song UP", "Song DOWN", "LOCATE", "DAW PLAY", "DAW STOP"};
        for (int row = 0; row < actions.size(); ++row) {
            QCOMPARE(table->verticalHeaderItem(row)->text(), actions[row]);
        }
        desk.open([&] {
            QVERIFY(!desk.find("checkBoxArrowKey")->isVisible());
            QCOMPARE(table->verticalHeader()->length(), table->viewport()->height());
            const auto* box = desk.find<QComboBox>("comboMidiIn");
            const QString port = "Launchkey Mini MK3:Launchkey Mini MK3 MIDI 1 24:0";
            QVERIFY(box->width() > box->fontMetrics().horizontalAdvance(port) + box->height());
        });
    }

    void storesEachChange_data()
    {
        QTest::addColumn<DeskAct>("change");
        QTest::addColumn<QByteArray>("line"); // Of the preference file.
        QTest::addColumn<bool>("isChange");
        const auto row = [](const char* name, const DeskAct& change, const QByteArray& line,
                            bool isChange = true) {
            QTest::newRow(name) << change << line << isChange;
        };
        const QByteArray red = R"(TextColor=@Variant(\0\0\0\x43\x1\xff\xff\xff\xff\0\0\0\0\0\0))";
        row("mode 1", click("radioProMarker"), "Mode=1");
        row("mode 2", click("radioStudioBars"), "Mode=2");
        row("mode 3", click("radioStudioMarker"), "Mode=3");
        row("same mode", click("radioProBars"), "", false);
        row("input", choosePort("comboMidiIn"), "MidiInPort=Second");
        row("same input", choosePort("comboMidiIn", &EditData::MidiInPort), "MidiInPort=Second",
            false);
        row("controller", choosePort("comboShortcutMidiIn"), "ShortcutMidiInPort=Second");
        row("same controller", choosePort("comboShortcutMidiIn", &EditData::ShortcutMidiInPort),
            "ShortcutMidiInPort=Second", false);
        row("output", choosePort("comboMidiOut"), "MidiOutPort=Second");
        row("same output", choosePort("comboMidiOut", &EditData::MidiOutPort), "MidiOutPort=Second",
            false);
        row("device ID", typeDeviceId("Gx1-af"), "DeviceId=1A"); // The rest is refused.
        row("no device ID", typeDeviceId("GZ"), "", false);
        row("key buttons", click("checkBoxShowKey"), "ShowKeyButton=false");
        row("arrow keys", click("checkBoxArrowKey"), "ArrowKeyMode=true");
        row("note", pressInNoteBox(0, 0, Qt::Key_Down), "NoteSongUp=29");
        row("octave", pressInNoteBox(4, 1, Qt::Key_Up), "NoteDawStop=23");
        row("sent colour", chooseColor("pushSendColor", 0xBB0000, Qt::red), "Send" + red);
        row("next colour", chooseColor("pushNextColor", 0x0000BB, Qt::red), "Next" + red);
        row("no colour", chooseColor("pushNextColor", 0x0000BB, QColor()), "", false);
        row("wheel", turnWheelOverNotes, "", false);
    }

    // The mode is in effect at once, all else when it is confirmed.
    void storesEachChange()
    {
        QFETCH(const DeskAct, change);
        QFETCH(const QByteArray, line);
        QFETCH(const bool, isChange);
        const QByteArray atOnce = line.startsWith("Mode") || !isChange ? line : QByteArray();
        const auto leave = [&](const DeskAct& wayOut, bool stores) {
            PreferenceDesk desk;
            desk.open([&] {
                change(desk);
                QCOMPARE(changes(desk.data), atOnce);
                wayOut(desk);
                QVERIFY(!desk.dialog.isVisible());
            });
            QCOMPARE(changes(desk.data), stores ? line : atOnce);
            QCOMPARE(changes(), stores ? line : QByteArray());
            QCOMPARE(desk.owner.calls, stores ? kConfirmed : QStringList());
        };
        leave(click("pushOK"), true);
        leave(click("pushCancel"), false);
        leave(close(isChange ? Buttons{QMessageBox::Cancel, QMessageBox::No} : Buttons()), false);
        if (isChange) {
            leave(close({QMessageBox::NoButton, QMessageBox::Save}), true);
        }
    }

    // Left by Escape without a question, the dialog shows what is stored when it is opened again.
    void fillsItselfAtEachOpening()
    {
        PreferenceDesk desk;
        desk.open([&desk] {
            desk.click("checkBoxArrowKey");
            chooseColor("pushNextColor", 0x0000BB, Qt::red)(desk);
            QTest::keyClick(&desk.dialog, Qt::Key_Escape);
        });
        desk.data.MidiInPort = "Second 130:0";  // Numbers of another day.
        desk.data.ShortcutMidiInPort = "FIRST"; // Letter case counts: not there.
        desk.data.MidiOutPort = "Gone";
        desk.open([&desk] { close({})(desk); }); // Nothing has changed but by the dialog.
        desk.open([&desk] {
            QVERIFY(desk.find("pushNextColor")->styleSheet().contains(":#ff0000bb;}"));
            desk.click("pushOK");
        });
        QCOMPARE(changes(), QByteArray("MidiInPort=Second"));
    }

    // What the dialog cannot show stays as it is stored. Return confirms, as OK does.
    void keepsHandEditedData()
    {
        PreferenceDesk desk;
        desk.data.Mode = kModeStudioOneBars;
        desk.dialog.setDispFromEdit();
        desk.data.Mode = 7;
        desk.data.DeviceId = "zz";
        desk.data.DeviceIdValue = 0x5A;
        desk.data.SendTextColor = QColor();
        for (const char* typed : {"5A", ""}) {
            desk.open([&] {
                QVERIFY(desk.find<QAbstractButton>("radioStudioBars")->isChecked());
                QCOMPARE(desk.find<QLineEdit>("editDeviceID")->text(), QString("5A"));
                typeDeviceId(typed)(desk);
                QTest::keyClick(desk.find("editDeviceID"), Qt::Key_Return);
                QVERIFY(!desk.dialog.isVisible());
            });
            QVERIFY(changes().contains("DeviceId=5A"));
            QCOMPARE(desk.data.Mode, 7);
            QVERIFY(!desk.data.SendTextColor.isValid());
        }
    }

    void showsNotes_data()
    {
        QTest::addColumn<int>("note");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<int>("after");
        QTest::newRow("lowest") << 0 << "C/-1" << 0;
        QTest::newRow("D") << 38 << "D/2" << 38; // The default notes are E, F, G, A and B.
        QTest::newRow("highest") << 127 << "G/9" << 127;
        QTest::newRow("black key") << 61 << "C/4" << 60;
        QTest::newRow("too high") << 128 << "G/9" << 127;
        QTest::newRow("too low") << -1 << "C/-1" << 0;
    }

    void showsNotes()
    {
        QFETCH(const int, note);
        QFETCH(const QString, shown);
        PreferenceDesk desk;
        desk.data.NoteLocate = note;
        desk.dialog.setDispFromEdit();
        QStringList rows;
        for (int row = 0; row < 5; ++row) {
            rows << noteBox(desk, row, 0)->currentText() + "/" +
                        noteBox(desk, row, 1)->currentText();
        }
        QCOMPARE(rows, QStringList({"E/1", "F/1", shown, "A/1", "B/1"}));
        desk.dialog.setEditFromDisp();
        QTEST(desk.data.NoteLocate, "after");
    }

    void readsTypedNotes_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("text");
        QTest::addColumn<Qt::Key>("end");
        QTest::addColumn<int>("note"); // Over E 1, note 28.
        QTest::newRow("still typing") << 0 << "d" << Qt::Key_Shift << 26;
        QTest::newRow("octave") << 1 << "-1" << Qt::Key_Tab << 4;
        QTest::newRow("not listed") << 0 << "H" << Qt::Key_Tab << 28;
        QTest::newRow("added by Return") << 0 << "H" << Qt::Key_Return << 24;
        QTest::newRow("octave added by Return") << 1 << "12" << Qt::Key_Return << 127;
    }

    // What is shown is what counts.
    void readsTypedNotes()
    {
        QFETCH(const int, column);
        QFETCH(const QString, text);
        QFETCH(const Qt::Key, end);
        PreferenceDesk desk;
        const QComboBox* box = noteBox(desk, 0, column);
        desk.open([&] {
            type(box->lineEdit(), text);
            QTest::keyClick(box->lineEdit(), end);
            QCOMPARE(box->currentText(), box->itemText(box->currentIndex()));
            desk.click("pushOK");
        });
        QTEST(desk.data.NoteSongUp, "note");
        desk.dialog.setDispFromEdit();
        QCOMPARE(box->count(), column == 0 ? 7 : 11);
    }
};

VELT_TEST_MAIN(TestPreferenceDialog)
#include "tst_preferencedialog.moc"
