#include "base/Paths.h"
#include "language/functions/Given.h"
#include "language/functions/Intrinsic.h"
#include "language/objects/FileOperations.h"
#include "language/run/RunContext.h"

#include <algorithm>

namespace zn::language {

namespace {

NumberedFile& fileAt(RunContext& context, Given a, std::size_t index = 0)
{
    return context.opened.file(longOf(a[index]));
}

Value freeFile(RunContext& context, Given) { return std::int16_t(context.opened.freeNumber()); }

Value atEnd(RunContext& context, Given a) { return Value(fileAt(context, a).atEnd()); }

Value length(RunContext& context, Given a) { return static_cast<std::int32_t>(fileAt(context, a).size()); }

Value location(RunContext& context, Given a) { return static_cast<std::int32_t>(fileAt(context, a).position()); }

Value position(RunContext& context, Given a) { return static_cast<std::int32_t>(fileAt(context, a).position() + 1); }

Value read(RunContext& context, Given a) { return fileAt(context, a, 1).readUnits(countAt(a, 0, 0)); }

FileFacts factsOf(RunContext& context, const Text& path)
{
    FileFacts facts;
    if (!withFileErrors(FileOperation::Other, [&] { return context.files.facts(path, facts); }))
        raise(error::fileNotFound);
    return facts;
}

Value fileLength(RunContext& context, Given a)
{
    return static_cast<std::int32_t>(factsOf(context, context.pathOf(a[0])).size);
}

Value fileTime(RunContext& context, Given a) { return DateValue{factsOf(context, context.pathOf(a[0])).modified}; }

Value attributes(RunContext& context, Given a)
{
    return static_cast<std::int16_t>(factsOf(context, context.pathOf(a[0])).attributes);
}

Value setAttributes(RunContext& context, Given a)
{
    const Text path = context.pathOf(a[0]);
    const auto wanted = static_cast<std::uint32_t>(longOf(a[1]));
    withFileErrors(FileOperation::Other, [&] { context.files.setAttributes(path, wanted); });
    return {};
}

Value kill(RunContext& context, Given a)
{
    const Text path = context.pathOf(a[0]);
    if (context.opened.isOpen(path))
        raise(error::fileAlreadyOpen);
    deleteFiles(context.files, path, false);
    return {};
}

Value makeFolder(RunContext& context, Given a)
{
    const Text path = context.pathOf(a[0]);
    withFileErrors(FileOperation::CreateFolder, [&] { context.files.createFolder(withoutTrailingSeparators(path)); });
    return {};
}

Value removeFolder(RunContext& context, Given a)
{
    const Text path = context.pathOf(a[0]);
    withFileErrors(FileOperation::Other, [&] { context.files.removeFolder(withoutTrailingSeparators(path)); });
    return {};
}

Value changeFolder(RunContext& context, Given a)
{
    const Text path = context.pathOf(a[0]);
    withFileErrors(FileOperation::Other, [&] { context.files.setCurrentFolder(path); });
    return {};
}

Value currentFolder(RunContext& context, Given) { return context.files.currentFolder(); }

Value copyFile(RunContext& context, Given a)
{
    const Text from = context.pathOf(a[0]);
    const Text to = context.pathOf(a[1]);
    if (context.opened.isOpen(from) || context.opened.isOpen(to))
        raise(error::permissionDenied);
    withFileErrors(FileOperation::Other, [&] { context.files.copy(from, to); });
    return {};
}

/// The names that a pattern stands for. Without the folder, hidden or system attribute, plain files only.
std::vector<Text> matchesOf(RunContext& context, const Text& pattern, std::uint32_t wanted)
{
    std::vector<Text> names;
    FileFacts facts;
    const bool hasWildcards = pattern.find_first_of(u"*?") != Text::npos;
    const auto fits = [&](std::uint32_t has) {
        constexpr std::uint32_t special = FolderAttribute | HiddenAttribute | SystemAttribute;
        return (has & special & ~wanted) == 0;
    };
    if (!hasWildcards && !pattern.empty() && pattern.back() != u'\\') {
        if (context.files.facts(pattern, facts) && fits(facts.attributes))
            names.push_back(pathFileName(pattern));
        return names;
    }
    const Text name = pathFileName(pattern);
    for (const FolderEntry& entry : entriesMatching(context.files, pattern, name.empty() ? u"*" : TextView(name)))
        if (fits(entry.facts.attributes))
            names.push_back(entry.name);
    return names;
}

Value dir(RunContext& context, Given a)
{
    if (isGiven(a, 0)) {
        const Text pattern = context.pathOf(a[0]);
        const auto wanted = static_cast<std::uint32_t>(longAt(a, 1, 0));
        context.folderMatches
            = withFileErrors(FileOperation::Other, [&] { return matchesOf(context, pattern, wanted); });
        std::ranges::reverse(context.folderMatches);
    } else if (context.folderMatches.empty()) {
        raise(error::invalidCall); // nothing was begun, or its end has been told
    }
    if (context.folderMatches.empty())
        return Text();
    Text next = std::move(context.folderMatches.back());
    context.folderMatches.pop_back();
    if (context.folderMatches.empty() && !next.empty())
        context.folderMatches.emplace_back(); // the next call tells the end
    return next;
}

constexpr ValueType number = ValueType::Int32;
constexpr ValueType any = ValueType::Variant;
constexpr ValueType text = ValueType::String;

constexpr Intrinsic functions[] = {
    {u"FreeFile", 0, 1, ValueType::Int16, freeFile},
    {u"EOF", 1, 1, ValueType::Boolean, atEnd},
    {u"LOF", 1, 1, number, length},
    {u"Loc", 1, 1, number, location},
    {u"Seek", 1, 1, number, position},
    {u"Input", 2, 2, text, read},
    {u"FileLen", 1, 1, number, fileLength},
    {u"FileDateTime", 1, 1, ValueType::Date, fileTime},
    {u"GetAttr", 1, 1, ValueType::Int16, attributes},
    {u"SetAttr", 2, 2, any, setAttributes, u"PathName Attributes"},
    {u"Kill", 1, 1, any, kill},
    {u"MkDir", 1, 1, any, makeFolder},
    {u"RmDir", 1, 1, any, removeFolder},
    {u"ChDir", 1, 1, any, changeFolder},
    {u"CurDir", 0, 1, text, currentFolder},
    {u"FileCopy", 2, 2, any, copyFile, u"Source Destination"},
    {u"Dir", 0, 2, text, dir, u"PathName Attributes"},
};

} // namespace

std::span<const Intrinsic> fileFunctions() { return functions; }

} // namespace zn::language
