#pragma once

#include "base/Text.h"

/// Placeholders of a macro template, as an editor sees them: in one line at a time, and without their values.
namespace zn {

enum class PlaceholderKind : std::uint8_t {
    Host, ///< {Name}, {#Id}: the host's second lookup
    Task, ///< [Name]: a task variable
    File, ///< <Name>: a value of the file, one of a fixed set
    Card, ///< %Name%: a card variable of the file
};

struct Placeholder {
    PlaceholderKind kind;
    std::size_t position; ///< in the line
    std::size_t length;   ///< with the delimiters
};

struct LinePlaceholders {
    std::vector<Placeholder> found; ///< in the order of the line, none inside another
    /// Places of a "[" or "{" whose other half isn't in the line. A run takes it for the beginning of a placeholder all
    /// the same, and everything up to the next "]" or "}" for its name.
    std::vector<std::size_t> unclosed;
};

/// The placeholders of one line without its line end. Like a run, it finds them in texts and comments too. Whether a
/// %Name% is one depends on the names that the task uses; here it counts as one if the name could be a variable's and,
/// outside texts and comments, if its first "%" isn't the type mark of an identifier.
LinePlaceholders findPlaceholders(TextView line);

/// A template with a neutral value in place of each placeholder, so that it can be checked without a task: "True" for
/// what is a boolean at a run, else "1", which stands as a number and as a part of a text alike. The lines stay.
class NeutralTemplate {
public:
    explicit NeutralTemplate(TextView source);

    const Text& text() const { return m_text; }
    /// The place in the source of a place in `text()`. A place inside a value is the beginning of its placeholder.
    std::size_t sourcePosition(std::size_t position) const;
    /// Whether a place in `text()` lies in a value, or at its end.
    bool isValue(std::size_t position) const;
    /// Places in the source of delimiters that are never closed in their line.
    const std::vector<std::size_t>& unclosed() const { return m_unclosed; }

private:
    struct Replacement {
        std::size_t start; ///< in the neutral text
        std::size_t end;
        std::size_t sourceStart;
        std::size_t sourceEnd;
    };

    void appendLine(TextView sourceLine, std::size_t sourceStart);
    const Replacement* lastBefore(std::size_t position) const;

    Text m_text;
    std::vector<Replacement> m_replacements;
    std::vector<std::size_t> m_unclosed;
};

} // namespace zn
