#include "zentrel/commands/ProcessLog.h"

#include <chrono>
#include <cstdio>
#include <fmt/chrono.h>
#include <fstream>
#include <unistd.h>

namespace zn::zentrel {

namespace {

constexpr std::uintmax_t maximumSize = 4U << 20;

} // namespace

ProcessLog::ProcessLog(std::filesystem::path file, bool echo)
    : m_file(std::move(file))
    , m_echo(echo)
{
    std::error_code ignored;
    if (std::filesystem::file_size(m_file, ignored) > maximumSize && !ignored)
        std::filesystem::rename(m_file, m_file.string() + ".1", ignored);
}

void ProcessLog::write(const std::string& line)
{
    if (m_echo)
        fmt::print(stderr, "zentrel: {}\n", line);
    note(line);
}

void ProcessLog::note(const std::string& line)
{
    std::ofstream file(m_file, std::ios::app);
    // One write, so that lines of several processes don't mix.
    file << fmt::format("{:%F %T} [{}] {}\n", fmt::localtime(std::time(nullptr)), getpid(), line) << std::flush;
}

} // namespace zn::zentrel
