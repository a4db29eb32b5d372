// SPDX-License-Identifier: MIT
#include "datafiles.h"
#include "deviceid.h"
#include "displaystatus.h"
#include "editdata.h"
#include "filetest.h"

#include <QFileInfo>

// The preference file and the geometry file, and what holds for all files.
class TestDataFiles : public FileTest
{
    Q_OBJECT

private slots:
    void filesLieInTheConfigurationDirectory()
    {
        const QString home = filesIn(qEnvironmentVariable("XDG_CONFIG_HOME"));
        QCOMPARE(setListFilePath(), home + "VELTSetting.ini");
        QCOMPARE(preferenceFilePath(), home + "VELTPreference.ini");
        QCOMPARE(displayStatusFilePath(), home + "DispStatus.ini");
        writeDisplayStatus(displayStatusFilePath(), {});
        QVERIFY(QFileInfo::exists(displayStatusFilePath()));
    }

    void readsAndWritesPreferences()
    {
        const QByteArray content(
            "[General]\nArrowKeyMode=true\nDeviceId=0B\nMidiInPort=\"IAC, \\\"1\\\"\"\n"
            "MidiOutPort=out\nMode=7\n"
            "NextTextColor=@Variant(\\0\\0\\0\\x43\\x2\\xff\\xff\\0\\0\\xff\\xff\\x1\\x1\\0\\0)\n"
            "NoteDawPlay=200\nNoteDawStop=-5\nNoteLocate=3\nNoteSongDown=2\nNoteSongUp=1\n"
            "SendTextColor=@Variant("
            "\\0\\0\\0\\x43\\x1\\xff\\xff\\x12\\x12\\xab\\xab\\x34\\x34\\0\\0)\n"
            "ShortcutMidiInPort=@@pad:0\nShowKeyButton=false\n");
        EditData data;
        data.readPreference(fileWith(content));
        QVERIFY(data.Mode == 7 && data.DeviceIdValue == 0xb && data.ArrowKeyMode);
        QVERIFY(data.NoteSongUp == 1 && data.NoteSongDown == 2 && data.NoteDawStop == -5);
        QCOMPARE(data.MidiInPort, QString("IAC, \"1\""));
        QVERIFY(data.ShortcutMidiInPort == "@pad:0" && data.MidiOutPort == "out");
        QVERIFY(data.SendTextColor == QColor(0x12, 0xab, 0x34));
        data.DeviceId = " 0xb";
        const QString path = freshPath();
        data.writePreference(path);
        QCOMPARE(bytes(path), content);
    }

    void absentKeysKeepOptionalFieldsOnly()
    {
        EditData data;
        data.DeviceIdValue = 9;
        data.Mode = kModeStudioOneMarker;
        data.MidiInPort = data.ShortcutMidiInPort = data.MidiOutPort = "port";
        data.readPreference(fileWith("[General]\nNoteLocate=40\nDeviceId=zz\nno equals sign"));
        QVERIFY(data.Mode == 0 && data.DeviceIdValue == 9 && data.MidiInPort.isEmpty());
        QVERIFY(data.ShortcutMidiInPort.isEmpty() && data.MidiOutPort.isEmpty());
        data.readPreference(freshPath());
        QVERIFY(data.ShowKeyButton && data.SendTextColor == QColor(0xbb, 0, 0));
        QVERIFY(data.NoteSongUp == 28 && data.NoteLocate == 40 && data.NoteDawStop == 35);
    }

    void illTypedValuesReadAsDefaults()
    {
        EditData data;
        data.readPreference(fileWith("[General]\nMode=x\nMidiInPort=a, b\nDeviceId=@Invalid()\n"
                                     "ShowKeyButton=0\nArrowKeyMode=1, 2\nNoteLocate=1.5\n" +
                                     kHarmfulValues));
        QVERIFY(data.Mode == 0 && !data.ShowKeyButton && !data.ArrowKeyMode);
        QVERIFY(data.NoteLocate == 0 && data.MidiInPort.isEmpty() && data.DeviceId.isEmpty());
    }

    void illTypedColorsAreInvalid_data()
    {
        QTest::addColumn<bool>("isNamedByItsText");
        for (const char* text :
             {"", "#zz", "1, 2", "@Invalid()", "@Rect(1 2 3 4)", R"(@Variant(\0\0\0\x43))",
              R"(@Variant(\0\0\0\x43\x9\xff\xff\0\0\0\0\0\0\0\0))", "@Variant(x", "777777777777"}) {
            QTest::newRow(text) << true;
        }
    }

    void illTypedColorsAreInvalid()
    {
        EditData data;
        data.readPreference(
            fileWith(QByteArray("[General]\nNextTextColor=#12ab34\nSendTextColor=") +
                     QTest::currentDataTag() + '\n'));
        QVERIFY(!data.SendTextColor.isValid());
        QCOMPARE(data.NextTextColor, QColor(0x12, 0xab, 0x34));
    }

    void parsesDeviceId_data()
    {
        QTest::addColumn<int>("value"); // -1: none.
        using Row = std::pair<const char*, int>;
        for (const auto& [text, value] :
             {Row("7f", 0x7f), Row("0X7F", 0x7f), Row(" \t\v7F", 0x7f), Row("5 6", 5),
              Row("1FF", 0xff), Row("1234567890abcdef1234567aB", 0xab),
              Row("\n-1234567890123456701 ", 0xff), Row("+a", 10), Row("-1", 0xff), Row("0x", 0),
              Row("0x0x5", 0), Row("", -1), Row("zz", -1), Row("x7f", -1), Row("- 5", -1),
              Row("+-5", -1), Row("\uff17", -1)}) {
            QTest::newRow(text) << value;
        }
    }

    void parsesDeviceId()
    {
        QFETCH(int, value);
        const auto parsed = parseDeviceId(QString::fromUtf8(QTest::currentDataTag()));
        QCOMPARE(parsed ? *parsed : -1, value);
    }

    void geometrySurvives()
    {
        const QByteArray content("[General]\nColumnWidth=77\nEditHeight=4\nEditWidth=3\nEditX=1\n"
                                 "EditY=2\nHeight=480\nWidth=640\nX=-5\nY=20\n");
        const DisplayStatus kept = readDisplayStatus(fileWith(content));
        QVERIFY(kept.window == QRect(-5, 20, 640, 480) && kept.editor == QRect(1, 2, 3, 4));
        const QString path = freshPath();
        writeDisplayStatus(path, kept);
        QCOMPARE(bytes(path), content);
    }

    void geometryHasDefaults_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QRect>("window");
        const QByteArray tooLarge("Width=600\nHeight=99999999999\nX=2147483647\n"
                                  "ColumnWidth=4294967299\nEditWidth=-2147483648\n");
        QTest::newRow("ill-typed") << kHarmfulValues + "Width=a\nHeight=1, 2\n"
                                   << QRect(100, 100, 500, 800);
        QTest::newRow("no width") << QByteArray("Width=0\nX=400\nHeight=300\nEditX=5\n")
                                  << QRect(100, 100, 500, 300);
        QTest::newRow("too large") << tooLarge << QRect(0, 0, 600, 800);
    }

    void geometryHasDefaults()
    {
        QFETCH(QByteArray, content);
        const DisplayStatus status = readDisplayStatus(fileWith("[General]\n" + content));
        QTEST(status.window, "window");
        QCOMPARE(status.columnWidth, 180);
        QCOMPARE(status.editor.width(), 0);
    }
};

VELT_TEST_MAIN(TestDataFiles)
#include "tst_datafiles.moc"
