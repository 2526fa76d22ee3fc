#pragma once

#include "addin/libraries/lexmgr/LexMgr.h"
#include "tests/support/TemporaryFolder.h"

#include <dlfcn.h>
#include <fstream>
#include <gtest/gtest.h>

namespace lexmgr {

/// The library as windows meet it: loaded from its file, with string files of the test's own.
class LexFixture : public ::testing::Test {
protected:
    void write(const std::string& name, const std::string& content)
    {
        std::filesystem::create_directories((folder / name).parent_path());
        std::ofstream(folder / name, std::ios::binary) << content;
    }
    std::unique_ptr<Library> open(const std::string& language = "DE")
    {
        void* library = dlopen(ZN_BIN_DIR "/LexMgr.dll", RTLD_NOW);
        if (!library)
            throw std::runtime_error(dlerror());
        const auto entry = reinterpret_cast<LibraryEntry>(dlsym(library, libraryEntry));
        return std::unique_ptr<Library>(entry({folder / "LanFiles", language, folder / "help"}));
    }

    zn::test::TemporaryFolder folder;
};

} // namespace lexmgr
