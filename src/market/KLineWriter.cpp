#include "KLineWriter.h"

#include "DecimalNumber.h"

#include <charconv>

namespace KLineWriter {
namespace {

void appendNumber(QByteArray &out, float value)
{
    char digits[64];
    auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed).ptr;
    // Text is read through a double; where the shortest float digits would
    // round differently that way, the double's own digits are exact.
    if (DecimalNumber::toFloat(std::string_view(digits, size_t(end - digits))) != value)
        end = std::to_chars(digits, digits + sizeof digits, double(value)).ptr;
    out.append('"').append(digits, end - digits).append('"');
}

} // namespace

QByteArray text(StockBars bars)
{
    QByteArray out;
    out.reserve(qsizetype(bars.size()) * 64 + 4);
    out.append('[');
    for (const Stock &bar : bars) {
        out.append(out.size() == 1 ? "[\"" : ",[\"");
        out.append(bar.date.data(), qsizetype(bar.date.size())).append("\",");
        for (const float value : {bar.open, bar.close, bar.high, bar.low, bar.volume}) {
            appendNumber(out, value);
            out.append(',');
        }
        out.back() = ']';
    }
    return out.append(']');
}

} // namespace KLineWriter
