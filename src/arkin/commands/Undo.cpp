#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/FileByFile.h"

#include "arkin/store/CheckOut.h"
#include "arkin/store/GiveUp.h"
#include "arkin/tasks/RunStore.h"

namespace zn::arkin {

namespace {

class Undo : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("FILE", m_files, "Files of the vault").required();
        take.flag("--force", m_force, "Give up what another user, another machine or a run has checked out");
        take.option("--reason", m_reason, "Why, for the file's history; needed with --force").shownAs("TEXT");
    }

    int run(Session& session) override
    {
        if (m_force && m_reason.empty())
            throw zn::commandline::WrongUse("--force needs --reason TEXT, which the file's history keeps");
        if (!m_force && !m_reason.empty())
            throw zn::commandline::WrongUse("--reason goes with --force");
        FileByFile files(session, m_force ? forced(session) : own());
        for (const auto& file : m_files)
            files.work([&] { return session.fileAt(file); });
        return files.end();
    }

private:
    static FileByFile::Action own()
    {
        return {
            [](Vault& vault, const Place& place) { undoCheckOut(vault, place.fileId); }, "is as in the vault again"};
    }

    FileByFile::Action forced(Session& session)
    {
        return {[this, &session](Vault& vault, const Place& place) {
                    const auto row = vault.files().checkOut(place.fileId);
                    if (!row)
                        return void(requireMine(vault, place.fileId)); // raises that nobody has it
                    requireIdleRun(session, row->run);
                    giveUp(vault, *row, m_reason);
                },
            "is nobody's any more; the local copy of its check-out stays as it is"};
    }

    static void requireIdleRun(Session& session, std::int32_t id)
    {
        if (id == 0)
            return;
        RunStore runs(session.store().database(), session.vault().info().id);
        const auto now = session.platform().clock().now();
        for (const RunInfo& run : runs.list())
            if (run.id == id && run.taken() && !workerDied(run, now))
                throw zn::StatusError(zn::E_INVALIDARG,
                    "Run " + std::to_string(id)
                        + " is still at work and needs its files. Cancel it first, by 'arkin task cancel'.");
    }

    std::vector<std::string> m_files;
    bool m_force = false;
    std::string m_reason;
};

} // namespace

MadeCommand undoCommand() { return std::make_unique<Undo>(); }

} // namespace zn::arkin
