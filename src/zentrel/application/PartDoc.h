#pragma once

#include "zentrel/application/ModelDoc.h"

namespace zn::zentrel {

/// "PartDoc"
class PartDoc : public ModelDoc {
public:
    PartDoc(Application& application, Identity identity, PartDocument part)
        : ModelDoc(application, std::move(identity))
        , m_part(std::move(part))
    {
    }

    Text typeName() const override { return u"PartDoc"; }
    DocumentKind kind() const override { return DocumentKind::Part; }
    Document record() const override { return m_part; }
    std::vector<Text> configurationNames() const override;
    Text activeConfiguration() const override { return m_part.configurations[m_part.active].name; }
    bool showConfiguration(const Text& name) override;

    const PartDocument& part() const { return m_part; }

protected:
    Text eventInterface() const override { return u"PartDocEvents"; }
    const MemberTable& members() const override;

private:
    Value exportToDwg2(Arguments& arguments);

    PartDocument m_part;
};

} // namespace zn::zentrel
