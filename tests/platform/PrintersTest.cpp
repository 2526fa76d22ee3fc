#include "base/Status.h"
#include "platform/linux/CupsPrinters.h"
#include "tests/support/Failures.h"
#include "tests/support/Files.h"
#include "tests/support/SilentPrintingSystem.h"
#include "tests/support/TestPlatform.h"

#include <cups/cups.h>
#include <fstream>
#include <gmock/gmock.h>

namespace zn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::UnorderedElementsAre;

class PrintersTest : public ::testing::Test {
protected:
    // No queue of the machine that the test runs on.
    PrintersTest() { cupsSetServer("127.0.0.1:1"); }

public:
    ~PrintersTest() override { cupsSetServer(nullptr); }

protected:
    std::string failure(const char16_t* printer)
    {
        const Raised raised = raisedBy([&] { platform.machine.printers().print(printer, job); });
        return raised.status == S_OK ? "printed" : raised.sentence;
    }
    std::vector<std::string> names(const std::filesystem::path& folder)
    {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            found.push_back(entry.path().filename().string());
        return found;
    }
    std::filesystem::path makeFolder(const char* name)
    {
        std::filesystem::create_directory(platform.folder / name);
        return platform.folder / name;
    }

    TestPlatform platform;
    PrintJob job{.title = u"Plate: A/B", .pdf = "%PDF-1", .width = 210, .height = 297};
};

TEST_F(PrintersTest, AMachineWithoutPrintersHasNone)
{
    EXPECT_TRUE(platform.machine.printers().list().empty());
    EXPECT_EQ(failure(u"Plotter"),
        "There is no printer 'Plotter' on this machine. 'arkin printers' lists those that there are.");
}

TEST_F(PrintersTest, ListsFolderPrintersAndFindsThemInAnyCase)
{
    platform.addPrinter(u"Плоттер", u"Z:\\plots");
    platform.addPrinter(u"Archive", toText(makeFolder("archive").string()));
    platform.machine.registry().createKey(
        RegistryRoot::Machine, Text(folderPrintersKey) + u"\\Without", RegistryView::Bits64);
    std::vector<std::string> listed;
    for (const Printer& printer : platform.machine.printers().list()) {
        listed.push_back(toUtf8(printer.name));
        EXPECT_EQ(printer.kind, PrinterKind::Local);
    }
    EXPECT_THAT(listed, UnorderedElementsAre("Плоттер", "Archive"));
    EXPECT_EQ(platform.machine.printers().find(u"ПЛОТТЕР")->target, u"Z:\\plots");
    EXPECT_FALSE(platform.machine.printers().find(u"Plot"));
}

TEST_F(PrintersTest, EachJobIsAFileOfItsOwn)
{
    const auto folder = makeFolder("plots");
    platform.addPrinter(u"Plotter", platform.path("plots"));
    std::ofstream(folder / "Plate_ A_B.pdf") << "of a former job";
    EXPECT_EQ(failure(u"plotter"), "printed");
    job.pdf = "%PDF-2";
    EXPECT_EQ(failure(u"Plotter"), "printed");
    job.title = u"../.hidden" + Text(300, u'\x416');
    EXPECT_EQ(failure(u"Plotter"), "printed");

    const auto found = names(folder);
    EXPECT_EQ(found.size(), 4U);
    EXPECT_THAT(found, ::testing::Contains(::testing::StartsWith("Print.._.hidden\xD0\x96")));
    EXPECT_EQ(readFile(folder / "Plate_ A_B.pdf"), "of a former job");
    EXPECT_EQ(readFile(folder / "Plate_ A_B (2).pdf"), "%PDF-1");
    EXPECT_EQ(readFile(folder / "Plate_ A_B (3).pdf"), "%PDF-2");
}

TEST_F(PrintersTest, AFolderThatTakesNoFileIsNamed)
{
    platform.addPrinter(u"Gone", platform.path("gone"));
    platform.addPrinter(u"Fixed", u"/proc");
    EXPECT_EQ(failure(u"Gone"),
        "The printer 'Gone' prints into the folder '" + (platform.folder / "gone").string()
            + "', which isn't there. Make the folder or give the printer another one.");
    EXPECT_THAT(failure(u"Fixed"), HasSubstr("The printer 'Fixed' took no job: The folder '/proc' takes no file: "));
    EXPECT_FALSE(std::filesystem::exists(platform.folder / "gone"));
}

TEST_F(PrintersTest, ThePrintingSystemThatDoesNotAnswerIsLeft)
{
    const SilentPrintingSystem system;
    EXPECT_TRUE(CupsPrinters().list().empty());
    EXPECT_EQ(failure(u"Office"),
        "The printer 'Office' can't be reached: the machine's printing system runs, but doesn't answer. Start it anew, "
        "then print again.");
}

TEST(InstalledProductsTest, ListsTheNamesOfBothViews)
{
    TestPlatform platform;
    const auto write = [&](const char16_t* key, const char16_t* name, RegistryView view) {
        platform.machine.registry().write(RegistryRoot::Machine, Text(installedProductsKey) + u"\\" + key,
            productNameValue, RegistryValue::text(name), view);
    };
    write(u"{B}", u"ZENTREL 2018 SP0.0", RegistryView::Bits64);
    write(u"{A}", u"ZENTREL 2017 x64 Edition SP5.0", RegistryView::Bits64);
    write(u"{C}", u"", RegistryView::Bits64);
    write(u"{A}", u"ZENTREL 2008 SP1.0", RegistryView::Bits32);
    EXPECT_THAT(platform.ports().products.list(),
        ElementsAre(u"ZENTREL 2017 x64 Edition SP5.0", u"ZENTREL 2018 SP0.0", u"ZENTREL 2008 SP1.0"));
}

} // namespace
} // namespace zn::test
