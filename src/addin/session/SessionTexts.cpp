#include "addin/session/SessionTexts.h"

namespace zn {

namespace {

struct ReasonRow {
    std::int32_t code;
    SessionText text;
};

constexpr ReasonRow reasons[] = {
    {1, {96, "Invalid argument provided in macro."}},
    {2, {97, "Macros are disabled."}},
    {5, {98, "Out of memory."}},
    {6, {99, "Invalid procedure name."}},
    {7, {100, "Invalid property type."}},
    {8, {101, "Sub or Function expected."}},
    {9, {102, "Invalid parameter count."}},
    {10, {103, "Invalid variable type."}},
    {12, {104, "Unhandled exception."}},
    {13, {105, "Value overflow."}},
    {14, {106, "Type mismatch."}},
    {15, {107, "Required parameter missing."}},
    {20, {108, "Call failed."}},
    {22, {109, "Invalid index provided."}},
    {23, {110, "Permission denied."}},
    {25, {111, "Too many open files."}},
    {27, {112, "File save failed."}},
    {28, {113, "File open failed."}},
};

} // namespace

const SessionText* macroReason(std::int32_t code)
{
    for (const ReasonRow& row : reasons)
        if (row.code == code)
            return &row.text;
    return nullptr;
}

} // namespace zn
