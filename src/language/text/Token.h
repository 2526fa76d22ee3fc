#pragma once

#include "base/Value.h"

namespace zn::language {

/// Line and column count from 1.
struct Position {
    int line = 0;
    int column = 0;
};

enum class TokenKind : std::uint8_t { Identifier, Literal, Symbol, EndOfLine, EndOfSource, Faulty };

enum class Symbol : std::uint8_t {
    None,
    Plus,
    Minus,
    Star,
    Slash,
    Backslash,
    Caret,
    Ampersand,
    Equal,
    NotEqual,
    Less,
    Greater,
    LessOrEqual,
    GreaterOrEqual,
    OpenParen,
    CloseParen,
    Comma,
    Semicolon,
    Colon,
    NamedArgument,
    Dot,
    Bang,
    Hash,
};

/// Words that mean something in a statement or an expression. They are reserved only where the grammar looks for
/// them: behind a dot each of them is a plain member name.
enum class Word : std::uint8_t {
    None,
    Access,
    AddressOf,
    Alias,
    And,
    Any,
    Append,
    As,
    Attribute,
    Base,
    Binary,
    ByRef,
    ByVal,
    Call,
    Case,
    Close,
    Compare,
    Const,
    Declare,
    Dim,
    Do,
    Each,
    Else,
    ElseIf,
    End,
    EndIf,
    Enum,
    Eqv,
    Erase,
    Error,
    Event,
    Exit,
    Explicit,
    False,
    For,
    Friend,
    Function,
    Get,
    Global,
    GoSub,
    GoTo,
    If,
    Imp,
    Implements,
    In,
    Input,
    Is,
    LBound,
    Len,
    Let,
    Lib,
    Like,
    Line,
    Lock,
    Loop,
    LSet,
    Mid,
    Mod,
    Module,
    Name,
    New,
    Next,
    Not,
    Nothing,
    Null,
    On,
    Open,
    Option,
    Optional,
    Or,
    Output,
    ParamArray,
    Preserve,
    Print,
    Private,
    Property,
    PtrSafe,
    Public,
    Put,
    RaiseEvent,
    Random,
    Read,
    ReDim,
    Rem,
    Resume,
    Return,
    RSet,
    Seek,
    Select,
    Set,
    Shared,
    Static,
    Step,
    Stop,
    String,
    Sub,
    Text,
    Then,
    To,
    True,
    Type,
    TypeOf,
    Unlock,
    Until,
    UBound,
    Wend,
    While,
    With,
    WithEvents,
    Write,
    Xor,
    Empty,
};

struct Token {
    TokenKind kind = TokenKind::EndOfSource;
    Symbol symbol = Symbol::None;
    Word word = Word::None;
    bool blankBefore = false; ///< tells `f (x)` from `f(x)`
    bool startsLine = false;  ///< first of its logical line
    char16_t suffix = 0;      ///< type character of an identifier, such as "$"
    Position position;
    TextView text; ///< in the source; an identifier without its suffix and brackets
    Value value;   ///< of a literal; of a faulty token its message
};

Word wordNamed(TextView text);

} // namespace zn::language
