#include "tests/support/FakeHost.h"

#include "base/Format.h"
#include "base/Paths.h"

#include <algorithm>

namespace zn::test {

namespace {

class Position : public IArkPosition {
public:
    explicit Position(std::size_t count)
        : m_count(count)
    {
    }
    Status IsNull(bool& isNull) override
    {
        isNull = next >= m_count;
        return isNull ? S_OK : S_FALSE;
    }
    std::size_t next = 0;

private:
    std::size_t m_count;
};

std::size_t take(IArkPosition& position) { return dynamic_cast<Position&>(position).next++; }

class Card : public OfHost<IArkVariableEnumerator> {
public:
    Card(FakeHost& host, std::int32_t fileId)
        : OfHost(host)
        , m_fileId(fileId)
    {
    }
    Status GetVariable(TextView name, TextView configuration, std::int32_t, Value& value, bool& found) override
    {
        if (m_host.variableId(name) == 0)
            return E_INVALIDARG;
        const auto& card = m_host.find(m_fileId)->card;
        const auto entry = card.find({Text(name), Text(configuration)});
        found = entry != card.end();
        return give(value, found ? entry->second : Value());
    }

private:
    std::int32_t m_fileId;
};

class VariableValue : public OfHost<IArkVariableValue> {
public:
    VariableValue(FakeHost& host, std::int32_t fileId, Text name)
        : OfHost(host)
        , m_fileId(fileId)
        , m_name(std::move(name))
    {
    }
    Status GetId(std::int32_t& id) override { return give(id, m_host.variableId(m_name)); }
    Status GetValue(TextView configuration, Value& value) override
    {
        const auto& card = m_host.find(m_fileId)->card;
        const auto entry = card.find({m_name, Text(configuration)});
        if (entry == card.end())
            return S_FALSE;
        return give(value, entry->second);
    }

private:
    std::int32_t m_fileId;
    Text m_name;
};

class File : public OfHost<IArkFile> {
public:
    File(FakeHost& host, std::int32_t id)
        : OfHost(host)
        , m_id(id)
    {
    }
    Status GetId(std::int32_t& id) override { return give(id, m_id); }
    Status GetCurrentVersion(std::int32_t& version) override { return give(version, data().version); }
    Status GetLocalPath(std::int32_t, Text& path) override { return give(path, data().path); }
    Status IsCheckedOut(std::int16_t& flag) override { return give(flag, data().checkedOut ? 1 : 0); }
    Status CheckOut(std::int32_t folderId, std::int32_t window, std::int32_t flags) override
    {
        if (window != 0 || flags != 0) // nobody is there, and nothing special is wanted
            return E_INVALIDARG;
        const Status status = m_host.answer("CheckOut", toUtf8(formatText("%d %d", m_id, folderId)));
        data().checkedOut |= !failed(status);
        return status;
    }
    Status GetVariableEnumerator(std::int32_t, std::shared_ptr<IArkVariableEnumerator>& enumerator) override
    {
        return give(enumerator, std::make_shared<Card>(m_host, m_id));
    }
    Status GetVersionInfo(const Value& version, std::int32_t folderId, std::vector<ObjectRef>& values,
        std::vector<Text>&, ArkVersionInfo& info) override
    {
        const Status status
            = m_host.answer("GetVersionInfo", toUtf8(formatText("%d %d %d", m_id, version.toInt32(), folderId)));
        if (failed(status))
            return status;
        info = {data().version, data().revision, data().workflowState};
        for (const Text& name : m_host.cardVariables)
            values.push_back(std::make_shared<VariableValue>(m_host, m_id, name));
        return status;
    }

private:
    FakeFile& data() { return *m_host.find(m_id); }

