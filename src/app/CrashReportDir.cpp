#include "CrashReportDir.h"

#include "CrashClock.h"

#include <cerrno>
#include <cstddef>
#include <ctime>

#include <dirent.h>
#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr char kPrefix[] = "orvel.quant";
constexpr char kSuffix[] = ".dmp";

// Reads a run of digits, at least `minDigits` and at most `maxDigits` long.
bool readNumber(const char *&c, int minDigits, int maxDigits, unsigned long long &value)
{
    value = 0;
    int digits = 0;
    while (*c >= '0' && *c <= '9' && digits < maxDigits) {
        value = value * 10 + static_cast<unsigned long long>(*c++ - '0');
        ++digits;
    }
    return digits >= minDigits;
}

// Calls `visit(name)` for every entry of `dir`, from its start.
template <class Visit>
void forEachEntry(int dir, Visit visit)
{
    if (::lseek(dir, 0, SEEK_SET) != 0)
        return;
    alignas(dirent64) char buffer[4096];
    for (;;) {
        const ssize_t size = ::getdents64(dir, buffer, sizeof buffer);
        if (size <= 0)
            return;
        for (ssize_t at = 0; at < size;) {
            const auto *entry = reinterpret_cast<const dirent64 *>(buffer + at);
            visit(entry->d_name);
            at += entry->d_reclen;
        }
    }
}

// Two digits that keep reports of the same millisecond apart. getrandom is
// a plain system call, safe here where rand() and its lock are not.
int randomPart()
{
    unsigned value = 0;
    if (::getrandom(&value, sizeof value, GRND_NONBLOCK) != sizeof value) {
        timespec now = {};
        ::clock_gettime(CLOCK_MONOTONIC, &now);
        value = static_cast<unsigned>(now.tv_nsec) ^ static_cast<unsigned>(::getpid());
    }
    return static_cast<int>(value % 100);
}

} // namespace

namespace CrashReportDir {

CrashText reportName(const CrashClockTime &t, int millisecond)
{
    // The millisecond takes two digits at least, three when it has them.
    CrashText name;
    name.text(kPrefix).number(t.year, 4).text("-").number(t.month, 2).text("-").number(t.day, 2);
    name.text("-").number(t.hour, 2).text("-").number(t.minute, 2).text("-").number(t.second, 2);
    name.text("-").number(millisecond, 2).text("-").number(randomPart(), 2).text(kSuffix);
    return name;
}

int open(const char *path)
{
    if (::mkdir(path, 0755) != 0 && errno != EEXIST)
        return -1;
    // O_NOFOLLOW refuses a symlink, O_DIRECTORY anything else but a directory.
    return ::open(path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}

int createNew(int dir, const char *name)
{
    return ::openat(dir, name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644);
}

unsigned long long reportAge(const char *name)
{
    const char *c = name;
    for (const char *p = kPrefix; *p != '\0'; ++p) {
        if (*c++ != *p)
            return 0;
    }
    // Year, month, day, hour, minute, second, millisecond (two or three
    // digits), random part: each field scales the ones before it.
    constexpr int minDigits[] = {4, 2, 2, 2, 2, 2, 2, 2};
    constexpr int maxDigits[] = {4, 2, 2, 2, 2, 2, 3, 2};
    constexpr unsigned long long scale[] = {1, 100, 100, 100, 100, 100, 1000, 100};
    unsigned long long age = 0;
    for (int i = 0; i < 8; ++i) {
        if (i > 0 && *c++ != '-')
            return 0;
        unsigned long long field = 0;
        if (!readNumber(c, minDigits[i], maxDigits[i], field))
            return 0;
        age = age * scale[i] + field;
    }
    for (const char *s = kSuffix; *s != '\0'; ++s) {
        if (*c++ != *s)
            return 0;
    }
    return *c == '\0' ? age : 0;
}

void prune(int dir, int keep)
{
    if (keep <= 0 || keep > kKeptReports)
        return;
    // The `keep` newest ages, oldest first, found in one pass.
    unsigned long long newest[kKeptReports] = {};
    int reports = 0;
    forEachEntry(dir, [&](const char *name) {
        const unsigned long long age = reportAge(name);
        if (age == 0)
            return;
        ++reports;
        if (age <= newest[0])
            return;
        int at = 0;
        for (; at + 1 < keep && newest[at + 1] < age; ++at)
            newest[at] = newest[at + 1];
        newest[at] = age;
    });
    if (reports <= keep)
        return;
    // Removing entries while reading the directory may hide some from the
    // same pass; another pass finds them.
    for (bool removed = true; removed;) {
        removed = false;
        forEachEntry(dir, [&](const char *name) {
            const unsigned long long age = reportAge(name);
            if (age != 0 && age < newest[0] && ::unlinkat(dir, name, 0) == 0)
                removed = true;
        });
    }
}

} // namespace CrashReportDir
