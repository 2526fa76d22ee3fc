#include "arkin/desktop/pictures/TurningModel.h"

#include "base/Status.h"
#include "pixels/PixelGrid.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <string_view>

namespace zn::arkin {

namespace {

constexpr std::string_view beforeCount = "ply\nformat binary_little_endian 1.0\nelement vertex ";
constexpr std::string_view properties = "\nproperty float x\nproperty float y\nproperty float z\nproperty float "
                                        "nx\nproperty float ny\nproperty float nz\n"
                                        "property uchar red\nproperty uchar green\nproperty uchar blue\nelement face ";
constexpr std::string_view headersEnd = "end_header\n";
constexpr std::size_t vertexBytes = 6 * 4 + 3;

[[noreturn]] void refuse() { throw zn::StatusError(zn::E_FAIL, "The model can't be shown to be turned."); }

/// Goes through the bytes; `refuse`s where they end too early.
class Reader {
public:
    explicit Reader(std::string_view bytes)
        : m_rest(bytes)
    {
    }
    void expect(std::string_view text)
    {
        if (!m_rest.starts_with(text))
            refuse();
        m_rest.remove_prefix(text.size());
    }
    std::size_t count()
    {
        std::size_t number = 0;
        const auto [end, error] = std::from_chars(m_rest.data(), m_rest.data() + m_rest.size(), number);
        if (error != std::errc())
            refuse();
        m_rest.remove_prefix(static_cast<std::size_t>(end - m_rest.data()));
        return number;
    }
    void skipBehind(std::string_view text)
    {
        const std::size_t at = m_rest.find(text);
        if (at == std::string_view::npos)
            refuse();
        m_rest.remove_prefix(at + text.size());
    }
    void require(std::size_t items, std::size_t bytes) const
    {
        if (items > m_rest.size() / bytes)
            refuse();
    }
    float number()
    {
        std::uint32_t bits = 0;
        for (const unsigned shift : {0U, 8U, 16U, 24U})
            bits |= static_cast<std::uint32_t>(byte()) << shift;
        return std::bit_cast<float>(bits);
    }
    QVector3D vector()
    {
        const float x = number(), y = number();
        return {x, y, number()};
    }
    unsigned char byte()
    {
        const auto value = static_cast<unsigned char>(m_rest.front());
        m_rest.remove_prefix(1);
        return value;
    }

private:
    std::string_view m_rest;
};

/// The lowest and the highest of each coordinate.
struct Box {
    QVector3D low, high;

    void add(const QVector3D& point, bool isFirst)
    {
        for (int axis = 0; axis < 3; ++axis) {
            low[axis] = isFirst ? point[axis] : std::min(low[axis], point[axis]);
            high[axis] = isFirst ? point[axis] : std::max(high[axis], point[axis]);
        }
    }
};

} // namespace

TurningModel::TurningModel(const std::string& ply)
{
    Reader reader(ply);
    reader.expect(beforeCount);
    const std::size_t vertices = reader.count();
    reader.expect(properties);
    reader.skipBehind(headersEnd);
    reader.require(vertices, vertexBytes);
    if (vertices == 0 || vertices % 3 != 0)
        refuse();
    m_corners.reserve(vertices);
    m_colors.reserve(vertices / 3);
    Box box;
    for (std::size_t i = 0; i < vertices; ++i) {
        Corner corner;
        corner.point = reader.vector();
        corner.normal = reader.vector();
        std::array<float, 3> color{};
        for (float& channel : color)
            channel = static_cast<float>(reader.byte()) / 255.0F;
        if (i % 3 == 0)
            m_colors.push_back(color);
        box.add(corner.point, i == 0);
        m_corners.push_back(corner);
    }
    m_middle = (box.low + box.high) / 2;
    Box seen;
    for (std::size_t i = 0; i < vertices; ++i)
        seen.add(firstLook().rotatedVector(m_corners[i].point - m_middle), i == 0);
    m_extent = std::max({seen.high.x() - seen.low.x(), seen.high.y() - seen.low.y(), 1e-6F});
    // Turned about the middle of what is seen first.
    m_middle += firstLook().conjugated().rotatedVector((seen.low + seen.high) / 2);
}

QQuaternion TurningModel::firstLook()
{
    const QVector3D eye = QVector3D(1, -1, 1).normalized();
    const QVector3D right = QVector3D::crossProduct({0, 0, 1}, eye).normalized();
    return QQuaternion::fromAxes(right, QVector3D::crossProduct(eye, right), eye).conjugated();
}

QImage TurningModel::picture(const QQuaternion& look, double zoom, const QSize& size, bool fine) const
{
    constexpr float room = 0.94F; // of the side, as in pictures that don't turn
    const int factor = fine ? 2 : 1;
    const int width = size.width() * factor, height = size.height() * factor;
    PixelGrid grid(width, height);
    const float scale = static_cast<float>(zoom) * room * static_cast<float>(std::min(width, height)) / m_extent;
    const QMatrix3x3 turn = look.toRotationMatrix();
    const auto turned = [&](const QVector3D& vector) {
        const auto row
            = [&](int i) { return turn(i, 0) * vector.x() + turn(i, 1) * vector.y() + turn(i, 2) * vector.z(); };
        return QVector3D(row(0), row(1), row(2));
    };
    const auto seen = [&](const Corner& corner) {
        const QVector3D at = turned(corner.point - m_middle) * scale;
        const QVector3D normal = turned(corner.normal);
        return PictureCorner{static_cast<float>(width) / 2 + at.x(), static_cast<float>(height) / 2 - at.y(), at.z(),
            {normal.x(), normal.y(), normal.z()}};
    };
    for (std::size_t i = 0; i < m_colors.size(); ++i)
        grid.draw(seen(m_corners[3 * i]), seen(m_corners[3 * i + 1]), seen(m_corners[3 * i + 2]), m_colors[i]);
    const std::vector<std::uint8_t> bytes = grid.shaded(factor);
    return QImage(
        bytes.data(), size.width(), size.height(), qsizetype{4} * size.width(), QImage::Format_ARGB32_Premultiplied)
        .copy();
}

} // namespace zn::arkin
