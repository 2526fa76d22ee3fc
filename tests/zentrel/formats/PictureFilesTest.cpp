#include "tests/support/Files.h"
#include "tests/support/TemporaryFolder.h"
#include "zentrel/formats/WritePicture.h"

#include <gmock/gmock.h>
#include <tiffio.h>
#include <turbojpeg.h>

using namespace zn::zentrel;
using zn::test::TemporaryFolder;

namespace {

using ::testing::ElementsAre;

/// Columns of one colour each, 10 pixels wide and 20 high.
Raster columns(const std::vector<std::array<std::uint8_t, 3>>& colors, bool isLineArt)
{
    Raster raster{static_cast<int>(colors.size()) * 10, 20, 150.0, isLineArt, {}};
    for (int y = 0; y < raster.height; ++y)
        for (int x = 0; x < raster.width; ++x)
            for (const std::uint8_t channel : colors[static_cast<std::size_t>(x / 10)])
                raster.pixels.push_back(channel);
    return raster;
}

/// A page as a reader has it: "width x height bits/samples scheme dpi:" and the mean grey of each column of 10 pixels.
std::string described(TIFF* tiff)
{
    std::uint32_t width = 0, height = 0;
    std::uint16_t bits = 0, samples = 0, scheme = 0;
    float resolution = 0;
    TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &height);
    TIFFGetField(tiff, TIFFTAG_BITSPERSAMPLE, &bits);
    TIFFGetField(tiff, TIFFTAG_SAMPLESPERPIXEL, &samples);
    TIFFGetField(tiff, TIFFTAG_COMPRESSION, &scheme);
    TIFFGetField(tiff, TIFFTAG_XRESOLUTION, &resolution);
    std::string text = std::to_string(width) + "x" + std::to_string(height) + " " + std::to_string(bits) + "/"
        + std::to_string(samples) + " " + std::to_string(scheme) + " " + std::to_string(static_cast<int>(resolution))
        + ":";
    std::vector<std::uint32_t> pixels(std::size_t{width} * height);
    EXPECT_EQ(TIFFReadRGBAImageOriented(tiff, width, height, pixels.data(), ORIENTATION_TOPLEFT), 1);
    for (std::uint32_t column = 0; column < width / 10; ++column) {
        std::uint32_t sum = 0;
        for (std::uint32_t y = 0; y < height; ++y)
            for (std::uint32_t x = 10 * column; x < 10 * column + 10; ++x)
                sum += (TIFFGetR(pixels[y * width + x]) + TIFFGetG(pixels[y * width + x])
                           + TIFFGetB(pixels[y * width + x]))
                    / 3;
        text += " " + std::to_string(sum / (10 * height));
    }
    return text;
}

std::vector<std::string> pagesOf(const std::filesystem::path& file)
{
    std::vector<std::string> pages;
    TIFF* const tiff = TIFFOpen(file.c_str(), "r");
    if (!tiff)
        return pages;
    do
        pages.push_back(described(tiff));
    while (TIFFReadDirectory(tiff) == 1);
    TIFFClose(tiff);
    return pages;
}

} // namespace

