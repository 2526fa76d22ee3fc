#pragma once

#include "zentrel/model/Model.h"

#include <string>

namespace zn::zentrel {

/// Names for the nodes of a scene that no two have in common.
class SceneNames {
public:
    /// A letter for the kind of thing, a running number, and the thing's own name with an underscore for each ASCII
    /// character that is neither letter nor digit: "C2_Pin_1". UTF-8.
    std::string next(const char* letter, const Text& name);

private:
    std::size_t m_number = 0;
};

} // namespace zn::zentrel
