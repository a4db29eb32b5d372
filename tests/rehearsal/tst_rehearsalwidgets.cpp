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
    void wrongSequenceIsRed()
    {
        LocateDisplay display("Pro Tools");
        display.resize(600, 300);
        const auto isRed = [&] {
            const QColor color = display.grab().toImage().pixelColor(300, 60); // Beside any text.
            return color.red() > 150 && color.green() < 50 && color.blue() < 80;
        };
        QVERIFY(!isRed());
        display.showWrong("= Tab");
        display.showPlaying(true); // Does not take the alarm away.
        QVERIFY(isRed());
        display.showTyping(Place::Bar, QString());
        QVERIFY(!isRed());
    }

    void numberFillsTheWindow()
    {
        LocateDisplay display("Pro Tools");
        display.resize(1200, 600);
        for (const int number : {105, 2147483647}) {
            display.showLocated(Place::Bar, number);
            const QImage image = display.grab().toImage();
            QRect digits; // As bright as they are, without the header and the edges.
            for (int y = 210; y < 588; ++y) {
                for (int x = 12; x < 1188; ++x) {
                    digits |= qGray(image.pixel(x, y)) > 200 ? QRect(x, y, 1, 1) : QRect();
                }
            }
            QVERIFY(digits.height() > 240 || digits.width() > 1000);
            QVERIFY(digits.left() > 20 && digits.right() < 1180);
        }
    }

    void logForgetsAndFollows()
    {
        EventLog log;
        log.resize(400, 100);
        log.show();
        for (int i = 1; i <= 2100; ++i) {
            log.add(monotonicUs(), QString::number(i));
        }
        QTRY_COMPARE(log.blockCount(), 2000);
        QScrollBar* bar = log.verticalScrollBar();
        QCOMPARE(bar->value(), bar->maximum());
        bar->setValue(1000); // Someone reads; what they read must not be pulled away.
        log.add(monotonicUs(), "one more");
        QTRY_VERIFY(log.toPlainText().endsWith("one more"));
        QVERIFY(log.blockCount() == 2000 && bar->value() < bar->maximum() / 2 + 100);
    }
};

VELT_TEST_MAIN(RehearsalWidgetsTest)
#include "tst_rehearsalwidgets.moc"
