#include "arkin/commands/frame/FileByFile.h"

#include "arkin/commands/frame/Output.h"
#include "commandline/Failure.h"

#include <iostream>

namespace zn::arkin {

void FileByFile::work(const std::function<Place()>& where)
{
    try {
        const auto place = where();
        // Of a file that leaves the vault the path can't be asked for afterwards.
        const auto path = m_session.shown(m_session.vault().pathOf(place));
        m_action.act(m_session.vault(), place);
        m_paths.push_back(path);
        if (!m_session.json())
            std::cout << path << " " << m_action.done << ".\n";
    } catch (const zn::StatusError&) {
        m_failed = true;
        commandline::tellFailure("arkin", currentFailure().sentence, commandFailed, m_session.json());
    }
}

int FileByFile::end()
{
    if (m_session.json())
        printJson(m_paths);
    return m_failed ? commandFailed : commandDone;
}

} // namespace zn::arkin
