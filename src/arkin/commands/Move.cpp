#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/store/MoveFiles.h"
#include "base/Paths.h"

#include <iostream>

namespace zn::arkin {

namespace {

/// Files and folders on their way, with what is said of them.
struct Moves {
    std::vector<FileMove> files;
    std::vector<FolderMove> folders;
    std::vector<std::pair<std::string, zn::Text>> paths; ///< from, as it was shown then, and to
};

/// What `mv` and `rename` share.
class MoveCommand : public Command {
public:
    int run(Session& session) override
    {
        Moves moves;
        plan(session, moves);
        const auto broken = move(session, moves);
        if (session.json())
            printJson(told(session, moves, broken));
        else
            print(session, moves, broken);
        return commandDone;
    }

protected:
    void declareAnyway(Arguments& take)
    {
        take.flag("--anyway", m_anyway, "Also where references that stand in documents break");
    }

    void add(Session& session, Moves& moves, const std::string& source, std::int32_t toFolder, zn::TextView name) const
    {
        const auto path = session.vaultPathOf(source);
        auto& vault = session.vault();
        zn::Text target(name);
        if (const auto folder = vault.findFolder(path)) {
            if (name.empty())
                target = zn::pathFileName(vault.folders().pathOf(*folder));
            moves.folders.push_back({*folder, toFolder, target});
        } else {
            const Place place = session.fileAt(source);
            if (name.empty())
                target = vault.file(place.fileId).name;
            moves.files.push_back({place, toFolder, target});
        }
        moves.paths.emplace_back(session.shown(path), vault.local().pathOf(toFolder, target));
    }

private:
    virtual void plan(Session& session, Moves& moves) = 0;

    std::vector<BrokenReference> move(Session& session, const Moves& moves) const
    {
        try {
            return moveInVault(session.vault(), moves.files, moves.folders,
                m_anyway ? BrokenReferences::Accept : BrokenReferences::Refuse);
        } catch (const zn::StatusError& error) {
            if (error.status() != E_ARK_REFERENCED)
                throw;
            throw zn::StatusError(error.status(), std::string(error.what()) + " --anyway moves them all the same.");
        }
    }

    static Json told(Session& session, const Moves& moves, const std::vector<BrokenReference>& broken)
    {
        auto moved = Json::array(), lost = Json::array();
        for (const auto& [from, to] : moves.paths)
            moved.push_back({{"from", from}, {"to", session.shown(to)}});
        for (const auto& reference : broken)
            lost.push_back({{"document", zn::toUtf8(session.vault().file(reference.fileId).name)},
                {"path", reference.path}, {"target", zn::toUtf8(session.vault().file(reference.toFileId).name)}});
        return {{"moved", moved}, {"broken", lost}};
    }

    static void print(Session& session, const Moves& moves, const std::vector<BrokenReference>& broken)
    {
        for (const auto& [from, to] : moves.paths)
            std::cout << from << " is now " << session.shown(to) << ".\n";
        for (const auto& reference : broken)
            std::cerr << "arkin: " << zn::toUtf8(session.vault().file(reference.fileId).name) << " refers to "
                      << reference.path << ", which it doesn't find there any more.\n";
    }

    bool m_anyway = false;
};

class Move : public MoveCommand {
public:
    void declare(Arguments& take) override
    {
        take.option("PATH", m_paths, "Files and folders of the vault, and last the folder they go to, or a new path")
            .required();
        declareAnyway(take);
    }

private:
    void plan(Session& session, Moves& moves) override
    {
        if (m_paths.size() < 2)
            throw zn::StatusError(zn::E_INVALIDARG, "Say what goes where: 'arkin mv PATH... FOLDER'.");
        const auto target = session.vaultPathOf(m_paths.back());
        m_paths.pop_back();
        if (const auto folder = session.vault().findFolder(target)) {
            for (const auto& path : m_paths)
                add(session, moves, path, *folder, {});
            return;
        }
        const auto parent = session.vault().findFolder(zn::pathFolder(target));
        if (m_paths.size() > 1 || !parent)
            throw zn::StatusError(E_ARK_NOT_IN_VAULT,
                "The vault has no folder " + session.shown(m_paths.size() > 1 ? target : zn::pathFolder(target)) + ".");
        add(session, moves, m_paths.front(), *parent, zn::pathFileName(target));
    }

    std::vector<std::string> m_paths;
};

class Rename : public MoveCommand {
public:
    void declare(Arguments& take) override
    {
        take.option("PATH", m_path, "File or folder of the vault").required();
        take.option("NAME", m_name, "What it is to be named").required();
        declareAnyway(take);
    }

private:
    void plan(Session& session, Moves& moves) override
    {
        const auto name = zn::toText(m_name);
        if (name.find_first_of(u"/\\") != zn::Text::npos)
            throw zn::StatusError(
                E_ARK_BAD_NAME, "'" + m_name + "' is a path; 'arkin mv' moves files to other folders.");
        const auto folder = session.vault().findFolder(zn::pathFolder(session.vaultPathOf(m_path)));
        add(session, moves, m_path, folder.value_or(session.vault().info().rootFolderId), name);
    }

    std::string m_path;
    std::string m_name;
};

} // namespace

MadeCommand moveCommand() { return std::make_unique<Move>(); }

MadeCommand renameCommand() { return std::make_unique<Rename>(); }

} // namespace zn::arkin
