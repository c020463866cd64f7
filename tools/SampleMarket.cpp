#include "SampleMarket.h"

#include "PriceWalk.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <fstream>
#include <mutex>
#include <system_error>
#include <thread>

namespace SampleMarket {
namespace {

struct Board {
    int prefix;
    int weight;
};

// Roughly the share of each range in the real market.
constexpr std::array<Board, 11> kBoards = {{{600, 22},
                                            {601, 10},
                                            {603, 14},
                                            {605, 3},
                                            {688, 8},
                                            {0, 14},
                                            {1, 2},
                                            {2, 15},
                                            {3, 3},
                                            {300, 10},
                                            {301, 3}}};
constexpr int kCodesPerBoard = 999; // xxx001 … xxx999

bool isHoliday(const QDate &day)
{
    const int month = day.month();
    const int date = day.day();
    return (month == 1 && date == 1) || (month == 5 && date <= 3) || (month == 10 && date <= 7);
}

std::uint64_t stockSeed(std::string_view code, std::uint64_t seed)
{
    std::uint64_t number = 0;
    for (char c : code)
        number = number * 10 + std::uint64_t(c - '0');
    Random mix(seed ^ (number * 0xD1B54A32D192ED03ull));
    return mix.next();
}

char *putDigits(char *out, std::uint64_t value)
{
    char digits[20];
    int count = 0;
    do {
        digits[count++] = char('0' + value % 10);
        value /= 10;
    } while (value != 0);
    while (count > 0)
        *out++ = digits[--count];
    return out;
}

char *putQuoted(char *out, std::string_view text)
{
    *out++ = '"';
    out = std::copy(text.begin(), text.end(), out);
    *out++ = '"';
    return out;
}

char *putPrice(char *out, std::int64_t cents)
{
    *out++ = '"';
    out = putDigits(out, std::uint64_t(cents / 100));
    *out++ = '.';
    *out++ = char('0' + cents / 10 % 10);
    *out++ = char('0' + cents % 10);
    *out++ = '"';
    return out;
}

// Day order in the file: date, open, close, high, low, volume.
char *putBar(char *out, std::string_view date, const Bar &bar)
{
    *out++ = '[';
    out = putQuoted(out, date);
    for (std::int64_t cents : {bar.open, bar.close, bar.high, bar.low}) {
        *out++ = ',';
        out = putPrice(out, cents);
    }
    *out++ = ',';
    *out++ = '"';
    out = putDigits(out, std::uint64_t(bar.volume));
    *out++ = '"';
    *out++ = ']';
    return out;
}

constexpr std::string_view kPrefix = R"(kline_dayhfq={"code":0,"data":{"x":{"day":[)";
constexpr std::string_view kSuffix = "]}}}\n";
// Room for a bar whose every number has 20 digits: the buffer is sized once per stock.
constexpr size_t kLongestBar = 160;

// Late listings and suspensions: which calendar days a stock has no bar on.
class TradingPlan {
public:
    TradingPlan(Random &random, int days) : m_random(random)
    {
        if (days >= 120 && m_random.chance(0.1))
            m_listedFrom = m_random.below(days * 6 / 10);
        m_suspensionBudget = (days - m_listedFrom) / 4;
    }
    int listedFrom() const { return m_listedFrom; }

