// The parser of STEP text: what it passes on to the kernel's loader are whole texts within the file's own.
#include "tests/fuzz/Promise.h"
#include "zentrel/formats/Part21Text.h"

#include <cstdint>
#include <cstring>

using namespace zn::zentrel;
using zn::fuzz::promise;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto made = parsePart21({reinterpret_cast<const char*>(data), size});
    if (!made)
        return 0;
    std::size_t parameters = 0;
    for (const auto& record : made->records) {
        promise(record.name[0] == '#' || record.name[0] == '$', "a record has a number");
        promise(std::strlen(record.type) > 0, "a record has a type");
        parameters += record.parameters;
    }
    promise(parameters == made->parameters.size(), "each parameter belongs to a record");
    for (const auto& parameter : made->parameters) {
        const std::size_t length = std::strlen(parameter.value);
        promise(length > 0 && !std::strchr(" \t\r\n", parameter.value[length - 1]), "a value ends where it ends");
        if (parameter.type == Interface_ParamText)
            promise(
                length > 1 && parameter.value[0] == '\'' && parameter.value[length - 1] == '\'', "a text is quoted");
    }
    return 0;
}
