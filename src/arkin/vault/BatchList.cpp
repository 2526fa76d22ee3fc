// The list of files with their references. A row stands for a file below a parent (or, without one, for a noted file),
// so a file has as many rows as parents. What it refers to itself is listed once, in the version in which the list
// meets it first, from the noted files outwards: a sub-assembly that a thousand files share costs a thousand rows and
// not a thousand trees, and a cycle ends where it closes. Below a part or assembly stand its drawings too, which refer
// to it and not the other way round; they bring no further files. A drawing has a row for each sheet that its card
// knows.

#include "arkin/store/ReferenceClosure.h"
#include "arkin/vault/Utilities.h"

#include <algorithm>
#include <array>
#include <deque>
#include <unordered_set>

namespace zn::arkin {

using zn::S_OK;
using zn::Status;
using zn::Text;

namespace {

/// A file in one configuration (or a drawing's sheet), as the list shows it.
struct Node {
    Place place;
    Text configuration;
    std::int32_t version = 0;
};

/// The texts of one row are made of these.
struct ListedRow {
    const Node* node = nullptr;
    const Node* parent = nullptr; ///< none for a noted file
};

struct NodeKey {
    std::int32_t fileId;
    Text configuration;
    bool operator==(const NodeKey&) const = default;
};
struct NodeKeyHash {
    std::size_t operator()(const NodeKey& key) const
    {
        return std::hash<Text>()(key.configuration) * 31 + static_cast<std::size_t>(key.fileId);
    }
};

/// Walks the closure from the noted files outwards.
class ListWalk {
public:
    ListWalk(Vault& vault, const ReferenceClosure& closure, const zn::ArkSelection& noted)
        : m_vault(vault)
        , m_closure(closure)
        , m_noted(noted)
    {
        for (const auto& [id, file] : closure.files)
            m_sortKeys[id] = zn::foldCase(file.name);
        for (const auto& start : closure.starts)
            m_startFiles.insert(start.place.fileId);
    }

    const std::vector<ListedRow>& rows()
    {
        listStarts();
        for (std::size_t i = 0; i < m_open.size(); ++i)
            expand(*m_open[i]);
        return m_rows;
    }

private:
    using Start = ReferenceClosure::Start;
    using Target = ReferenceClosure::Target;

    void listStarts()
    {
        std::vector<Start> starts = m_closure.starts;
        std::unordered_map<std::int32_t, Text> folderKeys;
        for (const Start& start : starts)
            folderKeys.try_emplace(start.place.folderId, zn::foldCase(m_vault.folders().pathOf(start.place.folderId)));
        std::stable_sort(starts.begin(), starts.end(), [&](const Start& a, const Start& b) {
            return std::tie(a.position, folderKeys[a.place.folderId], m_sortKeys[a.place.fileId])
                < std::tie(b.position, folderKeys[b.place.folderId], m_sortKeys[b.place.fileId]);
        });
        for (const Start& start : starts)
            list({start.place, start.version}, m_noted[start.position].configuration, nullptr, true);
    }

    void expand(const Node& node)
    {
        const auto references = m_closure.references.find(ReferenceClosure::key(node.place.fileId, node.version));
        if (references != m_closure.references.end())
            for (const Target& target : sorted(references->second))
                list(target, {}, &node, true);
        const auto drawings = m_closure.drawings.find(node.place.fileId);
        if (drawings == m_closure.drawings.end() || isDrawing(m_closure.files.at(node.place.fileId).name))
            return;
        for (const Target& drawing : sorted(drawings->second)) {
            if (!m_startFiles.contains(drawing.place.fileId))
                list(drawing, {}, &node, false);
        }
    }

    /// Adds the rows of a file below a parent: one, or one for each sheet of a drawing where none is named.
    void list(const Target& target, const Text& configuration, const Node* parent, bool isExpanded)
    {
        if (parent && parent->place.fileId == target.place.fileId)
            return;
        if (!m_vault.permissions().allowed(target.place.folderId, Right::Read))
            return;
        const auto sheets = m_closure.sheets.find(ReferenceClosure::key(target.place.fileId, target.version));
        if (!configuration.empty() || sheets == m_closure.sheets.end()) {
            listOne(target, configuration, parent, isExpanded);
            return;
        }
        for (const Text& sheet : sheets->second)
            listOne(target, sheet, parent, isExpanded);
    }

    void listOne(const Target& target, const Text& configuration, const Node* parent, bool isExpanded)
    {
        const NodeKey key{target.place.fileId, configuration};
        if (!parent && !m_listedStarts.insert({target.place.folderId, key}).second)
            return;
        m_nodes.push_back({target.place, configuration, target.version});
        const Node& node = m_nodes.back();
        m_rows.push_back({&node, parent});
        if (isExpanded && m_expanded.insert(key).second)
            m_open.push_back(&node);
    }

    std::vector<Target> sorted(std::vector<Target> targets) const
    {
        std::sort(targets.begin(), targets.end(), [&](const Target& a, const Target& b) {
            return std::tie(m_sortKeys.at(a.place.fileId), a.place.fileId)
                < std::tie(m_sortKeys.at(b.place.fileId), b.place.fileId);
        });
        return targets;
    }

    struct StartHash {
        std::size_t operator()(const std::pair<std::int32_t, NodeKey>& start) const
        {
            return NodeKeyHash()(start.second) + static_cast<std::size_t>(start.first);
        }
    };

