#include "base/JsonShape.h"

namespace zn {

JsonShape jsonShapeOf(std::string_view text, int deepest, int mostValues)
{
    int depth = 0, values = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\')
                ++i;
            inString = c != '"';
            continue;
        }
        inString = c == '"';
        if (c == '[' || c == '{')
            ++depth;
        else if (c == ']' || c == '}')
            --depth;
        // Each value stands behind one of these.
        if (c == '[' || c == '{' || c == ',' || c == ':')
            ++values;
        if (depth > deepest)
            return JsonShape::TooDeep;
        if (values > mostValues)
            return JsonShape::TooMany;
    }
    return JsonShape::Fits;
}

} // namespace zn
