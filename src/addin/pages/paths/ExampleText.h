#pragma once

#include "base/Text.h"

#include <QString>

namespace tokenctrl {
class TokenBox;
}

namespace zn {

class IArkVault;
class PageEnvironment;

/// The line below a path box: "Example: " and what the box's template would give for a sample file, with the extension
/// of an output format at the end. `formatLabel` and `formatCode` are those of the format ("IGES (*.igs)", 13). Card
/// variables stay as they are: an example knows no card. Raises the vault's failure.
QString BuildExampleText(PageEnvironment& environment, IArkVault& vault, const tokenctrl::TokenBox& box,
    TextView formatLabel, std::int32_t formatCode);

} // namespace zn
