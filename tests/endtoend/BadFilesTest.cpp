#include "tests/endtoend/Plant.h"
#include "tests/support/Files.h"

#include <fstream>
#include <soci/soci.h>

// One night with bad files among good ones: the good ones are in the vault in the morning, each bad one has a sentence
// that names it, and whoever looks at the run sees how many there are.

namespace zn::test {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::Not;
namespace fs = std::filesystem;

namespace {

constexpr int goodFiles = 32;

/// Long enough for its macro text to be broken, with what looks like a joint of that text at a place for it.
std::string longName() { return "Фланец " + std::string(96, 'x') + " & " + std::string(24, 'y') + " & last.zenprt"; }

class BadFiles : public Plant {
protected:
    BadFiles()
    {
        for (int i = 1; i < goodFiles; ++i)
            names.push_back("good " + std::to_string(i) + ".zenprt");
        names.push_back(longName());
        for (const std::string& name : names)
            put(name);
        run("arkin variable add Note");
        run("arkin task create Night --kind convert --from " ZN_SOURCE_DIR "/samples/tasks/models-to-stl.json "
            "--set 'OutputPath=<Path>\\Out\\<Filename>' --set OutputPath2= --set OutputConfs=4 --set FileConfs=4");
    }

    /// Puts a part into the vault under this name, or what `content` holds.
    void put(const std::string& name, const std::string& content = {})
    {
        const fs::path source = folder / "sources" / name;
        fs::create_directories(source.parent_path());
        if (content.empty())
            fs::copy_file(ZN_SOURCE_DIR "/samples/Bracket.zenprt", source);
        else
            std::ofstream(source) << content;
        run("arkin add '" + source.string() + "' --to 'Models/" + fs::path(name).parent_path().string() + "'");
    }
    Text pathOf(const fs::path& file) { return machine.files().fromMachine(file); }
    fs::path output(const std::string& name) const
    {
        return model(name).parent_path() / "Out" / fs::path(name).stem().concat(".stl");
    }
    /// An output that stands in the vault already, checked out by somebody else on another machine.
    void checkOutElsewhere(const fs::path& file)
    {
        fs::create_directories(file.parent_path());
        std::ofstream(file) << "an older mesh";
        run("arkin add '" + file.string() + "' --to '" + file.parent_path().string() + "'");
        const auto place = vault().find(pathOf(file));
        ASSERT_TRUE(place);
        vault().database().session() << "INSERT INTO check_outs (file_id, folder_id, user_name, machine, taken_at, "
                                        "base_version, card_open, references_open) VALUES ("
                + std::to_string(place->fileId) + ", " + std::to_string(place->folderId)
                + ", 'bert', 'elsewhere', 1520258829, 1, 0, 0)";
    }
    void deny(const fs::path& inFolder, const zn::arkin::Rights& rights)
    {
        const auto id = vault().findFolder(pathOf(inFolder));
        ASSERT_TRUE(id) << inFolder;
        vault().permissions().set(*id, toText(vault().caller().user), rights);
    }

    std::vector<std::string> names;
};

} // namespace

TEST_F(BadFiles, CostOnlyThemselves)
{
    for (const char* bad : {"changed.zenprt", "Secret/hidden.zenprt", "deleted.zenprt", "taken.zenprt",
             "Locked/locked.zenprt", "early.zenprt"})
        put(bad);
    put("поломка.zenprt", "no part at all");
    put("readme.txt", "no CAD file");
    fs::create_directories(model("Locked/Out"));
    checkOutElsewhere(output("taken.zenprt"));

    ArkSelection selection;
    for (const char* bad : {"changed.zenprt", "Secret/hidden.zenprt", "deleted.zenprt", "поломка.zenprt", "readme.txt"})
        selection.push_back(selected(bad));
    for (const std::string& name : names)
        selection.push_back(selected(name));
    for (const char* bad : {"taken.zenprt", "Locked/locked.zenprt", "early.zenprt"})
        selection.push_back(selected(bad));
    selection.back().version = 9;
    ASSERT_EQ(selection.size(), 40U);
    const std::string id = std::to_string(launch(u"Night", selection, {}));

    // What happens between the launch and the night.
    fs::permissions(model("changed.zenprt"), fs::perms::owner_all);
    std::ofstream(model("changed.zenprt"), std::ios::app) << "by hand";
    deny(model("Secret"), {false, true, true});
    deny(model("Locked"), {true, false, true});
    removeFromVault("deleted.zenprt");

    const std::string worker = run("arkin worker --once; test $? = 3");
    EXPECT_THAT(worker, HasSubstr("finished, 8 of 40 failed."));
    EXPECT_THAT(run("arkin task status"), HasSubstr("finished, 8 of 40 failed"));
    EXPECT_THAT(run("arkin task list"), HasSubstr("finished, 8 of 40 failed"));
    EXPECT_THAT(run("arkin task status " + id + " --json"), HasSubstr("\"missing\": 8"));

    for (const std::string& name : names) {
        const auto place = vault().find(pathOf(output(name)));
        ASSERT_TRUE(place) << name;
        EXPECT_FALSE(vault().files().checkOut(place->fileId)) << name;
        EXPECT_GT(fs::file_size(output(name)), 1000U) << name;
    }
    const struct {
        const char* where;
        const char* sentence;
    } rows[] = {
        {"changed.zenprt", "changed.zenprt holds changes that the vault does not know"},
        {"hidden.zenprt", "no permission to read files of the folder .Models.Secret"},
        {"deleted.zenprt", "was deleted from the vault"},
        {"поломка.zenprt", "поломка.zenprt' failed. Error code"},
        {"readme.txt", "The file extension 'txt' is not supported"},
        {"taken.stl", "\"taken.stl\" is checked out by bert on elsewhere since 2018-03-0"},
        {"locked.stl", "no permission to add files to the folder .Models.Locked"},
        {"early.zenprt", "\"early.zenprt\" has no version 9; its latest is 1"},
    };
    const std::string log = run("arkin task log " + id);
    const std::string status = run("arkin task status " + id);
    for (const auto& row : rows) {
        EXPECT_THAT(log, ContainsRegex(row.sentence));
        EXPECT_THAT(status, ContainsRegex("message +.*" + std::string(row.where) + ".*" + row.sentence));
    }
    EXPECT_THAT(vault().file(vault().find(pathOf(output("taken.zenprt")))->fileId).latestVersion, 1);
}

TEST_F(BadFiles, ADoneFileTellsWhatItsOutputLacks)
{
    // A box with a face beside it that has no area and gets no triangle.
    put("thin.zenprt", zn::test::readFile(ZN_SOURCE_DIR "/tests/endtoend/files/thin face.zenprt"));
    const std::string id = std::to_string(launch(u"Night", {selected("thin.zenprt")}, {}));
    run("arkin worker --once");
    EXPECT_THAT(run("arkin task status"), Not(HasSubstr("missing")));
    EXPECT_GT(fs::file_size(output("thin.zenprt")), 600U);
    const std::string sentence = "was written with 1 face left out";
    for (const std::string& command : {"task log " + id, "task status " + id, "task status " + id + " --json"})
        EXPECT_THAT(run("arkin " + command), HasSubstr(sentence)) << command;
}

} // namespace zn::test
