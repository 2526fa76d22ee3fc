#pragma once

#include "contracts/documents/DocumentError.h"
#include "tests/fuzz/InputFile.h"
#include "tests/fuzz/Promise.h"

namespace zn::fuzz {

/// Whether a check lets a foreign file pass; its refusal is a sentence about the file.
inline bool passes(std::string_view content, void (*check)(const std::filesystem::path&))
{
    const InputFile file(content);
    try {
        check(file.path());
        return true;
    } catch (const DocumentError& error) {
        promise(error.kind() == ErrorKind::Damaged, "it is the file's fault");
        promise(std::string_view(error.what()).ends_with('.'), "a refusal is a sentence");
        return false;
    }
}

} // namespace zn::fuzz
