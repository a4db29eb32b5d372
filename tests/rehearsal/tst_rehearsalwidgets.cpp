// SPDX-License-Identifier: MIT
#include "clock.h"
#include "eventlog.h"
#include "locatedisplay.h"
#include "testcase.h"

#include <QScrollBar>

class RehearsalWidgetsTest : public TestCase
{
    Q_OBJECT

private slots:
    void wrongSequenceIsRed();
    void numberGrowsWithTheWindow();
    void logForgetsAndFollows();
};

namespace {

// Where the widget is as bright as located digits are: the header and the edges are left out.
QRect brightArea(LocateDisplay& display)
{
    const QImage image = display.grab().toImage();
    QRect area;
    for (int y = image.height() * 35 / 100; y < image.height() - 12; ++y) {
        for (int x = 12; x < image.width() - 12; ++x) {
            if (qGray(image.pixel(x, y)) > 200) {
                area |= QRect(x, y, 1, 1);
            }
        }
    }
    return area;
}

} // namespace

void RehearsalWidgetsTest::wrongSequenceIsRed()
{
    LocateDisplay display(QStringLiteral("Pro Tools"));
    display.resize(600, 300);
    const auto isRed = [&] {
        const QColor color = display.grab().toImage().pixelColor(300, 60); // Beside any text.
        return color.red() > 150 && color.green() < 50 && color.blue() < 80;
    };
    QVERIFY(!isRed());
    display.showWrong(QStringLiteral("= Tab"));
    QVERIFY(isRed());
    display.showPlaying(true); // Does not take the alarm away.
    QVERIFY(isRed());
    display.showTyping(Place::Bar, QString());
    QVERIFY(!isRed());
}

void RehearsalWidgetsTest::numberGrowsWithTheWindow()
{
    LocateDisplay display(QStringLiteral("Pro Tools"));
    display.showLocated(Place::Bar, 105);
    display.resize(400, 200);
    const int small = brightArea(display).height();
    display.resize(1200, 600);
    const int large = brightArea(display).height();
    QVERIFY2(small > 200 * 2 / 5, qPrintable(QString::number(small)));
    QVERIFY2(qAbs(large - 3 * small) <= 9, qPrintable(QString::number(large)));

    display.showLocated(Place::Bar, 2147483647); // As wide as the widget, and still inside.
    const QRect area = brightArea(display);
    QVERIFY(area.width() > 1000 && area.left() > 20 && area.right() < 1180);
}

void RehearsalWidgetsTest::logForgetsAndFollows()
{
    EventLog log;
    log.resize(400, 100);
    log.show();
    for (int i = 1; i <= 2100; ++i) {
        log.add(monotonicUs(), QString::number(i));
    }
    QTRY_COMPARE(log.blockCount(), 2000);
    QVERIFY(log.toPlainText().endsWith(QLatin1String("  2100")));
    QCOMPARE(log.verticalScrollBar()->value(), log.verticalScrollBar()->maximum());

    log.verticalScrollBar()->setValue(
        1000); // Someone reads; what they read must not be pulled away.
    log.add(monotonicUs(), QStringLiteral("one more"));
    QTRY_VERIFY(log.toPlainText().endsWith(QLatin1String("one more")));
    QVERIFY(log.verticalScrollBar()->value() < log.verticalScrollBar()->maximum() / 2 + 100);
}

VELT_TEST_MAIN(RehearsalWidgetsTest)
#include "tst_rehearsalwidgets.moc"
