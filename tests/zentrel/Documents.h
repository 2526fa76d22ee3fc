#pragma once

#include "contracts/documents/DocumentError.h"
#include "tests/support/Files.h"
#include "tests/support/TemporaryFolder.h"
#include "zentrel/model/Container.h"

#include <BRepPrimAPI_MakeBox.hxx>
#include <functional>
#include <gmock/gmock.h>

namespace zn::zentrel::test {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using zn::DocumentError;
using zn::ErrorKind;
using zn::test::readFile;
using zn::test::TemporaryFolder;
using zn::test::writeFile;

/// A test with a folder of its own.
class FolderTest : public ::testing::Test {
protected:
    TemporaryFolder folder;
};

inline TopoDS_Shape box(double x, double y, double z) { return BRepPrimAPI_MakeBox(x, y, z).Shape(); }

/// A part with one body in each of its configurations.
inline PartDocument partOf(const std::vector<std::pair<Text, Body>>& configurations)
{
    PartDocument part;
    for (const auto& [name, body] : configurations)
        part.configurations.push_back({name, {body}, {}});
    return part;
}

/// Expects that the call raises an error of this kind whose sentence holds these words. The sentence.
inline std::string expectError(ErrorKind kind, const std::string& words, const std::function<void()>& call)
{
    try {
        call();
        ADD_FAILURE() << "nothing was raised, expected: " << words;
    } catch (const DocumentError& error) {
        EXPECT_EQ(error.kind(), kind) << error.what();
        EXPECT_THAT(error.what(), HasSubstr(words));
        return error.what();
    }
    return {};
}

} // namespace zn::zentrel::test
