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

ProgressBar::~ProgressBar() { clear(); }

void ProgressBar::clear()
{
    if (m_enabled && m_shown >= 0)
        std::fputs("\r\033[K", stderr);
    m_shown = -1;
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
    // The shortest exact digits come from the scientific form "d.ddde±x".
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific);
    const QLatin1StringView scientific(buffer, result.ptr);
    const qsizetype e = scientific.indexOf(QLatin1Char('e'));
    const int exponent = QString(scientific.sliced(e + 1)).toInt();
    const bool negative = value < 0 || (value == 0 && std::signbit(value));
    QString digits = QString(scientific.first(e)).remove(QLatin1Char('.')).remove(QLatin1Char('-'));

    QString text = negative ? QStringLiteral("-") : QString();
    if (exponent < -4 || exponent >= 16) {
        text += digits.front();
        if (digits.size() > 1)
            text += QLatin1Char('.') + digits.sliced(1);
        text += QStringLiteral("e%1%2")
                    .arg(exponent < 0 ? '-' : '+')
                    .arg(std::abs(exponent), 2, 10, QLatin1Char('0'));
    } else if (exponent < 0) {
        text += QStringLiteral("0.") + QString(-exponent - 1, QLatin1Char('0')) + digits;
    } else if (digits.size() <= exponent + 1) {
        text += digits + QString(exponent + 1 - digits.size(), QLatin1Char('0')) + QStringLiteral(".0");
    } else {
        text += digits.first(exponent + 1) + QLatin1Char('.') + digits.sliced(exponent + 1);
    }
    return text;
}
