// SPDX-License-Identifier: MIT
#include "aboutdialog.h"
#include "modalscript.h"
#include "testcase.h"

#include <QApplication>
#include <QLabel>

class TestAboutDialog : public TestCase
{
    Q_OBJECT

private slots:
    void everyPictureLoads()
    {
        for (const char* name :
             {"VELT_Logo_512.png", "VELT_Logo_512.ico", "locate.ico", "play.ico", "stop.ico",
              "zero.ico", "tab.ico", "space.ico", "enter.ico", "Up.ico", "Down.ico", "Right.ico"}) {
            QVERIFY2(QImage(QString(":/img/img/") + name).width() > 100, name);
        }
    }

    void opensInPlaceReadableOnADarkDesktop()
    {
        const QPalette before = QApplication::palette();
        QApplication::setPalette(QPalette(Qt::white, Qt::black));
        AboutDialog box(250, 150, nullptr);
        ModalScript script;
        script.expect([&box](QWidget* shown) {
            QMetaObject::invokeMethod(shown, "reject", Qt::QueuedConnection);
            QCOMPARE(QRect(shown->pos(), shown->size()), QRect(250, 150, 372, 517));
            QCOMPARE(box.findChild<QLabel*>("label")->pixmap(Qt::ReturnByValue).width(), 256);
            QCOMPARE(shown->grab().toImage().pixelColor(2, 2), QColor(Qt::white));
            for (const char* name : {"label_2", "label_3"}) {
                const auto* label = box.findChild<QLabel*>(name);
                QCOMPARE(label->palette().color(label->foregroundRole()), QColor(Qt::black));
                QVERIFY(label->height() >= label->heightForWidth(label->width()));
            }
        });
        box.exec();
        QApplication::setPalette(before);
    }
};

VELT_TEST_MAIN(TestAboutDialog)
#include "tst_aboutdialog.moc"
