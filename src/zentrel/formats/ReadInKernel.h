#pragma once

#include "zentrel/kernel/KernelChild.h"
#include "zentrel/kernel/Remarks.h"
#include "zentrel/model/Packets.h"

#include <TDocStd_Document.hxx>
#include <XSControl_Reader.hxx>

namespace zn::zentrel {

/// How a foreign file is read: with names and colours, or its shapes alone.
enum class ReadWay : char { Named = 'n', Plain = 'p' };

struct ForeignFile {
    Document document;
    bool standsAlone = true; ///< no other file was read for it
};

/// A process of the kernel's is asked for a file by the way and the path. It answers with a sign, whether the file
/// stands alone, the way and the document's packet.
std::string packedAnswer(const ForeignFile& made, ReadWay way);

template <ForeignFile (*read)(const std::filesystem::path& file, ReadWay way)>
std::string packed(std::string_view request)
{
    const auto way = static_cast<ReadWay>(request.front());
    return packedAnswer(read(std::filesystem::path(request.substr(1)), way), way);
}

/// Reads a foreign file in the process of the kernel's that serves many, or takes what `reader` (with its version)
/// made of the same bytes before. Where the named reader crashes, the plain one is tried in a process of its own, with
/// a remark, unless the file refers to others, which the plain reader passes over. Raises what `read` raises, `Kernel`
/// (the first crash if the second way fails, too), and `Unsupported` for what no document of ours can be.
Document readInKernel(const std::filesystem::path& file, std::string_view reader, KernelCall read, Remarks* remarks);

/// The plain way: transfers all roots of the file that has been loaded, without names and colours.
bool transferPlainly(XSControl_Reader& reader, const Handle(TDocStd_Document) & document);

} // namespace zn::zentrel
