#pragma once

#include "base/Text.h"

#include <memory>
#include <vector>

namespace zn {

class IArkVault;

struct CardVariable {
    Text name;
    std::int32_t id = 0;
};

/// All card variables, in the vault's order. Raises the vault's failure, `E_POINTER` without a vault, and
/// `E_NOINTERFACE` for a vault that doesn't list its variables. A step of the list that fails ends it.
std::vector<CardVariable> readCardVariables(const std::shared_ptr<IArkVault>& vault);

} // namespace zn
