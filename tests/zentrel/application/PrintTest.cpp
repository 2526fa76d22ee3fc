#include "tests/support/SilentPrintingSystem.h"
#include "tests/zentrel/application/Workshop.h"

#include "platform/linux/FolderPrinters.h"
#include "tests/support/Shell.h"
#include "zentrel/application/MacroRunner.h"

#include <regex>

namespace zn::zentrel::test {

namespace {

using ::testing::IsEmpty;
using zn::test::outputOf;

/// Width and height of each page of a PDF in mm, "420x297".
std::vector<std::string> pageSizes(const std::filesystem::path& pdf)
{
    static const std::regex line("Page +\\d+ size: +([\\d.]+) x ([\\d.]+) pts");
    const std::string info = outputOf("pdfinfo -l 99 '" + pdf.string() + "'");
    std::vector<std::string> sizes;
    for (std::sregex_iterator it(info.begin(), info.end(), line), end; it != end; ++it) {
        const auto millimeters = [&](int group) {
            return std::to_string(std::lround(std::stod((*it)[static_cast<std::size_t>(group)]) / 72 * 25.4));
        };
        sizes.push_back(millimeters(1) + "x" + millimeters(2));
    }
    return sizes;
}

std::string pageText(const std::filesystem::path& pdf, int page)
{
    const auto number = std::to_string(page);
    return outputOf("pdftotext -f " + number + " -l " + number + " '" + pdf.string() + "' -");
}

class PrintTest : public ::testing::Test {
protected:
    PrintTest()
    {
        std::filesystem::create_directory(shop.file("plots"));
        shop.platform.registry().write(zn::RegistryRoot::Machine, Text(zn::folderPrintersKey) + u"\\Plotter",
            zn::printerFolderValue, zn::RegistryValue::text(shop.path("plots")), zn::RegistryView::Bits64);
        shop.makeDrawing("Plan.zendrw", {u"Front", u"Rear"});
        drawing = shop.open(shop.path("Plan.zendrw"), DocumentKind::Drawing);
        setup = objectOf(*drawing, u"PageSetup");
    }

    bool print(const DispatchRef& document, const Value& sheets = {}, std::int32_t copies = 1, bool collate = false,
        const char16_t* printer = u"Plotter")
    {
        return objectOf(*document, u"Extension")
            ->call(u"PrintOut2", {sheets, Value(copies), Value(collate), Value(printer), Value(u"")})
            .toBool();
    }
    void setMargins(double left, double top, double right, double bottom)
    {
        // Numbers of the preferences: use the printer's margins; top, bottom, left, right in metres.
        shop.application->call(u"SetUserPreferenceToggle", {Value(26), Value(false)});
        const double margins[] = {top, bottom, left, right};
        for (std::int32_t i = 0; i < 4; ++i)
            shop.application->call(u"SetUserPreferenceDoubleValue", {Value(i + 1), Value(margins[i] / 1000.0)});
    }
    std::vector<std::string> jobs() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(shop.file("plots")))
            names.push_back(entry.path().filename().string());
        std::ranges::sort(names);
        return names;
    }

    Workshop shop;
    DispatchRef drawing;
    DispatchRef setup;
};

