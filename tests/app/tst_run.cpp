// SPDX-License-Identifier: MIT
#include "apptestcase.h"
#include "datafiles.h"
#include "modalscript.h"

#include <QPointer>
#include <QWheelEvent>

namespace {

const QVector<int> k12{0x53, 0x54};
const QVector<int> k105{0x53, 0x52, 0x57};
const QVector<int> k33{0x55, 0x55};

QByteArray setListFile()
{
    QFile file(setListFilePath());
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

void type(QLineEdit* editor, const QString& text)
{
    QVERIFY(editor);
    editor->selectAll();
    QTest::keyClicks(editor, text);
    const QPointer<QLineEdit> open = editor;
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_VERIFY(!open);
}

} // namespace

// Stepping through a set list, as the operator does with mouse and keyboard.
class TestRun : public AppTestCase
{
    Q_OBJECT

private slots:
    void throughTheShow()
    {
        WindowDriver velt;
        const auto selection = [&velt] {
            const QPalette palette = velt.table->palette();
            return palette.color(QPalette::Inactive, QPalette::HighlightedText).name() + " on " +
                   palette.color(QPalette::Inactive, QPalette::Highlight).name();
        };
        velt.press("LOCATE");
        QCOMPARE(Recording::takeEvents(), bar(k12));
        QCOMPARE(velt.rowMarks(), kFirstSent);
        QVERIFY(velt.isRunning());
        QCOMPARE(selection(), QString("#bb0000 on #b4efef")); // The row is selected, as sent.
        QVERIFY(velt.isFocusOnTable());

        QTest::keyClick(velt.table, Qt::Key_Down);
        QCOMPARE(selection(), QString("#000000 on #b4efef"));
        QTest::keyClick(velt.table, Qt::Key_Down);
        QCOMPARE(selection(), QString("#0000bb on #b4efef"));
        velt.press("LOCATE");
        QCOMPARE(Recording::takeEvents(), bar(k105));
        QCOMPARE(velt.rowMarks(), kSecondSent);

        velt.select(3);
        velt.press("LOCATE");
        QCOMPARE(Recording::takeEvents(), bar(k33));
        QCOMPARE(velt.rowMarks(), (QStringList{"plain", "space", "plain", "sent"}));
        QVERIFY(!velt.isRunning());
        QCOMPARE(velt.selectedRow(), 3);

        // The process is looked up once for all of it, until preferences name another one.
        QCOMPARE(Recording::enumerations(), 1);
        velt.window.setPreferenceData();
        velt.press("DAW PLAY");
        QCOMPARE(Recording::enumerations(), 2);

        // What was sent is forgotten when a show is loaded.
        velt.shows->setCurrentIndex(1);
        QCOMPARE(velt.table->rowCount(), 0);
        QVERIFY(!velt.button("LOCATE")->isEnabled());
        velt.shows->setCurrentIndex(0);
        QCOMPARE(velt.rowMarks(), kPlain);
        velt.table->clearSelection();
        velt.press("LOCATE");
        QVERIFY(Recording::takeEvents().isEmpty());
    }

    void locatesAgainAndResets()
    {
        const WindowDriver velt;
        velt.press("LOCATE");
        velt.press("LOCATE");
        velt.table->clearSelection(); // With nothing selected, what was sent is sent again.
        velt.press("LOCATE");
        QCOMPARE(Recording::takeEvents(), bar(k12) + bar(k12) + bar(k12));
        QCOMPARE(velt.rowMarks(), kFirstSent);
        QCOMPARE(velt.selectedRow(), 0);

        velt.select(2);
        velt.press("Reset");
        QVERIFY(!velt.isRunning());
        QCOMPARE(velt.rowMarks(), (QStringList{"sent", "space", "plain", "plain"}));
        QCOMPARE(velt.selectedRow(), 2);
        QVERIFY(velt.isFocusOnTable());
        velt.press("LOCATE");
        QCOMPARE(Recording::takeEvents(), bar(k105));
        QCOMPARE(velt.rowMarks(), kSecondSent);
    }

