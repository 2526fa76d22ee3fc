#include "arkin/commands/frame/ReportPage.h"

#include <fmt/format.h>

namespace zn::arkin {

namespace {

constexpr const char* style = R"(
:root { color-scheme: light dark; }
body { font: 15px/1.45 system-ui, sans-serif; max-width: 70em; margin: 2em auto; padding: 0 1em; }
h1 { font-size: 1.4em; } h2 { font-size: 1.15em; margin: 1.6em 0 .2em; }
.state { font-weight: 600; } .good { color: light-dark(#1a7f37, #56d364); } .bad { color: light-dark(#b42318, #ff7b72); }
p { margin: .2em 0; } .details { opacity: .75; }
table { border-collapse: collapse; width: 100%; margin: .6em 0; }
td, th { text-align: left; vertical-align: top; padding: .25em .6em .25em 0; border-bottom: 1px solid #8884; }
img { max-width: 160px; max-height: 120px; background: #fff; border: 1px solid #8884; }
svg.icon { width: 48px; height: 36px; } svg.icon rect { fill: none; stroke: #888; }
svg.icon text { font: 11px sans-serif; text-anchor: middle; fill: #888; }
td { overflow-wrap: anywhere; } td.seconds { text-align: right; white-space: nowrap; }
)";

std::string escaped(const std::string& text)
{
    std::string result;
    for (const char c : text) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            result += c;
        }
    }
    return result;
}

std::string rowOf(const ReportedFile& file)
{
    const bool bad = file.outcome == "failed" || file.outcome == "skipped";
    return fmt::format(
        "<tr><td>{}</td><td class=\"{}\">{}</td><td>{}</td><td>{}</td><td class=\"seconds\">{:.1f}</td></tr>\n",
        file.picture, bad ? "bad" : "good", escaped(file.outcome), escaped(file.source),
        escaped(file.sentence.empty() ? file.output : file.sentence), file.seconds);
}

std::string sectionOf(const ReportedRun& run)
{
    std::string text = fmt::format("<h2>{}: <span class=\"state {}\">{}</span></h2>\n<p class=\"details\">{}</p>\n",
        escaped(run.title), run.wentWell ? "good" : "bad", escaped(run.state), escaped(run.details));
    for (const std::string& message : run.messages)
        text += "<p>" + escaped(message) + "</p>\n";
    if (run.files.empty())
        return text;
    text += "<table><tr><th></th><th>Result</th><th>File</th><th>What changed, or why not</th><th>Seconds</th></tr>\n";
    for (const ReportedFile& file : run.files)
        text += rowOf(file);
    return text + "</table>\n";
}

} // namespace

std::string reportPage(const std::string& heading, const std::vector<ReportedRun>& runs)
{
    std::string text = fmt::format(
        "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">\n<meta name=\"viewport\" "
        "content=\"width=device-width\">\n<title>{0}</title>\n<style>{1}</style></head>\n<body>\n<h1>{0}</h1>\n",
        escaped(heading), style);
    for (const ReportedRun& run : runs)
        text += sectionOf(run);
    return text + "</body></html>\n";
}

} // namespace zn::arkin
