#include "zentrel/formats/Content.h"

#include "contracts/documents/DocumentError.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>

namespace zn::zentrel {

namespace {

constexpr std::size_t sampleSize = 4096;
constexpr std::size_t igesMarkColumn = 72; // from 0: the letter of the section

/// What may stand behind the end of a file.
constexpr std::string_view padding(" \t\r\n\x1a\0", 6);

struct Sample {
    std::string head;
    std::string tail;
};

struct Signature {
    const char* bytes;
    const char* text;
};

constexpr Signature signatures[] = {
    {"ISO-10303-21", "a STEP file"},
    {"%PDF", "a PDF file"},
    {"PK\x03\x04", "a zip archive"},
    {"\x1f\x8b", "a compressed file"},
    {"solid ", "an STL file"},
    {"#VRML", "a VRML file"},
    {"<?xml", "an XML file"},
    {"<!DOCTYPE", "a web page"},
    {"<html", "a web page"},
    {"\x89PNG", "a PNG image"},
    {"\xff\xd8\xff", "a JPEG image"},
    {"II*", "a TIFF image"},
    {"MM", "a TIFF image"},
    {"DBRep_DrawableShape", "a geometry dump"},
    {"  0\nSECTION", "a DXF file"},
    {"0\nSECTION", "a DXF file"},
};

std::string partOf(std::ifstream& stream, std::size_t start, std::size_t count)
{
    std::string bytes(count, '\0');
    stream.seekg(static_cast<std::streamoff>(start));
    stream.read(bytes.data(), static_cast<std::streamsize>(count));
    return bytes;
}

/// Where the padding behind the content begins. Some programs write whole blocks.
std::size_t contentEnd(std::ifstream& stream, std::size_t size)
{
    while (size > 0) {
        const std::size_t count = std::min(size, sampleSize);
        const std::string bytes = partOf(stream, size - count, count);
        if (const auto last = bytes.find_last_not_of(padding); last != std::string::npos)
            return size - count + last + 1;
        size -= count;
    }
    return 0;
}

Sample sampleOf(const std::filesystem::path& file)
{
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (!std::filesystem::exists(status))
        throw DocumentError(ErrorKind::NotFound, "The file " + quoted(file) + " isn't there.");
    if (!std::filesystem::is_regular_file(status))
        throw DocumentError(ErrorKind::NotReadable, quoted(file) + " isn't a file.");
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw DocumentError(
            ErrorKind::NotReadable, "The file " + quoted(file) + " can't be read: " + std::strerror(errno) + ".");
    const auto size = static_cast<std::size_t>(std::filesystem::file_size(file));
    const std::size_t end = contentEnd(stream, size);
    if (end == 0)
        throw DocumentError(ErrorKind::Damaged, "The file " + quoted(file) + " is empty.");
    const std::size_t count = std::min(end, sampleSize);
    return {partOf(stream, 0, count), partOf(stream, end - count, count)};
}

std::string_view withoutBlanks(std::string_view text)
{
    const auto first = text.find_first_not_of(" \t\r\n\xef\xbb\xbf");
    return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

bool isIgesHead(std::string_view head)
{
    const std::string_view line = head.substr(0, head.find_first_of("\r\n"));
    // The letters of an ASCII file, of a compressed and of a binary one.
    return line.size() > igesMarkColumn && std::string_view("SCB").find(line[igesMarkColumn]) != std::string_view::npos;
}

constexpr const char* unknown = "what it holds isn't known";

std::string contentText(const std::string& head)
{
    const std::string_view text = withoutBlanks(head);
    for (const Signature& signature : signatures) {
        if (text.starts_with(signature.bytes) || head.starts_with(signature.bytes))
            return std::string("it looks like ") + signature.text;
    }
    return isIgesHead(head) ? "it looks like an IGES file" : unknown;
}

[[noreturn]] void raiseOther(const std::filesystem::path& file, const char* format, const std::string& head)
{
    throw DocumentError(ErrorKind::Damaged,
        "The file " + quoted(file) + " doesn't hold " + format + " data as its name says: " + contentText(head) + ".");
}

[[noreturn]] void raiseTruncated(const std::filesystem::path& file, const char* format)
{
    throw DocumentError(
        ErrorKind::Damaged, "The file " + quoted(file) + " is truncated: its " + format + " data has no end.");
}

} // namespace

void checkStepContent(const std::filesystem::path& file)
{
    const Sample sample = sampleOf(file);
    // A comment may stand before the first keyword.
    const std::string_view head = withoutBlanks(sample.head);
    if (!head.starts_with("ISO-10303-21") && !(head.starts_with("/*") && head.find("ISO-10303-21") != head.npos))
        raiseOther(file, "STEP", sample.head);
    if (sample.tail.find("END-ISO-10303-21") == std::string::npos)
        raiseTruncated(file, "STEP");
}

void checkIgesContent(const std::filesystem::path& file)
{
    const Sample sample = sampleOf(file);
    if (!isIgesHead(sample.head))
        raiseOther(file, "IGES", sample.head);
    const auto start = sample.tail.find_last_of("\r\n");
    const std::string line = sample.tail.substr(start == std::string::npos ? 0 : start + 1);
    if (line.size() <= igesMarkColumn || line[igesMarkColumn] != 'T')
        raiseTruncated(file, "IGES");
}

void checkStlContent(const std::filesystem::path& file)
{
    constexpr std::size_t header = 80;
    constexpr std::uintmax_t bytesOfTriangle = 50;
    const Sample sample = sampleOf(file);
    std::uint32_t triangles = 0;
    if (sample.head.size() >= header + sizeof triangles) {
        std::memcpy(&triangles, sample.head.data() + header, sizeof triangles);
        if (std::filesystem::file_size(file) == header + sizeof triangles + bytesOfTriangle * triangles)
            return;
    }
    if (withoutBlanks(sample.head).starts_with("solid")) {
        if (sample.tail.find("endsolid") == std::string::npos)
            raiseTruncated(file, "STL");
        return;
    }
    if (contentText(sample.head) == unknown && std::filesystem::file_size(file) < header + bytesOfTriangle * triangles)
        raiseTruncated(file, "STL");
    raiseOther(file, "STL", sample.head);
}

} // namespace zn::zentrel
