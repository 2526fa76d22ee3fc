#include "automation/SocketRunningObjects.h"
#include "base/Format.h"
#include "tests/support/Shell.h"
#include "tests/zentrel/application/Workshop.h"

#include <thread>

namespace zn::zentrel::test {

namespace {

using namespace std::chrono_literals;
using zn::test::shell;

/// The exit code of a process, waited for half a minute at most; 259 if it still runs then.
std::uint32_t endOf(zn::LinuxProcesses& processes, std::int32_t id)
{
    for (int i = 0; i < 600 && processes.exitCode(id) == zn::stillActive; ++i)
        std::this_thread::sleep_for(50ms);
    return processes.exitCode(id).value_or(0);
}

class Process : public ::testing::Test {
protected:
    void start()
    {
        const zn::Text program = shop.platform.files().fromMachine(ZN_BIN_DIR "/ZENTREL.EXE");
        shop.platform.home().passToChildren();
        id = shop.platform.processes().launch(program + u" /B", 6).value();
        for (int i = 0; i < 600 && !root; ++i) {
            root = table->lookup(zn::formatText("Zentrel_PID_%d", id));
            std::this_thread::sleep_for(50ms);
        }
        ASSERT_NE(root, nullptr);
    }
    void TearDown() override { shop.platform.processes().terminate(id, 255); }

