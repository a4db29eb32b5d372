// SPDX-License-Identifier: MIT
#include "preferencedesk.h"

#include <QHeaderView>
#include <QMetaMethod>

namespace {

const QString kPort = QStringLiteral("Launchkey Mini MK3:Launchkey Mini MK3 MIDI 1 24:0");

// The preference file of a new EditData that was confirmed untouched.
const QByteArray kUntouched =
    "[General]\nArrowKeyMode=false\nDeviceId=00\nMidiInPort=\nMidiOutPort=\nMode=0\n"
    "NextTextColor=@Variant(\\0\\0\\0\\x43\\x1\\xff\\xff\\0\\0\\0\\0\\xbb\\xbb\\0\\0)\n"
    "NoteDawPlay=33\nNoteDawStop=35\nNoteLocate=31\nNoteSongDown=29\nNoteSongUp=28\n"
    "SendTextColor=@Variant(\\0\\0\\0\\x43\\x1\\xff\\xff\\xbb\\xbb\\0\\0\\0\\0\\0\\0)\n"
    "ShortcutMidiInPort=\nShowKeyButton=true\n";

// The lines of a preference file that are others than in kUntouched.
QByteArray changes(const QByteArray& file)
{
    QByteArrayList lines = file.split('\n');
    for (const QByteArray& line : kUntouched.split('\n')) {
        lines.removeOne(line);
    }
    return lines.join('\n');
}

// The same of what is in memory.
QByteArray changes(EditData data)
{
    const QString path = preferenceFilePath() + QLatin1String(".memory");
    QFile::remove(path);
    data.writePreference(path);
    return changes(contents(path));
}

DeskAct click(const char* button)
{
    return [=](PreferenceDesk& desk) { desk.click(button); };
}

DeskAct choosePort(const char* box)
{
    return [=](PreferenceDesk& desk) {
        desk.find<QComboBox>(box)->addItem(kPort);
        desk.find<QComboBox>(box)->setCurrentText(kPort);
    };
}

DeskAct chooseColor(const char* button, const QColor& initial)
{
    return [=](PreferenceDesk& desk) { desk.chooseColor(button, initial, Qt::red); };
}

DeskAct pressInNoteBox(int row, int column, Qt::Key key)
{
    return [=](PreferenceDesk& desk) { QTest::keyClick(desk.noteBox(row, column), key); };
}

DeskAct typeDeviceId(const char* text)
{
    return [=](PreferenceDesk& desk) {
        auto* edit = desk.find<QLineEdit>("editDeviceID");
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, QString::fromLatin1(text));
    };
}

DeskAct closeAndAnswer(QMessageBox::StandardButton answer)
{
    return [=](PreferenceDesk& desk) {
        ModalScript script;
        script.answerQuestion(
            QStringLiteral("Contents have been changed. Do you want to save changes?"),
            QMessageBox::Save | QMessageBox::No | QMessageBox::Cancel, answer);
        desk.dialog.close();
    };
}

} // namespace

class TestPreferenceDialog : public TestCase
{
    Q_OBJECT

private slots:
    void opensAsDesigned();
    void keyboardOrder();
    void slotOrder();
    void untouched();
    void waysOut_data();
    void waysOut();
    void handEditedData();
};

// Everything can be read: no text is larger than its widget, no row of the table is out of sight.
void TestPreferenceDialog::opensAsDesigned()
{
    PreferenceDesk desk;
    desk.owner.move(100, 200);
    const PreferenceDialog placed(&desk.data, nullptr, nullptr, nullptr, &desk.owner);
    QCOMPARE(placed.pos(), QPoint(130, 190));

    desk.open([&] {
        QCOMPARE(desk.dialog.size(), QSize(1003, 503));
        const auto flags = desk.dialog.windowFlags();
        QCOMPARE(flags & Qt::WindowType_Mask, Qt::Window);
        QVERIFY(flags & Qt::WindowCloseButtonHint);
        QVERIFY(!(flags & Qt::WindowMinMaxButtonsHint));
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
        QCOMPARE(table->horizontalHeader()->length(), table->viewport()->width());
        QCOMPARE(table->rowHeight(0), 37);
    });
}

