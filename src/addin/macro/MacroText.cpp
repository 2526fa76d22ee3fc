#include "addin/macro/MacroText.h"

#include "base/Dates.h"
#include "base/Format.h"

#include <vector>

namespace zn {

namespace {

constexpr TextView joint = u" & ";

/// Puts a line continuation behind the first joint that lies at least 100 characters past the previous break. Only
/// `joints`, the places of the joints that the encoding has made, count: what looks like one inside a literal is part
/// of a name, and a break there would leave the literal open.
Text breakLines(TextView text, const std::vector<std::size_t>& joints)
{
    constexpr std::size_t leastLength = 100;
    Text out;
    std::size_t start = 0;
    for (const std::size_t place : joints) {
        if (place < start + leastLength)
            continue;
        const std::size_t end = place + joint.size();
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
    std::vector<std::size_t> joints;
    const auto append = [&](TextView piece) {
        joints.push_back(out.size());
        out.append(joint).append(piece);
    };
    bool inCall = false;
    for (const char16_t unit : text) {
        if (unit >= firstEncoded) {
            if (!inCall)
                out.push_back(u'"');
            append(u"ChrW(" + numberText(unit) + u")");
            inCall = true;
        } else {
            if (inCall)
                append(u"\"");
            out.push_back(unit);
            inCall = false;
        }
    }
    if (inCall)
        append(u"\"");
    return breakLines(out, joints);
}

} // namespace zn
