// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QMidiMessage;
class QWidget;

// The place where a mapping of MIDI messages to a widget connects: its slots take a mapping state,
// the widget and the messages of an input port, and none of them does anything. A subclass or a
// later mapper gives them a meaning.
class QMidiMapper : public QObject
{
    Q_OBJECT

public:
    explicit QMidiMapper(QObject* parent = nullptr);

public slots: // NOLINT(readability-redundant-access-specifiers): not to Qt
    void setMappingState(bool value);
    void setWidget(QWidget* widget);
    void onMidiMessageReceive(QMidiMessage* message);
};
