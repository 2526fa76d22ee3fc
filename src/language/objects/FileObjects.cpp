#include "language/objects/FileObjects.h"

#include "base/Paths.h"
#include "language/objects/Arguments.h"
#include "language/objects/FileOperations.h"
#include "language/objects/TextStream.h"
#include "language/run/FileTable.h"

#include <limits>

namespace zn::language {

namespace {

Value sizeValue(std::uint64_t size)
{
    if (size <= static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max()))
        return static_cast<std::int32_t>(size);
    return static_cast<double>(size);
}

/// What files and folders have in common.
class Entry : public DispatchObject {
public:
    Entry(FileAccess& files, Text path)
        : m_files(files)
        , m_path(std::move(path))
    {
    }

    Value invoke(MemberCall& call) override
    {
        const auto is = [&](TextView name) { return equalNoCase(call.name, name); };
        if (call.name.empty() || is(u"Path"))
            return m_path;
        if (is(u"Name"))
            return call.use == MemberUse::Call ? Value(pathFileName(m_path)) : renamed(call);
        if (is(u"DateLastModified"))
            return DateValue{facts().modified};
        if (is(u"DateCreated"))
            return DateValue{facts().created};
        if (is(u"ParentFolder"))
            return Value(folderObject(m_files, pathFolder(m_path)));
        if (is(u"Drive"))
            return m_path.substr(0, 2);
        if (is(u"Attributes"))
            return call.use == MemberUse::Call ? Value(static_cast<std::int32_t>(facts().attributes)) : changed(call);
        return ownMember(call);
    }

protected:
    virtual Value ownMember(MemberCall& call) = 0;

    FileFacts facts() const
    {
        FileFacts out;
        if (!m_files.facts(m_path, out))
            raise(error::fileNotFound);
        return out;
    }

    FileAccess& m_files;
    Text m_path;

private:
    Value renamed(const MemberCall& call)
    {
        const Text target = pathAppend(pathFolder(m_path), textOf(call.arguments.back()));
        withFileErrors(FileOperation::Other, [&] { m_files.rename(m_path, target); });
        m_path = target;
        return {};
    }

    Value changed(const MemberCall& call)
    {
        const auto wanted = static_cast<std::uint32_t>(longOf(call.arguments.back()));
        withFileErrors(FileOperation::Other, [&] { m_files.setAttributes(m_path, wanted); });
        return {};
    }
};

class FileObject : public Entry {
public:
    using Entry::Entry;
    Text typeName() const override { return u"File"; }

protected:
    Value ownMember(MemberCall& call) override
    {
        const auto is = [&](TextView name) { return equalNoCase(call.name, name); };
        if (is(u"Size"))
            return sizeValue(facts().size);
        if (is(u"Type"))
            return toUpper(textBehindLastDot(m_path)) + u" File";
        if (is(u"Delete")) {
            deleteFiles(m_files, m_path, ArgumentList(call, {u"Force"}).flag(0, false));
            return {};
        }
        if (is(u"Copy") || is(u"Move")) {
            const Text target = ArgumentList(call, {u"Destination", u"OverWriteFiles"}).text(0);
            withFileErrors(FileOperation::Other,
                [&] { is(u"Copy") ? m_files.copy(m_path, target) : m_files.rename(m_path, target); });
            return {};
        }
        if (is(u"OpenAsTextStream")) {
            const ArgumentList given(call, {u"IOMode", u"Format"});
            const std::int32_t mode = given.number(0, 1);
            return Value(openTextStream(m_files, m_path,
                mode == 8       ? StreamMode::Append
                    : mode == 2 ? StreamMode::Write
                                : StreamMode::Read,
                given.number(1, 0) == -1));
        }
        raise(error::memberMissing);
    }
};

/// The files or folders of a folder, by name or one after the other.
class EntryList : public DispatchObject {
public:
    EntryList(FileAccess& files, Text folder, bool ofFolders)
        : m_files(files)
        , m_folder(std::move(folder))
        , m_ofFolders(ofFolders)
    {
    }

    Text typeName() const override { return m_ofFolders ? u"Folders" : u"Files"; }

