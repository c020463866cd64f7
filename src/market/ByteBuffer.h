#pragma once

#include <memory>
#include <utility>
#include <vector>

// An allocator that leaves new elements default-initialised: a buffer about
// to be filled by a read is not cleared first.
template <class T>
struct UninitializedAllocator : std::allocator<T> {
    template <class U>
    struct rebind {
        using other = UninitializedAllocator<U>;
    };
    UninitializedAllocator() = default;
    template <class U>
    UninitializedAllocator(const UninitializedAllocator<U> &) noexcept
    {
    }
    template <class U>
    void construct(U *place) noexcept
    {
        ::new (static_cast<void *>(place)) U;
    }
    template <class U, class... Args>
    void construct(U *place, Args &&...args)
    {
        ::new (static_cast<void *>(place)) U(std::forward<Args>(args)...);
    }
};

// Bytes read from a file, kept between reads.
using ByteBuffer = std::vector<char, UninitializedAllocator<char>>;
