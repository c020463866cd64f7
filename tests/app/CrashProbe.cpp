// Fails in the way its argument names, with the crash handler installed
// before main exactly as in the desktop program.
#include "app/CrashHandler.h"
#include "runtime/MessageLog.h"

#include <QtGlobal>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>
#include <thread>

#include <unistd.h>

namespace {

volatile bool keepRecursing = true;

int recurse(int depth)
{
    volatile char frame[1024];
    frame[0] = static_cast<char>(depth);
    if (keepRecursing)
        return recurse(depth + 1) + frame[0];
    return 0;
}

void writeThroughNull()
{
    // Volatile on both levels, so the compiler emits a real store rather
    // than a trap instruction of its own.
    volatile int *volatile target = nullptr;
    *target = 1;
}

} // namespace

int main(int argc, char **argv)
{
    const char *fault = argc > 1 ? argv[1] : "none";

    if (std::strcmp(fault, "null-write-worker") == 0) {
        std::thread(writeThroughNull).join();
    } else if (std::strcmp(fault, "killed") == 0) {
        ::kill(::getpid(), SIGSEGV); // as `kill -SEGV` from a shell would
    } else if (std::strcmp(fault, "abort") == 0) {
        std::abort();
    } else if (std::strcmp(fault, "qfatal") == 0) {
        MessageLog::install();
        qFatal("probe");
    } else if (std::strcmp(fault, "bad-alloc") == 0) {
        volatile std::size_t huge = std::numeric_limits<std::size_t>::max() / 2;
        void *volatile block = ::operator new(huge);
        static_cast<void>(block);
    } else if (std::strcmp(fault, "uncaught") == 0) {
        throw std::runtime_error("probe");
    } else if (std::strcmp(fault, "stack-overflow") == 0) {
        return recurse(0);
    } else if (std::strcmp(fault, "stack-overflow-worker") == 0) {
        std::thread([] {
            CrashHandler::protectCurrentThread();
            recurse(0);
        }).join();
    } else if (std::strcmp(fault, "none") != 0) {
        std::fprintf(stderr, "unknown fault %s\n", fault);
        return 2;
    }
    return 0;
}
