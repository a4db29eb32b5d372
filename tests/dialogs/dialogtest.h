// SPDX-License-Identifier: MIT
#pragma once

#include "modalscript.h"
#include "operatorwindow.h"
#include "testcase.h"

#include <QLineEdit>

constexpr QMessageBox::StandardButtons kOkCancel = QMessageBox::Ok | QMessageBox::Cancel;

// Stands in for the operator window: writes down what a dialog asks of it.
class FakeWindow : public QWidget, public OperatorWindow
{
public:
    void setShowData() override { calls << "setShowData"; }
    void setPreferenceData() override { calls << "setPreferenceData"; }
    void midiReconnect() override { calls << "midiReconnect"; }

    QStringList calls;
};

// The texts of buttons, labels and group boxes in the order of the form.
inline QString texts(const QWidget& dialog)
{
    QStringList all;
    for (const auto* child : dialog.findChildren<QWidget*>()) {
        if (!qobject_cast<const QLineEdit*>(child)) {
            all << child->property("text").toString() << child->property("title").toString();
        }
    }
    all.removeAll({});
    return all.join(',');
}

// Answers the question that a dialog asks when it is closed with changes in it.
inline void answerSaveQuestion(ModalScript& script, QMessageBox::StandardButton answer)
{
    script.answerQuestion("Contents have been changed. Do you want to save changes?",
                          QMessageBox::Save | QMessageBox::No | QMessageBox::Cancel, answer);
}
