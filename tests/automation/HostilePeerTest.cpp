#include "automation/ObjectServer.h"
#include "tests/automation/ServerProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <random>
#include <sys/socket.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace zn::test {

using namespace std::chrono_literals;
using namespace automation;

namespace {

std::string line(const std::string& message) { return message + "\n"; }

const std::string hello = line(R"({"jsonrpc":"2.0","id":1,"method":"hello","params":{"version":1}})");

/// What a server on this thread's side says to a peer that sends `bytes` and then reads until the end.
struct Exchange {
    std::string answer;
    std::vector<std::string> log;
    ServeEnd end = ServeEnd::NoClient;
};

Exchange exchange(const std::string& bytes)
{
    const TemporaryFolder folder;
    Exchange seen;
    ObjectServer server(folder.path() / "run", "Test", std::make_shared<Counterpart>(),
        [&](const std::string& logged) { seen.log.push_back(logged); });
    std::thread peer([&] {
        FileDescriptor socket = connectTo(folder.path() / "run", socketFileName("Test"));
        std::size_t sent = 0;
        while (sent < bytes.size()) {
            const ssize_t count = send(socket.number(), bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
            if (count <= 0)
                break;
            sent += static_cast<std::size_t>(count);
        }
        shutdown(socket.number(), SHUT_WR);
        char chunk[4096];
        for (ssize_t count = 0; (count = read(socket.number(), chunk, sizeof chunk)) > 0;)
            seen.answer.append(chunk, static_cast<std::size_t>(count));
    });
    // Whoever introduces himself comes at once, but a busy machine may be slow about it.
    seen.end = server.serve(bytes.starts_with(hello) ? 20000ms : 400ms);
    peer.join();
    return seen;
}

TEST(HostilePeer, WhatIsNoMessageClosesTheConnectionWithALine)
{
    std::string nested
        = R"({"jsonrpc":"2.0","id":2,"method":"invoke","params":{"object":1,"name":"Echo","use":"call","arguments":[)";
    for (int i = 0; i < 40; ++i)
        nested += R"({"array":{"type":12,"bounds":[[0,1]],"items":[)";
    nested += "null";
    for (int i = 0; i < 40; ++i)
        nested += "]}}";
    nested += "]}}\n";
    const auto invoke = [](const std::string& parameters) {
        return line(R"({"jsonrpc":"2.0","id":2,"method":"invoke","params":)" + parameters + "}");
    };
    std::string many;
    for (int i = 0; i < 1'000'000; ++i)
        many += ",0";
    const struct {
        std::string sent;
        std::string logged;
    } cases[] = {
        {"GET / HTTP/1.1\n", "parse error"},
        {"[1,2]\n", "a message that is no JSON object"},
        {std::string("\xFF\xFE\0\0\n", 5), "parse error"},
        {line(R"({"method":"invoke","params":{}})"), "a call before it introduced itself"},
        {line(R"({"id":1,"method":"hello","params":{"version":"1"}})"), "out of its range"},
        {hello + line(R"({"id":2,"result":3})"), "the field 'method' is missing"},
        {hello + line(R"({"id":2,"method":7})"), "a method that is no text"},
        {hello + line(R"({"id":2,"method":"shutdown"})"), "the unknown method 'shutdown'"},
        {hello + line(R"({"id":2,"method":"invoke","params":[]})"), "is missing"},
        {hello + invoke(R"({"object":9,"name":"Echo","use":"call","arguments":[]})"), "does not hold"},
        {hello + invoke(R"({"object":1,"name":"Echo","use":"call","arguments":[{"obj":9}]})"), "does not hold"},
        {hello + invoke(R"({"object":1,"name":"Echo","use":"call","arguments":[{"i2":70000}]})"), "out of its range"},
        {hello
                + invoke(R"({"object":1,"name":"Echo","use":"call","arguments":[{"array":{"type":12,)"
                         R"("bounds":[[0,4294967295],[0,4294967295],[0,4294967295]],"items":[]}}]})"),
            "bounds are out of range"},
        {hello + nested, "nested too deep"},
        {hello + std::string(std::size_t{15} << 20, '[') + "\n", "nested too deep"},
        {hello + "[0" + many + "]\n", "too many values"},
        {hello + line(R"({"method":"release","params":{"objects":[[1,2]]}})"), "release of an object"},
        {hello + std::string(std::size_t{17} << 20, ' '), "too big"},
    };
    for (const auto& one : cases) {
        const Exchange seen = exchange(one.sent);
        const std::string name = one.sent.substr(0, 200);
        ASSERT_FALSE(seen.log.empty()) << name;
        EXPECT_THAT(seen.log[0], ::testing::HasSubstr(one.logged)) << name;
        EXPECT_EQ(seen.end, one.sent.starts_with(hello) ? ServeEnd::ClientGone : ServeEnd::NoClient) << name;
    }
}

TEST(HostilePeer, NoChangeOfAFewBytesHarmsTheServer)
{
    const std::string calls
        = line(
              R"({"jsonrpc":"2.0","id":2,"method":"invoke","params":{"object":1,"name":"Swap","use":"call",)"
              R"("arguments":[{"array":{"type":12,"bounds":[[0,2]],"items":[{"r8":0.1},{"i8":"5"}]}},{"obj":1}],"names":["A"]}})")
        + line(R"({"jsonrpc":"2.0","id":3,"method":"advise","params":{"object":1,"events":"Events","sink":1}})")
        + line(
            R"({"jsonrpc":"2.0","id":4,"method":"invoke","params":{"object":1,"name":"Fire","use":"call","arguments":[1]}})")
        + line(R"({"jsonrpc":"2.0","id":1,"result":0})")
        + line(R"({"jsonrpc":"2.0","method":"release","params":{"objects":[[1,1]]}})");
    const std::string bytes = "0129\"{}[],:-e\\\n \xC3";
    std::mt19937 random(20181);
    for (int round = 0; round < 400; ++round) {
        std::string changed = calls;
        for (int i = 0; i < 1 + round % 4; ++i)
            changed[random() % changed.size()] = bytes[random() % bytes.size()];
        const Exchange seen = exchange(hello + changed);
        ASSERT_EQ(seen.end, ServeEnd::ClientGone) << changed;
        ASSERT_LE(seen.log.size(), 1U) << changed;
    }
}

TEST(HostilePeer, AnotherVersionIsToldSoAndAFailingMemberIsAnAnswer)
{
    EXPECT_EQ(exchange(line(R"({"jsonrpc":"2.0","id":1,"method":"hello","params":{"version":2}})")).answer,
        line(
            R"({"error":{"code":-2147467262,"message":"The two programs do not fit together: protocol 2 and protocol 1."},)"
            R"("id":1,"jsonrpc":"2.0"})"));
    EXPECT_EQ(exchange(hello
                  + line(R"({"jsonrpc":"2.0","id":2,"method":"invoke","params":{"object":1,"name":"Echo",)"
                         R"("use":"call","arguments":[{"r8":0.1}]}})"))
                  .answer,
        line(R"({"id":1,"jsonrpc":"2.0","result":{"obj":1,"offers":["Echoing","Größe"],"type":"Counterpart"}})")
            + line(R"({"id":2,"jsonrpc":"2.0","result":{"value":{"r8":0.1}}})"));
}

TEST(HostilePeer, ATableInAnOpenFolderIsRefused)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder / "run");
    chmod((folder / "run").c_str(), 0755);
    SocketRunningObjects table(folder / "run");
    EXPECT_FALSE(table.available());
    EXPECT_EQ(table.lookup(u"Test"), nullptr);
    EXPECT_THROW(table.publish(u"Test", std::make_shared<Counterpart>()), StatusError);
}

TEST(HostilePeer, ALongFolderAndAStaleSocketAreNoObstacle)
{
    const TemporaryFolder folder;
    const auto deep = folder.path() / std::string(120, 'd') / std::string(120, 'e');
    std::filesystem::create_directories(deep.parent_path());
    const auto file = deep / socketFileName("Test");
    {
        const ServerProcess killed(deep);
        for (int i = 0; i < 500 && !std::filesystem::exists(file); ++i)
            std::this_thread::sleep_for(10ms);
    }
    ASSERT_TRUE(std::filesystem::exists(file)) << "left by the killed process";
    SocketRunningObjects table(deep);
    EXPECT_EQ(table.lookup(u"Test"), nullptr);
    const auto server = table.publish(u"Test", std::make_shared<Counterpart>());
    EXPECT_EQ(server->serve(1ms), ServeEnd::NoClient);
}

} // namespace

} // namespace zn::test
