#include "zentrel/formats/Read.h"

#include "contracts/documents/DocumentError.h"

#include <functional>

namespace zn::zentrel {

namespace {

struct Reader {
    const char16_t* extension;
    Document (*read)(const std::filesystem::path& file, Remarks* remarks);
};

constexpr Reader readers[] = {
    {u".step", readStep},
    {u".stp", readStep},
    {u".iges", readIges},
    {u".igs", readIges},
    {u".stl", readStl},
};

const Reader* readerOf(const std::filesystem::path& file)
{
    const Text extension = zn::toText(file.extension().string());
    for (const Reader& reader : readers) {
        if (zn::equalNoCase(extension, reader.extension))
            return &reader;
    }
    return nullptr;
}

} // namespace

bool canRead(const std::filesystem::path& file) { return readerOf(file) != nullptr; }

std::vector<Text> readExtensions()
{
    std::vector<Text> extensions;
    for (const Reader& reader : readers)
        extensions.emplace_back(reader.extension);
    return extensions;
}

Document readForeign(const std::filesystem::path& file, Remarks* remarks)
{
    const Reader* reader = readerOf(file);
    if (!reader)
        throw DocumentError(ErrorKind::Unsupported,
            "The file " + quoted(file)
                + " can't be read: only STEP (.step, .stp), IGES (.igs, .iges) and STL (.stl) can be.");
    return reader->read(file, remarks);
}

} // namespace zn::zentrel
