// SPDX-License-Identifier: MIT
#include "aboutdialog.h"
#include "apptestcase.h"

#include <QAccessible>

namespace {

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

// What a screen reader says of the controls.
class TestAccessibility : public AppTestCase
{
    Q_OBJECT

private slots:
    void everyControlHasAName_data()
    {
        QTest::addColumn<QString>("title"); // Of the window.
        QTest::addColumn<int>("controls");  // At least so many are found.
        QTest::newRow("operator window") << "VELT" << 13;
        QTest::newRow("editor") << "Edit" << 19;
        QTest::newRow("preferences") << "Preference" << 15;
        QTest::newRow("about box") << "About VELT" << 1;
    }

    void everyControlHasAName()
    {
        QFETCH(QString, title);
        QFETCH(int, controls);
        const WindowDriver velt;
        const AboutDialog about(0, 0, nullptr);
        QVector<const QAccessibleInterface*> found;
        for (QWidget* window : QApplication::allWidgets()) {
            if (window->isWindow() && window->windowTitle() == title) {
                appendControls(QAccessible::queryAccessibleInterface(window), found);
            }
        }
        QVERIFY2(found.size() >= controls, qPrintable(QString::number(found.size())));
        for (const QAccessibleInterface* control : found) {
            const auto which = QByteArray(control->object()->metaObject()->className()) + ' ' +
                               control->object()->objectName().toUtf8();
            QVERIFY2(!control->text(QAccessible::Name).isEmpty(), which.constData());
        }
    }
};

VELT_TEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
