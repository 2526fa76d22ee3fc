#include "tests/support/TemporaryFolder.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>
#include <stdexcept>

namespace zn::test {

TemporaryFolder::TemporaryFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "zn-test-XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        throw std::runtime_error("Could not make a temporary folder.");
    m_path = pattern;
}

TemporaryFolder::~TemporaryFolder()
{
    if (::testing::Test::HasFailure()) {
        std::cerr << "kept for a look: " << m_path.string() << '\n';
        return;
    }
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

} // namespace zn::test
