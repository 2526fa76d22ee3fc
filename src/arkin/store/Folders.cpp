#include "arkin/store/Folders.h"

#include "arkin/store/Codes.h"
#include "base/Paths.h"

#include <algorithm>
#include <soci/soci.h>

namespace zn::arkin {

using zn::Text;
using zn::TextView;

std::string nameKey(TextView name) { return zn::toUtf8(zn::foldCase(name)); }

void requireGoodName(TextView name)
{
    constexpr std::size_t longestOnDisk = 255;
    const std::string utf8 = zn::toUtf8(name);
    const bool hasBadUnit = std::any_of(
        name.begin(), name.end(), [](char16_t unit) { return unit < 32 || unit == u'\\' || unit == u'/'; });
    if (name.empty() || name == u"." || name == u".." || utf8.size() > longestOnDisk || hasBadUnit
        || zn::toText(utf8) != name)
        throw zn::StatusError(E_ARK_BAD_NAME, "The vault cannot hold a file or folder named \"" + utf8 + "\".");
}

namespace {

/// Control characters are those of both halves of the code page, and the two that end a line or paragraph elsewhere.
bool isUnsafe(char16_t unit)
{
    return unit < 32 || (unit >= 0x7F && unit < 0xA0) || unit == 0x2028 || unit == 0x2029 || unit == u'"'
        || unit == u'<' || unit == u'>';
}

} // namespace

bool hasUnsafeCharacter(TextView name) { return std::any_of(name.begin(), name.end(), isUnsafe); }

void requireGoodNewName(TextView name)
{
    if (hasUnsafeCharacter(name))
        throw zn::StatusError(E_ARK_BAD_NAME,
            "The name \"" + zn::toUtf8(name)
                + "\" has a character that tasks can't work with (\", <, > or a control "
                  "character). Rename it, for example to \""
                + zn::toUtf8(safeName(name)) + "\".");
    if (zn::startsWithDrive(name))
        throw zn::StatusError(E_ARK_BAD_NAME,
            "The name \"" + zn::toUtf8(name) + "\" begins as the path of a drive does. Rename it, for example to \""
                + zn::toUtf8(safeName(name)) + "\".");
    requireGoodName(name);
}

Text safeName(TextView name)
{
    Text safe(name);
    std::replace_if(safe.begin(), safe.end(), isUnsafe, u'_');
    if (zn::startsWithDrive(safe))
        safe[1] = u'_';
    return safe;
}

std::vector<Text> pathParts(TextView relativePath)
{
    std::vector<Text> parts;
    for (Text& part : zn::split(relativePath, u'\\')) {
        if (!part.empty())
            parts.push_back(std::move(part));
    }
    return parts;
}

std::optional<std::int32_t> Folders::find(TextView relativePath)
{
    std::int32_t folder = m_rootId;
    for (const Text& part : pathParts(relativePath)) {
        const auto next = child(folder, part);
        if (!next)
            return std::nullopt;
        folder = *next;
    }
    return folder;
}

std::int32_t Folders::findNearest(TextView relativePath)
{
    std::int32_t folder = m_rootId;
    for (const Text& part : pathParts(relativePath)) {
        const auto next = child(folder, part);
        if (!next)
            break;
        folder = *next;
    }
    return folder;
}

std::int32_t Folders::ensure(TextView relativePath)
{
    std::int32_t folder = m_rootId;
    for (const Text& part : pathParts(relativePath)) {
        const auto next = child(folder, part);
        folder = next ? *next : makeChild(folder, part);
    }
    if (isThere(folder))
        return folder;
    // Somebody has moved it since it was read.
    forget();
    return ensure(relativePath);
}

bool Folders::isThere(std::int32_t folderId)
{
    int count = 0;
    m_database.session() << "SELECT COUNT(*) FROM folders WHERE id = :i", soci::use(folderId), soci::into(count);
    return count != 0;
}

Text Folders::pathOf(std::int32_t folderId)
{
    Text path;
    for (std::int32_t id = folderId; id != m_rootId;) {
        const Folder& folder = row(id);
        path = path.empty() ? folder.name : folder.name + u'\\' + path;
        id = folder.parentId;
    }
    return path;
}

std::int32_t Folders::parentOf(std::int32_t folderId) { return folderId == m_rootId ? 0 : row(folderId).parentId; }

std::vector<std::int32_t> Folders::children(std::int32_t folderId)
{
    std::vector<std::int32_t> ids;
    std::int32_t id = 0;
    std::string name, key;
    soci::statement statement = (m_database.session().prepare
            << "SELECT id, name, name_key FROM folders WHERE vault_id = :v AND parent_id = :p ORDER BY name_key",
        soci::use(m_vaultId), soci::use(folderId), soci::into(id), soci::into(name), soci::into(key));
    statement.execute();
    while (statement.fetch()) {
        ids.push_back(id);
        m_byId[id] = {folderId, zn::toText(name)};
        m_byName[{folderId, key}] = id;
    }
    return ids;
}

void Folders::forget()
{
    m_byId.clear();
    m_byName.clear();
}

void Folders::keep(std::int32_t folderId, std::int32_t parentId, TextView name)
{
    m_byId[folderId] = {parentId, Text(name)};
}

std::optional<std::int32_t> Folders::child(std::int32_t parentId, TextView name)
{
    const std::string key = nameKey(name);
    const auto known = m_byName.find({parentId, key});
    if (known != m_byName.end())
        return known->second;
    std::int32_t id = 0;
    std::string storedName;
    m_database.session() << "SELECT id, name FROM folders WHERE vault_id = :v AND parent_id = :p AND name_key = :k",
        soci::use(m_vaultId), soci::use(parentId), soci::use(key), soci::into(id), soci::into(storedName);
    if (!m_database.session().got_data())
        return std::nullopt;
    m_byId[id] = {parentId, zn::toText(storedName)};
    m_byName[{parentId, key}] = id;
    return id;
}

std::int32_t Folders::makeChild(std::int32_t parentId, TextView name)
{
    requireGoodNewName(name);
    const std::int32_t id = m_database.allocateIds("folders");
    const std::string storedName = zn::toUtf8(name), key = nameKey(name);
    m_database.session() << "INSERT INTO folders (id, vault_id, parent_id, name, name_key) VALUES (:i, :v, :p, :n, :k)",
        soci::use(id), soci::use(m_vaultId), soci::use(parentId), soci::use(storedName), soci::use(key);
    m_byId[id] = {parentId, Text(name)};
    m_byName[{parentId, key}] = id;
    return id;
}

const Folders::Folder& Folders::row(std::int32_t folderId)
{
    const auto known = m_byId.find(folderId);
    if (known != m_byId.end())
        return known->second;
    Folder folder;
    std::string name;
    m_database.session() << "SELECT parent_id, name FROM folders WHERE id = :i AND vault_id = :v", soci::use(folderId),
        soci::use(m_vaultId), soci::into(folder.parentId), soci::into(name);
    if (!m_database.session().got_data())
        throw zn::StatusError(E_ARK_NOT_IN_VAULT, "The vault has no folder number " + std::to_string(folderId) + ".");
    folder.name = zn::toText(name);
    return m_byId[folderId] = folder;
}

} // namespace zn::arkin
