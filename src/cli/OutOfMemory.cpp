#include "OutOfMemory.h"

#include "Commands.h"

#include <exception>
#include <new>
#include <unistd.h>

namespace OutOfMemory {
namespace {

// Nothing here may allocate: memory is what just ran out.
[[noreturn]] void quit()
{
    static const char kMessage[] = "内存不足 / out of memory\n";
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, kMessage, sizeof kMessage - 1);
    ::_exit(Commands::OutOfMemory);
}

// Containers that allocate with malloc throw std::bad_alloc themselves; on a
// worker thread nothing catches it, and it ends here.
[[noreturn]] void onTerminate()
{
    if (const std::exception_ptr thrown = std::current_exception()) {
        try {
            std::rethrow_exception(thrown);
        } catch (const std::bad_alloc &) {
            quit();
        } catch (...) {
        }
    }
    std::abort();
}

} // namespace

void install()
{
    std::set_new_handler(quit);
    std::set_terminate(onTerminate);
}

} // namespace OutOfMemory
