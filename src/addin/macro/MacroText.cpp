#include "addin/macro/MacroText.h"

#include "base/Dates.h"
#include "base/Format.h"

namespace zn {

namespace {

constexpr TextView joint = u" & ";

/// Puts a line continuation behind the first joint that lies at least 100 characters past the previous break.
Text breakLines(TextView text)
{
    constexpr std::size_t leastLength = 100;
    Text out;
    std::size_t start = 0;
    for (std::size_t hit; (hit = text.find(joint, start + leastLength)) != TextView::npos;) {
        const std::size_t end = hit + joint.size();
        out.append(text.substr(start, end - start)).append(u"_\r\n");
        start = end;
    }
    return out.append(text.substr(start));
}

} // namespace

Text ValueToMacroText(const Value& value)
{
    switch (value.type()) {
    case ValueType::Int16:
    case ValueType::Int32:
    case ValueType::UInt8:
        return numberText(value.toInt32());
    case ValueType::Float32:
    case ValueType::Float64:
        return formatText("%f", value.toDouble());
    case ValueType::Date:
        return dateText(value.toDouble());
    case ValueType::String:
        return *value.get<Text>();
    case ValueType::Boolean:
        return value.toBool() ? u"True" : u"False";
    default:
        return {};
    }
}

Text EncodeForMacroString(TextView text)
{
    constexpr char16_t firstEncoded = 256;
    Text out;
    out.reserve(text.size());
    bool inCall = false;
    bool encodedAny = false;
    for (const char16_t unit : text) {
        if (unit >= firstEncoded) {
            if (!inCall)
                out.push_back(u'"');
            out.append(joint).append(u"ChrW(").append(numberText(unit)).append(u")");
            inCall = encodedAny = true;
        } else {
            if (inCall)
                out.append(joint).append(u"\"");
            out.push_back(unit);
            inCall = false;
        }
    }
    if (inCall)
        out.append(joint).append(u"\"");
    return encodedAny ? breakLines(out) : out;
}

} // namespace zn