    void spaceStartsARunAndSendsNothing()
    {
        const WindowDriver velt;
        velt.select(1);
        velt.press("LOCATE");
        QVERIFY(velt.isRunning());
        QCOMPARE(velt.rowMarks(), kPlain);
        QVERIFY(velt.isFocusOnTable());

        velt.endOfSong(); // No entry is next: the note is ignored, the run goes on.
        QVERIFY(velt.isRunning());
        QVERIFY(Recording::takeEvents().isEmpty());
    }

    void dawIsNotThere()
    {
        const WindowDriver velt;
        const ModalScript::Box box{
            QMessageBox::Warning, {}, "Process [Pro Tools] not found", QMessageBox::Ok};
        Recording::setApplications({"Finder", "pro tools", "Studio One"});
        for (const char* name :
             {"LOCATE", "DAW PLAY", "DAW STOP", "Key 0", "Key Tab", "Key Space"}) {
            ModalScript script;
            script.answer(box, QMessageBox::Ok);
            velt.press(name);
            QVERIFY2(velt.isFocusOnTable(), name);
        }
        {
            ModalScript script;
            script.expect([&velt](QWidget* shown) {
                velt.controllerNote(31); // Foot switch presses do not pile up boxes.
                QTRY_VERIFY(!velt.button("LOCATE")->isDown());
                shown->close();
            });
            velt.press("LOCATE");
        }
        QVERIFY(!velt.isRunning());
        QVERIFY(Recording::takeEvents().isEmpty());

        // Once it runs, the next press finds it.
        Recording::setApplications({"Pro Tools"});
        velt.press("LOCATE");
        QCOMPARE(Recording::takeEvents().size(), bar(k12).size());
    }

    void everyModeTypesItsOwn()
    {
        const std::tuple<int, int, Recording::Events> cases[] = {
            {0, 105, bar(k105)},
            {0, -5, bar({0x52})}, // A sign is no key.
            {1, 7, Recording::presses(kProTools, {0x41, 0x59, 0x41})},
            {2, 33,
             Recording::press(kStudioOne, 0x11, Recording::kCommand) +
                 Recording::presses(kStudioOne, {0x55, 0x55, 0x24})},
            {3, 10,
             Recording::press(kStudioOne, 0x29, Recording::kCommand) +
                 Recording::presses(kStudioOne, {0x53, 0x52, 0x4C})},
            // Only a hand-edited file holds this; the transport is stopped all the same.
            {9, 12, {}}};
        for (const auto& [mode, number, events] : cases) {
            const bool isMarker = mode == 1 || mode == 3;
            EditData data = sampleData();
            data.Mode = mode;
            data.SongList[0].Bar = isMarker ? 999 : number;
            data.SongList[0].Marker = isMarker ? number : 999;
            const WindowDriver velt(data);
            velt.press("LOCATE");
            QCOMPARE(Recording::takeEvents(), events);
            QCOMPARE(velt.rowMarks(), kFirstSent);
            QCOMPARE(velt.button("Key Enter")->isEnabled(), mode == 2 || mode == 3);
        }
    }

    void nextEntry()
    {
        std::vector<EditDataSet> setList(4);
        setList[1].SetType = kSetTypeSpace;
        setList[2].SetType = 5; // Whatever that may be.
        QCOMPARE(MainWindow::getNextPos(-1, setList), 0);
        QCOMPARE(MainWindow::getNextPos(0, setList), 3);
        for (const int pos : {3, 7, -2}) {
            QCOMPARE(MainWindow::getNextPos(pos, setList), -1);
        }
    }

