#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/FileByFile.h"

#include "arkin/store/CheckOut.h"
#include "arkin/store/DeleteFile.h"

namespace zn::arkin {

namespace {

/// The subcommands that do one thing with each of some files.
class FileActionCommand : public Command {
public:
    explicit FileActionCommand(FileByFile::Action action)
        : m_action(std::move(action))
    {
    }

    void declare(Arguments& take) override { take.option("FILE", m_files, "Files of the vault").required(); }

    int run(Session& session) override
    {
        FileByFile files(session, m_action);
        for (const auto& file : m_files)
            files.work([&] { return session.fileAt(file); });
        return files.end();
    }

private:
    FileByFile::Action m_action;
    std::vector<std::string> m_files;
};

MadeCommand fileActionCommand(FileByFile::Action action)
{
    return std::make_unique<FileActionCommand>(std::move(action));
}

} // namespace

MadeCommand checkOutCommand() { return fileActionCommand({checkOut, "is checked out"}); }

MadeCommand deleteCommand() { return fileActionCommand({deleteFile, "is deleted; 'arkin restore' brings it back"}); }

} // namespace zn::arkin
