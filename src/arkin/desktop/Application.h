#pragma once

#include <memory>
#include <string>

class QApplication;

namespace zn::arkin {

/// The toolkit's application object of a program that is no window program in itself. One a process.
class Application {
public:
    /// `platform` as `Display` has it.
    explicit Application(const std::string& platform);
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;
    ~Application();

private:
    // The toolkit keeps references to its command line.
    int m_count = 3;
    std::string m_words[3];
    char* m_arguments[4] = {};
    std::unique_ptr<QApplication> m_application;
};

} // namespace zn::arkin
