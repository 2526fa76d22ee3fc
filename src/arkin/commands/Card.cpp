#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/Assignment.h"
#include "arkin/store/CheckIn.h"
#include "arkin/store/CheckOut.h"
#include "arkin/store/Codes.h"

namespace zn::arkin {

namespace {

class Card : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("FILE", m_file, "File of the vault").required();
        take.option("--version", m_version, "Version to show; else the latest").range(1, INT32_MAX);
        take.option("--configuration", m_configuration, "Configuration; '@' for the file's own values");
        take.option(
            "--set", m_settings, "NAME=VALUE to write. A file that isn't checked out gets a new version with it");
    }

    int run(Session& session) override
    {
        const auto place = session.fileAt(m_file);
        if (!m_settings.empty())
            write(session, place);
        show(session, place);
        return commandDone;
    }

private:
    void write(Session& session, const Place& place)
    {
        if (m_version > 0)
            throw zn::StatusError(
                zn::E_INVALIDARG, "A version that stands can't be written: use --set without --version.");
        auto& vault = session.vault();
        const auto configuration = zn::toText(m_configuration.empty() ? "@" : m_configuration);
        std::vector<CardWrite> writes;
        for (const auto& setting : m_settings) {
            const auto [name, value] = splitAssignment(setting);
            const auto variable = vault.cards().findVariable(name);
            if (!variable)
                throw zn::StatusError(E_ARK_NO_SUCH_VARIABLE,
                    "The vault has no card variable '" + zn::toUtf8(name) + "'; 'arkin variable add' adds it.");
            writes.push_back({place.fileId, variable->id, configuration, zn::Value(value)});
        }
        const bool wasCheckedOut = vault.files().checkOut(place.fileId).has_value();
        try {
            if (!wasCheckedOut)
                checkOut(vault, place);
            for (const auto& outcome : writeCards(vault, writes))
                zn::checkStatus(outcome.status, outcome.sentence.c_str());
            if (!wasCheckedOut) {
                const Place places[] = {place};
                checkIn(vault, planCheckIn(vault, places), u"Card values");
            }
        } catch (...) {
            if (!wasCheckedOut)
                giveBack(vault, place);
            throw;
        }
    }

    /// The local copy was the vault's, or the file would not have been checked out.
    static void giveBack(Vault& vault, const Place& place)
    {
        try {
            if (vault.files().checkOut(place.fileId))
                undoCheckOut(vault, place.fileId);
        } catch (...) {
            printNote("The file stays checked out; 'arkin undo' gives it back.");
        }
    }

    void show(Session& session, const Place& place) const
    {
        auto& vault = session.vault();
        const auto checkOut = vault.files().checkOut(place.fileId);
        const bool toCome = m_version == 0 && checkOut && checkOut->cardOpen && vault.isMine(*checkOut);
        const auto version = toCome ? checkOut->versionToCome() : vault.version(place.fileId, m_version).version;
        auto values = Json::array();
        std::vector<std::vector<std::string>> rows{{"VARIABLE", "CONFIGURATION", "VALUE"}};
        const auto names = vault.cards().variables();
        for (const auto& value : vault.cards().values(place.fileId, version)) {
            if (!m_configuration.empty() && value.configuration != zn::toText(m_configuration))
                continue;
            std::string name;
            for (const auto& variable : names)
                if (variable.id == value.variableId)
                    name = zn::toUtf8(variable.name);
            values.push_back({{"variable", name}, {"configuration", zn::toUtf8(value.configuration)},
                {"value", jsonValue(value.value)}});
            rows.push_back({name, zn::toUtf8(value.configuration), shownValue(value.value)});
        }
        if (session.json())
            printJson(values);
        else
            printTable(rows, "The card is empty.");
    }

    std::string m_file;
    std::int32_t m_version = 0;
    std::string m_configuration;
    std::vector<std::string> m_settings;
};

} // namespace

MadeCommand cardCommand() { return std::make_unique<Card>(); }

} // namespace zn::arkin
