// SPDX-License-Identifier: MIT
#include "serialisedvalues.h"

#include <QRegularExpression>

#include <algorithm>
#include <climits>
#include <cstdlib>

namespace {

// Quoted texts, escapes and comments: a '=' or ',' in them does not begin a value.
const QString kNoSeparators =
    QStringLiteral(R"("[^"\\]*+(?:\\[\s\S][^"\\]*+)*+(?:"|$)|\\(?:\r\n|\n\r|[\s\S])|;[^\r\n]*)");

// Escapes without a meaning and byte order marks, which QSettings skips.
const QString kSkipped =
    QStringLiteral(R"((?:\xef\xbb\xbf|\\(?:\r\n|\n\r|x(?![0-9A-Fa-f])|[^0-7xabfnrtv"?'\\]))*+)");

// What QSettings skips at the start of a value: also blanks and quotes, but no quoted blanks.
const QString kStart = QStringLiteral(R"([ \t]*+(?:%1"%1"[ \t]*+)*+%1"?+%1)").arg(kSkipped);

// An @ and its escapes. QSettings takes the lowest 16 bits of their numbers.
const QString kAt = QStringLiteral(R"((?:@|\\x(?:[0-9A-Fa-f]*00|0?)40(?![0-9A-Fa-f]))"
                                   R"(|\\(?:[0-7]*[0246]00|0{0,2})100(?![0-7])))");

// What may follow: a further @, no value, a text with a NUL, or a colour as QSettings writes it.
const QString kHarmless = QStringLiteral(
    R"(@|Invalid\(\)|String\(|Variant\(\\0\\0\\0\\x43(?:\\0|\\x[1-5])(?![0-9A-Fa-f]))");

// False only if no value starts with an @. Spares most files the search for them, which takes
// longer than this.
bool mayHaveSerialisedValues(const QByteArray& content)
{
    if (content.contains('@')) {
        return true;
    }
    const char* at = content.constData();
    const char* const end = at + content.size(); // A NUL, which ends every number.
    while ((at = std::find(at, end, '\\')) != end) {
        const char code = *++at;
        if (code == 'x' || (code >= '0' && code <= '7')) {
            const bool isHex = code == 'x';
            const auto number = std::strtoul(isHex ? at + 1 : at, nullptr, isHex ? 16 : 8);
            if (number % 0x10000 == '@' || number == ULONG_MAX) { // Or too large to tell.
                return true;
            }
        }
    }
    return false;
}

} // namespace

QByteArray escapeSerialisedValues(QByteArray content)
{
    if (!mayHaveSerialisedValues(content)) {
        return content;
    }
    static const QRegularExpression separator(
        QStringLiteral("(?:%1)(*SKIP)(*FAIL)|([=,])(?=%2%3(?!%4))")
            .arg(kNoSeparators, kStart, kAt, kHarmless));
    QString text = QLatin1String(content.constData(), content.size());
    return text.replace(separator, QStringLiteral("\\1@"))
        .toLatin1(); // A doubled @ is an @ of a text.
}
