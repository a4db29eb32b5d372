// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QScopedValueRollback>

class OperatorWindow;

// What the editor and the preferences share: a dialog that edits the shared data in place, knows
// whether there are unsaved changes, and asks before it is closed with them. Main thread only.
class SavingDialog : public QDialog
{
protected:
    // The operator window is found in `parent`; where that is none, the calls to it are left out.
    explicit SavingDialog(QWidget* parent);

    // Stores and writes the changes, and tells the operator window.
    virtual void save() = 0;

    // Asks whether changes are to be saved; Cancel keeps the dialog open.
    void closeEvent(QCloseEvent* event) override;
    void saveAndClose();
    void closeWithoutQuestion();

    // Runs `work`, which changes widgets. Slots that the widgets' signals call meanwhile do
    // nothing, since each does its work in changeWidgets() or edit() too: what follows from a
    // change, such as which buttons are enabled, `work` does itself.
    template <typename Work>
    void changeWidgets(const Work& work)
    {
        if (!isUpdating) {
            const QScopedValueRollback<bool> updating(isUpdating, true);
            work();
        }
    }

    // The same for the user's changes: `work` returns whether it has changed anything.
    template <typename Work>
    void edit(const Work& work)
    {
        changeWidgets([&] { isChanged = work() || isChanged; });
    }

    OperatorWindow* parentWindow; // Null if the parent is none.
    bool isUpdating = false;
    bool isChanged = false; // There are changes that no file has.
};
