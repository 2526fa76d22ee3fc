#include "arkin/commands/frame/ProgressLine.h"

#include <algorithm>
#include <iostream>
#include <sys/ioctl.h>
#include <unistd.h>

namespace zn::arkin {

namespace {

constexpr std::size_t barWidth = 24;

std::size_t terminalWidth()
{
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

std::string bar(std::int64_t position, std::int64_t total)
{
    const auto part = total > 0 ? std::clamp<std::int64_t>(position, 0, total) : 0;
    const auto filled = total > 0 ? barWidth * static_cast<std::size_t>(part) / static_cast<std::size_t>(total) : 0;
    return "[" + std::string(filled, '#') + std::string(barWidth - filled, '.') + "]";
}

/// The end of a text matters most: it is a path.
std::string cutLeft(const std::string& text, std::size_t room)
{
    if (text.size() <= room)
        return text;
    if (room < 4)
        return {};
    auto start = text.size() - (room - 3);
    while (start < text.size() && (static_cast<unsigned char>(text[start]) & 0xC0) == 0x80)
        ++start;
    return "..." + text.substr(start);
}

} // namespace

ProgressLine::ProgressLine(bool on)
    : m_on(on)
    , m_terminal(isatty(STDERR_FILENO) != 0)
{
}

ProgressLine::~ProgressLine() { clear(); }

void ProgressLine::show(std::int64_t position, std::int64_t total, const std::string& text)
{
    if (!m_on)
        return;
    const auto count = std::to_string(position) + "/" + std::to_string(total);
    if (!m_terminal) {
        if (!text.empty() && text != m_last)
            std::cerr << "[" << count << "] " << text << std::endl;
        m_last = text;
        return;
    }
    const auto head = bar(position, total) + " " + count + " ";
    const auto columns = terminalWidth();
    m_last = head + cutLeft(text, columns > head.size() + 1 ? columns - head.size() - 1 : 0);
    std::cerr << "\r\x1b[K" << m_last << std::flush;
}

void ProgressLine::clear()
{
    if (m_on && m_terminal && !m_last.empty())
        std::cerr << "\r\x1b[K" << std::flush;
    m_last.clear();
}

} // namespace zn::arkin
