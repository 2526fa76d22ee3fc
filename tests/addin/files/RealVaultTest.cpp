#include "arkin/vault/VaultObject.h"
#include "base/Format.h"
#include "base/Paths.h"
#include "tests/addin/files/FilesFixture.h"
#include "tests/arkin/VaultFixture.h"

namespace zn {

/// The road of a conversion's files through the embedded vault: what is in the database and the archive afterwards.
class RealVault : public ::testing::Test {
protected:
    RealVault()
    {
        title = real.vault.cards().addVariable(u"Title");
        note = real.vault.cards().addVariable(u"Note");
        const zn::arkin::Place part = real.addReleased("parts/flange.zenprt", "part");
        const zn::arkin::Place step = real.addReleased("parts/pump.step", "step");
        real.vault.setRevision(part.fileId, u"B");
        writeCard(part, u"Long", u"Long flange");
        writeCard(step, u"@", u"Pump");
        items = {{part.fileId, part.folderId, real.path("parts/flange.zenprt"), u"", ArkItemType::File, 0},
            {step.fileId, step.folderId, real.path("parts/pump.step"), u"", ArkItemType::File, -1}};
        host.taskVariables = {{u"FileCardData", u"Title;100;Title\nNote;4;\n"}, {u"RefToSource", true}};
    }

    void writeCard(const zn::arkin::Place& place, const char16_t* configuration, const char16_t* text)
    {
        zn::arkin::checkOut(real.vault, place);
        const zn::arkin::CardWrite write{place.fileId, title, configuration, Value(text)};
        const std::int32_t version = real.vault.file(place.fileId).latestVersion + 1;
        real.vault.cards().write({&write, 1}, {&version, 1});
        real.checkInAll({place});
    }

    void convert(bool replaceExisting)
    {
        logic.Initialize(vault, TaskKind::Conversion, replaceExisting);
        selection.clear();
        logic.ExpandSelection(*vault, host.task(), items, selection, true);
        for (const auto& [source, name, configuration] :
            {std::tuple(0, "out/flange.stl", u"Long"), std::tuple(1, "out/pump.stl", u"Default")}) {
            logic.SetCurrentSource(selection[static_cast<std::size_t>(source)].get());
            logic.NoteSavedFile(real.path(name), configuration, false);
            zn::arkin::test::writeFile(real.local(name), std::string("mesh ") + name + (replaceExisting ? " 2" : ""));
        }
        std::vector<std::string> lines;
        EXPECT_EQ(logic.AddResultsToVault(*vault, host.task(),
                      [&](Status, const Text& text, const Text&) { lines.push_back(toUtf8(text)); }),
            S_OK);
        EXPECT_EQ(lines, std::vector<std::string>());
    }

    /// "Title, Note, what it refers to" of the latest version.
    std::string describe(const char* name)
    {
        const auto place = real.vault.find(real.path(name));
        if (!place)
            return "not there";
        const zn::arkin::FileRow file = real.vault.file(place->fileId);
        std::string text = "v" + std::to_string(file.latestVersion);
        for (const std::int32_t variable : {title, note}) {
            const auto value = real.vault.cards().value(file.id, file.latestVersion, variable, u"@");
            text += ", " + (value ? toUtf8(value->toText()) : "none");
        }
        for (const zn::arkin::ReferenceRow& reference : real.vault.references().from(file.id, file.latestVersion))
            text += " > " + toUtf8(real.vault.file(reference.toFileId).name);
        return text + (real.vault.files().checkOut(file.id) ? " (out)" : "");
    }

