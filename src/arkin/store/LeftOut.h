#pragma once

#include "arkin/store/Codes.h"
#include "arkin/store/Files.h"

#include <algorithm>
#include <initializer_list>
#include <vector>

namespace zn::arkin {

/// A file that a piece of work on many files has left out, and why.
struct LeftOut {
    Place place;
    Failure failure;
};

/// Does the work for one file of many; false if it failed and went to `leftOut`. Without `leftOut`, and with one of the
/// statuses that concern `all` files, the failure is raised.
template <class Work>
bool worksFor(
    const Place& place, std::vector<LeftOut>* leftOut, std::initializer_list<zn::Status> all, const Work& work)
{
    try {
        work();
        return true;
    } catch (const zn::StatusError& error) {
        if (!leftOut || std::find(all.begin(), all.end(), error.status()) != all.end())
            throw;
        leftOut->push_back({place, currentFailure()});
        return false;
    }
}

} // namespace zn::arkin
