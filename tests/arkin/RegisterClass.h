#pragma once

#include "platform/Registry.h"

namespace zn::arkin::test {

/// Registers a class of a library, as the library itself does.
inline void registerClass(
    zn::Registry& registry, const zn::Text& programId, const zn::Text& classId, const zn::Text& library)
{
    const zn::Text classes = u"SOFTWARE\\Classes\\";
    const auto write = [&](const zn::Text& key, const zn::Text& value) {
        registry.write(zn::RegistryRoot::Machine, classes + key, u"", zn::RegistryValue::text(value));
    };
    write(programId + u"\\CLSID", classId);
    write(u"CLSID\\" + classId + u"\\InprocServer32", library);
}

} // namespace zn::arkin::test
