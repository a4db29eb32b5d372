// SPDX-License-Identifier: MIT
#include "portnames.h"

#include <QRegularExpression>

namespace {

QString withoutNumbers(QString name)
{
    static const QRegularExpression numbers(QStringLiteral(" [0-9]+:[0-9]+\\z"));
    return name.remove(numbers);
}

QStringList withoutNumbers(QStringList names)
{
    for (QString& name : names) {
        name = withoutNumbers(name);
    }
    return names;
}

} // namespace

QStringList shownPortNames(RtMidi::Api api, const QStringList& names)
{
    if (api != RtMidi::LINUX_ALSA) {
        return names;
    }
    const QStringList bare = withoutNumbers(names);
    QStringList shown;
    for (int i = 0; i < names.size(); ++i) {
        shown += bare.count(bare[i]) == 1 ? bare[i] : names[i];
    }
    return shown;
}

int indexOfPort(RtMidi::Api api, const QStringList& names, const QString& stored)
{
    const auto exact = static_cast<int>(shownPortNames(api, names).indexOf(stored));
    if (exact != -1 || api != RtMidi::LINUX_ALSA) {
        return exact;
    }
    const QStringList bare = withoutNumbers(names);
    const auto duplicate = bare.indexOf(stored);
    return static_cast<int>(duplicate != -1 ? duplicate : bare.indexOf(withoutNumbers(stored)));
}
