#pragma once

#include "arkin/store/Vault.h"
#include "contracts/documents/Outline.h"

#include <functional>

namespace zn::arkin {

/// A version of a file with what its content says of itself.
struct KnownOutline {
    FileVersion file;
    std::int32_t folderId = 0; ///< from which relative references lead
    std::optional<DocumentOutline> outline;
    std::string problem; ///< a sentence, if the content tells nothing although its name promises it
};

/// A reference that stands in the latest version of a document and doesn't lead to its file any more.
struct BrokenReference {
    std::int32_t fileId = 0; ///< the document
    std::int32_t toFileId = 0;
    std::string path; ///< as it stands in the document
};

/// What documents say of themselves: a drawing's sheets, the configurations of parts and assemblies, and the files to
/// which they refer. It is kept with each version, so that lists and selections know it without opening a file.
class Outlines {
public:
    explicit Outlines(Vault& vault)
        : m_vault(vault)
    {
    }

    /// Reads a content in the archive; files whose names promise no outline have none. Not inside a transaction, since
    /// a large file takes its time.
    KnownOutline read(const FileVersion& file, const Place& place, zn::TextView name, const Content& content);

    /// Stores outlines and makes the references that stand in them, to the latest versions of files that the vault
    /// has. References that came from the content of version `base` (0: none) and are not in the new one go; `base` may
    /// be the version itself, whose references then stay as they are. Inside a transaction, as the following.
    void keep(const KnownOutline& known, std::int32_t base);
    /// Completes references of latest versions that have been waiting for these new files.
    void connect(std::span<const Place> arrived);
    /// Follows the references of latest versions anew from and to files that have moved. Those that lead to another
    /// file now are returned; they wait, or mean that file. What refers to them in the vault stays.
    std::vector<BrokenReference> follow(std::span<const std::int32_t> moved);
    /// Lets references wait again, for a file that leaves the vault or is deleted: another may come in its place.
    static void disconnect(Database& database, std::int32_t fileId);

    /// Sheets or configurations in the document's order.
    std::vector<zn::Text> parts(const FileVersion& file);

private:
    struct Standing;
    std::vector<Standing> standing(std::int32_t fileId, bool asTarget);
    Place target(std::int32_t folderId, const std::string& path);
    void forget(const FileVersion& file);
    void refer(const FileVersion& file, const Place& target);

    Vault& m_vault;
};

struct RefreshReport {
    std::int64_t documents = 0;
    std::vector<std::string> problems; ///< one sentence for each document that tells nothing
};

/// Reads the latest versions of all documents of the vault again: for vaults from before outlines were kept, and for
/// files under which others were put since. `progress` gets what is done and the total.
RefreshReport refreshOutlines(Vault& vault, const std::function<void(std::int64_t, std::int64_t)>& progress);

} // namespace zn::arkin
