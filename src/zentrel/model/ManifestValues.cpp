#include "zentrel/model/ManifestValues.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <Standard_Failure.hxx>
#include <stdexcept>

namespace zn::zentrel::manifest {

Json textJson(const Text& text) { return zn::toUtf8(text); }

Text textFrom(const Json& json) { return zn::toText(json.get<std::string>()); }

Json propertiesJson(const Properties& properties)
{
    Json result = Json::object();
    for (const auto& [name, value] : properties)
        result[zn::toUtf8(name)] = zn::toUtf8(value);
    return result;
}

Properties propertiesFrom(const Json& json)
{
    Properties result;
    for (const auto& [name, value] : json.items())
        result[zn::toText(name)] = textFrom(value);
    return result;
}

Json colorJson(const Color& color) { return {color.red, color.green, color.blue}; }

Color colorFrom(const Json& json)
{
    return {json.at(0).get<double>(), json.at(1).get<double>(), json.at(2).get<double>()};
}

Json placementJson(const gp_Trsf& placement)
{
    Json rows = Json::array();
    for (int row = 1; row <= 3; ++row) {
        Json values = Json::array();
        for (int column = 1; column <= 4; ++column)
            values.push_back(placement.Value(row, column));
        rows.push_back(values);
    }
    return rows;
}

namespace {

void checkRigid(const gp_Trsf& placement)
{
    if (std::abs(placement.ScaleFactor() - 1.0) > 1e-9 || placement.IsNegative())
        throw std::invalid_argument("a component's placement scales or mirrors");
}

} // namespace

gp_Trsf placementFrom(const Json& json)
{
    double v[3][4];
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 4; ++column)
            v[row][column] = json.at(row).at(column).get<double>();
    }
    gp_Trsf placement;
    try {
        placement.SetValues(
            v[0][0], v[0][1], v[0][2], v[0][3], v[1][0], v[1][1], v[1][2], v[1][3], v[2][0], v[2][1], v[2][2], v[2][3]);
    } catch (const Standard_Failure&) {
        throw std::invalid_argument("a component's placement is no placement");
    }
    // Reading the matrix gives a scale of 1 but for rounding, which the kernel would take for a scaled shape.
    checkRigid(placement);
    placement.SetScaleFactor(1.0);
    return placement;
}

} // namespace zn::zentrel::manifest
