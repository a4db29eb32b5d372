// SPDX-License-Identifier: MIT
#include "apptestcase.h"
#include "modalscript.h"

#include <QPointer>
#include <QWheelEvent>

namespace {

const QVector<int> k12{0x53, 0x54};
const QVector<int> k105{0x53, 0x52, 0x57};
const QVector<int> k33{0x55, 0x55};

void type(QLineEdit* editor, const QString& text)
{
    QVERIFY(editor);
    editor->selectAll();
    QTest::keyClicks(editor, text);
    const QPointer<QLineEdit> open = editor;
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_VERIFY(!open);
}

// Does what each word says: "0" selects that row, "none" nothing, anything else presses or ends.
void perform(WindowDriver& velt, const QString& actions)
{
    for (const QString& action : actions.split(' ')) {
        if (action == "none") {
            velt.table->clearSelection();
        } else if (action == "end") {
            velt.endOfSong();
        } else if (action[0].isDigit()) {
            velt.select(action.toInt());
        } else {
            velt.press(action);
        }
    }
}

} // namespace

// Stepping through a set list, as the operator does with mouse and keyboard.
class TestRun : public AppTestCase
{
    Q_OBJECT

private slots:
    void marksAndKeys_data()
    {
        QTest::addColumn<QString>("actions");
        QTest::addColumn<QStringList>("marks");
        QTest::addColumn<QVector<int>>("songs"); // Their rows, in the order in which they are sent.
        QTest::addColumn<bool>("isRunning");
        QTest::addColumn<int>("selected");
        using Rows = QVector<int>;
        // The selected row has the text colour of its mark.
        const QStringList lastSent{"plain", "space", "plain", "sent"};
        const QStringList reset{"sent", "space", "plain", "plain"};
        QTest::newRow("first") << "LOCATE" << kFirstSent << Rows{0} << true << 0;
        QTest::newRow("next") << "LOCATE 2 LOCATE" << kSecondSent << Rows{0, 2} << true << 2;
        QTest::newRow("last") << "3 LOCATE" << lastSent << Rows{3} << false << 3;
        QTest::newRow("next, selected") << "LOCATE 2" << kFirstSent << Rows{0} << true << 2;
        QTest::newRow("past the next") << "LOCATE 3 LOCATE" << lastSent << Rows{0, 3} << false << 3;
        QTest::newRow("nothing selected, one sent")
            << "LOCATE none LOCATE" << kFirstSent << Rows{0, 0} << true << 0;
        QTest::newRow("nothing selected or sent")
            << "none LOCATE" << kPlain << Rows{} << true << -1;
        QTest::newRow("space") << "1 LOCATE" << kPlain << Rows{} << true << 1;
        QTest::newRow("space in a run") << "LOCATE 1 LOCATE" << kFirstSent << Rows{0} << true << 1;
        QTest::newRow("Reset") << "LOCATE 2 Reset" << reset << Rows{0} << false << 2;
        QTest::newRow("end of song") << "LOCATE 1 end" << kSecondSent << Rows{0, 2} << true << 1;
        QTest::newRow("end of last song")
            << "LOCATE 1 end end" << lastSent << Rows{0, 2, 3} << false << 1;
        QTest::newRow("end of song, none is next")
            << "LOCATE Reset 1 LOCATE end" << reset << Rows{0} << true << 1;
    }

    void marksAndKeys()
    {
        QFETCH(QString, actions);
        QFETCH(QStringList, marks);
        QFETCH(QVector<int>, songs);
        QFETCH(bool, isRunning);
        QFETCH(int, selected);
        WindowDriver velt;
        perform(velt, actions);
        QCOMPARE(velt.rowMarks(), marks);
        QCOMPARE(velt.isRunning(), isRunning);
        QCOMPARE(velt.selectedRow(), selected);
        QVERIFY(velt.isFocusOnTable());
        const QPalette palette = velt.table->palette();
        const QString mark = marks.value(selected);
        QCOMPARE(palette.color(QPalette::Inactive, QPalette::HighlightedText),
                 QColor(mark == "sent"   ? "#bb0000"
                        : mark == "next" ? "#0000bb"
                                         : "#000000"));
        QCOMPARE(palette.color(QPalette::Inactive, QPalette::Highlight), QColor("#b4efef"));
        Recording::Events expected;
        for (const int row : songs) {
            expected += bar(row == 0 ? k12 : row == 2 ? k105 : k33);
        }
        QCOMPARE(Recording::takeEvents(), expected);
    }

