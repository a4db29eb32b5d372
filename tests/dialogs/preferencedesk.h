// SPDX-License-Identifier: MIT
#pragma once

#include "../app/fakemidi.h"
#include "datafiles.h"
#include "dialogtest.h"
#include "editdata.h"
#include "preferencedialog.h"
#include "qmidiin.h"
#include "qmidiout.h"

#include <QComboBox>
#include <QFile>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>

#include <functional>

// The dialog over new data, with no preference file, on a MIDI system with "First" and "Second".
struct PreferenceDesk
{
    EditData data;
    QMidiIn in;
    QMidiIn controller;
    QMidiOut out;
    FakeWindow owner;
    PreferenceDialog dialog{&data, &in, &controller, &out, &owner};

    PreferenceDesk()
    {
        data.MidiInPort = data.MidiOutPort = "First";
        QFile::remove(preferenceFilePath());
    }

    template <class Widget = QWidget>
    Widget* find(const char* name) const
    {
        return dialog.findChild<Widget*>(name);
    }
    void click(const char* button) const { find<QAbstractButton>(button)->click(); }

    // Opens the dialog as the operator window does, acts, and leaves by Escape what is still open.
    void open(const std::function<void()>& act)
    {
        dialog.setDispFromEdit();
        QTimer::singleShot(0, &dialog, [&] {
            QVERIFY(QTest::qWaitForWindowActive(&dialog));
            act();
            dialog.reject();
        });
        dialog.exec();
    }
};
