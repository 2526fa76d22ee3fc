#pragma once

#include "arkin/store/VersionDiff.h"

#include <string>

namespace zn::arkin {

/// In what two models differ by what the CAD application tells of each as JSON (`configurations` with `name`, `volume`,
/// `area`, `size` and `bodyNames`): volume, area, the sides of the box and the names of bodies, of configurations that
/// both have, or of the active ones if they have none in common. Numbers that agree to a millionth are the same. Raises
/// `StatusError` with a sentence for other text.
std::vector<Difference> measureDifferences(const std::string& before, const std::string& after);

} // namespace zn::arkin
