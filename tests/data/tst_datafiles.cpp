// SPDX-License-Identifier: MIT
#include "datafiles.h"
#include "deviceid.h"
#include "displaystatus.h"
#include "editdata.h"
#include "filetest.h"

#include <QFileInfo>

// The preference file and the geometry file, and what holds for all files.
class DataFilesTest : public FileTest
{
    Q_OBJECT

private slots:
    void filesLieInTheConfigurationDirectory()
    {
        const QString home = qEnvironmentVariable("XDG_CONFIG_HOME") + QLatin1String("/VELT/");
        QCOMPARE(setListFilePath(), home + QLatin1String("VELTSetting.ini"));
        QCOMPARE(preferenceFilePath(), home + QLatin1String("VELTPreference.ini"));
        QCOMPARE(displayStatusFilePath(), home + QLatin1String("DispStatus.ini"));
        writeDisplayStatus(displayStatusFilePath(), {});
        QVERIFY(QFileInfo::exists(displayStatusFilePath()));
    }

    void readsAndWritesPreferences()
    {
        const QByteArray content(
            "[General]\nArrowKeyMode=true\nDeviceId=0B\nMidiInPort=\"IAC \\x30d0, \\\"1\\\"\"\n"
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
        QCOMPARE(data.MidiInPort, QStringLiteral(u"IAC \u30d0, \"1\""));
        QVERIFY(data.ShortcutMidiInPort == "@pad:0" && data.MidiOutPort == "out");
        QVERIFY(data.SendTextColor == QColor(0x12, 0xab, 0x34));
        data.DeviceId = QStringLiteral(" 0xb");
        const QString path = freshPath();
        data.writePreference(path);
        QCOMPARE(bytes(path), content);
    }

    void absentKeysKeepOptionalFieldsOnly()
    {
        EditData data;
        data.DeviceIdValue = 9;
        for (const QString& path :
             {fileWith("[General]\nNoteLocate=40\nDeviceId=zz\nno equals sign"), freshPath()}) {
            data.Mode = kModeStudioOneMarker;
            data.MidiOutPort = QStringLiteral("out");
            data.readPreference(path);
            QVERIFY(data.Mode == 0 && data.MidiOutPort.isEmpty() && data.DeviceIdValue == 9);
            QVERIFY(data.ShowKeyButton && data.SendTextColor == QColor(0xbb, 0, 0));
            QVERIFY(data.NoteSongUp == 28 && data.NoteLocate == 40 && data.NoteDawStop == 35);
        }
    }

    void illTypedValuesReadAsDefaults()
    {
        EditData data;
        data.readPreference(fileWith("[General]\nMode=x\nMidiInPort=a, b\nDeviceId=@Invalid()\n"
                                     "ShowKeyButton=0\nArrowKeyMode=1, 2\nNoteLocate=1.5\n" +
                                     kHarmfulValues));
        QVERIFY(data.Mode == 0 && !data.ShowKeyButton && !data.ArrowKeyMode);
        QVERIFY(data.NoteLocate == 0 && data.MidiInPort.isEmpty() && data.DeviceId.isEmpty());
        for (const char* text :
             {"", "nothing", "#zz", "1, 2", "@Invalid()", "@Rect(1 2 3 4)",
              R"(@Variant(\0\0\0\x43))", R"(@Variant(\0\0\0\x43\x9\xff\xff\0\0\0\0\0\0\0\0))",
              "@Variant(x", "777777777777"}) {
            data.readPreference(fileWith(
                QByteArray("[General]\nNextTextColor=#12ab34\nSendTextColor=") + text + '\n'));
            QVERIFY2(!data.SendTextColor.isValid(), text);
            QVERIFY(data.NextTextColor == QColor(0x12, 0xab, 0x34));
        }
    }

    void parsesDeviceId()
    {
        using Row = std::pair<const char*, int>; // -1: none.
        for (const auto& [text, value] :
             {Row("7f", 0x7f), Row("0X7F", 0x7f), Row(" \t\v7F", 0x7f), Row("5 6", 5),
              Row("1FF", 0xff), Row("123456789012345678900", 0), Row("+a", 10), Row("-1", 0xff),
              Row("0x", 0), Row("0x0x5", 0), Row("", -1), Row("zz", -1), Row("x7f", -1),
              Row("- 5", -1), Row("+-5", -1), Row("\uff17", -1)}) {
            const auto parsed = parseDeviceId(QString::fromUtf8(text));
            QVERIFY2((parsed ? *parsed : -1) == value, text);
        }
    }

    void geometrySurvivesOrHasDefaults()
    {
        const QByteArray content("[General]\nColumnWidth=77\nEditHeight=4\nEditWidth=3\nEditX=1\n"
                                 "EditY=2\nHeight=480\nWidth=640\nX=-5\nY=20\n");
        const DisplayStatus kept = readDisplayStatus(fileWith(content));
        QVERIFY(kept.window == QRect(-5, 20, 640, 480) && kept.editor == QRect(1, 2, 3, 4));
        const QString path = freshPath();
        writeDisplayStatus(path, kept);
        QCOMPARE(bytes(path), content);

        using Case = std::pair<QByteArray, QRect>;
        for (const auto& [damaged, expected] :
             {Case(kHarmfulValues + "Width=a\nHeight=1, 2\n", {100, 100, 500, 800}),
              Case("Width=0\nX=400\nHeight=300\nEditX=5\n", {100, 100, 500, 300}),
              Case("Width=600\nHeight=99999999999\nX=2147483647\nColumnWidth=4294967299\n"
                   "EditWidth=-2147483648\n",
                   {0, 0, 600, 800})}) {
            const DisplayStatus status = readDisplayStatus(fileWith("[General]\n" + damaged));
            QCOMPARE(status.window, expected);
            QVERIFY(status.columnWidth == 180 && status.editor.width() == 0);
        }
    }
};

VELT_TEST_MAIN(DataFilesTest)
#include "tst_datafiles.moc"
