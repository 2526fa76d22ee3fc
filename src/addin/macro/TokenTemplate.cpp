#include "addin/macro/TokenTemplate.h"

#include <algorithm>

namespace zn {

TokenTemplate::TokenTemplate(Text text, std::vector<Text> tokens)
    : m_text(std::move(text))
    , m_tokens(std::move(tokens))
{
    for (const Text& token : m_tokens) {
        if (m_firstUnits.find(token.front()) == Text::npos)
            m_firstUnits.push_back(token.front());
    }
    m_singlePass = findPlaces();
}

/// False if the order of the passes could matter: tokens that overlap, or a text in front of a token that together
/// with the token's value could form another one.
bool TokenTemplate::findPlaces()
{
    for (std::size_t token = 0; token < m_tokens.size(); ++token) {
        const std::size_t length = m_tokens[token].size();
        for (std::size_t at = 0; (at = m_text.find(m_tokens[token], at)) != Text::npos; at += length)
            m_places.push_back({at, token});
    }
    std::sort(m_places.begin(), m_places.end(), [](auto& a, auto& b) { return a.position < b.position; });

    std::size_t end = 0;
    for (const Place& place : m_places) {
        if (place.position < end || canBeginToken(end, place.position))
            return false;
        end = place.position + m_tokens[place.token].size();
    }
    return true;
}

/// Whether the text between the two positions ends in the beginning of a token.
bool TokenTemplate::canBeginToken(std::size_t start, std::size_t end) const
{
    const TextView literal = TextView(m_text).substr(start, end - start);
    for (const TextView token : m_tokens) {
        for (std::size_t length = 1; length < token.size(); ++length) {
            if (literal.ends_with(token.substr(0, length)))
                return true;
        }
    }
    return false;
}

bool TokenTemplate::fitSinglePass(std::span<const std::optional<Text>> values) const
{
    return m_singlePass && std::all_of(values.begin(), values.end(), [this](const std::optional<Text>& value) {
        return value && value->find_first_of(m_firstUnits) == Text::npos;
    });
}

void TokenTemplate::appendTo(Text& out, std::span<const std::optional<Text>> values) const
{
    if (!fitSinglePass(values)) {
        Text text = m_text;
        for (std::size_t i = 0; i < m_tokens.size(); ++i) {
            if (values[i])
                replaceAll(text, m_tokens[i], *values[i]);
        }
        out.append(text);
        return;
    }
    std::size_t size = out.size() + m_text.size();
    for (const Place& place : m_places)
        size += values[place.token]->size();
    out.reserve(size);
    std::size_t start = 0;
    for (const Place& place : m_places) {
        out.append(m_text, start, place.position - start).append(*values[place.token]);
        start = place.position + m_tokens[place.token].size();
    }
    out.append(m_text, start);
}

} // namespace zn
