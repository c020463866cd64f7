#pragma once

#include <cerrno>
#include <cstddef>
#include <cstdint>

#include <unistd.h>

// Text assembled in a fixed buffer and handed to write(2) whole. The crash
// handler builds its file names and report lines with it, because stdio and
// allocation are off limits in a signal handler.
class CrashText {
public:
    CrashText &text(const char *s)
    {
        while (*s != '\0')
            put(*s++);
        return *this;
    }

    CrashText &number(long long value, int minDigits = 1)
    {
        if (value < 0) {
            put('-');
            value = -value;
        }
        char digits[24];
        int count = 0;
        do {
            digits[count++] = static_cast<char>('0' + value % 10);
            value /= 10;
        } while (value != 0);
        while (count < minDigits && count < static_cast<int>(sizeof digits))
            digits[count++] = '0';
        while (count > 0)
            put(digits[--count]);
        return *this;
    }

    CrashText &hex(std::uintptr_t value)
    {
        text("0x");
        char digits[2 * sizeof value];
        int count = 0;
        do {
            digits[count++] = "0123456789abcdef"[value & 0xf];
            value >>= 4;
        } while (value != 0);
        while (count > 0)
            put(digits[--count]);
        return *this;
    }

    const char *c_str()
    {
        chars_[size_] = '\0';
        return chars_;
    }

    // Writes and empties the buffer; false on any error, a short write included.
    bool writeTo(int fd)
    {
        std::size_t done = 0;
        while (done < size_) {
            const ssize_t n = ::write(fd, chars_ + done, size_ - done);
            if (n < 0 && errno == EINTR)
                continue;
            if (n <= 0)
                return false;
            done += static_cast<std::size_t>(n);
        }
        size_ = 0;
        return true;
    }

private:
    // An overlong exception text is cut rather than overrun the buffer.
    void put(char c)
    {
        if (size_ < sizeof chars_ - 1)
            chars_[size_++] = c;
    }

    char chars_[512];
    std::size_t size_ = 0;
};
