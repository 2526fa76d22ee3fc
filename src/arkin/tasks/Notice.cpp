#include "arkin/tasks/Notice.h"

#include "arkin/tasks/RunStore.h"
#include "arkin/tasks/RunValues.h"

#include <algorithm>
#include <boost/tokenizer.hpp>
#include <fmt/format.h>
#include <soci/soci.h>

namespace zn::arkin {

using soci::into;
using soci::use;
using zn::toUtf8;

namespace {

constexpr std::string_view mailPrefix = "mail:";
constexpr std::size_t mostFiles = 50;

[[noreturn]] void refuse(const std::string& sentence) { throw zn::StatusError(zn::E_INVALIDARG, sentence); }

std::vector<std::string> wordsOf(const std::string& command)
{
    using Separator = boost::escaped_list_separator<char>;
    try {
        const boost::tokenizer<Separator> words(command, Separator("\\", " ", "\"'"));
        std::vector<std::string> found(words.begin(), words.end());
        std::erase(found, "");
        return found;
    } catch (const boost::escaped_list_error&) {
        refuse(
            "The command '" + command + "' can't be read: a backslash stands before a backslash or a quotation mark.");
    }
}

bool isSafeInMail(unsigned char letter) { return letter > ' ' && letter < 0x7F; }

/// An address reaches the mail's head and the program's arguments.
void requireAddress(const std::string& address)
{
    if (address.empty() || address.front() == '-' || !std::all_of(address.begin(), address.end(), isSafeInMail)
        || address.find_first_of(",;<>\"'\\()") != std::string::npos)
        refuse("'" + address + "' is no mail address: give one such as mail:anna@example.org.");
}

/// What is known of a run that has ended.
struct EndedRun {
    RunInfo run;
    std::string vault;
    std::string state;
    std::string text; ///< lines for a person
};

std::string textOf(
    const TaskHost& host, RunStore& runs, const RunInfo& run, const std::string& vault, const std::string& state)
{
    auto text = fmt::format("Run {} of '{}' in the vault {}: {}.\n", run.id, toUtf8(run.taskName), vault, state);
    if (!run.resultText.empty())
        text += toUtf8(run.resultText) + "\n";
    if (!run.launchNote.empty())
        text += toUtf8(run.launchNote) + "\n";
    std::size_t count = 0;
    for (const RunFileResult& result : runs.results(run.id)) {
        if (result.outcome != zn::FileOutcome::Failed && result.outcome != zn::FileOutcome::Skipped)
            continue;
        if (++count > mostFiles)
            continue;
        const auto& path = result.source.empty() ? result.output : result.source;
        text += fmt::format("{}  {}: {}\n", toUtf8(outcomeText(result.outcome)), host.files.toMachine(path).string(),
            toUtf8(result.sentence));
    }
    if (count > mostFiles)
        text += fmt::format("and {} more.\n", count - mostFiles);
    return text + fmt::format("'arkin task results {}' shows all files.\n", run.id);
}

NoticeCall commandCall(const std::string& command, const EndedRun& ended)
{
    const RunInfo& run = ended.run;
    NoticeCall call{wordsOf(command), {}, ended.text};
    const std::pair<const char*, std::string> values[] = {
        {"ARKIN_VAULT", ended.vault},
        {"ARKIN_RUN", std::to_string(run.id)},
        {"ARKIN_RUN_TASK", toUtf8(run.taskName)},
        {"ARKIN_RUN_USER", toUtf8(run.userName)},
        {"ARKIN_RUN_STATE", ended.state},
        {"ARKIN_RUN_FAILED", run.wentWell() ? "0" : "1"},
        {"ARKIN_RUN_OUTPUTS", std::to_string(run.outputsExpected)},
        {"ARKIN_RUN_MISSING", std::to_string(run.outputsMissing)},
        {"ARKIN_RUN_TEXT", toUtf8(run.resultText)},
    };
    for (const auto& [name, value] : values)
        call.environment.push_back(std::string(name) + "=" + value);
    return call;
}

NoticeCall mailCall(const std::string& address, const EndedRun& ended)
{
    auto subject = fmt::format("Run {}: {}", ended.run.id, ended.state);
    // A head has no other letters; the text names the task in any case.
    if (const auto task = toUtf8(ended.run.taskName); std::all_of(task.begin(), task.end(),
            [](char letter) { return letter == ' ' || isSafeInMail(static_cast<unsigned char>(letter)); }))
        subject = fmt::format("{}, run {}: {}", task, ended.run.id, ended.state);
    return {{mailProgram, "-i", "--", address}, {},
        fmt::format("To: {}\nSubject: {}\nAuto-Submitted: auto-generated\nMIME-Version: 1.0\n"
                    "Content-Type: text/plain; charset=UTF-8\nContent-Transfer-Encoding: 8bit\n\n{}",
            address, subject, ended.text)};
}

void addMessage(Database& database, std::int32_t run, const std::string& sentence)
{
    Transaction transaction(database);
    database.session() << "INSERT INTO task_run_messages (run_id, position, path, sentence) SELECT :id, COUNT(*), '', "
                          ":text FROM task_run_messages WHERE run_id = :same",
        use(run), use(sentence), use(run);
    transaction.commit();
}

/// Whether it is this process that tells of the run.
bool takeNotice(Database& database, std::int32_t run)
{
    Transaction transaction(database);
    soci::statement update
        = (database.session().prepare << "UPDATE task_runs SET notice_due = 0 WHERE id = :id AND notice_due = 1",
            use(run));
    update.execute(true);
    transaction.commit();
    return update.get_affected_rows() > 0;
}

std::vector<std::int32_t> endedAndUntold(const TaskHost& host)
{
    std::vector<std::int32_t> ids(64);
    host.database.session() << fmt::format("SELECT id FROM task_runs WHERE notice_due = 1 AND vault_id = :vault AND "
                                           "state IN ({}, {}, {}) ORDER BY id",
        static_cast<int>(zn::TaskRunState::Finished), static_cast<int>(zn::TaskRunState::Cancelled),
        static_cast<int>(zn::TaskRunState::FinishedWithErrors)),
        use(host.vaultId), into(ids);
    return ids;
}

void tellOf(const TaskHost& host, RunStore& runs, std::int32_t id, const NoticeSender& send)
{
    Notices notices;
    host.database.session() << "SELECT notice_failed, notice_ended FROM task_runs WHERE id = :id", use(id),
        into(notices.failed), into(notices.ended);
    EndedRun ended{runs.get(id), toUtf8(settingOf(host).vaultName), {}, {}};
    ended.state = toUtf8(stateText(ended.run, host.clock.now()));
    ended.text = textOf(host, runs, ended.run, ended.vault, ended.state);
    // Whoever cancels a run knows of it.
    const bool isFailure = !ended.run.wentWell() && ended.run.state != zn::TaskRunState::Cancelled;
    for (const std::string& notice : {isFailure ? notices.failed : std::string(), notices.ended}) {
        if (notice.empty())
            continue;
        const bool isMail = notice.starts_with(mailPrefix);
        const auto failure
            = send(isMail ? mailCall(notice.substr(mailPrefix.size()), ended) : commandCall(notice, ended));
        if (!failure.empty())
            addMessage(host.database, id, "The notice of the run's end by '" + notice + "' failed: " + failure);
    }
}

} // namespace

void requireNotice(const std::string& notice)
{
    if (notice.empty())
        return;
    if (notice.starts_with(mailPrefix))
        return requireAddress(notice.substr(mailPrefix.size()));
    const auto words = wordsOf(notice);
    if (words.empty() || !words.front().starts_with('/'))
        refuse("The command '" + notice
            + "' doesn't begin with the full path of a program, which is the same for every worker; a mail address is "
              "written mail:anna@example.org.");
}

void sendNotices(const TaskHost& host, const NoticeSender& send)
{
    const auto untold = endedAndUntold(host);
    RunStore runs(host.database, host.vaultId);
    for (const std::int32_t id : untold)
        if (takeNotice(host.database, id))
            tellOf(host, runs, id, send);
}

} // namespace zn::arkin
