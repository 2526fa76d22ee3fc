#include "addin/macro/MacroText.h"
#include "addin/session/ZNManager.h"
#include "automation/SocketRunningObjects.h"
#include "base/Paths.h"
#include "platform/linux/LinuxPlatform.h"
#include "tests/support/TemporaryFolder.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <gmock/gmock.h>
#include <thread>

namespace zn::test {

namespace {

using ::testing::ElementsAre;

/// Keeps what it is told, with whether the file was there by then.
class Notes : public SavedFileNotes {
public:
    void NoteSavedFile(TextView path, TextView configuration, bool) override
    {
        lines.push_back(
            toUtf8(pathFileName(path)) + " " + toUtf8(configuration) + (files.fileExists(path) ? " too late" : ""));
    }
    void NotePrintedItem(TextView path, TextView configuration) override
    {
        lines.push_back("printed " + toUtf8(pathFileName(path)) + " " + toUtf8(configuration));
    }

    explicit Notes(FileSystem& fileSystem)
        : files(fileSystem)
    {
    }
    FileSystem& files;
    std::vector<std::string> lines;
};

/// The session against the application itself: registered, found, started, driven and closed.
class RealApplication : public ::testing::Test {
protected:
    void SetUp() override
    {
        ports.home().passToChildren();
        ASSERT_EQ(std::system((ZN_BIN_DIR "/zentrel register >/dev/null")), 0);
        for (const char* sample : {"Bracket.zenprt", "Stand.zenasm", "Чертёж.zendrw"})
            std::filesystem::copy_file(std::filesystem::path(ZN_SOURCE_DIR "/samples") / sample, folder / sample);
        manager.Configure(notes, TaskKind::General, nullptr, 2018);
    }

    Text path(const std::string& name) { return ports.files().fromMachine(folder / name); }
    /// How a macro begins that opens a document as `model`.
    static Text opening(const Text& document, const Text& type)
    {
        return u"Sub main()\r\n    Dim app, spec, model, errors, warnings, name\r\n    Set app = "
               u"Application.Zentrel\r\n"
               "    Set spec = app.GetOpenDocSpec(\""
            + document + u"\")\r\n    spec.DocumentType = " + type + u"\r\n    Set model = app.OpenDoc7(spec)\r\n";
    }
    std::int32_t processId() { return manager.GetApplication()->call(u"GetProcessID").toInt32(); }

    TemporaryFolder folder;
    LinuxPlatform ports{Home::open(folder / "home")};
    automation::SocketRunningObjects table{ports.home().runtimeFolder()};
    Platform platform = ports.with(table);
    Notes notes{ports.files()};
    ZNManager manager{platform};
};

TEST_F(RealApplication, RunsMacrosTellsTheirSavesAndLeaves)
{
    ASSERT_EQ(manager.Start(), S_OK) << toUtf8(manager.GetLastError());
    EXPECT_EQ(manager.GetRevisionText(), u"zn2018");
    const std::int32_t process = processId();
    const Text macro = opening(path("Bracket.zenprt"), u"znDocPART")
        + u"    For Each name In model.GetConfigurationNames\r\n"
          "        model.ShowConfiguration name\r\n"
          "        model.Extension.SaveAs \""
        + path("")
        + u"\\\" & name & \".stl\", 0, 1, Nothing, errors, warnings\r\n"
          "        If errors <> 0 Then Err.Raise 1000 + errors\r\n"
          "    Next\r\n"
          "    app.QuitDoc model.GetTitle\r\n"
          "End Sub\r\n";
    manager.RunMacro(macro);
    EXPECT_THAT(notes.lines, ElementsAre("Small.stl Small", "Medium.stl Medium", "Large.stl Large"));
    EXPECT_TRUE(std::filesystem::exists(folder / "Large.stl"));
    manager.AfterMacro();

    EXPECT_THROW(manager.RunMacro(u"Sub other()\r\nEnd Sub\r\n"), StatusError);
    EXPECT_EQ(manager.GetLastError(), u"Failed to run Zentrel macro. Reason: Invalid procedure name.");
    EXPECT_EQ(manager.Stop(true, S_OK), S_OK) << toUtf8(manager.GetLastError());
    EXPECT_EQ(ports.processes().exitCode(process), 0U) << "the process has left by itself";
}

TEST_F(RealApplication, TellsThePrintedSheetsOfATaskThatPrints)
{
    ports.registry().write(RegistryRoot::Machine, Text(folderPrintersKey) + u"\\Plots", printerFolderValue,
        RegistryValue::text(path("")), RegistryView::Bits64);
    const Text macro = opening(path("") + u"\\" + EncodeForMacroString(u"Чертёж") + u".zendrw", u"znDocDRAWING")
        + u"    model.Extension.PrintOut2 Empty, 2, False, \"Plots\", \"\"\r\n"
          "    model.Extension.PrintOut2 Empty, 1, False, \"Gone\", \"\"\r\n"
          "    app.QuitDoc model.GetTitle\r\n"
          "End Sub\r\n";
    manager.Configure(notes, TaskKind::Printing, nullptr, 2018);
    ASSERT_EQ(manager.Start(), S_OK) << toUtf8(manager.GetLastError());
    manager.RunMacro(macro);
    EXPECT_THAT(notes.lines, ElementsAre("printed Чертёж.zendrw Stand", "printed Чертёж.zendrw Bracket"));
    EXPECT_TRUE(std::filesystem::exists(folder / "Чертёж.pdf"));
    EXPECT_EQ(manager.Stop(true, S_OK), S_OK);
}

TEST_F(RealApplication, AProcessThatDiesInAMacroIsReplacedAndTheMacroRunsAgain)
{
    ASSERT_EQ(manager.Start(), S_OK) << toUtf8(manager.GetLastError());
    const std::int32_t first = processId();
    // The first run ends the process; the second finds the mark.
    const Text mark = path("mark");
    std::thread killer([&] {
        while (!ports.files().fileExists(mark))
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        kill(first, SIGKILL);
    });
    manager.RunMacro(u"Sub main()\r\n"
                     "    If Dir(\""
        + mark
        + u"\") <> \"\" Then Exit Sub\r\n"
          "    Open \""
        + mark
        + u"\" For Output As #1\r\n"
          "    Close #1\r\n"
          "    Do\r\n"
          "    Loop\r\n"
          "End Sub\r\n");
    killer.join();
    EXPECT_NE(processId(), first);
    EXPECT_EQ(manager.Stop(true, S_OK), S_OK);
}

} // namespace

} // namespace zn::test
