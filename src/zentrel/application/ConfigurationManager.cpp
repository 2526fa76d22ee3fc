#include "zentrel/application/ConfigurationManager.h"

namespace zn::zentrel {

const MemberTable& Configuration::members() const
{
    static const Member rows[] = {
        {u"Name", MemberUse::Call, u"", member<&Configuration::name>},
    };
    static const MemberTable table(rows);
    return table;
}

Value Configuration::name(Arguments&) { return m_name; }

const MemberTable& ConfigurationManager::members() const
{
    static const Member rows[] = {
        {u"ActiveConfiguration", MemberUse::Call, u"", member<&ConfigurationManager::activeConfiguration>},
    };
    static const MemberTable table(rows);
    return table;
}

Value ConfigurationManager::activeConfiguration(Arguments&)
{
    const ModelDocRef document = requireOpen(m_document);
    if (document->kind() == DocumentKind::Drawing)
        return ObjectRef();
    return std::make_shared<Configuration>(document->activeConfiguration());
}

ModelDocRef requireOpen(const std::weak_ptr<ModelDoc>& document)
{
    ModelDocRef open = document.lock();
    if (!open)
        throw StatusError(zn::statusCode(0x80010114), "The document has been closed.");
    open->application();
    return open;
}

} // namespace zn::zentrel
