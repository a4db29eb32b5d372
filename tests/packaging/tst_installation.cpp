// SPDX-License-Identifier: MIT
#include "testcase.h"

#include <QDir>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>

// What an installation puts where, and that its parts fit together.
class TestInstallation : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QProcess install;
        install.setProcessChannelMode(QProcess::MergedChannels);
        install.start(CMAKE, {"--install", BUILD, "--prefix", prefix.path()});
        QVERIFY(install.waitForFinished());
        QVERIFY2(install.exitCode() == 0, install.readAll().constData());
    }

    void menuEntriesStartWhatIsThere_data()
    {
        QTest::addColumn<QString>("id");
        QTest::newRow("VELT") << "org.veltshow.velt";
        QTest::newRow("rehearsal") << "org.veltshow.velt-rehearsal";
    }

    void menuEntriesStartWhatIsThere()
    {
        QFETCH(QString, id);
        QSettings entry(installed("share/applications/" + id + ".desktop"), QSettings::IniFormat);
        entry.beginGroup("Desktop Entry");
        const QString program = entry.value("Exec").toString().section(' ', 0, 0);
        QVERIFY(QFileInfo(installed("bin/" + program)).isExecutable());
        QCOMPARE(entry.value("TryExec").toString(), program);
        for (const char* icon : {"scalable/apps/%1.svg", "48x48/apps/%1.png"}) {
            const QString path =
                "share/icons/hicolor/" + QString(icon).arg(entry.value("Icon").toString());
            QVERIFY2(QFile::exists(installed(path)), qPrintable(path));
        }
    }

    void filesAreThere()
    {
        for (const char* path :
             {"share/metainfo/org.veltshow.velt.metainfo.xml", "share/man/man1/velt.1.gz",
              "share/man/man1/velt-rehearsal.1.gz", "share/doc/velt/copyright",
              "share/doc/velt/changelog.gz", "share/doc/velt/examples/VELTSetting.ini",
              "share/doc/velt/manual.md", "share/doc/velt/images/run.png"}) {
            QVERIFY2(QFileInfo(installed(path)).size() > 0, path);
        }
        // Nothing of a build goes along: tests, libraries, headers.
        QCOMPARE(QDir(prefix.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 (QStringList{"bin", "share"}));
        QCOMPARE(QDir(installed("bin")).entryList(QDir::Files),
                 (QStringList{"velt", "velt-rehearsal"}));

        QProcess rehearsal;
        rehearsal.start(installed("bin/velt-rehearsal"), {"--help"});
        QVERIFY(rehearsal.waitForFinished());
        QCOMPARE(rehearsal.exitCode(), 0); // Finds its libraries.
    }

    void versionIsTheSameEverywhere_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("line"); // What stands before the newest version there.
        QTest::newRow("changes") << "CHANGELOG.md"
                                 << "\n## ";
        QTest::newRow("Debian changes") << "packaging/changelog"
                                        << "velt (";
        QTest::newRow("software centre") << "packaging/org.veltshow.velt.metainfo.xml"
                                         << "<release version=\"";
        QTest::newRow("manual page") << "packaging/man/velt.1"
                                     << ".TH VELT 1 2026-11-25 \"VELT ";
        QTest::newRow("about box") << "dialogs/aboutdialog.ui"
                                   << "Version ";
    }

    void versionIsTheSameEverywhere()
    {
        QFETCH(QString, file);
        QFETCH(QString, line);
        QFile source(SOURCES "/" + file);
        QVERIFY(source.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(source.readAll());
        const auto at = // Before a number: what is unreleased has none.
            text.indexOf(QRegularExpression(QRegularExpression::escape(line) + "(?=[0-9])"));
        QVERIFY(at >= 0);
        const QRegularExpression number("[0-9.]+[0-9]");
        const QString found = number.match(text.mid(at + line.size())).captured();
        QVERIFY2(found == VERSION || QString(VERSION) == found + ".0", qPrintable(found));
    }

private:
    QString installed(const QString& path) const { return prefix.filePath(path); }

    QTemporaryDir prefix;
};

VELT_TEST_MAIN(TestInstallation)
#include "tst_installation.moc"
