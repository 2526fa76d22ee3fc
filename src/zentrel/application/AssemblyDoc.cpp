#include "zentrel/application/AssemblyDoc.h"

#include "zentrel/application/Application.h"
#include "zentrel/application/ConfigurationManager.h"
#include "zentrel/application/FindByName.h"
#include "zentrel/model/Container.h"

#include "base/Paths.h"

namespace zn::zentrel {

namespace {

/// "Bolt-2" without its running number: "Bolt".
Text withoutInstance(const Text& name)
{
    const std::size_t dash = name.rfind(u'-');
    if (dash == Text::npos || dash == 0 || dash + 1 == name.size())
        return name;
    for (const char16_t c : TextView(name).substr(dash + 1))
        if (c < u'0' || c > u'9')
            return name;
    return name.substr(0, dash);
}

Text asFileName(Text name)
{
    for (char16_t& c : name)
        if (c < u' ' || TextView(u"<>:\"/\\|?*").find(c) != TextView::npos)
            c = u'_';
    return name;
}

/// The document name of a virtual component: its name without the running number, unless that would name the document
/// of another one, with the assembly's name if it isn't there already ("Bolt^Rack").
Text documentName(const AssemblyDocument& assembly, std::size_t index, const Text& assemblyName)
{
    const Component& component = assembly.components[index];
    Text name = withoutInstance(component.name);
    for (const Component& other : assembly.components)
        if (other.isVirtual() && other.embedded != component.embedded
            && zn::equalNoCase(withoutInstance(other.name), name)) {
            name = component.name;
            break;
        }
    return name.find(u'^') == Text::npos ? name + u"^" + assemblyName : name;
}

} // namespace

std::vector<Text> AssemblyDoc::configurationNames() const { return namesOf(m_assembly.configurations); }

bool AssemblyDoc::showConfiguration(const Text& name)
{
    return activateByName(m_assembly.configurations, name, m_assembly.active);
}

Text AssemblyDoc::componentPath(std::size_t index)
{
    zn::FileSystem& files = application().surroundings().files;
    const Component& component = m_assembly.components[index];
    if (!component.isVirtual())
        return files.fromMachine(component.path);
    Text& path = m_extracted[index];
    if (path.empty()) {
        const Text name = documentName(m_assembly, index, zn::pathStem(identity().title));
        const auto folder = application().newWorkFolder();
        const auto file
            = folder / (zn::toUtf8(asFileName(name)) + (component.embedded->part() ? ".zenprt" : ".zenasm"));
        std::visit([&](const auto& content) { writeDocument(content, file); }, component.embedded->content);
        path = files.fromMachine(file);
    }
    return path;
}

const MemberTable& AssemblyDoc::members() const
{
    static const Member rows[] = {
        {u"GetComponents", MemberUse::Call, u"ToplevelOnly", member<&AssemblyDoc::getComponents>},
        {u"GetComponentCount", MemberUse::Call, u"ToplevelOnly", member<&AssemblyDoc::getComponentCount>},
    };
    static const MemberTable table(rows, &modelMembers());
    return table;
}

/// The assembly's own components in any case: those of assemblies below are told by their documents.
Value AssemblyDoc::getComponents(Arguments&)
{
    application();
    const auto assembly = std::static_pointer_cast<AssemblyDoc>(self());
    std::vector<Value> components;
    for (std::size_t i = 0; i < m_assembly.components.size(); ++i)
        components.emplace_back(std::make_shared<ComponentObject>(assembly, i));
    return Value::arrayOf(std::move(components));
}

Value AssemblyDoc::getComponentCount(Arguments&)
{
    application();
    return static_cast<std::int32_t>(m_assembly.components.size());
}

const MemberTable& ComponentObject::members() const
{
    static const Member rows[] = {
        {u"Name2", MemberUse::Call, u"", member<&ComponentObject::name>},
        {u"Name", MemberUse::Call, u"", member<&ComponentObject::name>},
        {u"IsVirtual", MemberUse::Call, u"", member<&ComponentObject::isVirtual>},
        {u"IsSuppressed", MemberUse::Call, u"", member<&ComponentObject::isSuppressed>},
        {u"IsHidden", MemberUse::Call, u"[ConsiderSuppressed]", member<&ComponentObject::isHidden>},
        {u"GetPathName", MemberUse::Call, u"", member<&ComponentObject::getPathName>},
        {u"ReferencedConfiguration", MemberUse::Call, u"", member<&ComponentObject::referencedConfiguration>},
    };
    static const MemberTable table(rows);
    return table;
}

std::shared_ptr<AssemblyDoc> ComponentObject::assembly() const
{
    return std::static_pointer_cast<AssemblyDoc>(requireOpen(m_assembly));
}

const Component& ComponentObject::component() const { return assembly()->assembly().components[m_index]; }

const ComponentState& ComponentObject::state() const
{
    const AssemblyDocument& record = assembly()->assembly();
    return record.configurations[record.active].states[m_index];
}

Value ComponentObject::name(Arguments&) { return component().name; }

/// The components of a foreign file are no documents, neither in files nor in the assembly: whoever works through the
/// virtual ones would do each of them again.
Value ComponentObject::isVirtual(Arguments&) { return component().isVirtual() && !assembly()->isForeign(); }

Value ComponentObject::isSuppressed(Arguments&) { return state().suppressed; }

Value ComponentObject::isHidden(Arguments&) { return state().hidden; }

Value ComponentObject::getPathName(Arguments&)
{
    const bool isForeign = component().isVirtual() && assembly()->isForeign();
    return isForeign ? Text() : assembly()->componentPath(m_index);
}

Value ComponentObject::referencedConfiguration(Arguments&) { return state().configuration; }

} // namespace zn::zentrel
