#pragma once

#include "arkin/store/Codes.h"
#include "contracts/host/ArkVault.h"

#include <vector>

namespace zn::arkin {

/// A place in a list that was read when the enumeration began.
template <class Item> class Position final : public zn::IArkPosition {
public:
    explicit Position(std::vector<Item> items)
        : m_items(std::move(items))
    {
    }

    zn::Status IsNull(bool& isNull) override
    {
        isNull = m_next == m_items.size();
        return isNull ? zn::S_OK : zn::S_FALSE;
    }

    /// The item under a position of this kind, which moves on. Raises E_INVALIDARG for a position of another
    /// enumeration and at the end.
    static const Item& take(zn::IArkPosition& position)
    {
        auto* own = dynamic_cast<Position*>(&position);
        if (!own || own->m_next == own->m_items.size())
            throw zn::StatusError(zn::E_INVALIDARG, "No item is left under the position.");
        return own->m_items[own->m_next++];
    }

private:
    std::vector<Item> m_items;
    std::size_t m_next = 0;
};

} // namespace zn::arkin