    Vault& m_vault;
    const ReferenceClosure& m_closure;
    const zn::ArkSelection& m_noted;
    std::unordered_map<std::int32_t, Text> m_sortKeys;
    std::unordered_set<std::int32_t> m_startFiles;
    std::deque<Node> m_nodes; ///< a deque, because rows point to them
    std::vector<ListedRow> m_rows;
    std::vector<const Node*> m_open;
    std::unordered_set<NodeKey, NodeKeyHash> m_expanded;
    std::unordered_set<std::pair<std::int32_t, NodeKey>, StartHash> m_listedStarts;
};

/// What the columns are made of, with the folders' paths kept.
class ColumnTexts {
public:
    ColumnTexts(Vault& vault, const ReferenceClosure& closure)
        : m_vault(vault)
        , m_closure(closure)
    {
    }

    Text name(const ListedRow& row) { return m_closure.files.at(row.node->place.fileId).name; }
    /// The folder's path in the local view with a trailing separator.
    Text path(const ListedRow& row)
    {
        const auto [known, isNew] = m_paths.try_emplace(row.node->place.folderId);
        if (isNew) {
            const Text relative = m_vault.folders().pathOf(known->first);
            known->second = m_vault.local().root() + u'\\' + (relative.empty() ? relative : relative + u'\\');
        }
        return known->second;
    }
    Text configuration(const ListedRow& row) { return row.node->configuration; }
    Text parentId(const ListedRow& row) { return zn::numberText(row.parent ? row.parent->place.fileId : 0); }
    Text parentConfiguration(const ListedRow& row) { return row.parent ? row.parent->configuration : Text(); }
    Text flags(const ListedRow& row) { return isDrawing(name(row)) ? u"1" : u"0"; }
    Text version(const ListedRow& row) { return zn::numberText(row.node->version); }

private:
    Vault& m_vault;
    const ReferenceClosure& m_closure;
    std::unordered_map<std::int32_t, Text> m_paths;
};

using ColumnText = Text (ColumnTexts::*)(const ListedRow&);

constexpr struct {
    zn::TextView name;
    ColumnText text;
} knownColumns[] = {
    {u"#ArkCol_Name", &ColumnTexts::name},
    {u"#ArkCol_Path", &ColumnTexts::path},
    {u"#ArkCol_Configuration", &ColumnTexts::configuration},
    {u"#ArkCol_ParentFileID", &ColumnTexts::parentId},
    {u"#ArkCol_ParentFileConfiguration", &ColumnTexts::parentConfiguration},
    {u"#ArkCol_ArkListRetFileFlag", &ColumnTexts::flags},
    {u"#ArkCol_AttachedVersion", &ColumnTexts::version},
};

/// The columns of a request, which names each on a line of its own.
std::vector<ColumnText> columnsOf(zn::TextView request)
{
    std::vector<ColumnText> columns;
    for (const Text& line : zn::split(request, u'\n')) {
        const Text name = zn::trim(line);
        if (name.empty())
            continue;
        const auto* column = std::find_if(std::begin(knownColumns), std::end(knownColumns),
            [&](const auto& candidate) { return candidate.name == name; });
        if (column == std::end(knownColumns))
            throw zn::StatusError(zn::E_INVALIDARG, "The vault's list has no column \"" + zn::toUtf8(name) + "\".");
        columns.push_back(column->text);
    }
    return columns;
}

class BatchList final : public zn::IArkBatchList {
public:
    explicit BatchList(ContextRef context)
        : m_context(std::move(context))
    {
    }

    Status AddSelection(zn::IArkVault& vault, const zn::ArkSelection& selection) override
    {
        return guarded(*m_context, [&] {
            requireSameVault(*m_context, vault);
            for (const zn::ArkSelItem& item : selection) {
                if (item.itemType == zn::ArkItemType::File || item.itemType == zn::ArkItemType::Folder)
                    m_noted.push_back(item);
            }
            return S_OK;
        });
    }

    Status GetRows(zn::TextView columns, std::int32_t flag, std::vector<zn::ArkListRow>& rows) override
    {
        return guarded(*m_context, [&] {
            Vault& vault = m_context->vault;
            const std::vector<ColumnText> wanted = columnsOf(columns);
            vault.permissions().refresh();
            const ReferenceClosure closure = readReferenceClosure(vault, starts(), (flag & 1) != 0);
            ListWalk walk(vault, closure, m_noted);
            ColumnTexts texts(vault, closure);
            std::vector<zn::ArkListRow> listed;
            for (const ListedRow& row : walk.rows()) {
                zn::ArkListRow& out
                    = listed.emplace_back(zn::ArkListRow{row.node->place.fileId, row.node->place.folderId, {}});
                out.columns.reserve(wanted.size());
                for (const ColumnText column : wanted)
                    out.columns.push_back((texts.*column)(row));
            }
            rows = std::move(listed);
            return S_OK;
        });
    }

private:
    /// A folder is noted by its own number, or by its path where the selection has none.
    std::vector<ClosureStart> starts() const
    {
        std::vector<ClosureStart> all;
        for (const zn::ArkSelItem& item : m_noted) {
            if (item.itemType == zn::ArkItemType::File)
                all.push_back({item.fileId, item.folderId, item.version});
            else if (item.folderId > 0)
                all.push_back({0, item.folderId, 0});
            else
                all.push_back({0, m_context->vault.findFolder(item.path).value_or(-1), 0});
        }
        return all;
    }

    ContextRef m_context;
    zn::ArkSelection m_noted;
};

} // namespace

zn::ObjectRef makeBatchList(const ContextRef& context) { return std::make_shared<BatchList>(context); }

} // namespace zn::arkin
