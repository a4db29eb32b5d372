// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class AboutDialog;
}

// The about box: logo, name, version and notice, black on white whatever the desktop's colours are.
// The operator window builds one on the stack for each opening and runs it modally; it is closed by
// its title bar or the Escape key and keeps no state.
class AboutDialog : public QDialog
{
    Q_OBJECT

public:
    // Places the top-left corner at (x, y), in pixels of the screen; the size is the form's own.
    AboutDialog(int x, int y, QWidget* parent);
    ~AboutDialog() override;

private:
    std::unique_ptr<Ui::AboutDialog> ui;
};
