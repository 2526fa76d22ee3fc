#include "zentrel/application/PrintOut.h"

#include "contracts/documents/DocumentError.h"
#include "contracts/objectmodel/Enumerations.h"
#include "zentrel/application/Application.h"
#include "zentrel/application/AssemblyDoc.h"
#include "zentrel/application/DocumentEvents.h"
#include "zentrel/application/DrawingDoc.h"
#include "zentrel/application/PageSetup.h"
#include "zentrel/application/PartDoc.h"
#include "zentrel/application/PrinterPaper.h"
#include "zentrel/model/WholeFile.h"

#include "base/Paths.h"
#include "platform/Printers.h"

#include <fmt/format.h>

namespace zn::zentrel {

namespace {

constexpr std::int32_t mostCopies = 999;
/// What a curve may be off on paper, in mm.
constexpr double tolerance = 0.02;

/// A request that can't be fulfilled, in a sentence.
[[noreturn]] void refuse(const std::string& sentence) { throw DocumentError(ErrorKind::InvalidArgument, sentence); }

/// One page to be printed, and what it shows: a sheet's place in the drawing, or none.
struct Item {
    const Sheet* sheet = nullptr;
    std::size_t index = 0;
};

std::vector<Item> chosenItems(const ModelDoc& document, const PrintRequest& request)
{
    const auto* drawing = dynamic_cast<const DrawingDoc*>(&document);
    if (!drawing)
        return {{}};
    const auto& sheets = drawing->drawing().sheets;
    std::vector<Item> items;
    for (const std::int32_t number : request.sheets) {
        if (number < 1 || static_cast<std::size_t>(number) > sheets.size())
            refuse(fmt::format("The drawing '{}' has {} sheets; there is no sheet {} to be printed.",
                zn::toUtf8(document.identity().title), sheets.size(), number));
        const auto index = static_cast<std::size_t>(number - 1);
        items.push_back({&sheets[index], index});
    }
    for (std::size_t i = 0; request.sheets.empty() && i < sheets.size(); ++i)
        items.push_back({&sheets[i], i});
    return items;
}

PageSettings settingsFor(ModelDoc& document, const PrintRequest& request, const Item& item)
{
    if (request.setup == PageSetupInUse::OfApplication)
        return {};
    PageSettings settings = document.pageSetup().settings();
    if (request.setup == PageSetupInUse::OfSheet && item.sheet) {
        settings.paper = printerPaperNumber(item.sheet->paper);
        settings.orientation = item.sheet->landscape ? PageOrientation::Landscape : PageOrientation::Portrait;
    }
    return settings;
}

/// `printerMargin` is what the printer leaves white, in mm.
PageLayout layoutOf(const PageSettings& settings, const Preferences& preferences, double printerMargin)
{
    constexpr double millimetersOfMeter = 1000.0;
    PageLayout layout;
    const PrinterPaper paper = printerPaper(settings.paper).value();
    const bool landscape = settings.orientation == PageOrientation::Landscape;
    layout.width = landscape ? paper.height : paper.width;
    layout.height = landscape ? paper.width : paper.height;
    const bool printers = preferences.toggle(preference::PageSetupUsePrinterMargin);
    const std::pair<double PageLayout::*, preference::Double> margins[] = {
        {&PageLayout::left, preference::LeftMargin},
        {&PageLayout::top, preference::TopMargin},
        {&PageLayout::right, preference::RightMargin},
        {&PageLayout::bottom, preference::BottomMargin},
    };
    for (const auto& [margin, number] : margins) {
        layout.*margin = printers ? printerMargin : preferences.decimal(number) * millimetersOfMeter;
        if (!(layout.*margin >= 0.0))
            refuse(fmt::format("A margin of {:g} mm can't be printed; margins are 0 or more.", layout.*margin));
    }
    layout.scale = settings.scaleToFit ? 0.0 : settings.scalePercent / 100.0;
    layout.header = settings.header;
    layout.footer = settings.footer;
    return layout;
}

/// What the document shows now, with hidden and suppressed components left out.
SheetPicture modelPicture(const ModelDoc& document)
{
    const auto file = document.machinePath();
    const Text configuration = document.activeConfiguration();
    ModelLoader loader;
    if (const auto* part = dynamic_cast<const PartDoc*>(&document))
        return pictureOfModel(*loader.load(part->part(), file, configuration), file);
    return pictureOfModel(
        *loader.load(static_cast<const AssemblyDoc&>(document).assembly(), file, configuration), file);
}

/// The document's name, and which of its sheets or configurations if there are several.
Text jobTitle(const ModelDoc& document, const std::vector<Item>& items)
{
    const Text title = zn::pathStem(document.identity().title);
    if (const auto* drawing = dynamic_cast<const DrawingDoc*>(&document))
        return drawing->drawing().sheets.size() > 1 && items.size() == 1 ? title + u" - " + items[0].sheet->name
                                                                         : title;
    return document.configurationNames().size() > 1 ? title + u" - " + document.activeConfiguration() : title;
}

zn::Printer printerFor(ModelDoc& document, const PrintRequest& request)
{
    const Text& name = request.printer.empty() ? document.printer() : request.printer;
    if (name.empty())
        refuse(fmt::format("'{}' can't be printed: no printer was chosen.", zn::toUtf8(document.identity().title)));
    Printers& printers = document.application().surroundings().printers;
    auto printer = printers.find(name);
    if (!printer && printers.isSilent())
        refuse(silenceOver(name));
    if (!printer)
        refuse(fmt::format("There is no printer '{}' on this machine. 'arkin printers' lists those that there are.",
            zn::toUtf8(name)));
    return *std::move(printer);
}

void deliver(Application& application, const PrintRequest& request, const zn::Printer& printer, const zn::PrintJob& job)
{
    if (request.file.empty())
        application.surroundings().printers.print(printer.name, job);
    else
        writeWhole(application.reachable(request.file), job.pdf);
}

std::vector<Item> print(ModelDoc& document, const PrintRequest& request)
{
    if (request.copies < 1 || request.copies > mostCopies)
        refuse(fmt::format("'{}' can't be printed {} times; the number of copies is 1 to {}.",
            zn::toUtf8(document.identity().title), request.copies, mostCopies));
    std::vector<Item> items = chosenItems(document, request);
    const zn::Printer printer = request.file.empty() ? printerFor(document, request) : zn::Printer{};
    SheetPainter painter(document.machinePath(), tolerance);
    std::vector<PrintPage> pages;
    for (const Item& item : items) {
        const PageSettings settings = settingsFor(document, request, item);
        PageLayout layout = layoutOf(settings, document.application().preferences(), printer.margin);
        pages.push_back({item.sheet ? painter.paint(*item.sheet) : modelPicture(document), std::move(layout)});
    }
    const zn::PrintJob job{.title = jobTitle(document, items),
        .pdf = printedPdf(pages, {.count = request.copies, .collate = request.collate}, document.machinePath()),
        .width = pages.front().layout.width,
        .height = pages.front().layout.height};
    deliver(document.application(), request, printer, job);
    return items;
}

} // namespace

bool printDocument(ModelDoc& document, const PrintRequest& request)
{
    if (!request.file.empty())
        document.application().reachable(request.file); // a refusal is the macro's error, not a failed print
    std::vector<Item> items;
    try {
        items = print(document, request);
    } catch (const DocumentError& error) {
        document.application().report(error.what());
        return false;
    } catch (const StatusError& error) {
        document.application().report(error.what());
        return false;
    }
    auto* drawing = dynamic_cast<DrawingDoc*>(&document);
    const std::size_t current = drawing ? drawing->drawing().active : 0;
    for (const Item& item : items) {
        if (drawing)
            drawing->showSheet(item.index);
        document.view()->fire(viewPrinted);
    }
    if (drawing)
        drawing->showSheet(current);
    return true;
}

} // namespace zn::zentrel
