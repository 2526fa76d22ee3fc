#include "platform/linux/CupsPrinters.h"

#include "base/Status.h"

#include <algorithm>
#include <cmath>
#include <cups/cups.h>
#include <fmt/format.h>
#include <memory>

namespace zn {

namespace {

constexpr int connectMilliseconds = 1000;
constexpr double answerSeconds = 3.0;
/// What office printers leave white, mm.
constexpr double deviceMargin = 6.35;

struct CloseConnection {
    void operator()(http_t* connection) const { httpClose(connection); }
};
using Connection = std::unique_ptr<http_t, CloseConnection>;

/// An answer that doesn't come isn't waited for again.
int giveUp(http_t*, void*) { return 0; }

/// Null if there is no printing system.
Connection connect()
{
    Connection connection(
        httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1, connectMilliseconds, nullptr));
    if (connection)
        httpSetTimeout(connection.get(), answerSeconds, giveUp, nullptr);
    return connection;
}

struct FreeMessage {
    void operator()(ipp_t* message) const { ippDelete(message); }
};
using Message = std::unique_ptr<ipp_t, FreeMessage>;

constexpr const char* askedAttributes[] = {"printer-name", "printer-type", "device-uri"};

/// One request, unlike the library's own list, which looks around in the network as well.
Message askForQueues(http_t* connection)
{
    ipp_t* request = ippNewRequest(IPP_OP_CUPS_GET_PRINTERS);
    ippAddStrings(request, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes",
        static_cast<int>(std::size(askedAttributes)), nullptr, askedAttributes);
    return Message(cupsDoRequest(connection, request, "/"));
}

Text textOf(ipp_attribute_t* attribute)
{
    const char* value = ippGetString(attribute, 0, nullptr);
    return value ? toText(value) : Text();
}

/// Takes one attribute of a queue over.
void readAttribute(ipp_attribute_t* attribute, Printer& printer)
{
    const std::string_view name = ippGetName(attribute);
    if (name == "printer-name")
        printer.name = textOf(attribute);
    else if (name == "device-uri")
        printer.target = textOf(attribute);
    else if (name == "printer-type" && (ippGetInteger(attribute, 0) & CUPS_PRINTER_REMOTE) != 0)
        printer.kind = PrinterKind::Connected;
}

std::string mediaName(const PrintJob& job)
{
    constexpr double unitsOfMillimeter = 100.0;
    const auto [shorter, longer] = std::minmax(job.width, job.height);
    const pwg_media_t* media = pwgMediaForSize(static_cast<int>(std::lround(shorter * unitsOfMillimeter)),
        static_cast<int>(std::lround(longer * unitsOfMillimeter)));
    return media ? media->pwg : fmt::format("Custom.{:g}x{:g}mm", shorter, longer);
}

/// A job that goes into the queue, or is taken back.
class QueuedJob {
public:
    QueuedJob(http_t* connection, const Text& printer, const PrintJob& job)
        : m_connection(connection)
        , m_printer(toUtf8(printer))
    {
        cups_option_t* options = nullptr;
        const int count = cupsAddOption("media", mediaName(job).c_str(), 0, &options);
        m_id = cupsCreateJob(connection, m_printer.c_str(), toUtf8(job.title).c_str(), count, options);
        cupsFreeOptions(count, options);
        if (m_id == 0)
            throw refusal();
    }
    QueuedJob(const QueuedJob&) = delete;
    QueuedJob& operator=(const QueuedJob&) = delete;
    ~QueuedJob()
    {
        if (!m_sent)
            cupsCancelJob2(m_connection, m_printer.c_str(), m_id, 1);
    }

    void send(const PrintJob& job)
    {
        const bool open
            = cupsStartDocument(m_connection, m_printer.c_str(), m_id, toUtf8(job.title).c_str(), CUPS_FORMAT_PDF, 1)
            == HTTP_STATUS_CONTINUE;
        if (!open || cupsWriteRequestData(m_connection, job.pdf.data(), job.pdf.size()) != HTTP_STATUS_CONTINUE
            || cupsFinishDocument(m_connection, m_printer.c_str()) > IPP_STATUS_OK_CONFLICTING)
            throw refusal();
        m_sent = true;
    }

private:
    StatusError refusal() const
    {
        return StatusError(E_FAIL, fmt::format("The printer '{}' took no job: {}", m_printer, cupsLastErrorString()));
    }

    http_t* m_connection;
    std::string m_printer;
    int m_id = 0;
    bool m_sent = false;
};

} // namespace

std::vector<Printer> CupsPrinters::list()
{
    std::vector<Printer> printers;
    const Connection connection = connect();
    const Message answer = connection ? askForQueues(connection.get()) : nullptr;
    m_isSilent = connection && !answer;
    bool inPrinter = false;
    for (auto* attribute = answer ? ippFirstAttribute(answer.get()) : nullptr; attribute;
         attribute = ippNextAttribute(answer.get())) {
        // Groups of attributes, one a queue, follow each other with a nameless one between them.
        const bool ofPrinter = ippGetGroupTag(attribute) == IPP_TAG_PRINTER && ippGetName(attribute);
        if (ofPrinter && !inPrinter)
            printers.emplace_back().margin = deviceMargin;
        if (ofPrinter)
            readAttribute(attribute, printers.back());
        inPrinter = ofPrinter;
    }
    std::erase_if(printers, [](const Printer& printer) { return printer.name.empty(); });
    return printers;
}

void CupsPrinters::print(const Text& printer, const PrintJob& job)
{
    const Connection connection = connect();
    if (!connection)
        throw StatusError(E_FAIL,
            "The printer '" + toUtf8(printer) + "' can't be reached: the machine's printing system doesn't answer.");
    QueuedJob(connection.get(), printer, job).send(job);
}

} // namespace zn
