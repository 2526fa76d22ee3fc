#pragma once

#include "base/Dispatch.h"

namespace zn {

/// The connection of a sink to one event interface of one object. Not ended by the destructor: the object at the other
/// end may have gone with its process, and whoever owns the connection knows when to ask it.
class EventConnection {
public:
    /// Stands for "not connected".
    static constexpr std::uint32_t noCookie = 0xFEFEFEFE;

    bool isConnected() const { return m_cookie != noCookie; }

    /// Raises `E_FAIL` if there is a connection already, otherwise what the object raises.
    void attach(DispatchRef source, TextView eventInterface, std::shared_ptr<EventSink> sink)
    {
        if (isConnected())
            throw StatusError(E_FAIL, "The events of '" + toUtf8(eventInterface) + "' are connected already.");
        m_cookie = source->advise(Text(eventInterface), std::move(sink));
        m_source = std::move(source);
    }

    /// Ends the connection, if there is one. The object's failure is returned; the connection counts as ended anyway.
    Status detach()
    {
        if (!isConnected())
            return S_OK;
        const std::uint32_t cookie = m_cookie;
        const DispatchRef source = std::move(m_source);
        m_cookie = noCookie;
        try {
            source->unadvise(cookie);
            return S_OK;
        } catch (...) {
            return currentExceptionStatus();
        }
    }

private:
    DispatchRef m_source;
    std::uint32_t m_cookie = noCookie;
};

} // namespace zn
