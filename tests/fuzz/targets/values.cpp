// The form in which values travel between processes: what was read is written, and read again, the same.
#include "automation/Wire.h"
#include "tests/fuzz/Promise.h"

#include <nlohmann/json.hpp>

using namespace zn;
using namespace zn::automation;
using fuzz::promise;

namespace {

/// Objects travel as their numbers, which are the addresses of nothing here.
class NumberedObjects : public ObjectCodec {
public:
    Json encodeObject(const ObjectRef& object) override { return {{"obj", dynamic_cast<Numbered&>(*object).number}}; }
    ObjectRef decodeObject(const Json& form) override
    {
        auto object = std::make_shared<Numbered>();
        object->number = integer<std::uint64_t>(member(form, "obj"));
        return object;
    }

private:
    struct Numbered : Object {
        std::uint64_t number = 0;
    };
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Json form = Json::parse(data, data + size, nullptr, false);
    if (form.is_discarded())
        return 0;
    NumberedObjects objects;
    try {
        const Json written = encodeValue(decodeValue(form, objects), objects);
        const Json sent = Json::parse(written.dump());
        promise(sent == written, "a written form is read as it was");
        promise(encodeValue(decodeValue(sent, objects), objects) == written, "a value comes back as it was");
    } catch (const ProtocolError& error) {
        promise(*error.what() != '\0', "a refusal says why");
    }
    return 0;
}
