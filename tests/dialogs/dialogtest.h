// SPDX-License-Identifier: MIT
#pragma once

#include "modalscript.h"
#include "operatorwindow.h"
#include "testcase.h"

#include <QWidget>

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

// Answers the question that a dialog asks when it is closed with changes in it.
inline void answerSaveQuestion(ModalScript& script, QMessageBox::StandardButton answer)
{
    script.answerQuestion("Contents have been changed. Do you want to save changes?",
                          QMessageBox::Save | QMessageBox::No | QMessageBox::Cancel, answer);
}
