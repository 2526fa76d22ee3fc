#pragma once

#include "contracts/objectmodel/Enumerations.h"
#include "zentrel/application/ScriptObject.h"

/// Objects that carry the arguments of a save or an open.
namespace zn::zentrel {

/// "ExportPdfData": which sheets a PDF gets. All of them until `SetSheets` says otherwise.
class ExportPdfData : public ScriptObject {
public:
    Text typeName() const override { return u"ExportPdfData"; }

    SheetsToExport which() const { return m_which; }
    const std::vector<Text>& sheets() const { return m_sheets; }

protected:
    const MemberTable& members() const override;

private:
    Value setSheets(Arguments& arguments);

    SheetsToExport m_which = SheetsToExport::All;
    std::vector<Text> m_sheets;
};

/// "DocumentSpecification": what `OpenDoc7` opens, and how that went.
class DocumentSpecification : public ScriptObject {
public:
    explicit DocumentSpecification(Text file)
        : fileName(std::move(file))
    {
    }
    Text typeName() const override { return u"DocumentSpecification"; }

    Text fileName;
    std::int32_t documentType = 0;
    bool readOnly = false;
    bool silent = false;
    Text configurationName;
    Text displayState;
    bool ignoreHiddenComponents = false;
    std::int32_t error = 0;
    std::int32_t warning = 0;

protected:
    const MemberTable& members() const override;

private:
    template <auto Field> Value get(Arguments&) { return this->*Field; }
    template <auto Field> Value putText(Arguments& arguments)
    {
        this->*Field = arguments.text(0);
        return {};
    }
    template <auto Field> Value putBool(Arguments& arguments)
    {
        this->*Field = arguments.boolean(0);
        return {};
    }
    Value putDocumentType(Arguments& arguments);
};

/// "MBD3DPdfData": the settings of a 3D PDF. They are kept, but this program cannot write that format:
/// `PublishTo3DPDF` says so.
class Mbd3DPdfData : public ScriptObject {
public:
    Text typeName() const override { return u"MBD3DPdfData"; }

    const Text& filePath() const { return m_filePath; }

protected:
    const MemberTable& members() const override;

private:
    Value getFilePath(Arguments&);
    Value putFilePath(Arguments& arguments);
    Value getThemeName(Arguments&);
    Value putThemeName(Arguments& arguments);
    Value getViewAfterSaving(Arguments&);
    Value putViewAfterSaving(Arguments& arguments);
    Value setStandardViews(Arguments& arguments);
    Value setMoreViews(Arguments& arguments);
    Value getTextAndCustomProperties(Arguments&);

    Text m_filePath;
    Text m_themeName;
    bool m_viewAfterSaving = true;
    Value m_standardViews;
    Value m_moreViews;
};

} // namespace zn::zentrel
