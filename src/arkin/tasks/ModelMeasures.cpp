#include "arkin/tasks/ModelMeasures.h"

#include <cmath>
#include <fmt/format.h>
#include <map>
#include <nlohmann/json.hpp>

namespace zn::arkin {

namespace {

using Json = nlohmann::json;

struct Measures {
    std::vector<double> numbers;       ///< as `measureNames` has them
    std::map<std::string, int> bodies; ///< by name
};

struct MeasureName {
    const char* name;
    const char16_t* unit;
};
const MeasureName measureNames[]
    = {{"volume", u"mm\u00B3"}, {"area", u"mm\u00B2"}, {"size x", u"mm"}, {"size y", u"mm"}, {"size z", u"mm"}};

/// By configuration.
std::map<std::string, Measures> read(const std::string& text)
{
    std::map<std::string, Measures> all;
    try {
        const Json json = Json::parse(text);
        for (const Json& one : json.value("configurations", Json::array())) {
            Measures& measures = all[one.at("name").get<std::string>()];
            measures.numbers = {one.at("volume").get<double>(), one.at("area").get<double>()};
            for (const Json& side : one.at("size"))
                measures.numbers.push_back(side.get<double>());
            for (const Json& body : one.at("bodyNames"))
                measures.bodies[body.at("name").get<std::string>()] = body.at("count").get<int>();
            measures.numbers.resize(std::size(measureNames));
        }
    } catch (const Json::exception&) {
        throw zn::StatusError(zn::E_FAIL, "The CAD application measures in a way that isn't known here.");
    }
    return all;
}

bool isSame(double a, double b) { return std::abs(a - b) <= 1e-6 * std::max(std::abs(a), std::abs(b)); }

zn::Text asText(double number) { return zn::toText(fmt::format("{:.7g}", number)); }

zn::Text countText(int count) { return count == 0 ? zn::Text() : zn::toText(std::to_string(count)); }

} // namespace

std::vector<Difference> measureDifferences(const std::string& before, const std::string& after)
{
    std::vector<Difference> measures, bodies;
    const auto old = read(before), now = read(after);
    for (const auto& [configuration, is] : now) {
        const auto found = old.find(configuration);
        if (found == old.end())
            continue; // the configurations themselves differ, which is told
        const Measures& was = found->second;
        const std::string where = now.size() > 1 ? " (" + configuration + ")" : "";
        for (std::size_t i = 0; i < std::size(measureNames); ++i)
            if (!isSame(was.numbers[i], is.numbers[i]))
                measures.push_back({Difference::Kind::Measure, zn::toText(measureNames[i].name + where),
                    asText(was.numbers[i]), asText(is.numbers[i]), measureNames[i].unit});
        std::map<std::string, std::pair<int, int>> counts;
        for (const auto& [name, count] : was.bodies)
            counts[name].first = count;
        for (const auto& [name, count] : is.bodies)
            counts[name].second = count;
        for (const auto& [name, count] : counts)
            if (count.first != count.second)
                bodies.push_back({Difference::Kind::Body, zn::toText(name + where), countText(count.first),
                    countText(count.second), {}});
    }
    measures.insert(measures.end(), bodies.begin(), bodies.end());
    return measures;
}

} // namespace zn::arkin
