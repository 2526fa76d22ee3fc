#include "contracts/documents/DocumentError.h"
#include "zentrel/application/Application.h"
#include "zentrel/application/AssemblyDoc.h"
#include "zentrel/application/DocumentEvents.h"
#include "zentrel/application/DrawingDoc.h"
#include "zentrel/application/ExportData.h"
#include "zentrel/application/PartDoc.h"
#include "zentrel/formats/Read.h"

#include "base/Paths.h"

#include <algorithm>

namespace zn::zentrel {

namespace {

constexpr std::pair<ErrorKind, FileLoadError> loadErrors[] = {
    {ErrorKind::NotFound, LoadFileNotFound},
    {ErrorKind::NotReadable, LoadAccessDenied},
    {ErrorKind::Damaged, LoadFileDamaged},
    {ErrorKind::FutureVersion, LoadFutureVersion},
    {ErrorKind::Unsupported, LoadInvalidFileType},
    {ErrorKind::Incomplete, LoadIncomplete},
    {ErrorKind::InvalidArgument, LoadUnknownConfiguration},
};

std::int32_t loadError(ErrorKind kind)
{
    for (const auto& [known, number] : loadErrors)
        if (known == kind)
            return number;
    return LoadGenericError;
}

ModelDocRef newDocument(Application& application, ModelDoc::Identity identity, Document record)
{
    struct Maker {
        Application& application;
        ModelDoc::Identity identity;
        ModelDocRef operator()(PartDocument& record)
        {
            return std::make_shared<PartDoc>(application, std::move(identity), std::move(record));
        }
        ModelDocRef operator()(AssemblyDocument& record)
        {
            return std::make_shared<AssemblyDoc>(application, std::move(identity), std::move(record));
        }
        ModelDocRef operator()(DrawingDocument& record)
        {
            return std::make_shared<DrawingDoc>(application, std::move(identity), std::move(record));
        }
    };
    return std::visit(Maker{application, std::move(identity)}, record);
}

std::filesystem::file_time_type changeTime(const std::filesystem::path& file)
{
    std::error_code ignored;
    return std::filesystem::last_write_time(file, ignored);
}

void requireConfiguration(ModelDoc& document, const Text& configuration)
{
    if (!configuration.empty() && document.kind() != DocumentKind::Drawing
        && !document.showConfiguration(configuration))
        throw DocumentError(ErrorKind::InvalidArgument,
            "The document '" + zn::toUtf8(document.identity().title) + "' has no configuration '"
                + zn::toUtf8(configuration) + "'.");
}

} // namespace

Application::Opened Application::openFailure(const std::exception& error)
{
    report(error.what());
    const auto* document = dynamic_cast<const DocumentError*>(&error);
    return {nullptr, document ? loadError(document->kind()) : LoadGenericError};
}

Application::Opened Application::enter(ModelDocRef document, std::int32_t event)
{
    m_documents.push_back(document);
    m_active = document;
    fire(event, {Value(document->identity().path)});
    return {std::move(document), 0};
}

Application::Opened Application::openDocument(
    const Text& path, DocumentKind kind, bool readOnly, const Text& configuration)
{
    const Text canonical = zn::canonicalPath(path);
    try {
        const auto file = reachable(canonical);
        const auto changed = changeTime(file);
        if (const ModelDocRef open = findDocument(canonical); open && open->kind() == kind) {
            if (open->identity().changed == changed) {
                requireConfiguration(*open, configuration);
                m_active = open;
                return {open, 0};
            }
            // A macro that failed has left it open, and the file has got another content since.
            closeDocument(open);
        }
        Document record = readDocument(file);
        const auto document = newDocument(*this,
            {.path = canonical,
                .source = {},
                .title = zn::pathFileName(canonical),
                .readOnly = readOnly,
                .changed = changed},
            std::move(record));
        if (document->kind() != kind)
            throw DocumentError(
                ErrorKind::Unsupported, quoted(file) + " is not a document of the kind that was asked for.");
        requireConfiguration(*document, configuration);
        return enter(document, applicationEvent::DocumentOpened);
    } catch (const DocumentError& error) {
        return openFailure(error);
    }
}

Application::Opened Application::importDocument(const Text& path)
{
    const Text canonical = zn::canonicalPath(path);
    try {
        const auto file = reachable(canonical);
        Remarks remarks;
        Document record = readForeign(file, &remarks);
        for (const std::string& sentence : remarks)
            remark(sentence);
        return enter(newDocument(*this,
                         {.path = {},
                             .source = canonical,
                             .title = zn::pathFileName(canonical),
                             .readOnly = false,
                             .changed = {}},
                         std::move(record)),
            applicationEvent::DocumentImported);
    } catch (const DocumentError& error) {
        return openFailure(error);
    }
}

ModelDocRef Application::findDocument(TextView name) const
{
    if (m_active && m_active->isNamed(name))
        return m_active;
    const auto found = std::find_if(
        m_documents.begin(), m_documents.end(), [&](const ModelDocRef& document) { return document->isNamed(name); });
    return found == m_documents.end() ? nullptr : *found;
}

ModelDocRef Application::documentAfter(const ModelDoc& document) const
{
    for (std::size_t i = 0; i + 1 < m_documents.size(); ++i)
        if (m_documents[i].get() == &document)
            return m_documents[i + 1];
    return nullptr;
}

void Application::closeDocument(const ModelDocRef& document)
{
    // A copy: the caller's reference may be the one in the list. It leaves the list first, so that a listener to its
    // end can't find and close it once more.
    const ModelDocRef closing = document; // NOLINT(performance-unnecessary-copy-initialization)
    std::erase(m_documents, closing);
    if (m_active == closing)
        m_active = m_documents.empty() ? nullptr : m_documents.back();
    closing->close();
}

void Application::closeDocuments()
{
    while (!m_documents.empty())
        closeDocument(m_documents.back());
}

Value Application::getOpenDocSpec(Arguments& arguments)
{
    return std::make_shared<DocumentSpecification>(arguments.text(0));
}

Value Application::openDoc6(Arguments& arguments)
{
    constexpr std::int32_t readOnlyOption = 2;
    const Opened opened = openDocument(arguments.text(0), static_cast<DocumentKind>(arguments.integer(1)),
        (arguments.integer(2) & readOnlyOption) != 0, arguments.text(3));
    arguments.set(4, opened.errors);
    arguments.set(5, 0);
    return opened.document;
}

Value Application::openDoc7(Arguments& arguments)
{
    const auto documentSpec = arguments.object<DocumentSpecification>(0);
    if (!documentSpec)
        throw StatusError(zn::DISP_E_TYPEMISMATCH, "OpenDoc7 needs a document documentSpec.");
    const Opened opened = openDocument(documentSpec->fileName, static_cast<DocumentKind>(documentSpec->documentType),
        documentSpec->readOnly, documentSpec->configurationName);
    documentSpec->error = opened.errors;
    documentSpec->warning = 0;
    return opened.document;
}

Value Application::loadFile4(Arguments& arguments)
{
    const Opened opened = importDocument(arguments.text(0));
    arguments.set(3, opened.errors);
    return opened.document;
}

Value Application::activateDoc2(Arguments& arguments)
{
    const ModelDocRef document = findDocument(zn::canonicalPath(arguments.text(0)));
    arguments.set(2, document ? 0 : LoadFileNotFound);
    if (document && document != m_active) {
        m_active = document;
        fire(applicationEvent::ActiveDocumentChanged, {Value(document->identity().path)});
    }
    return document;
}

Value Application::activeDoc(Arguments&) { return m_active; }

Value Application::getFirstDocument(Arguments&) { return m_documents.empty() ? nullptr : m_documents.front(); }

Value Application::getDocumentCount(Arguments&) { return static_cast<std::int32_t>(m_documents.size()); }

Value Application::quitDoc(Arguments& arguments)
{
    if (const ModelDocRef document = findDocument(arguments.text(0)))
        closeDocument(document);
    return {};
}

/// Nobody edits documents here, so none is ever unsaved.
Value Application::closeAllDocuments(Arguments&)
{
    closeDocuments();
    return true;
}

} // namespace zn::zentrel
