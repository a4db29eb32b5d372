// SPDX-License-Identifier: MIT
#include "aboutdialog.h"
#include "modalscript.h"
#include "testcase.h"

#include <QApplication>
#include <QImageReader>
#include <QLabel>
#include <QResource>

int qInitResources_VELTResouce();
int qCleanupResources_VELTResouce();

namespace {

constexpr int kStored = QResource::NoCompression;
constexpr int kZlib = QResource::ZlibCompression;

} // namespace

class AboutDialogTest : public TestCase
{
    Q_OBJECT

private slots:
    void picture_data();
    void picture();
    void collectionComesAndGoes();
    void opensAtEachPosition();
    void showsTheWholeNotice();
    void isBlackOnWhiteOnADarkDesktop();
};

void AboutDialogTest::picture_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("compression");

    QTest::newRow("VELT_Logo_512.png") << QByteArray("png") << QSize(512, 512) << kStored;
    QTest::newRow("VELT_Logo_512.ico") << QByteArray("ico") << QSize(256, 256) << kStored;
    for (const char* name :
         {"locate.ico", "play.ico", "stop.ico", "zero.ico", "tab.ico", "space.ico", "enter.ico"}) {
        QTest::newRow(name) << QByteArray("ico") << QSize(150, 150) << kZlib;
    }
    QTest::newRow("Up.ico") << QByteArray("ico") << QSize(111, 149) << kZlib;
    QTest::newRow("Down.ico") << QByteArray("ico") << QSize(111, 149) << kZlib;
    QTest::newRow("Right.ico") << QByteArray("ico") << QSize(149, 111) << kZlib;
}

void AboutDialogTest::picture()
{
    QFETCH(QByteArray, format);
    QFETCH(QSize, size);
    QFETCH(int, compression);
    const QString path = QLatin1String(":/img/img/") + QLatin1String(QTest::currentDataTag());

    QCOMPARE(int(QResource(path).compressionAlgorithm()), compression);
    QImageReader reader(path);
    reader.setAutoDetectImageFormat(false);
    reader.setFormat(format);
    QCOMPARE(reader.imageCount(), 1);
    const QImage image = reader.read();
    QVERIFY2(!image.isNull(), qPrintable(reader.errorString()));
    QCOMPARE(image.size(), size);
}

void AboutDialogTest::collectionComesAndGoes()
{
    const QString path = QStringLiteral(":/img/img/locate.ico");
    QVERIFY(QFile::exists(path)); // Registered without a call.
    QCOMPARE(qCleanupResources_VELTResouce(), 1);
    QVERIFY(!QFile::exists(path));
    QCOMPARE(qInitResources_VELTResouce(), 1);
    QVERIFY(QFile::exists(path));
}

void AboutDialogTest::opensAtEachPosition()
{
    for (const QPoint position : {QPoint(250, 150), QPoint(30, 40)}) {
        AboutDialog box(position.x(), position.y(), nullptr);
        // The toolkit adds the title and its menu, which a close button stands in.
        QCOMPARE(box.windowFlags() & ~(Qt::WindowTitleHint | Qt::WindowSystemMenuHint),
                 Qt::Window | Qt::WindowCloseButtonHint);
        QRect shownAt;
        ModalScript script;
        script.expect([&shownAt](QWidget* shown) {
            shownAt = QRect(shown->pos(), shown->size());
            QTest::keyClick(shown, Qt::Key_Escape);
        });
        box.exec();
        QCOMPARE(shownAt, QRect(position, QSize(372, 517)));
        QVERIFY(!box.isVisible());
    }
}

void AboutDialogTest::showsTheWholeNotice()
{
    AboutDialog box(0, 0, nullptr);
    QCOMPARE(box.windowTitle(), QStringLiteral("About VELT"));
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));

    const auto* logo = box.findChild<QLabel*>(QStringLiteral("label"));
    const QPixmap picture(QStringLiteral(":/img/img/VELT_Logo_512.ico"));
    QCOMPARE(logo->pixmap(Qt::ReturnByValue).toImage(), picture.toImage());
    const auto* name = box.findChild<QLabel*>(QStringLiteral("label_2"));
    QCOMPARE(name->text(), QStringLiteral("VELT"));
    QCOMPARE(name->font().pointSize(), 18);
    const auto* notice = box.findChild<QLabel*>(QStringLiteral("label_3"));
    QCOMPARE(notice->font().pointSize(), 11);
    const QRegularExpression paragraph(QStringLiteral("<p[^>]*>(.*?)</p>"));
    QCOMPARE(paragraph.match(notice->text()).captured(1), QStringLiteral("Version 1.1"));

    for (const QLabel* label : {logo, name, notice}) {
        QCOMPARE(label->alignment(), Qt::AlignCenter);
        QVERIFY(box.rect().contains(label->geometry()));
        QVERIFY(label->width() >= label->minimumSizeHint().width());
        QVERIFY(label->height() >= label->heightForWidth(label->width()));
    }
}

void AboutDialogTest::isBlackOnWhiteOnADarkDesktop()
{
    const QPalette before = QApplication::palette();
    QApplication::setPalette(QPalette(Qt::white, Qt::darkGray, Qt::darkGray, Qt::black,
                                      Qt::darkGray, Qt::white, Qt::white, Qt::black, Qt::black));
    AboutDialog box(0, 0, nullptr);
    QCOMPARE(box.grab().toImage().pixelColor(2, 2), QColor(Qt::white));
    const QRegularExpression texts(QStringLiteral("label_[23]"));
    for (const auto* label : box.findChildren<QLabel*>(texts)) {
        QCOMPARE(label->palette().color(label->foregroundRole()), QColor(Qt::black));
    }
    QApplication::setPalette(before);
}

VELT_TEST_MAIN(AboutDialogTest)
#include "tst_aboutdialog.moc"
