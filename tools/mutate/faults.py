"""Finds the places of a C++ source where a small fault can be put.

It reads text, not a syntax tree: the code is laid out by clang-format, so an operator has blanks around it and a
template's bracket has none. A place that is no C++ after the change is found out by the compiler.
"""

import dataclasses
import re


@dataclasses.dataclass(frozen=True)
class Fault:
    file: str  # from the project's folder
    start: int  # the characters that are replaced
    end: int
    line: int
    kind: str
    before: str
    after: str


KINDS = {  # how often each is chosen
    "comparison": 4,
    "constant": 4,
    "statement": 5,
    "branch": 4,
    "logic": 2,
    "arithmetic": 2,
    "min/max": 1,
}

_COMPARISONS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}
_ARITHMETIC = {"+": "-", "-": "+", "*": "/", "/": "*", "+=": "-=", "-=": "+="}
_WORDS = {"std::min": "std::max", "std::max": "std::min", "true": "false", "false": "true"}
_NUMBER = re.compile(r"(?<![\w.'])(0x[\dA-Fa-f']+|\d[\d']*(?:\.\d*)?(?:e[+-]?\d+)?)([uUlLfF]*)(?![\w.'])")
_NOT_A_STATEMENT = re.compile(
    r"(if|for|while|do|else|switch|case|default|using|class|struct|enum|union|static|const|constexpr|template|"
    r"public|private|protected|namespace|typedef|auto|friend|virtual|explicit|extern|inline|return|throw|goto|"
    r"static_assert|delete|try|catch|operator)\b"
)
_DECLARATION = re.compile(r"[A-Z]\w*\((const |[\w:]+&+ )|.* = (delete|default)$", re.S)
_ASSIGNMENT = re.compile(r"(?:\*?[\w:.>\-]|\[[^\[\]]*\]|\([^()]*\)|\(\*[^()]*\))+ (?:[-+*/%|&^]|<<|>>)?= ", re.S)
_CALL = re.compile(r"\*?[A-Za-z_][\w:.>\-]*(?:<[\w:, ]*>)?\(|\*?[A-Za-z_][\w:.>\-]*\[[^\[\]]*\][\w.>\-]*\(")
_STEP = re.compile(r"(?:\+\+|--)[\w:.>\-\[\]()*]+$|[\w:.>\-\[\]()*]+(?:\+\+|--)$")


