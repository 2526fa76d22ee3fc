#pragma once

#include "zentrel/kernel/Remarks.h"
#include "zentrel/model/Container.h"

#include <filesystem>
#include <functional>
#include <TDocStd_Document.hxx>
#include <XSControl_Reader.hxx>

namespace zn::zentrel {

/// How a foreign file is read: with names and colours, or its shapes alone.
enum class ReadWay { Named, Plain };

/// What `read` returns in a child of the kernel's. Where the named reader crashes there, the plain one is tried in
/// another child, with a remark. Raises what `read` and `runInChild` raise; the first crash if the second way fails,
/// too; `Unsupported` for what no document of ours can be.
Document readInChild(const std::filesystem::path& file,
    const std::function<Document(ReadWay way, Remarks& remarks)>& read, Remarks* remarks);

/// The plain way: transfers all roots of the file that has been loaded, without names and colours.
bool transferPlainly(XSControl_Reader& reader, const Handle(TDocStd_Document) & document);

} // namespace zn::zentrel
