#include "platform/Home.h"
#include "base/Status.h"
#include "platform/linux/SocketPipe.h"
#include "tests/support/Failures.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

namespace zn {
namespace {

/// Sets or clears a variable of the environment for a test.
class Variable {
public:
    Variable(const char* name, const std::string& value)
        : m_name(name)
    {
        if (const char* old = std::getenv(name))
            m_old = old;
        value.empty() ? ::unsetenv(name) : ::setenv(name, value.c_str(), 1);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() { m_old.empty() ? ::unsetenv(m_name) : ::setenv(m_name, m_old.c_str(), 1); }

private:
    const char* m_name;
    std::string m_old;
};

TEST(HomeTest, ChoosesTheHomeByValueEnvironmentOrConvention)
{
    const test::TemporaryFolder folder;
    const Variable user("HOME", folder / "u");
    const Variable data("XDG_DATA_HOME", "");
    std::filesystem::create_directory(folder / "session");
    const Variable session("XDG_RUNTIME_DIR", folder / "session");
    {
        const Variable chosen("ARKIN_HOME", folder / "env");
        EXPECT_EQ(Home::open(folder / "own/").folder(), folder / "own");
        EXPECT_EQ(Home::open().folder(), folder / "env");
        EXPECT_EQ(Home::open().runtimeFolder(), folder / "env/run");
        EXPECT_EQ(Home::open().cacheFolder(), folder / "env/cache");
    }
    const Variable chosen("ARKIN_HOME", "");
    EXPECT_EQ(Home::open().folder(), folder / "u/.local/share/arkin");
    EXPECT_EQ(Home::open().runtimeFolder(), folder / "session/arkin");
    {
        const Variable none("XDG_CACHE_HOME", "");
        EXPECT_EQ(Home::open().cacheFolder(), folder / "u/.cache/arkin");
    }
    const Variable cache("XDG_CACHE_HOME", folder / "caches");
    EXPECT_EQ(Home::open().cacheFolder(), folder / "caches/arkin");
    EXPECT_EQ(Home::open(folder / "u/.local/share/arkin").runtimeFolder(), folder / "session/arkin");
    struct stat status { };
    ::stat((folder / "session/arkin").c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777, 0700U);
}

TEST(HomeTest, TellsWhoseRuntimeFolderItIsAndLetsNobodyRemoveIt)
{
    const test::TemporaryFolder folder;
    std::filesystem::create_directories(folder / "own/run");
    if (::chown((folder / "own/run").c_str(), 54321, 54321) != 0)
        GTEST_SKIP() << "only the superuser can give a folder away";
    EXPECT_EQ(test::sentenceOf([&] { Home::open(folder / "own"); }),
        "'" + (folder / "own/run").string()
            + "' belongs to user number 54321. Work as that user, or set ARKIN_HOME to a folder of your own.");
}

TEST(HomeTest, GivesALongHomeAShortPrivateRuntimeFolder)
{
    const test::TemporaryFolder folder;
    const auto deep = folder / std::string(90, 'x');
    const Home home = Home::open(deep);
    EXPECT_LE(home.runtimeFolder().string().size(), 60U);
    EXPECT_EQ(Home::open(deep).runtimeFolder(), home.runtimeFolder());
    EXPECT_NE(Home::open(folder / std::string(91, 'x')).runtimeFolder(), home.runtimeFolder());
    std::filesystem::remove(home.runtimeFolder());
    std::filesystem::create_symlink(folder.path(), home.runtimeFolder());
    EXPECT_THROW(Home::open(deep), StatusError);
    std::filesystem::remove(home.runtimeFolder());
}

TEST(SocketPipeTest, SendsOneMessageToARunningServiceOnly)
{
    const test::TemporaryFolder folder;
    SocketPipe pipe(folder.path());
    EXPECT_FALSE(pipe.send(u"{mutex}", u"\\\\.\\pipe\\service", "nobody"));

    const int listener = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strcpy(address.sun_path, (folder / "service").c_str());
    ASSERT_EQ(::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ::listen(listener, 1);
    std::string received;
    std::thread service([&] {
        const int client = ::accept(listener, nullptr, nullptr);
        char buffer[64];
        received.assign(buffer, static_cast<std::size_t>(::recv(client, buffer, sizeof buffer, 0)));
        ::send(client, "ok", 2, MSG_NOSIGNAL);
        ::close(client);
    });
    EXPECT_TRUE(pipe.send(u"{mutex}", u"\\\\.\\pipe\\service", std::string("\1\0\0\0a\0\0", 7)));
    service.join();
    ::close(listener);
    EXPECT_EQ(received, std::string("\1\0\0\0a\0\0", 7));
    EXPECT_FALSE(pipe.send(u"{mutex}", u"\\\\.\\pipe\\service", "service has ended"));
}

} // namespace
} // namespace zn
