#pragma once

#include "base/Text.h"

#include <optional>
#include <vector>

namespace zn::zentrel {

template <class Named> std::vector<zn::Text> namesOf(const std::vector<Named>& items)
{
    std::vector<zn::Text> names;
    for (const Named& item : items)
        names.push_back(item.name);
    return names;
}

/// Sets `active` to the item of that name, an exact one first, then without regard to case. False if there is none.
template <class Named> bool activateByName(const std::vector<Named>& items, const zn::Text& name, std::size_t& active)
{
    std::optional<std::size_t> similar;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (items[i].name == name) {
            active = i;
            return true;
        }
        if (!similar && zn::equalNoCase(items[i].name, name))
            similar = i;
    }
    active = similar.value_or(active);
    return similar.has_value();
}

} // namespace zn::zentrel
