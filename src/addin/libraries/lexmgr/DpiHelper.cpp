#include "addin/libraries/lexmgr/DpiHelper.h"

#include <QGuiApplication>
#include <QScreen>

#include <cmath>

namespace lexmgr {

namespace {

constexpr double designDotsPerInch = 96.0;
constexpr int iconSteps[] = {16, 24, 32, 48, 64, 96, 128};

/// The largest step that an icon is drawn in and that fits; a smaller icon stays as it is.
int iconStep(int size, int wanted)
{
    int step = size;
    for (const int edge : iconSteps) {
        if (edge > size && edge <= wanted)
            step = edge;
    }
    return step;
}

} // namespace

DpiHelper::DpiHelper()
{
    const QScreen* screen = qGuiApp ? QGuiApplication::primaryScreen() : nullptr;
    m_dotsPerInch = screen ? screen->logicalDotsPerInchX() : designDotsPerInch;
}

int DpiHelper::scaleX(int value) const
{
    return static_cast<int>(std::lround(value * m_dotsPerInch / designDotsPerInch));
}

int DpiHelper::getDesiredBitmapImageSize(e_arkImageUseType useType, int size) const
{
    return useType == e_arkImageUseType::Picture ? scaleX(size) : iconStep(size, scaleX(size));
}

} // namespace lexmgr