    Value invoke(MemberCall& call) override
    {
        const auto is = [&](TextView name) { return equalNoCase(call.name, name); };
        if (is(u"Count"))
            return static_cast<std::int32_t>(names().size());
        if (call.name.empty() || is(u"Item"))
            return object(ArgumentList(call, {u"Key"}).text(0));
        if (!is(u"_NewEnum"))
            raise(error::memberMissing);
        std::vector<Value> objects;
        for (const Text& name : names())
            objects.push_back(object(name));
        return Value::arrayOf(std::move(objects));
    }

private:
    std::vector<Text> names() const
    {
        std::vector<Text> out;
        const auto entries = withFileErrors(FileOperation::Other, [this] { return m_files.list(m_folder); });
        for (const FolderEntry& entry : entries)
            if (((entry.facts.attributes & FolderAttribute) != 0) == m_ofFolders)
                out.push_back(entry.name);
        return out;
    }

    Value object(const Text& name) const
    {
        const Text path = pathAppend(m_folder, name);
        return Value(m_ofFolders ? folderObject(m_files, path) : fileObject(m_files, path));
    }

    FileAccess& m_files;
    Text m_folder;
    bool m_ofFolders;
};

std::uint64_t sizeOfTree(FileAccess& files, const Text& folder)
{
    std::uint64_t size = 0;
    for (const FolderEntry& entry : files.list(folder))
        size += entry.facts.attributes & FolderAttribute ? sizeOfTree(files, pathAppend(folder, entry.name))
                                                         : entry.facts.size;
    return size;
}

class FolderObject : public Entry {
public:
    using Entry::Entry;
    Text typeName() const override { return u"Folder"; }

protected:
    Value ownMember(MemberCall& call) override
    {
        const auto is = [&](TextView name) { return equalNoCase(call.name, name); };
        if (is(u"Files") || is(u"SubFolders"))
            return Value(DispatchRef(std::make_shared<EntryList>(m_files, m_path, is(u"SubFolders"))));
        if (is(u"Size"))
            return withFileErrors(FileOperation::Other, [this] { return sizeValue(sizeOfTree(m_files, m_path)); });
        if (is(u"IsRootFolder"))
            return Value(m_path.size() <= 3);
        if (is(u"Type"))
            return Text(u"File folder");
        if (is(u"Delete")) {
            deleteFolderTree(m_files, m_path, ArgumentList(call, {u"Force"}).flag(0, false));
            return {};
        }
        if (is(u"CreateTextFile")) {
            const ArgumentList given(call, {u"FileName", u"Overwrite", u"Unicode"});
            return Value(
                openTextStream(m_files, pathAppend(m_path, given.text(0)), StreamMode::Write, given.flag(2, false)));
        }
        raise(error::memberMissing);
    }
};

} // namespace

Text absolutePath(FileAccess& files, const Text& path)
{
    return canonicalPath(isAbsolutePath(path) ? path : pathAppend(files.currentFolder(), path));
}

DispatchRef fileObject(FileAccess& files, const Text& path)
{
    if (!fileExistsAt(files, path))
        raise(error::fileNotFound);
    return std::make_shared<FileObject>(files, absolutePath(files, path));
}

DispatchRef folderObject(FileAccess& files, const Text& path)
{
    if (!folderExistsAt(files, path))
        raise(error::pathNotFound);
    Text whole = absolutePath(files, path);
    return std::make_shared<FolderObject>(files, whole.size() > 3 ? withoutTrailingSeparators(whole) : whole);
}

void deleteFolderTree(FileAccess& files, const Text& path, bool force)
{
    const auto entries = withFileErrors(FileOperation::Other, [&] { return files.list(path); });
    for (const FolderEntry& entry : entries) {
        const Text inner = pathAppend(path, entry.name);
        if (entry.facts.attributes & FolderAttribute)
            deleteFolderTree(files, inner, force);
        else
            deleteFiles(files, inner, force);
    }
    withFileErrors(FileOperation::Delete, [&] { files.removeFolder(path); });
}

void copyFolderTree(FileAccess& files, const Text& from, const Text& to, bool overwrite)
{
    const auto entries = withFileErrors(FileOperation::Other, [&] { return files.list(from); });
    if (!folderExistsAt(files, to))
        withFileErrors(FileOperation::CreateFolder, [&] { files.createFolder(to); });
    for (const FolderEntry& entry : entries) {
        const Text source = pathAppend(from, entry.name);
        const Text target = pathAppend(to, entry.name);
        if (entry.facts.attributes & FolderAttribute) {
            copyFolderTree(files, source, target, overwrite);
            continue;
        }
        if (!overwrite && fileExistsAt(files, target))
            raise(error::fileExists);
        withFileErrors(FileOperation::Other, [&] { files.copy(source, target); });
    }
}

} // namespace zn::language