TEST_F(PrintTest, PutsSheetsOnThePaperThatIsSet)
{
    // The number of the paper, the orientation, and the page that comes out.
    const std::tuple<std::int32_t, std::int32_t, const char*> papers[]
        = {{9, 1, "210x297"}, {9, 2, "297x210"}, {8, 2, "420x297"}, {66, 1, "420x594"}, {261, 1, "594x841"},
            {260, 2, "1189x841"}, {262, 1, "216x279"}, {263, 2, "432x279"}, {24, 1, "432x559"}, {25, 1, "559x864"},
            {26, 2, "1118x864"}, {77, 1, "297x210"}, {77, 2, "210x297"}};
    for (const auto& [paper, orientation, size] : papers) {
        setup->put(u"PrinterPaperSize", paper);
        setup->put(u"Orientation", orientation);
        ASSERT_TRUE(print(drawing, Value::arrayOf({Value(2)})));
        const auto file = shop.file("plots/Plan - Rear.pdf");
        EXPECT_THAT(pageSizes(file), ElementsAre(size)) << paper << ' ' << orientation;
        EXPECT_THAT(pageText(file, 1), HasSubstr("Rear"));
        std::filesystem::remove(file);
    }
    EXPECT_THROW(setup->put(u"PrinterPaperSize", 999), zn::StatusError);
    EXPECT_THROW(setup->put(u"Orientation", 3), zn::StatusError);
    EXPECT_THROW(setup->put(u"Scale2", 0.0), zn::StatusError);
    EXPECT_EQ(setup->call(u"Orientation").toInt32(), 2);

    objectOf(*drawing, u"Extension")->put(u"UsePageSetup", 2); // each sheet on its own paper
    ASSERT_TRUE(print(drawing));
    EXPECT_THAT(pageSizes(shop.file("plots/Plan.pdf")), ElementsAre("420x297", "420x297"));
}

TEST_F(PrintTest, MakesCopiesPageByPageOrSetBySet)
{
    ASSERT_TRUE(print(drawing, {}, 2, false));
    ASSERT_TRUE(print(drawing, {}, 2, true));
    const auto order = [&](const char* name) {
        std::string pages;
        for (int page = 1; page <= 4; ++page)
            pages += pageText(shop.file(name), page).find("Front") != std::string::npos ? 'F' : 'R';
        return pages;
    };
    EXPECT_THAT(jobs(), ElementsAre("Plan (2).pdf", "Plan.pdf"));
    EXPECT_EQ(order("plots/Plan.pdf"), "FFRR");
    EXPECT_EQ(order("plots/Plan (2).pdf"), "FRFR");
    ASSERT_TRUE(print(drawing, {}, 999));
    constexpr std::uintmax_t bytesOfPage = 800; // what a page takes besides its content, which is larger
    EXPECT_LT(std::filesystem::file_size(shop.file("plots/Plan (3).pdf")), bytesOfPage * 2 * 999);
}

TEST_F(PrintTest, KeepsWithinTheMargins)
{
    setMargins(30, 20, 10, 15);
    setup->call(u"SetHeader", {Value(u"upper\nsecond"), Value(u"middle"), Value(u"図 right")});
    setup->call(u"SetFooter", {Value(u"lower"), Value(u""), Value(u"")});
    ASSERT_TRUE(print(drawing, Value(1)));
    const auto file = "'" + shop.file("plots/Plan - Front.pdf").string() + "'";
    const std::string words = outputOf("pdftotext -bbox " + file + " -");
    const auto edge = [&](const char* word, const char* name) {
        const std::regex line(std::string(name) + "=\"([\\d.]+)\"[^>]*>" + word + "<");
        std::smatch found;
        EXPECT_TRUE(std::regex_search(words, found, line)) << word << " in " << words;
        return found.empty() ? 0.0 : std::stod(found[1]) / 72 * 25.4;
    };
    EXPECT_NEAR(edge("upper", "xMin"), 30.0, 0.5);
    EXPECT_NEAR(edge("upper", "yMin"), 20.0, 1.5);
    EXPECT_GT(edge("second", "yMin"), edge("upper", "yMax") - 1.0);
    EXPECT_NEAR(edge("right", "xMax"), 200.0, 0.5);
    EXPECT_NEAR(edge("lower", "yMax"), 297.0 - 15.0, 1.5);
    // The frame of the sheet is the only ink at the left: nothing in the left margin.
    outputOf("pdftoppm -gray -r 25.4 " + file + " '" + shop.file("page").string() + "'");
    std::istringstream picture(readFile(shop.file("page-1.pgm")));
    std::string type;
    std::size_t width = 0;
    std::size_t height = 0;
    std::size_t white = 0;
    picture >> type >> width >> height >> white;
    picture.get();
    std::size_t leftmost = width;
    for (std::size_t i = 0; i < width * height; ++i)
        if (static_cast<std::size_t>(picture.get()) != white)
            leftmost = std::min(leftmost, i % width);
    EXPECT_GE(leftmost, 29U);
    EXPECT_LE(leftmost, 39U);
}