    void noShow()
    {
        WindowDriver velt{EditData()};
        QCOMPARE(velt.shows->count(), 0);
        QVERIFY(!velt.button("LOCATE")->isEnabled());
        velt.controllerNote(31);
        velt.controllerNote(29);
        velt.endOfSong();
        QMetaObject::invokeMethod(&velt.window, "on_sendLocate_clicked");
        QVERIFY(!velt.isRunning());
        QVERIFY(Recording::takeEvents().isEmpty());
    }

    void doubleClick()
    {
        const WindowDriver velt;
        velt.doubleClick(1, 0); // A space: its name is typed while the click starts a run.
        QTest::keyClicks(velt.openEditor(), "Pa");
        QTRY_VERIFY(velt.isRunning());
        type(velt.openEditor(), "Pause 10");
        QCOMPARE(velt.table->item(1, 0)->text(), QString("Pause 10"));

        velt.doubleClick(2, 0);
        QVERIFY(Recording::takeEvents().isEmpty()); // Only when the button comes up again.
        QTRY_COMPARE(velt.rowMarks(), kSecondSent);
        QCOMPARE(Recording::takeEvents(), bar(k105));
        velt.doubleClick(3, 1);
        QVERIFY(velt.openEditor());
        QVERIFY(!velt.button("LOCATE")->isDown());
    }

    void editsInPlace()
    {
        const WindowDriver velt;
        QFile::remove(setListFilePath());
        // The same text is no edit, and neither are the redrawn rows of a run.
        type(velt.edit(0, 1), "lights up");
        velt.press("LOCATE");
        velt.press("Reset");
        QVERIFY(!QFile::exists(setListFilePath()));

        type(velt.edit(2, 1), "0 2 bars early");
        QVERIFY(setListFile().contains("0 2 bars early"));
        type(velt.edit(1, 0), "Pause");
        QVERIFY(setListFile().contains("SpaceName=Pause"));
    }

    void editThatIsOpenIsKept()
    {
        const WindowDriver velt;
        velt.press("LOCATE");
        QTest::keyClicks(velt.edit(2, 1), "half typed");
        velt.endOfSong(); // Redraws the very row.
        QCOMPARE(velt.table->item(2, 1)->text(), QString("half typed"));
        QTest::keyClicks(velt.openEditor(), " 0 on"); // What is typed on is no key for the DAW.
        QTest::keyClick(velt.openEditor(), Qt::Key_Return);
        QTRY_COMPARE(velt.table->item(2, 1)->text(), QString("half typed 0 on"));
        QVERIFY(setListFile().contains("half typed 0 on"));
    }

    // A show that lost its title in the editor is dropped by the write that follows a cue edit.
    void editThatDropsAnUntitledShow()
    {
        EditData data = sampleData();
        data.ShowList[1].SetList = {data.ShowList[0].SetList[3]};
        const WindowDriver velt(data);
        ModalScript script;
        script.expect([](QWidget* editor) {
            editor->findChild<QTableWidget*>("tableShowList")->item(0, 0)->setText("");
            editor->findChild<QPushButton*>("pushCancel")->click();
        });
        velt.press("Edit");
        velt.shows->setCurrentIndex(1);
        type(velt.edit(0, 1), "new cue");
        QTRY_COMPARE(velt.shows->count(), 1);
        velt.select(0);
        velt.press("LOCATE");
        QCOMPARE(Recording::takeEvents(), bar(k33));
    }

    void selectorsGiveTheFocusBack()
    {
        const WindowDriver velt;
        for (QComboBox* selector : {velt.mode, velt.shows}) {
            const int index = selector->currentIndex();
            selector->setFocus();
            selector->showPopup();
            selector->hidePopup(); // Escape, or the same choice again.
            QVERIFY(velt.isFocusOnTable());
            QWheelEvent turn({5, 5}, selector->mapToGlobal(QPoint(5, 5)), {}, {0, -120},
                             Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(selector, &turn);
            QCOMPARE(selector->currentIndex(), index);
        }
    }
};

VELT_TEST_MAIN(TestRun)
#include "tst_run.moc"
