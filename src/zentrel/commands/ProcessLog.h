#pragma once

#include <filesystem>
#include <string>

namespace zn::zentrel {

/// Lines for a person, with time and process id at the end of a file, which is begun anew (its predecessor kept as
/// ".1") when it has grown past 4 MiB. A file that can't be written is no failure.
class ProcessLog {
public:
    /// `echo` also shows the lines on the error output: for programs that a person has started, as in others they
    /// would run into what the starting program shows.
    ProcessLog(std::filesystem::path file, bool echo);

    void write(const std::string& line);
    /// The same, but never shown.
    void note(const std::string& line);

private:
    std::filesystem::path m_file;
    bool m_echo;
};

} // namespace zn::zentrel
