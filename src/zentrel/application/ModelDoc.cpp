#include "zentrel/application/ModelDoc.h"

#include "zentrel/application/Application.h"
#include "zentrel/application/ConfigurationManager.h"
#include "zentrel/application/DocumentEvents.h"
#include "zentrel/application/ModelDocExtension.h"
#include "zentrel/application/PageSetup.h"
#include "zentrel/application/SaveAs.h"

#include "base/Paths.h"
#include "platform/Printers.h"

#include <fmt/format.h>

namespace zn::zentrel {

namespace {

/// The object that is called is no longer connected to what it stands for.
constexpr Status objectEnded = zn::statusCode(0x80010114);

} // namespace

ModelDoc::ModelDoc(Application& application, Identity identity)
    : m_application(&application)
    , m_identity(std::move(identity))
    , m_view(std::make_shared<ModelView>())
    , m_pageSetup(std::make_shared<PageSetup>())
{
}

ModelDoc::~ModelDoc() = default;

Application& ModelDoc::application() const
{
    if (!m_application)
        throw StatusError(objectEnded, fmt::format("The document '{}' has been closed.", zn::toUtf8(m_identity.title)));
    return *m_application;
}

void ModelDoc::setPath(const Text& path)
{
    m_identity.path = path;
    m_identity.title = zn::pathFileName(path);
}

std::filesystem::path ModelDoc::machinePath() const
{
    return application().surroundings().files.toMachine(m_identity.path.empty() ? m_identity.source : m_identity.path);
}

bool ModelDoc::isNamed(TextView name) const
{
    return !name.empty()
        && (zn::equalNoCase(name, m_identity.title) || zn::equalNoCase(name, m_identity.path)
            || zn::equalNoCase(name, m_identity.source));
}

void ModelDoc::close()
{
    if (!m_application)
        return;
    try {
        fire(documentDestroyed);
    } catch (const StatusError&) {
        // A listener that fails or has gone keeps nobody from closing.
    }
    m_application = nullptr;
}

const MemberTable& ModelDoc::modelMembers()
{
    static const Member rows[] = {
        {u"GetType", MemberUse::Call, u"", member<&ModelDoc::getType>},
        {u"GetPathName", MemberUse::Call, u"", member<&ModelDoc::getPathName>},
        {u"GetTitle", MemberUse::Call, u"", member<&ModelDoc::getTitle>},
        {u"GetNext", MemberUse::Call, u"", member<&ModelDoc::getNext>},
        {u"IsOpenedReadOnly", MemberUse::Call, u"", member<&ModelDoc::isOpenedReadOnly>},
        {u"Extension", MemberUse::Call, u"", member<&ModelDoc::extension>},
        {u"ConfigurationManager", MemberUse::Call, u"", member<&ModelDoc::configurationManager>},
        {u"GetConfigurationNames", MemberUse::Call, u"", member<&ModelDoc::getConfigurationNames>},
        {u"GetConfigurationCount", MemberUse::Call, u"", member<&ModelDoc::getConfigurationCount>},
        {u"ShowConfiguration", MemberUse::Call, u"Name", member<&ModelDoc::showConfigurationMember>},
        {u"ShowConfiguration2", MemberUse::Call, u"Name", member<&ModelDoc::showConfigurationMember>},
        {u"GetFirstModelView", MemberUse::Call, u"", member<&ModelDoc::getFirstModelView>},
        {u"SaveAs", MemberUse::Call, u"Name", member<&ModelDoc::saveAs>},
        {u"PageSetup", MemberUse::Call, u"", member<&ModelDoc::getPageSetup>},
        {u"Printer", MemberUse::Call, u"", member<&ModelDoc::getPrinter>},
        {u"Printer", MemberUse::Put, u"Name", member<&ModelDoc::putPrinter>},
    };
    static const MemberTable table(rows);
    return table;
}

Value ModelDoc::getType(Arguments&) { return static_cast<std::int32_t>(kind()); }

Value ModelDoc::getPathName(Arguments&) { return m_identity.path; }

Value ModelDoc::getTitle(Arguments&) { return m_identity.title; }

Value ModelDoc::getNext(Arguments&) { return application().documentAfter(*this); }

Value ModelDoc::isOpenedReadOnly(Arguments&) { return m_identity.readOnly; }

Value ModelDoc::extension(Arguments&)
{
    application();
    if (!m_extension)
        m_extension = std::make_shared<ModelDocExtension>(self());
    return m_extension;
}

Value ModelDoc::configurationManager(Arguments&)
{
    application();
    if (!m_configurations)
        m_configurations = std::make_shared<ConfigurationManager>(self());
    return m_configurations;
}

Value ModelDoc::getConfigurationNames(Arguments&)
{
    application();
    return textArray(configurationNames());
}

Value ModelDoc::getConfigurationCount(Arguments&)
{
    application();
    return static_cast<std::int32_t>(configurationNames().size());
}

Value ModelDoc::showConfigurationMember(Arguments& arguments)
{
    application();
    return showConfiguration(arguments.text(0));
}

Value ModelDoc::getFirstModelView(Arguments&)
{
    application();
    return m_view;
}

Value ModelDoc::saveAs(Arguments& arguments) { return saveDocument(*this, {.path = arguments.text(0)}).errors == 0; }

Value ModelDoc::getPageSetup(Arguments&)
{
    application();
    return m_pageSetup;
}

Value ModelDoc::getPrinter(Arguments&)
{
    application();
    return m_printer;
}

/// A printer that this machine doesn't have leaves the present one, which is how a macro finds out. Where nobody can
/// tell, the name is taken, and the print says what is wrong.
Value ModelDoc::putPrinter(Arguments& arguments)
{
    const Text name = arguments.text(0);
    Printers& printers = application().surroundings().printers;
    if (name.empty() || printers.find(name) || printers.isSilent())
        m_printer = name;
    return {};
}

const MemberTable& ModelView::members() const
{
    static const Member rows[] = {
        {u"GetNext", MemberUse::Call, u"", member<&ModelView::getNext>},
    };
    static const MemberTable table(rows);
    return table;
}

/// A document has one window here.
Value ModelView::getNext(Arguments&) { return ObjectRef(); }

} // namespace zn::zentrel
