#pragma once

#include "base/Dates.h"
#include "language/Host.h"
#include "language/Library.h"

#include <map>
#include <vector>

namespace zn::test {

/// The names of a small application: `Application`, `Twice(n)`, a class and an enumeration.
class TestLibrary : public language::Library {
public:
    std::optional<Value> constant(TextView name) const override
    {
        if (equalNoCase(name, u"znDocPART"))
            return Value(std::int32_t(1));
        if (equalNoCase(name, u"znDocDRAWING"))
            return Value(std::int32_t(3));
        return std::nullopt;
    }
    language::LibraryType typeNamed(TextView name) const override
    {
        if (equalNoCase(name, u"Zentrel.ModelDoc2"))
            return language::LibraryType::Class;
        return equalNoCase(name, u"znDocumentTypes_e") ? language::LibraryType::Enumeration
                                                       : language::LibraryType::Unknown;
    }
    bool hasGlobal(TextView name) const override
    {
        return equalNoCase(name, u"Application") || equalNoCase(name, u"Twice");
    }
};

/// An object that shows what reaches it: properties by name, and a few methods.
class TestObject : public DispatchObject {
public:
    Text typeName() const override { return u"ModelDoc2"; }

    Value invoke(MemberCall& call) override
    {
        const auto is = [&](TextView name) { return equalNoCase(call.name, name); };
        if (is(u"Open")) { // Open(name, ByRef errors, ByRef warnings) gives whether it worked
            call.arguments.at(1) = Value(std::int32_t(4096));
            call.arguments.at(2) = Value(u"none");
            return Value(call.arguments.at(0).toText() != u"missing");
        }
        if (is(u"Fail"))
            throw StatusError(statusCode(0x80004005), "The document is locked");
        if (is(u"GetNames") && call.arguments.empty())
            return Value::arrayOf({Value(u"Default"), Value(u"Large")}, ValueType::String);
        if (is(u"GetNames"))
            throw StatusError(DISP_E_BADPARAMCOUNT);
        if (is(u"Zentrel"))
            return Value(self.lock());
        if (is(u"_NewEnum"))
            return Value::arrayOf({Value(u"one"), Value(u"two")});
        if (is(u"Describe"))
            return describe(call);
        if (call.name.empty() && call.arguments.size() == 1) // the default member: a property by its name
            return properties[foldCase(call.arguments[0].toText())];
        if (call.use != MemberUse::Call) {
            properties[foldCase(call.name)] = call.arguments.back();
            return {};
        }
        const auto hit = properties.find(foldCase(call.name));
        if (hit == properties.end())
            throw StatusError(DISP_E_MEMBERNOTFOUND);
        if (!call.arguments.empty())
            throw StatusError(DISP_E_BADPARAMCOUNT);
        return hit->second;
    }

    std::map<Text, Value> properties;
    std::weak_ptr<TestObject> self; ///< what its member "Zentrel" answers

private:
    static Value describe(const MemberCall& call)
    {
        Text out;
        const std::size_t positional = call.arguments.size() - call.argumentNames.size();
        for (std::size_t i = 0; i < call.arguments.size(); ++i) {
            out += i > 0 ? u", " : u"";
            if (i >= positional)
                out += call.argumentNames[i - positional] + u"=";
            const Value& value = call.arguments[i];
            out += value.type() == ValueType::Error ? Text(u"(missing)") : value.toText();
        }
        return out;
    }
};

class TestHost : public language::Host {
public:
    Value global(MemberCall& call) override
    {
        if (equalNoCase(call.name, u"Twice"))
            return Value(call.arguments.at(0).toInt32() * 2);
        return Value(application);
    }
    DispatchRef createObject(const Text& programId) override
    {
        return equalNoCase(programId, u"Test.Object") ? std::make_shared<TestObject>() : nullptr;
    }
    Value callDeclared(language::DeclaredCall& call) override
    {
        if (call.entry == u"PathIsRelativeW")
            return Value(std::int32_t(call.text(0).value_or(u"").find(u':') == Text::npos ? 1 : 0));
        if (call.entry == u"CountUnitsW") {
            call.arguments.at(1) = Value(static_cast<std::int32_t>(call.text(0).value_or(u"").size()));
            return Value(true);
        }
        throw StatusError(DISP_E_MEMBERNOTFOUND, "There is no function " + toUtf8(call.entry));
    }
    void debugPrint(const Text& line) override { lines.push_back(line); }
    std::int32_t messageBox(const language::MessageBox& box) override
    {
        lines.push_back(u"[" + box.title + u"|" + numberText(box.buttons) + u"] " + box.prompt);
        return 6;
    }
    bool stopRequested() override { return stopAfter > 0 && --stopAfter == 0; }
    double now() override { return dayCount({2018, 3, 5, 14, 7, 9}); }

    std::shared_ptr<TestObject> application = std::make_shared<TestObject>();
    TestHost() { application->self = application; }
    /// Objects that a macro has put into each other would keep each other.
    ~TestHost() override { application->properties.clear(); }

    std::vector<Text> lines;
    int stopAfter = 0; ///< number of questions until the host wants the end; 0 for never
};

} // namespace zn::test
