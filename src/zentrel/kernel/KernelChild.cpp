#include "platform/KernelConfinement.h"
#include "zentrel/kernel/ChildProcess.h"

namespace zn::zentrel {

std::string runInChild(const KernelTask& task, const std::function<std::string()>& work)
{
    ChildProcess child([&](const zn::FileDescriptor& socket) {
        limitComputing(task.limit);
        // It writes beside its file, if anywhere, also when a foreign file has taken it over. Where the system can't keep
        // it there it may what the program may.
        zn::confineWritesOfThisThread({std::filesystem::absolute(task.file).parent_path()});
        sendAnswer(socket, task, work);
    });
    return child.receiveAnswer(task);
}

} // namespace zn::zentrel
