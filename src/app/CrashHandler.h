#pragma once

// Makes any fatal fault of the process leave a report under "crash/" and end
// the process with exit code 1, so a user has a file to send us.
//
// One static instance lives in CrashHandler.cpp and is constructed before
// main, so faults during start-up are caught too. It installs:
//  - handlers for SIGSEGV, SIGFPE, SIGILL, SIGBUS and SIGABRT (abort(), and
//    with it a fatal Qt message), run on an alternate signal stack so that a
//    stack overflow of the main thread still gets its report;
//  - std::set_terminate, for exceptions nobody caught;
//  - std::set_new_handler, for failed allocations.
//
// Linux has no minidumps; the report is text: cause (the fault address, or
// the sender of a signal sent by kill), process and thread, time, program
// version and a backtrace of the failing thread. It is named
// "orvel.quant<year>-<month>-<day>-<hour>-<minute>-<second>-<millisecond>-
// <two random digits>.dmp" in local time; the 20 newest are kept. Any failure
// while writing skips the report, and so does a "crash" that is a symlink or
// not a directory; the exit code is 1 regardless.
//
// Alternate signal stacks belong to a thread. Other threads handle their
// faults on their own stack, which serves every fault but an overflow of
// that very stack: the kernel then cannot run the handler and ends the
// process by SIGSEGV without a report. A thread that may recurse deeply calls
// protectCurrentThread() first; the backtest worker's depth is bounded by the
// script's statements and does not need it.
class CrashHandler {
public:
    CrashHandler();
    // Leaves the handlers installed: a fault while static objects are being
    // destroyed deserves its report as much as any other.
    virtual ~CrashHandler();

    CrashHandler(const CrashHandler &) = delete;
    CrashHandler &operator=(const CrashHandler &) = delete;

    // Gives the calling thread an alternate signal stack of its own, released
    // when the thread ends. Calling it again on the same thread does nothing.
    static void protectCurrentThread();
};
