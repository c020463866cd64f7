#include "CrashHandler.h"

#include "CrashClock.h"
#include "CrashReportDir.h"
#include "CrashText.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <new>

#include <execinfo.h>
#include <unistd.h>

// Everything reachable from reportAndExit() runs inside a signal handler, on
// a heap that may be corrupt: system calls from the async-signal-safe list,
// plain arithmetic, fixed buffers; no stdio, no allocation. One call is not on
// that list: backtrace(), which takes the loader's lock to find unwind tables.
// It may hang only if the fault struck while that very lock was held; the
// watchdog below ends that case.
namespace {

constexpr int kFatalSignals[] = {SIGSEGV, SIGFPE, SIGILL, SIGBUS, SIGABRT};
constexpr int kMaxFrames = 64;
constexpr unsigned kWatchdogSeconds = 10;
constexpr std::size_t kAltStackSize = 128 * 1024;
// A name taken already (a planted file, another process's report) is tried
// again with another random part.
constexpr int kNameAttempts = 8;

// Seconds to add to UTC for local time, taken when the handler is installed.
// A process running across a daylight-saving change names its reports with
// the offset it started with; mainland China keeps no daylight saving.
long long utcOffsetSeconds = 0;

// The kernel thread id of the thread writing the report, 0 while nobody is.
std::atomic<long> reportWriter{0};
static_assert(std::atomic<long>::is_always_lock_free, "used from signal handlers");

// The report folder and its temporary file, so that a fault inside the writer
// can remove it. Only the writing thread touches them.
int reportDir = -1;
char pendingName[96];

struct Fault {
    int signal = 0; // 0 for the faults that are not signals
    const siginfo_t *info = nullptr;
    const char *cause = nullptr;
    const char *detail = nullptr;
};

const char *signalName(int signal)
{
    switch (signal) {
    case SIGSEGV: return "SIGSEGV";
    case SIGFPE: return "SIGFPE";
    case SIGILL: return "SIGILL";
    case SIGBUS: return "SIGBUS";
    case SIGABRT: return "SIGABRT";
    default: return "?";
    }
}

// The first failing thread writes the one report. A second fault on that same
// thread means the writer itself failed: drop the half-written file. Any other
// thread failing meanwhile waits for the writer to end the process, and ends
// it itself only if the writer never does.
void claimReport(long self)
{
    long writer = 0;
    if (reportWriter.compare_exchange_strong(writer, self))
        return;
    if (writer == self) {
        if (pendingName[0] != '\0')
            ::unlinkat(reportDir, pendingName, 0);
        ::_exit(1);
    }
    const timespec pause{0, 100'000'000};
    for (unsigned i = 0; i < (kWatchdogSeconds + 1) * 10; ++i)
        ::nanosleep(&pause, nullptr);
    ::_exit(1);
}

void exitOnWatchdog(int) { ::_exit(1); }

// An alarm guarantees that a writer stuck on a lock the fault left held still
// ends the process with 1, report or not.
void armWatchdog()
{
    struct sigaction action = {};
    action.sa_handler = exitOnWatchdog;
    sigemptyset(&action.sa_mask);
    ::sigaction(SIGALRM, &action, nullptr);
    sigset_t alarmOnly;
    sigemptyset(&alarmOnly);
    sigaddset(&alarmOnly, SIGALRM);
    ::sigprocmask(SIG_UNBLOCK, &alarmOnly, nullptr);
    ::alarm(kWatchdogSeconds);
}

// A signal sent by a process (kill, or abort() raising its own) carries the
// sender, not an address: saying so keeps anyone from hunting a fault that
// never happened.
const char *sendingCall(int code)
{
    switch (code) {
    case SI_USER: return "kill()";
    case SI_TKILL: return "tkill()";
    case SI_QUEUE: return "sigqueue()";
    default: return nullptr;
    }
}

void describeOrigin(CrashText &line, const Fault &fault)
{
    const siginfo_t &info = *fault.info;
    line.text(", code ").number(info.si_code);
    if (const char *call = sendingCall(info.si_code)) {
        line.text("\nsent with ").text(call).text(" by process ").number(info.si_pid);
        line.text(", user ").number(info.si_uid).text(" (no memory fault)");
    } else if (fault.signal != SIGABRT) {
        line.text("\nfault address: ").hex(reinterpret_cast<std::uintptr_t>(info.si_addr));
    }
}

bool writeReport(int fd, const Fault &fault, long thread, const CrashClockTime &t, int millisecond)
{
    CrashText line;
    line.text("Orvel ").text(ORVEL_VERSION).text(" crash report\n");
    line.text("time: ").number(t.year, 4).text("-").number(t.month, 2).text("-").number(t.day, 2);
    line.text(" ").number(t.hour, 2).text(":").number(t.minute, 2).text(":").number(t.second, 2);
    line.text(".").number(millisecond, 3).text(" (UTC offset ").number(utcOffsetSeconds).text(" s)\n");
    line.text("process: ").number(::getpid()).text("\nthread: ").number(thread).text("\n");
    if (!line.writeTo(fd))
        return false;

    if (fault.signal != 0) {
        line.text("cause: signal ").number(fault.signal).text(" (").text(signalName(fault.signal)).text(")");
        if (fault.info != nullptr)
            describeOrigin(line, fault);
    } else {
        line.text("cause: ").text(fault.cause);
        if (fault.detail != nullptr)
            line.text(": ").text(fault.detail);
    }
    line.text("\nbacktrace:\n");
    if (!line.writeTo(fd))
        return false;

    // The frames nearest the top are this handler's own; they stay, since
    // they show which way the report was reached.
    void *frames[kMaxFrames];
    const int count = ::backtrace(frames, kMaxFrames);
    ::backtrace_symbols_fd(frames, count, fd);
    return true;
}

void copyText(const char *from, char *to, std::size_t size)
{
    std::size_t length = 0;
    while (from[length] != '\0' && length < size - 1) {
        to[length] = from[length];
        ++length;
    }
    to[length] = '\0';
}

[[noreturn]] void reportAndExit(const Fault &fault)
{
    const long self = ::gettid();
    claimReport(self);
    armWatchdog();

    timespec now = {};
    ::clock_gettime(CLOCK_REALTIME, &now);
    const CrashClockTime local = crashClockTime(now.tv_sec + utcOffsetSeconds);
    const int millisecond = static_cast<int>(now.tv_nsec / 1'000'000);

    reportDir = CrashReportDir::open("crash");
    if (reportDir < 0)
        ::_exit(1);
    CrashText name;
    int fd = -1;
    for (int attempt = 0; attempt < kNameAttempts && fd < 0; ++attempt) {
        name = CrashReportDir::reportName(local, millisecond);
        CrashText pending;
        pending.text(name.c_str()).text(".tmp");
        fd = CrashReportDir::createNew(reportDir, pending.c_str());
        if (fd >= 0)
            copyText(pending.c_str(), pendingName, sizeof pendingName);
    }
    if (fd < 0)
        ::_exit(1);

    // Written beside its final name and renamed when complete, so a user never
    // finds a report cut short by a second fault or a full disk.
    bool written = writeReport(fd, fault, self, local, millisecond);
    written = ::close(fd) == 0 && written;
    if (written && ::renameat(reportDir, pendingName, reportDir, name.c_str()) == 0)
        CrashReportDir::prune(reportDir);
    else
        ::unlinkat(reportDir, pendingName, 0);
    ::_exit(1);
}

void onFatalSignal(int signal, siginfo_t *info, void *)
{
    Fault fault;
    fault.signal = signal;
    fault.info = info;
    reportAndExit(fault);
}

[[noreturn]] void onTerminate()
{
    Fault fault;
    fault.cause = "terminate called";
    // Outside a signal handler the heap is sound, so the report can name what
    // was thrown. `thrown` keeps the exception, and its text, alive.
    const std::exception_ptr thrown = std::current_exception();
    if (thrown) {
        fault.cause = "uncaught exception";
        try {
            std::rethrow_exception(thrown);
        } catch (const std::exception &e) {
            fault.detail = e.what();
        } catch (...) {
        }
    }
    reportAndExit(fault);
}

[[noreturn]] void onAllocationFailure()
{
    Fault fault;
    fault.cause = "memory allocation failed";
    reportAndExit(fault);
}

// One thread's alternate signal stack, released when the thread ends.
class AltStack {
public:
    AltStack()
    {
        size_ = std::max<std::size_t>(SIGSTKSZ, kAltStackSize);
        memory_ = std::malloc(size_);
        if (memory_ == nullptr)
            return;
        stack_t stack = {};
        stack.ss_sp = memory_;
        stack.ss_size = size_;
        if (::sigaltstack(&stack, nullptr) != 0) {
            std::free(memory_);
            memory_ = nullptr;
        }
    }

