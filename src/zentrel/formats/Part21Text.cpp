#include "zentrel/formats/Part21Text.h"

#include <cstring>
#include <string_view>

namespace zn::zentrel {

namespace {

/// The text isn't one of those that this parser takes.
struct Unusual { };

constexpr int deepestList = 200;

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_'; }
constexpr bool isUpper(char c) { return (c >= 'A' && c <= 'Z') || isDigit(c) || c == '_'; }
constexpr bool isHexadecimal(char c) { return isDigit(c) || (c >= 'A' && c <= 'F'); }
constexpr bool isBlank(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t' || c == '\0'; }

/// Goes through the text once. What the kernel's lexer takes in a way of its own is left to it.
class Parser {
public:
    explicit Parser(std::string text)
    {
        // An entity takes about 60 bytes, a parameter 10.
        m_made.records.reserve(text.size() / 60);
        m_made.parameters.reserve(text.size() / 10);
        m_made.text = std::move(text);
        m_at = m_made.text.data();
        m_end = m_at + m_made.text.size();
    }

    Part21Records parse()
    {
        keyword("ISO-10303-21;");
        keyword("HEADER;");
        while (!isNext("ENDSEC;"))
            entity("#0");
        m_made.headRecords = m_made.records.size();
        keyword("ENDSEC;");
        keyword("DATA;");
        while (!isNext("ENDSEC;"))
            instance();
        keyword("ENDSEC;");
        keyword("END-ISO-10303-21;");
        if (m_made.headRecords == 0)
            throw Unusual();
        *m_cut = '\0';
        return std::move(m_made);
    }

private:
    std::string_view rest() const { return {m_at, static_cast<std::size_t>(m_end - m_at)}; }

    /// The next character that is no blank and in no comment. It isn't taken.
    char look()
    {
        for (; m_at < m_end; ++m_at) {
            if (isBlank(*m_at))
                continue;
            if (*m_at != '/')
                return *m_at;
            const std::size_t end = m_at[1] == '*' ? rest().find("*/", 2) : std::string_view::npos;
            if (end == std::string_view::npos)
                break;
            m_at += end + 1;
        }
        throw Unusual();
    }

    bool isNext(std::string_view wanted)
    {
        look();
        return rest().starts_with(wanted);
    }

    void keyword(std::string_view wanted)
    {
        if (!isNext(wanted))
            throw Unusual();
        m_at += wanted.size();
    }

    void take(char wanted)
    {
        if (look() != wanted)
            throw Unusual();
        ++m_at;
    }

    /// At the end of a token: its zero byte can be written as soon as the character there has been read.
    void endToken()
    {
        *m_cut = '\0';
        m_cut = m_at;
    }

    template <class Kind> void takeAll(Kind isOfKind)
    {
        const char* const begin = m_at;
        while (isOfKind(*m_at))
            ++m_at;
        if (m_at == begin)
            throw Unusual();
    }

    /// "#12=A(…);" or "#12=(A(…)B(…));"
    void instance()
    {
        look();
        const char* name = m_at;
        reference();
        endToken();
        take('=');
        if (look() != '(')
            return entity(name);
        ++m_at;
        do {
            part(name);
            name = "#0";
        } while (look() != ')');
        ++m_at;
        take(';');
    }

    void entity(const char* name)
    {
        part(name);
        take(';');
    }

    /// "A(…)"
    void part(const char* name)
    {
        m_lists = 1;
        const char* const type = word();
        list(name, type);
    }

    /// "(…)" behind its type. Its record comes behind those of the lists in it.
    void list(const char* name, const char* type)
    {
        if (++m_depth > deepestList)
            throw Unusual();
        take('(');
        const std::size_t first = m_open.size();
        if (look() != ')') {
            parameter();
            for (; look() == ','; parameter())
                ++m_at;
        }
        take(')');
        --m_depth;
        const auto begin = m_open.begin() + static_cast<std::ptrdiff_t>(first);
        m_made.records.push_back({name, type, m_open.size() - first});
        m_made.parameters.insert(m_made.parameters.end(), begin, m_open.end());
        m_open.erase(begin, m_open.end());
    }

    void listInList(const char* type)
    {
        while (m_made.listNames.size() < m_lists)
            m_made.listNames.push_back("$" + std::to_string(m_made.listNames.size() + 1));
        const char* const name = m_made.listNames[m_lists - 1].c_str();
        ++m_lists;
        list(name, type);
        m_open.push_back({name, Interface_ParamSub});
    }

    void parameter()
    {
        const char first = look();
        if (first == '(')
            return listInList(Part21Records::listType);
        if (isLetter(first) || first == '!')
            return listInList(word());
        const char* const begin = m_at;
        const Interface_ParamType type = value(first);
        endToken();
        if (const char next = look(); next != ',' && next != ')')
            throw Unusual();
        m_open.push_back({begin, type});
    }

    Interface_ParamType value(char first)
    {
        switch (first) {
        case '#':
            reference();
            return Interface_ParamIdent;
        case '\'':
            string();
            return Interface_ParamText;
        case '$':
            ++m_at;
            return Interface_ParamVoid;
        case '*':
            ++m_at;
            return Interface_ParamMisc;
        case '"':
            ++m_at;
            takeAll(isHexadecimal);
            closeWith('"');
            return Interface_ParamHexa;
        case '.':
            if (isDigit(m_at[1]))
                return number();
            ++m_at;
            takeAll(isUpper);
            closeWith('.');
            return Interface_ParamEnum;
        default:
            return number();
        }
    }

    void closeWith(char wanted)
    {
        if (*m_at != wanted)
            throw Unusual();
        ++m_at;
    }

    void reference()
    {
        closeWith('#');
        takeAll(isDigit);
    }

    const char* word()
    {
        look();
        const char* const begin = m_at;
        if (*m_at == '!')
            ++m_at;
        if (!isLetter(*m_at))
            throw Unusual();
        takeAll([](char c) { return isLetter(c) || isDigit(c); });
        endToken();
        return begin;
    }

    /// As the kernel finds its end: the first apostrophe with a comma or a closing parenthesis behind it.
    void string()
    {
        const char* const begin = m_at;
        for (;;) {
            m_at = static_cast<char*>(std::memchr(m_at + 1, '\'', static_cast<std::size_t>(m_end - m_at - 1)));
            if (!m_at)
                throw Unusual();
            const char* behind = m_at + 1;
            while (*behind == ' ' || *behind == '"' || *behind == '\n' || *behind == '\r')
                ++behind;
            if (*behind == ',' || *behind == ')')
                break;
        }
        ++m_at;
        if (std::memchr(begin, '\0', static_cast<std::size_t>(m_at - begin)))
            throw Unusual();
    }

    /// "-12", "1.", ".5", "1.5E-3"; the kernel takes others that no writer should write.
    Interface_ParamType number()
    {
        if (*m_at == '+' || *m_at == '-')
            ++m_at;
        const char* const begin = m_at;
        while (isDigit(*m_at))
            ++m_at;
        if (*m_at != '.') {
            if (m_at == begin)
                throw Unusual();
            return Interface_ParamInteger;
        }
        ++m_at;
        while (isDigit(*m_at))
            ++m_at;
        if (m_at - begin < 2)
            throw Unusual();
        if (*m_at == 'E') {
            ++m_at;
            if (*m_at == '+' || *m_at == '-')
                ++m_at;
            takeAll(isDigit);
        }
        return Interface_ParamReal;
    }

    Part21Records m_made;
    std::vector<Part21Records::Parameter> m_open; ///< of the lists that haven't ended, the innermost last
    std::size_t m_lists = 0;                      ///< of the entity so far, its own included
    int m_depth = 0;
    char* m_at = nullptr;
    char* m_end = nullptr;
    char m_nothing = '\0';
    char* m_cut = &m_nothing;
};

} // namespace

std::optional<Part21Records> parsePart21(std::string text)
{
    try {
        return Parser(std::move(text)).parse();
    } catch (const Unusual&) {
        return std::nullopt;
    }
}

} // namespace zn::zentrel
