#pragma once

#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace zn::commandline {

/// A JSON value that a command builds and prints. A class of our own, so that the JSON library is compiled once and not
/// in every command.
///
///     Json{{"name", "bolt"}, {"version", 2}}     an object; its members stay in this order
///     auto list = Json::array(); list.push_back(…)
class Json {
public:
    /// Member of an object. Texts are UTF-8; what isn't is replaced when it is printed.
    struct Member;

    Json(std::nullptr_t = nullptr);
    Json(bool value);
    Json(double value);
    Json(std::string value);
    Json(const char* value);
    template <std::integral Number>
    Json(Number value)
        : Json(Integer{static_cast<std::int64_t>(value)})
    {
    }
    Json(std::span<const double> numbers);
    Json(const std::vector<std::string>& texts);
    Json(std::initializer_list<Member> members);
    Json(const Json& other);
    Json(Json&& other) noexcept;
    Json& operator=(const Json& other);
    Json& operator=(Json&& other) noexcept;
    ~Json();

    static Json array();
    static Json object();

    /// Appends to an array, which null becomes.
    void push_back(Json value);
    /// Whether an array or an object has nothing in it.
    bool empty() const;
    /// The member of an object, which null becomes; null is put there if there is none.
    Json& operator[](std::string_view name);

    /// The document as text, indented by two blanks, without a line feed at its end.
    std::string text() const;
    /// The same in one line.
    std::string line() const;

private:
    struct Integer {
        std::int64_t value;
    };
    using Array = std::vector<Json>;
    using Object = std::vector<Member>;
    friend struct JsonWriter;

    explicit Json(Integer value);

    std::variant<std::nullptr_t, bool, Integer, double, std::string, Array, Object> m_value;
};

struct Json::Member {
    std::string name;
    Json value;
};

} // namespace zn::commandline
