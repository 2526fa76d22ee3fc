#include "base/Paths.h"
#include "language/objects/Arguments.h"
#include "language/objects/FileObjects.h"
#include "language/objects/FileOperations.h"
#include "language/objects/OwnClasses.h"
#include "language/objects/TextStream.h"
#include "language/run/FileTable.h"

#include <atomic>
#include <ctime>
#include <unistd.h>

namespace zn::language {

namespace {

/// One call of a member with its arguments and the files it works on.
struct Request {
    FileAccess& files;
    const MemberCall& call;

    Text path() const { return ArgumentList(call, {u"Path"}).text(0); }
};

Text extensionName(const Text& path)
{
    const Text extension = pathExtension(path);
    return extension.empty() ? extension : extension.substr(1);
}

Text parentName(const Text& path)
{
    const Text bare = withoutTrailingSeparators(path);
    return bare.find_first_of(u"\\/") == Text::npos ? Text() : pathFolder(bare);
}

Value buildPath(const Request& r)
{
    const ArgumentList given(r.call, {u"Path", u"Name"});
    Text path = given.text(0);
    const Text name = given.text(1);
    if (!path.empty() && !name.empty() && path.back() != u'\\' && name.front() != u'\\')
        path.push_back(u'\\');
    return path + name;
}

Value temporaryName(const Request&)
{
    static std::atomic<std::uint32_t> counter{0};
    const auto number = static_cast<std::uint32_t>(std::time(nullptr)) * 7919U + static_cast<std::uint32_t>(getpid())
        + counter++ * 104729U;
    static constexpr char16_t digits[] = u"0123456789ABCDEF";
    Text name = u"rad";
    for (int shift = 16; shift >= 0; shift -= 4)
        name.push_back(digits[number >> shift & 0xF]);
    return name + u".tmp";
}

/// A target that ends in a separator, or is a folder, takes the file under its own name.
Text targetOf(FileAccess& files, const Text& from, const Text& to)
{
    const bool isFolder = !to.empty() && (to.back() == u'\\' || folderExistsAt(files, to));
    return isFolder ? pathAppend(to, pathFileName(from)) : to;
}

template <class Work> void forEachFile(FileAccess& files, const Text& pattern, Work&& work)
{
    if (pattern.find_first_of(u"*?") == Text::npos) {
        if (!fileExistsAt(files, pattern))
            raise(error::fileNotFound);
        return work(pattern);
    }
    const Text folder = pattern.substr(0, pattern.find_last_of(u"\\/") + 1);
    bool any = false;
    for (const FolderEntry& entry : entriesMatching(files, pattern, pathFileName(pattern))) {
        if (entry.facts.attributes & FolderAttribute)
            continue;
        any = true;
        work(folder + entry.name);
    }
    if (!any)
        raise(error::fileNotFound);
}

Value copyFile(const Request& r)
{
    const ArgumentList given(r.call, {u"Source", u"Destination", u"OverWriteFiles"});
    forEachFile(r.files, given.text(0), [&](const Text& from) {
        const Text to = targetOf(r.files, from, given.text(1));
        if (!given.flag(2, true) && fileExistsAt(r.files, to))
            raise(error::fileExists);
        withFileErrors(FileOperation::Delete, [&] { r.files.copy(from, to); });
    });
    return {};
}

Value moveFile(const Request& r)
{
    const ArgumentList given(r.call, {u"Source", u"Destination"});
    forEachFile(r.files, given.text(0), [&](const Text& from) {
        const Text to = targetOf(r.files, from, given.text(1));
        withFileErrors(FileOperation::Other, [&] { r.files.rename(from, to); });
    });
    return {};
}

Value deleteFile(const Request& r)
{
    const ArgumentList given(r.call, {u"FileSpec", u"Force"});
    deleteFiles(r.files, given.text(0), given.flag(1, false));
    return {};
}

Text existingFolder(FileAccess& files, const Text& path)
{
    if (!folderExistsAt(files, path))
        raise(error::pathNotFound);
    return withoutTrailingSeparators(path);
}

Value copyFolder(const Request& r)
{
    const ArgumentList given(r.call, {u"Source", u"Destination", u"OverWriteFiles"});
    const Text from = existingFolder(r.files, given.text(0));
    copyFolderTree(
        r.files, from, withoutTrailingSeparators(targetOf(r.files, from, given.text(1))), given.flag(2, true));
    return {};
}

Value moveFolder(const Request& r)
{
    const ArgumentList given(r.call, {u"Source", u"Destination"});
    const Text from = existingFolder(r.files, given.text(0));
    withFileErrors(FileOperation::Other, [&] { r.files.rename(from, targetOf(r.files, from, given.text(1))); });
    return {};
}

Value deleteFolder(const Request& r)
{
    const ArgumentList given(r.call, {u"FolderSpec", u"Force"});
    deleteFolderTree(r.files, existingFolder(r.files, given.text(0)), given.flag(1, false));
    return {};
}

Value createFolder(const Request& r)
{
    const Text path = withoutTrailingSeparators(r.path());
    try {
        r.files.createFolder(path);
    } catch (const StatusError& failure) {
        if (failure.status() == fileExists)
            raise(error::fileExists);
        raiseFileError(FileOperation::CreateFolder, failure);
    }
    return Value(folderObject(r.files, path));
}

Value createTextFile(const Request& r)
{
    const ArgumentList given(r.call, {u"FileName", u"Overwrite", u"Unicode"});
    if (!given.flag(1, true) && fileExistsAt(r.files, given.text(0)))
        raise(error::fileExists);
    return Value(openTextStream(r.files, given.text(0), StreamMode::Write, given.flag(2, false)));
}

Value openTextFile(const Request& r)
{
    const ArgumentList given(r.call, {u"FileName", u"IOMode", u"Create", u"Format"});
    const std::int32_t mode = given.number(1, 1);
    if (mode != 1 && mode != 2 && mode != 8)
        raise(error::invalidCall);
    const Text path = given.text(0);
    if (!given.flag(2, false) && !fileExistsAt(r.files, path))
        raise(error::fileNotFound);
    if (mode == 1 && !fileExistsAt(r.files, path))
        openTextStream(r.files, path, StreamMode::Write, false); // asked to be created, and empty to read
    const StreamMode use = mode == 1 ? StreamMode::Read : mode == 2 ? StreamMode::Write : StreamMode::Append;
    return Value(openTextStream(r.files, path, use, given.number(3, 0) == -1));
}

Value specialFolder(const Request& r)
{
    if (ArgumentList(r.call, {u"SpecialFolder"}).number(0, 0) != 2)
        raise(error::pathNotFound); // there is no system folder for a macro
    return Value(folderObject(r.files, r.files.temporaryFolder()));
}

struct MemberEntry {
    TextView name;
    Value (*run)(const Request& request);
};

constexpr MemberEntry members[] = {
    {u"FileExists", [](const Request& r) { return Value(fileExistsAt(r.files, r.path())); }},
    {u"FolderExists", [](const Request& r) { return Value(folderExistsAt(r.files, r.path())); }},
    {u"GetFileName", [](const Request& r) { return Value(pathFileName(withoutTrailingSeparators(r.path()))); }},
    {u"GetBaseName", [](const Request& r) { return Value(pathStem(withoutTrailingSeparators(r.path()))); }},
    {u"GetExtensionName", [](const Request& r) { return Value(extensionName(r.path())); }},
    {u"GetParentFolderName", [](const Request& r) { return Value(parentName(r.path())); }},
    {u"GetAbsolutePathName", [](const Request& r) { return Value(absolutePath(r.files, r.path())); }},
    {u"GetDriveName",
        [](const Request& r) {
            const Text path = r.path();
            return Value(startsWithDrive(path) ? path.substr(0, 2) : Text());
        }},
    {u"GetFile", [](const Request& r) { return Value(fileObject(r.files, r.path())); }},
    {u"GetFolder", [](const Request& r) { return Value(folderObject(r.files, r.path())); }},
    {u"GetSpecialFolder", specialFolder},
    {u"GetTempName", temporaryName},
    {u"BuildPath", buildPath},
    {u"CopyFile", copyFile},
    {u"MoveFile", moveFile},
    {u"DeleteFile", deleteFile},
    {u"CopyFolder", copyFolder},
    {u"MoveFolder", moveFolder},
    {u"DeleteFolder", deleteFolder},
    {u"CreateFolder", createFolder},
    {u"CreateTextFile", createTextFile},
    {u"OpenTextFile", openTextFile},
};

class FileSystemObject : public DispatchObject {
public:
    explicit FileSystemObject(FileAccess& files)
        : m_files(files)
    {
    }

    Text typeName() const override { return u"FileSystemObject"; }

    Value invoke(MemberCall& call) override
    {
        for (const MemberEntry& member : members)
            if (equalNoCase(member.name, call.name))
                return member.run({m_files, call});
        raise(error::memberMissing);
    }

private:
    FileAccess& m_files;
};

} // namespace

DispatchRef makeFileSystemObject(FileAccess& files) { return std::make_shared<FileSystemObject>(files); }

} // namespace zn::language
