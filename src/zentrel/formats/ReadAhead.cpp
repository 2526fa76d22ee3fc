#include "zentrel/formats/ReadAhead.h"

#include "zentrel/formats/PartMesh.h"
#include "zentrel/formats/Read.h"
#include "zentrel/kernel/KernelChild.h"
#include "zentrel/kernel/KernelLimits.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <string_view>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>

namespace zn::zentrel {

namespace {

constexpr std::size_t memoryOfReader = std::size_t{1} << 30;

/// In a reader: nothing of the program's but the queue, and nobody to ask or to tell.
void become(pid_t parent, const zn::FileDescriptor& queue)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        _exit(1);
    for (const int signal : {SIGABRT, SIGTERM, SIGINT})
        std::signal(signal, SIG_DFL);
    std::ofstream("/proc/self/oom_score_adj") << 1000;
    KernelLimits limits = kernelLimits();
    limits.userGone = {};
    setKernelLimits(std::move(limits));
    leaveKernelServer();
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nothing, standard);
    const auto kept = static_cast<unsigned>(queue.number());
    if (kept > STDERR_FILENO + 1)
        close_range(STDERR_FILENO + 1, kept - 1, 0);
    close_range(kept + 1, ~0U, 0);
}

/// Of a message: behind it stands the path.
enum class Wanted : char { Read = 'r', CoarseMesh = 'c', FineMesh = 'f' };

Wanted wantedFor(std::optional<MeshQuality> mesh)
{
    if (!mesh)
        return Wanted::Read;
    return *mesh == MeshQuality::Coarse ? Wanted::CoarseMesh : Wanted::FineMesh;
}

void make(Wanted wanted, const std::filesystem::path& file)
{
    const Document document = readForeign(file);
    if (wanted == Wanted::Read)
        return;
    ModelLoader loader;
    const auto* part = std::get_if<PartDocument>(&document);
    const ModelRef model = part ? loader.load(*part, file) : loader.load(std::get<AssemblyDocument>(document), file);
    Remarks remarks;
    meshesOf(*model, wanted == Wanted::CoarseMesh ? MeshQuality::Coarse : MeshQuality::Fine, "", file, remarks);
}

/// Until the other end is gone.
void readAll(const zn::FileDescriptor& queue)
{
    std::array<char, PATH_MAX> message{};
    for (;;) {
        const ssize_t got = recv(queue.number(), message.data(), message.size(), 0);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return;
        const std::string_view text(message.data(), static_cast<std::size_t>(got));
        try {
            make(static_cast<Wanted>(text.front()), text.substr(1));
        } catch (const std::exception&) {
            continue; // whoever opens the file gets the sentence
        }
    }
}

} // namespace

ReadAhead::~ReadAhead()
{
    for (const pid_t reader : m_readers)
        kill(reader, SIGKILL);
    for (const pid_t reader : m_readers)
        while (waitpid(reader, nullptr, 0) < 0 && errno == EINTR) { }
}

void ReadAhead::startReader(const zn::FileDescriptor& readersEnd)
{
    const pid_t parent = getpid();
    const pid_t reader = fork();
    if (reader > 0)
        m_readers.push_back(reader);
    if (reader != 0)
        return;
    become(parent, readersEnd);
    readAll(readersEnd);
    _exit(0);
}

bool ReadAhead::isStarted()
{
    if (m_tried)
        return !m_readers.empty();
    m_tried = true;
    const std::size_t wanted = std::min(m_most, freeMemory() / memoryOfReader);
    int ends[2];
    // Each message is one path, and goes to one reader.
    if (wanted == 0 || socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
        return false;
    m_queue = zn::FileDescriptor(ends[0]);
    const zn::FileDescriptor readersEnd(ends[1]);
    for (std::size_t count = 0; count < wanted; ++count)
        startReader(readersEnd);
    return !m_readers.empty();
}

void ReadAhead::expect(const std::vector<std::filesystem::path>& files, std::optional<MeshQuality> mesh)
{
    for (const std::filesystem::path& file : files) {
        if (!canRead(file) || m_expected.contains(file) || file.native().size() + 1 >= PATH_MAX)
            continue;
        if (!isStarted())
            return;
        const std::string message = static_cast<char>(wantedFor(mesh)) + file.native();
        if (send(m_queue.number(), message.data(), message.size(), MSG_DONTWAIT | MSG_NOSIGNAL) < 0)
            return; // the queue is full, or all readers have gone
        m_expected.insert(file);
    }
}

} // namespace zn::zentrel
