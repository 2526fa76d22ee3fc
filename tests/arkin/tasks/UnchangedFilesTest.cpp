#include "arkin/tasks/UnchangedFiles.h"

#include "arkin/store/DeleteFile.h"
#include "arkin/tasks/RunClaim.h"
#include "tests/arkin/VaultFixture.h"

#include <soci/soci.h>

namespace zn::arkin::test {

/// A task that has made "out/plate.stl" of "plate.zenasm", which refers to "rail.zenasm" and that to "bolt.zenprt".
class UnchangedFilesTest : public VaultFixture {
protected:
    UnchangedFilesTest()
        : runs(test.store.database(), test.vault.info().id)
    {
        bolt = test.addReleased("bolt.zenprt", "bolt");
        rail = test.addReferring("rail.zenasm", {bolt});
        plate = test.addReferring("plate.zenasm", {rail});
        task.name = u"To STL";
        task.variables[u"Resolution"] = zn::Value(u"fine");
        task.variables[zn::Text(zn::scriptVariable)] = zn::Value(u"Sub main()");
        test.clock.time += 60;
        const auto first = begin();
        first.writeMacros({{test.path("plate.zenasm"), plate.fileId, 1, u"Red", u"Sub main()"}});
        output = make(first, "out/plate.stl", "triangles");
        const std::string outside = (folder / "outside.stl").string();
        writeFile(outside, "triangles");
        first.writeResults({result(output, test.path("out/plate.stl")), result({}, files.fromMachine(outside))});
        end(first);
        test.clock.time += 60;
    }

    RunClaim begin()
    {
        const auto id = runs.enqueue(task, {newGuid(), u"anna", {}, {}, 0, {}, true}, test.clock.now());
        auto claim = RunClaim::take(runs, id, thisProcess(), test.clock.now());
        claim.writeApplication(application);
        return claim;
    }
    void end(const RunClaim& claim) { claim.finish(zn::TaskRunState::Finished, zn::S_OK, {}, {}, test.clock.now()); }
    /// An output that the run puts into the vault.
    Place make(const RunClaim& claim, const std::string& path, const std::string& content)
    {
        Place made = test.add(path, content).place;
        test.checkInAll({made});
        Transaction writing(test.store.database());
        test.store.database().session() << "UPDATE versions SET run_id = :r WHERE file_id = :f",
            soci::use(claim.run().id), soci::use(made.fileId);
        writing.commit();
        return made;
    }
    zn::ArkFileResult result(const Place& made, const zn::Text& path) const
    {
        zn::ArkFileResult row;
        row.source = u"plate.zenasm";
        row.sourceId = plate.fileId;
        row.sourceVersion = 1;
        row.output = path;
        row.outputId = made.fileId;
        return row;
    }
    zn::ArkSourceFile source() const { return {u"plate.zenasm", plate.fileId, plate.folderId, 1, u"Red"}; }
    std::string sentence(const zn::ArkSourceFile& file)
    {
        const auto claim = begin();
        const auto& run = claim.run();
        const auto said = UnchangedFiles(test.vault, files).sentences(run, {&file, 1}).at(0);
        end(claim);
        return zn::toUtf8(said);
    }

    zn::SqliteRegistry registry{folder / "settings.sqlite"};
    zn::LinuxFileSystem files{registry};
    RunStore runs;
    TaskDefinition task;
    zn::ArkApplication application{u"ZENTREL", u"26.0.0", u"d180943"};
    Place bolt, rail, plate, output;
};

TEST_F(UnchangedFilesTest, NamesTheRunThatHasDoneItAndGoesOnDoingSo)
{
    const std::string expected = "Nothing has changed since run 1, and its 2 outputs are as it left them.";
    EXPECT_EQ(sentence(source()), expected);
    // A run that left it out is no reason to look no further.
    const auto second = begin();
    zn::ArkFileResult unchanged;
    unchanged.sourceId = plate.fileId;
    unchanged.outcome = zn::FileOutcome::Unchanged;
    second.writeResults({unchanged});
    end(second);
    EXPECT_EQ(sentence(source()), expected);
}

TEST_F(UnchangedFilesTest, WhateverChangesLetsTheFileBeDoneAgain)
{
    auto otherVersion = source();
    otherVersion.version = 2;
    EXPECT_EQ(sentence(otherVersion), "");
    auto otherConfiguration = source();
    otherConfiguration.configuration = u"Blue";
    EXPECT_EQ(sentence(otherConfiguration), "");
    auto unknown = source();
    unknown.fileId = bolt.fileId;
    EXPECT_EQ(sentence(unknown), "");

    const TaskDefinition asItWas = task;
    task.variables[u"Resolution"] = zn::Value(u"coarse");
    EXPECT_EQ(sentence(source()), "") << "settings";
    task = asItWas;
    task.variables[zn::Text(zn::scriptVariable)] = zn::Value(u"Sub main() ' better");
    EXPECT_EQ(sentence(source()), "") << "macro";
    task = asItWas;
    task.name = u"Another";
    EXPECT_EQ(sentence(source()), "") << "task";
    task = asItWas;
    application.build = u"d180944";
    EXPECT_EQ(sentence(source()), "") << "application";
    application = {};
    EXPECT_EQ(sentence(source()), "") << "an application that doesn't tell";
    application = {u"ZENTREL", u"26.0.0", u"d180943"};
    EXPECT_NE(sentence(source()), "");

    std::filesystem::rename(folder / "outside.stl", folder / "gone.stl");
    EXPECT_EQ(sentence(source()), "") << "an output outside the vault";
    std::filesystem::rename(folder / "gone.stl", folder / "outside.stl");
    EXPECT_NE(sentence(source()), "");
}

TEST_F(UnchangedFilesTest, ANewerVersionOfAnythingBelowCounts)
{
    test.change(bolt, "bolt.zenprt", "longer bolt");
    EXPECT_EQ(sentence(source()), "") << "two levels down";
}

TEST_F(UnchangedFilesTest, AnOutputThatIsNoLongerTheRunsIsMadeAgain)
{
    test.change(output, "out/plate.stl", "by hand");
    EXPECT_EQ(sentence(source()), "");
}

TEST_F(UnchangedFilesTest, ADeletedOutputIsMadeAgain)
{
    deleteFile(test.vault, output);
    EXPECT_EQ(sentence(source()), "");
}

TEST_F(UnchangedFilesTest, AFailureSinceThenCounts)
{
    const auto second = begin();
    auto failed = result({}, {});
    failed.outcome = zn::FileOutcome::Failed;
    second.writeResults({failed});
    end(second);
    EXPECT_EQ(sentence(source()), "");
}

} // namespace zn::arkin::test
