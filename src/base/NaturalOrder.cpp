#include "base/NaturalOrder.h"

#include "base/Status.h"

#include <memory>
#include <unicode/ucol.h>

namespace zn {

namespace {

using Collator = std::unique_ptr<UCollator, decltype(&ucol_close)>;

Collator makeCollator()
{
    UErrorCode error = U_ZERO_ERROR;
    Collator collator(ucol_open("", &error), &ucol_close);
    ucol_setAttribute(collator.get(), UCOL_NUMERIC_COLLATION, UCOL_ON, &error);
    if (U_FAILURE(error))
        throw StatusError(E_UNEXPECTED, "The rules by which names are ordered cannot be loaded.");
    return collator;
}

} // namespace

bool naturallyLess(TextView a, TextView b)
{
    static const Collator collator = makeCollator();
    return ucol_strcoll(collator.get(), a.data(), static_cast<std::int32_t>(a.size()), b.data(),
               static_cast<std::int32_t>(b.size()))
        == UCOL_LESS;
}

} // namespace zn