def masked(text):
    """The text with comments, texts, characters, preprocessor lines and static_asserts blanked, of equal length."""

    def blank(match):
        return re.sub(r"[^\n]", " ", match.group(0))

    def blank_token(match):  # a text's quotes stay, so that `a + ""` is still an expression
        found = match.group(0)
        if found.startswith("/"):
            return blank(match)
        return found[0] + re.sub(r"[^\n]", " ", found[1:-1]) + found[-1]

    digit_mark = re.compile(r"(?<=[\dA-Fa-f])'(?=[\dA-Fa-f])")  # 12'000 is a number, not a character
    text = digit_mark.sub("_", text)
    text = re.sub(r'R"\((?:.|\n)*?\)"', blank, text)
    text = re.sub(r'//[^\n]*|/\*(?:.|\n)*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'', blank_token, text)
    text = re.sub(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", blank, text, flags=re.M)
    return re.sub(r"\bstatic_assert\([^;]*;", blank, text)


def _close(code, at):
    """Where the bracket at `at` is closed, or -1."""
    depth = 0
    for i in range(at, len(code)):
        if code[i] in "([{":
            depth += 1
        elif code[i] in ")]}":
            depth -= 1
            if depth == 0:
                return i
    return -1


def _statement_end(code, at):
    """The semicolon that ends the statement at `at`, or -1 where a bracket closes before it."""
    i = at
    while i < len(code):
        if code[i] in "([{":
            i = _close(code, i)
            if i < 0:
                return -1
        elif code[i] in ")]}":
            return -1
        elif code[i] == ";":
            return i
        i += 1
    return -1


def _statement_starts(code):
    """Where a statement may start, and whether an `if` on the same line leads to it."""
    stack, last = [], "{"
    for i, c in enumerate(code):
        if c.isspace():
            continue
        inside_block = not stack or stack[-1][0] == "{"
        if inside_block and last in (";", "{", "}", "head", "if", "label") and (c.isalnum() or c in "_*+-("):
            yield i, last == "if"
        if c in "([{":
            head = re.search(r"\b(if|for|while)(?: constexpr)? $", code[max(0, i - 20) : i]) if c == "(" else None
            stack.append((c, head.group(1) if head else ""))
            last = c
        elif c in ")]}" and stack:
            word = stack.pop()[1]
            last = c if not word else "if" if word == "if" else "head"
        elif c == ":" and re.search(r"^\s*(case\b.*|default)$", code[code.rfind("\n", 0, i) + 1 : i]):
            last = "label"
        elif c == "e" and re.search(r"\belse$", code[max(0, i - 5) : i + 1]) and code[i + 1 : i + 2].isspace():
            last = "head"
        else:
            last = c


def _left_out(code):
    """Statements that can be left out: calls, assignments, steps, and what leaves a block early."""
    for at, after_if in _statement_starts(code):
        end = _statement_end(code, at)
        if end < 0:
            continue
        text = code[at:end]
        if text in ("break", "continue", "return"):
            before = code[:at].rstrip()
            if not (text == "break" and before.endswith("default:")):
                yield at, end + 1
        elif text.startswith("return "):
            if after_if and "\n" not in code[code.rfind("if (", 0, at) : at]:
                yield at, end + 1
        elif _NOT_A_STATEMENT.match(text) or text.startswith("static_cast<void>") or _DECLARATION.match(text):
            continue
        elif _ASSIGNMENT.match(text) or _CALL.match(text) or _STEP.match(text):
            yield at, end + 1


def _conditions(code):
    """The conditions of ifs and of `? :`."""
    for match in re.finditer(r"\bif \(", code):
        start = match.end()
        end = _close(code, start - 1)
        condition = code[start:end]
        if ";" in condition:
            start += condition.rindex(";") + 2
            condition = code[start:end]
        if end > start and not re.search(r"(?<![=!<>])=(?!=)", condition):
            yield start, end
    for match in re.finditer(r"(?<=\S)\s+\? ", code):
        i, depth = match.start() - 1, 0
        while i >= 0:
            c = code[i]
            if c in ")]}":
                depth += 1
            elif c in "([{":
                if depth == 0:
                    break
                depth -= 1
            elif depth == 0 and (c in ",;?" or re.fullmatch(r"[ +|*-]= | : ", code[i - 1 : i + 2])):
                break
            elif depth == 0 and re.match(r"return\b", code[i:]):
                i += 5
                break
            i -= 1
        start = i + 1
        start += len(code[start : match.start()]) - len(code[start : match.start()].lstrip())
        if start < match.start():
            yield start, match.start()


def _neighbour(literal, suffix, up):
    digits = literal.replace("'", "")
    step = 1 if up else -1
    if digits.startswith("0x"):
        return hex(int(digits, 16) + step) + suffix
    if re.fullmatch(r"\d+", digits) and "f" not in suffix.lower():
        return str(int(digits) + step) + suffix
    moved = repr(float(digits) + step)
    return ("(" + moved + suffix + ")") if moved.startswith("-") else moved + suffix


def _in_template(code, start, end):
    line_start, line_end = code.rfind("\n", 0, start) + 1, code.find("\n", end)
    return re.search(r"\w<[^<>=;&|]*$", code[line_start:start]) and re.match(r"[^<>;&|]*>", code[end:line_end])


def find(file, text):
    """Every fault that can be put into one file, in the order of the file."""
    code = masked(text)
    found = []

    def add(kind, start, end, after):
        line = text.count("\n", 0, start) + 1
        found.append(Fault(file, start, end, line, kind, text[start:end], after))

    for match in re.finditer(r"(?<=\s)(<=|>=|==|!=|<|>)(?=\s)", code):
        if not re.search(r"\b(template|operator)\s*$", code[: match.start()][-20:]):
            add("comparison", *match.span(), _COMPARISONS[match.group(1)])
    for match in re.finditer(r"(?<=\s)(&&|\|\|)(?=\s)", code):
        add("logic", *match.span(), "||" if match.group(1) == "&&" else "&&")
    for match in re.finditer(r"(?<=[\w)\]\"'])\s(\+=|-=|\+|-|\*|/)(?=\s)", code):
        if '"' not in code[match.start() - 1] + code[match.end() + 1]:  # texts are joined, not added
            add("arithmetic", *match.span(1), _ARITHMETIC[match.group(1)])
    for match in re.finditer(r"\bstd::(min|max)\b(?=[<(])", code):
        add("min/max", *match.span(), _WORDS[match.group(0)])
    for match in re.finditer(r"\b(true|false)\b", code):
        add("constant", *match.span(), _WORDS[match.group(0)])
    for match in _NUMBER.finditer(code.replace("_", "'")):
        if not _in_template(code, *match.span()):
            value, suffix = match.groups()
            # 0 has no lower neighbour where numbers are unsigned; the place decides for the others.
            is_zero = not re.search(r"[1-9A-Fa-f]", value.removeprefix("0x"))
            add("constant", *match.span(), _neighbour(value, suffix, is_zero or match.start() % 2 == 0))
    for start, end in _conditions(code):
        add("branch", start, end, "!(" + text[start:end] + ")")
    for start, end in _left_out(code):
        add("statement", start, end, "{}")
    return sorted(found, key=lambda f: (f.start, f.kind))
