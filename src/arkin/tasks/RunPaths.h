#pragma once

#include "arkin/store/ActingRun.h"
#include "arkin/tasks/PathIndex.h"
#include "arkin/tasks/RoomWait.h"
#include "arkin/tasks/RunClaim.h"
#include "contracts/host/ArkTask.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"

#include <functional>

namespace zn::arkin {

/// The paths that a run keeps for itself while it is at work. Two runs that would write the same file, or need the same
/// local copy in two versions, would damage each other without either noticing: the later one waits.
///
/// A run keeps what it announced together with what it fetches, at once and before it has anything else, so that two
/// runs can't wait for each other there. Files that nobody announced, as scripts write them, are kept one by one; a run
/// that would then wait for one that waits for it gets E_ARK_RUNS_CROSS. Paths count, not vaults: a folder outside of
/// all vaults is the same for everybody. A run that has ended, or whose worker died, keeps nothing.
class RunPaths final : public ActingRun {
public:
    /// Called with a sentence when the run begins to wait, and with an empty one when it goes on.
    using WaitWatcher = std::function<void(const std::string& sentence)>;

    RunPaths(const RunClaim& claim, zn::Clock& clock, zn::FileSystem& files, RoomWait& room, WaitWatcher watcher);
    RunPaths(const RunPaths&) = delete;
    RunPaths& operator=(const RunPaths&) = delete;

    std::int32_t id() const override { return m_claim.run().id; }
    void requireHeld() override { m_claim.requireHeld(); }
    /// Raises `StatusError` E_ARK_RUNS_CROSS, E_ABORT when the run was cancelled meanwhile, E_ARK_RUN_TAKEN_OVER.
    bool keepLocalCopies(std::span<const LocalCopyUse> copies) override;

    bool keepsIdentical() const override { return m_claim.run().keepsIdentical; }
    void noteIdentical(std::int32_t fileId, std::int32_t version) override { m_identical[fileId] = version; }
    /// The files that check-ins have left in the version that they had.
    const VersionsByFile& identical() const { return m_identical; }

    bool awaitRoom(const std::string& sentence) override { return m_room.await(sentence); }

    /// What the run is going to write; kept with the next local copies.
    void announce(const std::vector<zn::ArkOutputNames>& names);
    /// Returns when the run may write the file. Raises as `keepLocalCopies`.
    void keepOutput(zn::TextView path);

private:
    bool keep(const std::vector<KeptPath>& wanted);
    bool tryToKeep(const std::vector<KeptPath>& wanted);
    std::vector<RunInfo> othersAtWork();
    std::vector<KeptPath> keptBy(std::int32_t runId);
    void write(const std::vector<KeptPath>& paths);
    void setWaitsFor(std::int32_t runId);
    bool waitsForThis(std::int32_t runId);
    void awaitEnd(const RunInfo& other, const KeptPath& path);
    /// As a person knows it; paths are kept in small letters.
    std::string shown(const std::string& kept) { return m_files.shown(zn::toText(kept)); }

    RunClaim m_claim;
    zn::Clock& m_clock;
    zn::FileSystem& m_files;
    RoomWait& m_room;
    WaitWatcher m_watcher;
    std::vector<KeptPath> m_announced;
    VersionsByFile m_identical;
    PathIndex m_kept{{}}; ///< the outputs that were announced and are this run's by now
    std::int32_t m_rows = 0;
};

} // namespace zn::arkin
