// The program's own `new` and `delete`: they count, and otherwise hand through to the allocator that finds faults.
#include "tests/fuzz/MemoryCap.h"

#include <cstdint>
#include <cstdlib>
#include <limits>
#include <malloc.h>
#include <new>

namespace zn::fuzz {

namespace {

struct Account {
    bool counting = false;
    bool met = false;
    std::int64_t leftToHold = 0;
    std::int64_t leftInTotal = 0;
};

thread_local Account account;

void* allocate(std::size_t size) noexcept
{
    if (account.counting) {
        if (size > static_cast<std::size_t>(std::numeric_limits<std::int64_t>::max())
            || static_cast<std::int64_t>(size) > account.leftToHold
            || static_cast<std::int64_t>(size) > account.leftInTotal) {
            account.met = true;
            return nullptr;
        }
    }
    void* const block = std::malloc(size > 0 ? size : 1);
    if (block && account.counting) {
        const auto given = static_cast<std::int64_t>(malloc_usable_size(block));
        account.leftToHold -= given;
        account.leftInTotal -= given;
    }
    return block;
}

void* allocateOrRaise(std::size_t size)
{
    if (void* const block = allocate(size))
        return block;
    throw std::bad_alloc();
}

void release(void* block) noexcept
{
    if (block && account.counting)
        account.leftToHold += static_cast<std::int64_t>(malloc_usable_size(block));
    std::free(block);
}

} // namespace

MemoryCap::MemoryCap(std::size_t held, std::size_t inTotal)
{
    account = {true, false, static_cast<std::int64_t>(held), static_cast<std::int64_t>(inTotal)};
}

MemoryCap::~MemoryCap() { account.counting = false; }

bool MemoryCap::met() const { return account.met; }

} // namespace zn::fuzz

void* operator new(std::size_t size) { return zn::fuzz::allocateOrRaise(size); }
void* operator new[](std::size_t size) { return zn::fuzz::allocateOrRaise(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return zn::fuzz::allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return zn::fuzz::allocate(size); }
void operator delete(void* block) noexcept { zn::fuzz::release(block); }
void operator delete[](void* block) noexcept { zn::fuzz::release(block); }
void operator delete(void* block, std::size_t) noexcept { zn::fuzz::release(block); }
void operator delete[](void* block, std::size_t) noexcept { zn::fuzz::release(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { zn::fuzz::release(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { zn::fuzz::release(block); }