TEST_F(PrintTest, PrintsTheViewOfPartsAndAssemblies)
{
    shop.makePart("Bar.zenprt", {u"Short", u"Long"});
    const auto part = shop.open(shop.path("Bar.zenprt"), DocumentKind::Part);
    part->call(u"ShowConfiguration", {Value(u"Long")});
    EXPECT_TRUE(print(part, Value(7))) << "a model has no sheets to choose from";
    shop.makeAssembly("Rack.zenasm");
    EXPECT_TRUE(print(shop.open(shop.path("Rack.zenasm"), DocumentKind::Assembly)));
    EXPECT_THAT(jobs(), ElementsAre("Bar - Long.pdf", "Rack.pdf"));
    EXPECT_THAT(pageSizes(shop.file("plots/Rack.pdf")), ElementsAre("210x297"));
}

TEST_F(PrintTest, TellsEachPrintedSheetWhenItIsTheCurrentOne)
{
    const auto events = std::make_shared<EventLog>();
    std::vector<Text> sheets;
    events->handler = [&](std::int32_t) {
        sheets.push_back(objectOf(*drawing, u"GetCurrentSheet")->call(u"GetName").toText());
        EXPECT_THAT(jobs(), ElementsAre("Plan.pdf"));
        return zn::S_OK;
    };
    objectOf(*drawing, u"GetFirstModelView")->advise(u"ModelViewEvents", events);
    drawing->call(u"ActivateSheet", {Value(u"Rear")});
    ASSERT_TRUE(print(drawing, {}, 3));
    EXPECT_THAT(events->events, ElementsAre(u"10", u"10")) << "one a sheet, not one a copy";
    EXPECT_THAT(sheets, ElementsAre(u"Front", u"Rear"));
    EXPECT_EQ(objectOf(*drawing, u"GetCurrentSheet")->call(u"GetName").toText(), u"Rear");
    EXPECT_FALSE(print(drawing, Value(3)));
    EXPECT_EQ(events->events.size(), 2U);
}

TEST_F(PrintTest, SaysWhatCannotBePrinted)
{
    const auto refusal = [&](bool printed) {
        EXPECT_FALSE(printed);
        Value count;
        const auto results = callWithResults(*shop.application, u"GetErrorMessages", {{}, {}, {}}, &count);
        EXPECT_EQ(count.toInt32(), 1);
        return zn::toUtf8((*results[0].get<zn::ArrayRef>())->elements.at(0).toText());
    };
    EXPECT_EQ(
        refusal(print(drawing, {}, 0)), "'Plan.zendrw' can't be printed 0 times; the number of copies is 1 to 999.");
    EXPECT_EQ(refusal(print(drawing, {}, 100000)),
        "'Plan.zendrw' can't be printed 100000 times; the number of copies is 1 to 999.");
    EXPECT_EQ(refusal(print(drawing, Value(3))),
        "The drawing 'Plan.zendrw' has 2 sheets; there is no sheet 3 to be printed.");
    EXPECT_EQ(refusal(print(drawing, {}, 1, false, u"")), "'Plan.zendrw' can't be printed: no printer was chosen.");
    EXPECT_EQ(refusal(print(drawing, {}, 1, false, u"Gone")),
        "There is no printer 'Gone' on this machine. 'arkin printers' lists those that there are.");
    setMargins(150, 0, 60, 0);
    EXPECT_EQ(refusal(print(drawing)),
        "The margins (150 mm left, 60 mm right, 0 mm top, 0 mm bottom) with header and footer leave no room on paper "
        "of 210 x 297 mm.");
    setMargins(-1, 0, 0, 0);
    EXPECT_EQ(refusal(print(drawing)), "A margin of -1 mm can't be printed; margins are 0 or more.");
    EXPECT_THAT(jobs(), IsEmpty());
    setMargins(0, 0, 0, 0);
    std::filesystem::remove_all(shop.file("plots"));
    EXPECT_THAT(refusal(print(drawing)), HasSubstr("which isn't there. Make the folder or give the printer another"));
}

