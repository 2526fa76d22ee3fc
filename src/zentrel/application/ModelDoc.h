#pragma once

#include "zentrel/application/EventSource.h"
#include "zentrel/application/Surroundings.h"
#include "zentrel/model/Model.h"

namespace zn::zentrel {

class Application;
class ConfigurationManager;
class ModelDocExtension;
class ModelView;
class PageSetup;

/// "ModelDoc2": an open document. `PartDoc`, `AssemblyDoc` and `DrawingDoc` are the three kinds.
///
/// A document that has been closed stays as an object while somebody holds it, and every member then fails with a
/// sentence that says so. Objects that belong to a document (its extension, sheets …) hold it weakly.
class ModelDoc : public EventSource {
public:
    /// `path` is the backslash path of the document's own file, empty for one that was imported from the foreign file
    /// `source`. `title` is what shows and what `QuitDoc` is given.
    struct Identity {
        Text path;
        Text source;
        Text title;
        bool readOnly = false;
        /// When the file was last changed, as of reading it.
        std::filesystem::file_time_type changed{};
    };

    ModelDoc(Application& application, Identity identity);
    ~ModelDoc() override;

    virtual DocumentKind kind() const = 0;
    /// The document's record, for saving in its own format.
    virtual Document record() const = 0;
    virtual std::vector<Text> configurationNames() const = 0;
    virtual Text activeConfiguration() const = 0;
    /// False if there is no such configuration.
    virtual bool showConfiguration(const Text& name) = 0;

    const Identity& identity() const { return m_identity; }
    /// Whether it was imported from a foreign file and has no file of its own.
    bool isForeign() const { return m_identity.path.empty() && !m_identity.source.empty(); }
    void setPath(const Text& path);
    /// The machine's path of the document, for names and for what is found beside it.
    std::filesystem::path machinePath() const;
    /// Raises a sentence if the document has been closed.
    Application& application() const;
    /// Whether the name is the document's title, path or source, without regard to case.
    bool isNamed(TextView name) const;

    PageSetup& pageSetup() { return *m_pageSetup; }
    /// The name of a printer of this machine; empty until one is chosen.
    const Text& printer() const { return m_printer; }
    /// The one window of the document.
    const std::shared_ptr<ModelView>& view() const { return m_view; }

    /// Fires the event that the document ends, and lets go of the application.
    void close();

    std::shared_ptr<ModelDoc> self() { return std::static_pointer_cast<ModelDoc>(shared_from_this()); }

protected:
    static const MemberTable& modelMembers();

private:
    Value getType(Arguments&);
    Value getPathName(Arguments&);
    Value getTitle(Arguments&);
    Value getNext(Arguments&);
    Value isOpenedReadOnly(Arguments&);
    Value extension(Arguments&);
    Value configurationManager(Arguments&);
    Value getConfigurationNames(Arguments&);
    Value getConfigurationCount(Arguments&);
    Value showConfigurationMember(Arguments& arguments);
    Value getFirstModelView(Arguments&);
    Value saveAs(Arguments& arguments);
    Value getPageSetup(Arguments&);
    Value getPrinter(Arguments&);
    Value putPrinter(Arguments& arguments);

    Application* m_application;
    Identity m_identity;
    std::shared_ptr<ModelDocExtension> m_extension;
    std::shared_ptr<ConfigurationManager> m_configurations;
    std::shared_ptr<ModelView> m_view;
    std::shared_ptr<PageSetup> m_pageSetup;
    Text m_printer;
};

using ModelDocRef = std::shared_ptr<ModelDoc>;

/// "ModelView": the one window of a document. Fires the event of a printed view.
class ModelView : public EventSource {
public:
    Text typeName() const override { return u"ModelView"; }

protected:
    Text eventInterface() const override { return u"ModelViewEvents"; }
    const MemberTable& members() const override;

private:
    Value getNext(Arguments&);
};

} // namespace zn::zentrel
