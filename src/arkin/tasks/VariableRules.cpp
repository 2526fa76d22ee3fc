#include "arkin/tasks/VariableRules.h"

#include "arkin/tasks/AddInModule.h"
#include "arkin/tasks/TaskProperties.h"

namespace zn::arkin {

VariableRules::VariableRules(TaskHost host, const zn::Text& addIn)
    : m_host(std::move(host))
    , m_rules(zn::query<zn::IArkTaskVariables>(loadAddIn(m_host.registry, m_host.files, addIn)))
{
    const auto status = m_rules ? m_rules->GetVariables(m_known) : zn::S_OK;
    if (zn::failed(status))
        throw zn::StatusError(status,
            "The add-in '" + zn::toUtf8(addIn) + "' doesn't tell its variables: " + describeStatus(m_host, status)
                + ".");
}

void VariableRules::settle(TaskDefinition& task) const
{
    if (!m_rules)
        return;
    const auto properties = std::make_shared<TaskProperties>(task);
    zn::Text sentence;
    const auto status = m_rules->SettleVariables(m_host.vault, properties, sentence);
    const auto refusal = properties->takeRefusal();
    if (zn::failed(status))
        throw zn::StatusError(status, sentence.empty() ? describeStatus(m_host, status) + "." : zn::toUtf8(sentence));
    if (!refusal.empty())
        throw zn::StatusError(zn::E_FAIL, refusal);
    task = properties->task();
}

} // namespace zn::arkin
