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

struct Model {
    std::map<std::string, Measures> configurations; ///< by name
    std::string active;
};

Model read(const std::string& text)
{
    Model model;
    try {
        const Json json = Json::parse(text);
        model.active = json.value("active", "");
        for (const Json& one : json.value("configurations", Json::array())) {
            Measures& measures = model.configurations[one.at("name").get<std::string>()];
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
    return model;
}

/// Which configurations are compared: those of the same name, or, where there are none, the active ones.
struct Pair {
    const Measures& before;
    const Measures& after;
    std::string where; ///< behind what differs
};

std::vector<Pair> pairsOf(const Model& old, const Model& now)
{
    std::vector<Pair> pairs;
    for (const auto& [name, is] : now.configurations)
        if (const auto was = old.configurations.find(name); was != old.configurations.end())
            pairs.push_back({was->second, is, now.configurations.size() > 1 ? " (" + name + ")" : ""});
    const auto was = old.configurations.find(old.active), is = now.configurations.find(now.active);
    if (pairs.empty() && was != old.configurations.end() && is != now.configurations.end())
        pairs.push_back({was->second, is->second, " (" + old.active + ", " + now.active + ")"});
    return pairs;
}

bool isSame(double a, double b) { return std::abs(a - b) <= 1e-6 * std::max(std::abs(a), std::abs(b)); }

zn::Text asText(double number) { return zn::toText(fmt::format("{:.7g}", number)); }

zn::Text countText(int count) { return count == 0 ? zn::Text() : zn::toText(std::to_string(count)); }

} // namespace

std::vector<Difference> measureDifferences(const std::string& before, const std::string& after)
{
    std::vector<Difference> measures, bodies;
    const Model old = read(before), now = read(after);
    for (const auto& [was, is, where] : pairsOf(old, now)) {
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
