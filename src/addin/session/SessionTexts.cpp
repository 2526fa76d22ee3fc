#include "addin/session/SessionTexts.h"

namespace zn {

namespace {

struct ReasonRow {
    std::int32_t code;
    NumberedText text;
};

constexpr ReasonRow reasons[] = {
    {1, {96, u"Invalid argument provided in macro."}},
    {2, {97, u"Macros are disabled."}},
    {5, {98, u"Out of memory."}},
    {6, {99, u"Invalid procedure name."}},
    {7, {100, u"Invalid property type."}},
    {8, {101, u"Sub or Function expected."}},
    {9, {102, u"Invalid parameter count."}},
    {10, {103, u"Invalid variable type."}},
    {12, {104, u"Unhandled exception."}},
    {13, {105, u"Value overflow."}},
    {14, {106, u"Type mismatch."}},
    {15, {107, u"Required parameter missing."}},
    {20, {108, u"Call failed."}},
    {22, {109, u"Invalid index provided."}},
    {23, {110, u"Permission denied."}},
    {25, {111, u"Too many open files."}},
    {27, {112, u"File save failed."}},
    {28, {113, u"File open failed."}},
};

} // namespace

const NumberedText* macroReason(std::int32_t code)
{
    for (const ReasonRow& row : reasons)
        if (row.code == code)
            return &row.text;
    return nullptr;
}

} // namespace zn
