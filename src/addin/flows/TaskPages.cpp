#include "addin/flows/TaskPages.h"

namespace zn {

TaskPages::TaskPages(PagesSource source)
    : m_source(std::move(source))
{
}

TaskPages::~TaskPages() { destroyAll(); }

PageFactory& TaskPages::factory()
{
    if (!m_factory && m_source)
        m_factory = m_source();
    if (!m_factory)
        throw StatusError(E_NOTIMPL, "This build of the add-in has no windows.");
    m_factory->setAttended(m_attended);
    return *m_factory;
}

void TaskPages::setAttended(bool attended)
{
    m_attended = attended;
    if (m_factory)
        m_factory->setAttended(attended);
}

Text TaskPages::takeUnspoken() { return m_factory ? m_factory->takeUnspoken() : Text(); }

void TaskPages::destroyAll()
{
    script.reset();
    conversionSettings.reset();
    earlierLaunches.clear();
    fileCard.reset();
    outputFileDetails.reset();
    printer.reset();
    paperSize.reset();
    margins.reset();
    files.reset();
    fileDetails.reset();
    menuCommand.reset();
}

} // namespace zn