    std::int32_t m_id;
};

class Folder : public OfHost<IArkFolder> {
public:
    Folder(FakeHost& host, Text path)
        : OfHost(host)
        , m_path(std::move(path))
    {
    }
    Status GetId(std::int32_t& id) override { return give(id, m_host.folders.at(m_path)); }
    Status GetLocalPath(Text& path) override { return give(path, m_path); }
    // Nobody walks through these folders; that is done in the real vault.
    Status GetFirstFilePosition(std::shared_ptr<IArkPosition>&) override { return E_NOTIMPL; }
    Status GetNextFile(IArkPosition&, std::shared_ptr<IArkFile>&) override { return E_NOTIMPL; }
    Status GetFirstSubFolderPosition(std::shared_ptr<IArkPosition>&) override { return E_NOTIMPL; }
    Status GetNextSubFolder(IArkPosition&, std::shared_ptr<IArkFolder>&) override { return E_NOTIMPL; }
    Status DeleteFile(std::int32_t, std::int32_t fileId, std::int32_t flags) override
    {
        const Status status = m_host.answer("DeleteFile", toUtf8(formatText("%d %d", fileId, flags)));
        if (!failed(status))
            m_host.removeFile(fileId);
        return status;
    }
    Status HasReadRight(std::int32_t permission, std::int32_t fileId, bool& allowed) override
    {
        return give(allowed, m_host.answer("HasReadRight", toUtf8(formatText("%d %d", permission, fileId))) == S_OK);
    }

private:
    Text m_path;
};

class Variable : public IArkVariable {
public:
    Variable(Text name, std::int32_t id)
        : m_name(std::move(name))
        , m_id(id)
    {
    }
    Status GetName(Text& name) override { return give(name, m_name); }
    Status GetId(std::int32_t& id) override { return give(id, m_id); }

private:
    Text m_name;
    std::int32_t m_id;
};

class Vault : public OfHost<IArkVault, IArkVariableMgr> {
public:
    using OfHost::OfHost;

    Status GetRootFolderPath(Text& path) override { return give(path, m_host.root); }
    Status GetName(Text& name) override { return give(name, m_host.vaultName); }
    Status GetFileFromPath(TextView path, std::shared_ptr<IArkFolder>* folder, std::shared_ptr<IArkFile>& file) override
    {
        if (const Status failure = m_host.failureOf("GetFileFromPath " + toUtf8(path)))
            return failure;
        const FakeFile* found = m_host.find(path);
        if (!found)
            return S_FALSE;
        file = std::make_shared<File>(m_host, found->id);
        if (folder) {
            m_host.folders.try_emplace(pathFolder(found->path), found->folderId);
            *folder = std::make_shared<Folder>(m_host, pathFolder(found->path));
        }
        return S_OK;
    }
    Status GetFolderFromPath(TextView path, std::shared_ptr<IArkFolder>& folder) override
    {
        if (!m_host.folders.contains(Text(path)))
            return S_FALSE;
        return give(folder, std::make_shared<Folder>(m_host, Text(path)));
    }
    Status CreateUtility(ArkUtility kind, ObjectRef& utility) override { return m_host.makeUtility(kind, utility); }
    Status BrowseForFile(std::int32_t, std::int32_t, TextView, TextView, std::vector<Text>&) override
    {
        return E_ARK_NO_DESKTOP;
    }
    Status BrowseForFolder(std::int32_t, TextView, std::shared_ptr<IArkFolder>&) override { return E_ARK_NO_DESKTOP; }
    Status GetErrorText(Status code, Text& name, Text& description) override
    {
        name = formatText("E_%08X", static_cast<std::uint32_t>(code));
        description = u"What it means.";
        return m_host.failureOf("GetErrorText");
    }
    Status GetFirstVariablePosition(std::shared_ptr<IArkPosition>& position) override
    {
        return give(position, std::make_shared<Position>(m_host.cardVariables.size()));
    }
    Status GetNextVariable(IArkPosition& position, std::shared_ptr<IArkVariable>& variable) override
    {
        const std::size_t index = take(position);
        return give(
            variable, std::make_shared<Variable>(m_host.cardVariables.at(index), static_cast<std::int32_t>(index + 1)));
    }
};

class Task : public OfHost<IArkTaskInstance, IArkRunMessages> {
public:
    using OfHost::OfHost;

