#include "zentrel/formats/WritePicture.h"

#include "contracts/documents/DocumentError.h"
#include "zentrel/model/WholeFile.h"

#include <cmath>
#include <turbojpeg.h>

namespace zn::zentrel {

namespace {

constexpr int quality = 92;
/// What a side of the format may have.
constexpr int mostSide = 65500;

struct Compressor {
    tjhandle handle = tjInitCompress();
    unsigned char* bytes = nullptr;
    unsigned long size = 0;

    Compressor() = default;
    Compressor(const Compressor&) = delete;
    Compressor& operator=(const Compressor&) = delete;
    ~Compressor()
    {
        tjFree(bytes);
        if (handle)
            tjDestroy(handle);
    }
};

/// Puts the resolution into the file's head, which the library leaves at "1:1": the bytes of the JFIF segment.
void setDensity(std::string& bytes, double dotsPerInch)
{
    constexpr std::size_t unit = 13; // behind the marks of the image and the segment, its length, name and version
    const auto density = static_cast<unsigned>(std::lround(dotsPerInch));
    if (bytes.size() < unit + 5 || bytes.compare(6, 5, std::string("JFIF\0", 5)) != 0)
        return;
    bytes[unit] = 1; // dots per inch
    for (const std::size_t at : {unit + 1, unit + 3}) {
        bytes[at] = static_cast<char>(density >> 8U);
        bytes[at + 1] = static_cast<char>(density & 0xFFU);
    }
}

} // namespace

void writeJpeg(const Raster& picture, const std::filesystem::path& file)
{
    if (picture.width > mostSide || picture.height > mostSide)
        throw DocumentError(
            ErrorKind::Unsupported, quoted(file) + " can't be written: a JPEG has no room for a sheet of that length.");
    Compressor jpeg;
    // Fine lines keep their colour only without subsampling.
    if (!jpeg.handle
        || tjCompress2(jpeg.handle, picture.pixels.data(), picture.width, 0, picture.height, TJPF_RGB, &jpeg.bytes,
               &jpeg.size, TJSAMP_444, quality, TJFLAG_ACCURATEDCT)
            != 0)
        throw DocumentError(ErrorKind::Kernel,
            quoted(file) + " can't be written: " + (jpeg.handle ? tjGetErrorStr2(jpeg.handle) : "no memory") + ".");
    std::string bytes(reinterpret_cast<const char*>(jpeg.bytes), jpeg.size);
    setDensity(bytes, picture.dotsPerInch);
    writeWhole(file, bytes);
}

} // namespace zn::zentrel
