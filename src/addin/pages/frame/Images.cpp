#include "addin/pages/frame/Images.h"

#include "addin/libraries/svgicons/SvgIcon.h"

#include <QHash>

/// The pictures are in a static library, where nothing else would bring them in.
static bool bringInPictures()
{
    Q_INIT_RESOURCE(images);
    return true;
}

namespace zn {

namespace {

struct FileType {
    const char* picture;
    const char* extensions; ///< lower case, separated by blanks
};

/// Several formats of one sort share a picture; their labels tell them apart.
constexpr FileType fileTypes[] = {
    {"part", "zenprt"},
    {"assembly", "zenasm"},
    {"drawing", "zendrw"},
    {"macro", "znb bas"},
    {"pdf", "pdf"},
    {"picture", "ai bmp gif jpeg jpg png psd svg tif tiff"},
    {"plan", "dwg dxf"},
    {"solid", "3dlat agr hcg hsf iges igs sat step stp vda x_b x_t"},
    {"mesh", "3mf obj stl vrml wrl xaml"},
    {"viewpane", "vasm vdrw vprt"},
    {"text", "csv htm html ini log txt xml"},
};

QHash<QString, QString> picturesByExtension()
{
    QHash<QString, QString> pictures;
    for (const FileType& type : fileTypes) {
        for (const QString& extension : QString::fromLatin1(type.extensions).split(u' '))
            pictures.insert(extension, QStringLiteral("files/") + QLatin1String(type.picture));
    }
    return pictures;
}

QIcon icon(const QString& path)
{
    [[maybe_unused]] static const bool areThere = bringInPictures();
    return svgIcon(QStringLiteral(":/zn/images/%1.svg").arg(path));
}

} // namespace

QIcon image(const QString& name)
{
    const QString prefix = QStringLiteral("PNG_");
    if (name.startsWith(prefix))
        return icon(name.mid(prefix.size()).toLower().replace(u'_', u'-'));
    return icon(QStringLiteral("views/") + name);
}

QIcon image(int number) { return image(QString::number(number)); }

QIcon fileTypeIcon(const QString& extension)
{
    static const QHash<QString, QString> pictures = picturesByExtension();
    QString key = extension.toLower();
    if (key.startsWith(u'.'))
        key.remove(0, 1);
    return icon(pictures.value(key, QStringLiteral("files/any")));
}

} // namespace zn
