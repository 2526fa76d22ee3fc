#pragma once

#include <boost/shared_ptr.hpp>
#include <QIcon>
#include <vector>

namespace zn {

/// Images of one size by number, which the rows of a list share: a row keeps no image of its own, and the image list
/// lives as long as one of its users.
class ImageList {
public:
    static constexpr int noImage = -1;

    /// `size` is an image's edge in pixels at 100 percent.
    explicit ImageList(int size)
        : m_size(size)
    {
    }

    int size() const { return m_size; }

    /// The number of the added image. A null icon adds nothing and gives `noImage`.
    int add(const QIcon& icon)
    {
        if (icon.isNull())
            return noImage;
        m_icons.push_back(icon);
        return static_cast<int>(m_icons.size()) - 1;
    }
    /// A null icon for `noImage` and for numbers that were never given.
    QIcon icon(int number) const
    {
        return number >= 0 && number < static_cast<int>(m_icons.size()) ? m_icons[static_cast<std::size_t>(number)]
                                                                        : QIcon();
    }

private:
    int m_size;
    std::vector<QIcon> m_icons;
};

using ImageListRef = boost::shared_ptr<ImageList>;

} // namespace zn
