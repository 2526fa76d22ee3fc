#pragma once

#include <cstdint>
#include <string>

namespace zn::arkin {

/// Progress on the error stream: on a terminal one line that is drawn over, else a line for each step that has a text
/// of its own. Silent if switched off.
class ProgressLine {
public:
    explicit ProgressLine(bool on);
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;
    /// Clears the line.
    ~ProgressLine();

    void show(std::int64_t position, std::int64_t total, const std::string& text);
    /// Clears the line, so that something else can be printed.
    void clear();

private:
    bool m_on;
    bool m_terminal;
    std::string m_last;
};

} // namespace zn::arkin