    Workshop shop;
    std::unique_ptr<zn::automation::SocketRunningObjects> table
        = std::make_unique<zn::automation::SocketRunningObjects>(shop.platform.home().runtimeFolder());
    std::int32_t id = 0;
    DispatchRef root;
};

TEST_F(Process, AMacroTellsItsSavesToTheClientThatConnectsWhileItRuns)
{
    start();
    shop.makePart("Bar.zenprt", {u"Default"});
    const std::string folder = zn::toUtf8(shop.path(""));
    writeFile(shop.file("test.znb"),
        "Sub main()\r\n"
        "    Dim spec, model, errors, warnings\r\n"
        "    Set spec = Application.Zentrel.GetOpenDocSpec(\""
            + folder
            + "\\Bar.zenprt\")\r\n"
              "    spec.DocumentType = znDocPART\r\n"
              "    Set model = Application.Zentrel.OpenDoc7(spec)\r\n"
              "    model.Extension.SaveAs \""
            + folder
            + "\\Bar.stl\", 0, 1, Nothing, errors, warnings\r\n"
              "    Application.Zentrel.QuitDoc model.GetTitle\r\n"
              "End Sub\r\n");
    const auto ofDocument = std::make_shared<EventLog>();
    ofDocument->handler = [&](std::int32_t number) {
        if (number == 7) {
            EXPECT_FALSE(std::filesystem::exists(shop.file("Bar.stl"))) << "announced before it is written";
        }
        return zn::S_OK;
    };
    const auto ofApplication = std::make_shared<EventLog>();
    ofApplication->handler = [&](std::int32_t) {
        objectOf(*root, u"GetFirstDocument")->advise(u"PartDocEvents", ofDocument);
        return zn::S_OK;
    };
    root->advise(u"ApplicationEvents", ofApplication);
    root->put(u"UserControlHidden", true);
    EXPECT_EQ(root->call(u"RevisionNumber").toText(), u"26.0.0");
    Value success;
    const auto results
        = callWithResults(*root, u"RunMacro2", {Value(shop.path("test.znb")), u"ZNMacro1", u"main", 0, -1}, &success);
    EXPECT_EQ(success, Value(true));
    EXPECT_EQ(results[4], Value(0));
    EXPECT_THAT(ofApplication->events, ElementsAre(u"22 " + shop.path("Bar.zenprt")));
    EXPECT_THAT(ofDocument->events, ElementsAre(u"7 " + shop.path("Bar.stl"), u"2"));
    EXPECT_TRUE(std::filesystem::exists(shop.file("Bar.stl")));

    writeFile(shop.file("test.znb"), "Sub main()\r\n    Nonsense\r\nEnd Sub\r\n");
    EXPECT_EQ(root->call(u"RunMacro", {Value(shop.path("test.znb")), u"ZNMacro1", u"main"}), Value(false));
    EXPECT_THAT(readFile(shop.platform.home().runtimeFolder() / "zentrel.log"), HasSubstr("test.znb:2:"));

    root->call(u"ExitApp");
    EXPECT_EQ(endOf(shop.platform.processes(), id), 0U);
}

TEST_F(Process, EndsWithItsClientAlsoInTheMiddleOfAMacro)
{
    start();
    const auto version
        = shop.platform.processes().fileVersion(shop.platform.files().fromMachine(ZN_BIN_DIR "/ZENTREL.EXE"));
    ASSERT_TRUE(version);
    EXPECT_EQ(version->major, 26);
    writeFile(shop.file("endless.znb"),
        "Sub main()\r\n    Open \"" + zn::toUtf8(shop.path("begun"))
            + "\" For Output As #1\r\n    Do\r\n    Loop\r\nEnd Sub\r\n");
    std::thread canceller([this] {
        while (!std::filesystem::exists(shop.file("begun")))
            std::this_thread::yield();
        table->cancel();
    });
    EXPECT_THROW(root->call(u"RunMacro", {Value(shop.path("endless.znb")), u"ZNMacro1", u"main"}), StatusError);
    canceller.join();
    EXPECT_EQ(endOf(shop.platform.processes(), id), 0U);
}

TEST_F(Process, AMacroEndsOnRequestAndTheApplicationGoesOn)
{
    start();
    const std::string begun = "Open \"" + zn::toUtf8(shop.path("begun")) + "\" For Output As #1\r\n";
    writeFile(shop.file("endless.znb"),
        "Sub main()\r\n    On Error Resume Next\r\n    " + begun + "    Do\r\n    Loop\r\nEnd Sub\r\n");
    writeFile(shop.file("good.znb"), "Sub main()\r\n    For i = 1 To 9999\r\n    Next\r\nEnd Sub\r\n");
    const zn::Text name = zn::formatText("Zentrel_PID_%d", id);
    table->requestStop(name); // nothing runs yet, so nothing ends
    EXPECT_EQ(root->call(u"RunMacro", {Value(shop.path("good.znb")), u"ZNMacro1", u"main"}), Value(true));
    std::thread asker([&] {
        while (!std::filesystem::exists(shop.file("begun")))
            std::this_thread::yield();
        table->requestStop(name);
    });
    EXPECT_EQ(root->call(u"RunMacro", {Value(shop.path("endless.znb")), u"ZNMacro1", u"main"}), Value(false));
    asker.join();
    EXPECT_EQ(root->call(u"RunMacro", {Value(shop.path("good.znb")), u"ZNMacro1", u"main"}), Value(true));
}

TEST(CommandLine, DoesItsWorkOrSaysWhyNot)
{
    Workshop shop;
    shop.makePart("Bar.zenprt", {u"Default"});
    writeFile(shop.file("good.znb"), "Sub main()\r\n    Debug.Print 6 * 7\r\nEnd Sub\r\n");
    writeFile(shop.file("bad.znb"), "Sub main()\r\n    x = = 1\r\nEnd Sub\r\n");
    const std::string data = "/usr/share/opencascade/data/step/screw.step";
    const struct {
        std::string arguments;
        int code;
        std::string printed; ///< a part of it
    } cases[] = {
        {"", 2, "subcommand"},
        {"--help", 0, "check-macro"},
        {"draw --help", 0, "NAME:SIZE[:landscape]=MODEL"},
        {"frobnicate", 2, "Try 'zentrel --help'."},
        {"import " + data + " Screw.zenprt --configuration Second=" + data, 0, ""},
        {"info Screw.zenprt", 0, "configuration Second: 1 bodies"},
        {"import Bar.zenprt Other.zenprt", 1, "zentrel: "},
        {"import " + data + " Other.zenprt --configuration =x", 2, "NAME=IN"},
        {"assemble Rack.zenasm Bar.zenprt --virtual Screw.zenprt", 0, ""},
        {"info Rack.zenasm --json", 0, "\"virtual\": true"},
        {"assemble Empty.zenasm", 2, "PART"},
        {"draw Plan.zendrw --sheet 'A: b:A3:landscape=Rack.zenasm' --sheet Two:a4=Bar.zenprt", 0, ""},
        {"info Plan.zendrw", 0, "sheet A: b: A3 landscape"},
        {"draw Plan.zendrw --sheet Two:A9=Bar.zenprt", 2, "A0 to A4"},
        {"info None.zenprt", 1, "None.zenprt"},
        {"run-macro good.znb", 0, " 42 \n"},
        {"run-macro none.znb", 1, "cannot be read"},
        {"check-macro good.znb --json", 0, "[]\n"},
        {"check-macro bad.znb", 1, "bad.znb:2:9: "},
        {"check-macro .", 1, "it is no file"},
        {"register", 0, "ZENTREL.EXE"},
        {"register --executable none", 1, "ZENTREL.EXE"},
    };
    const std::string program = "cd " + shop.folder.path().string() + " && " ZN_BIN_DIR "/zentrel --home home ";
    for (const auto& one : cases) {
        const auto [code, output] = shell(program + one.arguments);
        EXPECT_EQ(code, one.code) << one.arguments << '\n' << output;
        EXPECT_THAT(output, HasSubstr(one.printed)) << one.arguments;
    }
    const auto text = [&](const zn::Text& key, const zn::Text& name) {
        const auto value
            = shop.platform.registry().read(zn::RegistryRoot::Machine, key, name, zn::RegistryView::Bits64);
        return value ? value->asText() : std::nullopt;
    };
    const auto classId = text(u"SOFTWARE\\Classes\\Zentrel.Application.26\\CLSID", u"");
    ASSERT_TRUE(classId);
    EXPECT_EQ(text(u"SOFTWARE\\Classes\\CLSID\\" + *classId + u"\\ProgID", u""), u"Zentrel.Application.26");
    const auto folder = text(u"SOFTWARE\\Zentrel\\Zentrel 2018\\Setup", u"Zentrel Folder");
    ASSERT_TRUE(folder);
    EXPECT_TRUE(shop.platform.files().fileExists(*folder + u"\\ZENTREL.EXE"));
    EXPECT_EQ(shell(program + "unregister").code, 0);
    EXPECT_FALSE(text(u"SOFTWARE\\Classes\\Zentrel.Application.26\\CLSID", u""));
    EXPECT_EQ(shell(ZN_BIN_DIR "/ZENTREL.EXE /X").code, 2);
}

} // namespace

} // namespace zn::zentrel::test
