// SPDX-License-Identifier: MIT
#pragma once

#include "datafiles.h"
#include "editdata.h"
#include "modalscript.h"
#include "operatorwindow.h"
#include "preferencedialog.h"
#include "testcase.h"

#include <QColorDialog>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>

#include <functional>

inline QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The operator window: it writes down what it is asked, and whether the file was there by then.
class FakeWindow : public QWidget, public OperatorWindow
{
public:
    void setShowData() override { calls += QStringLiteral("setShowData "); }
    void setPreferenceData() override
    {
        calls += contents(preferenceFilePath()).isEmpty() ? QStringLiteral("no file ") : QString();
        calls += QStringLiteral("setPreferenceData ");
    }
    void midiReconnect() override { calls += QStringLiteral("midiReconnect "); }

    QString calls;
};

const QString kConfirmed = QStringLiteral("setPreferenceData midiReconnect ");

// The dialog over data of its own and with no preference file, as the operator window has it.
struct PreferenceDesk
{
    EditData data;
    FakeWindow owner;
    PreferenceDialog dialog;

    explicit PreferenceDesk(QMidiIn* in = nullptr, QMidiIn* controller = nullptr,
                            QMidiOut* out = nullptr)
        : dialog(&data, in, controller, out, &owner)
    {
        reset();
    }
    void reset()
    {
        data = EditData();
        owner.calls.clear();
        QFile::remove(preferenceFilePath());
    }

    template <class Widget = QWidget>
    Widget* find(const char* name) const
    {
        return dialog.findChild<Widget*>(QLatin1String(name));
    }
    void click(const char* button) const { find<QAbstractButton>(button)->click(); }
    [[nodiscard]] QComboBox* noteBox(int row, int column) const
    {
        auto* table = find<QTableWidget>("tableMidiCont");
        return qobject_cast<QComboBox*>(table->cellWidget(row, column));
    }

    // Clicks a colour button and picks a colour, or leaves the chooser if the colour is invalid.
    void chooseColor(const char* button, const QColor& initial, const QColor& colour) const
    {
        ModalScript script;
        script.expect([&](QWidget* window) {
            auto* chooser = qobject_cast<QColorDialog*>(window);
            QVERIFY(chooser);
            QCOMPARE(chooser->options(), QColorDialog::ColorDialogOptions());
            QCOMPARE(chooser->currentColor(), initial);
            if (colour.isValid()) {
                chooser->setCurrentColor(colour);
            }
            QTest::keyClick(chooser, colour.isValid() ? Qt::Key_Return : Qt::Key_Escape);
        });
        click(button);
    }

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

using DeskAct = std::function<void(PreferenceDesk&)>;
Q_DECLARE_METATYPE(DeskAct)
