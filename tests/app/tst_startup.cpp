// SPDX-License-Identifier: MIT
#include "aboutdialog.h"
#include "apptestcase.h"
#include "modalscript.h"

#include <QAccessible>
#include <QDialog>
#include <QDir>
#include <QMenuBar>
#include <QScreen>

namespace {

void write(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

// The geometry of the dialog that a button opens.
QRect placeOfDialog(MainWindow& window, const char* button)
{
    QRect place;
    ModalScript script;
    script.expect([&place](QWidget* dialog) {
        place = dialog->geometry();
        dialog->close();
    });
    for (QPushButton* candidate : window.findChildren<QPushButton*>()) {
        if (candidate->text() == QLatin1String(button)) {
            candidate->click();
        }
    }
    return place;
}

// The controls that a screen reader finds.
void appendControls(const QAccessibleInterface* from, QVector<const QAccessibleInterface*>& found)
{
    static const QVector<QAccessible::Role> roles{QAccessible::CheckBox,    QAccessible::ComboBox,
                                                  QAccessible::Graphic,     QAccessible::Button,
                                                  QAccessible::RadioButton, QAccessible::Table,
                                                  QAccessible::EditableText};
    for (int i = 0; i < from->childCount(); ++i) {
        const QAccessibleInterface* child = from->child(i);
        if (roles.contains(child->role())) {
            found << child;
        }
        appendControls(child, found);
    }
}

} // namespace

// What the files give a starting window, and what a closing one writes.
class TestStartup : public AppTestCase
{
    Q_OBJECT

private slots:
    void firstStart()
    {
        QDir directory = QFileInfo(displayStatusFilePath()).dir();
        directory.removeRecursively();
        {
            MainWindow window(nullptr);
            QCOMPARE(window.geometry(), QRect(100, 100, 500, 800));
            placeOfDialog(window, "Edit");
            QCOMPARE(window.findChild<QDialog*>()->pos(), QPoint(130, 90));
            QCOMPARE(window.findChild<QTableWidget*>()->columnWidth(0), 180);
            QVERIFY(!directory.exists());
        }
        // Written at the end, and nothing else.
        QCOMPARE(directory.entryList(QDir::Files), QStringList("DispStatus.ini"));
    }

    void geometry()
    {
        {
            WindowDriver velt;
            velt.window.setGeometry(40, 50, 640, 480);
            velt.table->setColumnWidth(0, 222);
        }
        const MainWindow kept(nullptr);
        QCOMPARE(kept.geometry(), QRect(40, 50, 640, 480));
        QCOMPARE(kept.findChild<QTableWidget*>()->columnWidth(0), 222);

        write(displayStatusFilePath(), "[General]\nWidth=0\nX=400\nEditWidth=900\nEditHeight=700\n"
                                       "EditX=20\nEditY=30\nColumnWidth=0\n");
        for (const bool isEditorUsed : {false, true}) { // As given, and as written at the end.
            MainWindow window(nullptr);
            QCOMPARE(window.geometry(), QRect(100, 100, 500, 800));
            if (isEditorUsed) {
                QCOMPARE(placeOfDialog(window, "Edit"), QRect(20, 30, 900, 700));
            }
        }

        // On a display that is gone.
        write(displayStatusFilePath(), "[General]\nWidth=500\nHeight=500\nX=-5000\nY=300\n"
                                       "EditWidth=600\nEditHeight=500\nEditX=40\nEditY=9000\n");
        MainWindow moved(nullptr);
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY(screen.contains(moved.geometry()));
        QVERIFY(screen.contains(placeOfDialog(moved, "Edit")));
    }

    void icons_data()
    {
        QTest::addColumn<QString>("icon");
        for (const auto& [name, icon] : {std::pair{"LOCATE", "locate"},
                                         {"DAW PLAY", "play"},
                                         {"DAW STOP", "stop"},
                                         {"Key 0", "zero"},
                                         {"Key Tab", "tab"},
                                         {"Key Space", "space"},
                                         {"Key Enter", "enter"}}) {
            QTest::newRow(name) << icon;
        }
    }

    void icons()
    {
        QFETCH(QString, icon);
        const WindowDriver velt;
        const QPushButton* button = velt.button(QTest::currentDataTag());
        QCOMPARE(button->text(), QString());
        const auto picture = [](const QIcon& of) { return of.pixmap(32, 32).toImage(); };
        QCOMPARE(picture(button->icon()), picture(QIcon(":/img/img/" + icon + ".ico")));
        QVERIFY(!button->icon().isNull());
    }

    void texts()
    {
        const WindowDriver velt;
        QCOMPARE(velt.window.windowTitle(), QString("VELT"));
        for (const char* text : {"Reset", "Edit", "Pref."}) {
            QCOMPARE(velt.button(text)->text(), QString(text));
            QVERIFY(velt.button(text)->icon().isNull());
        }
        QStringList seen;
        for (int index = 0; index < velt.mode->count(); ++index) {
            seen << velt.mode->itemText(index);
        }
        for (int column = 0; column < velt.table->columnCount(); ++column) {
            seen << velt.table->horizontalHeaderItem(column)->text();
        }
        for (const QAction* menu : velt.window.menuBar()->actions()) {
            seen << menu->text() << menu->menu()->actions().value(0)->text();
        }
        QCOMPARE(seen, (QStringList{"Manual", "AutoStop", "AutoLocate", "SongTitle", "Cue",
                                    "&About", "&AboutVELT"}));
        QCOMPARE(velt.mode->currentText(), QString("AutoLocate"));
    }

    void everyControlHasAName()
    {
        WindowDriver velt;
        placeOfDialog(velt.window, "Edit");
        placeOfDialog(velt.window, "Pref.");
        const AboutDialog about(0, 0, nullptr);
        QVector<const QAccessibleInterface*> found;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            appendControls(QAccessible::queryAccessibleInterface(window), found);
        }
        QVERIFY2(found.size() >= 48, qPrintable(QString::number(found.size())));
        for (const QAccessibleInterface* control : found) {
            const auto which = QByteArray(control->object()->metaObject()->className()) + ' ' +
                               control->object()->objectName().toUtf8();
            QVERIFY2(!control->text(QAccessible::Name).isEmpty(), which.constData());
        }
    }

    void longTitleLeavesTheWidth()
    {
        EditData data = sampleData();
        data.ShowList[0].ShowTitle = QString(76, 'W');
        WindowDriver velt(data);
        velt.window.resize(500, 600);
        QCOMPARE(velt.window.width(), 500);
        QCOMPARE(velt.window.minimumSizeHint(), WindowDriver().window.minimumSizeHint());
    }
};

VELT_TEST_MAIN(TestStartup)
#include "tst_startup.moc"
