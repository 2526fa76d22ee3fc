#pragma once

#include <arpa/inet.h>
#include <cups/cups.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

namespace zn::test {

/// A printing system that takes connections and says nothing, as long as this lives.
class SilentPrintingSystem {
public:
    SilentPrintingSystem()
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        EXPECT_EQ(::bind(m_listener, reinterpret_cast<sockaddr*>(&address), size), 0);
        EXPECT_EQ(::listen(m_listener, 5), 0);
        ::getsockname(m_listener, reinterpret_cast<sockaddr*>(&address), &size);
        cupsSetServer(("127.0.0.1:" + std::to_string(ntohs(address.sin_port))).c_str());
    }
    SilentPrintingSystem(const SilentPrintingSystem&) = delete;
    SilentPrintingSystem& operator=(const SilentPrintingSystem&) = delete;
    ~SilentPrintingSystem()
    {
        cupsSetServer(nullptr);
        ::close(m_listener);
    }

private:
    int m_listener = ::socket(AF_INET, SOCK_STREAM, 0);
};

} // namespace zn::test
