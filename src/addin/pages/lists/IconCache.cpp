#include "addin/pages/lists/IconCache.h"

#include "addin/pages/frame/Images.h"
#include "base/Paths.h"
#include "qtglue/Texts.h"

namespace zn {

IconCache::IconCache(int size)
    : m_images(new ImageList(size))
{
}

int IconCache::fileImage(TextView path)
{
    const Text extension = toLower(pathExtension(path));
    const auto [entry, isNew] = m_files.try_emplace(extension, ImageList::noImage);
    if (isNew)
        entry->second = m_images->add(fileTypeIcon(shown(extension)));
    return entry->second;
}

int IconCache::folderImage()
{
    if (m_folder == ImageList::noImage)
        m_folder = m_images->add(image("PNG_FOLDER_VAULT"));
    return m_folder;
}

} // namespace zn