void TestPreferenceDialog::keyboardOrder()
{
    const QStringList order = QStringLiteral("comboShortcutMidiIn comboMidiIn comboMidiOut "
                                             "editDeviceID checkBoxShowKey pushSendColor "
                                             "pushNextColor pushOK pushCancel")
                                  .split(QLatin1Char(' '));
    PreferenceDesk desk;
    desk.open([&] {
        desk.find("radioProBars")->setFocus();
        for (const QString& name : order) {
            QTest::keyClick(desk.dialog.focusWidget(), Qt::Key_Tab);
            QCOMPARE(desk.dialog.focusWidget()->objectName(), name);
        }
        for (int box = 0; box < 10; ++box) {
            QTest::keyClick(desk.dialog.focusWidget(), Qt::Key_Tab);
            QCOMPARE(desk.dialog.focusWidget(), desk.noteBox(box / 2, box % 2));
        }
        QTest::keyClick(desk.dialog.focusWidget(), Qt::Key_Tab);
        QCOMPARE(desk.dialog.focusWidget(), desk.find("radioProBars"));
        desk.noteBox(0, 0)->setFocus();
        QTest::keyClick(desk.dialog.focusWidget(), Qt::Key_Backtab);
        QCOMPARE(desk.dialog.focusWidget(), desk.find("pushCancel"));
    });
}

void TestPreferenceDialog::slotOrder()
{
    const QMetaObject& meta = PreferenceDialog::staticMetaObject;
    QByteArrayList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        names.append(meta.method(i).name());
    }
    QCOMPARE(names.join(' '),
             QByteArray("on_comboMidiIn_currentIndexChanged "
                        "on_comboShortcutMidiIn_currentIndexChanged "
                        "on_comboMidiOut_currentIndexChanged on_comboMidiCont_currentIndexChanged "
                        "on_radioProBars_clicked on_radioProMarker_clicked "
                        "on_radioStudioBars_clicked on_radioStudioMarker_clicked "
                        "on_editDeviceID_textChanged on_checkBoxArrowKey_clicked "
                        "on_checkBoxShowKey_clicked on_pushSendColor_clicked "
                        "on_pushNextColor_clicked on_pushOK_clicked on_pushCancel_clicked"));
}

// Closing does not ask where nothing was changed since the dialog was opened.
void TestPreferenceDialog::untouched()
{
    PreferenceDesk desk;
    const auto closesAtOnce = [&](const DeskAct& act) {
        const QByteArray before = changes(desk.data);
        desk.open([&] {
            act(desk);
            const ModalScript script; // A question would fail it.
            desk.dialog.close();
            QVERIFY(!desk.dialog.isVisible());
        });
        QCOMPARE(desk.owner.calls, QString());
        QCOMPARE(changes(desk.data), before);
    };
    closesAtOnce(click("radioProBars"));
    closesAtOnce(typeDeviceId("GZ"));
    for (const auto& [port, box] : {std::pair(&EditData::MidiInPort, "comboMidiIn"),
                                    std::pair(&EditData::ShortcutMidiInPort, "comboShortcutMidiIn"),
                                    std::pair(&EditData::MidiOutPort, "comboMidiOut")}) {
        desk.data.*port = kPort;
        closesAtOnce(choosePort(box));
        (desk.data.*port).clear();
    }
    desk.open([&] { click("checkBoxShowKey")(desk); }); // Left by Escape.
    closesAtOnce([](PreferenceDesk& d) {
        QVERIFY(d.find<QAbstractButton>("checkBoxShowKey")->isChecked());
    });

    desk.open([&] { desk.click("pushOK"); });
    QCOMPARE(contents(preferenceFilePath()), kUntouched);
}

