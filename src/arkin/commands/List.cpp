#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"
#include "base/Paths.h"

namespace zn::arkin {

namespace {

class List : public Command {
public:
    void declare(Arguments& take) override { take.option("FOLDER", m_folder, "Folder of the vault; else its root"); }

    int run(Session& session) override
    {
        auto& vault = session.vault();
        const auto folder = m_folder.empty() ? vault.folders().rootId() : session.folderAt(m_folder);
        vault.permissions().require(folder, Right::Read);
        auto entries = Json::array();
        for (const auto child : vault.folders().children(folder))
            entries.push_back(
                {{"name", zn::toUtf8(zn::pathFileName(vault.folders().pathOf(child)))}, {"kind", "folder"},
                    {"version", nullptr}, {"changed", nullptr}, {"size", nullptr}, {"checkedOutBy", nullptr}});
        for (const auto& file : vault.files().inFolder(folder))
            entries.push_back(entryOf(vault, file));
        if (session.json())
            printJson(entries);
        else
            print(entries);
        return commandDone;
    }

private:
    static Json entryOf(Vault& vault, const FileRow& file)
    {
        const auto version = vault.files().version(file.id, file.latestVersion);
        const auto checkOut = vault.files().checkOut(file.id);
        Json entry{{"name", zn::toUtf8(file.name)}, {"kind", "file"}, {"version", file.latestVersion},
            {"changed", jsonTime(version ? version->madeAt : 0)}};
        entry["size"] = version ? Json(version->content.size) : Json(nullptr);
        entry["checkedOutBy"] = checkOut ? Json(checkOut->user) : Json(nullptr);
        return entry;
    }

    static void print(const Json& entries)
    {
        std::vector<std::vector<std::string>> rows{{"NAME", "VERSION", "SIZE", "CHECKED OUT BY"}};
        for (const auto& entry : entries) {
            const auto name = entry["name"].get<std::string>();
            if (entry["kind"] == "folder")
                rows.push_back({name + "/", "", "", ""});
            else
                rows.push_back({name, std::to_string(entry["version"].get<int>()),
                    entry["size"].is_null() ? "" : shownCount(entry["size"].get<std::int64_t>()),
                    entry["checkedOutBy"].is_null() ? "" : entry["checkedOutBy"].get<std::string>()});
        }
        printTable(rows, "The folder is empty.");
    }

    std::string m_folder;
};

} // namespace

MadeCommand listCommand() { return std::make_unique<List>(); }

} // namespace zn::arkin
