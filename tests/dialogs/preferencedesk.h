// SPDX-License-Identifier: MIT
#pragma once

#include "datafiles.h"
#include "dialogtest.h"
#include "editdata.h"
#include "preferencedialog.h"

#include <QComboBox>
#include <QFile>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>

const QStringList kConfirmed{"setPreferenceData", "midiReconnect"};

// The dialog over new data, with no preference file, as the operator window has it.
struct PreferenceDesk
{
    EditData data;
    FakeWindow owner;
    PreferenceDialog dialog;

    explicit PreferenceDesk(QMidiIn* in = nullptr, QMidiIn* controller = nullptr,
                            QMidiOut* out = nullptr)
        : dialog(&data, in, controller, out, &owner)
    {
        QFile::remove(preferenceFilePath());
    }

    template <class Widget = QWidget>
    Widget* find(const char* name) const
    {
        return dialog.findChild<Widget*>(name);
    }
    void click(const char* button) const { find<QAbstractButton>(button)->click(); }

    // Opens the dialog as the operator window does, acts, and leaves by Escape what is still open.
    template <class Act>
    void open(const Act& act)
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
