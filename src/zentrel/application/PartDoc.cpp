#include "zentrel/application/PartDoc.h"

#include "zentrel/application/Application.h"
#include "zentrel/application/FindByName.h"

#include <fmt/format.h>

namespace zn::zentrel {

std::vector<Text> PartDoc::configurationNames() const { return namesOf(m_part.configurations); }

bool PartDoc::showConfiguration(const Text& name) { return activateByName(m_part.configurations, name, m_part.active); }

const MemberTable& PartDoc::members() const
{
    static const Member rows[] = {
        {u"ExportToDWG2", MemberUse::Call,
            u"FilePath ModelName Action ExportToSingleFile Alignment IsXDirFlipped IsYDirFlipped SheetMetalOptions "
            u"Views",
            member<&PartDoc::exportToDwg2>},
    };
    static const MemberTable table(rows, &modelMembers());
    return table;
}

/// Parts here know no bends, so there is nothing to unfold: the answer is that nothing was written.
Value PartDoc::exportToDwg2(Arguments& arguments)
{
    application().report(fmt::format("'{}' was not written: the part '{}' has no sheet metal to be unfolded.",
        zn::toUtf8(arguments.text(0)), zn::toUtf8(identity().title)));
    return false;
}

} // namespace zn::zentrel
