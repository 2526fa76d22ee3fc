#pragma once

#include "zentrel/application/PrintOut.h"

namespace zn::zentrel {

/// "ModelDocExtension" of a document.
class ModelDocExtension : public ScriptObject {
public:
    explicit ModelDocExtension(std::weak_ptr<ModelDoc> document)
        : m_document(std::move(document))
    {
    }
    Text typeName() const override { return u"ModelDocExtension"; }

protected:
    const MemberTable& members() const override;

private:
    Value saveAs(Arguments& arguments);
    Value getMbd3DPdfData(Arguments&);
    Value get3DViewNames(Arguments&);
    Value publishTo3DPdf(Arguments& arguments);
    Value getUsePageSetup(Arguments&);
    Value putUsePageSetup(Arguments& arguments);
    Value printOut2(Arguments& arguments);

    std::weak_ptr<ModelDoc> m_document;
    PageSetupInUse m_usePageSetup = PageSetupInUse::OfDocument;
};

} // namespace zn::zentrel
