#pragma once

#include "language/FileAccess.h"
#include "language/run/ErrorObject.h"
#include "language/run/FileTable.h"
#include "language/run/PointerTable.h"

namespace zn::language {

/// What the language's functions and statements share during a machine's life.
class RunContext {
public:
    RunContext(Host& theHost, FileAccess& theFiles, bool comparesText, std::int32_t base)
        : host(theHost)
        , files(theFiles)
        , opened(theFiles)
        , ignoreCase(comparesText)
        , arrayBase(base)
    {
    }

    /// The path that a file statement is given: a text, or the pointer to one.
    Text pathOf(const Value& value) const;
    /// Asks the host; raises `Interruption`.
    void checkpoint() const;
    /// One of the language's own classes, or one of the host's. Raises 429.
    Value createObject(const Text& programId);

    Host& host;
    FileAccess& files;
    FileTable opened;
    PointerTable pointers;
    std::shared_ptr<ErrorObject> err = std::make_shared<ErrorObject>();
    bool ignoreCase;        ///< `Option Compare Text`
    std::int32_t arrayBase; ///< `Option Base`

    std::uint32_t randomState = 0x50000; ///< of `Rnd`: the same row of numbers in every run without `Randomize`
    std::vector<Text> folderMatches;     ///< what the next calls of `Dir` answer, last first
};

/// The host wants the macro to end. No handler of the macro sees it.
struct Interruption { };
/// `End`.
struct EndOfMacro { };

} // namespace zn::language
