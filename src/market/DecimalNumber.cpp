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

// Exact powers of ten a double holds; with a mantissa below 2^53 one division
// or multiplication by them is correctly rounded.
constexpr double kPow10[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                             1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr uint64_t kExactMantissa = uint64_t(1) << 53;

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

float narrowToFloat(double value)
{
    if (std::fabs(value) > std::numeric_limits<float>::max())
        return 0;
    const float narrowed = float(value);
    if (value != 0 && narrowed == 0) // underflow reads as a failed conversion
        return 0;
    return narrowed;
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

const char *scanSimpleFloat(const char *begin, const char *end, float &out)
{
    const char *p = begin;
    const bool negative = p < end && *p == '-';
    if (p < end && (*p == '-' || *p == '+'))
        ++p;
    uint64_t mantissa = 0;
    int digits = 0;
    while (p < end && isDigit(*p)) {
        mantissa = mantissa * 10 + uint64_t(*p - '0');
        ++digits, ++p;
    }
    int fractionDigits = 0;
    if (p < end && *p == '.') {
        ++p;
        while (p < end && isDigit(*p)) {
            mantissa = mantissa * 10 + uint64_t(*p - '0');
            ++digits, ++fractionDigits, ++p;
        }
    }
    if (digits == 0 || digits > 18 || mantissa > kExactMantissa || fractionDigits > 22)
        return nullptr;
    if (p < end && (isDigit(*p) || *p == '.' || *p == 'e' || *p == 'E' || isSpace(*p)))
        return nullptr;
    double value = double(mantissa) / kPow10[fractionDigits];
    out = narrowToFloat(negative ? -value : value);
    return p;
}

} // namespace DecimalNumber
