#pragma once

#include "zentrel/application/ModelDoc.h"

namespace zn::zentrel {

/// "AssemblyDoc"
class AssemblyDoc : public ModelDoc {
public:
    AssemblyDoc(Application& application, Identity identity, AssemblyDocument assembly)
        : ModelDoc(application, std::move(identity))
        , m_assembly(std::move(assembly))
    {
    }

    Text typeName() const override { return u"AssemblyDoc"; }
    DocumentKind kind() const override { return DocumentKind::Assembly; }
    Document record() const override { return m_assembly; }
    std::vector<Text> configurationNames() const override;
    Text activeConfiguration() const override { return m_assembly.configurations[m_assembly.active].name; }
    bool showConfiguration(const Text& name) override;

    const AssemblyDocument& assembly() const { return m_assembly; }

    /// The backslash path of a component's document. A virtual one lives inside the assembly only, so it is written
    /// to the process's work folder when somebody first asks, as "<component>^<assembly>.zenprt".
    Text componentPath(std::size_t index);

protected:
    Text eventInterface() const override { return u"AssemblyDocEvents"; }
    const MemberTable& members() const override;

private:
    Value getComponents(Arguments& arguments);
    Value getComponentCount(Arguments& arguments);

    AssemblyDocument m_assembly;
    std::map<std::size_t, Text> m_extracted;
};

/// "Component2": a part or an assembly placed in an assembly.
class ComponentObject : public ScriptObject {
public:
    ComponentObject(std::weak_ptr<AssemblyDoc> assembly, std::size_t index)
        : m_assembly(std::move(assembly))
        , m_index(index)
    {
    }
    Text typeName() const override { return u"Component2"; }

protected:
    const MemberTable& members() const override;

private:
    Value name(Arguments&);
    Value isVirtual(Arguments&);
    Value isSuppressed(Arguments&);
    Value isHidden(Arguments&);
    Value getPathName(Arguments&);
    Value referencedConfiguration(Arguments&);

    std::shared_ptr<AssemblyDoc> assembly() const;
    const Component& component() const;
    const ComponentState& state() const;

    std::weak_ptr<AssemblyDoc> m_assembly;
    std::size_t m_index;
};

} // namespace zn::zentrel
