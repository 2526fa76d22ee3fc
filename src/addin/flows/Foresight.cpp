#include "addin/flows/Foresight.h"

#include "addin/files/OutputNames.h"
#include "addin/flows/MacroReach.h"
#include "addin/installation/FormatLabels.h"
#include "addin/session/SavedFormats.h"
#include "base/Format.h"
#include "base/Paths.h"
#include "platform/Printers.h"

#include <algorithm>

namespace zn {

namespace {

constexpr std::int32_t printerByPaperSize = 2;
constexpr const char16_t* paperPrinters[] = {u"__printer_papsize_A", u"__printer_papsize_B", u"__printer_papsize_C",
    u"__printer_papsize_D", u"__printer_papsize_E", u"__printer_papsize_A0", u"__printer_papsize_A1",
    u"__printer_papsize_A2", u"__printer_papsize_A3", u"__printer_papsize_A4", u"__printer_papsize_DEF"};

/// The printers that the run may choose, each once; an empty name stands for the default one and is left out.
std::vector<Text> printersOf(const ObjectRef& task)
{
    std::vector<Text> names;
    const auto add = [&](TextView variable) {
        const Text name = readText(task, variable).value_or(Text());
        if (!name.empty() && std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(name);
    };
    if (readInteger(task, u"__printer_prseltype").value_or(0) != printerByPaperSize)
        add(u"__printer_prname");
    else
        for (const char16_t* variable : paperPrinters)
            add(variable);
    return names;
}

/// Which paper a drawing needs shows when it is open, so one printer that is there will do.
void lookForPrinters(const Platform& platform, const ObjectRef& task, std::vector<Text>& obstacles)
{
    const std::vector<Text> names = printersOf(task);
    const bool found = std::any_of(
        names.begin(), names.end(), [&](const Text& name) { return platform.printers.find(name).has_value(); });
    if (names.empty() || found || platform.printers.isSilent())
        return;
    Text list;
    for (const Text& name : names)
        list += (list.empty() ? u"'" : u", '") + name + u"'";
    obstacles.push_back(formatText(names.size() == 1
            ? "This machine has no printer %s. Set it up, or choose another one in the task ('arkin printer list')."
            : "This machine has none of the printers %s. Set one up, or choose others in the task ('arkin printer "
              "list').",
        list));
}

/// A 3D PDF is published and not saved, which the registration doesn't tell of.
void lookForFormat(
    const Platform& platform, const ObjectRef& task, const SelectionRecords& files, std::vector<Text>& obstacles)
{
    const Text label = readText(task, u"FileFormat").value_or(Text());
    const OutputFormat* format = findFormatInAnyLanguage(platform, label);
    if (files.empty() || !format || format->code == promptFormatCode || format->code == pdf3dFormatCode)
        return;
    const std::int32_t year = readInteger(task, u"__zn_version").value_or(0);
    const std::vector<Text> extensions = extensionsOf(format->label);
    const auto isRefused = [&](const std::unique_ptr<OutputRecord>& file) {
        return std::all_of(extensions.begin(), extensions.end(),
            [&](const Text& extension) { return savesAs(platform, year, file->path, extension) == false; });
    };
    if (!std::all_of(files.begin(), files.end(), isRefused))
        return;
    const Text name = pathFileName(files.front()->path);
    obstacles.push_back(formatText(files.size() == 1
            ? "The CAD application doesn't save '%s' as %s. Choose another format, or another file."
            : "The CAD application doesn't save '%s', nor any other of the files, as %s. Choose another format, or "
              "other files.",
        name, Text(format->label)));
}

} // namespace

ArkForesight foreseeRun(TaskContext& context, const std::shared_ptr<IArkVault>& vault,
    const std::shared_ptr<IArkTaskInstance>& instance, const ArkSelection& selection)
{
    if (!vault || !instance)
        throw StatusError(E_POINTER);
    ArkForesight foresight;
    const TaskKind kind = readKind(instance, true);
    if (kind == TaskKind::Printing)
        lookForPrinters(context.platform, instance, foresight.obstacles);
    if (kind != TaskKind::Conversion)
        return foresight;
    FileLogic files(context.platform);
    files.Initialize(vault, kind, false);
    SelectionRecords records;
    files.ExpandSelection(*vault, instance, selection, records, false);
    if (isOwnMacro(readText(instance, scriptVariable).value_or(Text())))
        lookForFormat(context.platform, instance, records, foresight.obstacles);
    foresight.outputs = files.ForeseeOutputs(instance, records);
    return foresight;
}

} // namespace zn
