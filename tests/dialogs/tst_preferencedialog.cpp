// SPDX-License-Identifier: MIT
#include "preferencedesk.h"

#include <QColorDialog>
#include <QHeaderView>
#include <QLineEdit>

#include <functional>

namespace {

const QString kPort = "Launchkey Mini MK3:Launchkey Mini MK3 MIDI 1 24:0";

// The preference file of a new EditData that was confirmed untouched.
const QByteArray kUntouched =
    "[General]\nArrowKeyMode=false\nDeviceId=00\nMidiInPort=\nMidiOutPort=\nMode=0\n"
    "NextTextColor=@Variant(\\0\\0\\0\\x43\\x1\\xff\\xff\\0\\0\\0\\0\\xbb\\xbb\\0\\0)\n"
    "NoteDawPlay=33\nNoteDawStop=35\nNoteLocate=31\nNoteSongDown=29\nNoteSongUp=28\n"
    "SendTextColor=@Variant(\\0\\0\\0\\x43\\x1\\xff\\xff\\xbb\\xbb\\0\\0\\0\\0\\0\\0)\n"
    "ShortcutMidiInPort=\nShowKeyButton=true\n";

// The lines in which the preference file of this data is another one.
QByteArray changes(EditData data)
{
    QFile file(preferenceFilePath() + ".copy");
    file.remove();
    data.writePreference(file.fileName());
    file.open(QIODevice::ReadOnly);
    QByteArrayList lines = file.readAll().split('\n');
    for (const QByteArray& line : kUntouched.split('\n')) {
        lines.removeOne(line);
    }
    return lines.join('\n');
}

// The same of the preference file.
QByteArray stored()
{
    EditData data;
    data.readPreference(preferenceFilePath());
    return changes(data);
}

using DeskAct = std::function<void(PreferenceDesk&)>;

QComboBox* noteBox(const PreferenceDesk& desk, int row, int column)
{
    return qobject_cast<QComboBox*>(
        desk.find<QTableWidget>("tableMidiCont")->cellWidget(row, column));
}

DeskAct click(const char* button)
{
    return [=](PreferenceDesk& desk) { desk.click(button); };
}

DeskAct choosePort(const char* name)
{
    return [=](PreferenceDesk& desk) {
        desk.find<QComboBox>(name)->addItem(kPort);
        desk.find<QComboBox>(name)->setCurrentText(kPort);
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
            if (colour.isValid()) {
                chooser->setCurrentColor(colour);
            }
            QTest::keyClick(chooser, colour.isValid() ? Qt::Key_Return : Qt::Key_Escape);
        });
        desk.click(button);
    };
}

DeskAct pressInNoteBox(int row, int column, Qt::Key key)
{
    return [=](PreferenceDesk& desk) { QTest::keyClick(noteBox(desk, row, column), key); };
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

DeskAct closeAndAnswer(QMessageBox::StandardButton answer)
{
    return [=](PreferenceDesk& desk) {
        ModalScript script;
        answerSaveQuestion(script, answer);
        desk.dialog.close();
    };
}

} // namespace

class TestPreferenceDialog : public TestCase
{
    Q_OBJECT

private slots:
    // Everything can be read: no text is larger than its widget, no row is out of sight.
    void opensAsDesigned()
    {
        PreferenceDesk desk;
        desk.owner.move(100, 200);
        const PreferenceDialog placed(&desk.data, nullptr, nullptr, nullptr, &desk.owner);
        QCOMPARE(placed.pos(), QPoint(130, 190));
        desk.open([&desk] {
            QCOMPARE(desk.dialog.size(), QSize(1003, 503));
            QVERIFY(!desk.find("checkBoxArrowKey")->isVisible());
            for (const auto* button : desk.dialog.findChildren<QAbstractButton*>()) {
                const QSize text = button->fontMetrics().size(Qt::TextShowMnemonic, button->text());
                QVERIFY2(!button->isVisible() || button->size().boundedTo(text) == text,
                         qPrintable(button->text()));
            }
            for (const char* name : {"comboMidiIn", "comboShortcutMidiIn", "comboMidiOut"}) {
                const auto* box = desk.find<QComboBox>(name);
                const int text = box->fontMetrics().horizontalAdvance(kPort);
                QVERIFY2(box->width() > text + box->height(), name); // The arrow is a square.
            }
            const auto* table = desk.find<QTableWidget>("tableMidiCont");
            QCOMPARE(table->verticalHeader()->length(), table->viewport()->height());
        });
    }

