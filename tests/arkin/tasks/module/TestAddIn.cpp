#include "base/Status.h"
#include "contracts/host/ArkAddIn.h"
#include "contracts/host/ArkTask.h"
#include "contracts/host/Module.h"

#include <chrono>
#include <fstream>
#include <thread>

// An add-in for tests: what it does stands in the run's variable "Plan".

namespace {

using namespace zn;

Text textOf(IArkTaskInstance& run, TextView name)
{
    Value value;
    run.GetValue(name, value);
    return value.toText();
}

void pause() { std::this_thread::sleep_for(std::chrono::milliseconds(5)); }

/// Works until it is cancelled, and keeps the protocol of suspending. Returns 1.
Status workUntilCancelled(IArkTaskInstance& run)
{
    run.SetProgressRange(10, 1, u"Z:\\first");
    for (;; pause()) {
        TaskRunState state{};
        checkStatus(run.GetStatus(state));
        if (state == TaskRunState::CancelRequested)
            return S_FALSE;
        if (state != TaskRunState::SuspendRequested)
            continue;
        checkStatus(run.SetStatus(TaskRunState::Suspended, 0, u"", {}));
        while (state != TaskRunState::ResumeRequested) {
            pause();
            checkStatus(run.GetStatus(state));
            if (state == TaskRunState::CancelRequested)
                return S_FALSE;
        }
        checkStatus(run.SetStatus(TaskRunState::Running, 0, u"", {}));
    }
}

/// The first worker leaves its mark and never comes back; the next one finds the mark and finishes.
Status hangOnce(IArkTaskInstance& run)
{
    const auto mark = toUtf8(textOf(run, u"Mark"));
    if (std::ifstream(mark).good())
        return run.SetStatus(TaskRunState::Finished, 0, u"second worker", {});
    run.SetProgressRange(3, 2, u"half-way");
    std::ofstream(mark) << "here";
    for (;;)
        pause();
}

Status finish(IArkTaskInstance& run, const ArkSelection& selection)
{
    Value taskName;
    run.GetVariable(Value(u"TaskName"), taskName);
    Text sameName;
    run.GetTaskName(sameName);
    if (taskName != Value(sameName))
        return E_UNEXPECTED;
    run.SetProgressRange(static_cast<std::int32_t>(selection.size()), 0, selection.front().path);
    run.SetValue(u"Seen", Value(selection.front().path + u"|" + selection.front().configuration));
    if (const auto mark = toUtf8(textOf(run, u"Mark")); !mark.empty())
        std::ofstream(mark, std::ios::app) << toUtf8(textOf(run, u"Number")) << "\n";
    return run.SetStatus(TaskRunState::Finished, 0, taskName.toText(), {{7, 1, 8, 9}, {10, 1, 11, -1}});
}

Status runPlan(IArkTaskInstance& run, const ArkSelection& selection)
{
    const auto plan = textOf(run, u"Plan");
    if (plan == u"finish")
        return finish(run, selection);
    if (plan == u"errors")
        return run.SetStatus(TaskRunState::FinishedWithErrors, E_FAIL, u"It went wrong.", {});
    if (plan == u"work")
        return workUntilCancelled(run);
    if (plan == u"hang once")
        return hangOnce(run);
    return plan == u"fail" ? E_ACCESSDENIED : S_OK;
}

Status launchPlan(ArkCmd& cmd, const ObjectRef& addIn)
{
    auto& run = *query<IArkTaskInstance>(cmd.taskObject);
    const auto plan = textOf(run, u"Launch");
    run.SetValue(u"Own", Value(u"from the launch"));
    if (plan == u"ask") {
        cmd.taskObject = addIn;
        cmd.text = u"Conversion Settings";
    } else if (plan == u"stop") {
        cmd.cancel = -1;
        cmd.text = u"Nothing is selected.";
    }
    return plan == u"fail" ? E_UNEXPECTED : S_OK;
}

/// Its one page is the window that the host gave it, and writes one variable.
Status setupPlan(const ArkCmd& cmd)
{
    const auto properties = query<IArkTaskProperties>(cmd.taskObject);
    if (cmd.command == TaskCmdSetup)
        return properties->SetSetupPages({{u"Test", cmd.parentWindow, nullptr}});
    Text name;
    checkStatus(properties->GetTaskName(name));
    return cmd.text == u"OK" ? properties->SetValue(u"ErrorLogPath", Value(u"\\Logs\\" + name)) : S_OK;
}

class TestAddIn : public IArkAddIn5, public IArkTaskVariables, public std::enable_shared_from_this<TestAddIn> {
public:
    Status GetAddInInfo(ArkAddInInfo*, IArkCmdMgr*) override { return S_OK; }
    Status OnCmd(ArkCmd* cmd, ArkSelection* selection) override
    {
        if (cmd->command == TaskCmdLaunch)
            return launchPlan(*cmd, shared_from_this());
        if (cmd->command == TaskCmdSetup || cmd->command == TaskCmdSetupButton)
            return setupPlan(*cmd);
        return runPlan(*query<IArkTaskInstance>(cmd->taskObject), *selection);
    }
    Status GetVariables(std::vector<ArkTaskVariable>& variables) override
    {
        variables = {
            {u"FileFormat", ValueType::String},
            {u"OutputPath", ValueType::String},
            {u"RefToSource", ValueType::Boolean},
            {u"StlQuality", ValueType::Int32},
        };
        return S_OK;
    }
    /// Texts have no letter Q; their length follows.
    Status SettleVariables(const ObjectRef&, const ObjectRef& task, Text& sentence) override
    {
        const auto properties = query<IArkTaskProperties>(task);
        Value path;
        properties->GetValue(u"OutputPath", path);
        if (path.toText().find(u'Q') != Text::npos) {
            sentence = u"No path has a Q.";
            return E_INVALIDARG;
        }
        return properties->SetValue(u"PathLength", Value(static_cast<std::int32_t>(path.toText().size())));
    }
};

template <class Made> class Factory : public IClassFactory {
public:
    Status CreateInstance(ObjectRef& object) override
    {
        object = std::make_shared<Made>();
        return S_OK;
    }
};

/// Says nothing of its variables.
class SilentAddIn : public IArkAddIn5 {
public:
    Status GetAddInInfo(ArkAddInInfo*, IArkCmdMgr*) override { return S_OK; }
    Status OnCmd(ArkCmd*, ArkSelection*) override { return S_OK; }
};

class Stranger : public Object { };

} // namespace

extern "C" {
Status DllGetClassObject(const char16_t* classId, ObjectRef* factory)
{
    if (TextView(classId) == u"{ADD-IN}")
        *factory = std::make_shared<Factory<TestAddIn>>();
    else if (TextView(classId) == u"{SILENT}")
        *factory = std::make_shared<Factory<SilentAddIn>>();
    else if (TextView(classId) == u"{STRANGER}")
        *factory = std::make_shared<Factory<Stranger>>();
    return *factory ? S_OK : CLASS_E_CLASSNOTAVAILABLE;
}
Status DllCanUnloadNow() { return S_OK; }
Status DllRegisterServer() { return S_OK; }
Status DllUnregisterServer() { return E_ACCESSDENIED; }
}
