// SPDX-License-Identifier: MIT
#include "deviceid.h"
#include "editdata.h"
#include "filetest.h"

class PreferenceFileTest : public FileTest
{
    Q_OBJECT

private slots:
    void readsAndWritesTheAgreedKeys()
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
        data.MaxSongId = 9;
        data.readPreference(fileWith(content));
        QCOMPARE((QVector<int>{data.Mode, data.DeviceIdValue, data.ArrowKeyMode, data.ShowKeyButton,
                               data.NoteSongUp, data.NoteSongDown, data.NoteLocate,
                               data.NoteDawPlay, data.NoteDawStop, data.MaxSongId}),
                 (QVector<int>{7, 0xb, 1, 0, 1, 2, 3, 200, -5, 9}));
        QCOMPARE((QStringList{data.MidiInPort, data.ShortcutMidiInPort, data.MidiOutPort}),
                 (QStringList{QStringLiteral(u"IAC \u30d0, \"1\""), QStringLiteral("@pad:0"),
                              QStringLiteral("out")}));
        QVERIFY(data.SendTextColor == QColor(0x12, 0xab, 0x34));
        QVERIFY(data.NextTextColor == QColor::fromHsv(0, 255, 1));
        data.DeviceId = QStringLiteral(" 0xb");
        const QString path = freshPath();
        data.writePreference(path);
        QCOMPARE(bytes(path), content);
    }

    void absentKeysKeepOptionalFieldsOnly()
    {
        EditData data;
        data.MidiOutPort = QStringLiteral("out");
        data.DeviceIdValue = 9;
        for (const QString& path :
             {fileWith("[General]\nNoteLocate=40\nDeviceId=zz\nno equals sign"), freshPath()}) {
            data.Mode = kModeStudioOneMarker;
            data.readPreference(path);
            QVERIFY(data.Mode == 0 && data.MidiOutPort.isEmpty() && data.DeviceIdValue == 9);
            QVERIFY(data.ShowKeyButton && !data.ArrowKeyMode);
            QCOMPARE((QVector<int>{data.NoteSongUp, data.NoteSongDown, data.NoteLocate,
                                   data.NoteDawPlay, data.NoteDawStop}),
                     (QVector<int>{28, 29, 40, 33, 35}));
            QVERIFY(data.SendTextColor == QColor(0xbb, 0, 0));
            QVERIFY(data.NextTextColor == QColor(0, 0, 0xbb));
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
        for (const char* text : {"", "nothing", "#zz", "1, 2", "@Invalid()", "@Rect(1 2 3 4)",
                                 R"(@Variant(\0\0\0\x43))", "@Variant(x", "777777777777"}) {
            data.readPreference(fileWith(
                QByteArray("[General]\nNextTextColor=#12ab34\nSendTextColor=") + text + '\n'));
            QVERIFY2(!data.SendTextColor.isValid(), text);
            QVERIFY(data.NextTextColor == QColor(0x12, 0xab, 0x34));
        }
    }

    void parsesDeviceId()
    {
        using Row = std::pair<const char*, int>;
        for (const auto& [text, value] :
             {Row("7f", 0x7f), Row("0X7F", 0x7f), Row(" \t\v7F", 0x7f), Row("5 6", 5),
              Row("1FF", 0xff), Row("123456789012345678900", 0), Row("+a", 10), Row("-1", 0xff),
              Row("-100", 0), Row("0x", 0), Row("0xg", 0), Row("0x0x5", 0)}) {
            const auto parsed = parseDeviceId(QString::fromLatin1(text));
            QVERIFY2(parsed && *parsed == value, text);
        }
        for (const char* text : {"", "  ", "zz", "x7f", "- 5", "+-5", "\uff17"}) {
            QVERIFY2(!parseDeviceId(QString::fromUtf8(text)), text);
        }
    }
};

VELT_TEST_MAIN(PreferenceFileTest)
#include "tst_preferencefile.moc"
