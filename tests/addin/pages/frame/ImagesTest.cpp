#include "addin/pages/frame/Images.h"

#include "addin/libraries/flowicons/FlowIcons.h"
#include "addin/pages/frame/PageEnvironment.h"
#include "tests/support/InstalledPlatform.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QImage>
#include <QPalette>

namespace zn {
namespace {

QImage drawn(const QIcon& icon) { return icon.pixmap(16).toImage(); }

/// Whether something was drawn at all.
bool hasPicture(const QIcon& icon)
{
    QImage empty(16, 16, QImage::Format_ARGB32_Premultiplied);
    empty.fill(Qt::transparent);
    return !icon.isNull() && drawn(icon).convertToFormat(empty.format()) != empty;
}

TEST(ImagesTest, EveryNameHasItsPicture)
{
    for (const char* name : {"ALL_CARD", "ASSEMBLY", "CHECK_MARK", "CONFIG_SELECTED", "DATE_TIME", "FILE",
             "FILE_MODIFIED", "FOLDER_VAULT", "PART", "PRINTER", "SHEET", "VERSION_NUMBER", "WORKFLOW"})
        EXPECT_TRUE(hasPicture(image(QLatin1String("PNG_") + QLatin1String(name)))) << name;
    for (int view = 222; view <= 230; ++view) {
        EXPECT_TRUE(hasPicture(image(view))) << view;
        EXPECT_NE(drawn(image(view)), drawn(image(view + 14))) << view << " chosen and not";
    }
    EXPECT_TRUE(image("PNG_NOTHING").isNull());
}

TEST(ImagesTest, FileTypesAreToldByTheExtensionInAnySpelling)
{
    EXPECT_EQ(drawn(fileTypeIcon(".ZENPRT")), drawn(fileTypeIcon("zenprt")));
    EXPECT_NE(drawn(fileTypeIcon("zenprt")), drawn(fileTypeIcon("zenasm")));
    EXPECT_NE(drawn(fileTypeIcon("pdf")), drawn(fileTypeIcon("unknown")));
    EXPECT_TRUE(hasPicture(fileTypeIcon("")));
    const QIcon printer = image("PNG_PRINTER");
    const auto pictureOf = [&](QIcon::Mode mode) { return printer.pixmap(16, 16, mode).toImage(); };
    EXPECT_NE(pictureOf(QIcon::Disabled), pictureOf(QIcon::Normal));
}

TEST(ImagesTest, PicturesFollowADarkPalette)
{
    const QPalette light = QApplication::palette();
    const QImage before = drawn(image("PNG_FILE"));
    QPalette dark = light;
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    QApplication::setPalette(dark);
    EXPECT_NE(drawn(image("PNG_FILE")), before);
    QApplication::setPalette(light);
    EXPECT_EQ(drawn(image("PNG_FILE")), before);
}

TEST(ImagesTest, TheSharedIconsComeFromTheirLibrary)
{
    test::InstalledPlatform platform;
    const Platform ports = platform.ports();
    PageEnvironment environment(ports);
    const QIcon folder = environment.flowIcon(flowicons::Picture::Folder);
    EXPECT_TRUE(hasPicture(folder));
    EXPECT_NE(drawn(folder), drawn(environment.flowIcon(flowicons::Picture::Pdf3d)));
}

} // namespace
} // namespace zn
