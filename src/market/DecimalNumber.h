#pragma once

#include <optional>
#include <string_view>

// Number conversion of every text the program reads (K-line fields, config
// values, script arguments). Surrounding white space is ignored; only a plain
// finite decimal "[+-](d+[.d*]|.d+)([eE][+-]d+)?" converts, correctly rounded.
namespace DecimalNumber {

std::optional<double> toDouble(std::string_view text);

// The decimal rounded to a double, then to a float; 0 when it does not convert
// or lies beyond the float range.
float toFloat(std::string_view text);

// Base-10 integer with optional sign; 0 for anything else or beyond 32 bits.
int toInt(std::string_view text);

// Integer keys of the configuration: read as a float, truncated toward zero,
// saturated at the 32-bit range.
int toTruncatedInt(std::string_view text);

// The fast path used by the K-line parser: converts the decimal starting at
// `begin` when it ends at `end` or at a byte that cannot continue a number, and
// returns where it stopped; nullptr when the text needs the general path.
const char *scanSimpleFloat(const char *begin, const char *end, float &out);

float narrowToFloat(double value);

} // namespace DecimalNumber
