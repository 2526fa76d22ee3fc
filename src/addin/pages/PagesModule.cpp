// The one export of the library of windows.

#include "addin/pages/Pages.h"

#include <QApplication>

extern "C" __attribute__((visibility("default"))) zn::Status makePageFactory(
    const zn::Platform* platform, std::shared_ptr<zn::PageFactory>* factory, zn::Text* why)
{
    using namespace zn;
    if (!platform || !factory || !why)
        return E_POINTER;
    try {
        if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
            throw StatusError(E_ARK_NO_DESKTOP, "The host has no window system running, so no page can be shown.");
        *factory = std::make_shared<Pages>(*platform);
        return S_OK;
    } catch (const StatusError& error) {
        *why = toText(error.what());
        return error.status();
    } catch (...) {
        return currentExceptionStatus();
    }
}
