#include "platform/PackedText.h"

#include "platform/Base64.h"

#include <memory>
#include <stdexcept>
#include <zstd.h>

namespace zn {

namespace {

constexpr int level = 9;
constexpr unsigned long long longestText = 256ULL << 20U;

void mustSucceed(std::size_t result)
{
    if (ZSTD_isError(result) != 0)
        throw std::runtime_error(std::string("A packed text is damaged: ") + ZSTD_getErrorName(result) + ".");
}

} // namespace

std::string packText(std::string_view text, std::string_view base)
{
    const std::unique_ptr<ZSTD_CCtx, decltype(&ZSTD_freeCCtx)> context(ZSTD_createCCtx(), ZSTD_freeCCtx);
    mustSucceed(ZSTD_CCtx_setParameter(context.get(), ZSTD_c_compressionLevel, level));
    mustSucceed(ZSTD_CCtx_setParameter(context.get(), ZSTD_c_checksumFlag, 1));
    mustSucceed(ZSTD_CCtx_refPrefix(context.get(), base.data(), base.size()));
    std::string bytes(ZSTD_compressBound(text.size()), '\0');
    const std::size_t size = ZSTD_compress2(context.get(), bytes.data(), bytes.size(), text.data(), text.size());
    mustSucceed(size);
    bytes.resize(size);
    return toBase64(bytes);
}

std::string unpackText(std::string_view packed, std::string_view base)
{
    const std::string bytes = fromBase64(packed);
    const unsigned long long size = ZSTD_getFrameContentSize(bytes.data(), bytes.size());
    if (size == ZSTD_CONTENTSIZE_ERROR || size == ZSTD_CONTENTSIZE_UNKNOWN || size > longestText)
        throw std::runtime_error("A packed text is damaged: it doesn't tell its length.");
    const std::unique_ptr<ZSTD_DCtx, decltype(&ZSTD_freeDCtx)> context(ZSTD_createDCtx(), ZSTD_freeDCtx);
    mustSucceed(ZSTD_DCtx_refPrefix(context.get(), base.data(), base.size()));
    std::string text(static_cast<std::size_t>(size), '\0');
    mustSucceed(ZSTD_decompressDCtx(context.get(), text.data(), text.size(), bytes.data(), bytes.size()));
    return text;
}

} // namespace zn
