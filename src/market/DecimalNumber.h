#pragma once

#include <QStringView>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

// Number conversion of every text the program reads (K-line fields, config
// values, script arguments). Surrounding white space is ignored, Unicode's
// included (the ideographic space of Chinese input methods); only a plain
// decimal "[+-](d+[.d*]|.d+)([eE][+-]d+)?" converts, correctly rounded, and it
// must not overflow a double (one too small for the smallest double reads 0).
// Byte texts with anything beyond ASCII are decoded first; pure ASCII never is.
namespace DecimalNumber {

std::optional<double> toDouble(std::string_view text);
std::optional<double> toDouble(QStringView text);

// The decimal rounded to a double, then to a float; 0 when it does not convert
// or lies beyond the float range.
float toFloat(std::string_view text);
float toFloat(QStringView text);

// Base-10 integer with optional sign; 0 for anything else or beyond 32 bits.
int toInt(std::string_view text);
int toInt(QStringView text);

// Integer keys of the configuration: read as a float, truncated toward zero,
// saturated at the 32-bit range.
int toTruncatedInt(QStringView text);

// A double as a float, or 0 beyond the float range or where it underflows.
inline float narrowToFloat(double value)
{
    if (std::fabs(value) > double(std::numeric_limits<float>::max()))
        return 0;
    const float narrowed = float(value);
    return value != 0 && narrowed == 0 ? 0.0f : narrowed;
}

// A decimal given by its digits and how many of them follow the point, read
// exactly as the same digits written out as text are: with a mantissa below
// 2^53 and at most 22 fraction digits, one division by an exact power of ten
// is correctly rounded. Binary day files (prices in cents) come through here,
// so 1055 cents and "10.55" give the same float.
inline float fromDigits(uint64_t mantissa, int fractionDigits, bool negative = false)
{
    static constexpr double kPow10[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                        1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                        1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    // Whole numbers (volumes) need no division: by 1 it changes nothing.
    const double value = fractionDigits ? double(mantissa) / kPow10[fractionDigits] : double(mantissa);
    // Below 2^64 and, unless 0, above 1e-22: always inside the float range and
    // never rounding to 0, so the narrowing needs none of narrowToFloat's checks.
    return float(negative ? -value : value);
}

// The most bytes scanSimpleFloat reads from `begin` when the text goes on:
// a sign, 19 digits (one more than it converts), a point and the byte behind.
inline constexpr ptrdiff_t kSimpleFloatReach = 22;

// The fast path used by the K-line parser: converts the decimal starting at
// `begin` when it ends at `end` or at a byte that cannot continue a number, and
// returns where it stopped; nullptr when the text needs the general path.
// With `kCheckEnd` false the caller vouches that at least kSimpleFloatReach
// bytes follow `begin`, and no byte is compared with `end`.
template <bool kCheckEnd = true>
inline const char *scanSimpleFloat(const char *begin, const char *end, float &out)
{
    const auto isDigit = [](char c) { return unsigned(c - '0') < 10; };
    const auto more = [end](const char *p) { return !kCheckEnd || p < end; };
    // Nothing with more than 18 digits converts here, so the 19th ends the
    // reading; one bound per digit then serves for that and for the text's end.
    const auto digitsAtMost = [end](const char *p, ptrdiff_t count) {
        return kCheckEnd ? std::min(end - p, count) : count;
    };
    constexpr ptrdiff_t kDigitsRead = 19;
    const char *p = begin;
    const bool negative = more(p) && *p == '-';
    if (more(p) && (*p == '-' || *p == '+'))
        ++p;
    uint64_t mantissa = 0;
    const char *start = p;
    for (const char *limit = p + digitsAtMost(p, kDigitsRead); p < limit && isDigit(*p); ++p)
        mantissa = mantissa * 10 + uint64_t(*p - '0');
    ptrdiff_t digits = p - start;
    ptrdiff_t fractionDigits = 0;
    if (more(p) && *p == '.') {
        start = ++p;
        for (const char *limit = p + digitsAtMost(p, kDigitsRead - digits); p < limit && isDigit(*p); ++p)
            mantissa = mantissa * 10 + uint64_t(*p - '0');
        fractionDigits = p - start;
        digits += fractionDigits;
    }
    if (digits == 0 || digits > 18 || mantissa > (uint64_t(1) << 53))
        return nullptr;
    if (more(p) && (*p == '.' || *p == 'e' || *p == 'E' || *p == ' ' || (*p >= '\t' && *p <= '\r')))
        return nullptr;
    out = fromDigits(mantissa, int(fractionDigits), negative);
    return p;
}

} // namespace DecimalNumber
