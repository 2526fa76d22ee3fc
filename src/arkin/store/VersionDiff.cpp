#include "arkin/store/VersionDiff.h"

#include "arkin/store/Outlines.h"

#include <map>

namespace zn::arkin {

namespace {

using Kind = Difference::Kind;
/// What one version has, by name.
using Entries = std::map<zn::Text, zn::Text>;

Entries partsOf(Vault& vault, const FileVersion& file)
{
    Entries entries;
    for (const zn::Text& part : Outlines(vault).parts(file))
        entries[part] = u"there";
    return entries;
}

Entries cardOf(Vault& vault, const FileVersion& file)
{
    std::map<std::int32_t, zn::Text> names;
    for (const Variable& variable : vault.cards().variables())
        names[variable.id] = variable.name;
    Entries entries;
    for (const CardValue& value : vault.cards().values(file.fileId, file.version)) {
        const zn::Text name = names[value.variableId];
        entries[value.configuration == u"@" ? name : name + u" (" + value.configuration + u")"] = value.value.toText();
    }
    return entries;
}

Entries referencesOf(Vault& vault, const FileVersion& file)
{
    Entries entries;
    for (const ReferenceRow& row : vault.references().from(file.fileId, file.version))
        entries[vault.local().pathOf(row.toFolderId, vault.files().row(row.toFileId).value_or(FileRow()).name)]
            = zn::numberText(row.toVersion);
    return entries;
}

void compare(Kind kind, const Entries& before, const Entries& after, std::vector<Difference>& differences)
{
    Entries names = before;
    names.insert(after.begin(), after.end());
    const auto sideOf = [](const Entries& entries, const zn::Text& name) {
        const auto entry = entries.find(name);
        return entry == entries.end() ? zn::Text() : entry->second;
    };
    for (const auto& [name, value] : names) {
        const zn::Text a = sideOf(before, name), b = sideOf(after, name);
        if (a != b)
            differences.push_back({kind, name, a, b});
    }
}

} // namespace

std::vector<Difference> differencesOf(
    Vault& vault, std::int32_t fileId, std::int32_t beforeVersion, std::int32_t afterVersion)
{
    const VersionRow a = vault.version(fileId, beforeVersion), b = vault.version(fileId, afterVersion);
    const FileVersion before{fileId, a.version}, after{fileId, b.version};
    std::vector<Difference> differences;
    if (a.content.hash != b.content.hash)
        differences.push_back({Kind::Content, {}, zn::numberText(a.content.size), zn::numberText(b.content.size)});
    compare(Kind::Part, partsOf(vault, before), partsOf(vault, after), differences);
    compare(Kind::Card, cardOf(vault, before), cardOf(vault, after), differences);
    compare(Kind::Reference, referencesOf(vault, before), referencesOf(vault, after), differences);
    return differences;
}

} // namespace zn::arkin
