#include "arkin/desktop/explorer/FileImport.h"

#include "arkin/desktop/explorer/FileWork.h"
#include "arkin/desktop/frame/Texts.h"
#include "arkin/store/AddFiles.h"
#include "arkin/store/CheckIn.h"
#include "arkin/store/UpdateFile.h"
#include "base/Paths.h"

#include <algorithm>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>

namespace zn::arkin {

namespace {

/// Files that go in together.
constexpr std::size_t batchSize = 50;
constexpr const char16_t* comment = u"Added";

struct Incoming {
    std::filesystem::path source;
    AddRequest request;
};

void collect(Vault& vault, const std::filesystem::path& source, const zn::Text& folder, std::vector<Incoming>& files)
{
    const zn::Text name = zn::toText(source.filename().string());
    if (!std::filesystem::is_directory(source)) {
        files.push_back({source, {vault.local().fromMachine(source), folder, name}});
        return;
    }
    std::vector<std::filesystem::path> inside;
    for (const auto& entry : std::filesystem::directory_iterator(source))
        inside.push_back(entry.path());
    std::sort(inside.begin(), inside.end());
    for (const auto& path : inside)
        collect(vault, path, zn::pathAppend(folder, name), files);
}

/// Whether files that exist get new versions; none if the user wants to leave it.
std::optional<bool> askAboutExisting(QWidget* window, std::size_t existing)
{
    QMessageBox box(QMessageBox::Question, own("Add Files"),
        own("The vault has %1 of these files already. Do you want to make new versions of them?").arg(existing),
        QMessageBox::Cancel, window);
    auto* const versions = box.addButton(own("New &Versions"), QMessageBox::YesRole);
    versions->setObjectName("newVersions");
    auto* const skip = box.addButton(own("&Leave Them Out"), QMessageBox::NoRole);
    skip->setObjectName("leaveOut");
    box.setDefaultButton(versions);
    box.exec();
    if (box.clickedButton() == versions)
        return true;
    return box.clickedButton() == skip ? std::optional(false) : std::nullopt;
}

class Import {
public:
    explicit Import(Vault& vault)
        : m_vault(vault)
    {
    }

    void update(const Incoming& file)
    {
        zn::guarded([&] { updateFile(m_vault, *m_vault.find(pathOf(file)), file.source, comment); },
            [&] { failures << shown(currentFailure().sentence); });
    }

    void add(std::span<const Incoming> files)
    {
        std::vector<AddRequest> requests;
        for (const Incoming& file : files)
            requests.push_back(file.request);
        std::vector<Place> places;
        for (const AddOutcome& outcome : addFiles(m_vault, requests)) {
            if (outcome.status == zn::S_OK)
                places.push_back(outcome.place);
            else
                failures << shown(outcome.path) + ": " + QString::fromStdString(outcome.sentence);
        }
        if (places.empty())
            return;
        for (const CheckedIn& version : checkIn(m_vault, planCheckIn(m_vault, places), comment))
            if (!version.note.empty())
                failures << QString::fromStdString(version.note);
    }

    bool exists(const Incoming& file) const { return m_vault.find(pathOf(file)).has_value(); }

    QStringList failures;

private:
    static zn::Text pathOf(const Incoming& file) { return zn::pathAppend(file.request.folder, file.request.name); }

    Vault& m_vault;
};

} // namespace

void importFiles(Vault& vault, QWidget* window, std::int32_t folderId, const std::vector<std::filesystem::path>& paths)
{
    const zn::Text folder = vault.local().pathOf(folderId, u"");
    std::vector<Incoming> files;
    for (const auto& path : paths)
        collect(vault, path, folder, files);
    Import import(vault);
    const auto fresh
        = std::stable_partition(files.begin(), files.end(), [&](const Incoming& file) { return import.exists(file); });
    const auto existing = static_cast<std::size_t>(fresh - files.begin());
    const auto update = existing > 0 ? askAboutExisting(window, existing) : std::optional(false);
    if (!update)
        return;
    QProgressDialog progress(own("Add Files"), own("Cancel"), 0, static_cast<int>(files.size()), window);
    progress.setWindowModality(Qt::WindowModal);
    for (std::size_t done = 0; *update && done < existing && !progress.wasCanceled(); ++done) {
        progress.setValue(static_cast<int>(done));
        import.update(files[done]);
    }
    for (std::size_t done = existing; done < files.size() && !progress.wasCanceled(); done += batchSize) {
        progress.setValue(static_cast<int>(done));
        import.add(std::span(files).subspan(done, std::min(batchSize, files.size() - done)));
    }
    progress.close();
    tellAll(window, import.failures);
}

} // namespace zn::arkin
