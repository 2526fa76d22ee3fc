#include "zentrel/formats/Write.h"

namespace zn::zentrel {

double millimetersOf(LengthUnit unit)
{
    switch (unit) {
    case LengthUnit::Centimeters:
        return 10.0;
    case LengthUnit::Meters:
        return 1000.0;
    case LengthUnit::Inches:
        return 25.4;
    case LengthUnit::Feet:
        return 304.8;
    default:
        return 1.0;
    }
}

} // namespace zn::zentrel
