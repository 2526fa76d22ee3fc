#pragma once

#include <cstddef>

namespace zn::fuzz {

/// Limits what `new` gives on this thread while it lives, so that an input can't take the machine's memory, and that
/// too much of it is noticed. One at a time.
class MemoryCap {
public:
    /// At most `held` bytes at one time, and `inTotal` bytes in sum, which bounds the work of copying. Beyond either
    /// `new` raises `std::bad_alloc`.
    MemoryCap(std::size_t held, std::size_t inTotal);
    MemoryCap(const MemoryCap&) = delete;
    MemoryCap& operator=(const MemoryCap&) = delete;
    ~MemoryCap();

    /// Whether `new` has raised.
    bool met() const;
};

} // namespace zn::fuzz