    ~AltStack()
    {
        if (memory_ == nullptr)
            return;
        stack_t off = {};
        off.ss_flags = SS_DISABLE;
        if (::sigaltstack(&off, nullptr) == 0)
            std::free(memory_);
    }

    AltStack(const AltStack &) = delete;
    AltStack &operator=(const AltStack &) = delete;

private:
    void *memory_ = nullptr;
    std::size_t size_ = 0;
};

} // namespace

CrashHandler::CrashHandler()
{
    // Here, outside any handler, localtime_r may take its locks and read the
    // zone files; the handler only adds the offset it leaves.
    const std::time_t now = std::time(nullptr);
    std::tm local = {};
    if (::localtime_r(&now, &local) != nullptr)
        utcOffsetSeconds = local.tm_gmtoff;

    // The first backtrace() loads the unwinder from libgcc with dlopen, which
    // allocates; do it now rather than in a handler or with the heap exhausted.
    void *frame[1];
    ::backtrace(frame, 1);

    protectCurrentThread();

    struct sigaction action = {};
    action.sa_sigaction = onFatalSignal;
    sigemptyset(&action.sa_mask);
    // SA_NODEFER: a fault inside the handler enters it again, which then drops
    // the report and exits with 1; otherwise the kernel would end the process
    // by the blocked signal.
    action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER;
    for (const int signal : kFatalSignals)
        ::sigaction(signal, &action, nullptr);

    std::set_terminate(onTerminate);
    std::set_new_handler(onAllocationFailure);
}

CrashHandler::~CrashHandler() = default;

void CrashHandler::protectCurrentThread() { thread_local AltStack stack; }

// Constructed before main, so faults during start-up are reported too.
static CrashHandler crashHandler;
