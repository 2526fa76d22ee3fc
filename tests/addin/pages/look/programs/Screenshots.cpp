// Takes a picture of every window of the product.
//
//   screenshots FOLDER [LANGUAGE [WINDOW...]]

#include "tests/support/windows/Windows.h"

#include <QApplication>
#include <QEventLoop>
#include <QImage>
#include <QPixmap>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <iostream>
#include <map>

namespace {

using namespace zn;

/// Until what a window does by itself, such as checking a macro, is done.
void settle()
{
    QEventLoop wait;
    QTimer::singleShot(800, &wait, &QEventLoop::quit);
    wait.exec();
}

/// The colours that a picture uses most, as many as a palette holds.
QList<QRgb> commonColours(const QImage& picture)
{
    constexpr std::ptrdiff_t paletteSize = 256;
    std::map<QRgb, int> uses;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ++uses[picture.pixel(x, y)];
    }
    std::vector<std::pair<int, QRgb>> byUse;
    byUse.reserve(uses.size());
    for (const auto& [colour, count] : uses)
        byUse.emplace_back(count, colour);
    std::sort(byUse.begin(), byUse.end(), std::greater());
    QList<QRgb> colours;
    for (std::ptrdiff_t i = 0; i < std::min(paletteSize, std::ssize(byUse)); ++i)
        colours.append(byUse[static_cast<std::size_t>(i)].second);
    return colours;
}

/// A picture with a palette is a fraction of the size.
bool savePicture(QWidget& window, const std::filesystem::path& file)
{
    // Shades that nobody tells apart would crowd the icons' colours out.
    const QImage picture
        = window.window()->grab().toImage().convertToFormat(QImage::Format_RGB16).convertToFormat(QImage::Format_RGB32);
    const QImage small = picture.convertToFormat(QImage::Format_Indexed8, commonColours(picture), Qt::ThresholdDither);
    return small.save(QString::fromStdString(file.string()), "PNG", 0);
}

int takePictures(
    const std::filesystem::path& folder, const std::string& language, const std::vector<std::string>& names)
{
    std::filesystem::create_directories(folder);
    int failures = 0;
    for (const test::WindowCase& each : test::allWindows()) {
        if (!names.empty() && std::find(names.begin(), names.end(), each.name) == names.end())
            continue;
        const std::filesystem::path file = folder / (each.name + ".png");
        bool saved = false;
        test::Desk desk(toText(language));
        each.open(desk, [&](QWidget& window) {
            settle();
            saved = savePicture(window, file);
        });
        std::cout << (saved ? "" : "not saved: ") << file.string() << '\n';
        failures += saved ? 0 : 1;
    }
    return failures;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", ZN_TEST_SCREEN);
    QApplication application(argc, argv);
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.empty()) {
        std::cerr << "usage: screenshots FOLDER [LANGUAGE [WINDOW...]]\n";
        return 2;
    }
    try {
        const std::string language = arguments.size() > 1 ? arguments[1] : "GB";
        const std::vector<std::string> names(
            arguments.begin() + std::min<std::ptrdiff_t>(2, std::ssize(arguments)), arguments.end());
        return takePictures(arguments[0], language, names) == 0 ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << "screenshots: " << error.what() << '\n';
        return 1;
    }
}
