#pragma once

#include "addin/pages/print/FileInfo.h"
#include "contracts/host/Records.h"

#include <unordered_map>
#include <unordered_set>

namespace zn {

/// The columns of the host's list, in the order in which the rows have them.
extern const TextView listColumns;

/// Which references are ticked at first.
enum class AutoSelect : std::int32_t { Nothing = 0, Drawings = 1, PartsAndAssemblies = 2, Everything = 3 };

/// What decides about the first ticks.
struct FirstTicks {
    AutoSelect rule = AutoSelect::Drawings;
    Text unsupportedText; ///< the state of a file that can't be printed
};

/// The files of a print launch with their places in the tree.
class PrintFileList {
public:
    PrintFileList() = default;
    /// `selection` is what the user named: those files, and the files of those folders, are ticked whatever the rule.
    PrintFileList(const ArkSelection& selection, const std::vector<ArkListRow>& rows, const FirstTicks& ticks);

    /// In the order of the host's list.
    const Lst& files() const { return m_files; }
    /// The rows of the tree's first level, a file perhaps several times.
    const std::vector<FileInfo*>& roots() const { return m_roots; }

    /// Ticks or unticks a file. False if it can't be printed.
    bool select(FileInfo& file, bool selected);
    std::int64_t selectedCount() const { return m_selectedCount; }
    /// Takes the ticks over that the same files have in another list.
    void takeTicks(const PrintFileList& earlier);
    /// The ticked files as the host's selection.
    ArkSelection selectionArray() const;

private:
    struct Key {
        std::int32_t documentId;
        Text configuration;
        bool operator==(const Key&) const = default;
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const
        {
            return std::hash<Text>()(key.configuration) * 31 + static_cast<std::size_t>(key.documentId);
        }
    };
    struct Link {
        Key parent;
        FileInfo* child = nullptr;
    };

    FileInfo& fileOf(const ArkListRow& row, const FirstTicks& ticks);
    bool isTickedAtFirst(const FileInfo& file, const FirstTicks& ticks) const;
    void link(const std::vector<Link>& links);
    FileInfo* find(const Key& key) const;

    std::unordered_set<std::int32_t> m_namedDocuments;
    std::unordered_set<std::int32_t> m_namedFolders;
    Lst m_files;
    std::vector<FileInfo*> m_roots;
    std::unordered_map<Key, FileInfo*, KeyHash> m_byKey;
    std::int64_t m_selectedCount = 0;
};

} // namespace zn
