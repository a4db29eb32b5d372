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
        Operator op;
        const auto selection = [&op] {
            const QPalette palette = op.table->palette();
            return palette.color(QPalette::Inactive, QPalette::HighlightedText).name() + " on " +
                   palette.color(QPalette::Inactive, QPalette::Highlight).name();
        };
        op.press("LOCATE");
        QCOMPARE(Recording::takeEvents(), bar(k12));
        QCOMPARE(op.looks(), kFirstSent);
        QVERIFY(op.isRunning());
        QCOMPARE(selection(), QString("#bb0000 on #b4efef")); // The row is selected, as sent.
        QVERIFY(op.isFocusOnTable());

        QTest::keyClick(op.table, Qt::Key_Down);
        QCOMPARE(selection(), QString("#000000 on #b4efef"));
        QTest::keyClick(op.table, Qt::Key_Down);
        QCOMPARE(selection(), QString("#0000bb on #b4efef"));
        op.press("LOCATE");
        QCOMPARE(Recording::takeEvents(), bar(k105));
        QCOMPARE(op.looks(), kSecondSent);

        op.select(3);
        op.press("LOCATE");
        QCOMPARE(Recording::takeEvents(), bar(k33));
        QCOMPARE(op.looks(), (QStringList{"plain", "space", "plain", "sent"}));
        QVERIFY(!op.isRunning());
        QCOMPARE(op.selectedRow(), 3);

        // The process is looked up once for all of it, until preferences name another one.
        QCOMPARE(Recording::enumerations(), 1);
        op.window.setPreferenceData();
        op.press("DAW PLAY");
        QCOMPARE(Recording::enumerations(), 2);

        // What was sent is forgotten when a show is loaded.
        op.shows->setCurrentIndex(1);
        QCOMPARE(op.table->rowCount(), 0);
        QVERIFY(!op.button("LOCATE")->isEnabled());
        op.shows->setCurrentIndex(0);
        QCOMPARE(op.looks(), kPlain);
        op.table->clearSelection();
        op.press("LOCATE");
        QVERIFY(Recording::takeEvents().isEmpty());
    }

    void locatesAgainAndResets()
    {
        const Operator op;
        op.press("LOCATE");
        op.press("LOCATE");
        op.table->clearSelection(); // With nothing selected, what was sent is sent again.
        op.press("LOCATE");
        QCOMPARE(Recording::takeEvents(), bar(k12) + bar(k12) + bar(k12));
        QCOMPARE(op.looks(), kFirstSent);
        QCOMPARE(op.selectedRow(), 0);

        op.select(2);
        op.press("Reset");
        QVERIFY(!op.isRunning());
        QCOMPARE(op.looks(), (QStringList{"sent", "space", "plain", "plain"}));
        QCOMPARE(op.selectedRow(), 2);
        QVERIFY(op.isFocusOnTable());
        op.press("LOCATE");
        QCOMPARE(Recording::takeEvents(), bar(k105));
        QCOMPARE(op.looks(), kSecondSent);
    }

    void spaceStartsARunAndSendsNothing()
    {
        const Operator op;
        op.select(1);
        op.press("LOCATE");
        QVERIFY(op.isRunning());
        QCOMPARE(op.looks(), kPlain);
        QVERIFY(op.isFocusOnTable());

        op.endOfSong(); // No entry is next: the note is ignored, the run goes on.
        QVERIFY(op.isRunning());
        QVERIFY(Recording::takeEvents().isEmpty());
    }

    void dawIsNotThere()
    {
        const Operator op;
        const ModalScript::Box box{
            QMessageBox::Warning, {}, "Process [Pro Tools] not found", QMessageBox::Ok};
        Recording::setApplications({"Finder", "pro tools", "Studio One"});
        for (const char* name :
             {"LOCATE", "DAW PLAY", "DAW STOP", "Key 0", "Key Tab", "Key Space"}) {
            ModalScript script;
            script.answer(box, QMessageBox::Ok);
            op.press(name);
            QVERIFY2(op.isFocusOnTable(), name);
        }
        {
            ModalScript script;
            script.expect([&op](QWidget* shown) {
                op.controllerNote(31); // Foot switch presses do not pile up boxes.
                QTRY_VERIFY(!op.button("LOCATE")->isDown());
                shown->close();
            });
            op.press("LOCATE");
        }
        QVERIFY(!op.isRunning());
        QVERIFY(Recording::takeEvents().isEmpty());

        // Once it runs, the next press finds it.
        Recording::setApplications({"Pro Tools"});
        op.press("LOCATE");
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
            const Operator op(data);
            op.press("LOCATE");
            QCOMPARE(Recording::takeEvents(), events);
            QCOMPARE(op.looks(), kFirstSent);
            QCOMPARE(op.button("Key Enter")->isEnabled(), mode == 2 || mode == 3);
        }
    }

    void noShow()
    {
        Operator op{EditData()};
        QCOMPARE(op.shows->count(), 0);
        QVERIFY(!op.button("LOCATE")->isEnabled());
        op.controllerNote(31);
        op.controllerNote(29);
        op.endOfSong();
        QMetaObject::invokeMethod(&op.window, "on_sendLocate_clicked");
        QVERIFY(!op.isRunning());
        QVERIFY(Recording::takeEvents().isEmpty());
    }

    void doubleClick()
    {
        const Operator op;
        op.doubleClick(1, 0); // A space: its name is typed while the click starts a run.
        QTest::keyClicks(op.openEditor(), "Pa");
        QTRY_VERIFY(op.isRunning());
        type(op.openEditor(), "Pause 10");
        QCOMPARE(op.table->item(1, 0)->text(), QString("Pause 10"));

        op.doubleClick(2, 0);
        QVERIFY(Recording::takeEvents().isEmpty()); // Only when the button comes up again.
        QTRY_COMPARE(op.looks(), kSecondSent);
        QCOMPARE(Recording::takeEvents(), bar(k105));
        op.doubleClick(3, 1);
        QVERIFY(op.openEditor());
        QVERIFY(!op.button("LOCATE")->isDown());
    }

    void editsInPlace()
    {
        const Operator op;
        QFile::remove(setListFilePath());
        // The same text is no edit, and neither are the redrawn rows of a run.
        type(op.edit(0, 1), "lights up");
        op.press("LOCATE");
        op.press("Reset");
        QVERIFY(!QFile::exists(setListFilePath()));

        type(op.edit(2, 1), "0 2 bars early");
        QVERIFY(setListFile().contains("0 2 bars early"));
        type(op.edit(1, 0), "Pause");
        QVERIFY(setListFile().contains("SpaceName=Pause"));
    }

    // A show that lost its title in the editor is dropped by the write that follows a cue edit.
    void editThatDropsAnUntitledShow()
    {
        EditData data = sampleData();
        data.ShowList[1].SetList = {data.ShowList[0].SetList[3]};
        const Operator op(data);
        ModalScript script;
        script.expect([](QWidget* editor) {
            editor->findChild<QTableWidget*>("tableShowList")->item(0, 0)->setText("");
            editor->findChild<QPushButton*>("pushCancel")->click();
        });
        op.press("Edit");
        op.shows->setCurrentIndex(1);
        type(op.edit(0, 1), "new cue");
        QTRY_COMPARE(op.shows->count(), 1);
        op.select(0);
        op.press("LOCATE");
        QCOMPARE(Recording::takeEvents(), bar(k33));
    }

    void selectorsGiveTheFocusBack()
    {
        const Operator op;
        for (QComboBox* selector : {op.mode, op.shows}) {
            const int index = selector->currentIndex();
            selector->setFocus();
            selector->showPopup();
            selector->hidePopup(); // Escape, or the same choice again.
            QVERIFY(op.isFocusOnTable());
            QWheelEvent turn({5, 5}, selector->mapToGlobal(QPoint(5, 5)), {}, {0, -120},
                             Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(selector, &turn);
            QCOMPARE(selector->currentIndex(), index);
        }
    }
};

VELT_TEST_MAIN(TestRun)
#include "tst_run.moc"
