// What is looked at before the kernel reads an IGES file: a file without its first or its last section never passes.
#include "tests/fuzz/ForeignFile.h"
#include "zentrel/formats/Content.h"

using namespace zn::zentrel;
using zn::fuzz::promise;

namespace {

constexpr std::size_t markColumn = 72;

bool passes(std::string_view content) { return zn::fuzz::passes(content, checkIgesContent); }

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    if (!passes(content))
        return 0;
    promise(content.size() > markColumn && std::string_view("SCB").find(content[markColumn]) != std::string_view::npos,
        "an IGES file begins with its first section");
    const auto mark = content.rfind('T');
    promise(mark != content.npos, "an IGES file ends with its last section");
    promise(!passes(content.substr(0, mark)) || content.substr(0, mark).find('T') != content.npos,
        "a file that was cut off is refused");
    return 0;
}
