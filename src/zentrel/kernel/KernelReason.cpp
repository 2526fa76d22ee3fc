#include "zentrel/kernel/KernelReason.h"

#include <algorithm>
#include <string_view>

namespace zn::zentrel {

std::string kernelReason(const Standard_Failure& failure)
{
    std::string_view text = failure.GetMessageString();
    // Failures on the way out stand before the first one, each on a line with its object's address.
    while (text.ends_with('\n'))
        text.remove_suffix(1);
    text.remove_prefix(text.rfind('\n') + 1);
    constexpr std::string_view behindAddress = " : ";
    if (const auto end = text.find(behindAddress); text.starts_with("0x") && end != text.npos)
        text.remove_prefix(end + behindAddress.size());
    std::string reason(text.empty() ? failure.DynamicType()->Name() : text);
    std::replace_if(
        reason.begin(), reason.end(), [](unsigned char c) { return c < ' '; }, ' ');
    return reason;
}

} // namespace zn::zentrel
