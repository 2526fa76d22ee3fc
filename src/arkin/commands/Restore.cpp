#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/store/Codes.h"
#include "arkin/store/Restore.h"
#include "base/Paths.h"

#include <algorithm>
#include <iostream>

namespace zn::arkin {

namespace {

class Restore : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("PATH", m_path, "File that was deleted, or with --version one that is there").required();
        take.option("--version", m_version, "Make this version of the file the newest one").range(1, INT32_MAX);
        take.flag("--list", m_list, "List the files that were deleted from the folder PATH");
    }

    int run(Session& session) override
    {
        if (m_list)
            return list(session);
        auto& vault = session.vault();
        std::int32_t version = 0;
        if (m_version > 0) {
            version = restoreVersion(vault, session.fileAt(m_path), m_version);
        } else {
            const auto file = deletedAt(session);
            restoreFile(vault, file);
            version = file.latestVersion;
        }
        const auto path = session.shown(session.vaultPathOf(m_path));
        if (session.json())
            printJson({{"path", path}, {"version", version}});
        else if (m_version > 0)
            std::cout << path << " has version " << m_version << "'s content again, as version " << version << ".\n";
        else
            std::cout << path << " is there again, with version " << version << ".\n";
        return commandDone;
    }

private:
    DeletedFile deletedAt(Session& session) const
    {
        const auto path = session.vaultPathOf(m_path);
        const auto folder = session.vault().findFolder(zn::pathFolder(path));
        if (folder) {
            const auto files = deletedFiles(session.vault(), *folder);
            const auto found = std::find_if(files.begin(), files.end(),
                [&](const DeletedFile& file) { return zn::equalNoCase(file.name, zn::pathFileName(path)); });
            if (found != files.end())
                return *found;
        }
        throw zn::StatusError(E_ARK_NOT_IN_VAULT,
            "No file was deleted at " + session.shown(path) + ". 'arkin restore --list' lists them.");
    }

    int list(Session& session) const
    {
        auto entries = Json::array();
        std::vector<std::vector<std::string>> rows{{"NAME", "VERSION", "DELETED", "BY"}};
        for (const auto& file : deletedFiles(session.vault(), session.folderAt(m_path))) {
            const auto name = zn::toUtf8(file.name);
            entries.push_back({{"name", name}, {"version", file.latestVersion}, {"deleted", jsonTime(file.deletedAt)},
                {"by", file.deletedBy}});
            rows.push_back({name, std::to_string(file.latestVersion), shownTime(file.deletedAt), file.deletedBy});
        }
        if (session.json())
            printJson(entries);
        else
            printTable(rows, "No file was deleted from this folder.");
        return commandDone;
    }

    std::string m_path;
    std::int32_t m_version = 0;
    bool m_list = false;
};

} // namespace

MadeCommand restoreCommand() { return std::make_unique<Restore>(); }

} // namespace zn::arkin
