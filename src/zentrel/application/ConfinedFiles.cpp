#include "zentrel/application/ConfinedFiles.h"

#include "base/Paths.h"

namespace zn::zentrel {

using namespace zn::language;

/// The absolute path, which is also what is worked on, so that both mean the same place.
Text ConfinedFiles::reached(const Text& path)
{
    Text whole = m_files.absolute(path);
    m_confinement.require(whole);
    return whole;
}

Text ConfinedFiles::reachedBelow(const Text& path)
{
    Text whole = m_files.absolute(path);
    m_confinement.requireBelow(whole);
    return whole;
}

std::unique_ptr<OpenedFile> ConfinedFiles::open(const Text& path, FileMode mode)
{
    return m_files.open(reached(path), mode);
}

bool ConfinedFiles::facts(const Text& path, FileFacts& facts) { return m_files.facts(reached(path), facts); }

void ConfinedFiles::setAttributes(const Text& path, std::uint32_t attributes)
{
    m_files.setAttributes(reached(path), attributes);
}

std::vector<FolderEntry> ConfinedFiles::list(const Text& folder)
{
    const Text whole = reached(folder);
    std::vector<FolderEntry> entries;
    // A link that leads out of the folder is no entry that a macro could do anything with.
    for (FolderEntry& entry : m_files.list(whole)) {
        if (m_confinement.reaches(zn::pathAppend(whole, entry.name)))
            entries.push_back(std::move(entry));
    }
    return entries;
}

void ConfinedFiles::remove(const Text& path) { m_files.remove(reachedBelow(path)); }

void ConfinedFiles::createFolder(const Text& path) { m_files.createFolder(reached(path)); }

void ConfinedFiles::removeFolder(const Text& path) { m_files.removeFolder(reachedBelow(path)); }

void ConfinedFiles::rename(const Text& from, const Text& to)
{
    const Text source = reachedBelow(from);
    m_files.rename(source, reachedBelow(to));
}

void ConfinedFiles::copy(const Text& from, const Text& to)
{
    const Text source = reached(from);
    m_files.copy(source, reached(to));
}

void ConfinedFiles::setCurrentFolder(const Text& path) { m_files.setCurrentFolder(reached(path)); }

} // namespace zn::zentrel
