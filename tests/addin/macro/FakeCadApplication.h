#pragma once

#include "language/Host.h"
#include "language/Library.h"
#include "tests/language/DiskFiles.h"

#include <functional>
#include <map>

namespace zn::test {

/// What the conversion macro finds in a CAD application that does and answers what a test wants: saves that fail with
/// chosen numbers, formats that nobody has. Every call is written down as "Class.Member(arguments)".
struct FakeCadApplication {
    /// Answers by "Class.Member"; a member without one answers Empty. By-reference results go into the arguments.
    std::map<std::string, std::function<Value(MemberCall&)>> answers;
    std::vector<std::string> calls;

    void answer(const std::string& member, Value value)
    {
        answers[member] = [value = std::move(value)](MemberCall&) { return value; };
    }
    DispatchRef object(const char16_t* className);
};

class FakeCadObject : public DispatchObject {
public:
    FakeCadObject(FakeCadApplication& application, Text className)
        : m_application(application)
        , m_className(std::move(className))
    {
    }
    Text typeName() const override { return m_className; }
    Value invoke(MemberCall& call) override
    {
        const std::string member = toUtf8(m_className + u"." + call.name);
        std::string line = member;
        for (const Value& argument : call.arguments)
            line += (line == member ? "(" : ", ") + describe(argument);
        m_application.calls.push_back(call.arguments.empty() ? line : line + ")");
        const auto answer = m_application.answers.find(member);
        return answer == m_application.answers.end() ? Value() : answer->second(call);
    }

private:
    static std::string describe(const Value& value)
    {
        if (const auto* array = value.get<ArrayRef>()) {
            std::string text;
            for (const Value& element : (*array)->elements)
                text += (text.empty() ? "[" : " ") + describe(element);
            return text + "]";
        }
        if (const auto object = value.get<ObjectRef>()) {
            const auto dispatch = query<DispatchObject>(*object);
            return dispatch ? toUtf8(dispatch->typeName()) : "Nothing";
        }
        return value.type() == ValueType::Null ? "Null" : toUtf8(value.toText());
    }

    FakeCadApplication& m_application;
    Text m_className;
};

inline DispatchRef FakeCadApplication::object(const char16_t* className)
{
    return std::make_shared<FakeCadObject>(*this, className);
}

/// Every name that begins with "zn" is a constant whose value is its own name, so that calls show which one was used;
/// those that the macro calculates with are numbers.
class FakeCadLibrary : public language::Library {
public:
    std::optional<Value> constant(TextView name) const override
    {
        const std::pair<TextView, std::int32_t> numbers[] = {{u"znDocNONE", 0}, {u"znDocPART", 1},
            {u"znDocASSEMBLY", 2}, {u"znDocDRAWING", 3}, {u"znFutureVersion", 8192}, {u"znSaveAsOptions_Silent", 1},
            {u"znSaveAsOptions_UpdateInactiveViews", 16}, {u"znFrontView", 1}, {u"znBackView", 2}, {u"znTopView", 5},
            {u"znBottomView", 6}, {u"znLeftView", 3}, {u"znRightView", 4}, {u"znIsometricView", 7},
            {u"znTrimetricView", 8}, {u"znDimetricView", 9}, {u"znPublishTo3DPDF_Success", 0},
            {u"znPublishTo3DPDF_InvalidPath", 1}, {u"znPublishTo3DPDF_InvalidTheme", 2},
            {u"znPublishTo3DPDF_UnknownError", 3}, {u"znPublishTo3DPDF_NothingToPublish", 4}};
        for (const auto& [known, number] : numbers) {
            if (equalNoCase(name, known))
                return Value(number);
        }
        const bool isConstant = name.starts_with(u"zn") && name.size() > 2 && name != u"znApp";
        return isConstant ? std::optional(Value(Text(name))) : std::nullopt;
    }
    language::LibraryType typeNamed(TextView name) const override
    {
        return name.starts_with(u"Zentrel.") ? language::LibraryType::Class : language::LibraryType::Unknown;
    }
    bool hasGlobal(TextView name) const override { return equalNoCase(name, u"Application"); }
};

/// Real files, whose deletions are written down.
class FakeCadFiles : public DiskFiles {
public:
    FakeCadFiles(FakeCadApplication& application, const std::filesystem::path& root)
        : DiskFiles(root)
        , m_application(application)
    {
    }
    void remove(const Text& path) override
    {
        m_application.calls.push_back("delete " + toUtf8(path));
        DiskFiles::remove(path);
    }

private:
    FakeCadApplication& m_application;
};

class FakeCadHost : public language::Host {
public:
    FakeCadHost(FakeCadApplication& application, FakeCadFiles& files)
        : m_application(application)
        , m_files(files)
    {
    }
    Value global(MemberCall&) override { return Value(m_application.object(u"Application")); }
    DispatchRef createObject(const Text&) override { return nullptr; }
    Value callDeclared(language::DeclaredCall& call) override
    {
        if (call.entry == u"PathIsRelativeW")
            return std::int32_t(call.text(0).value_or(u"").find(u':') == Text::npos ? 1 : 0);
        const Text folder = call.text(1).value_or(u"");
        m_application.calls.push_back("mkdir " + toUtf8(folder));
        std::filesystem::create_directories(m_files.machinePath(folder));
        return std::int32_t(0);
    }
    void debugPrint(const Text&) override { }
    std::int32_t messageBox(const language::MessageBox&) override { return 1; }

private:
    FakeCadApplication& m_application;
    FakeCadFiles& m_files;
};

} // namespace zn::test
