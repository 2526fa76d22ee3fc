"""The one-line faults that scripts/mutate puts into C++ sources: which kinds there are and where each fits."""

import re

# Stand for what isn't code: a letter where a literal was, so that it still looks like an operand.
LITERAL, COMMENT = "ŝ", " "

TOKEN = re.compile(r"""
    (?P<comment> //[^\n]* | /\*.*?\*/ )
  | (?P<raw>     (?:u8|u|U|L)?R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)" )
  | (?P<text>    (?:u8|u|U|L)?"(?:\\.|[^"\\\n])*" )
  | (?P<letter>  (?:\b(?:u8|u|U|L))?(?<![0-9a-fA-F])'(?:\\.|[^'\\\n])+' )
""", re.VERBOSE | re.DOTALL)


def mask(source):
    """The source with comments and literals blotted out, every other character in its place."""
    def blot(match):
        fill = COMMENT if match.lastgroup == "comment" else LITERAL
        return "".join("\n" if letter == "\n" else fill for letter in match[0])
    return TOKEN.sub(blot, source)


def closing(code, start):
    """Where the bracket that opens at `start` closes on this line; None if it doesn't."""
    depth = 0
    for index in range(start, len(code)):
        depth += {"(": 1, ")": -1}.get(code[index], 0)
        if depth == 0:
            return index
    return None


def turned_conditions(line, code):
    for match in re.finditer(r"\b(?:if|while) \(", code):
        end = closing(code, match.end() - 1)
        if end is None:
            continue
        begin = max(match.end(), code.rfind("; ", match.end(), end) + 2)
        if not re.match(r"(const )?auto\b|const ", code[begin:end]):
            yield f"{line[:begin]}!({line[begin:end]}){line[end:]}"


DECLARATION = re.compile(r"(?:[\w:]|<.*>)+[&*]? [&*]?\w+(?: =|;|,|\(|\{|\[)")
NOT_DROPPED = re.compile(r"(?:return|using|const|constexpr|auto|static|extern|struct|class|enum|namespace|friend|do|"
                         r"else|case|default|break|continue|template|public|private|protected|virtual|explicit)\b")
ONLY_A_LOG_LINE = re.compile(rf"(?:\w+(?:\.|->))*[lL]og\w*\({LITERAL}*\);$")


def without(line, code):
    """The line with a statement that is never reached; what it names still counts as used, so that it builds."""
    indent = len(code) - len(code.lstrip())
    return f"{line[:indent]}{{ if (false) {line[indent:len(code)]} }}"


def dropped_statements(line, code):
    text = code.strip()
    if not text.endswith(";") or not code.startswith("    ") or not re.match(r"[\w*+:(]", text):
        return
    if text.count("(") != text.count(")") or text.count("{") != text.count("}"):
        return
    if re.search(r"\.reserve\(", text):
        return  # costs time only
    declares = DECLARATION.match(text) and not re.match(r"(?:throw|delete) ", text)
    if not declares and not NOT_DROPPED.match(text) and not ONLY_A_LOG_LINE.match(text):
        yield without(line, code)


def dropped_jumps(line, code):
    if re.fullmatch(r" {4}\s*(?:return|continue|break);", code):
        yield without(line, code)


def turned_arithmetic(line, code):
    # A plus beside a text joins.
    turned = both_ways((" + ", " - "), (" * ", " / "), (" += ", " -= "), ("++", "--"))
    if LITERAL not in code:
        yield from replacing(r" [-+*/] | [-+]= |\+\+|--", turned)(line, code)


def swapped_arguments(line, code):
    operand = r"[A-Za-z_][\w.]*(?:\(\)|\[\w+\])?"
    for match in re.finditer(rf"(?<=[({{ ])({operand}), ({operand})(?=[,)}}])", code):
        if match[1] != match[2]:
            first, second = line[match.start(1):match.end(1)], line[match.start(2):match.end(2)]
            yield f"{line[:match.start()]}{second}, {first}{line[match.end():]}"


def turned_choices(line, code):
    side = r"(?:[^?:,;(){}]|::|\(\)|\([^()?:]*\))+?"
    for match in re.finditer(rf" \? ({side}) : ({side})(?=[;,)}}]|$)", code):
        first, second = line[match.start(1):match.end(1)], line[match.start(2):match.end(2)]
        yield f"{line[:match.start()]} ? {second} : {first}{line[match.end():]}"


# Six hexadecimal digits are a colour, of which nobody sees the next shade.
NUMBER = r"0x(?![0-9a-fA-F]{6}\b)[0-9a-fA-F]+|\d+\.\d+|0[0-7]+|\d+"


def next_number(match):
    digits = match[0]
    if "." in digits:
        return str(float(digits) + 1)
    if digits.startswith("0x"):
        return hex(int(digits, 16) + 1)
    return f"0{int(digits, 8) + 1:o}" if digits[:-1].startswith("0") else str(int(digits) + 1)


def replacing(pattern, replacement):
    """A kind that replaces each place of a pattern by itself; the replacement is a text, a table or a function."""
    if isinstance(replacement, dict):
        table = replacement
        def replacement(match): return table[match[0]]

    def places(line, code):
        for match in re.finditer(pattern, code):
            put = replacement(match) if callable(replacement) else replacement
            yield line[:match.start()] + put + line[match.end():]
    return places


def both_ways(*pairs):
    return {one: other for pair in pairs for one, other in (pair, reversed(pair))}


# Name and the function that gives every changed line, from the line and what of it is code.
KINDS = [
    ("condition", turned_conditions),
    ("condition", replacing(r"!(?=[A-Za-z_(])", "")),
    ("comparison", replacing(r" (?:==|!=|<=|>=|<|>) ", both_ways((" == ", " != "), (" <= ", " < "), (" >= ", " > ")))),
    ("logic", replacing(r" (?:&&|\|\|) ", both_ways((" && ", " || ")))),
    ("choice", turned_choices),
    ("dropped", dropped_statements),
    ("dropped", dropped_jumps),
    ("swapped", swapped_arguments),
    ("off by one", replacing(r" [+-] 1\b(?![.'])", "")),
    ("off by one", replacing(r"(?<=\.size\(\))(?! [+-] 1)", " - 1")),
    ("constant", replacing(r"\b(?:true|false)\b", both_ways(("true", "false")))),
    ("constant", replacing(rf"(?<![\w.'])(?:{NUMBER})(?![\w.'])", next_number)),
    ("arithmetic", turned_arithmetic),
    ("arithmetic", replacing(r" [|&] ", both_ways((" | ", " & ")))),
]

NOT_CODE = re.compile(r"\s*(?:#|namespace\b|using\b|template\b|static_assert\b|assert\b|Q_ASSERT\b|extern\b)")


def faults_of(source):
    """Rows of (line number, line, its faults), a fault being (kind, changed line), for the lines that can have one."""
    rows = []
    for number, (line, code) in enumerate(zip(source.split("\n"), mask(source).split("\n")), 1):
        if NOT_CODE.match(code) or "static_assert" in code or "assert(" in code:
            continue
        code = code.rstrip()
        faults = [(kind, changed) for kind, places in KINDS for changed in places(line, code) if changed != line]
        if faults:
            rows.append((number, line, faults))
    return rows