// Each kind of change: what is stored when it is confirmed, and what is stored all the same when
// the dialog is left otherwise.
void TestPreferenceDialog::waysOut_data()
{
    QTest::addColumn<DeskAct>("change");
    QTest::addColumn<QByteArray>("confirmed");
    QTest::addColumn<QByteArray>("left");
    const auto row = [](const char* name, const DeskAct& change, const QByteArray& confirmed,
                        const char* left = "") {
        QTest::newRow(name) << change << confirmed << QByteArray(left);
    };
    const QByteArray port = kPort.toLatin1();
    const char* red = R"(TextColor=@Variant(\0\0\0\x43\x1\xff\xff\xff\xff\0\0\0\0\0\0))";
    row("by markers", click("radioProMarker"), "Mode=1", "Mode=1");
    row("Studio One by bars", click("radioStudioBars"), "Mode=2", "Mode=2");
    row("Studio One by markers", click("radioStudioMarker"), "Mode=3", "Mode=3");
    row("DAW input", choosePort("comboMidiIn"), "MidiInPort=" + port);
    row("controller input", choosePort("comboShortcutMidiIn"), "ShortcutMidiInPort=" + port);
    row("DAW output", choosePort("comboMidiOut"), "MidiOutPort=" + port);
    row("device ID", typeDeviceId("Gx1-af"), "DeviceId=1A"); // The rest is refused.
    row("key buttons", click("checkBoxShowKey"), "ShowKeyButton=false");
    row("arrow keys", click("checkBoxArrowKey"), "ArrowKeyMode=true");
    row("note name", pressInNoteBox(0, 0, Qt::Key_Down), "NoteSongUp=29");
    row("octave", pressInNoteBox(4, 1, Qt::Key_Up), "NoteDawStop=23");
    row("send colour", chooseColor("pushSendColor", 0xBB0000), QByteArray("Send") + red);
    row("next colour", chooseColor("pushNextColor", 0x0000BB), QByteArray("Next") + red);
}

void TestPreferenceDialog::waysOut()
{
    QFETCH(const DeskAct, change);
    QFETCH(const QByteArray, confirmed);
    QFETCH(const QByteArray, left);

    // Changes, leaves the dialog, and looks at what is stored and who was told.
    PreferenceDesk desk;
    const auto leave = [&](bool confirms, const DeskAct& wayOut) {
        desk.reset();
        desk.open([&] {
            change(desk);
            QCOMPARE(changes(desk.data), left);
            wayOut(desk);
            QVERIFY(!desk.dialog.isVisible());
        });
        QCOMPARE(changes(desk.data), confirms ? confirmed : left);
        QCOMPARE(desk.owner.calls, confirms ? kConfirmed : QString());
        const QByteArray file = contents(preferenceFilePath());
        QCOMPARE(file.isEmpty(), !confirms);
        QCOMPARE(changes(file), confirms ? confirmed : QByteArray());
    };
    leave(true, click("pushOK"));
    leave(true, closeAndAnswer(QMessageBox::Save));
    leave(false, closeAndAnswer(QMessageBox::No));
    leave(false, click("pushCancel"));
    leave(false, [](PreferenceDesk& d) { QTest::keyClick(&d.dialog, Qt::Key_Escape); });
    // Cancel and the question's Escape keep the dialog and the change, and it asks again.
    leave(true, [](PreferenceDesk& d) {
        for (const auto answer : {QMessageBox::Cancel, QMessageBox::NoButton}) {
            closeAndAnswer(answer)(d);
            QVERIFY(d.dialog.isVisible());
            QCOMPARE(contents(preferenceFilePath()), QByteArray());
        }
        closeAndAnswer(QMessageBox::Save)(d);
    });
}

// Where a hand-edited file holds what the dialog cannot show, and no device ID is typed, what is
// stored stays. Return confirms, as OK does.
void TestPreferenceDialog::handEditedData()
{
    PreferenceDesk desk;
    desk.data.Mode = kModeStudioOneBars;
    desk.dialog.setDispFromEdit();
    desk.data.Mode = 7;
    desk.data.DeviceId = QStringLiteral("zz");
    desk.data.DeviceIdValue = 0x5A;
    desk.data.SendTextColor = QColor();
    for (const DeskAct& act : {click("checkBoxShowKey"), typeDeviceId("")}) {
        desk.open([&] {
            QVERIFY(desk.find<QAbstractButton>("radioStudioBars")->isChecked());
            QVERIFY(desk.find("pushSendColor")->styleSheet().contains(QLatin1String("#ff000000")));
            act(desk);
            QTest::keyClick(desk.find("editDeviceID"), Qt::Key_Return);
            QVERIFY(!desk.dialog.isVisible());
        });
        QVERIFY(contents(preferenceFilePath()).contains("\nDeviceId=5A\n"));
        QCOMPARE(desk.data.Mode, 7);
        QVERIFY(!desk.data.SendTextColor.isValid());
    }
}

VELT_TEST_MAIN(TestPreferenceDialog)
#include "tst_preferencedialog.moc"
