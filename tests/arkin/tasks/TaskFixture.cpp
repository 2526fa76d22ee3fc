#include "tests/arkin/tasks/TaskFixture.h"

#include "arkin/tasks/Launch.h"

#include <soci/soci.h>
#include <thread>

namespace zn::arkin::test {

using zn::RegistryRoot;
using zn::RegistryValue;
using zn::Text;

namespace {

void registerClass(zn::Registry& registry, const Text& programId, const Text& classId, const Text& library)
{
    const Text classes = u"SOFTWARE\\Classes\\";
    registry.write(RegistryRoot::Machine, classes + programId + u"\\CLSID", u"", RegistryValue::text(classId));
    registry.write(
        RegistryRoot::Machine, classes + u"CLSID\\" + classId + u"\\InprocServer32", u"", RegistryValue::text(library));
}

} // namespace

TaskFixture::Side::Side(const TaskFixture& test)
    : database(test.connection)
    , registry(test.folder / "registry.sqlite")
    , files(registry)
    , host{database, 1, std::make_shared<BareVault>(), registry, files, clock, u"anna"}
    , runs((applySchema(database, vaultSchema), database), 1)
{
}

TaskFixture::TaskFixture()
    : here(*this)
    , tasks(here.database, 1)
{
    here.database.session() << "INSERT INTO vaults (id, name, name_key, root) VALUES (1, 'Demo', 'demo', '/Vault')";
    const auto library = here.files.fromMachine(ZN_BIN_DIR "/libTestAddIn.so");
    registerClass(here.registry, u"Test.AddIn", u"{ADD-IN}", library);
    registerClass(here.registry, u"Test.Silent", u"{SILENT}", library);
    registerClass(here.registry, u"Test.Stranger", u"{STRANGER}", library);
    registerClass(here.registry, u"Test.Unknown", u"{UNKNOWN}", library);
    registerClass(here.registry, u"Test.Gone", u"{GONE}", u"Z:\\nowhere\\gone.so");
}

TaskDefinition TaskFixture::define(const Text& name, const Text& plan, Variables more)
{
    TaskDefinition task;
    task.name = name;
    task.addIn = u"Test.AddIn";
    task.variables = std::move(more);
    task.variables[u"Plan"] = zn::Value(plan);
    tasks.create(task);
    return tasks.get(name);
}

RunInfo TaskFixture::launch(const Text& plan, Variables more)
{
    static int count = 0;
    return launchTask(host, define(u"Task " + zn::numberText(++count), plan, std::move(more)), oneFile());
}

void TaskFixture::awaitState(std::int32_t runId, zn::TaskRunState state)
{
    for (int i = 0; i < 2000 && runs.get(runId).state != state; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    ASSERT_EQ(runs.get(runId).state, state);
}

} // namespace zn::arkin::test
