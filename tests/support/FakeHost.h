#pragma once

#include "contracts/host/ArkBatch.h"
#include "contracts/host/ArkTask.h"
#include "contracts/host/ArkVault.h"

#include <deque>
#include <map>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <utility>

namespace zn::test {

/// A file as the fake vault keeps it.
struct FakeFile {
    std::int32_t id = 0;
    std::int32_t folderId = 0;
    Text path;
    std::int32_t version = 1;
    bool checkedOut = false;
    Text revision;
    Text workflowState;
    /// (variable, configuration) and the value; "@" is the file's own.
    std::map<std::pair<Text, Text>, Value> card;
};

/// A vault host whose calls are written down and can be made to fail one by one, for what a real host can't be made to
/// show. Its objects refer to it, so it must outlive them.
class FakeHost {
public:
    std::shared_ptr<IArkVault> vault();
    std::shared_ptr<IArkTaskInstance> task();

    FakeFile& addFile(std::int32_t id, std::int32_t folderId, Text path, std::int32_t version = 1);
    void removeFile(std::int32_t id);
    FakeFile* find(TextView path);
    FakeFile* find(std::int32_t id);
    /// The id of a card variable; 0 if the vault has none of that name.
    std::int32_t variableId(TextView name) const;
    /// Writes a call down. The status that it is to answer: of `failures` by "Name" or "Name argument", or else 0.
    Status answer(const std::string& name, const std::string& arguments = {});
    /// The status by which a call is made to fail; 0 if it isn't.
    Status failureOf(const std::string& call) const;

    Status makeUtility(ArkUtility kind, ObjectRef& utility);

    Text root = u"C:\\V\\";
    Text vaultName = u"Demo";
    std::map<std::int32_t, FakeFile> files; ///< by id
    std::map<Text, std::int32_t> folders;   ///< path and id
    std::vector<Text> cardVariables;        ///< ids from 1 on
    std::map<Text, Value> taskVariables;
    std::map<std::pair<std::int32_t, Text>, Value> runValues; ///< second lookup, by number or by name (0)
    std::map<Text, Status> addStatuses;                       ///< results of the batch add by path
    std::map<std::string, Status> failures;
    /// What the run's host answers when it is asked for the state, one after the other; then running.
    std::deque<TaskRunState> states;
    /// Progress and states that the run was given, in order: "position 1: C:\V\a.zenprt".
    std::vector<std::string> runCalls;
    /// What the run said about files, "C:\\V\\a.zenprt: It …", and its outputs: "1 of 2".
    std::vector<std::string> messages;
    std::string outputs;
    /// Changes to the vault, in order: "AddFile C:\V\a.stl | C:\V | - | 0".
    std::vector<std::string> calls;

private:
    std::unordered_map<Text, std::int32_t> m_idsByPath; ///< by folded path
};

/// What the objects of a fake vault are built on.
template <class... Interfaces> class OfHost : public Interfaces... {
public:
    explicit OfHost(FakeHost& host)
        : m_host(host)
    {
    }

protected:
    FakeHost& m_host;
};

/// Gives a caller what he asked for.
template <class Target> Status give(Target& target, std::type_identity_t<Target> value)
{
    target = std::move(value);
    return S_OK;
}

} // namespace zn::test
