#include "arkin/desktop/Application.h"

#include <clocale>
#include <cstdio>
#include <QApplication>
#include <vector>

namespace arkin {

namespace {

/// The toolkit's remarks (a locale it dislikes, a font it misses) are nothing for the terminal of whoever uses a
/// command line; only what ends the process is.
void printFatal(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type == QtFatalMsg)
        std::fprintf(stderr, "arkin: %s\n", qPrintable(message));
}

} // namespace

Application::Application(const std::string& platform, bool attended)
{
    static int count = 3;
    static std::string words[] = {"arkin", "-platform", {}};
    static char* arguments[4] = {};
    words[2] = platform;
    for (int i = 0; i < count; ++i)
        arguments[i] = words[i].data();
    qInstallMessageHandler(printFatal);
    // A page is a native window with a handle; its neighbours needn't be.
    QApplication::setAttribute(Qt::AA_DontCreateNativeWidgetSiblings);
    m_application = std::make_unique<QApplication>(count, arguments);
    // The toolkit takes over the environment's locale; numbers in macros and files keep their point.
    std::setlocale(LC_NUMERIC, "C");
    m_application->setApplicationName(QStringLiteral("arkin"));
    m_application->setApplicationDisplayName(QStringLiteral("ARKIN"));
    // Between two dialogs of one launch no window is open, and the launch isn't over.
    m_application->setQuitOnLastWindowClosed(false);
    m_application->setProperty("unattended", !attended);
}

Application::~Application() = default;

std::string takeUnspoken()
{
    const auto sentences = qApp->property("unspoken").toString().toStdString();
    qApp->setProperty("unspoken", QVariant());
    return sentences;
}

} // namespace arkin
