#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include <iostream>

namespace zn::arkin {

namespace {

class ReferencesCommand : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("FILE", m_file, "File of the vault").required();
        take.option("--version", m_version, "Version of the file; else the latest").range(1, INT32_MAX);
    }

    int run(Session& session) override
    {
        auto& vault = session.vault();
        const auto place = session.fileAt(m_file);
        const auto version = vault.version(place.fileId, m_version).version;
        std::vector<End> to, by;
        for (const auto& row : vault.references().from(place.fileId, version))
            to.push_back({pathOf(session, {row.toFileId, row.toFolderId}), row.toVersion, 0});
        for (const auto& row : vault.references().to(place.fileId))
            by.push_back({pathOf(session, anyPlace(vault, row.fileId)), row.version, row.toVersion});
        if (session.json())
            printJson(asJson(version, to, by));
        else
            print(version, to, by);
        return commandDone;
    }

private:
    /// The file at the other end of a reference.
    struct End {
        std::string path;
        std::int32_t version = 0;
        std::int32_t toVersion = 0; ///< of this file, for one that refers to it
    };

    static Place anyPlace(Vault& vault, std::int32_t fileId)
    {
        const auto folders = vault.files().foldersOf(fileId);
        return {fileId, folders.empty() ? 0 : folders.front()};
    }

    /// A file that no folder shows any more has its name only.
    static std::string pathOf(Session& session, const Place& place)
    {
        const auto row = session.vault().files().row(place.fileId);
        if (!row || row->deleted || place.folderId == 0)
            return (row ? zn::toUtf8(row->name) : "file " + std::to_string(place.fileId)) + " (deleted)";
        return session.shown(session.vault().pathOf(place));
    }

    static Json asJson(std::int32_t version, const std::vector<End>& to, const std::vector<End>& by)
    {
        auto refersTo = Json::array(), referredToBy = Json::array();
        for (const auto& end : to)
            refersTo.push_back({{"path", end.path}, {"version", end.version}});
        for (const auto& end : by)
            referredToBy.push_back({{"path", end.path}, {"version", end.version}, {"toVersion", end.toVersion}});
        return {{"version", version}, {"refersTo", refersTo}, {"referredToBy", referredToBy}};
    }

    static void print(std::int32_t version, const std::vector<End>& to, const std::vector<End>& by)
    {
        if (to.empty())
            std::cout << "Version " << version << " refers to no file.\n";
        for (const auto& end : to)
            std::cout << "refers to      " << end.path << " version " << end.version << "\n";
        for (const auto& end : by)
            std::cout << "referred to by " << end.path << " version " << end.version << "\n";
    }

    std::string m_file;
    std::int32_t m_version = 0;
};

} // namespace

MadeCommand referencesCommand() { return std::make_unique<ReferencesCommand>(); }

} // namespace zn::arkin
