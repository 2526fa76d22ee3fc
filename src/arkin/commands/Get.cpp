#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/store/CopyOut.h"

#include <iostream>

namespace zn::arkin {

namespace {

class Get : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("FILE", m_file, "File of the vault").required();
        take.option("--version", m_version, "Version to bring; else the latest").range(1, INT32_MAX);
        take.flag("--references", m_references, "Bring the files that it refers to, too");
        take.flag("--discard", m_discard, "Overwrite local changes that the vault doesn't have");
        take.option("--output", m_output, "Folder for copies of one's own, in place of the vault's local folder")
            .shownAs("DIR");
    }

    int run(Session& session) override
    {
        auto& vault = session.vault();
        const auto place = session.fileAt(m_file);
        std::vector<GetRequest> requests{{place, m_version}};
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
    std::vector<std::string> here(Session& session, const std::vector<GetRequest>& requests) const
    {
        Vault& vault = session.vault();
        getFiles(vault, requests, m_discard ? LocalChanges::Discard : LocalChanges::Refuse);
        std::vector<std::string> paths;
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
    std::string m_file;
    std::int32_t m_version = 0;
    bool m_references = false;
    bool m_discard = false;
};

} // namespace

MadeCommand getCommand() { return std::make_unique<Get>(); }

} // namespace zn::arkin
