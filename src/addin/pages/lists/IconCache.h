#pragma once

#include "addin/pages/lists/ImageList.h"
#include "base/Text.h"

#include <unordered_map>

namespace zn {

/// The icons of file types and of folders in one size, each made once, as numbers of an image list. A file need not
/// exist: its type is told by the extension alone. For the windows' thread.
class IconCache {
public:
    /// The size of the system's small image list: an icon's edge in pixels at 100 percent.
    static constexpr int smallSize = 16;

    explicit IconCache(int size = smallSize);

    /// The image of a file, told by its path or name.
    int fileImage(TextView path);
    int folderImage();

    /// The list that the numbers belong to. Further images may be added to it.
    const ImageListRef& images() const { return m_images; }

private:
    ImageListRef m_images;
    std::unordered_map<Text, int> m_files; ///< by extension
    int m_folder = ImageList::noImage;
};

} // namespace zn
