#pragma once

#include "base/Status.h"

#include <gtest/gtest.h>
#include <string>

namespace zn::test {

/// What a piece of work raised.
struct Raised {
    Status status = S_OK;
    std::string sentence = "nothing was raised";
};

template <class Work> Raised raisedBy(const Work& work)
{
    try {
        work();
        return {};
    } catch (const StatusError& error) {
        return {error.status(), error.what()};
    }
}
template <class Work> Status statusOf(const Work& work) { return raisedBy(work).status; }
template <class Work> std::string sentenceOf(const Work& work) { return raisedBy(work).sentence; }

/// Expects that `work` raises a `StatusError` of this status.
template <class Work> void expectStatus(Status status, const Work& work)
{
    const Raised raised = raisedBy(work);
    EXPECT_EQ(raised.status, status) << raised.sentence;
}

} // namespace zn::test
