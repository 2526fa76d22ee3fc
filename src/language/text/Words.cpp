#include "language/text/Token.h"

#include <algorithm>
#include <array>

namespace zn::language {

namespace {

struct NamedWord {
    TextView name;
    Word word;
};

// Sorted by name, lower case.
constexpr auto words = std::to_array<NamedWord>({
    {u"access", Word::Access},
    {u"addressof", Word::AddressOf},
    {u"alias", Word::Alias},
    {u"and", Word::And},
    {u"any", Word::Any},
    {u"append", Word::Append},
    {u"as", Word::As},
    {u"attribute", Word::Attribute},
    {u"base", Word::Base},
    {u"binary", Word::Binary},
    {u"byref", Word::ByRef},
    {u"byval", Word::ByVal},
    {u"call", Word::Call},
    {u"case", Word::Case},
    {u"close", Word::Close},
    {u"compare", Word::Compare},
    {u"const", Word::Const},
    {u"declare", Word::Declare},
    {u"dim", Word::Dim},
    {u"do", Word::Do},
    {u"each", Word::Each},
    {u"else", Word::Else},
    {u"elseif", Word::ElseIf},
    {u"empty", Word::Empty},
    {u"end", Word::End},
    {u"endif", Word::EndIf},
    {u"enum", Word::Enum},
    {u"eqv", Word::Eqv},
    {u"erase", Word::Erase},
    {u"error", Word::Error},
    {u"event", Word::Event},
    {u"exit", Word::Exit},
    {u"explicit", Word::Explicit},
    {u"false", Word::False},
    {u"for", Word::For},
    {u"friend", Word::Friend},
    {u"function", Word::Function},
    {u"get", Word::Get},
    {u"global", Word::Global},
    {u"gosub", Word::GoSub},
    {u"goto", Word::GoTo},
    {u"if", Word::If},
    {u"imp", Word::Imp},
    {u"implements", Word::Implements},
    {u"in", Word::In},
    {u"input", Word::Input},
    {u"is", Word::Is},
    {u"lbound", Word::LBound},
    {u"len", Word::Len},
    {u"let", Word::Let},
    {u"lib", Word::Lib},
    {u"like", Word::Like},
    {u"line", Word::Line},
    {u"lock", Word::Lock},
    {u"loop", Word::Loop},
    {u"lset", Word::LSet},
    {u"mid", Word::Mid},
    {u"mod", Word::Mod},
    {u"module", Word::Module},
    {u"name", Word::Name},
    {u"new", Word::New},
    {u"next", Word::Next},
    {u"not", Word::Not},
    {u"nothing", Word::Nothing},
    {u"null", Word::Null},
    {u"on", Word::On},
    {u"open", Word::Open},
    {u"option", Word::Option},
    {u"optional", Word::Optional},
    {u"or", Word::Or},
    {u"output", Word::Output},
    {u"paramarray", Word::ParamArray},
    {u"preserve", Word::Preserve},
    {u"print", Word::Print},
    {u"private", Word::Private},
    {u"property", Word::Property},
    {u"ptrsafe", Word::PtrSafe},
    {u"public", Word::Public},
    {u"put", Word::Put},
    {u"raiseevent", Word::RaiseEvent},
    {u"random", Word::Random},
    {u"read", Word::Read},
    {u"redim", Word::ReDim},
    {u"rem", Word::Rem},
    {u"resume", Word::Resume},
    {u"return", Word::Return},
    {u"rset", Word::RSet},
    {u"seek", Word::Seek},
    {u"select", Word::Select},
    {u"set", Word::Set},
    {u"shared", Word::Shared},
    {u"static", Word::Static},
    {u"step", Word::Step},
    {u"stop", Word::Stop},
    {u"string", Word::String},
    {u"sub", Word::Sub},
    {u"text", Word::Text},
    {u"then", Word::Then},
    {u"to", Word::To},
    {u"true", Word::True},
    {u"type", Word::Type},
    {u"typeof", Word::TypeOf},
    {u"ubound", Word::UBound},
    {u"unlock", Word::Unlock},
    {u"until", Word::Until},
    {u"wend", Word::Wend},
    {u"while", Word::While},
    {u"with", Word::With},
    {u"withevents", Word::WithEvents},
    {u"write", Word::Write},
    {u"xor", Word::Xor},
});

constexpr std::size_t longestWord = 10;

static_assert(std::ranges::is_sorted(words, {}, &NamedWord::name));

} // namespace

Word wordNamed(TextView text)
{
    char16_t lower[longestWord];
    if (text.size() > longestWord)
        return Word::None;
    std::ranges::transform(text, lower,
        [](char16_t unit) { return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit; });
    const TextView name(lower, text.size());
    const auto hit = std::ranges::lower_bound(words, name, {}, &NamedWord::name);
    return hit != words.end() && hit->name == name ? hit->word : Word::None;
}

} // namespace zn::language
