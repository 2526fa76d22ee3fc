#include "tests/zentrel/Documents.h"
#include "zentrel/formats/Png.h"
#include "zentrel/formats/ShadedPicture.h"

#include <cairo.h>
#include <cstring>

using namespace zn::zentrel;
using namespace zn::zentrel::test;

namespace {

/// A PNG as an independent reader has it.
class Image {
public:
    explicit Image(const std::string& png)
        : m_rest(png)
        , m_image(cairo_image_surface_create_from_png_stream(take, &m_rest))
    {
    }
    ~Image() { cairo_surface_destroy(m_image); }
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    int width() const { return cairo_image_surface_get_width(m_image); }
    int height() const { return cairo_image_surface_get_height(m_image); }
    /// Alpha, red, green, blue, at parts of width and height.
    std::array<int, 4> at(double x, double y) const
    {
        std::uint32_t pixel = 0;
        const auto row = static_cast<std::ptrdiff_t>(y * (height() - 1)) * cairo_image_surface_get_stride(m_image);
        std::memcpy(&pixel,
            cairo_image_surface_get_data(m_image) + row + 4 * static_cast<std::ptrdiff_t>(x * (width() - 1)), 4);
        const auto byte = [pixel](int shift) { return static_cast<int>(pixel >> shift & 255U); };
        return {byte(24), byte(16), byte(8), byte(0)};
    }

private:
    static cairo_status_t take(void* closure, unsigned char* data, unsigned int length)
    {
        auto& rest = *static_cast<std::string_view*>(closure);
        if (rest.size() < length)
            return CAIRO_STATUS_READ_ERROR;
        std::memcpy(data, rest.data(), length);
        rest.remove_prefix(length);
        return CAIRO_STATUS_SUCCESS;
    }

    std::string_view m_rest;
    cairo_surface_t* m_image;
};

/// A green box of 10 mm at the origin, and one without a colour 30 mm to the right.
Model twoBoxes()
{
    auto block = std::make_shared<Model>();
    block->bodies = {{u"Box", box(10, 10, 10), {}, {}}};
    gp_Trsf right;
    right.SetTranslation({30, 0, 0});
    Model model;
    model.children = {{u"Left", {}, block, Color{0, 1, 0}}, {u"Right", right, block}};
    return model;
}

Image pictured(const Model& model, const gp_Dir& direction)
{
    return Image(shadedPicture(model, {.direction = direction, .width = 400, .height = 200}, "boxes.zenasm"));
}

} // namespace

TEST(ShadedPicture, showsBodiesAtTheirPlacesInTheirColours)
{
    const Model model = twoBoxes();
    const Image front = pictured(model, {0, -1, 0});
    EXPECT_EQ(front.width(), 400);
    EXPECT_EQ(front.height(), 200);
    const double left = 0.5 - 0.94 * 15 / 40; // the model fills 94 of 100 parts
    const auto green = front.at(left, 0.5);
    EXPECT_EQ(green[0], 255);
    EXPECT_GT(green[2], green[1] + 100);
    const auto plain = front.at(1 - left, 0.5);
    EXPECT_NEAR(plain[1], plain[2], 15);
    EXPECT_EQ(front.at(0.5, 0.5)[0], 0) << "nothing between the boxes";
    EXPECT_EQ(front.at(left, 0.1)[0], 0);
    const auto edge = front.at(left - 0.94 * 5 / 40, 0.5);
    EXPECT_LT(edge[2], green[2] / 2) << "a dark line where the box ends";

    const auto seen = pictured(model, {1, 0, 0}).at(0.5, 0.5);
    EXPECT_NEAR(seen[1], seen[2], 15) << "the green box is behind the other";
    const auto top = pictured(model, {0, 0, 1}).at(left, 0.5);
    EXPECT_GT(top[2], 150) << "a view along what is up";
}

TEST(SheetAsPng, fitsItsFrameOnWhite)
{
    SheetPicture sheet;
    sheet.width = 300;
    sheet.height = 150;
    sheet.strokes = {
        {LineKind::Frame, {}, {{75, 0}, {75, 150}}, {}}, {LineKind::Visible, Color{1, 0, 0}, {{0, 75}, {300, 75}}, {}}};
    const Image image(pngOf(sheet, 1200, 1200));
    EXPECT_EQ(image.width(), 1200);
    EXPECT_EQ(image.height(), 600);
    EXPECT_EQ(image.at(0.5, 0.25), (std::array{255, 255, 255, 255}));
    EXPECT_EQ(image.at(0.25, 0.25), (std::array{255, 0, 0, 0}));
    const auto red = image.at(0.8, 0.5);
    EXPECT_GT(red[1], red[2] + 100);
}
