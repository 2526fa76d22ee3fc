#pragma once

#include <stdexcept>
#include <string>

namespace zn::fuzz {

/// The code that a target feeds did not keep what the target promises of it. No target catches it: it ends libFuzzer's
/// run with the input saved, and fails the replaying test.
class BrokenPromise : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

inline void promise(bool holds, const std::string& sentence)
{
    if (!holds)
        throw BrokenPromise(sentence);
}

} // namespace zn::fuzz
