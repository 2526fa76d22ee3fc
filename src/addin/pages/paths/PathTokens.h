#pragma once

#include "base/Text.h"

#include <memory>
#include <unordered_map>
#include <vector>

namespace tokenctrl {
class TokenBox;
}

/// The tokens of path templates that a box offers.
namespace zn {

class IArkVault;
class PageEnvironment;

/// Makes the nine tokens of output paths known to the box, at the first level of its menu.
void AddPathTokens(PageEnvironment& environment, tokenctrl::TokenBox& box);

/// Makes submenus of a list of names: neighbours with the same initial form a group, whose label is the beginning of
/// its first and its last name.
class VarMenuHelper {
public:
    explicit VarMenuHelper(const std::vector<Text>& names);

    /// The name's place in the menu: "label\name" if its first character, as it stands, is the initial of a group of
    /// several; else the name alone. Groups are known by their upper-case initial, so a name that begins with a lower
    /// case letter stays outside of them.
    Text path(TextView name) const;

private:
    std::unordered_map<char16_t, Text> m_labels;
};

/// Makes "%name%" of each name known to the box, in submenus below "Variables".
void AddVariableTokens(PageEnvironment& environment, tokenctrl::TokenBox& box, const std::vector<Text>& names);

/// Turns the vault's root folder at the begin of the box's text into its token. To be called after each change.
void FoldVaultRoot(tokenctrl::TokenBox& box, IArkVault& vault);

} // namespace zn
