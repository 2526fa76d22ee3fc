#include "arkin/tasks/PictureProgram.h"

namespace zn::arkin {

namespace {

constexpr const char16_t* picturesKey = u"SOFTWARE\\Arkin\\Pictures";
constexpr const char* pdfProgram = "/usr/bin/pdftoppm";

} // namespace

std::vector<std::string> pictureProgram(zn::Registry& registry, zn::FileSystem& files,
    const std::filesystem::path& file, const std::filesystem::path& png, int pixels)
{
    const zn::Text extension = zn::toText(file.extension().string());
    const std::string size = std::to_string(pixels);
    if (zn::equalNoCase(extension, u".pdf")) {
        std::filesystem::path prefix = png; // the program adds the extension itself
        prefix.replace_extension();
        return {pdfProgram, "-png", "-singlefile", "-scale-to", size, file.string(), prefix.string()};
    }
    const auto registered = registry.read(zn::RegistryRoot::Machine, picturesKey, extension);
    if (!registered || !registered->asText())
        return {};
    return {files.toMachine(*registered->asText()).string(), "picture", file.string(), png.string(), "--size", size};
}

std::string stampOfProgram(const std::string& program)
{
    std::error_code error;
    const auto time = std::filesystem::last_write_time(program, error);
    return program + " " + std::to_string(error ? 0 : time.time_since_epoch().count());
}

} // namespace zn::arkin
