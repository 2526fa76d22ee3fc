#include "arkin/commands/frame/OutputPicture.h"

#include "arkin/tasks/PictureProgram.h"
#include "base/Paths.h"
#include "platform/Base64.h"
#include "platform/linux/RunProgram.h"
#include "platform/Sha256.h"
#include "platform/WorkFolder.h"

#include <chrono>
#include <fmt/format.h>
#include <fstream>

namespace zn::arkin {

namespace {

/// A page with more of them would be slow to make and to open; the others have their icons.
constexpr int mostPictures = 300;
constexpr std::size_t largestPicture = std::size_t{2} << 20U;
constexpr std::chrono::seconds longestDrawing{10};
constexpr int pixels = 160; // of the longer side

struct ImageType {
    const char16_t* extension;
    const char* type;
};
constexpr ImageType imageTypes[] = {
    {u".png", "image/png"},
    {u".jpg", "image/jpeg"},
    {u".jpeg", "image/jpeg"},
};

std::string imageFile(const std::filesystem::path& file)
{
    std::error_code error;
    const auto size = std::filesystem::file_size(file, error);
    if (error || size > largestPicture)
        return {};
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string element(const char* type, const std::string& bytes)
{
    return fmt::format("<img alt=\"\" src=\"data:{};base64,{}\">", type, zn::toBase64(bytes));
}

/// Letters and digits only, so that nothing needs an escape.
std::string icon(const zn::Text& extension)
{
    std::string word = zn::toUtf8(zn::toUpper(extension));
    std::erase_if(word, [](unsigned char c) { return std::isalnum(c) == 0; });
    return fmt::format("<svg class=\"icon\" viewBox=\"0 0 48 36\"><rect x=\"1\" y=\"1\" width=\"46\" height=\"34\" "
                       "rx=\"4\"/><text x=\"24\" y=\"22\">{}</text></svg>",
        word.substr(0, 6));
}

} // namespace

std::optional<OutputPictures::Kept> OutputPictures::contentOf(const RunInfo& run, const RunFileResult& result)
{
    try {
        if (result.outputId > 0 && result.outputVersion > 0) {
            auto& vault = m_session.vault();
            const auto version = vault.files().version(result.outputId, result.outputVersion); // of a deleted one, too
            if (!version)
                return {};
            return Kept{vault.archive().pathOf(version->content.hash), version->content.hash};
        }
        // Outside the vault nobody keeps what the run wrote.
        const auto now = m_session.platform().files().attributes(result.output);
        if (now && !now->folder && now->modified <= run.endedAt)
            return Kept{m_session.platform().files().toMachine(result.output), {}};
    } catch (const zn::StatusError&) {
        return {}; // it has gone since, and the icon stands for it
    }
    return {};
}

/// Null where there is none; each picture is drawn again then.
std::unique_ptr<zn::ContentCache> OutputPictures::usableCache()
{
    try {
        return m_session.cache();
    } catch (const zn::StatusError&) {
        return nullptr;
    }
}

/// A PNG; empty if it can't be drawn, or if nothing is there to draw it. What was drawn once is kept.
std::string OutputPictures::drawn(const Kept& content, const zn::Text& extension)
{
    const zn::WorkFolder folder(std::filesystem::temp_directory_path(), "arkin-report");
    // Who draws goes by the extension, which a content of the archive has not.
    const auto file = folder.path() / ("output" + zn::toUtf8(extension));
    const auto png = folder.path() / "picture.png";
    auto& machine = m_session.platform();
    const auto words = pictureProgram(machine.registry(), machine.files(), file, png, pixels);
    if (words.empty())
        return {};
    zn::Sha256 sum;
    sum.update(fmt::format("{} {} {} {}", stampOfProgram(words.front()), pixels, zn::toUtf8(extension), content.hash));
    const auto key = sum.finish();
    const auto cache = content.hash.empty() ? nullptr : usableCache();
    if (auto picture = cache ? cache->find(key) : std::nullopt)
        return *picture;
    std::filesystem::create_symlink(content.file, file);
    const bool isDrawn = zn::runProgram({words, {}, {}, longestDrawing}, machine.clock()).empty();
    auto picture = isDrawn ? imageFile(png) : std::string();
    try {
        if (cache && !picture.empty())
            cache->keep(key, picture);
    } catch (const std::system_error&) {
        return picture; // the next report draws it again
    }
    return picture;
}

std::string OutputPictures::of(const RunInfo& run, const RunFileResult& result)
{
    if (result.output.empty() || result.outcome == zn::FileOutcome::Failed
        || result.outcome == zn::FileOutcome::Skipped)
        return {};
    const auto extension = zn::pathExtension(result.output);
    const auto content = m_drawn < mostPictures ? contentOf(run, result) : std::nullopt;
    if (!content)
        return icon(extension);
    for (const ImageType& image : imageTypes) {
        if (!zn::equalNoCase(extension, image.extension))
            continue;
        const auto bytes = imageFile(content->file);
        m_drawn += bytes.empty() ? 0 : 1;
        return bytes.empty() ? icon(extension) : element(image.type, bytes);
    }
    const auto picture = drawn(*content, extension);
    m_drawn += picture.empty() ? 0 : 1;
    return picture.empty() ? icon(extension) : element("image/png", picture);
}

} // namespace zn::arkin
