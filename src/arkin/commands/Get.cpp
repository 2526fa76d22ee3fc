#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/store/CopyOut.h"

#include <iostream>
#include <set>

namespace zn::arkin {

namespace {

class Get : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("FILE", m_files, "Files of the vault, or folders: all that is in them").required();
        take.option("--version", m_version, "Version to bring; else the latest").range(1, INT32_MAX);
        take.flag("--references", m_references, "Bring the files that it refers to, too");
        take.flag("--discard", m_discard, "Overwrite local changes that the vault doesn't have");
        take.option("--output", m_output, "Folder for copies of one's own, in place of the vault's local folder")
            .shownAs("DIR");
    }

    int run(Session& session) override
    {
        auto& vault = session.vault();
        std::vector<GetRequest> requests;
        for (const auto& file : m_files) {
            if (const auto folder = vault.findFolder(session.vaultPathOf(file)))
                addFolder(vault, *folder, requests);
            else
                requests.push_back({session.fileAt(file), m_version});
        }
        removeRepeated(requests);
        if (m_version > 0 && requests.size() != 1)
            throw zn::StatusError(zn::E_INVALIDARG, "Versions are each file's own: use --version with one file.");
        if (m_references)
            requests = withReferences(vault, requests, true).files;
        const std::vector<std::string> paths = m_output.empty() ? here(session, requests) : copies(session, requests);
        if (session.json())
            printJson(paths);
        else
            for (const auto& path : paths)
                std::cout << path << "\n";
        return commandDone;
    }

private:
    /// What the user may read of a folder and those in it, each file in its latest version.
    static void addFolder(Vault& vault, std::int32_t folder, std::vector<GetRequest>& requests)
    {
        const auto files = vault.files().inFolder(folder);
        requests.reserve(requests.size() + files.size());
        for (const auto& file : files)
            requests.push_back({{file.id, folder}, 0});
        for (const auto child : vault.folders().children(folder))
            if (vault.permissions().allowed(child, Right::Read))
                addFolder(vault, child, requests);
    }

    /// A folder and a file of it may both be named.
    static void removeRepeated(std::vector<GetRequest>& requests)
    {
        std::set<std::pair<std::int32_t, std::int32_t>> known;
        std::erase_if(requests, [&](const GetRequest& request) {
            return !known.emplace(request.place.fileId, request.place.folderId).second;
        });
    }

    std::vector<std::string> here(Session& session, const std::vector<GetRequest>& requests) const
    {
        Vault& vault = session.vault();
        getFiles(vault, requests, m_discard ? LocalChanges::Discard : LocalChanges::Refuse);
        std::vector<std::string> paths;
        paths.reserve(requests.size());
        for (const auto& request : requests)
            paths.push_back(session.shown(vault.pathOf(request.place)));
        return paths;
    }

    std::vector<std::string> copies(Session& session, const std::vector<GetRequest>& requests) const
    {
        std::vector<std::string> paths;
        for (const auto& path : copyOut(session.vault(), requests, m_output, m_discard))
            paths.push_back(path.string());
        return paths;
    }

    std::filesystem::path m_output;
    std::vector<std::string> m_files;
    std::int32_t m_version = 0;
    bool m_references = false;
    bool m_discard = false;
};

} // namespace

MadeCommand getCommand() { return std::make_unique<Get>(); }

} // namespace zn::arkin