/// The default macro with a task's settings, as the process gets it.
TEST_F(PrintTest, TheDefaultMacroPrintsASheetOnItsPaper)
{
    drawing->call(u"GetTitle");
    const std::map<std::string, std::string> settings
        = {{"<Filepath>", zn::toUtf8(shop.path("Plan.zendrw"))}, {"<VaultPath>", zn::toUtf8(shop.path("vault"))},
            {"<TaskInstanceGuid>", "run"}, {"<SelCfgOrSheet>", "rear"}, {"[ErrorLogPath]", "\\logs"},
            {"[__printer_prname]", "Plotter"}, {"[__printer_usedrwnfo]", "True"}, {"[__printer_copycount]", "2"},
            {"[__printer_headertype]", "2"}, {"[__printer_headerright]", "Printed"}, {"[__printer_papsize_DEF]", ""}};
    const auto run = [&](const std::map<std::string, std::string>& changed) {
        auto values = settings;
        for (const auto& [name, value] : changed)
            values[name] = value;
        writeFile(shop.file("print.znb"), macroWith("PrintFiles.bas", values));
        EXPECT_TRUE(runMacro(*shop.application, shop.path("print.znb"), u"ZNMacro1", u"main").success);
        std::string logged = readFile(shop.file("vault/logs/run.log"));
        std::filesystem::remove(shop.file("vault/logs/run.log"));
        return logged;
    };
    EXPECT_EQ(run({}), "");
    EXPECT_THAT(jobs(), ElementsAre("Plan - Rear.pdf"));
    EXPECT_THAT(pageSizes(shop.file("plots/Plan - Rear.pdf")), ElementsAre("420x297", "420x297"));
    EXPECT_THAT(pageText(shop.file("plots/Plan - Rear.pdf"), 2), HasSubstr("Printed"));
    EXPECT_EQ(shop.application->call(u"GetDocumentCount").toInt32(), 0);

    const std::string file = zn::toUtf8(shop.path("Plan.zendrw"));
    EXPECT_EQ(run({{"[__printer_prname]", "Gone"}}),
        "The printer 'Gone' for the Document  '" + file + "' is not a valid printer.\r\n");
    EXPECT_EQ(run({{"<SelCfgOrSheet>", ""}}),
        "Error while printing file '" + file
            + "': \r\nAn unexpected error occurred while executing the generated script. Script syntax error?\r\n"
              "Error number: 13\r\nError description: 'Type mismatch'\r\n\r\n")
        << "no sheet was chosen whose paper could be taken";
    EXPECT_EQ(run({{"[__printer_copycount]", "100000"}}),
        "Could not print file '" + file
            + "'. The following errors occured: \r\n'Plan.zendrw' can't be printed 100000 times; the number of copies "
              "is 1 to 999.\r\n\r\n");
    EXPECT_THAT(run({{"[__printer_margintype]", "2"}, {"[__printer_marginleft]", "1000"}}),
        HasSubstr("leave no room on paper of 420 x 297 mm."));
    EXPECT_EQ(jobs().size(), 1U);

    // Nobody can say that this printer isn't there.
    const zn::test::SilentPrintingSystem silent;
    EXPECT_EQ(run({{"[__printer_prname]", "Office"}}),
        "Could not print file '" + file
            + "'. The following errors occured: \r\nThe printer 'Office' can't be reached: the machine's printing "
              "system "
              "runs, but doesn't answer. Start it anew, then print again.\r\n\r\n");
}

} // namespace

} // namespace zn::zentrel::test
