#pragma once

#include "contracts/documents/DocumentError.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

/// The geometry kernel crashes, never ends or eats all memory on geometry that somebody sent, sound or not. So a
/// program never calls it itself: the kernel works in child processes with limits, and whatever happens there costs one
/// file and not the program. A child is gone as soon as its parent is.
namespace zn::zentrel {

/// How long work on that many pieces (faces, or 20 kB of a file) may compute: far above what any honest file takes, so
/// that only a loop without end meets it.
std::chrono::seconds computingLimit(std::size_t pieces);

/// What a call does, for its sentence and its limit.
struct KernelTask {
    std::string doing; ///< such as "reading"
    std::filesystem::path file;
    std::chrono::seconds limit; ///< of computing
};

/// The kernel crashed: another way to the same result may work.
class KernelCrash : public DocumentError {
public:
    explicit KernelCrash(const std::string& sentence)
        : DocumentError(ErrorKind::Kernel, sentence)
    {
    }
};

/// Runs `work` in a child process (a copy of this one) and returns the bytes that it returns. A `DocumentError` that it
/// raises is raised here again. The kernel's exceptions, a crash, more memory or computing than the limits and a user
/// who has gone become `DocumentError` of kind `Kernel` (a crash a `KernelCrash`): "The geometry kernel … while <doing>
/// the file '…'." What `work` changes in memory is lost. Within such a child, `work` gets a child of its own. A child
/// costs 2 to 15 ms.
std::string runInChild(const KernelTask& task, const std::function<std::string()>& work);

/// Work that knows nothing but its request: a plain function, as its address must mean the same in another copy of the
/// program.
using KernelCall = std::string (*)(std::string_view request);

/// The same for frequent short work, in a child that stays for the next calls; a call costs a tenth of a millisecond.
/// It ends, and the next call gets a new one, after any failure of the kernel and when calls have left much memory
/// taken. Within a child the call is made right there.
/// Its child may write no file. It ends with the thread that started it, and serves others only when that was the first
/// thread of the program.
std::string askKernel(const KernelTask& task, KernelCall call, const std::string& request);

/// As `askKernel`, for work that takes longer than a child costs and may meet any geometry: where the kernel fails in
/// the child that serves many, earlier files may have to do with it, and the call is made once more in a child of its
/// own. Not where it came to no end.
std::string askKernelOrChild(const KernelTask& task, KernelCall call, const std::string& request);

/// The most bytes that a child which starts now could answer, which is also the most that this program should make of
/// its answers.
std::size_t mostAnswered();

/// Starts the child that serves calls, if it isn't there.
void startKernelServer();

/// In a copy of the program: the child serves the program, and this process gets one of its own when it asks.
void leaveKernelServer();

} // namespace zn::zentrel
