// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <optional>

// Takes the content of an INI file and makes plain texts of the serialised values in it, save
// colours. The toolkit's settings class believes what such a value says of its type, its length and
// its depth, so that a damaged one ends the program; the program's own files have colours only.
// Nothing if the content has no such values.
std::optional<QByteArray> defuseSerialisedValues(const QByteArray& content);
