#pragma once

#include "arkin/desktop/pictures/DailyHost.h"
#include "arkin/store/GetFiles.h"
#include "platform/ContentCache.h"
#include "platform/WorkFolder.h"

#include <memory>
#include <optional>
#include <QImage>
#include <QObject>
#include <QStringList>

class QProcess;
class QTimer;

namespace zn::arkin {

/// Pictures of the vault's files, models to be turned, or their measures, made in the background, one at a time, and
/// kept in the cache by what the file and all that it refers to contain.
class PictureMaker : public QObject {
public:
    enum class Form {
        Picture,
        Model,    ///< for `TurningModel`; only programs make these
        Measures, ///< for `measureDifferences`, likewise
    };
    /// `host` outlives it.
    explicit PictureMaker(const DailyHost& host, QObject* parent = nullptr, Form form = Form::Picture);
    /// Ends a program at work.
    ~PictureMaker() override;

    /// Asks for the picture or model of a version; it comes by `shown` or `given`, at once if it is kept. What was
    /// asked for before doesn't come any more.
    void ask(const Place& place, std::int32_t version);
    /// Nothing is asked for any more.
    void forget();

    std::function<void(const QImage& picture)> shown;
    /// For the other forms.
    std::function<void(const std::string& bytes)> given;
    /// Why there is no picture, or not yet.
    std::function<void(const QString& sentence)> told;

    static constexpr int pixels = 512; ///< of the longer side

private:
    struct Request {
        GetRequest file;
        std::vector<GetRequest> all; ///< with what it refers to
        std::string key;
    };
    Request requestFor(const Place& place, std::int32_t version) const;
    /// The program and its arguments for this file; empty if nobody draws it.
    QStringList programFor(const std::filesystem::path& file, const std::filesystem::path& png) const;
    void begin();
    void ended(bool well);
    void give(const std::string& bytes);
    const char* outputName() const;

    const DailyHost& m_host;
    Form m_form;
    std::optional<zn::ContentCache> m_cache; ///< none where it is turned off or can't be used
    std::optional<Request> m_wanted;
    std::optional<Request> m_made; ///< what the program works on
    std::unique_ptr<zn::WorkFolder> m_folder;
    QProcess* m_process;
    QTimer* m_limit;
};

} // namespace zn::arkin