    // False on a day the stock does not trade.
    bool trades(int day)
    {
        if (m_suspendedLeft > 0) {
            --m_suspendedLeft;
            return false;
        }
        if (day > m_listedFrom && m_suspensionBudget > 0 && m_random.chance(0.0004)) {
            m_suspendedLeft =
                std::min(m_suspensionBudget, 1 + m_random.below(m_random.chance(0.2) ? 120 : 10));
            m_suspensionBudget -= m_suspendedLeft;
            --m_suspendedLeft;
            return false;
        }
        return true;
    }

private:
    Random &m_random;
    int m_listedFrom = 0;
    int m_suspensionBudget = 0;
    int m_suspendedLeft = 0;
};

std::string writeStockFile(const std::filesystem::path &dir, const std::string &code, const std::string &text)
{
    // Written under a hidden name first: the data directory listing skips hidden
    // files, so an interrupted run never shows a truncated stock.
    const std::filesystem::path target = dir / code;
    const std::filesystem::path temporary = dir / ("." + code + ".part");
    {
        std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
        file.write(text.data(), std::streamsize(text.size()));
        file.close();
        if (!file)
            return "cannot write " + temporary.string();
    }
    std::error_code error;
    std::filesystem::rename(temporary, target, error);
    if (error)
        return "cannot write " + target.string() + ": " + error.message();
    return {};
}

std::string checkOptions(const Options &options)
{
    if (options.stocks < 1 || options.stocks > kMaxStocks)
        return "the number of stocks must be between 1 and " + std::to_string(kMaxStocks);
    if (options.days < 1)
        return "the number of days must be at least 1";
    if (!options.start.isValid())
        return "the start date is not a valid date";
    return {};
}

} // namespace

std::vector<std::string> tradingDays(QDate start, int days)
{
    std::vector<std::string> calendar;
    calendar.reserve(size_t(std::max(days, 0)));
    for (QDate day = start; int(calendar.size()) < days; day = day.addDays(1)) {
        if (day.dayOfWeek() <= 5 && !isHoliday(day))
            calendar.push_back(day.toString(Qt::ISODate).toStdString());
    }
    return calendar;
}

std::vector<std::string> stockCodes(int count, std::uint64_t seed)
{
    Random random(seed ^ 0x5EED0C0DE5ull);
    int totalWeight = 0;
    for (const Board &board : kBoards)
        totalWeight += board.weight;
    std::vector<std::vector<bool>> taken(kBoards.size(), std::vector<bool>(kCodesPerBoard, false));
    std::vector<int> used(kBoards.size(), 0);
    std::vector<std::string> codes;
    while (int(codes.size()) < std::min(count, kMaxStocks)) {
        int pick = random.below(totalWeight);
        size_t board = 0;
        while (pick >= kBoards[board].weight)
            pick -= kBoards[board++].weight;
        // A full range hands its draw on to the next one.
        while (used[board] == kCodesPerBoard)
            board = (board + 1) % kBoards.size();
        int number = random.below(kCodesPerBoard);
        while (taken[board][size_t(number)])
            number = random.below(kCodesPerBoard);
        taken[board][size_t(number)] = true;
        ++used[board];
        char text[7];
        std::snprintf(text, sizeof text, "%03d%03d", kBoards[board].prefix, number + 1);
        codes.emplace_back(text);
    }
    std::sort(codes.begin(), codes.end());
    return codes;
}

void writeStockText(std::string_view code, const std::vector<std::string> &calendar, std::uint64_t seed,
                    std::string &out)
{
    Random random(stockSeed(code, seed));
    TradingPlan plan(random, int(calendar.size()));
    PriceWalk walk(random, code);
    out.resize(kPrefix.size() + kSuffix.size() + calendar.size() * (kLongestBar + 1));
    char *cursor = std::copy(kPrefix.begin(), kPrefix.end(), out.data());
    bool first = true;
    bool resumed = false;
    for (int day = plan.listedFrom(); day < int(calendar.size()); ++day) {
        if (!plan.trades(day)) {
            resumed = true;
            continue;
        }
        if (!first)
            *cursor++ = ',';
        cursor = putBar(cursor, calendar[size_t(day)], walk.next(resumed));
        first = false;
        resumed = false;
    }
    cursor = std::copy(kSuffix.begin(), kSuffix.end(), cursor);
    out.resize(size_t(cursor - out.data()));
}

std::string stockText(std::string_view code, const std::vector<std::string> &calendar, std::uint64_t seed)
{
    std::string text;
    writeStockText(code, calendar, seed, text);
    return text;
}

std::string writeMarket(const std::filesystem::path &dir, const Options &options)
{
    if (std::string problem = checkOptions(options); !problem.empty())
        return problem;
    std::error_code error;
    std::filesystem::create_directories(dir, error);
    if (error)
        return "cannot create " + dir.string() + ": " + error.message();

    const std::vector<std::string> calendar = tradingDays(options.start, options.days);
    const std::vector<std::string> codes = stockCodes(options.stocks, options.seed);
    std::atomic<size_t> nextStock = 0;
    std::mutex failureLock;
    std::string failure;
    auto work = [&] {
        std::string text;
        for (size_t i = nextStock++; i < codes.size(); i = nextStock++) {
            writeStockText(codes[i], calendar, options.seed, text);
            if (std::string problem = writeStockFile(dir, codes[i], text); !problem.empty()) {
                const std::lock_guard lock(failureLock);
                failure = std::move(problem);
                nextStock = codes.size();
            }
        }
    };
    const int jobs = options.jobs > 0 ? options.jobs : int(std::max(1u, std::thread::hardware_concurrency()));
    std::vector<std::jthread> workers;
    for (int i = 1; i < std::min<int>(jobs, int(codes.size())); ++i)
        workers.emplace_back(work);
    work();
    workers.clear();
    return failure;
}

} // namespace SampleMarket
