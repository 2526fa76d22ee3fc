#pragma once

#include <csignal>
#include <fcntl.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace zn::test {

/// An X server of the test's own, without a screen, under a number that it finds free itself. While it lives, DISPLAY
/// names it.
class VirtualDisplay {
public:
    /// `whenLeft` is an option for what the server does when its last client goes; without one it starts anew.
    explicit VirtualDisplay(const char* whenLeft = nullptr)
    {
        int ends[2];
        if (::pipe(ends) != 0)
            return;
        m_server = ::fork();
        if (m_server == 0) {
            const int quiet = ::open("/dev/null", O_RDWR);
            ::dup2(quiet, STDERR_FILENO);
            const std::string number = std::to_string(ends[1]);
            ::execlp("Xvfb", "Xvfb", "-displayfd", number.c_str(), "-screen", "0", "640x480x24", "-nolisten", "tcp",
                whenLeft, static_cast<char*>(nullptr));
            ::_exit(127);
        }
        ::close(ends[1]);
        std::string number;
        char digit = 0;
        while (::read(ends[0], &digit, 1) == 1 && digit != '\n')
            number += digit;
        ::close(ends[0]);
        m_name = number.empty() ? "" : ":" + number;
        ::setenv("DISPLAY", m_name.c_str(), 1);
    }
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;
    ~VirtualDisplay()
    {
        end();
        ::unsetenv("DISPLAY");
    }

    bool isThere() const { return !m_name.empty(); }
    const std::string& name() const { return m_name; }
    void end()
    {
        if (m_server <= 0)
            return;
        ::kill(m_server, SIGTERM);
        ::waitpid(m_server, nullptr, 0);
        m_server = 0;
    }

private:
    pid_t m_server = 0;
    std::string m_name;
};

} // namespace zn::test
