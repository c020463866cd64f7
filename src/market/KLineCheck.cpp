#include "KLineCheck.h"

#include "KLineParser.h"
#include "StockSkip.h"
#include "TextFile.h"

#include <array>
#include <cmath>

namespace {

constexpr double kLargestPlausibleJump = 30.0;

// A date fit for a terminal line: control characters shown as "?".
QString printableDate(std::string_view date)
{
    QString text = TextFile::decodeDate(date);
    for (QChar &c : text) {
        if (c.unicode() < 0x20 || c.unicode() == 0x7F)
            c = QLatin1Char('?');
    }
    return text;
}

bool isControlByte(unsigned char c) { return (c < 0x20 && c != '\t' && c != '\n' && c != '\r') || c == 0x7F; }

bool isBadPrice(float price) { return !std::isfinite(price) || price <= 0; }

class FindingCounter {
public:
    void count(KLineProblem problem, std::string_view date)
    {
        KLineFinding &finding = m_findings[size_t(problem)];
        if (finding.count++ == 0)
            finding.firstDate = printableDate(date);
    }
    void add(KLineProblem problem, int count) { m_findings[size_t(problem)].count += count; }

    std::vector<KLineFinding> findings()
    {
        std::vector<KLineFinding> found;
        for (size_t i = 0; i < m_findings.size(); ++i) {
            if (m_findings[i].count > 0) {
                m_findings[i].problem = KLineProblem(i);
                found.push_back(m_findings[i]);
            }
        }
        return found;
    }

private:
    std::array<KLineFinding, size_t(KLineProblem::TooFewDays) + 1> m_findings{};
};

} // namespace

KLineCheck checkKLineText(StockSeries &series)
{
    FindingCounter counter;
    int controlBytes = 0;
    for (const char c : series.text())
        controlBytes += isControlByte(static_cast<unsigned char>(c));
    counter.add(KLineProblem::ControlBytes, controlBytes);

    parseKLineText(series);
    KLineCheck check;
    check.days = series.size();
    const std::vector<Stock> &bars = series.bars;
    for (size_t i = 0; i < bars.size(); ++i) {
        const Stock &bar = bars[i];
        if (i > 0 && !(bars[i - 1].date < bar.date))
            counter.count(KLineProblem::DatesNotIncreasing, bar.date);
        if (isBadPrice(bar.open) || isBadPrice(bar.close) || isBadPrice(bar.high) || isBadPrice(bar.low))
            counter.count(KLineProblem::BadPrice, bar.date);
        if (bar.high < bar.low)
            counter.count(KLineProblem::HighBelowLow, bar.date);
        if (i > 0 && !isBadPrice(bars[i - 1].close) && !isBadPrice(bar.close)) {
            const double percent = (double(bar.close) - bars[i - 1].close) * 100 / bars[i - 1].close;
            if (std::abs(percent) > kLargestPlausibleJump)
                check.jumps.push_back({printableDate(bar.date), percent});
        }
    }
    if (bars.size() <= 6)
        counter.add(KLineProblem::TooFewDays, 1);
    check.problems = counter.findings();
    return check;
}

KLineCheck checkKLineText(std::string_view text)
{
    StockSeries series;
    series.text().assign(text.begin(), text.end());
    return checkKLineText(series);
}

QString problemText(KLineProblem problem)
{
    switch (problem) {
    case KLineProblem::DatesNotIncreasing:
        return QStringLiteral("日期重复或未递增 / dates repeat or go back");
    case KLineProblem::BadPrice:
        return QStringLiteral("价格不大于0或不是有限数 / a price is not above 0 or not finite");
    case KLineProblem::HighBelowLow: return QStringLiteral("最高价低于最低价 / high below low");
    case KLineProblem::ControlBytes: return QStringLiteral("含NUL或控制字符 / NUL or control bytes");
    case KLineProblem::TooFewDays: return stockSkipText(StockSkip::TooFewDays);
    }
    return {};
}