    test::TestPlatform platform;
    Platform ports = platform.ports();
    zn::arkin::test::TestVault real{platform.folder.path()};
    std::shared_ptr<IArkVault> vault = std::make_shared<zn::arkin::VaultObject>(real.vault);
    test::FakeHost host; ///< for the task's variables only
    FileLogic logic{ports};
    SelectionRecords selection;
    ArkSelection items;
    std::int32_t title = 0;
    std::int32_t note = 0;
};

TEST_F(RealVault, GetsNewFilesThenNewVersionsThenNewFilesInTheirPlace)
{
    convert(false);
    EXPECT_EQ(describe("out/flange.stl"), "v1, Long flange, B > flange.zenprt");
    EXPECT_EQ(describe("out/pump.stl"), "v1, Pump,  > pump.step");
    EXPECT_TRUE(zn::arkin::test::isReadOnly(real.local("out/flange.stl")));
    EXPECT_EQ(effectiveVersion(*selection[1]), 2);
    const std::int32_t first = real.vault.find(real.path("out/flange.stl"))->fileId;

    convert(false);
    EXPECT_EQ(describe("out/flange.stl"), "v2, Long flange, B > flange.zenprt");
    EXPECT_EQ(real.vault.find(real.path("out/flange.stl"))->fileId, first);

    platform.pipe.messages.clear();
    convert(true);
    EXPECT_EQ(platform.pipe.messages.size(), 8U) << "four for each file that was deleted";
    EXPECT_EQ(describe("out/flange.stl"), "v1, Long flange, B > flange.zenprt");
    EXPECT_NE(real.vault.find(real.path("out/flange.stl"))->fileId, first);
    EXPECT_EQ(zn::arkin::test::readFile(real.local("out/pump.stl")), "mesh out/pump.stl 2");
    EXPECT_EQ(logic.CollectResultFiles(false).size(), 2U);
}

TEST_F(RealVault, RefersToTheVersionThatWasWorkedOn)
{
    items[0].version = 1;
    convert(false);
    const std::int32_t output = real.vault.find(real.path("out/flange.stl"))->fileId;
    EXPECT_EQ(real.vault.file(items[0].fileId).latestVersion, 2);
    EXPECT_EQ(real.vault.references().from(output, 1).at(0).toVersion, 1);
    EXPECT_EQ(real.vault.references().from(real.vault.find(real.path("out/pump.stl"))->fileId, 1).at(0).toVersion, 2);
    EXPECT_EQ(logic.CountOutputs(selection).missing, 0);
}

TEST_F(RealVault, TakesFilesAsTheyComeAndFoldersByTheirExtensions)
{
    for (const char* name : {"p/a.ZENASM", "p/b.prt", "p/README", "p/q/c.Step", "p/d.xls"})
        real.addReleased(name, name);
    std::filesystem::create_directory(real.local("p/empty"));
    const auto expanded = [&](TaskKind kind, const ArkSelection& chosen) {
        logic.Initialize(vault, kind, false);
        selection.clear();
        logic.ExpandSelection(*vault, host.task(), chosen, selection, false);
        std::vector<std::string> lines;
        for (const auto& record : selection)
            lines.push_back(toUtf8(formatText("%s v%d latest %d '%s'%s", pathFileName(record->path), record->version,
                record->latestVersion, record->selConfiguration, record->isCadFile ? " cad" : "")));
        return lines;
    };
    using Lines = std::vector<std::string>;
    const ArkSelItem folder{2, 1, real.path("p"), u"", ArkItemType::Folder, 0};
    EXPECT_EQ(expanded(TaskKind::Conversion,
                  {{15, 2, real.path("p/d.xls"), u"", ArkItemType::File, 3},
                      {13, 2, real.path("p/README"), u"", ArkItemType::File, 1}, folder,
                      {9, 9, real.path("unknown"), u"", ArkItemType::Folder, 0},
                      {9, 9, real.path("x.step"), u"", static_cast<ArkItemType>(3), 0},
                      {7, 3, real.path("parts/flange.zenprt"), u"Long", ArkItemType::File, -1}}),
        (Lines{"d.xls v3 latest -1 ''", "a.ZENASM v1 latest -1 '' cad", "c.Step v1 latest -1 ''",
            "flange.zenprt v-1 latest -1 'Long' cad"}));
    // The kind of a task that isn't known yet is read; printing takes all files of a folder.
    host.taskVariables[u"__type"] = 2;
    EXPECT_EQ(expanded(TaskKind::Unknown, {folder}),
        (Lines{"a.ZENASM v1 latest -1 '' cad", "b.prt v1 latest -1 ''", "d.xls v1 latest -1 ''",
            "README v1 latest -1 ''", "c.Step v1 latest -1 ''"}));
    for (const auto& record : selection)
        EXPECT_EQ((zn::arkin::Place{record->docId, record->projId}), real.vault.find(record->path));
    EXPECT_TRUE(expanded(TaskKind::Conversion, {}).empty());
}

TEST_F(RealVault, TellsOfAFileThatMayNotBeReplaced)
{
    convert(false);
    const auto folder = real.vault.findFolder(real.path("out"));
    real.vault.permissions().set(*folder, u"anna", {true, true, false});
    logic.Initialize(vault, TaskKind::Conversion, true);
    logic.SetCurrentSource(selection[0].get());
    for (int save = 0; save < 2; ++save) // told once
        logic.NoteSavedFile(real.path("out/flange.stl"), u"Long", false);
    const std::vector<FileFailure> failures = logic.TakeFailures();
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].path, real.path("out/flange.stl"));
    EXPECT_EQ(toUtf8(failures[0].sentence),
        "The file in the vault was not replaced: \"flange.stl\": anna has no permission to delete files from the "
        "folder "
        "\\out.");
    EXPECT_TRUE(logic.HasResults(*selection[0]));
    const OutputTally tally = logic.CountOutputs(selection);
    EXPECT_EQ(std::pair(tally.expected, tally.missing), std::pair(2, 2)); // the other gave nothing at all
}

