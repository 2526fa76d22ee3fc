#pragma once

#include "arkin/commands/frame/Output.h"

#include "arkin/tasks/RunInstance.h"
#include "arkin/tasks/RunStore.h"

namespace zn::arkin {

/// "convert", "print", "script"; Unknown for another word.
zn::TaskKind kindOf(const std::string& word);
std::string kindWord(zn::TaskKind kind);

Json toJson(Session& session, const RunInfo& run);
/// What a person wants to know of one run, several lines.
void printRun(Session& session, const RunInfo& run);
/// One line for a run that has ended: "Run 3 of 'Convert': finished.", with the reported text, and where to look if it
/// wrote a log: a run can finish without errors of its own and yet have something to say about single files.
std::string endLine(Session& session, const RunInfo& run);
/// What a run says about a file, for a terminal: "/vault/a.step: The file …".
std::string messageLine(Session& session, const RunMessage& message);
Json toJson(Session& session, const RunFileResult& result);
/// "18 made, 2 replaced, 6 failed"; empty for no results.
std::string countsText(const std::vector<RunFileResult>& results);
/// "/vault/a.step (Default) -> /vault/out/a.stl version 2", or what went wrong with it.
std::string resultLine(Session& session, const RunFileResult& result);
/// A progress text is a path of the vault's files, or a plain text.
std::string shownProgress(Session& session, const zn::Text& text);
/// Full path of a run's log as its task settles it; empty if the task keeps none.
zn::Text logPath(Session& session, const RunInfo& run);

} // namespace zn::arkin
