#include "zentrel/application/EventSource.h"

namespace zn::zentrel {

std::uint32_t EventSource::advise(const Text& eventInterface, std::shared_ptr<EventSink> sink)
{
    if (!zn::equalNoCase(eventInterface, this->eventInterface()))
        throw StatusError(
            zn::E_NOINTERFACE, zn::toUtf8(typeName() + u" fires the events '" + this->eventInterface() + u"' only."));
    m_sinks[++m_lastCookie] = std::move(sink);
    return m_lastCookie;
}

void EventSource::unadvise(std::uint32_t cookie) { m_sinks.erase(cookie); }

Status EventSource::fire(std::int32_t number, const std::vector<Value>& arguments)
{
    Status first = zn::S_OK;
    // A copy: a handler may connect and disconnect sinks.
    const auto sinks = m_sinks;
    for (const auto& [cookie, sink] : sinks) {
        const Status status = sink->onEvent(number, arguments);
        if (status == zn::RPC_E_DISCONNECTED)
            throw StatusError(status, "The program that listens to the application's events has ended.");
        if (zn::failed(status) && !zn::failed(first))
            first = status;
    }
    return first;
}

} // namespace zn::zentrel
