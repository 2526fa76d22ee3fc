#pragma once

#include "base/Dispatch.h"

#include <algorithm>
#include <functional>
#include <map>

namespace zn::test {

/// What the calls of a test's objects leave behind, in order: "Name(1, -1)", "Name=0", "advise Events".
using CallLog = std::vector<std::string>;

/// An object of a CAD application whose members are what the test sets. Unset members give nothing.
class FakeObject : public DispatchObject {
public:
    using Member = std::function<Value(MemberCall&)>;

    explicit FakeObject(std::shared_ptr<CallLog> calls = std::make_shared<CallLog>())
        : log(std::move(calls))
    {
    }

    Value invoke(MemberCall& call) override
    {
        std::string arguments;
        const auto add
            = [&](const Value& value) { arguments += (arguments.empty() ? "" : ", ") + toUtf8(value.toText()); };
        for (const Value& argument : call.arguments) {
            if (const ArrayRef* array = argument.get<ArrayRef>())
                std::ranges::for_each((*array)->elements, add);
            else
                add(argument);
        }
        const std::string name = toUtf8(call.name);
        if (call.use == MemberUse::Put)
            log->push_back(name + "=" + arguments);
        else
            log->push_back(arguments.empty() ? name : name + "(" + arguments + ")");
        failIfWanted(name);
        const auto member = members.find(name);
        return member == members.end() ? Value() : member->second(call);
    }

    Text typeName() const override { return u"Fake"; }
    std::vector<Text> facilities() const override { return offered; }

    std::uint32_t advise(const Text& eventInterface, std::shared_ptr<EventSink> sink) override
    {
        log->push_back("advise " + toUtf8(eventInterface));
        failIfWanted("advise");
        sinks[eventInterface] = std::move(sink);
        return static_cast<std::uint32_t>(sinks.size());
    }

    void unadvise(std::uint32_t) override
    {
        log->push_back("unadvise");
        sinks.clear();
    }

    void set(const std::string& name, const Value& value)
    {
        members[name] = [value](MemberCall&) { return value; };
    }
    Status fire(const Text& eventInterface, std::int32_t number, const std::vector<Value>& arguments = {})
    {
        return sinks.at(eventInterface)->onEvent(number, arguments);
    }

    std::shared_ptr<CallLog> log;
    std::vector<Text> offered;
    std::map<std::string, Member> members;
    std::map<std::string, Status> failures;
    std::map<Text, std::shared_ptr<EventSink>> sinks;

private:
    void failIfWanted(const std::string& name)
    {
        if (const auto failure = failures.find(name); failure != failures.end())
            throw StatusError(failure->second);
    }
};

using FakeRef = std::shared_ptr<FakeObject>;

} // namespace zn::test
