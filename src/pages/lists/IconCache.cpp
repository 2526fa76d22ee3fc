#include "pages/lists/IconCache.h"

#include "base/Paths.h"

#include <QApplication>
#include <QStyle>

namespace zn {

namespace {

QIcon typeIcon(TextView) { return QApplication::style()->standardIcon(QStyle::SP_FileIcon); }

} // namespace

IconCache::IconCache(int size)
    : m_images(new ImageList(size))
{
}

int IconCache::fileImage(TextView path)
{
    const Text extension = toLower(pathExtension(path));
    const auto [entry, isNew] = m_files.try_emplace(extension, ImageList::noImage);
    if (isNew)
        entry->second = m_images->add(typeIcon(extension));
    return entry->second;
}

int IconCache::folderImage()
{
    if (m_folder == ImageList::noImage)
        m_folder = m_images->add(QApplication::style()->standardIcon(QStyle::SP_DirIcon));
    return m_folder;
}

} // namespace zn
