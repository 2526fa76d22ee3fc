#pragma once

#include "zentrel/application/Confinement.h"
#include "zentrel/application/EventSource.h"
#include "zentrel/application/ModelDoc.h"
#include "zentrel/application/Preferences.h"
#include "zentrel/application/Surroundings.h"

namespace zn::zentrel {

/// "Frame": the main window. There is none to be seen; its handle is 0.
class Frame : public ScriptObject {
public:
    Text typeName() const override { return u"Frame"; }

protected:
    const MemberTable& members() const override;

private:
    Value getHWnd(Arguments&);
    Value getKeepInvisible(Arguments&);
    Value putKeepInvisible(Arguments& arguments);

    bool m_keepInvisible = false;
};

/// "Application": the root of the object model.
class Application : public EventSource {
public:
    explicit Application(Surroundings surroundings);
    /// Closes the documents and removes the work folder.
    ~Application() override;

    Text typeName() const override { return u"Application"; }
    std::vector<Text> facilities() const override;

    const Surroundings& surroundings() const { return m_surroundings; }
    const Preferences& preferences() const { return m_preferences; }

    /// A sentence for a person about something that failed: to the log, and to the messages that macros may ask for.
    void report(const std::string& sentence);
    /// The same about work that succeeded, but otherwise than was asked for. Macros don't get it, as many take any
    /// message for a failure; who drives the application does.
    void remark(const std::string& sentence);
    /// Forgets the messages that nobody has asked for.
    void forgetReports();

    /// Runs the work of a macro, confined if macros are.
    void runMacroWork(const std::function<void()>& work);
    Confinement& confinement() { return m_confinement; }
    /// The machine's path of a backslash path that somebody has given a member. Raises `pathRefused` if it was a
    /// confined macro that may not reach it; who drives the application from outside may name any path.
    std::filesystem::path reachable(const Text& path);

    struct Opened {
        ModelDocRef document;    ///< null if it couldn't be opened
        std::int32_t errors = 0; ///< `FileLoadError`
    };
    /// Opens a document of our own; one that is open already is brought to the front. The empty configuration keeps
    /// the active one.
    Opened openDocument(const Text& path, DocumentKind kind, bool readOnly, const Text& configuration);
    /// Makes a document of a foreign file. It has no path until it is saved.
    Opened importDocument(const Text& path);

    /// What the last output was made of: triangles of a quality, or none. The next files of a run will want the same.
    void noteMesh(std::optional<MeshQuality> quality) { m_lastMesh = quality; }

    /// The open document behind this one; null behind the last.
    ModelDocRef documentAfter(const ModelDoc& document) const;
    /// A fresh empty folder for files of this process's own.
    std::filesystem::path newWorkFolder();

protected:
    Text eventInterface() const override { return u"ApplicationEvents"; }
    const MemberTable& members() const override;

private:
    // Documents (ApplicationDocuments.cpp)
    Opened enter(ModelDocRef document, std::int32_t event);
    Opened openFailure(const std::exception& error);
    ModelDocRef findDocument(TextView name) const;
    void closeDocument(const ModelDocRef& document);
    void closeDocuments();
    Value getOpenDocSpec(Arguments& arguments);
    Value openDoc6(Arguments& arguments);
    Value openDoc7(Arguments& arguments);
    Value loadFile4(Arguments& arguments);
    Value activateDoc2(Arguments& arguments);
    Value activeDoc(Arguments&);
    Value getFirstDocument(Arguments&);
    Value getDocumentCount(Arguments&);
    Value quitDoc(Arguments& arguments);
    Value closeAllDocuments(Arguments& arguments);

    // The application itself (Application.cpp)
    Value zentrel(Arguments&);
    Value revisionNumber(Arguments&);
    Value getBuildNumbers2(Arguments& arguments);
    Value getProcessId(Arguments&);
    Value frame(Arguments&);
    Value exitApp(Arguments&);
    Value getExportFileData(Arguments& arguments);
    Value getErrorMessages(Arguments& arguments);
    Value runMacroMember(Arguments& arguments);
    Value runMacro2(Arguments& arguments);
    Value confineMacros(Arguments& arguments);
    Value getRefusals(Arguments&);
    Value readAhead(Arguments& arguments);
    template <bool Application::*Flag> Value getFlag(Arguments&);
    template <bool Application::*Flag> Value putFlag(Arguments& arguments);
    Value setSwitch(Arguments& arguments);
    Value getSwitch(Arguments& arguments);
    Value getToggle(Arguments& arguments);
    Value setToggle(Arguments& arguments);
    Value getInteger(Arguments& arguments);
    Value setInteger(Arguments& arguments);
    Value getDouble(Arguments& arguments);
    Value setDouble(Arguments& arguments);
    Value getTextList(Arguments& arguments);
    Value setTextList(Arguments& arguments);

    Surroundings m_surroundings;
    std::optional<MeshQuality> m_lastMesh;
    Preferences m_preferences;
    Confinement m_confinement;
    int m_runningMacros = 0; ///< one within another
    std::vector<ModelDocRef> m_documents;
    ModelDocRef m_active;
    struct Message {
        Text text;
        bool isRemark = false;
    };
    void keepMessage(const std::string& sentence, bool isRemark);
    std::vector<Message> m_messages;
    std::map<std::int32_t, bool> m_switches;
    std::shared_ptr<Frame> m_frame = std::make_shared<Frame>();
    bool m_visible = false;
    bool m_userControl = false;
    bool m_userControlHidden = false;
    int m_workFolders = 0;
};

} // namespace zn::zentrel
