"""The places of C++ sources where one line can be made wrong, and how. Text alone, no parser: clang-format puts blanks round
binary operators and none into templates, and what does not compile is no mutant."""

import re
from dataclasses import dataclass

OPERATORS = {
    "==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">", "&&": "||", "||": "&&",
    "+": "-", "-": "+", "*": "/", "/": "*", "%": "*", "&": "|", "|": "&", "<<": ">>", ">>": "<<",
    "+=": "-=", "-=": "+=", "*=": "+=", "|=": "&=", "&=": "|=",
}
WORDS = {"true": "false", "false": "true", "break": "continue", "continue": "break"}
TOKEN = re.compile(
    r'(?P<string>"(?:\\.|[^"\\])+")'
    r"|(?P<character>'(?:\\.|[^'\\])+')"
    r"|(?P<number>\b(?:0[xX][0-9a-fA-F]+|\d+)[uUlL]*\b)"
    r"|(?<= )(?P<operator>[=!<>]=|&&|\|\||<<|>>|[-+*|&]=|[-+*/%&|<>])(?= )"
    r"|(?P<step>\+\+|--)"
    r"|\b(?P<word>true|false|break|continue)\b"
    r"|\b(?P<condition>(?:if|while) \()"
)
# A call, an assignment, a step or a jump on a line of its own. Two words before it make a declaration, which is not deleted.
STATEMENT = re.compile(r"^\s*(?:(?:return|break|continue);|delete |[^\s=(]+(?:\(| [-+*/%|&^]?= |\+\+|--).*;)\s*(?://.*)?$")


@dataclass(frozen=True)
class Mutation:
    path: str
    line: int  # counted from 0
    old: str
    new: str


def _closing(text, start):
    """The position of the parenthesis that closes the one before start, or -1."""
    depth = 1
    for at in range(start, len(text)):
        depth += {"(": 1, ")": -1}.get(text[at], 0)
        if depth == 0:
            return at
    return -1


def _number(text):
    digits = text.rstrip("uUlL")
    suffix = text[len(digits):]
    value = int(digits, 16) if digits[:2] in ("0x", "0X") else int(digits, 8 if digits[0] == "0" else 10)
    return [str(other) + suffix for other in (value + 1, value - 1, 0) if other >= 0 and other != value]


def _character(text):
    body = text[1:-1]
    return ["'b'" if body == "a" else "'a'"]


def _string(text):
    first = "b" if text[1] == "a" else "a"
    skipped = 2 if text[1] == "\\" else 1
    return ['"' + first + text[1 + skipped:]]


def _replacements(kind, text):
    if kind == "operator":
        return [OPERATORS[text]]
    if kind == "step":
        return ["--" if text == "++" else "++"]
    if kind == "word":
        return [WORDS[text]]
    return {"number": _number, "character": _character, "string": _string}[kind](text)


def _code(line):
    """The line without its comment. A // inside a string ends it, too: such a line has fewer mutants, no wrong ones."""
    return line.split("//")[0].rstrip()


def of_line(path, number, lines):
    """All mutations of one line."""
    line = lines[number].rstrip("\n")
    code = _code(line)
    if not code.strip() or code.lstrip().startswith(("#", "*", "/*", "static_assert", "template", 'extern "C"')):
        return []
    found = []
    for match in TOKEN.finditer(code):
        kind, text = match.lastgroup, match.group(match.lastgroup)
        if kind == "condition":
            end = _closing(code, match.end())
            if end > 0 and ";" not in code[match.end():end]:
                found.append(line[:match.end()] + "!(" + line[match.end():end] + ")" + line[end:])
            continue
        for other in _replacements(kind, text):
            found.append(line[:match.start(kind)] + other + line[match.end(kind):])
    before = _code(lines[number - 1]) if number > 0 else ""
    if path.endswith(".cpp") and STATEMENT.match(line) and (not before or before[-1] in ";{}:)"):
        found.append(line[:len(line) - len(line.lstrip())] + ";")
    return [Mutation(path, number, line, new) for new in found if new != line]


def of_file(path, text):
    """The mutations of every line that has any: a list of lists."""
    lines = text.splitlines(keepends=True)
    return [found for found in (of_line(path, number, lines) for number in range(len(lines))) if found]


def applied(text, mutation):
    lines = text.splitlines(keepends=True)
    assert lines[mutation.line].rstrip("\n") == mutation.old
    lines[mutation.line] = mutation.new + "\n"
    return "".join(lines)
