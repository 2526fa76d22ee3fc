// The list of files in a task's variable: what was read is written, and read again, the same.
#include "addin/files/FileLogic.h"
#include "tests/fuzz/Promise.h"
#include "tests/support/FakeHost.h"
#include "tests/support/TestPlatform.h"

using namespace zn;
using fuzz::promise;

namespace {

/// The records of the stored list; none if it can't be read.
std::vector<OutputRecord> recordsOf(FileLogic& logic, const ObjectRef& task)
{
    try {
        const auto records = logic.ReadList(task, false);
        promise(records.has_value(), "a list that is there is read");
        return *records;
    } catch (const StatusError&) {
        return {};
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static test::TestPlatform machine;
    static const Platform ports = machine.ports();
    test::FakeHost host;
    const ObjectRef task = host.task();
    FileLogic logic(ports);
    host.taskVariables[u"__selection_list"] = toText({reinterpret_cast<const char*>(data), size});
    const auto read = recordsOf(logic, task);

    SelectionRecords selection;
    for (const OutputRecord& record : read)
        selection.push_back(std::make_unique<OutputRecord>(record));
    logic.WriteList(task, TaskKind::Conversion, &selection);
    const auto again = recordsOf(logic, task);
    promise(again.size() == read.size(), "all records come back");
    for (std::size_t i = 0; i < read.size(); ++i) {
        promise(again[i].path == read[i].path, "a path comes back as it was");
        promise(
            again[i].docId == read[i].docId && again[i].projId == read[i].projId && again[i].version == read[i].version,
            "numbers come back as they were");
    }
    return 0;
}
