#include "DecimalNumber.h"

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

} // namespace

std::optional<double> toDouble(std::string_view text)
{
    std::string_view s = trimmed(text);
    if (!matchesDecimalGrammar(s))
        return std::nullopt;
    if (s.front() == '+')
        s.remove_prefix(1);
    double value = 0;
    auto [end, error] = std::from_chars(s.data(), s.data() + s.size(), value);
    if (error != std::errc() || end != s.data() + s.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

float toFloat(std::string_view text)
{
    const std::optional<double> value = toDouble(text);
    return value ? narrowToFloat(*value) : 0.0f;
}

int toInt(std::string_view text)
{
    std::string_view s = trimmed(text);
    if (!s.empty() && s.front() == '+' && !(s.size() > 1 && s[1] == '-'))
        s.remove_prefix(1);
    int value = 0;
    auto [end, error] = std::from_chars(s.data(), s.data() + s.size(), value);
    if (s.empty() || error != std::errc() || end != s.data() + s.size())
        return 0;
    return value;
}

int toTruncatedInt(std::string_view text)
{
    const double value = std::trunc(double(toFloat(text)));
    if (value >= double(std::numeric_limits<int>::max()))
        return std::numeric_limits<int>::max();
    if (value <= double(std::numeric_limits<int>::min()))
        return std::numeric_limits<int>::min();
    return int(value);
}

} // namespace DecimalNumber
