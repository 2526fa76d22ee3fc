#include "zentrel/model/Container.h"

#include "contracts/documents/DocumentError.h"
#include "contracts/documents/ManifestText.h"
#include "zentrel/kernel/KernelReason.h"
#include "zentrel/model/Archive.h"
#include "zentrel/model/Manifest.h"
#include "zentrel/model/Packets.h"

#include <nlohmann/json.hpp>

namespace zn::zentrel {

namespace {

constexpr std::pair<const char16_t*, DocumentKind> extensions[] = {
    {u".zenprt", DocumentKind::Part},
    {u".prt", DocumentKind::Part},
    {u".zenasm", DocumentKind::Assembly},
    {u".asm", DocumentKind::Assembly},
    {u".zendrw", DocumentKind::Drawing},
    {u".drw", DocumentKind::Drawing},
};

const char* kindText(DocumentKind kind)
{
    return kind == DocumentKind::Part ? "a part" : kind == DocumentKind::Assembly ? "an assembly" : "a drawing";
}

[[noreturn]] void raiseDamaged(const std::filesystem::path& file, const std::string& what)
{
    throw DocumentError(ErrorKind::Damaged, "The file " + quoted(file) + " is damaged: " + what + ".");
}

std::filesystem::path folderOf(const std::filesystem::path& file)
{
    return std::filesystem::absolute(file).lexically_normal().parent_path();
}

/// Runs `read` and turns what the manifest's readers raise into a sentence about the file.
template <class Read> auto guarded(const std::filesystem::path& file, Read read)
{
    try {
        return read();
    } catch (const nlohmann::json::exception& error) {
        raiseDamaged(file, std::string("its manifest isn't understood (") + error.what() + ")");
    } catch (const std::invalid_argument& error) {
        raiseDamaged(file, error.what());
    } catch (const Standard_Failure& error) {
        raiseDamaged(file, std::string("its geometry isn't understood (") + kernelReason(error) + ")");
    }
}

/// Kind and version, which every version of the manifest has; nothing else is looked at before they fit.
ContainerInfo infoFrom(const manifest::Json& json, const std::filesystem::path& file)
{
    return guarded(file, [&] {
        ContainerInfo info;
        const auto format = json.at("format").get<std::string>();
        const auto kind = manifest::kindOfFormat(format);
        if (!kind)
            throw std::invalid_argument("it says that it is of the unknown format '" + format + "'");
        info.kind = *kind;
        info.version = json.at("version").get<int>();
        if (info.version < 1)
            throw std::invalid_argument("it says that it is of the impossible version " + std::to_string(info.version));
        if (info.version > containerVersion(info.kind))
            throw DocumentError(ErrorKind::FutureVersion,
                "The file " + quoted(file) + " was written by a later version of this program: its format is "
                    + std::to_string(info.version) + ", and this program reads up to "
                    + std::to_string(containerVersion(info.kind)) + ".");
        return info;
    });
}

Document documentFrom(const manifest::Json& json, DocumentKind kind, ArchiveReader& archive)
{
    const std::filesystem::path folder = folderOf(archive.file());
    ShapeSource shapes([&](const std::string& name) { return Geometry::unread(archive.entry(name)); });
    Document document = guarded(archive.file(), [&]() -> Document {
        switch (kind) {
        case DocumentKind::Part:
            return manifest::partFrom(json, shapes);
        case DocumentKind::Assembly:
            return manifest::assemblyFrom(json, shapes, folder);
        default:
            return manifest::drawingFrom(json, folder);
        }
    });
    requireReadable(shapes.all(), archive.file());
    return document;
}

int neededVersion(const Document& document)
{
    const auto* assembly = std::get_if<AssemblyDocument>(&document);
    return assembly && manifest::sharesDocuments(*assembly) ? 2 : 1;
}

template <class Wanted> Wanted readOf(const std::filesystem::path& file, DocumentKind wanted)
{
    Document document = readDocument(file);
    if (auto* found = std::get_if<Wanted>(&document))
        return std::move(*found);
    const auto kind = static_cast<DocumentKind>(document.index() + 1);
    throw DocumentError(ErrorKind::Damaged,
        "The file " + quoted(file) + " holds " + kindText(kind) + " where " + kindText(wanted) + " is expected.");
}

} // namespace

int containerVersion(DocumentKind kind) { return kind == DocumentKind::Assembly ? 2 : 1; }

std::optional<DocumentKind> kindFromExtension(const std::filesystem::path& file)
{
    const Text extension = zn::toText(file.extension().string());
    for (const auto& [known, kind] : extensions) {
        if (zn::equalNoCase(extension, known))
            return kind;
    }
    return {};
}

Document readDocument(const std::filesystem::path& file)
{
    ArchiveReader archive(file);
    const manifest::Json json = readManifest(archive);
    const ContainerInfo info = infoFrom(json, file);
    if (const auto expected = kindFromExtension(file); expected && *expected != info.kind)
        throw DocumentError(ErrorKind::Damaged,
            "The file " + quoted(file) + " holds " + kindText(info.kind) + ", not " + kindText(*expected)
                + " as its name says.");
    return documentFrom(json, info.kind, archive);
}

PartDocument readPart(const std::filesystem::path& file) { return readOf<PartDocument>(file, DocumentKind::Part); }

AssemblyDocument readAssembly(const std::filesystem::path& file)
{
    return readOf<AssemblyDocument>(file, DocumentKind::Assembly);
}

DrawingDocument readDrawing(const std::filesystem::path& file)
{
    return readOf<DrawingDocument>(file, DocumentKind::Drawing);
}

ContainerInfo readContainerInfo(const std::filesystem::path& file)
{
    ArchiveReader archive(file);
    return infoFrom(readManifest(archive), file);
}

void writeDocument(const Document& document, const std::filesystem::path& file)
{
    const auto kind = static_cast<DocumentKind>(document.index() + 1);
    const std::filesystem::path folder = folderOf(file);
    ShapeStreams shapes;
    std::map<std::string, std::string> entries;
    try {
        manifest::Json json = {{"format", manifest::formatName(kind)}, {"version", neededVersion(document)}};
        std::visit([](const auto& content) { manifest::check(content); }, document);
        if (const auto* part = std::get_if<PartDocument>(&document))
            json.update(manifest::toJson(*part, shapes));
        else if (const auto* assembly = std::get_if<AssemblyDocument>(&document))
            json.update(manifest::toJson(*assembly, shapes, folder));
        else
            json.update(manifest::toJson(std::get<DrawingDocument>(document), folder));
        entries = shapes.contents();
        entries.emplace(manifestEntry, json.dump(1));
    } catch (const std::invalid_argument& error) {
        throw DocumentError(
            ErrorKind::InvalidArgument, "The document " + quoted(file) + " can't be saved: " + error.what() + ".");
    } catch (const nlohmann::json::exception&) {
        throw DocumentError(ErrorKind::InvalidArgument,
            "The document " + quoted(file) + " can't be saved: a file that it refers to has a name that isn't UTF-8.");
    }
    writeArchive(entries, file);
}

} // namespace zn::zentrel
