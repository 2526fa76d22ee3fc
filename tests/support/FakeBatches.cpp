#include "base/Format.h"
#include "base/Paths.h"
#include "tests/support/FakeHost.h"

/// The batch utilities of the fake vault: they write down what they are told and answer as they are told.
namespace zn::test {

namespace {

class BatchAdd : public OfHost<IArkBatchAdd> {
public:
    using OfHost::OfHost;

    Status AddFile(TextView source, TextView folder, std::int32_t, const Text* name, std::int32_t flags) override
    {
        const Text target = name ? *name : Text(u"-");
        const Status status
            = m_host.answer("AddFile", toUtf8(formatText("%s | %s | %s | %d", source, folder, target, flags)));
        if (!failed(status))
            m_paths.push_back(pathAppend(folder, name ? *name : pathFileName(source)));
        return status;
    }
    Status Commit(std::int32_t, std::vector<ArkAddResult>& results, std::int32_t& count) override
    {
        const Status status = m_host.answer("AddCommit", std::to_string(count));
        if (failed(status))
            return status;
        std::int32_t id = 1000;
        for (const Text& path : m_paths) {
            ArkAddResult result{++id, 50, m_host.addStatuses[path], path};
            if (failed(result.status))
                result.fileId = result.folderId = 0;
            results.insert(results.begin(), result);
        }
        return status;
    }

private:
    std::vector<Text> m_paths;
};

class BatchCardUpdate : public OfHost<IArkBatchCardUpdate> {
public:
    using OfHost::OfHost;

    Status SetVariable(
        std::int32_t fileId, std::int32_t variableId, const Value& value, std::int32_t, std::int32_t flags) override
    {
        const char* format = "%d %d %s (type %d) %d";
        return m_host.answer(
            "SetVariable", toUtf8(formatText(format, fileId, variableId, value.toText(), int(value.type()), flags)));
    }
    Status Commit(std::vector<Status>&, std::int32_t) override { return m_host.answer("CardCommit"); }
};

std::string pairsText(const std::vector<ArkFileFolderPair>& pairs)
{
    std::string text;
    for (const ArkFileFolderPair& pair : pairs)
        text += (text.empty() ? "" : " ") + std::to_string(pair.fileId) + "/" + std::to_string(pair.folderId);
    return text;
}

class BatchReference : public OfHost<IArkBatchReference> {
public:
    using OfHost::OfHost;

    Status AddReferences(std::int32_t fileId, const std::vector<ArkFileFolderPair>& pairs) override
    {
        return m_host.answer("AddReferences", std::to_string(fileId) + " > " + pairsText(pairs));
    }
    Status CreateTree(std::int32_t, bool& needsCommit) override
    {
        needsCommit = true;
        return m_host.answer("ReferenceTree");
    }
    Status Commit(bool&) override { return m_host.answer("ReferenceCommit"); }
};

class BatchUnlock : public OfHost<IArkBatchUnlock> {
public:
    using OfHost::OfHost;

    Status SetComment(TextView comment) override { return m_host.answer("SetComment", toUtf8(comment)); }
    Status AddSelection(IArkVault&, const std::vector<ArkFileFolderPair>& pairs) override
    {
        return m_host.answer("UnlockSelection", pairsText(pairs));
    }
    Status CreateTree(std::int32_t, std::int32_t flag, std::int32_t, std::int32_t&) override
    {
        return m_host.answer("UnlockTree", std::to_string(flag));
    }
    Status Unlock(std::int32_t, std::int32_t) override { return m_host.answer("Unlock"); }
};

class BatchFetch : public OfHost<IArkBatchFetch> {
public:
    using OfHost::OfHost;

    Status AddSelection(IArkVault&, std::int32_t fileId, std::int32_t folderId, std::int32_t version) override
    {
        return m_host.answer("FetchSelection", toUtf8(formatText("%d/%d %d", fileId, folderId, version)));
    }
    Status CreateTree(std::int32_t, std::int32_t flag) override
    {
        return m_host.answer("FetchTree", std::to_string(flag));
    }
    Status GetFiles(std::int32_t, std::int32_t) override { return m_host.answer("GetFiles"); }
};

class BatchQuery : public OfHost<IArkBatchQuery> {
public:
    using OfHost::OfHost;

    Status AddFile(const Value& path) override
    {
        if (const FakeFile* file = m_host.find(path.toText()))
            m_rows.push_back({file->id, file->version});
        return S_OK;
    }
    Status CreateList(TextView, std::vector<Text>&) override { return m_host.answer("CreateList"); }
    Status GetRows(std::vector<ArkQueryRow>& rows) override { return give(rows, m_rows); }

private:
    std::vector<ArkQueryRow> m_rows;
};

} // namespace

Status FakeHost::makeUtility(ArkUtility kind, ObjectRef& utility)
{
    const Status status = answer("CreateUtility", std::to_string(kind));
    if (failed(status))
        return status;
    switch (kind) {
    case ArkUtil_BatchCardUpdate:
        return give(utility, std::make_shared<BatchCardUpdate>(*this));
    case ArkUtil_BatchUnlock:
        return give(utility, std::make_shared<BatchUnlock>(*this));
    case ArkUtil_BatchReference:
        return give(utility, std::make_shared<BatchReference>(*this));
    case ArkUtil_BatchFetch:
        return give(utility, std::make_shared<BatchFetch>(*this));
    case ArkUtil_BatchQuery:
        return give(utility, std::make_shared<BatchQuery>(*this));
    case ArkUtil_BatchAdd:
        return give(utility, std::make_shared<BatchAdd>(*this));
    case ArkUtil_VariableMgr:
        return give(utility, vault());
    case ArkUtil_BatchList:
        return E_NOTIMPL; // only windows ask for it, and those are tested with the real vault
    }
    return status;
}

} // namespace zn::test
