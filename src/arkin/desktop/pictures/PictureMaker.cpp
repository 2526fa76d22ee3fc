#include "arkin/desktop/pictures/PictureMaker.h"

#include "arkin/desktop/frame/Texts.h"
#include "arkin/store/CopyOut.h"
#include "arkin/tasks/PictureProgram.h"
#include "platform/Sha256.h"
#include "platform/WholeFile.h"

#include <QFile>
#include <QImageReader>
#include <QProcess>
#include <QTimer>

namespace zn::arkin {

namespace {

constexpr int longest = 60'000;                // milliseconds that a program may take
constexpr std::uintmax_t largest = 64'000'000; // bytes of what is made

QString shownPath(const std::filesystem::path& path) { return QString::fromStdString(path.string()); }

bool isImage(const std::filesystem::path& file)
{
    const QString extension = shownPath(file.extension()).mid(1).toLower();
    return QImageReader::supportedImageFormats().contains(extension.toLatin1());
}

} // namespace

PictureMaker::PictureMaker(const DailyHost& host, QObject* parent, Form form)
    : QObject(parent)
    , m_host(host)
    , m_form(form)
    , m_process(new QProcess(this))
    , m_limit(new QTimer(this))
{
    // Without the cache each picture is made again.
    if (const auto most = zn::cacheLimit(host.tasks.registry); most > 0 && !host.cacheFolder.empty())
        zn::guarded([&] { m_cache.emplace(host.cacheFolder, most); }, [] {});
    m_limit->setSingleShot(true);
    m_process->setStandardInputFile(QProcess::nullDevice());
    connect(m_limit, &QTimer::timeout, m_process, &QProcess::kill);
    connect(m_process, &QProcess::finished, this,
        [this](int code, QProcess::ExitStatus status) { ended(status == QProcess::NormalExit && code == 0); });
    connect(m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            ended(false);
    });
}

PictureMaker::~PictureMaker()
{
    m_process->disconnect(this);
    m_process->kill();
    m_process->waitForFinished();
}

PictureMaker::Request PictureMaker::requestFor(const Place& place, std::int32_t version) const
{
    Vault& vault = *m_host.tasks.opened;
    const bool asBuilt = version != vault.file(place.fileId).latestVersion;
    Request request{{place, version}, {}, {}};
    request.all = withReferences(vault, {&request.file, 1}, asBuilt).files;
    zn::Sha256 key;
    const auto add = [&](const std::string& text) { key.update({text.data(), text.size() + 1}); };
    add(std::string(outputName()) + " 1 of " + std::to_string(pixels));
    for (const GetRequest& one : request.all) {
        const FileRow file = vault.file(one.place.fileId);
        add(zn::toUtf8(file.name));
        add(vault.version(file.id, one.version == 0 ? file.latestVersion : one.version).content.hash);
    }
    const std::filesystem::path name(zn::toUtf8(vault.file(place.fileId).name));
    const QStringList program = programFor(name, "x");
    add(program.isEmpty() ? std::string() : stampOfProgram(program.first().toStdString()));
    request.key = key.finish();
    return request;
}

QStringList PictureMaker::programFor(const std::filesystem::path& file, const std::filesystem::path& png) const
{
    QStringList words;
    if (m_form != Form::Picture && shownPath(file.extension()).compare(".pdf", Qt::CaseInsensitive) == 0)
        return words;
    for (const std::string& word : pictureProgram(m_host.tasks.registry, m_host.tasks.files, file, png, pixels))
        words << QString::fromStdString(word);
    return words;
}

const char* PictureMaker::outputName() const
{
    constexpr const char* names[] = {"picture.png", "model.ply", "measures.json"};
    return names[static_cast<int>(m_form)];
}

void PictureMaker::forget() { m_wanted.reset(); }

void PictureMaker::ask(const Place& place, std::int32_t version)
{
    m_wanted = requestFor(place, version);
    if (const auto kept = m_cache ? m_cache->find(m_wanted->key) : std::nullopt) {
        give(*kept);
        return;
    }
    told(own("The picture is being made …"));
    if (!m_made)
        begin();
}

void PictureMaker::begin()
{
    Vault& vault = *m_host.tasks.opened;
    const std::filesystem::path name(zn::toUtf8(vault.file(m_wanted->file.place.fileId).name));
    const bool isDrawnHere = m_form == Form::Picture && isImage(name);
    if (!isDrawnHere && programFor(name, name).isEmpty()) {
        m_wanted.reset();
        told(own("There are no pictures of files of this kind."));
        return;
    }
    m_folder = std::make_unique<zn::WorkFolder>(std::filesystem::temp_directory_path(), "arkin-picture");
    const auto copies = m_folder->path() / "files";
    copyOut(vault, m_wanted->all, copies, false);
    m_made = m_wanted;
    if (isDrawnHere) {
        const QImage image(shownPath(copies / name));
        image.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation)
            .save(shownPath(m_folder->path() / outputName()));
        ended(!image.isNull());
        return;
    }
    QStringList words = programFor(copies / name, m_folder->path() / outputName());
    const QString program = words.takeFirst();
    m_process->start(program, words);
    m_limit->start(longest);
}

void PictureMaker::ended(bool well)
{
    m_limit->stop();
    const auto made = std::exchange(m_made, std::nullopt);
    const auto folder = std::move(m_folder);
    const bool isWanted = m_wanted && made && m_wanted->key == made->key;
    zn::guarded(
        [&] {
            const auto file = folder->path() / outputName();
            if (!well || !std::filesystem::exists(file)) {
                if (isWanted) {
                    const QString reason = QString::fromUtf8(m_process->readAllStandardError()).trimmed();
                    m_wanted.reset();
                    told(reason.isEmpty() ? own("No picture could be made of this file.") : reason);
                }
            } else {
                const std::string bytes = zn::readWholeFile(file, largest, "The picture");
                if (m_cache)
                    zn::guarded([&] { m_cache->keep(made->key, bytes); }, [] {}); // it is made again then
                if (isWanted)
                    give(bytes);
            }
            if (m_wanted)
                begin();
        },
        [&] { told(zn::shown(currentFailure().sentence)); });
}

void PictureMaker::give(const std::string& bytes)
{
    m_wanted.reset();
    if (m_form != Form::Picture)
        given(bytes);
    else
        shown(QImage::fromData(reinterpret_cast<const uchar*>(bytes.data()), static_cast<int>(bytes.size())));
}

} // namespace zn::arkin
