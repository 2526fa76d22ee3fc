#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"
#include "arkin/store/FolderListing.h"
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
        std::optional<ListedFile> file;
    };

    void collect(Vault& vault, std::int32_t folder, const std::string& above, std::vector<Entry>& entries) const
    {
        for (const auto child : vault.folders().children(folder)) {
            const std::string name = above + zn::toUtf8(zn::pathFileName(vault.folders().pathOf(child)));
            entries.push_back({name, {}});
            if (m_recursive && vault.permissions().allowed(child, Right::Read))
                collect(vault, child, name + "/", entries);
        }
        for (auto& file : listFolder(vault, folder)) {
            std::string name = above + file.name;
            entries.push_back({std::move(name), std::move(file)});
        }
    }

    static Json asJson(const std::vector<Entry>& entries)
    {
        auto list = Json::array();
        for (const auto& [name, file] : entries) {
            const bool isOut = file && !file->checkedOutBy.empty();
            list.push_back({{"name", name}, {"kind", file ? "file" : "folder"},
                {"version", file ? Json(file->latestVersion) : nullptr}, {"changed", jsonTime(file ? file->madeAt : 0)},
                {"size", file && file->size ? Json(*file->size) : nullptr},
                {"state", file ? Json(file->state) : nullptr},
                {"checkedOutBy", isOut ? Json(file->checkedOutBy) : nullptr},
                {"checkedOutOn", isOut ? Json(file->machine) : nullptr}});
        }
        return list;
    }

    static void print(const std::vector<Entry>& entries)
    {
        std::vector<std::vector<std::string>> rows{{"NAME", "VERSION", "SIZE", "CHECKED OUT BY"}};
        for (const auto& [name, file] : entries)
            rows.push_back({file ? name : name + "/", file ? std::to_string(file->latestVersion) : "",
                file && file->size ? shownCount(*file->size) : "", file ? file->checkedOutBy : ""});
        printTable(rows, "The folder is empty.");
    }

    std::string m_folder;
    bool m_recursive = false;
};

} // namespace

MadeCommand listCommand() { return std::make_unique<List>(); }

} // namespace zn::arkin
