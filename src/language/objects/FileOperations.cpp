#include "language/objects/FileOperations.h"

#include "base/Paths.h"
#include "language/run/FileTable.h"
#include "language/values/Errors.h"
#include "language/values/Like.h"

namespace zn::language {

bool fitsWildcards(TextView name, TextView pattern)
{
    if (pattern == u"*.*")
        return true;
    // Only "*" and "?" mean something in a file name.
    Text escaped;
    for (const char16_t unit : pattern) {
        if (unit == u'[' || unit == u'#')
            escaped.append(u"[").append(1, unit).append(u"]");
        else
            escaped.push_back(unit);
    }
    return matchesPattern(name, escaped, true);
}

std::vector<FolderEntry> entriesMatching(FileAccess& files, const Text& path, TextView pattern)
{
    const std::size_t separator = path.find_last_of(u"\\/");
    const Text folder = separator == Text::npos ? files.currentFolder() : path.substr(0, separator + 1);
    FileFacts facts;
    std::vector<FolderEntry> out;
    if (!files.facts(folder, facts))
        return out;
    for (FolderEntry& entry : files.list(folder))
        if (fitsWildcards(entry.name, pattern))
            out.push_back(std::move(entry));
    return out;
}

void deleteFiles(FileAccess& files, const Text& path, bool force)
{
    const auto removeOne = [&](const Text& file) {
        FileFacts facts;
        if (force && files.facts(file, facts) && (facts.attributes & ReadOnlyAttribute))
            files.setAttributes(file, facts.attributes & ~ReadOnlyAttribute);
        files.remove(file);
    };
    withFileErrors(FileOperation::Delete, [&] {
        if (path.find_first_of(u"*?") == Text::npos)
            return removeOne(path);
        const Text folder = path.substr(0, path.find_last_of(u"\\/") + 1);
        bool any = false;
        for (const FolderEntry& entry : entriesMatching(files, path, pathFileName(path))) {
            if (entry.facts.attributes & FolderAttribute)
                continue;
            removeOne(folder + entry.name);
            any = true;
        }
        if (!any)
            raise(error::fileNotFound);
    });
}

bool fileExistsAt(FileAccess& files, const Text& path)
{
    FileFacts facts;
    return !path.empty() && files.facts(path, facts) && !(facts.attributes & FolderAttribute);
}

bool folderExistsAt(FileAccess& files, const Text& path)
{
    FileFacts facts;
    return !path.empty() && files.facts(path, facts) && (facts.attributes & FolderAttribute);
}

} // namespace zn::language
