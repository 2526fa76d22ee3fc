#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"
#include "base/Paths.h"

namespace zn::arkin {

namespace {

class List : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("FOLDER", m_folder, "Folder of the vault; else its root");
        take.flag("-R,--recursive", m_recursive, "List the folders below it, too, as far as they may be read");
    }

    int run(Session& session) override
    {
        auto& vault = session.vault();
        const auto folder = m_folder.empty() ? vault.folders().rootId() : session.folderAt(m_folder);
        vault.permissions().require(folder, Right::Read);
        std::vector<Entry> entries;
        collect(vault, folder, "", entries);
        if (session.json())
            printJson(asJson(entries));
        else
            print(entries);
        return commandDone;
    }

private:
    /// A folder has but its name.
    struct Entry {
        std::string name;
        std::optional<FileRow> file;
        std::optional<VersionRow> latest;
        std::optional<CheckOutRow> checkOut;
    };

    void collect(Vault& vault, std::int32_t folder, const std::string& above, std::vector<Entry>& entries) const
    {
        for (const auto child : vault.folders().children(folder)) {
            const std::string name = above + zn::toUtf8(zn::pathFileName(vault.folders().pathOf(child)));
            entries.push_back({name, {}, {}, {}});
            if (m_recursive && vault.permissions().allowed(child, Right::Read))
                collect(vault, child, name + "/", entries);
        }
        for (const auto& file : vault.files().inFolder(folder))
            entries.push_back({above + zn::toUtf8(file.name), file, vault.files().version(file.id, file.latestVersion),
                vault.files().checkOut(file.id)});
    }

    static Json asJson(const std::vector<Entry>& entries)
    {
        auto list = Json::array();
        for (const auto& [name, file, latest, checkOut] : entries)
            list.push_back({{"name", name}, {"kind", file ? "file" : "folder"},
                {"version", file ? Json(file->latestVersion) : nullptr},
                {"changed", jsonTime(latest ? latest->madeAt : 0)},
                {"size", latest ? Json(latest->content.size) : nullptr},
                {"checkedOutBy", checkOut ? Json(checkOut->user) : nullptr}});
        return list;
    }

    static void print(const std::vector<Entry>& entries)
    {
        std::vector<std::vector<std::string>> rows{{"NAME", "VERSION", "SIZE", "CHECKED OUT BY"}};
        for (const auto& [name, file, latest, checkOut] : entries)
            rows.push_back({file ? name : name + "/", file ? std::to_string(file->latestVersion) : "",
                latest ? shownCount(latest->content.size) : "", checkOut ? checkOut->user : ""});
        printTable(rows, "The folder is empty.");
    }

    std::string m_folder;
    bool m_recursive = false;
};

} // namespace

MadeCommand listCommand() { return std::make_unique<List>(); }

} // namespace zn::arkin
