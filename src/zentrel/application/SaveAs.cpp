#include "zentrel/application/SaveAs.h"

#include "contracts/documents/DocumentError.h"
#include "zentrel/application/Application.h"
#include "zentrel/application/AssemblyDoc.h"
#include "zentrel/application/DocumentEvents.h"
#include "zentrel/application/DrawingDoc.h"
#include "zentrel/application/ExportData.h"
#include "zentrel/application/PartDoc.h"
#include "zentrel/formats/Raster.h"
#include "zentrel/formats/Read.h"
#include "zentrel/model/Container.h"

#include "base/Paths.h"

#include <fmt/format.h>

namespace zn::zentrel {

namespace {

/// One save that is under way.
struct Save {
    ModelDoc& document;
    const SaveRequest& request;
    Text path;                    ///< canonical
    std::filesystem::path target; ///< the same on this machine

    const Preferences& preferences() const { return document.application().preferences(); }
    void report(const Remarks& remarks) const
    {
        for (const std::string& sentence : remarks)
            document.application().remark(sentence);
    }
};

/// A listener did not want the file to be written.
struct Refused {
    Text path;
};

/// Tells the listeners that a file is about to be written; nothing of it exists yet.
void announce(Save& save, const Text& path)
{
    Status status = save.document.fire(documentSaving, {Value(path)});
    const Text extension = zn::pathExtension(path);
    if (zn::equalNoCase(extension, u".dxf") || zn::equalNoCase(extension, u".dwg")) {
        static constexpr std::int32_t exchange[]
            = {0, partSavingExchange, assemblySavingExchange, drawingSavingExchange};
        const Status second = save.document.fire(exchange[static_cast<int>(save.document.kind())], {Value(path)});
        status = zn::failed(status) ? status : second;
    }
    if (zn::failed(status))
        throw Refused{path};
}

/// What the document shows now, with hidden and suppressed components left out.
ModelRef shownModel(Save& save)
{
    const auto file = save.document.machinePath();
    const Text configuration = save.document.activeConfiguration();
    ModelLoader loader;
    if (const auto* part = dynamic_cast<const PartDoc*>(&save.document))
        return loader.load(part->part(), file, configuration);
    return loader.load(static_cast<const AssemblyDoc&>(save.document).assembly(), file, configuration);
}

/// Writes a model into one file, or each component into a file of its own. A foreign file is one file, whatever levels
/// it has: its components are no documents that somebody could look for.
template <class Write> void writeModel(Save& save, bool oneFile, const Write& write)
{
    const ModelRef model = shownModel(save);
    if (oneFile || model->children.empty() || save.document.isForeign()) {
        announce(save, save.path);
        save.report(write(*model, save.target));
        return;
    }
    const Text folder = zn::pathFolder(save.path);
    for (const ModelFile& one : componentFiles(model, save.target)) {
        const Text path = zn::pathAppend(folder, zn::toText(one.file.filename().string()));
        save.document.application().reachable(path);
        announce(save, path);
        save.report(write(*one.model, one.file));
    }
}

void saveStep(Save& save)
{
    const StepOptions options = save.preferences().stepOptions();
    save.document.application().noteMesh({});
    writeModel(save, true, [&](const Model& model, const auto& file) { return writeStep(model, file, options); });
}

void saveIges(Save& save)
{
    const IgesOptions options = save.preferences().igesOptions();
    save.document.application().noteMesh({});
    writeModel(save, save.preferences().toggle(preference::IgesComponentsIntoOneFile),
        [&](const Model& model, const auto& file) { return writeIges(model, file, options); });
}

void saveStl(Save& save)
{
    const StlOptions options = save.preferences().stlOptions();
    save.document.application().noteMesh(options.quality);
    writeModel(save, save.preferences().toggle(preference::StlComponentsIntoOneFile),
        [&](const Model& model, const auto& file) { return writeStl(model, file, options); });
}

void saveVrml(Save& save)
{
    const VrmlOptions options = save.preferences().vrmlOptions();
    save.document.application().noteMesh(options.quality);
    writeModel(save, save.preferences().toggle(preference::VrmlAllComponentsInSingleFile),
        [&](const Model& model, const auto& file) { return writeVrml(model, file, options); });
}

void saveXaml(Save& save)
{
    save.document.application().noteMesh(MeshQuality::Coarse);
    writeModel(save, true, [](const Model& model, const auto& file) { return writeXaml(model, file); });
}

/// The sheets that the caller named, the active one where he named it, else `otherwise`; empty means all.
std::vector<Text> chosenSheets(const Save& save, std::vector<Text> otherwise)
{
    const DrawingDocument& drawing = static_cast<DrawingDoc&>(save.document).drawing();
    if (save.request.pdf && save.request.pdf->which() == SheetsToExport::Specified)
        return save.request.pdf->sheets();
    if (save.request.pdf && save.request.pdf->which() == SheetsToExport::Current)
        return {drawing.sheets[drawing.active].name};
    return otherwise;
}

void savePdf(Save& save)
{
    PdfOptions options = save.preferences().pdfOptions();
    if (save.document.kind() != DocumentKind::Drawing) {
        save.document.application().noteMesh({});
        const ModelRef model = shownModel(save);
        announce(save, save.path);
        return writePdf(*model, save.document.machinePath(), save.target, options);
    }
    options.sheets = chosenSheets(save, {});
    announce(save, save.path);
    writePdf(static_cast<DrawingDoc&>(save.document).drawing(), save.document.machinePath(), save.target, options);
}

/// Of a model's picture, in pixels.
constexpr int pictureWidth = 1600, pictureHeight = 1200;
/// What a curve may be off on a sheet, in mm.
constexpr double pictureTolerance = 0.05;

/// Each picture of a document: of a model from an isometric direction, of a drawing the sheets.
void forEachPicture(Save& save, const std::function<void(const Raster& picture)>& work)
{
    const auto file = save.document.machinePath();
    if (save.document.kind() != DocumentKind::Drawing) {
        save.document.application().noteMesh(MeshQuality::Coarse);
        return work(rasterOf(*shownModel(save), {.width = pictureWidth, .height = pictureHeight}, file));
    }
    const DrawingDocument& drawing = static_cast<DrawingDoc&>(save.document).drawing();
    SheetPainter painter(file, pictureTolerance);
    for (const Sheet* sheet : sheetsNamed(drawing, chosenSheets(save, {drawing.sheets[drawing.active].name}), file))
        work(rasterOf(painter.paint(*sheet)));
}

void saveTiff(Save& save)
{
    const TiffOptions options = save.preferences().tiffOptions();
    announce(save, save.path);
    save.report(writeTiff(save.target, options, [&](const AddPage& add) { forEachPicture(save, add); }));
}

/// A JPEG has one picture, so of several sheets the first.
void saveJpeg(Save& save)
{
    std::optional<Raster> first;
    announce(save, save.path);
    forEachPicture(save, [&](const Raster& picture) {
        if (!first)
            first = picture;
    });
    writeJpeg(first.value(), save.target);
}

void saveDxf(Save& save)
{
    announce(save, save.path);
    writeDxf(static_cast<DrawingDoc&>(save.document).drawing(), save.document.machinePath(), save.target);
}

void saveNative(Save& save)
{
    const bool own = zn::equalNoCase(save.path, zn::canonicalPath(save.document.identity().path));
    if (own && save.document.identity().readOnly)
        throw DocumentError(
            ErrorKind::NotWritable, quoted(save.target) + " is opened read-only and can't be written under its name.");
    announce(save, save.path);
    writeDocument(save.document.record(), save.target);
    if ((save.request.options & SaveCopy) == 0)
        save.document.setPath(save.path);
}

/// A part is another document than the assembly, which stays what it is.
void saveAsPart(Save& save)
{
    announce(save, save.path);
    writeDocument(
        asPart(save.document.record(), save.document.machinePath(), save.document.activeConfiguration()), save.target);
}

constexpr int part = 1 << static_cast<int>(DocumentKind::Part);
constexpr int assembly = 1 << static_cast<int>(DocumentKind::Assembly);
constexpr int drawing = 1 << static_cast<int>(DocumentKind::Drawing);

/// Who can be saved as what.
struct SaveFormat {
    const char16_t* extension;
    int kinds;
    void (*save)(Save&);
};
constexpr SaveFormat saveFormats[] = {
    {u".step", part | assembly, saveStep},
    {u".stp", part | assembly, saveStep},
    {u".igs", part | assembly, saveIges},
    {u".iges", part | assembly, saveIges},
    {u".stl", part | assembly, saveStl},
    {u".wrl", part | assembly, saveVrml},
    {u".xaml", part | assembly, saveXaml},
    {u".pdf", part | assembly | drawing, savePdf},
    {u".tif", part | assembly | drawing, saveTiff},
    {u".jpg", part | assembly | drawing, saveJpeg},
    {u".dxf", drawing, saveDxf},
    {u".zenprt", part, saveNative},
    {u".zenprt", assembly, saveAsPart},
    {u".zenasm", assembly, saveNative},
    {u".zendrw", drawing, saveNative},
};

const SaveFormat* formatOf(const Text& path, DocumentKind kind)
{
    const Text extension = zn::pathExtension(path);
    for (const SaveFormat& format : saveFormats)
        if (zn::equalNoCase(extension, format.extension) && (format.kinds & (1 << static_cast<int>(kind))) != 0)
            return &format;
    return nullptr;
}

/// A format that can't hold the document is told by the same number as one that isn't known.
constexpr std::pair<ErrorKind, FileSaveError> saveErrors[] = {
    {ErrorKind::Unsupported, SaveInvalidExtension},
    {ErrorKind::NotWritable, SaveNotWritable},
    {ErrorKind::NotFound, SaveReferenceMissing},
};

std::int32_t saveError(ErrorKind kind)
{
    for (const auto& [known, number] : saveErrors)
        if (known == kind)
            return number;
    return SaveGenericError;
}

} // namespace

std::vector<Text> savedExtensions(DocumentKind kind)
{
    std::vector<Text> extensions;
    for (const SaveFormat& format : saveFormats)
        if ((format.kinds & (1 << static_cast<int>(kind))) != 0)
            extensions.emplace_back(format.extension);
    return extensions;
}

SaveOutcome saveDocument(ModelDoc& document, const SaveRequest& request)
{
    Application& application = document.application();
    const auto refuse = [&](std::int32_t errors, const std::string& sentence) {
        application.report(sentence);
        return SaveOutcome{.errors = errors};
    };
    if (request.path.empty())
        return refuse(SaveEmptyName, "A document cannot be saved without a file name.");
    // The folder that a worker happens to be started in is nobody's choice.
    if (!zn::isAbsolutePath(request.path))
        return refuse(SaveNotWritable,
            fmt::format("'{}' cannot be saved as '{}': that path names no folder from its drive on.",
                zn::toUtf8(document.identity().title), zn::toUtf8(request.path)));
    const SaveFormat* format = formatOf(request.path, document.kind());
    if (!format)
        return refuse(SaveInvalidExtension,
            fmt::format("'{}' cannot be saved as '{}': this program does not write that format from such a document.",
                zn::toUtf8(document.identity().title), zn::toUtf8(request.path)));
    try {
        const Text path = zn::canonicalPath(request.path);
        Save save{document, request, path, application.reachable(path)};
        format->save(save);
        return {};
    } catch (const DocumentError& error) {
        return refuse(saveError(error.kind()), error.what());
    } catch (const Refused& refused) {
        return refuse(SaveRefusedByListener,
            fmt::format("'{}' was not saved: the program that follows the saves made no room for it.",
                zn::toUtf8(refused.path)));
    } catch (const StatusError& error) {
        if (error.status() != zn::E_INVALIDARG)
            throw;
        return refuse(SaveGenericError, error.what());
    }
}

} // namespace zn::zentrel
