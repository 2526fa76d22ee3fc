#include "arkin/vault/FileObject.h"

#include "arkin/store/CheckOut.h"
#include "arkin/store/Outlines.h"

#include <algorithm>

namespace zn::arkin {

using zn::S_FALSE;
using zn::S_OK;
using zn::Status;

namespace {

/// The values of one variable in one version.
class VariableValueObject final : public zn::IArkVariableValue {
public:
    VariableValueObject(ContextRef context, std::int32_t variableId)
        : m_context(std::move(context))
        , m_variableId(variableId)
    {
    }

    std::int32_t variableId() const { return m_variableId; }
    void add(const CardValue& value) { m_values.push_back(value); }

    Status GetId(std::int32_t& id) override
    {
        id = m_variableId;
        return S_OK;
    }
    Status GetValue(zn::TextView configuration, zn::Value& value) override
    {
        return guarded(*m_context, [&] {
            // A file that has no configurations is asked for with an empty one.
            const zn::TextView wanted = configuration.empty() ? zn::TextView(u"@") : configuration;
            const auto found = std::find_if(m_values.begin(), m_values.end(),
                [&](const CardValue& candidate) { return zn::equalNoCase(candidate.configuration, wanted); });
            if (found == m_values.end())
                return S_FALSE;
            value = found->value;
            return S_OK;
        });
    }

private:
    ContextRef m_context;
    std::int32_t m_variableId;
    std::vector<CardValue> m_values;
};

class VariableEnumerator final : public zn::IArkVariableEnumerator {
public:
    VariableEnumerator(ContextRef context, std::int32_t fileId)
        : m_context(std::move(context))
        , m_fileId(fileId)
    {
    }

    Status GetVariable(
        zn::TextView name, zn::TextView configuration, std::int32_t, zn::Value& value, bool& found) override
    {
        return guarded(*m_context, [&] {
            Vault& vault = m_context->vault;
            const auto variable = vault.cards().findVariable(name);
            if (!variable)
                throw zn::StatusError(
                    E_ARK_NO_SUCH_VARIABLE, "The vault has no card variable named \"" + zn::toUtf8(name) + "\".");
            const auto stored
                = vault.cards().value(m_fileId, vault.file(m_fileId).latestVersion, variable->id, configuration);
            found = stored.has_value();
            if (stored)
                value = *stored;
            return S_OK;
        });
    }

private:
    ContextRef m_context;
    std::int32_t m_fileId;
};

} // namespace

Status FileObject::GetId(std::int32_t& id)
{
    id = m_fileId;
    return S_OK;
}

Status FileObject::GetCurrentVersion(std::int32_t& version)
{
    return guarded(*m_context, [&] {
        version = row().latestVersion;
        return S_OK;
    });
}

Status FileObject::GetLocalPath(std::int32_t folderId, zn::Text& path)
{
    return guarded(*m_context, [&] {
        path = m_context->vault.local().pathOf(folderId, row().name);
        return S_OK;
    });
}

Status FileObject::IsCheckedOut(std::int16_t& flag)
{
    return guarded(*m_context, [&] {
        flag = m_context->vault.files().checkOut(m_fileId) ? -1 : 0;
        return S_OK;
    });
}

Status FileObject::CheckOut(std::int32_t folderId, std::int32_t, std::int32_t)
{
    return guarded(*m_context, [&] {
        whenThereIsRoom(m_context->vault, [&] { checkOut(m_context->vault, {m_fileId, folderId}); });
        return S_OK;
    });
}

Status FileObject::GetVariableEnumerator(std::int32_t, std::shared_ptr<zn::IArkVariableEnumerator>& enumerator)
{
    return guarded(*m_context, [&] {
        enumerator = std::make_shared<VariableEnumerator>(m_context, m_fileId);
        return S_OK;
    });
}

Status FileObject::GetVersionInfo(const zn::Value& version, std::int32_t folderId, std::vector<zn::ObjectRef>& values,
    std::vector<zn::Text>& configurations, zn::ArkVersionInfo& info)
{
    return guarded(*m_context, [&] {
        Vault& vault = m_context->vault;
        vault.permissions().refresh();
        vault.permissions().require(folderId, Right::Read);
        const FileRow file = vault.file(m_fileId);
        const VersionRow found = vault.version(m_fileId, std::max(version.toInt32(), 0));
        std::vector<zn::ObjectRef> objects;
        std::vector<zn::Text> names;
        std::shared_ptr<VariableValueObject> last;
        for (const CardValue& value : vault.cards().values(m_fileId, found.version)) {
            if (!last || last->variableId() != value.variableId) {
                last = std::make_shared<VariableValueObject>(m_context, value.variableId);
                objects.push_back(last);
            }
            last->add(value);
            if (std::find(names.begin(), names.end(), value.configuration) == names.end())
                names.push_back(value.configuration);
        }
        for (const zn::Text& part : Outlines(vault).parts({m_fileId, found.version})) {
            if (std::find(names.begin(), names.end(), part) == names.end())
                names.push_back(part);
        }
        values = std::move(objects);
        configurations = std::move(names);
        info = {file.latestVersion, found.revision, found.state};
        return S_OK;
    });
}

} // namespace zn::arkin
