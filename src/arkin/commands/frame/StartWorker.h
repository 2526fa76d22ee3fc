#pragma once

#include "arkin/commands/frame/Session.h"

namespace zn::arkin {

/// Starts a worker on the session's vault that outlives this process: the user's service if it was installed with this
/// program, works on this home and isn't running yet, else a process whose words go to "worker.log" in the home's
/// cache. Returns when the worker has entered itself into the database. Raises `StatusError` with a sentence if it ends
/// before, with its last words, or if nothing is heard of it for some seconds.
void startWorker(Session& session);

} // namespace zn::arkin
