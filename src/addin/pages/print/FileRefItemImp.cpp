#include "addin/pages/print/FileRefItemImp.h"

#include "base/Paths.h"

#include <unordered_set>

namespace zn {

namespace {

/// Deeper rows are left to the user to open.
constexpr int deepestExpanded = 64;

/// Expands the rows below `file`, which stands in `place`, that lead to a ticked file. Whether there are any.
bool expandBelow(const FileInfo& file, PrintUIPos& place, std::unordered_set<const FileInfo*>& seen, int depth)
{
    if (depth > deepestExpanded || !seen.insert(&file).second)
        return false;
    bool leadsToTicked = false;
    PrintUIPos below;
    for (const auto* side : {&file.drawings, &file.parts}) {
        for (const FileInfo* child : *side)
            leadsToTicked |= expandBelow(*child, below, seen, depth + 1) || child->selected;
    }
    if (leadsToTicked)
        place.expand(file) = std::move(below);
    return leadsToTicked;
}

} // namespace

void FileRefRows::expandToTicked()
{
    std::unordered_set<const FileInfo*> seen;
    for (const FileInfo* file : files.roots()) {
        expandBelow(*file, expanded, seen, 0);
        expanded.expand(*file);
    }
}

FileRefItemImp::FileRefItemImp(
    std::shared_ptr<FileRefRows> rows, FileInfo& file, std::shared_ptr<FileRefItemImp> parent)
    : m_rows(std::move(rows))
    , m_file(file)
    , m_parent(std::move(parent))
{
}

std::vector<std::shared_ptr<IFileRefItem>> FileRefItemImp::roots(const std::shared_ptr<FileRefRows>& rows)
{
    std::vector<std::shared_ptr<IFileRefItem>> items;
    for (FileInfo* file : rows->files.roots())
        items.push_back(std::make_shared<FileRefItemImp>(rows, *file));
    return items;
}

bool FileRefItemImp::isAbove(const FileInfo& file) const
{
    return &m_file == &file || (m_parent && m_parent->isAbove(file));
}

/// Drawings first, then what the file refers to. A file that stands above this row already isn't shown below it again:
/// files that refer to each other would never come to an end.
const std::vector<FileInfo*>& FileRefItemImp::children()
{
    if (!m_children) {
        m_children.emplace();
        for (const auto* side : {&m_file.drawings, &m_file.parts}) {
            for (FileInfo* child : *side) {
                if (!isAbove(*child))
                    m_children->push_back(child);
            }
        }
    }
    return *m_children;
}

PrintUIPos* FileRefItemImp::position() const
{
    PrintUIPos* above = m_parent ? m_parent->position() : &m_rows->expanded;
    return above ? above->find(m_file) : nullptr;
}

void FileRefItemImp::noteExpanded(bool expanded)
{
    PrintUIPos* above = m_parent ? m_parent->position() : &m_rows->expanded;
    if (!above)
        return; // a row that nobody sees
    if (expanded)
        above->expand(m_file);
    else
        above->collapse(m_file);
}

Status FileRefItemImp::GetName(Text& name)
{
    name = m_file.name;
    return S_OK;
}

Status FileRefItemImp::GetPath(Text& path)
{
    path = m_file.path;
    return S_OK;
}

Status FileRefItemImp::GetConfiguration(Text& configuration)
{
    configuration = m_file.configuration;
    return S_OK;
}

Status FileRefItemImp::GetChildCount(std::int32_t& count)
{
    count = static_cast<std::int32_t>(children().size());
    return S_OK;
}

Status FileRefItemImp::GetChild(std::int32_t index, std::shared_ptr<IFileRefItem>& child)
{
    const auto& all = children();
    if (index < 0 || static_cast<std::size_t>(index) >= all.size())
        return E_INVALIDARG;
    child = std::make_shared<FileRefItemImp>(m_rows, *all[static_cast<std::size_t>(index)], shared_from_this());
    return S_OK;
}

Status FileRefItemImp::GetCheck(FileRefCheck& check)
{
    if (m_file.state != FileInfo::printable)
        check = FileRefCheck::NoBox;
    else
        check = m_file.selected ? FileRefCheck::On : FileRefCheck::Off;
    return S_OK;
}

Status FileRefItemImp::GetStateText(Text& text)
{
    text = m_file.stateText;
    return S_OK;
}

Status FileRefItemImp::GetVersion(std::int32_t& version)
{
    version = m_file.version;
    return S_OK;
}

Status FileRefItemImp::GetExpanded(bool& expanded)
{
    expanded = position() != nullptr;
    return S_OK;
}

Status FileRefItemImp::GetIconType(Text& extension)
{
    extension = pathExtension(m_file.name);
    return S_OK;
}

} // namespace zn
