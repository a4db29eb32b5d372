// SPDX-License-Identifier: MIT
#include "portnames.h"
#include "testcase.h"

Q_DECLARE_METATYPE(RtMidi::Api)

class TestPortNames : public TestCase
{
    Q_OBJECT

private slots:
    void shown_data()
    {
        QTest::addColumn<RtMidi::Api>("api");
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QStringList>("shown");
        QTest::newRow("ALSA") << RtMidi::LINUX_ALSA
                              << QStringList{"DAW:notes 129:0", "Pad 2:1 20:15"}
                              << QStringList{"DAW:notes", "Pad 2:1"};
        QTest::newRow("two of one name")
            << RtMidi::LINUX_ALSA << QStringList{"Pad:in 20:0", "DAW:notes 129:0", "Pad:in 24:0"}
            << QStringList{"Pad:in 20:0", "DAW:notes", "Pad:in 24:0"};
        const QStringList like{"DAW:notes 129:0", "system:midi 1:2"};
        QTest::newRow("JACK") << RtMidi::UNIX_JACK << like << like;
        QTest::newRow("CoreMIDI") << RtMidi::MACOSX_CORE << like << like;
    }
    void shown()
    {
        QFETCH(RtMidi::Api, api);
        QFETCH(QStringList, names);
        QTEST(shownPortNames(api, names), "shown");
    }

    void indexOfStored_data()
    {
        QTest::addColumn<RtMidi::Api>("api");
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<int>("index");
        const auto alsa = [](const char* row, const QStringList& names, const char* stored,
                             int index) {
            QTest::newRow(row) << RtMidi::LINUX_ALSA << names << stored << index;
        };
        const QStringList one{"Midi Through:Port-0 14:0", "DAW:notes 129:0"};
        alsa("as shown", one, "DAW:notes", 1);
        alsa("numbers of another day", one, "DAW:notes 131:0", 1);
        alsa("another case", one, "daw:notes", -1);
        alsa("numbers of another form", one, "DAW:notes 129:0 ", -1);
        const QStringList two{"Pad:in 20:0", "Pad:in 24:0", "Pad:in 2:1 28:0"};
        alsa("one of two", two, "Pad:in 24:0", 1);
        alsa("one of two without numbers", two, "Pad:in", 0);
        alsa("one of two by other numbers", two, "Pad:in 32:0", 0);
        alsa("a name that ends like numbers", two, "Pad:in 2:1", 2);
        QTest::newRow("JACK, other numbers") << RtMidi::UNIX_JACK << one << "DAW:notes 131:0" << -1;
        QTest::newRow("JACK, without numbers") << RtMidi::UNIX_JACK << one << "DAW:notes" << -1;
        QTest::newRow("JACK, first of two")
            << RtMidi::UNIX_JACK << QStringList{"a:b", "c:d", "c:d"} << "c:d" << 1;
    }
    void indexOfStored()
    {
        QFETCH(RtMidi::Api, api);
        QFETCH(QStringList, names);
        QFETCH(QString, stored);
        QTEST(indexOfPort(api, names, stored), "index");
    }
};

VELT_TEST_MAIN(TestPortNames)
#include "tst_portnames.moc"
