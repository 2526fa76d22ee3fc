#include "zentrel/kernel/ChildProcess.h"

namespace zn::zentrel {

std::string runInChild(const KernelTask& task, const std::function<std::string()>& work)
{
    const auto folder = std::filesystem::absolute(task.file).parent_path();
    ChildProcess child({folder}, [&](const zn::FileDescriptor& socket) {
        limitComputing(task.limit);
        sendAnswer(socket, task, work);
    });
    return child.receiveAnswer(task);
}

} // namespace zn::zentrel
