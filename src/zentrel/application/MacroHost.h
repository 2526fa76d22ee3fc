#pragma once

#include "language/Host.h"
#include "language/LineWatcher.h"
#include "zentrel/application/Application.h"

namespace zn::zentrel {

/// The application as a running macro sees it.
class MacroHost : public zn::language::Host, private zn::language::LineWatcher {
public:
    /// `application` outlives the host.
    explicit MacroHost(Application& application)
        : m_application(application)
    {
    }

    Value global(MemberCall& call) override;
    DispatchRef createObject(const Text& programId) override;
    Value callDeclared(zn::language::DeclaredCall& call) override;
    void debugPrint(const Text& line) override;
    /// Nobody sits at the screen: the box goes to the log, and its default button is the answer.
    std::int32_t messageBox(const zn::language::MessageBox& box) override;
    Text inputBox(const zn::language::InputBox& box) override;
    bool stopRequested() override;
    /// Where the surroundings want a trace.
    zn::language::LineWatcher* watcher() override;

private:
    void line(const zn::language::WatchedLine& line) override;
    void changed(const zn::language::WatchedChange& change) override;
    DispatchRef application();

    Application& m_application;
};

/// The functions of the machine's libraries that macros declare. Raises `DISP_E_MEMBERNOTFOUND` for others, and
/// `pathRefused` where the macro may not go.
Value callDeclaredFunction(zn::FileSystem& files, Confinement& confinement, zn::language::DeclaredCall& call);

/// The button that a box has ready: the answer of whoever just presses Enter.
std::int32_t defaultAnswer(std::int32_t buttons);

} // namespace zn::zentrel
