// SPDX-License-Identifier: MIT
#include "preferencedesk.h"

#include <limits>

class TestPreferenceDialogController : public TestCase
{
    Q_OBJECT

private slots:
    void storedNote_data();
    void storedNote();
    void chosenNote_data();
    void chosenNote();
    void colors();
};

// How a stored note shows in its row, and what OK makes of it untouched.
void TestPreferenceDialogController::storedNote_data()
{
    QTest::addColumn<int>("note");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<int>("after");
    const auto row = [](int note, const char* shown, int after) {
        QTest::addRow("%d", note) << note << QString::fromLatin1(shown) << after;
    };
    row(0, "C/-1", 0);
    row(38, "D/2", 38);
    row(28, "E/1", 28);
    row(53, "F/3", 53);
    row(69, "A/4", 69);
    row(83, "B/5", 83);
    row(127, "G/9", 127);
    row(61, "C/4", 60);
    row(126, "C/9", 120);
    row(128, "G/9", 127);
    row(-1, "C/-1", 0);
    row(std::numeric_limits<int>::min(), "C/-1", 0);
    row(std::numeric_limits<int>::max(), "G/9", 127);
}

void TestPreferenceDialogController::storedNote()
{
    QFETCH(const int, note);
    QFETCH(const QString, shown);
    QFETCH(const int, after);
    PreferenceDesk desk;
    desk.data.NoteLocate = note;
    desk.open([&] {
        QStringList rows;
        for (int row = 0; row < 5; ++row) {
            rows.append(desk.noteBox(row, 0)->currentText() + QLatin1Char('/') +
                        desk.noteBox(row, 1)->currentText());
        }
        QCOMPARE(rows, QStringList({QStringLiteral("E/1"), QStringLiteral("F/1"), shown,
                                    QStringLiteral("A/1"), QStringLiteral("B/1")}));
        desk.click("pushOK");
    });
    const EditData& data = desk.data;
    QCOMPARE(QVector<int>({data.NoteSongUp, data.NoteSongDown, data.NoteLocate, data.NoteDawPlay,
                           data.NoteDawStop}),
             QVector<int>({28, 29, after, 33, 35}));
}

// Row 0 holds E 1, note 28. Octave index 0 is octave -1.
void TestPreferenceDialogController::chosenNote_data()
{
    QTest::addColumn<DeskAct>("choose");
    QTest::addColumn<int>("note");
    const auto choose = [](int nameIndex, int octaveIndex) -> DeskAct {
        return [=](PreferenceDesk& desk) {
            desk.noteBox(0, 0)->setCurrentIndex(nameIndex);
            desk.noteBox(0, 1)->setCurrentIndex(octaveIndex);
        };
    };
    const auto type = [](int column, const char* text, Qt::Key end) -> DeskAct {
        return [=](PreferenceDesk& desk) {
            QComboBox* box = desk.noteBox(0, column);
            box->setFocus();
            box->lineEdit()->selectAll();
            QTest::keyClicks(box, QString::fromLatin1(text));
            QTest::keyClick(box, end);
        };
    };
    QTest::newRow("lowest") << choose(0, 0) << 0;
    QTest::newRow("G 9") << choose(4, 10) << 127;
    QTest::newRow("B 9") << choose(6, 10) << 127;
    QTest::newRow("no name") << choose(-1, 5) << 60;
    QTest::newRow("no octave") << choose(6, -1) << 0;
    QTest::newRow("typed name") << type(0, "d", Qt::Key_Shift) << 26; // Still being typed.
    QTest::newRow("typed octave") << type(1, "-1", Qt::Key_Tab) << 4;
    QTest::newRow("not listed, left") << type(0, "H", Qt::Key_Tab) << 28;
    QTest::newRow("added name") << type(0, "H", Qt::Key_Return) << 24;
    QTest::newRow("added octave") << type(1, "12", Qt::Key_Return) << 127;
}

void TestPreferenceDialogController::chosenNote()
{
    QFETCH(const DeskAct, choose);
    QFETCH(const int, note);
    PreferenceDesk desk;
    desk.open([&] {
        choose(desk);
        for (const int column : {0, 1}) { // What is shown is what counts.
            const QComboBox* box = desk.noteBox(0, column);
            QCOMPARE(box->currentText(), box->itemText(box->currentIndex()));
        }
        desk.click("pushOK");
    });
    QCOMPARE(desk.data.NoteSongUp, note);
    desk.dialog.setDispFromEdit();
    QCOMPARE(desk.noteBox(0, 0)->count(), 7);
    QCOMPARE(desk.noteBox(0, 1)->count(), 11);
}

void TestPreferenceDialogController::colors()
{
    const QString red =
        QStringLiteral(" QPushButton:hover {background-color:#ffbb0000;}  QPushButton:pressed "
                       "{background-color:#ffbb0000;border:1px solid #ffbb0000;}  QPushButton "
                       "{background-color:#ffbb0000;border-style: solid;border-radius: 5;} ");
    const auto blue = QString(red).replace(QLatin1String("bb0000"), QLatin1String("0000bb"));
    PreferenceDesk desk;
    const auto* next = desk.find("pushNextColor");
    desk.open([&] {
        QCOMPARE(desk.find("pushSendColor")->styleSheet(), red);
        QCOMPARE(next->styleSheet(), blue);
        desk.chooseColor("pushNextColor", 0x0000BB, 0xBB0000);
        QCOMPARE(next->styleSheet(), red);
    });
    desk.open([&] { // The choice was left by Escape, as the chooser is now.
        desk.chooseColor("pushNextColor", 0x0000BB, QColor());
        QCOMPARE(next->styleSheet(), blue);
        desk.dialog.close();
        QVERIFY(!desk.dialog.isVisible()); // There was nothing to ask.
    });
}

VELT_TEST_MAIN(TestPreferenceDialogController)
#include "tst_preferencedialog_controller.moc"
