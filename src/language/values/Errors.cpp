#include "language/values/Errors.h"

#include "language/FileAccess.h"

#include <algorithm>
#include <array>

namespace zn::language {

namespace {

struct NumberedText {
    std::int32_t number;
    TextView text;
};

constexpr auto texts = std::to_array<NumberedText>({
    {3, u"Return without GoSub"},
    {5, u"Invalid procedure call or argument"},
    {6, u"Overflow"},
    {7, u"Out of memory"},
    {9, u"Subscript out of range"},
    {10, u"This array is fixed or temporarily locked"},
    {11, u"Division by zero"},
    {13, u"Type mismatch"},
    {14, u"Out of string space"},
    {16, u"Expression too complex"},
    {17, u"Can't perform requested operation"},
    {18, u"User interrupt occurred"},
    {20, u"Resume without error"},
    {28, u"Out of stack space"},
    {35, u"Sub or Function not defined"},
    {48, u"Error in loading library"},
    {49, u"Bad library calling convention"},
    {51, u"Internal error"},
    {52, u"Bad file name or number"},
    {53, u"File not found"},
    {54, u"Bad file mode"},
    {55, u"File already open"},
    {57, u"Device I/O error"},
    {58, u"File already exists"},
    {59, u"Bad record length"},
    {61, u"Disk full"},
    {62, u"Input past end of file"},
    {63, u"Bad record number"},
    {67, u"Too many files"},
    {68, u"Device unavailable"},
    {70, u"Permission denied"},
    {71, u"Disk not ready"},
    {74, u"Can't rename with different drive"},
    {75, u"Path/File access error"},
    {76, u"Path not found"},
    {91, u"Object variable or With block variable not set"},
    {92, u"For loop not initialized"},
    {93, u"Invalid pattern string"},
    {94, u"Invalid use of Null"},
    {380, u"Invalid property value"},
    {424, u"Object required"},
    {429, u"The object can't be created"},
    {438, u"Object doesn't support this property or method"},
    {440, u"Automation error"},
    {445, u"Object doesn't support this action"},
    {446, u"Object doesn't support named arguments"},
    {448, u"Named argument not found"},
    {449, u"Argument not optional"},
    {450, u"Wrong number of arguments or invalid property assignment"},
    {453, u"Specified library function not found"},
    {457, u"This key is already associated with an element of this collection"},
});

struct StatusNumber {
    Status status;
    std::int32_t number;
};

constexpr auto statusNumbers = std::to_array<StatusNumber>({
    {DISP_E_MEMBERNOTFOUND, error::memberMissing},
    {DISP_E_TYPEMISMATCH, error::typeMismatch},
    {DISP_E_OVERFLOW, error::overflow},
    {DISP_E_BADINDEX, error::subscript},
    {DISP_E_BADPARAMCOUNT, error::argumentCount},
    {E_OUTOFMEMORY, error::outOfMemory},
    {E_INVALIDARG, error::invalidCall},
    {E_NOTIMPL, error::actionUnsupported},
    {REGDB_E_CLASSNOTREG, error::cannotCreateObject},
    {E_ACCESSDENIED, error::permissionDenied},
    {pathRefused, error::permissionDenied},
});

} // namespace

TextView errorText(std::int32_t number)
{
    const auto hit = std::ranges::find(texts, number, &NumberedText::number);
    return hit != texts.end() ? hit->text : TextView(u"Application-defined or object-defined error");
}

void raise(std::int32_t number) { throw ScriptError{number, Text(errorText(number)), {}}; }

void raise(std::int32_t number, Text description) { throw ScriptError{number, std::move(description), {}}; }

ScriptError errorOfStatus(const StatusError& failure)
{
    const auto hit = std::ranges::find(statusNumbers, failure.status(), &StatusNumber::status);
    const bool known = hit != statusNumbers.end();
    ScriptError out{known ? hit->number : failure.status(), toText(failure.what()), {}};
    if (out.description.empty())
        out.description = known ? errorText(out.number) : errorText(error::automation);
    return out;
}

} // namespace zn::language
