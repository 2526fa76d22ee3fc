#include "contracts/documents/StepReferences.h"

#include "base/Text.h"
#include "contracts/documents/DocumentError.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>

namespace zn {

namespace {

/// The first parameter of either is the external file's name.
constexpr std::string_view entities[] = {"APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT", "DOCUMENT_FILE"};
/// Other documents (pictures, texts) are named by the same entities.
constexpr std::string_view extensions[] = {".stp", ".step", ".p21", ".igs", ".iges", ".zenprt", ".zenasm"};
/// What is held of a file at a time, and how much of its end is looked at again with the next piece: an entity's name
/// with its first parameter fits in.
constexpr std::size_t pieceSize = std::size_t{1} << 20, overlap = 4096;

bool isCadFile(const std::string& name)
{
    const std::string extension = toUtf8(foldCase(toText(std::filesystem::path(name).extension().string())));
    return std::find(std::begin(extensions), std::end(extensions), extension) != std::end(extensions);
}

/// Where something other than white space stands, from `at` on.
std::size_t skipBlanks(std::string_view text, std::size_t at)
{
    return std::min(text.find_first_not_of(" \t\r\n", at), text.size());
}

/// The string literal behind "(" at `at`, in which a doubled quote stands for one; nothing if there is none.
std::optional<std::string> firstParameter(std::string_view text, std::size_t at)
{
    at = skipBlanks(text, at);
    if (at == text.size() || text[at] != '(')
        return {};
    at = skipBlanks(text, at + 1);
    if (at == text.size() || text[at] != '\'')
        return {};
    std::string value;
    for (++at; at < text.size(); ++at) {
        if (text[at] != '\'')
            value += text[at];
        else if (at + 1 < text.size() && text[at + 1] == '\'')
            value += text[at++];
        else
            return value;
    }
    return {};
}

/// Notes what begins before `limit`.
void collect(std::string_view text, std::size_t limit, std::vector<std::string>& names)
{
    for (const auto entity : entities) {
        for (std::size_t at = text.find(entity); at < limit; at = text.find(entity, at + 1)) {
            auto name = firstParameter(text, at + entity.size());
            if (!name || !isCadFile(*name))
                continue;
            std::replace(name->begin(), name->end(), '\\', '/');
            if (std::find(names.begin(), names.end(), *name) == names.end())
                names.push_back(std::move(*name));
        }
    }
}

} // namespace

std::vector<std::string> stepReferences(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw DocumentError(
            ErrorKind::NotReadable, "The file " + quoted(file) + " can't be read: " + std::strerror(errno) + ".");
    std::vector<std::string> names;
    std::string text;
    std::string piece(pieceSize, '\0');
    while (stream.read(piece.data(), static_cast<std::streamsize>(pieceSize)) || stream.gcount() > 0) {
        text.append(piece, 0, static_cast<std::size_t>(stream.gcount()));
        const std::size_t done = text.size() > overlap ? text.size() - overlap : 0;
        collect(text, done, names);
        text.erase(0, done);
    }
    collect(text, text.size(), names);
    return names;
}

} // namespace zn
