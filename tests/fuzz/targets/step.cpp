// What is looked at before the kernel reads a STEP file: a file without its beginning or its end never passes.
#include "tests/fuzz/ForeignFile.h"
#include "zentrel/formats/Content.h"

using namespace zn::zentrel;
using zn::fuzz::promise;

namespace {

bool passes(std::string_view content) { return zn::fuzz::passes(content, checkStepContent); }

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    if (!passes(content))
        return 0;
    const auto end = content.find("END-ISO-10303-21");
    promise(content.find("ISO-10303-21") != content.npos && end != content.npos, "a STEP file has both its marks");
    promise(!passes(content.substr(0, end)), "a file that was cut off is refused");
    return 0;
}
