#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/ProgressLine.h"
#include "arkin/store/AddFiles.h"
#include "arkin/store/CheckIn.h"
#include "arkin/store/Codes.h"
#include "arkin/store/UpdateFile.h"
#include "base/Paths.h"
#include "commandline/Failure.h"

#include <algorithm>
#include <iostream>

namespace zn::arkin {

namespace {

/// Files that go in together. One batch is added whole or not at all; several of them show progress.
constexpr std::size_t batchSize = 200;

class Add : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("PATH", m_paths, "Files, or folders with all that is in them").required();
        take.option("--to", m_to, "Folder of the vault; made if it is missing");
        take.option("-m,--comment", m_comment, "Comment of the first versions");
        take.flag("--new-version", m_newVersion, "Make new versions of files that the vault has already");
        take.flag("--rename-safely", m_renameSafely,
            "Put '_' for characters in names that tasks can't work with: double quotes, angle brackets, control "
            "characters");
    }

    int run(Session& session) override
    {
        const auto target = m_to.empty() ? session.vault().info().root : session.vaultPathOf(m_to);
        std::vector<AddRequest> requests;
        for (const auto& path : m_paths)
            collect(session, path, target, requests);
        ProgressLine progress(!session.json() && requests.size() > 1);
        for (std::size_t done = 0; done < requests.size(); done += batchSize) {
            progress.show(static_cast<std::int64_t>(done), static_cast<std::int64_t>(requests.size()),
                zn::toUtf8(requests[done].name));
            const auto count = std::min(batchSize, requests.size() - done);
            addBatch(session, std::span(requests).subspan(done, count));
        }
        progress.clear();
        return report(session);
    }

private:
    void collect(
        Session& session, const std::string& path, const zn::Text& folder, std::vector<AddRequest>& requests) const
    {
        const std::filesystem::path source(path);
        const auto given = zn::pathFileName(session.pathOf(path));
        const auto name = m_renameSafely ? safeName(given) : given;
        if (std::filesystem::is_directory(source)) {
            std::vector<std::filesystem::path> inside;
            for (const auto& entry : std::filesystem::directory_iterator(source))
                inside.push_back(entry.path());
            std::sort(inside.begin(), inside.end());
            const auto below = zn::pathAppend(folder, name);
            for (const auto& entry : inside)
                collect(session, entry.string(), below, requests);
        } else if (std::filesystem::is_regular_file(source)) {
            requests.push_back({session.pathOf(path), folder, name});
        } else {
            throw zn::StatusError(
                zn::E_INVALIDARG, path + (std::filesystem::exists(source) ? " is no plain file." : " doesn't exist."));
        }
    }

    void addBatch(Session& session, std::span<const AddRequest> requests)
    {
        auto outcomes = addFiles(session.vault(), requests);
        std::vector<Place> places;
        for (std::size_t index = 0; index < outcomes.size(); ++index) {
            if (outcomes[index].status == zn::S_OK)
                places.push_back(outcomes[index].place);
            else if (m_newVersion && outcomes[index].status == E_ARK_NAME_ALREADY_EXISTS)
                update(session, requests[index], outcomes[index]);
        }
        if (!places.empty())
            for (auto& each : checkIn(session.vault(), planCheckIn(session.vault(), places), zn::toText(m_comment)))
                m_notes.push_back(std::move(each.note));
        std::move(outcomes.begin(), outcomes.end(), std::back_inserter(m_outcomes));
    }

    void update(Session& session, const AddRequest& request, AddOutcome& outcome)
    {
        const auto source = session.platform().files().toMachine(request.source);
        outcome.path = session.vault().pathOf(outcome.place);
        try {
            if (!updateFile(session.vault(), outcome.place, source, zn::toText(m_comment)))
                m_notes.push_back(
                    session.shown(outcome.path) + " has that content already, so it gets no new version.");
            outcome.status = zn::S_OK;
            outcome.sentence.clear();
        } catch (const zn::StatusError& error) {
            outcome.status = error.status();
            outcome.sentence = error.what();
        }
    }

    int report(Session& session) const
    {
        auto files = Json::array();
        std::size_t failures = 0;
        for (const auto& outcome : m_outcomes) {
            const auto path = session.shown(outcome.path);
            const bool added = outcome.status == zn::S_OK;
            failures += added ? 0 : 1;
            files.push_back({{"path", path}, {"added", added}, {"text", outcome.sentence}});
            if (added && !session.json())
                std::cout << path << "\n";
            else if (!added)
                commandline::tellFailure("arkin",
                    path + ": " + outcome.sentence
                        + (outcome.status == E_ARK_BAD_NAME ? " 'arkin add --rename-safely' does that by itself." : ""),
                    commandFailed, session.json());
        }
        for (const auto& note : m_notes)
            printNote(note);
        if (session.json())
            printJson(files);
        return failures == 0 ? commandDone : commandFailed;
    }

    std::vector<std::string> m_paths;
    std::string m_to;
    std::string m_comment = "Added";
    bool m_newVersion = false;
    bool m_renameSafely = false;
    std::vector<AddOutcome> m_outcomes;
    std::vector<std::string> m_notes;
};

} // namespace

MadeCommand addCommand() { return std::make_unique<Add>(); }

} // namespace zn::arkin
