#pragma once

#include <QHash>
#include <QIcon>

namespace zn::arkin {

/// The icons of file types, in any size; each is drawn at its first use and kept. User interface thread.
class FileTypeIcons {
public:
    /// Of an extension such as ".zenasm".
    QIcon of(const QString& extension);

private:
    QHash<QString, QIcon> m_icons;
};

} // namespace zn::arkin
