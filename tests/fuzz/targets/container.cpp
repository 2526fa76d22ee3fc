// A document's file as a whole: whatever it is, reading gives a document or a sentence, and takes no more memory than
// its entries can really hold.
#include "zentrel/model/Container.h"
#include "contracts/documents/DocumentError.h"
#include "tests/fuzz/InputFile.h"
#include "tests/fuzz/MemoryCap.h"
#include "tests/fuzz/Promise.h"

using namespace zn::zentrel;
using zn::DocumentError;
using zn::ErrorKind;
using zn::fuzz::promise;

namespace {

/// The best that the archive's compression can do, and what growing strings, parsed text and shapes take of it.
constexpr std::size_t memoryForAByte = std::size_t{1032} * 4;
constexpr std::size_t memoryAnyway = std::size_t{8} << 20;

template <class Read> void readWith(const Read& read, const std::filesystem::path& file, std::size_t size)
{
    const std::size_t most = memoryAnyway + memoryForAByte * size;
    const zn::fuzz::MemoryCap cap(most, 8 * most);
    try {
        read(file);
    } catch (const DocumentError& error) {
        promise(
            error.kind() == ErrorKind::Damaged || error.kind() == ErrorKind::FutureVersion, "it is the file's fault");
        promise(std::string_view(error.what()).ends_with('.'), "a refusal is a sentence");
    }
    promise(!cap.met(), "reading takes no more memory than the file can hold");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const zn::fuzz::InputFile file({reinterpret_cast<const char*>(data), size});
    readWith(readContainerInfo, file.path(), size);
    readWith(readDocument, file.path(), size);
    return 0;
}
