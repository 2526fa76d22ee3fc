#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/store/LocalStatus.h"

#include <algorithm>

namespace zn::arkin {

namespace {

const char* wordOf(LocalState state)
{
    switch (state) {
    case LocalState::NotHere:
        return "not here";
    case LocalState::AsInVault:
        return "unchanged";
    case LocalState::Older:
        return "out of date";
    case LocalState::Changed:
        return "changed";
    case LocalState::Gone:
        return "gone";
    }
    return "";
}

class Status : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("FOLDER", m_folder, "Folder of the vault, with all below it; else the whole vault");
        take.flag("--mine", m_mine, "Leave out what others have checked out");
    }

    int run(Session& session) override
    {
        auto& vault = session.vault();
        auto files = localStatus(vault, m_folder.empty() ? vault.folders().rootId() : session.folderAt(m_folder));
        if (m_mine)
            std::erase_if(files, [&](const FileStatus& file) {
                const bool isOthers = file.checkOut && file.checkOut->user != vault.caller().user;
                return isOthers && file.local <= LocalState::AsInVault;
            });
        session.json() ? printJson(asJson(session, files)) : print(session, files);
        return commandDone;
    }

private:
    static std::string shownPath(Session& session, const FileStatus& file)
    {
        return session.shown(session.vault().pathOf(file.place));
    }

    static Json asJson(Session& session, const std::vector<FileStatus>& files)
    {
        auto list = Json::array();
        for (const FileStatus& file : files)
            list.push_back({{"path", shownPath(session, file)}, {"here", wordOf(file.local)},
                {"checkedOutBy", file.checkOut ? Json(file.checkOut->user) : nullptr},
                {"machine", file.checkOut ? Json(file.checkOut->machine) : nullptr},
                {"since", file.checkOut ? jsonTime(file.checkOut->takenAt) : nullptr},
                {"run", file.checkOut && file.checkOut->run != 0 ? Json(file.checkOut->run) : nullptr}});
        return list;
    }

    static void print(Session& session, const std::vector<FileStatus>& files)
    {
        std::vector<std::vector<std::string>> rows{{"HERE", "CHECKED OUT BY", "ON", "SINCE", "FILE"}};
        for (const FileStatus& file : files)
            rows.push_back({wordOf(file.local), file.checkOut ? file.checkOut->user : "",
                file.checkOut ? file.checkOut->machine : "", file.checkOut ? shownTime(file.checkOut->takenAt) : "",
                shownPath(session, file)});
        printTable(rows, "Nothing is checked out, and all local copies are the latest versions.");
    }

    std::string m_folder;
    bool m_mine = false;
};

} // namespace

MadeCommand statusCommand() { return std::make_unique<Status>(); }

} // namespace zn::arkin
