#pragma once

#include <memory>
#include <utility>

namespace zn::language {

/// What the last holder of a collection lets go of: one after the other and not one inside the other, since a chain of
/// some hundred thousand objects would have as many destructors on the stack. Letting go takes no memory.
class Held {
public:
    Held() = default;
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    virtual ~Held() = default;

    static void letGo(std::unique_ptr<Held> held) noexcept
    {
        if (waiting) {
            held->m_next = std::move(*waiting);
            *waiting = std::move(held);
            return;
        }
        std::unique_ptr<Held> list = std::move(held);
        waiting = &list;
        while (list) {
            const std::unique_ptr<Held> first = std::move(list);
            list = std::move(first->m_next);
        }
        waiting = nullptr;
    }

private:
    static inline thread_local std::unique_ptr<Held>* waiting = nullptr; ///< of the outermost `letGo` on this thread
    std::unique_ptr<Held> m_next;
};

/// A container that a collection has as a member, and that goes as `Held` says.
template <class Items> class HeldItems {
public:
    HeldItems() = default;
    HeldItems(const HeldItems&) = delete;
    HeldItems& operator=(const HeldItems&) = delete;
    ~HeldItems() { Held::letGo(std::move(m_body)); }

    Items& operator*() { return m_body->items; }
    const Items& operator*() const { return m_body->items; }
    Items* operator->() { return &m_body->items; }
    const Items* operator->() const { return &m_body->items; }

private:
    struct Body : Held {
        Items items;
    };
    std::unique_ptr<Body> m_body = std::make_unique<Body>();
};

} // namespace zn::language
