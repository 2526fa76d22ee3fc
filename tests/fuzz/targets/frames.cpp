// Messages of another process, through a real socket to a real session: it serves them, or closes the connection.
#include "automation/ServerSession.h"
#include "tests/fuzz/Promise.h"

#include <nlohmann/json.hpp>
#include <sys/socket.h>

using namespace zn;
using namespace zn::automation;
using fuzz::promise;

namespace {

/// An object with a member for each way in which arguments, results, objects and events travel.
class Counterpart : public DispatchObject {
public:
    Text typeName() const override { return u"Counterpart"; }
    Value invoke(MemberCall& call) override
    {
        if (call.name == u"Echo" && !call.arguments.empty())
            return call.arguments.front();
        if (call.name == u"Reverse")
            std::reverse(call.arguments.begin(), call.arguments.end());
        if (call.name == u"Child")
            return DispatchRef(std::make_shared<Counterpart>());
        if (call.name == u"Fire")
            return m_sink ? m_sink->onEvent(7, call.arguments) : E_FAIL;
        if (call.name == u"Fail")
            throw StatusError(DISP_E_BADINDEX, "There is no such configuration: \xD0\x96.");
        return {};
    }
    std::uint32_t advise(const Text&, std::shared_ptr<EventSink> sink) override
    {
        m_sink = std::move(sink);
        return 5;
    }
    void unadvise(std::uint32_t) override { m_sink.reset(); }

private:
    std::shared_ptr<EventSink> m_sink;
};

/// All that the peer can still read, without waiting.
std::string received(int socket)
{
    std::string bytes;
    char chunk[4096];
    for (ssize_t count = 0; (count = recv(socket, chunk, sizeof chunk, MSG_DONTWAIT)) > 0;)
        bytes.append(chunk, static_cast<std::size_t>(count));
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        std::abort();
    const FileDescriptor peer(ends[1]);
    FileDescriptor server(ends[0]);
    if (send(peer.number(), data, size, MSG_DONTWAIT) != static_cast<ssize_t>(size))
        std::abort();
    shutdown(peer.number(), SHUT_WR);

    std::vector<std::string> log;
    {
        ServerSession session(
            std::move(server), std::make_shared<Counterpart>(), [&](const std::string& line) { log.push_back(line); });
        try {
            for (;;)
                session.serveOne(Milliseconds(10'000));
        } catch (const StatusError& error) {
            promise(error.status() == RPC_E_DISCONNECTED, "a connection ends by its end");
        }
    }
    promise(log.size() <= 1, "a broken protocol is told once");
    const std::string answers = received(peer.number());
    promise(answers.empty() || answers.back() == '\n', "answers are whole");
    for (std::size_t start = 0; start < answers.size();) {
        const std::size_t end = answers.find('\n', start);
        promise(Json::accept(answers.substr(start, end - start)), "an answer is a message");
        start = end + 1;
    }
    return 0;
}
