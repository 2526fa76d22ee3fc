#include "commandline/Failure.h"

#include "commandline/Json.h"

#include <iostream>

namespace zn::commandline {

void tellFailure(const std::string& program, const std::string& sentence, int exitCode, bool json)
{
    if (json)
        std::cerr << Json{{"error", sentence}, {"exitCode", exitCode}}.line() << "\n";
    else
        std::cerr << program << ": " << sentence << "\n";
}

} // namespace zn::commandline
