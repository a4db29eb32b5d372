// SPDX-License-Identifier: MIT
#include "serialisedvalues.h"

#include "hexdigit.h"

#include <cstring>
#include <string_view>

namespace {

// How the settings class writes the type of a colour, behind "@Variant(".
constexpr char kColorType[] = R"(\0\0\0\x43)";
constexpr int kColorTypeSize = sizeof(kColorType) - 1;

// Behind a backslash, besides those of numbers.
constexpr std::string_view kMeaningfulEscapes = "abfnrtv\"?'\\";

bool isLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

// True if a line end of two characters is at `at`.
bool isLongLineEnd(const QByteArray& content, int at)
{
    return at + 1 < content.size() && isLineEnd(content.at(at)) && isLineEnd(content.at(at + 1)) &&
           content.at(at) != content.at(at + 1);
}

// Goes through the characters of a value as an INI file spells them: as themselves, as escapes, and
// with quotes and escapes without a meaning between them. Blanks in front, and behind quotes, are
// none of the value's.
class SpelledText
{
public:
    SpelledText(const QByteArray& file, int start) : content(file), at(start) { skipBlanks(); }

    // The next character, or 0 at the end of the file and of those with an escape of their own.
    char16_t next()
    {
        while (at < content.size()) {
            const char c = content.at(at++);
            if (c == '\\' && at < content.size()) {
                if (const auto meant = escaped()) {
                    return *meant;
                }
            } else if (c != '"') {
                return static_cast<unsigned char>(c);
            } else if (isQuoted = !isQuoted; !isQuoted) {
                skipBlanks();
            }
        }
        return 0;
    }

    bool startsWith(const char* text)
    {
        for (; *text != 0; ++text) {
            if (next() != static_cast<unsigned char>(*text)) {
                return false;
            }
        }
        return true;
    }

    [[nodiscard]] int position() const { return at; }

private:
    void skipBlanks()
    {
        while (at < content.size() && (content.at(at) == ' ' || content.at(at) == '\t')) {
            ++at;
        }
    }

    // What a backslash and the characters behind it stand for, if for anything.
    std::optional<char16_t> escaped()
    {
        if (isDigit(8)) {
            return number(8);
        }
        const char c = content.at(at);
        at += isLongLineEnd(content, at) ? 2 : 1;
        if (c == 'x' && isDigit(16)) {
            return number(16);
        }
        if (kMeaningfulEscapes.find(c) != std::string_view::npos) {
            return 0;
        }
        return std::nullopt;
    }

    [[nodiscard]] bool isDigit(int base) const
    {
        const int digit = at < content.size() ? hexDigitValue(content.at(at)) : -1;
        return digit >= 0 && digit < base;
    }

    // Of a number that is too large for a character, the settings class takes the lowest bits.
    char16_t number(int base)
    {
        char16_t value = 0;
        for (; isDigit(base); ++at) {
            value = static_cast<char16_t>(value * base + hexDigitValue(content.at(at)));
        }
        return value;
    }

    const QByteArray& content;
    int at;
    bool isQuoted = false;
};

bool isColor(const QByteArray& content, int at)
{
    const int end = at + kColorTypeSize;
    return content.size() > end && hexDigitValue(content.at(end)) < 0 &&
           std::strncmp(content.data() + at, kColorType, kColorTypeSize) == 0;
}

bool isHarmful(const QByteArray& content, int start)
{
    SpelledText value(content, start);
    if (value.next() != '@') {
        return false;
    }
    SpelledText other = value;
    return other.startsWith("DateTime(") ||
           (value.startsWith("Variant(") && !isColor(content, value.position()));
}

// Calls `visit` with the position of each value, and of each further member of a list of values: of
// what is behind the first = of a line, and behind commas from there on. In quotes and comments,
// and behind backslashes, no such sign has a meaning.
template <typename Visit>
void forEachValue(const QByteArray& content, Visit visit)
{
    bool isQuoted = false;
    bool isKey = true;
    for (int at = 0; at < content.size(); ++at) {
        const char c = content.at(at);
        if (c == '\\') {
            at += isLongLineEnd(content, at + 1) ? 2 : 1;
        } else if (c == '"') {
            isQuoted = !isQuoted;
        } else if (isQuoted) {
            continue;
        } else if (c == ';') {
            while (at + 1 < content.size() && !isLineEnd(content.at(at + 1))) {
                ++at;
            }
        } else if (isLineEnd(c)) {
            isKey = true;
        } else if (c == (isKey ? '=' : ',')) {
            isKey = false;
            visit(at + 1);
        }
    }
}

} // namespace

std::optional<QByteArray> defuseSerialisedValues(const QByteArray& content)
{
    QByteArray result;
    int copied = 0;
    forEachValue(content, [&](int start) {
        if (isHarmful(content, start)) {
            result.append(content.mid(copied, start - copied));
            result.append('@'); // A doubled @ stands for one in a text.
            copied = start;
        }
    });
    if (copied == 0) {
        return std::nullopt;
    }
    return result.append(content.mid(copied));
}
