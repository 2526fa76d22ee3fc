#pragma once

#include "arkin/tasks/TaskHost.h"

#include <functional>
#include <string>
#include <vector>

namespace zn::arkin {

/// Stands for the system's mailer as the program of a `NoticeCall`.
inline constexpr const char* mailProgram = "sendmail";

/// A program that tells somebody of a run's end.
struct NoticeCall {
    std::vector<std::string> arguments;   ///< the first is the program: its full path, or `mailProgram`
    std::vector<std::string> environment; ///< "NAME=VALUE"
    std::string input;                    ///< what it reads
};

/// Runs the program to its end, with a limit of time and without a shell. A sentence if that went wrong, else empty.
using NoticeSender = std::function<std::string(const NoticeCall&)>;

/// Raises `StatusError` E_INVALIDARG with a sentence unless this is a notice: a command line whose program is given by
/// its full path, with quotes and backslashes as a shell takes them but nothing else of a shell, "mail:" with an
/// address, or nothing.
void requireNotice(const std::string& notice);

/// Tells of the runs that have ended since the last call, whoever ended them, as their tasks said at their launch. Each
/// run is told of by one process, once: one that dies over it isn't made up for. What goes wrong becomes a message of
/// the run, which stays as it ended.
void sendNotices(const TaskHost& host, const NoticeSender& send);

} // namespace zn::arkin
