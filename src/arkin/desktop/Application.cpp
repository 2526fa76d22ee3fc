#include "arkin/desktop/Application.h"

#include <clocale>
#include <cstdio>
#include <QApplication>

namespace zn::arkin {

namespace {

/// The toolkit's remarks (a locale it dislikes, a font it misses) are nothing for the terminal of whoever uses a
/// command line; only what ends the process is.
void printFatal(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type == QtFatalMsg)
        std::fprintf(stderr, "arkin: %s\n", qPrintable(message));
}

} // namespace

Application::Application(const std::string& platform)
    : m_words{"arkin", "-platform", platform}
{
    for (int i = 0; i < m_count; ++i)
        m_arguments[i] = m_words[i].data();
    qInstallMessageHandler(printFatal);
    // A page is a native window with a handle; its neighbours needn't be.
    QApplication::setAttribute(Qt::AA_DontCreateNativeWidgetSiblings);
    m_application = std::make_unique<QApplication>(m_count, m_arguments);
    // The toolkit takes over the environment's locale; numbers in macros and files keep their point.
    std::setlocale(LC_NUMERIC, "C");
    m_application->setApplicationName(QStringLiteral("arkin"));
    // No display name, which the toolkit would put behind every window's own title.
    // Between two dialogs of one launch no window is open, and the launch isn't over.
    m_application->setQuitOnLastWindowClosed(false);
}

Application::~Application() = default;

} // namespace zn::arkin
