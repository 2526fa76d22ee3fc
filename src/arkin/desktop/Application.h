#pragma once

#include <memory>
#include <string>

class QApplication;

namespace arkin {

/// The toolkit's application object of a program that is no window program in itself. One a process.
class Application {
public:
    /// `platform` as `Display` has it. `attended` false tells pages that nobody sees their message boxes.
    Application(const std::string& platform, bool attended);
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;
    ~Application();

private:
    std::unique_ptr<QApplication> m_application;
};

/// The sentences that pages had for nobody since the last call.
std::string takeUnspoken();

} // namespace arkin
