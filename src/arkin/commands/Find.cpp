#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Assignment.h"
#include "arkin/commands/frame/Output.h"
#include "arkin/commands/frame/ProgressLine.h"
#include "arkin/commands/frame/SinceTime.h"

#include "arkin/store/Codes.h"
#include "arkin/store/SearchIndex.h"

#include <charconv>
#include <limits>

namespace zn::arkin {

namespace {

/// "300", "20k", "5M" or "1G", in bytes, with powers of 1,000.
std::int64_t sizeOf(const std::string& text)
{
    constexpr std::pair<std::string_view, std::int64_t> units[]
        = {{"", 1}, {"k", 1000}, {"M", 1'000'000}, {"G", 1'000'000'000}};
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const std::string_view unit(end, static_cast<std::size_t>(text.data() + text.size() - end));
    for (const auto& [name, bytes] : units)
        if (error == std::errc() && unit == name && number >= 0 && number <= INT64_MAX / bytes)
            return number * bytes;
    throw zn::StatusError(zn::E_INVALIDARG, "'" + text + "' is no size such as 300, 20k, 5M or 1G.");
}

class Find : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("NAME", m_name, "Name or a part of it; with * for any characters and ? for one, the whole name");
        take.option("--text", m_text, "Words, each of which its name or a value on its card has").shownAs("WORDS");
        take.option("--in", m_folder, "Folder of the vault, with all below it; else the whole vault").shownAs("FOLDER");
        take.option("--card", m_card, "A value of the card, written as the name is").shownAs("NAME=VALUE").oneAtATime();
        take.option("--state", m_state, "State of the workflow");
        take.option("--checked-out-by", m_user, "User who has it checked out; 'me' for oneself").shownAs("USER");
        take.option("--larger", m_larger, "At least this size, such as 20k or 5M").shownAs("BYTES");
        take.option("--smaller", m_smaller, "At most this size").shownAs("BYTES");
        take.option("--since", m_since, "Latest version made since then: yesterday, 7d, 2026-11-22").shownAs("TIME");
        take.option("--until", m_until, "Latest version made until then").shownAs("TIME");
    }

    int run(Session& session) override
    {
        const std::vector<FoundFile> files = findFiles(session.vault(), queryFor(session));
        session.json() ? printJson(asJson(session, files)) : print(session, files);
        return commandDone;
    }

private:
    FileQuery queryFor(Session& session) const
    {
        Vault& vault = session.vault();
        const std::int64_t now = vault.clock().now();
        FileQuery query;
        query.folderId = m_folder.empty() ? vault.folders().rootId() : session.folderAt(m_folder);
        query.name = zn::toText(m_name);
        query.state = zn::toText(m_state);
        if (m_user)
            query.checkedOutBy = *m_user == "me" ? vault.caller().user : *m_user;
        if (m_larger)
            query.leastSize = sizeOf(*m_larger);
        if (m_smaller)
            query.mostSize = sizeOf(*m_smaller);
        if (m_since)
            query.since = sinceTime(*m_since, now);
        if (m_until)
            query.until = sinceTime(*m_until, now);
        if (!m_text.empty())
            query.among = filesWith(session, zn::toText(m_text), std::numeric_limits<std::int32_t>::max());
        else
            query.among = lookedUp(session, query.name);
        for (const std::string& wanted : m_card)
            query.card.push_back(conditionFor(vault, wanted));
        return query;
    }

    static constexpr std::size_t mostLookedUp = 20'000;

    static std::vector<std::int32_t> filesWith(Session& session, zn::TextView words, std::size_t most)
    {
        SearchIndex index(session.vault(), session.platform().home().cacheFolder());
        ProgressLine progress(!session.json());
        index.catchUp([&](std::int64_t done) { progress.show(done, 0, "files read for the search"); });
        return index.find(words, most);
    }

    /// Files that may have such a name; none for all, where looking up isn't possible or not faster.
    static std::optional<std::vector<std::int32_t>> lookedUp(Session& session, const zn::Text& pattern)
    {
        constexpr std::size_t leastLetters = 3;
        const auto part = longestPart(pattern);
        if (part.size() < leastLetters)
            return {};
        try {
            auto files = filesWith(session, part, mostLookedUp);
            return files.size() < mostLookedUp ? std::optional(std::move(files)) : std::nullopt;
        } catch (const zn::StatusError&) {
            return {}; // a home whose cache can't be written
        }
    }

    /// What stands between the signs of a pattern.
    static zn::Text longestPart(const zn::Text& pattern)
    {
        zn::Text longest;
        for (std::size_t at = 0; at <= pattern.size();) {
            const std::size_t end = std::min(pattern.find_first_of(u"*? \t", at), pattern.size());
            if (end - at > longest.size())
                longest = pattern.substr(at, end - at);
            at = end + 1;
        }
        return longest;
    }

    static FileQuery::CardCondition conditionFor(Vault& vault, const std::string& wanted)
    {
        const auto [name, pattern] = splitAssignment(wanted);
        const auto variable = vault.cards().findVariable(name);
        if (!variable)
            throw zn::StatusError(E_ARK_NO_SUCH_VARIABLE,
                "The vault has no card variable '" + zn::toUtf8(name) + "'; 'arkin variable list' shows them.");
        return {variable->id, [pattern = pattern](const zn::Value& value) {
                    return fitsPattern(zn::toText(shownValue(value)), pattern);
                }};
    }

    static Json asJson(Session& session, const std::vector<FoundFile>& files)
    {
        auto list = Json::array();
        for (const FoundFile& file : files)
            list.push_back({{"path", session.shown(session.vault().pathOf(file.place))}, {"version", file.version},
                {"size", file.size}, {"changed", jsonTime(file.madeAt)}, {"state", zn::toUtf8(file.state)},
                {"checkedOutBy", file.checkedOutBy.empty() ? nullptr : Json(file.checkedOutBy)}});
        return list;
    }

    static void print(Session& session, const std::vector<FoundFile>& files)
    {
        std::vector<std::vector<std::string>> rows{{"VERSION", "SIZE", "CHANGED", "CHECKED OUT BY", "FILE"}};
        for (const FoundFile& file : files)
            rows.push_back({std::to_string(file.version), shownCount(file.size), shownTime(file.madeAt),
                file.checkedOutBy, session.shown(session.vault().pathOf(file.place))});
        printTable(rows, "No file fits.");
    }

    std::string m_name, m_text, m_folder, m_state;
    std::vector<std::string> m_card;
    std::optional<std::string> m_user, m_larger, m_smaller, m_since, m_until;
};

} // namespace

MadeCommand findCommand() { return std::make_unique<Find>(); }

} // namespace zn::arkin