    void processIsLookedUpOnceUntilDataChanges()
    {
        WindowDriver velt;
        perform(velt, "LOCATE end 0 LOCATE Reset");
        QCOMPARE(Recording::enumerations(), 1);
        velt.window.setPreferenceData();
        perform(velt, "LOCATE Reset");
        QCOMPARE(Recording::enumerations(), 2);
        velt.window.setShowData();
        velt.press("LOCATE");
        QCOMPARE(Recording::enumerations(), 3);
    }

    void aShowBeginsWithoutMarks()
    {
        WindowDriver velt;
        QCOMPARE(velt.rowMarks(), kPlain);
        QCOMPARE(velt.table->item(1, 0)->textAlignment(), int(Qt::AlignHCenter | Qt::AlignVCenter));
        QCOMPARE(velt.table->item(1, 1)->foreground().color(), QColor(Qt::black));
        QCOMPARE(velt.selectedRow(), 0);
        QVERIFY(velt.table->hasFocus());
        QVERIFY(velt.button("LOCATE")->isEnabled());

        perform(velt, "LOCATE Reset");
        velt.shows->setCurrentIndex(1);
        QCOMPARE(velt.table->rowCount(), 0);
        QVERIFY(!velt.button("LOCATE")->isEnabled());
        velt.shows->setCurrentIndex(0);
        QCOMPARE(velt.rowMarks(), kPlain);
        Recording::takeEvents();
        perform(velt, "none LOCATE"); // What was sent is forgotten.
        QVERIFY(Recording::takeEvents().isEmpty());

        velt.shows->setCurrentIndex(1);
        velt.window.setShowData(); // Saved shows come back from the first.
        QCOMPARE(velt.shows->currentText(), QString("Friday"));
        QCOMPARE(velt.rowMarks(), kPlain);
        QVERIFY(!velt.isRunning());
    }

    void everyModeTypesItsOwn_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("number");
        QTest::addColumn<Recording::Events>("events");
        const auto studio = [](int opener, const QVector<int>& keys) {
            return Recording::press(kStudioOne, opener, Recording::kCommand) +
                   Recording::presses(kStudioOne, keys);
        };
        QTest::newRow("Pro Tools, bars") << 0 << 105 << bar(k105);
        QTest::newRow("a sign is no key") << 0 << -5 << bar({0x52});
        QTest::newRow("Pro Tools, markers")
            << 1 << 7 << Recording::presses(kProTools, {0x41, 0x59, 0x41});
        QTest::newRow("Studio One, bars") << 2 << 33 << studio(0x11, {0x55, 0x55, 0x24});
        QTest::newRow("Studio One, markers") << 3 << 10 << studio(0x29, {0x53, 0x52, 0x4C});
        QTest::newRow("no such mode") << 9 << 12 << Recording::Events();
        QTest::newRow("negative mode") << -1 << 12 << Recording::Events();
    }

    void everyModeTypesItsOwn()
    {
        QFETCH(int, mode);
        QFETCH(int, number);
        QFETCH(Recording::Events, events);
        const bool isMarker = mode == 1 || mode == 3;
        EditData data = sampleData();
        data.Mode = mode;
        data.SongList[0].Bar = isMarker ? 999 : number;
        data.SongList[0].Marker = isMarker ? number : 999;
        const WindowDriver velt(data);
        velt.press("LOCATE");
        QCOMPARE(Recording::takeEvents(), events);
        QCOMPARE(velt.rowMarks(), kFirstSent);
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
