#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Measures.h"
#include "arkin/commands/frame/Output.h"
#include "arkin/tasks/ModelMeasures.h"

#include <iostream>

namespace zn::arkin {

namespace {

const char* wordOf(Difference::Kind kind)
{
    constexpr const char* words[] = {"content", "part", "card", "measure", "body", "reference"};
    return words[static_cast<int>(kind)];
}

class Diff : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("FILE", m_file, "File of the vault").required();
        take.option("FROM", m_from, "The older version (default: the one before TO)").range(1, INT32_MAX);
        take.option("TO", m_to, "The newer version (default: the latest)").range(1, INT32_MAX);
    }

    int run(Session& session) override
    {
        auto& vault = session.vault();
        const auto place = session.fileAt(m_file);
        const auto to = vault.version(place.fileId, m_to);
        if (m_from == 0 && to.version < 2)
            throw zn::StatusError(zn::E_INVALIDARG,
                session.shown(vault.pathOf(place)) + " has no version before " + std::to_string(to.version)
                    + " to compare with.");
        const auto from = vault.version(place.fileId, m_from > 0 ? m_from : to.version - 1);
        auto differences = differencesOf(vault, place.fileId, from.version, to.version);
        if (from.content.hash != to.content.hash)
            addMeasures(session, place, from.version, to.version, differences);
        if (session.json())
            printJson(asJson(session, from, to, differences));
        else
            print(session, from, to, differences);
        return commandDone;
    }

private:
    /// What the CAD application finds; without it the rest is told all the same.
    static void addMeasures(
        Session& session, const Place& place, std::int32_t from, std::int32_t to, std::vector<Difference>& differences)
    {
        try {
            const auto before = measuresOf(session, place, from), after = measuresOf(session, place, to);
            if (before.empty() || after.empty())
                return;
            for (auto& one : measureDifferences(before, after))
                differences.push_back(std::move(one));
        } catch (...) {
            std::cerr << "arkin: What the models measure isn't compared: " << currentFailure().sentence << "\n";
        }
    }

    static std::string nameOf(Session& session, const Difference& difference)
    {
        return difference.kind == Difference::Kind::Reference ? session.shown(difference.name)
                                                              : zn::toUtf8(difference.name);
    }

    static Json jsonSide(const Difference& one, const zn::Text& text)
    {
        if (text.empty())
            return nullptr;
        if (one.kind == Difference::Kind::Measure)
            return std::stod(zn::toUtf8(text));
        const bool isNumber = one.kind != Difference::Kind::Part && one.kind != Difference::Kind::Card;
        return isNumber ? Json(std::stoll(zn::toUtf8(text))) : Json(zn::toUtf8(text));
    }

    static Json asJson(
        Session& session, const VersionRow& from, const VersionRow& to, const std::vector<Difference>& differences)
    {
        auto list = Json::array();
        for (const Difference& one : differences)
            list.push_back({{"kind", wordOf(one.kind)}, {"name", nameOf(session, one)},
                {"from", jsonSide(one, one.before)}, {"to", jsonSide(one, one.after)}});
        return {{"from", from.version}, {"to", to.version}, {"differences", list}};
    }

    static void print(
        Session& session, const VersionRow& from, const VersionRow& to, const std::vector<Difference>& differences)
    {
        std::vector<std::vector<std::string>> rows{
            {"WHAT", "NAME", "VERSION " + std::to_string(from.version), "VERSION " + std::to_string(to.version)}};
        const auto side = [](const Difference& one, const zn::Text& text) {
            if (text.empty())
                return std::string("-");
            return zn::toUtf8(text) + (one.kind == Difference::Kind::Content ? " bytes" : "")
                + (one.unit.empty() ? "" : " " + zn::toUtf8(one.unit));
        };
        for (const Difference& one : differences)
            rows.push_back({wordOf(one.kind), nameOf(session, one), side(one, one.before), side(one, one.after)});
        printTable(rows, "The versions are the same.");
        if (from.content.hash != to.content.hash)
            printNote(
                "Contents are compared by what documents tell and models measure, not by what they look like; 'arkin "
                "explorer' shows that.");
    }

    std::string m_file;
    std::int32_t m_from = 0;
    std::int32_t m_to = 0;
};

} // namespace

MadeCommand diffCommand() { return std::make_unique<Diff>(); }

} // namespace zn::arkin
