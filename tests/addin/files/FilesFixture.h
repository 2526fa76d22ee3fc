#pragma once

#include "addin/files/FileLogic.h"
#include "base/Format.h"
#include "platform/FileSystem.h"
#include "tests/support/Failures.h"
#include "tests/support/FakeHost.h"
#include "tests/support/TestPlatform.h"

#include <gtest/gtest.h>

namespace zn::test {

/// A file logic on a fake vault whose local view is a real folder, with one source file that the run works on.
class FilesFixture : public ::testing::Test {
protected:
    FilesFixture()
    {
        host.root = vaultPath("");
        host.addFile(7, 3, vaultPath("flange.zenprt"), 4);
        source.path = vaultPath("flange.zenprt");
        source.docId = 7;
        source.projId = 3;
        source.version = 2;
        source.isCadFile = true;
    }

    void begin(TaskKind kind, bool replaceExisting = false)
    {
        logic.Initialize(host.vault(), kind, replaceExisting);
        logic.SetCurrentSource(&source);
    }
    /// What a save in the CAD application does: it is noted, and then the file is written.
    void save(const Text& path, const char16_t* configuration = u"Default")
    {
        logic.NoteSavedFile(path, configuration, false);
        write(path);
    }
    void write(const Text& path)
    {
        files.createFolders(path.substr(0, path.rfind(u'\\')));
        ASSERT_TRUE(files.writeBytes(path, "content")) << toUtf8(path);
    }
    Text vaultPath(const char* name)
    {
        return platform.path("vault") + (*name ? toText(std::string("\\") + name) : Text());
    }
    /// The calls since the last look, with the vault's folder as "V:".
    std::vector<std::string> takeCalls()
    {
        std::vector<std::string> calls;
        for (const std::string& call : host.calls) {
            Text text = toText(call);
            replaceAll(text, host.root, u"V:");
            calls.push_back(toUtf8(text));
        }
        host.calls.clear();
        return calls;
    }
    Status addResults()
    {
        return logic.AddResultsToVault(*vault, task, [this](Status status, const Text& text, const Text&) {
            Text line = text;
            replaceAll(line, host.root, u"V:");
            logLines.push_back(toUtf8(formatText("%08X %s", static_cast<std::uint32_t>(status), line)));
        });
    }

    TestPlatform platform;
    FakeHost host;
    Platform ports = platform.ports();
    FileSystem& files = ports.files;
    std::shared_ptr<IArkVault> vault = host.vault();
    std::shared_ptr<IArkTaskInstance> task = host.task();
    OutputRecord source;
    FileLogic logic{ports};
    std::vector<std::string> logLines;
};

} // namespace zn::test
