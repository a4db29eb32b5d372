// SPDX-License-Identifier: MIT
#include "runcontrols.h"

#include "run.h"

#include <QCoreApplication>

namespace {

constexpr int kControlPoints = 10;
constexpr int kShowPoints = 12;
constexpr int kFewCharacters = 10;

QString translated(const char* text)
{
    return QCoreApplication::translate("MainWindow", text);
}

template <typename Widget>
Widget* withFont(Widget* widget, int points, bool isBold)
{
    QFont font = widget->font();
    font.setPointSize(points);
    font.setBold(isBold);
    widget->setFont(font);
    return widget;
}

ExPushButton* makeButton(QMainWindow* window, const QString& text)
{
    auto* button = withFont(new ExPushButton(window), kControlPoints, false);
    button->setText(text);
    return button;
}

} // namespace

RunControls::RunControls(QMainWindow* window)
    : comboMode(withFont(new ExComboBox(window), kControlPoints, false)),
      pushReset(makeButton(window, translated(QT_TRANSLATE_NOOP("MainWindow", "Reset")))),
      // The focus rule of this button goes by its text, which therefore stays untranslated.
      pushEdit(makeButton(window, QStringLiteral("Edit"))),
      pushPreference(makeButton(window, translated(QT_TRANSLATE_NOOP("MainWindow", "Pref.")))),
      comboShowList(withFont(new ShowSelector(window), kShowPoints, true))
{
    comboMode->addItems(
        {QStringLiteral("Manual"), QStringLiteral("AutoStop"), QStringLiteral("AutoLocate")});
    comboMode->setCurrentIndex(AUTO_LOCATE);
    comboMode->setAccessibleName(translated(QT_TRANSLATE_NOOP("MainWindow", "Run mode")));
    pushReset->setFocusPolicy(Qt::TabFocus); // As the send buttons.
    pushReset->setEnabled(false);
    comboShowList->setAccessibleName(translated(QT_TRANSLATE_NOOP("MainWindow", "Show")));
    // The window can be narrower than the longest title.
    comboShowList->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    comboShowList->setMinimumContentsLength(kFewCharacters);

    addStretch();
    addWidget(comboMode);
    addSpacing(10);
    addWidget(pushReset);
    addWidget(pushEdit);
    addWidget(pushPreference);
}

void RunControls::setRunning(bool isRunning)
{
    pushEdit->setEnabled(!isRunning);
    pushPreference->setEnabled(!isRunning);
    pushReset->setEnabled(isRunning);
    comboShowList->setEnabled(!isRunning);
}

bool RunControls::hasFocusFlag() const
{
    return comboMode->hasFocusFlag() || pushReset->hasFocusFlag() || pushEdit->hasFocusFlag() ||
           pushPreference->hasFocusFlag() || comboShowList->hasFocusFlag();
}
