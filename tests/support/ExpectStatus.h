#pragma once

#include "base/Status.h"

#include <gtest/gtest.h>

namespace zn::test {

/// Expects that `work` raises a `StatusError` of this status.
template <class Work> void expectStatus(Status status, const Work& work)
{
    try {
        work();
        ADD_FAILURE() << "nothing was raised";
    } catch (const StatusError& error) {
        EXPECT_EQ(error.status(), status) << error.what();
    }
}

} // namespace zn::test
