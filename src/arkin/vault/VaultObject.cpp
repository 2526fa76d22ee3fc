#include "arkin/vault/VaultObject.h"

#include "arkin/vault/FileObject.h"
#include "arkin/vault/FolderObject.h"
#include "arkin/vault/Position.h"
#include "arkin/vault/Utilities.h"
#include "arkin/vault/VaultDesktop.h"

#include <algorithm>

namespace zn::arkin {

using zn::S_FALSE;
using zn::S_OK;
using zn::Status;

namespace {

/// Of the flags of browsing for files.
constexpr std::int32_t severalFiles = 2;

class VariableObject final : public zn::IArkVariable {
public:
    explicit VariableObject(Variable variable)
        : m_variable(std::move(variable))
    {
    }

    Status GetName(zn::Text& name) override
    {
        name = m_variable.name;
        return S_OK;
    }
    Status GetId(std::int32_t& id) override
    {
        id = m_variable.id;
        return S_OK;
    }

private:
    Variable m_variable;
};

/// What the vault knows of the failure beyond its status.
std::optional<std::string> sentenceFor(ObjectContext& context, Status code)
{
    if (context.lastFailure.status == code && !context.lastFailure.sentence.empty())
        return context.lastFailure.sentence;
    auto& inTurn = context.failuresInTurn;
    const auto next
        = std::find_if(inTurn.begin(), inTurn.end(), [&](const Failure& failure) { return failure.status == code; });
    if (next == inTurn.end())
        return std::nullopt;
    std::string sentence = std::move(next->sentence);
    inTurn.erase(next);
    return sentence;
}

} // namespace

Status VaultObject::GetRootFolderPath(zn::Text& path)
{
    return guarded(*m_context, [&] {
        path = vault().local().root();
        return S_OK;
    });
}

Status VaultObject::GetName(zn::Text& name)
{
    return guarded(*m_context, [&] {
        name = vault().info().name;
        return S_OK;
    });
}

Status VaultObject::GetFileFromPath(
    zn::TextView path, std::shared_ptr<zn::IArkFolder>* folder, std::shared_ptr<zn::IArkFile>& file)
{
    return guarded(*m_context, [&] {
        const auto place = vault().find(path);
        if (!place)
            return S_FALSE;
        file = std::make_shared<FileObject>(m_context, place->fileId);
        if (folder)
            *folder = std::make_shared<FolderObject>(m_context, place->folderId);
        return S_OK;
    });
}

Status VaultObject::GetFolderFromPath(zn::TextView path, std::shared_ptr<zn::IArkFolder>& folder)
{
    return guarded(*m_context, [&] {
        const auto id = vault().findFolder(path);
        if (!id)
            return S_FALSE;
        folder = std::make_shared<FolderObject>(m_context, *id);
        return S_OK;
    });
}

Status VaultObject::CreateUtility(zn::ArkUtility kind, zn::ObjectRef& utility)
{
    return guarded(*m_context, [&] {
        utility = makeUtility(m_context, kind);
        return S_OK;
    });
}

zn::ObjectRef makeVariableMgr(const ContextRef& context) { return std::make_shared<VaultObject>(context); }

Status VaultObject::BrowseForFile(
    std::int32_t window, std::int32_t flags, zn::TextView title, zn::TextView filter, std::vector<zn::Text>& paths)
{
    return guarded(*m_context, [&] {
        if (!m_context->desktop)
            return zn::E_ARK_NO_DESKTOP;
        auto picked = m_context->desktop->pickFiles(*this, window, (flags & severalFiles) != 0, title, filter);
        if (picked.empty())
            return S_FALSE;
        paths = std::move(picked);
        return S_OK;
    });
}

Status VaultObject::BrowseForFolder(std::int32_t window, zn::TextView title, std::shared_ptr<zn::IArkFolder>& folder)
{
    return guarded(*m_context, [&] {
        if (!m_context->desktop)
            return zn::E_ARK_NO_DESKTOP;
        auto picked = m_context->desktop->pickFolder(*this, window, title);
        if (!picked)
            return S_FALSE;
        folder = std::move(picked);
        return S_OK;
    });
}

Status VaultObject::GetErrorText(Status code, zn::Text& name, zn::Text& description)
{
    try {
        const StatusText* text = statusText(code);
        if (!text)
            return S_FALSE;
        name = zn::toText(text->name);
        description = zn::toText(sentenceFor(*m_context, code).value_or(text->sentence));
        return S_OK;
    } catch (...) {
        return zn::currentExceptionStatus();
    }
}

Status VaultObject::GetFirstVariablePosition(std::shared_ptr<zn::IArkPosition>& position)
{
    return guarded(*m_context, [&] {
        position = std::make_shared<Position<Variable>>(vault().cards().variables());
        return S_OK;
    });
}

Status VaultObject::GetNextVariable(zn::IArkPosition& position, std::shared_ptr<zn::IArkVariable>& variable)
{
    return guarded(*m_context, [&] {
        variable = std::make_shared<VariableObject>(Position<Variable>::take(position));
        return S_OK;
    });
}

} // namespace zn::arkin
