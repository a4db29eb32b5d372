// SPDX-License-Identifier: MIT
#pragma once

#include "servers.h"

#include <QTemporaryDir>
#include <QVariantList>
#include <QVector>

// What a screen reader sees of a program: its objects on the accessibility bus (AT-SPI 2).

// A session bus of its own, with the accessibility bus that belongs to it. Gone with the object.
class AccessibilityBus
{
public:
    explicit AccessibilityBus(const QString& display);
    ~AccessibilityBus();
    Q_DISABLE_COPY_MOVE(AccessibilityBus)

    bool isRunning() const { return reason.isEmpty(); }
    QString why() const { return reason; }
    // For the environment of programs that are to be read.
    QString sessionAddress() const { return address; }

private:
    QTemporaryDir runtime;
    ServerProcess session;
    QString address;
    QString reason;
};

class Accessible
{
public:
    // As AT-SPI numbers them.
    enum Role : uint {
        CheckBox = 7,
        ComboBox = 11,
        Desktop = 14,
        Graphic = 27,
        MenuItem = 35,
        PushButton = 43,
        RadioButton = 44,
        Table = 55,
        Text = 61
    };

    Accessible() = default;
    static Accessible desktop(); // Its children are the programs.

    bool isNull() const { return path.isEmpty(); }
    QString name() const;
    uint role() const;
    QString roleName() const;
    QVector<Accessible> children() const;
    QVector<Accessible> descendants() const;
    // The first of the descendants; null if there is none.
    Accessible find(Role wanted, const QString& wantedName) const;
    // Does not wait for what comes of it: the program may open a modal window.
    void press() const;

private:
    QVariantList call(const QString& interface, const QString& method,
                      const QVariantList& arguments = {}) const;

    QString service;
    QString path;
};

Q_DECLARE_METATYPE(Accessible::Role)