    // Closing does not ask where nothing was changed since the dialog was opened.
    void untouched()
    {
        PreferenceDesk desk;
        const auto closesAtOnce = [&desk](const DeskAct& act) {
            const QByteArray before = changes(desk.data);
            desk.open([&] {
                act(desk);
                const ModalScript script; // A question would fail it.
                desk.dialog.close();
                QVERIFY(!desk.dialog.isVisible());
            });
            QVERIFY(desk.owner.calls.isEmpty());
            QCOMPARE(changes(desk.data), before);
        };
        closesAtOnce(click("radioProBars"));
        closesAtOnce(typeDeviceId("GZ"));
        closesAtOnce(chooseColor("pushNextColor", 0x0000BB, QColor()));
        for (const auto& [port, box] :
             {std::pair(&EditData::MidiInPort, "comboMidiIn"),
              std::pair(&EditData::ShortcutMidiInPort, "comboShortcutMidiIn"),
              std::pair(&EditData::MidiOutPort, "comboMidiOut")}) {
            desk.data.*port = kPort;
            closesAtOnce(choosePort(box));
            (desk.data.*port).clear();
        }
        desk.open([&desk] { // Left by Escape.
            desk.click("checkBoxShowKey");
            chooseColor("pushNextColor", 0x0000BB, Qt::red)(desk);
        });
        closesAtOnce([](PreferenceDesk& d) {
            QVERIFY(d.find<QAbstractButton>("checkBoxShowKey")->isChecked());
            QVERIFY(d.find("pushNextColor")->styleSheet().contains(":#ff0000bb;}"));
        });

        desk.open([&desk] { desk.click("pushOK"); });
        QFile file(preferenceFilePath());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), kUntouched);
    }

    // Each kind of change is stored when it is confirmed. The mode is in effect at once.
    void waysOut()
    {
        const QByteArray port = kPort.toLatin1();
        const QByteArray red = R"(TextColor=@Variant(\0\0\0\x43\x1\xff\xff\xff\xff\0\0\0\0\0\0))";
        const std::pair<DeskAct, QByteArray> kinds[] = {
            {click("radioProMarker"), "Mode=1"},
            {click("radioStudioBars"), "Mode=2"},
            {click("radioStudioMarker"), "Mode=3"},
            {choosePort("comboMidiIn"), "MidiInPort=" + port},
            {choosePort("comboShortcutMidiIn"), "ShortcutMidiInPort=" + port},
            {choosePort("comboMidiOut"), "MidiOutPort=" + port},
            {typeDeviceId("Gx1-af"), "DeviceId=1A"}, // The rest is refused.
            {click("checkBoxShowKey"), "ShowKeyButton=false"},
            {click("checkBoxArrowKey"), "ArrowKeyMode=true"},
            {pressInNoteBox(0, 0, Qt::Key_Down), "NoteSongUp=29"},
            {pressInNoteBox(4, 1, Qt::Key_Up), "NoteDawStop=23"},
            {chooseColor("pushSendColor", 0xBB0000, Qt::red), "Send" + red},
            {chooseColor("pushNextColor", 0x0000BB, Qt::red), "Next" + red}};
        for (const auto& kind : kinds) {
            const DeskAct& change = kind.first;
            const QByteArray& changed = kind.second;
            const QByteArray left = changed.startsWith("Mode") ? changed : QByteArray();
            const auto leave = [&](bool confirms, const DeskAct& wayOut) {
                PreferenceDesk desk;
                desk.open([&] {
                    change(desk);
                    QCOMPARE(changes(desk.data), left);
                    wayOut(desk);
                    QVERIFY(!desk.dialog.isVisible());
                });
                QCOMPARE(changes(desk.data), confirms ? changed : left);
                QCOMPARE(stored(), confirms ? changed : QByteArray());
                QCOMPARE(desk.owner.calls, confirms ? kConfirmed : QStringList());
            };
            leave(true, click("pushOK"));
            leave(false, closeAndAnswer(QMessageBox::No));
            leave(false, click("pushCancel"));
            leave(false, [](PreferenceDesk& d) { QTest::keyClick(&d.dialog, Qt::Key_Escape); });
            // Cancel and the question's Escape keep the dialog and the change, and it asks again.
            leave(true, [](PreferenceDesk& d) {
                for (const auto answer : {QMessageBox::Cancel, QMessageBox::NoButton}) {
                    closeAndAnswer(answer)(d);
                    QVERIFY(d.dialog.isVisible());
                    QCOMPARE(stored(), QByteArray());
                }
                closeAndAnswer(QMessageBox::Save)(d);
            });
        }
    }

    // What the dialog cannot show stays as it is stored. Return confirms, as OK does.
    void handEditedData()
    {
        PreferenceDesk desk;
        desk.data.Mode = kModeStudioOneBars;
        desk.dialog.setDispFromEdit();
        desk.data.Mode = 7;
        desk.data.DeviceId = "zz";
        desk.data.DeviceIdValue = 0x5A;
        desk.data.SendTextColor = QColor();
        for (const DeskAct& act : {click("checkBoxShowKey"), typeDeviceId("")}) {
            desk.open([&] {
                QVERIFY(desk.find<QAbstractButton>("radioStudioBars")->isChecked());
                act(desk);
                QTest::keyClick(desk.find("editDeviceID"), Qt::Key_Return);
                QVERIFY(!desk.dialog.isVisible());
            });
            QVERIFY(stored().contains("DeviceId=5A"));
            QCOMPARE(desk.data.Mode, 7);
            QVERIFY(!desk.data.SendTextColor.isValid());
        }
    }

    // How a stored note shows, and what is stored again.
    void notes()
    {
        const std::tuple<int, QString, int> notes[] = {
            {0, "C/-1", 0},    {38, "D/2", 38}, {53, "F/3", 53},   {69, "A/4", 69}, {83, "B/5", 83},
            {127, "G/9", 127}, {61, "C/4", 60}, {128, "G/9", 127}, {-1, "C/-1", 0}};
        PreferenceDesk desk;
        const auto shown = [&desk](int row) {
            return noteBox(desk, row, 0)->currentText() + "/" +
                   noteBox(desk, row, 1)->currentText();
        };
        for (const auto& [note, text, after] : notes) {
            desk.data.NoteLocate = note;
            desk.dialog.setDispFromEdit();
            QCOMPARE(QStringList({shown(0), shown(1), shown(2), shown(3), shown(4)}),
                     QStringList({"E/1", "F/1", text, "A/1", "B/1"}));
            desk.dialog.setEditFromDisp();
            QCOMPARE(desk.data.NoteLocate, after);
        }
    }

    // Over E 1, note 28. What is shown is what counts.
    void typedNotes()
    {
        const std::tuple<int, QString, Qt::Key, int> typed[] = {
            {0, "d", Qt::Key_Shift, 26}, // Still being typed.
            {1, "-1", Qt::Key_Tab, 4},
            {0, "H", Qt::Key_Tab, 28},    // Not listed,
            {0, "H", Qt::Key_Return, 24}, // unless Return adds it.
            {1, "12", Qt::Key_Return, 127}};
        for (const auto& [column, text, end, note] : typed) {
            PreferenceDesk desk;
            const QComboBox* box = noteBox(desk, 0, column);
            desk.open([&desk, box, text = text, end = end] {
                type(box->lineEdit(), text);
                QTest::keyClick(box->lineEdit(), end);
                QCOMPARE(box->currentText(), box->itemText(box->currentIndex()));
                desk.click("pushOK");
            });
            QCOMPARE(desk.data.NoteSongUp, note);
            desk.dialog.setDispFromEdit();
            QCOMPARE(box->count(), column == 0 ? 7 : 11);
        }
    }
};

VELT_TEST_MAIN(TestPreferenceDialog)
#include "tst_preferencedialog.moc"
