# Writes INPUT as a C++ source OUTPUT that defines SYMBOL; run by zn_embed.
file(READ ${INPUT} bytes HEX)
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${bytes}")
file(WRITE ${OUTPUT}
"#include <string_view>
namespace zn {
extern const std::string_view ${SYMBOL};
static constexpr char bytes[] = {${bytes}};
const std::string_view ${SYMBOL}(bytes, sizeof bytes);
}
")
