#include "CliOutput.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace CliOutput {

void out(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
}

void err(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
}

ProgressBar::ProgressBar() : m_enabled(isatty(STDERR_FILENO)) {}

ProgressBar::~ProgressBar()
{
    if (m_enabled && m_shown >= 0)
        std::fputs("\r\033[K", stderr);
}

void ProgressBar::show(int percent)
{
    if (!m_enabled || percent == m_shown)
        return;
    m_shown = percent;
    constexpr int kWidth = 40;
    const int filled = percent * kWidth / 100;
    std::fprintf(stderr, "\r[%s%s] %3d%%", std::string(size_t(filled), '#').c_str(),
                 std::string(size_t(kWidth - filled), '.').c_str(), percent);
    std::fflush(stderr);
}

} // namespace CliOutput

QString shortestReal(double value)
{
    if (std::isnan(value))
        return QStringLiteral("nan");
    if (std::isinf(value))
        return value > 0 ? QStringLiteral("inf") : QStringLiteral("-inf");
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific);
    const std::string scientific(buffer, result.ptr);
    const size_t e = scientific.find('e');
    const int exponent = std::atoi(scientific.c_str() + e + 1);
    const bool negative = scientific[0] == '-';
    std::string digits;
    for (size_t i = negative ? 1 : 0; i < e; ++i) {
        if (scientific[i] != '.')
            digits += scientific[i];
    }
    std::string text = negative ? "-" : "";
    if (exponent < -4 || exponent >= 16) {
        text += digits.substr(0, 1);
        if (digits.size() > 1)
            text += "." + digits.substr(1);
        char exponentText[16];
        std::snprintf(exponentText, sizeof exponentText, "e%c%02d", exponent < 0 ? '-' : '+', std::abs(exponent));
        text += exponentText;
    } else if (exponent < 0) {
        text += "0." + std::string(size_t(-exponent - 1), '0') + digits;
    } else {
        const size_t whole = size_t(exponent) + 1;
        if (digits.size() <= whole)
            text += digits + std::string(whole - digits.size(), '0') + ".0";
        else
            text += digits.substr(0, whole) + "." + digits.substr(whole);
    }
    return QString::fromStdString(text);
}
