#include "DecimalNumber.h"

#include "TextFile.h"

#include <QString>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace DecimalNumber {
namespace {

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

bool matchesDecimalGrammar(std::string_view s)
{
    size_t i = 0;
    if (i < s.size() && (s[i] == '+' || s[i] == '-'))
        ++i;
    size_t digits = 0;
    while (i < s.size() && isDigit(s[i]))
        ++i, ++digits;
    if (i < s.size() && s[i] == '.') {
        ++i;
        while (i < s.size() && isDigit(s[i]))
            ++i, ++digits;
    }
    if (digits == 0)
        return false;
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
        ++i;
        if (i < s.size() && (s[i] == '+' || s[i] == '-'))
            ++i;
        size_t expDigits = 0;
        while (i < s.size() && isDigit(s[i]))
            ++i, ++expDigits;
        if (expDigits == 0)
            return false;
    }
    return i == s.size();
}

// Whether a decimal too large or too small for a double lies below 1 in
// magnitude (it then rounds to zero rather than failing): only the place of its
// first significant digit matters, so a clamped exponent is enough.
bool liesBelowOne(std::string_view s)
{
    size_t i = (s.front() == '+' || s.front() == '-') ? 1 : 0;
    long integerDigits = 0;
    for (; i < s.size() && isDigit(s[i]); ++i) {
        if (integerDigits > 0 || s[i] != '0')
            ++integerDigits;
    }
    long fractionZeros = 0;
    if (i < s.size() && s[i] == '.') {
        for (++i; i < s.size() && s[i] == '0'; ++i)
            ++fractionZeros;
    }
    while (i < s.size() && s[i] != 'e' && s[i] != 'E')
        ++i;
    long exponent = 0;
    if (i + 1 < s.size()) {
        const bool negative = s[i + 1] == '-';
        for (i += (s[i + 1] == '+' || negative) ? 2 : 1; i < s.size(); ++i)
            exponent = std::min(exponent * 10 + (s[i] - '0'), 1000000L);
        exponent = negative ? -exponent : exponent;
    }
    const long leading = integerDigits > 0 ? integerDigits - 1 : -(fractionZeros + 1);
    return leading + exponent < 0;
}

bool hasNonAscii(std::string_view text)
{
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

QString decoded(std::string_view text)
{
    return TextFile::decode(QByteArray(text.data(), qsizetype(text.size())));
}

// The text without Unicode white space at either end, as ASCII bytes; empty
// when what remains is not ASCII (no number is).
std::string asciiCore(QStringView text)
{
    const QStringView core = text.trimmed();
    std::string bytes(size_t(core.size()), '\0');
    for (qsizetype i = 0; i < core.size(); ++i) {
        if (core[i].unicode() >= 0x80)
            return {};
        bytes[size_t(i)] = char(core[i].unicode());
    }
    return bytes;
}

} // namespace

std::optional<double> toDouble(std::string_view text)
{
    std::string_view s = trimmed(text);
    if (!matchesDecimalGrammar(s))
        return hasNonAscii(text) ? toDouble(decoded(text)) : std::nullopt;
    const bool negative = s.front() == '-';
    if (s.front() == '+')
        s.remove_prefix(1);
    double value = 0;
    auto [end, error] = std::from_chars(s.data(), s.data() + s.size(), value);
    if (error == std::errc::result_out_of_range && liesBelowOne(s))
        return negative ? -0.0 : 0.0;
    if (error != std::errc() || end != s.data() + s.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::optional<double> toDouble(QStringView text) { return toDouble(asciiCore(text)); }

float toFloat(std::string_view text)
{
    const std::optional<double> value = toDouble(text);
    return value ? narrowToFloat(*value) : 0.0f;
}

float toFloat(QStringView text) { return toFloat(asciiCore(text)); }

int toInt(std::string_view text)
{
    std::string_view s = trimmed(text);
    if (!s.empty() && s.front() == '+' && !(s.size() > 1 && s[1] == '-'))
        s.remove_prefix(1);
    int value = 0;
    auto [end, error] = std::from_chars(s.data(), s.data() + s.size(), value);
    if (s.empty() || error != std::errc() || end != s.data() + s.size())
        return hasNonAscii(text) ? toInt(decoded(text)) : 0;
    return value;
}

int toInt(QStringView text) { return toInt(asciiCore(text)); }

int toTruncatedInt(QStringView text)
{
    const double value = std::trunc(double(toFloat(text)));
    if (value >= double(std::numeric_limits<int>::max()))
        return std::numeric_limits<int>::max();
    if (value <= double(std::numeric_limits<int>::min()))
        return std::numeric_limits<int>::min();
    return int(value);
}

} // namespace DecimalNumber