    Status GetInstanceGuid(Text& guid) override { return give(guid, u"{6D1A7B52-0C8E-4E0B-9F6C-0123456789AB}"); }
    Status SetProgressRange(std::int32_t total, std::int32_t position, TextView text) override
    {
        m_host.runCalls.push_back(
            "range " + std::to_string(total) + " at " + std::to_string(position) + ": " + toUtf8(text));
        return S_OK;
    }
    Status SetProgressPos(std::int32_t position, TextView text) override
    {
        m_host.runCalls.push_back("position " + std::to_string(position) + ": " + toUtf8(text));
        return S_OK;
    }
    Status GetStatus(TaskRunState& state) override
    {
        state = TaskRunState::Running;
        if (!m_host.states.empty()) {
            state = m_host.states.front();
            m_host.states.pop_front();
        }
        return S_OK;
    }
    Status SetStatus(
        TaskRunState state, Status code, TextView text, const std::vector<ArkTaskResultDoc>& results) override
    {
        std::string call = toUtf8(formatText("state %d, code %08X, '%s'", int(state), std::uint32_t(code), text));
        for (const ArkTaskResultDoc& document : results)
            call += toUtf8(formatText(", %d/%d v%d", document.fileId, document.folderId, document.version));
        m_host.runCalls.push_back(call);
        return S_OK;
    }
    Status GetValue(TextView name, Value& value) override
    {
        if (const Status failure = m_host.failureOf("GetValue " + toUtf8(name)))
            return failure;
        const auto entry = m_host.taskVariables.find(Text(name));
        value = entry == m_host.taskVariables.end() ? Value() : entry->second;
        return entry == m_host.taskVariables.end() ? S_FALSE : S_OK;
    }
    Status SetValue(TextView name, const Value& value) override
    {
        if (const Status failure = m_host.failureOf("SetValue " + toUtf8(name)))
            return failure;
        m_host.taskVariables[Text(name)] = value;
        return S_OK;
    }
    Status GetTaskName(Text& name) override { return give(name, u"Task"); }
    Status GetVariable(const Value& idOrName, Value& value) override
    {
        const auto* name = idOrName.get<Text>();
        const auto entry
            = m_host.runValues.find(name ? std::pair(0, *name) : std::pair(idOrName.toInt32(), Text(u"#")));
        value = entry == m_host.runValues.end() ? Value() : entry->second;
        return entry == m_host.runValues.end() ? S_FALSE : S_OK;
    }
    Status AddMessage(TextView path, TextView sentence) override
    {
        m_host.messages.push_back(toUtf8(path) + ": " + toUtf8(sentence));
        return S_OK;
    }
    Status SetOutputs(std::int32_t expected, std::int32_t missing) override
    {
        m_host.outputs = std::to_string(missing) + " of " + std::to_string(expected);
        return S_OK;
    }
};

} // namespace

std::shared_ptr<IArkVault> FakeHost::vault() { return std::make_shared<Vault>(*this); }
std::shared_ptr<IArkTaskInstance> FakeHost::task() { return std::make_shared<Task>(*this); }

FakeFile& FakeHost::addFile(std::int32_t id, std::int32_t folderId, Text path, std::int32_t version)
{
    m_idsByPath[foldCase(path)] = id;
    FakeFile& file = files[id];
    file.id = id;
    file.folderId = folderId;
    file.path = std::move(path);
    file.version = version;
    return file;
}

void FakeHost::removeFile(std::int32_t id)
{
    m_idsByPath.erase(foldCase(files.at(id).path));
    files.erase(id);
}

FakeFile* FakeHost::find(TextView path)
{
    const auto hit = m_idsByPath.find(foldCase(path));
    return hit == m_idsByPath.end() ? nullptr : find(hit->second);
}

FakeFile* FakeHost::find(std::int32_t id)
{
    const auto hit = files.find(id);
    return hit == files.end() ? nullptr : &hit->second;
}

std::int32_t FakeHost::variableId(TextView name) const
{
    const auto hit = std::ranges::find(cardVariables, name);
    return hit == cardVariables.end() ? 0 : static_cast<std::int32_t>(hit - cardVariables.begin()) + 1;
}

Status FakeHost::answer(const std::string& name, const std::string& arguments)
{
    const std::string call = arguments.empty() ? name : name + " " + arguments;
    calls.push_back(call);
    const Status failure = failureOf(call);
    return failure ? failure : failureOf(name);
}

Status FakeHost::failureOf(const std::string& call) const
{
    const auto failure = failures.find(call);
    return failure == failures.end() ? S_OK : failure->second;
}

} // namespace zn::test
