#include "zentrel/application/Confinement.h"

#include "base/Paths.h"
#include "language/FileAccess.h"

#include <algorithm>

namespace zn::zentrel {

namespace {

constexpr int mostLinks = 40;
/// A macro that goes on after each refusal could make any number of them.
constexpr std::size_t mostRefusals = 20;

/// The absolute path with every link followed. What doesn't exist keeps its name; so does what lies behind more links
/// than the system itself would follow, because nothing can be opened there.
std::filesystem::path linksFollowed(const std::filesystem::path& path)
{
    std::vector<std::filesystem::path> pending;
    const auto push = [&](const std::filesystem::path& more) {
        const std::vector<std::filesystem::path> parts(more.begin(), more.end());
        pending.insert(pending.end(), parts.rbegin(), parts.rend());
    };
    push(std::filesystem::absolute(path));
    std::filesystem::path done = "/";
    for (int links = 0; !pending.empty();) {
        const std::filesystem::path part = pending.back();
        pending.pop_back();
        if (part.empty() || part == "." || part == "/")
            continue;
        if (part == "..") {
            done = done.parent_path();
            continue;
        }
        std::error_code notALink;
        const auto target = std::filesystem::read_symlink(done / part, notALink);
        if (notALink || ++links > mostLinks) {
            done /= part;
            continue;
        }
        if (target.is_absolute())
            done = "/";
        push(target);
    }
    return done;
}

bool liesIn(const std::filesystem::path& folder, const std::filesystem::path& path)
{
    return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first == folder.end();
}

/// A path as it stands in a sentence, which has one line.
Text shown(Text path)
{
    std::replace_if(
        path.begin(), path.end(), [](char16_t unit) { return unit < u' ' || unit == u'\x7F'; }, u'?');
    return path;
}

} // namespace

void Confinement::confine(const std::vector<Text>& folders)
{
    m_confines = true;
    m_folders.clear();
    m_refusals.clear();
    for (const Text& folder : folders) {
        if (zn::isAbsolutePath(folder))
            add(m_files.toMachine(zn::withoutTrailingSeparators(zn::canonicalPath(folder))));
    }
}

void Confinement::add(const std::filesystem::path& folder)
{
    auto place = linksFollowed(folder);
    const bool isNew = std::ranges::none_of(m_folders, [&](const auto& other) { return liesIn(other, place); });
    if (isNew && place != place.root_path())
        m_folders.push_back(std::move(place));
}

Confinement::Reach Confinement::reachOf(const Text& path) const
{
    // The system would take the path up to the zero.
    if (path.find(u'\0') != Text::npos)
        return Reach::Outside;
    const auto place = linksFollowed(m_files.toMachine(path));
    Reach reach = Reach::Outside;
    for (const auto& folder : m_folders) {
        if (liesIn(folder, place))
            reach = std::max(reach, place == folder ? Reach::Root : Reach::Below);
    }
    return reach;
}

void Confinement::require(const Text& path)
{
    if (!reaches(path))
        refuse(path);
}

void Confinement::requireBelow(const Text& path)
{
    if (m_confines && reachOf(path) != Reach::Below)
        refuse(path);
}

void Confinement::refuse(const Text& path)
{
    const Text sentence = u"The macro may not reach '" + shown(path)
        + u"': it is confined to the vault's folder on this machine, the log and the output folders of its task.";
    if (m_refusals.size() < mostRefusals && std::ranges::find(m_refusals, sentence) == m_refusals.end())
        m_refusals.push_back(sentence);
    throw StatusError(zn::language::pathRefused, zn::toUtf8(sentence));
}

} // namespace zn::zentrel
