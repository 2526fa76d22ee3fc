#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/store/CheckIn.h"

#include <iostream>

namespace zn::arkin {

namespace {

class CheckIn : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("FILE", m_files, "Files of the vault").required();
        take.option("-m,--comment", m_comment, "Comment of the new versions");
    }

    int run(Session& session) override
    {
        std::vector<Place> places;
        for (const auto& file : m_files)
            places.push_back(session.fileAt(file));
        auto made = Json::array();
        for (const auto& each : checkIn(session.vault(), planCheckIn(session.vault(), places), zn::toText(m_comment))) {
            const auto name = zn::toUtf8(session.vault().file(each.fileId).name);
            made.push_back({{"file", name}, {"version", each.version}});
            if (!session.json())
                std::cout << name << " is checked in as version " << each.version << ".\n";
            printNote(each.note);
        }
        if (session.json())
            printJson(made);
        else if (made.empty())
            std::cout << "Nothing to check in: the files are not checked out and have not been changed.\n";
        return commandDone;
    }

private:
    std::vector<std::string> m_files;
    std::string m_comment;
};

} // namespace

MadeCommand checkInCommand() { return std::make_unique<CheckIn>(); }

} // namespace zn::arkin
