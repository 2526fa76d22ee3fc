#include "arkin/tasks/ProcessMark.h"

#include <fstream>
#include <iterator>
#include <sstream>
#include <unistd.h>

namespace zn::arkin {

namespace {

zn::Text hostName()
{
    char name[256] = {};
    if (gethostname(name, sizeof name - 1) != 0)
        return u"localhost";
    return zn::toText(name);
}

/// Clock ticks from the machine's start to the process's; 0 if there is no such process, or only what a parent that
/// hasn't asked for its exit code yet has left of it.
std::int64_t startMark(std::int32_t process)
{
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    const std::string line{std::istreambuf_iterator<char>(file), {}};
    // The program's name stands in brackets and may hold blanks and brackets itself.
    const auto end = line.rfind(')');
    if (end == std::string::npos)
        return 0;
    std::istringstream fields(line.substr(end + 1));
    std::string state, field;
    fields >> state;
    if (state == "Z" || state == "X")
        return 0;
    for (int number = 4; number <= 22; ++number)
        fields >> field;
    return std::strtoll(field.c_str(), nullptr, 10);
}

} // namespace

ProcessMark thisProcess() { return markOf(getpid()); }

ProcessMark markOf(std::int32_t process) { return {hostName(), process, startMark(process)}; }

bool isHere(const ProcessMark& mark) { return mark.host == hostName(); }

bool mayBeAlive(const ProcessMark& mark)
{
    return !isHere(mark) || (mark.process > 0 && startMark(mark.process) == mark.start);
}

} // namespace zn::arkin
