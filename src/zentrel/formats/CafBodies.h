#pragma once

#include "zentrel/model/Document.h"

#include <NCollection_DataMap.hxx>
#include <TDocStd_Document.hxx>
#include <TopTools_ShapeMapHasher.hxx>

/// The labels of the kernel's framework for shapes with names and colours.
namespace zn::zentrel {

/// A new, empty document of that framework.
Handle(TDocStd_Document) newCafDocument();

/// Such a document that goes with the object, for processes that make many.
class CafDocument {
public:
    CafDocument()
        : m_document(newCafDocument())
    {
    }
    CafDocument(const CafDocument&) = delete;
    CafDocument& operator=(const CafDocument&) = delete;
    ~CafDocument();

    operator Handle(TDocStd_Document) & () { return m_document; } // NOLINT(google-explicit-constructor)

private:
    Handle(TDocStd_Document) m_document;
};

/// Names of solids that the document doesn't know itself; the keys have no location.
using SolidNames = NCollection_DataMap<TopoDS_Shape, Text, TopTools_ShapeMapHasher>;

/// A label's own name and colour.
Text nameOf(const TDF_Label& label);
std::optional<Color> colorOf(const TDF_Label& label);

/// What a label of a part holds: each solid one body; of what isn't in a solid, the faces together one body and the
/// curves and points together another one. A body's name is its own, or else the part's. A face has its own colour, or
/// that of the shell, solid or compound around it which is nearest; the part's own colour comes apart, since a
/// component that places the part may have another one.
PartConfiguration configurationOf(
    const TDF_Label& part, const Handle(TDocStd_Document) & document, const SolidNames& names);

} // namespace zn::zentrel
