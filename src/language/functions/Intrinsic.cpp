#include "language/functions/Intrinsic.h"

#include <unordered_map>

namespace zn::language {

namespace {

using Table = std::unordered_map<Text, const Intrinsic*>;

const Table& table()
{
    static const Table all = [] {
        Table names;
        for (const auto list : {textFunctions(), byteFunctions(), searchFunctions(), arrayFunctions(),
                 conversionFunctions(), inspectionFunctions(), mathFunctions(), financialFunctions(), dateFunctions(),
                 formatFunctions(), fileFunctions(), interactionFunctions()})
            for (const Intrinsic& intrinsic : list)
                names.emplace(foldCase(intrinsic.name), &intrinsic);
        return names;
    }();
    return all;
}

} // namespace

const Intrinsic* findIntrinsic(TextView name)
{
    const auto hit = table().find(foldCase(name));
    return hit != table().end() ? hit->second : nullptr;
}

} // namespace zn::language