TEST_F(RealVault, CountsAnOutputThatWasNotSavedAgain)
{
    convert(false);
    const struct {
        bool complained = false; ///< the macro has logged something
        const char* saved = "";
        int missing = 0;
        bool old = false; ///< it has stood there for a while
    } rows[] = {{true, "", 1}, {true, "finer mesh", 0}, {false, "", 0}, {false, "", 1, true}, {false, "last", 0, true}};
    for (const auto& row : rows) {
        if (row.old)
            std::filesystem::last_write_time(real.local("out/flange.stl"),
                std::filesystem::file_time_type::clock::now() - std::chrono::hours(200'000));
        logic.Initialize(vault, TaskKind::Conversion, false);
        logic.SetCurrentSource(selection[0].get());
        logic.NoteSavedFile(real.path("out/flange.stl"), u"Long", false);
        selection[0]->complained = row.complained;
        if (*row.saved)
            zn::arkin::test::writeFile(real.local("out/flange.stl"), row.saved);
        logic.NoteUnkeptSaves();
        EXPECT_EQ(logic.TakeFailures().size(), row.old ? row.missing : 0);
        EXPECT_EQ(logic.AddResultsToVault(*vault, host.task(), [](Status, const Text&, const Text&) {}), S_OK);
        const OutputTally tally = logic.CountOutputs(selection);
        // The other file gave nothing at all.
        EXPECT_EQ(std::pair(tally.expected, tally.missing), std::pair(2, 1 + row.missing)) << row.saved;
    }
}

TEST_F(RealVault, KeepsTheLogAsAFileOfItsOwn)
{
    const Text log = real.path("Logs/Nightly/run.log");
    logic.Initialize(vault, TaskKind::Conversion, false);
    logic.PrepareLogFile(u"");
    logic.PrepareLogFile(log);
    zn::arkin::test::writeFile(real.local("Logs/Nightly/run.log"), "one");
    logic.CommitLogFile(log);
    EXPECT_EQ(describe("Logs/Nightly/run.log"), "v1, none, none");

    logic.PrepareLogFile(real.path("Logs/Nightly") + u"\\.\\run.log");
    logic.PrepareLogFile(log); // by this run already
    EXPECT_EQ(describe("Logs/Nightly/run.log"), "v1, none, none (out)");
    EXPECT_TRUE(ports.files.appendBytes(log, " two"));
    logic.CommitLogFile(log);
    EXPECT_EQ(describe("Logs/Nightly/run.log"), "v2, none, none");
    EXPECT_EQ(zn::arkin::test::readFile(real.local("Logs/Nightly/run.log")), "one two");
}

} // namespace zn
