#pragma once

#include "zentrel/application/ModelDoc.h"

namespace zn::zentrel {

/// "Configuration": a name, as of the moment when it was asked for.
class Configuration : public ScriptObject {
public:
    explicit Configuration(Text name)
        : m_name(std::move(name))
    {
    }
    Text typeName() const override { return u"Configuration"; }

protected:
    const MemberTable& members() const override;

private:
    Value name(Arguments&);

    Text m_name;
};

/// "ConfigurationManager" of a document. Its active configuration is nothing in a drawing.
class ConfigurationManager : public ScriptObject {
public:
    explicit ConfigurationManager(std::weak_ptr<ModelDoc> document)
        : m_document(std::move(document))
    {
    }
    Text typeName() const override { return u"ConfigurationManager"; }

protected:
    const MemberTable& members() const override;

private:
    Value activeConfiguration(Arguments&);

    std::weak_ptr<ModelDoc> m_document;
};

/// The document that an object belongs to. Raises a sentence if it has been closed.
ModelDocRef requireOpen(const std::weak_ptr<ModelDoc>& document);

} // namespace zn::zentrel