TEST(PictureFiles, TiffHasItsPagesInTheColoursAndTheCompressionThatWereAskedFor)
{
    const TemporaryFolder folder;
    const auto file = folder / "a.tif";
    // Black, red, light grey and white.
    const std::vector<std::array<std::uint8_t, 3>> colors{{0, 0, 0}, {255, 0, 0}, {200, 200, 200}, {255, 255, 255}};
    const auto written = [&](TiffColors kind, TiffCompression compression, bool isLineArt) {
        const Remarks remarks = writeTiff(file, {kind, compression}, [&](const AddPage& add) {
            add(columns(colors, isLineArt));
            add(columns({{10, 20, 30}}, isLineArt));
        });
        auto result = pagesOf(file);
        result.insert(result.end(), remarks.begin(), remarks.end());
        return result;
    };
    EXPECT_THAT(written(TiffColors::Full, TiffCompression::None, true),
        ElementsAre("40x20 8/3 1 150: 0 85 200 255", "10x20 8/3 1 150: 20"));
    EXPECT_THAT(written(TiffColors::Full, TiffCompression::PackBits, true),
        ElementsAre("40x20 8/3 32773 150: 0 85 200 255", "10x20 8/3 32773 150: 20"));
    EXPECT_THAT(written(TiffColors::Gray, TiffCompression::PackBits, true),
        ElementsAre("40x20 8/1 32773 150: 0 76 200 255", "10x20 8/1 32773 150: 18"));
    EXPECT_THAT(written(TiffColors::BlackWhite, TiffCompression::Group4, true),
        ElementsAre("40x20 1/1 4 150: 0 0 255 255", "10x20 1/1 4 150: 0"));
    // A light grey of shaded surfaces is so many white dots among black ones.
    const auto diffused = written(TiffColors::BlackWhite, TiffCompression::None, false);
    ASSERT_EQ(diffused.size(), 2U);
    int black = 0, red = 0, gray = 0, white = 0;
    ASSERT_EQ(
        std::sscanf(diffused[0].c_str(), "40x20 1/1 1 150: %d %d %d %d", &black, &red, &gray, &white), 4); // NOLINT
    EXPECT_EQ(black, 0);
    EXPECT_NEAR(red, 76, 12);
    EXPECT_NEAR(gray, 200, 12);
    EXPECT_GT(white, 250);
    EXPECT_THAT(written(TiffColors::Full, TiffCompression::Group4, true),
        ElementsAre("40x20 1/1 4 150: 0 0 255 255", "10x20 1/1 4 150: 0",
            "'" + file.string() + "' is black and white: the compression that was asked for holds nothing else."));
}

TEST(PictureFiles, JpegHasSizeColoursAndResolution)
{
    const TemporaryFolder folder;
    const auto file = folder / "a.jpg";
    writeJpeg(columns({{0, 0, 0}, {255, 0, 0}, {255, 255, 255}}, false), file);
    const std::string bytes = zn::test::readFile(file);
    EXPECT_EQ(bytes.substr(6, 12), std::string("JFIF\0\1\1\1\0\x96\0\x96", 12)) << "150 dots per inch";
    tjhandle reader = tjInitDecompress();
    int width = 0, height = 0, sampling = 0, space = 0;
    std::vector<unsigned char> data(bytes.begin(), bytes.end());
    ASSERT_EQ(tjDecompressHeader3(reader, data.data(), data.size(), &width, &height, &sampling, &space), 0);
    ASSERT_EQ(std::pair(width, height), std::pair(30, 20));
    std::vector<unsigned char> pixels(std::size_t{30} * 20 * 3);
    ASSERT_EQ(tjDecompress2(reader, data.data(), data.size(), pixels.data(), 30, 0, 20, TJPF_RGB, 0), 0);
    tjDestroy(reader);
    const auto at = [&](std::size_t x) {
        return std::array<int, 3>{pixels[3 * x], pixels[3 * x + 1], pixels[3 * x + 2]};
    };
    EXPECT_LT(at(4)[0], 16);
    EXPECT_GT(at(15)[0], 230);
    EXPECT_LT(at(15)[1], 24);
    EXPECT_GT(at(26)[1], 240);
}

TEST(PictureFiles, ASheetHasItsSizeAndALargeOneFewerDots)
{
    SheetPicture sheet;
    sheet.width = 254;
    sheet.height = 127;
    sheet.strokes.push_back({LineKind::Frame, {}, {{0, 63.5}, {254, 63.5}}, {}});
    const Raster raster = rasterOf(sheet);
    EXPECT_EQ(std::pair(raster.width, raster.height), std::pair(2000, 1000));
    const auto at = [&](int x, int y) { return raster.pixels[3 * static_cast<std::size_t>(y * raster.width + x)]; };
    EXPECT_LT(at(1000, 500), 100) << "the line";
    EXPECT_EQ(at(1000, 300), 255);
    sheet.width = 2540;
    sheet.height = 2540;
    const Raster large = rasterOf(sheet);
    EXPECT_LT(large.dotsPerInch, 100);
    EXPECT_LE(static_cast<double>(large.width) * large.height, mostPixels);
}
