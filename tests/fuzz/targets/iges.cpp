// What is looked at before the kernel reads an IGES file: a file without its first or its last section never passes.
#include "contracts/documents/DocumentError.h"
#include "tests/fuzz/InputFile.h"
#include "tests/fuzz/Promise.h"
#include "zentrel/formats/Content.h"

using namespace zn::zentrel;
using zn::DocumentError;
using zn::ErrorKind;
using zn::fuzz::promise;

namespace {

constexpr std::size_t markColumn = 72;

bool passes(std::string_view content)
{
    const zn::fuzz::InputFile file(content);
    try {
        checkIgesContent(file.path());
        return true;
    } catch (const DocumentError& error) {
        promise(error.kind() == ErrorKind::Damaged, "it is the file's fault");
        promise(std::string_view(error.what()).ends_with('.'), "a refusal is a sentence");
        return false;
    }
}

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
