#pragma once

#include "zentrel/application/ScriptObject.h"

#include <map>

namespace zn::zentrel {

using zn::EventSink;

/// An object of the object model that fires the numbered events of one event interface.
class EventSource : public ScriptObject {
public:
    std::uint32_t advise(const Text& eventInterface, std::shared_ptr<EventSink> sink) override;
    void unadvise(std::uint32_t cookie) override;

    /// Tells every connected sink, one after the other, and waits for each. Gives the first failing result.
    /// Raises `RPC_E_DISCONNECTED` if a sink's process has gone: what goes on then goes on for nobody.
    Status fire(std::int32_t number, const std::vector<Value>& arguments = {});

protected:
    virtual Text eventInterface() const = 0;

private:
    std::map<std::uint32_t, std::shared_ptr<EventSink>> m_sinks;
    std::uint32_t m_lastCookie = 0;
};

} // namespace zn::zentrel
