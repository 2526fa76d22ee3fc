#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/store/GiveUp.h"
#include "arkin/store/MoveFiles.h"

#include <algorithm>
#include <iostream>

namespace zn::arkin {

namespace {

class History : public Command {
public:
    void declare(Arguments& take) override { take.option("FILE", m_file, "File of the vault").required(); }

    int run(Session& session) override
    {
        const auto place = session.fileAt(m_file);
        const auto endings = givenUp(session.vault().database(), place.fileId);
        auto entries = Json::array();
        std::vector<std::vector<std::string>> rows{{"VERSION", "TIME", "USER", "REVISION", "STATE", "SIZE", "COMMENT"}};
        const auto moves = movesOf(session.vault(), place.fileId);
        auto move = moves.begin();
        const auto addMovesUntil = [&](std::int64_t time) {
            for (; move != moves.end() && move->movedAt < time; ++move) {
                const auto from = zn::toUtf8(move->from), to = zn::toUtf8(move->to);
                entries.push_back({{"version", nullptr}, {"time", jsonTime(move->movedAt)}, {"user", move->user},
                    {"movedFrom", from}, {"movedTo", to}});
                rows.push_back(
                    {"-", shownTime(move->movedAt), move->user, "", "", "", "Moved from " + from + " to " + to});
            }
        };
        for (const auto& row : session.vault().files().history(place.fileId)) {
            addMovesUntil(row.madeAt);
            entries.push_back({{"version", row.version}, {"time", jsonTime(row.madeAt)}, {"user", zn::toUtf8(row.user)},
                {"revision", zn::toUtf8(row.revision)}, {"state", zn::toUtf8(row.state)}, {"size", row.content.size},
                {"givenUp", endingsOf(endings, row.version)}, {"comment", zn::toUtf8(row.comment)}});
            rows.push_back({std::to_string(row.version), shownTime(row.madeAt), zn::toUtf8(row.user),
                zn::toUtf8(row.revision), zn::toUtf8(row.state),
                shownCount(static_cast<std::int64_t>(row.content.size)), zn::toUtf8(row.comment)});
        }
        addMovesUntil(INT64_MAX);
        if (session.json())
            printJson(entries);
        else
            print(rows, endings);
        return commandDone;
    }

private:
    /// Of the check-outs that were taken from the version; a file that was never checked in has its first one.
    static Json endingsOf(const std::vector<GivenUp>& all, std::int32_t version)
    {
        auto rows = Json::array();
        for (const GivenUp& each : all)
            if (std::max(each.baseVersion, 1) == version)
                rows.push_back({{"user", each.user}, {"machine", each.machine}, {"since", jsonTime(each.takenAt)},
                    {"by", each.byUser}, {"time", jsonTime(each.at)}, {"reason", each.reason}});
        return rows;
    }

    static void print(const std::vector<std::vector<std::string>>& rows, const std::vector<GivenUp>& endings)
    {
        printTable(rows, "The file has no version yet: it was never checked in.");
        for (const GivenUp& each : endings)
            std::cout << shownTime(each.at) << ": " << each.byUser << " gave up the check-out of " << each.user
                      << " on " << each.machine << ", because \"" << each.reason << "\".\n";
    }

    std::string m_file;
};

} // namespace

MadeCommand historyCommand() { return std::make_unique<History>(); }

} // namespace zn::arkin
