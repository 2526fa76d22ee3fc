#include "zentrel/formats/WritePicture.h"

#include "contracts/documents/DocumentError.h"
#include "zentrel/model/WholeFile.h"

#include <cerrno>
#include <tiffio.h>
#include <utility>

namespace zn::zentrel {

namespace {

/// Lighter than this is white: thin lines are grey at their rims and mustn't vanish.
constexpr int whiteLine = 192;
constexpr int middle = 128;

std::vector<int> grayOf(const Raster& page)
{
    std::vector<int> gray(page.pixels.size() / 3);
    for (std::size_t i = 0; i < gray.size(); ++i)
        gray[i] = (299 * page.pixels[3 * i] + 587 * page.pixels[3 * i + 1] + 114 * page.pixels[3 * i + 2] + 500) / 1000;
    return gray;
}

/// Floyd and Steinberg's: what a pixel is too dark or too light is given on to its neighbours.
void diffuse(std::vector<int>& gray, int width, int height)
{
    const auto at = [&](int x, int y) -> int& {
        return gray[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
    };
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const int error = at(x, y) - (at(x, y) < middle ? 0 : 255);
            const auto give = [&](int toX, int toY, int sixteenths) {
                if (toX >= 0 && toX < width && toY < height)
                    at(toX, toY) += error * sixteenths / 16;
            };
            give(x + 1, y, 7);
            give(x - 1, y + 1, 3);
            give(x, y + 1, 5);
            give(x + 1, y + 1, 1);
        }
    }
}

/// Rows of bits, the leftmost pixel in a byte's highest; a set bit is black.
std::vector<std::uint8_t> bilevel(const Raster& page)
{
    std::vector<int> gray = grayOf(page);
    if (!page.isLineArt)
        diffuse(gray, page.width, page.height);
    const int limit = page.isLineArt ? whiteLine : middle;
    const auto width = static_cast<std::size_t>(page.width);
    const std::size_t bytes = (width + 7) / 8;
    std::vector<std::uint8_t> rows(bytes * static_cast<std::size_t>(page.height));
    for (std::size_t i = 0; i < gray.size(); ++i) {
        if (gray[i] < limit)
            rows[i / width * bytes + i % width / 8] |= static_cast<std::uint8_t>(0x80U >> (i % width % 8));
    }
    return rows;
}

std::vector<std::uint8_t> grayBytes(const Raster& page)
{
    const std::vector<int> gray = grayOf(page);
    return {gray.begin(), gray.end()};
}

std::uint16_t schemeOf(TiffCompression compression)
{
    switch (compression) {
    case TiffCompression::PackBits:
        return COMPRESSION_PACKBITS;
    case TiffCompression::Group4:
        return COMPRESSION_CCITTFAX4;
    default:
        return COMPRESSION_NONE;
    }
}

class TiffFile {
public:
    explicit TiffFile(const std::filesystem::path& file, const TiffOptions& options)
        : m_options(options)
        , m_tiff(TIFFOpen(file.c_str(), "w"))
        , m_isWhole(m_tiff != nullptr)
    {
    }
    TiffFile(const TiffFile&) = delete;
    TiffFile& operator=(const TiffFile&) = delete;
    ~TiffFile() { close(); }

    void add(const Raster& page);
    /// Whether all was written; else `errno` may tell why.
    bool close()
    {
        if (m_tiff) {
            m_isWhole = TIFFFlush(m_tiff) == 1 && m_isWhole;
            TIFFClose(std::exchange(m_tiff, nullptr));
        }
        return m_isWhole;
    }

private:
    void setFields(const Raster& page, bool isBilevel, bool isFull);

    TiffOptions m_options;
    TIFF* m_tiff;
    bool m_isWhole;
};

void TiffFile::setFields(const Raster& page, bool isBilevel, bool isFull)
{
    TIFFSetField(m_tiff, TIFFTAG_SUBFILETYPE, FILETYPE_PAGE);
    TIFFSetField(m_tiff, TIFFTAG_IMAGEWIDTH, page.width);
    TIFFSetField(m_tiff, TIFFTAG_IMAGELENGTH, page.height);
    TIFFSetField(m_tiff, TIFFTAG_BITSPERSAMPLE, isBilevel ? 1 : 8);
    TIFFSetField(m_tiff, TIFFTAG_SAMPLESPERPIXEL, isFull ? 3 : 1);
    TIFFSetField(m_tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(m_tiff, TIFFTAG_PHOTOMETRIC,
        isFull          ? PHOTOMETRIC_RGB
            : isBilevel ? PHOTOMETRIC_MINISWHITE
                        : PHOTOMETRIC_MINISBLACK);
    TIFFSetField(m_tiff, TIFFTAG_COMPRESSION, schemeOf(m_options.compression));
    TIFFSetField(m_tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    TIFFSetField(m_tiff, TIFFTAG_XRESOLUTION, page.dotsPerInch);
    TIFFSetField(m_tiff, TIFFTAG_YRESOLUTION, page.dotsPerInch);
    TIFFSetField(m_tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    TIFFSetField(m_tiff, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(m_tiff, 0));
}

void TiffFile::add(const Raster& page)
{
    if (!m_tiff)
        return;
    const bool isBilevel
        = m_options.colors == TiffColors::BlackWhite || m_options.compression == TiffCompression::Group4;
    const bool isFull = !isBilevel && m_options.colors == TiffColors::Full;
    std::vector<std::uint8_t> rows = isFull ? page.pixels : isBilevel ? bilevel(page) : grayBytes(page);
    const std::size_t rowBytes = rows.size() / static_cast<std::size_t>(page.height);
    setFields(page, isBilevel, isFull);
    for (int y = 0; y < page.height && m_isWhole; ++y)
        m_isWhole = TIFFWriteScanline(
                        m_tiff, rows.data() + static_cast<std::size_t>(y) * rowBytes, static_cast<std::uint32_t>(y))
            == 1;
    m_isWhole = m_isWhole && TIFFWriteDirectory(m_tiff) == 1;
}

} // namespace

Remarks writeTiff(
    const std::filesystem::path& file, const TiffOptions& options, const std::function<void(const AddPage& add)>& pages)
{
    TIFFSetErrorHandler(nullptr); // what fails is told by the results
    TIFFSetWarningHandler(nullptr);
    writeWhole(file, zn::AtomicFile::Sync::No, [&](zn::AtomicFile& target) {
        TiffFile tiff(target.temporary(), options);
        pages([&](const Raster& page) { tiff.add(page); });
        errno = 0;
        if (!tiff.close())
            raiseNotWritable(file, errno == 0 ? EFBIG : errno);
    });
    if (options.compression == TiffCompression::Group4 && options.colors != TiffColors::BlackWhite)
        return {quoted(file) + " is black and white: the compression that was asked for holds nothing else."};
    return {};
}

} // namespace zn::zentrel
