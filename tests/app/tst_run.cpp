// SPDX-License-Identifier: MIT
#include "apptestcase.h"
#include "datafiles.h"
#include "modalscript.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QWheelEvent>

namespace {

const QString kLocate = "LOCATE";
const QString kReset = "Reset";

QByteArray setListFile()
{
    QFile file(setListFilePath());
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

const QVector<int> k12{0x53, 0x54};
const QVector<int> k105{0x53, 0x52, 0x57};
const QVector<int> k33{0x55, 0x55};

} // namespace

// Stepping through a set list, as the operator does with mouse and keyboard.
class TestRun : public AppTestCase
{
    Q_OBJECT

private slots:
    void throughTheShow();
    void locateAgain();
    void reset();
    void spaceStartsARunAndSendsNothing();
    void dawIsNotThere();
    void everyModeTypesItsOwn();
    void noShow();
    void doubleClick();
    void editsInPlace();
    void editThatIsOpenIsKept();
    void spaceNameIsTypedIntoTheWindow();
    void editThatDropsAnUntitledShow();
    void selectorsGiveTheFocusBack();
    void selectionShowsItsState();

private:
    static void type(QLineEdit* editor, const QString& text);
};

void TestRun::throughTheShow()
{
    const Operator op;
    QVERIFY(!op.isRunning());
    QCOMPARE(op.selectedRow(), 0);

    op.press(kLocate);
    QCOMPARE(Recording::takeEvents(), bar(k12));
    QCOMPARE(op.looks(), (QStringList{"sent", "space", "next", "plain"}));
    QVERIFY(op.isRunning());
    QCOMPARE(op.selectedRow(), 0);
    QVERIFY(op.isFocusOnTable());

    QTest::keyClick(op.table, Qt::Key_Down);
    QTest::keyClick(op.table, Qt::Key_Down);
    op.press(kLocate);
    QCOMPARE(Recording::takeEvents(), bar(k105));
    QCOMPARE(op.looks(), (QStringList{"plain", "space", "sent", "next"}));
    QCOMPARE(op.selectedRow(), 2);

    op.select(3);
    op.press(kLocate);
    QCOMPARE(Recording::takeEvents(), bar(k33));
    QCOMPARE(op.looks(), (QStringList{"plain", "space", "plain", "sent"}));
    QVERIFY(!op.isRunning());
    QCOMPARE(op.selectedRow(), 3);

    // The process is looked up once for all of it.
    QCOMPARE(Recording::enumerations(), 1);

    // The marks go when a show is loaded.
    op.shows->setCurrentIndex(1);
    QCOMPARE(op.table->rowCount(), 0);
    QVERIFY(!op.button(kLocate)->isEnabled());
    op.shows->setCurrentIndex(0);
    QCOMPARE(op.looks(), (QStringList{"plain", "space", "plain", "plain"}));
}

void TestRun::locateAgain()
{
    const Operator op;
    op.press(kLocate);
    op.press(kLocate);
    QCOMPARE(Recording::takeEvents(), bar(k12) + bar(k12));
    QCOMPARE(op.looks(), (QStringList{"sent", "space", "next", "plain"}));

    // With nothing selected, what was sent is sent again.
    op.table->clearSelection();
    op.press(kLocate);
    QCOMPARE(Recording::takeEvents(), bar(k12));
    QCOMPARE(op.selectedRow(), 0);
}

void TestRun::reset()
{
    const Operator op;
    op.press(kLocate);
    op.select(2);
    op.press(kReset);
    QVERIFY(!op.isRunning());
    QCOMPARE(op.looks(), (QStringList{"sent", "space", "plain", "plain"}));
    QCOMPARE(op.selectedRow(), 2);
    QVERIFY(op.isFocusOnTable());

    Recording::takeEvents();
    op.press(kLocate);
    QCOMPARE(Recording::takeEvents(), bar(k105));
    QCOMPARE(op.looks(), (QStringList{"plain", "space", "sent", "next"}));
}

void TestRun::spaceStartsARunAndSendsNothing()
{
    const Operator op;
    op.select(1);
    op.press(kLocate);
    QVERIFY(op.isRunning());
    QVERIFY(Recording::takeEvents().isEmpty());
    QCOMPARE(op.looks(), (QStringList{"plain", "space", "plain", "plain"}));
    QVERIFY(op.isFocusOnTable());

    op.endOfSong(); // No entry is next: the note is ignored, the run goes on.
    QVERIFY(op.isRunning());
    QVERIFY(Recording::takeEvents().isEmpty());

    op.select(2);
    op.press(kLocate);
    QCOMPARE(op.looks(), (QStringList{"plain", "space", "sent", "next"}));
}

void TestRun::dawIsNotThere()
{
    const Operator op;
    Recording::setApplications({"Finder", "pro tools", "Studio One"});
    const ModalScript::Box box{QMessageBox::Warning, QString(), "Process [Pro Tools] not found",
                               QMessageBox::Ok};
    for (const char* name : {"LOCATE", "DAW PLAY", "DAW STOP", "Key 0", "Key Tab", "Key Space"}) {
        ModalScript script;
        script.answer(box, QMessageBox::Ok);
        op.press(name);
        QVERIFY2(op.isFocusOnTable(), name);
    }
    QVERIFY(!op.isRunning());
    QVERIFY(Recording::takeEvents().isEmpty());
    QCOMPARE(op.looks(), (QStringList{"plain", "space", "plain", "plain"}));

    // Foot switch presses while the box is open do not pile up boxes.
    {
        ModalScript script;
        script.expect([&op, &script](QWidget* shown) {
            op.controllerNote(31);
            QTRY_VERIFY(!op.button(kLocate)->isDown());
            QVERIFY(script.isDone());
            shown->close();
        });
        op.press(kLocate);
    }

    // Once it runs, the next press finds it.
    Recording::setApplications({"Pro Tools"});
    op.press(kLocate);
    QCOMPARE(Recording::takeEvents().size(), 1 + 4 * 4);
}

void TestRun::everyModeTypesItsOwn()
{
    struct Case
    {
        int mode;
        Recording::Events events;
    };
    const Case cases[] = {
        {1, Recording::presses(kProTools, {0x41, 0x53, 0x41})},
        {2, Recording::press(kStudioOne, 0x11, Recording::kCommand) +
                Recording::presses(kStudioOne, {0x53, 0x54, 0x24})},
        {3, Recording::press(kStudioOne, 0x29, Recording::kCommand) +
                Recording::presses(kStudioOne, {0x53, 0x4C})},
        {9, {}}, // Only a hand-edited file holds this; the transport is stopped all the same.
    };
    for (const Case& one : cases) {
        EditData data = sampleData();
        data.Mode = one.mode;
        const Operator op(data);
        op.press(kLocate);
        QCOMPARE(Recording::takeEvents(), one.events);
        QCOMPARE(op.looks(), (QStringList{"sent", "space", "next", "plain"}));
    }
}

void TestRun::noShow()
{
    const Operator op{EditData()};
    QCOMPARE(op.shows->count(), 0);
    QVERIFY(!op.button(kLocate)->isEnabled());
    op.controllerNote(31);
    op.controllerNote(28);
    op.controllerNote(29);
    op.endOfSong();
    QMetaObject::invokeMethod(const_cast<MainWindow*>(&op.window), "on_sendLocate_clicked");
    QVERIFY(!op.isRunning());
    QVERIFY(Recording::takeEvents().isEmpty());
}

void TestRun::doubleClick()
{
    const Operator op;
    const QPoint title = op.table->visualItemRect(op.table->item(2, 0)).center();
    op.select(2);
    QTest::mouseDClick(op.table->viewport(), Qt::LeftButton, Qt::NoModifier, title);
    QVERIFY(Recording::takeEvents().isEmpty()); // Only when the button comes up again.
    QTRY_COMPARE(op.looks(), (QStringList{"plain", "space", "sent", "next"}));
    QCOMPARE(Recording::takeEvents(), bar(k105));

    const QPoint cue = op.table->visualItemRect(op.table->item(3, 1)).center();
    op.select(3, 1);
    QTest::mouseDClick(op.table->viewport(), Qt::LeftButton, Qt::NoModifier, cue);
    QVERIFY(op.openEditor());
    QVERIFY(!op.button(kLocate)->isDown());
}

void TestRun::type(QLineEdit* editor, const QString& text)
{
    QVERIFY(editor);
    editor->selectAll();
    QTest::keyClicks(editor, text);
    const QPointer<QLineEdit> open = editor;
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_VERIFY(!open);
}

void TestRun::editsInPlace()
{
    const Operator op;
    const QByteArray before = setListFile();
    QFile::remove(setListFilePath());

    // The same text is no edit, and neither are the redrawn rows of a run.
    type(op.edit(0, 1), "lights up");
    op.press(kLocate);
    op.press(kReset);
    QVERIFY(!QFile::exists(setListFilePath()));

    type(op.edit(2, 1), "0 2 bars early");
    QVERIFY(setListFile().contains("0 2 bars early"));
    type(op.edit(1, 0), "Pause");
    QVERIFY(setListFile().contains("SpaceName=Pause"));
    QVERIFY(setListFile().size() > before.size());

    QVERIFY(!(op.table->item(0, 0)->flags() & Qt::ItemIsEditable));
    QVERIFY(op.table->item(1, 0)->flags() & Qt::ItemIsEditable);
    QCOMPARE(int(op.table->item(0, 0)->flags()), 61);
}

void TestRun::editThatIsOpenIsKept()
{
    const Operator op;
    op.press(kLocate);
    QTest::keyClicks(op.edit(2, 1), "half typed");
    op.endOfSong(); // Redraws the very row.
    QCOMPARE(op.table->item(2, 1)->text(), "half typed");
    QTest::keyClicks(op.openEditor(), " 0 on"); // What is typed on is no key for the DAW.
    QTest::keyClick(op.openEditor(), Qt::Key_Return);
    QTRY_COMPARE(op.table->item(2, 1)->text(), QString("half typed 0 on"));
    QVERIFY(setListFile().contains("half typed"));
}

void TestRun::spaceNameIsTypedIntoTheWindow()
{
    const Operator op;
    const QPoint name = op.table->visualItemRect(op.table->item(1, 0)).center();
    op.select(1);
    QTest::mouseDClick(op.table->viewport(), Qt::LeftButton, Qt::NoModifier, name);
    QTest::keyClicks(op.openEditor(), "Pa");
    QTRY_VERIFY(!op.button(kLocate)->isDown()); // The click that the double click makes is over.
    QVERIFY(op.openEditor());
    type(op.openEditor(), "Pause 10");
    QCOMPARE(op.table->item(1, 0)->text(), QString("Pause 10"));
    QVERIFY(Recording::takeEvents().isEmpty());
}

// A show that lost its title in the editor is dropped by the write that follows a cue edit.
void TestRun::editThatDropsAnUntitledShow()
{
    Operator op;
    ModalScript script;
    script.expect([](QWidget* editor) {
        auto* list = editor->findChild<QTableWidget*>("tableShowList");
        list->item(0, 0)->setText("");
        list->setCurrentCell(1, 0);
        QTest::mouseClick(editor->findChild<QPushButton*>("pushShowListDuplicate"), Qt::LeftButton);
        list->item(2, 0)->setText("Sunday");
        auto* songs = editor->findChild<QListWidget*>("listWidgetSong");
        songs->item(2)->setSelected(true);
        QTest::mouseClick(editor->findChild<QPushButton*>("pushSongInsert"), Qt::LeftButton);
        QTest::mouseClick(editor->findChild<QPushButton*>("pushCancel"), Qt::LeftButton);
    });
    op.press("Edit");
    QCOMPARE(op.shows->count(), 3); // "", "Empty", "Sunday"
    op.shows->setCurrentIndex(2);
    type(op.edit(0, 1), "new cue");
    QCOMPARE(op.shows->count(), 2);
    QCOMPARE(op.shows->currentText(), QString("Sunday"));
    op.select(0);
    op.press(kLocate);
    QCOMPARE(Recording::takeEvents(), bar(k33));
}

void TestRun::selectorsGiveTheFocusBack()
{
    const Operator op;
    for (QComboBox* selector : {op.mode, op.shows}) {
        const int index = selector->currentIndex();
        selector->showPopup();
        selector->hidePopup(); // Escape, or the same choice again.
        QVERIFY(op.isFocusOnTable());
        QWheelEvent turn(QPointF(5, 5), selector->mapToGlobal(QPointF(5, 5).toPoint()), QPoint(),
                         QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(selector, &turn);
        QCOMPARE(selector->currentIndex(), index);
    }
}

void TestRun::selectionShowsItsState()
{
    const Operator op;
    const auto selectedText = [&op] {
        return op.table->palette().color(QPalette::Inactive, QPalette::HighlightedText).name();
    };
    QCOMPARE(op.table->palette().color(QPalette::Highlight).name(), "#b4efef");
    op.press(kLocate);
    QCOMPARE(selectedText(), "#bb0000");
    op.select(2);
    QCOMPARE(selectedText(), "#0000bb");
    op.select(3);
    QCOMPARE(selectedText(), "#000000");
    op.select(2);
    op.endOfSong();
    QCOMPARE(op.selectedRow(), 2);
    QCOMPARE(selectedText(), "#bb0000");
}

VELT_TEST_MAIN(TestRun)
#include "tst_run.moc"
