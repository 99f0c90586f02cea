"""Places of a source file at which it can be changed in a small way, found by clang's syntax tree."""

import dataclasses
import hashlib
import re

from clang.cindex import CursorKind, Index

OTHER_OPERATORS = {
    "<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"), "==": ("!=",), "!=": ("==",),
    "+": ("-",), "-": ("+",), "*": ("/",), "/": ("*",), "%": ("*",), "&&": ("||",), "||": ("&&",),
    "&": ("|",), "|": ("&",), "<<": (">>",), ">>": ("<<",),
    "+=": ("-=",), "-=": ("+=",), "*=": ("/=",), "/=": ("*=",), "|=": ("&=",), "&=": ("|=",),
}
COMPARISONS = ("<", "<=", ">", ">=", "==", "!=")
OTHER_FUNCTIONS = {"std::min": "std::max", "std::max": "std::min", "std::sin": "std::cos", "std::cos": "std::sin",
                   "std::floor": "std::ceil", "std::ceil": "std::floor"}
SYMMETRIC = ("min", "max", "hypot", "swap", "isIn")
LITERALS = (CursorKind.INTEGER_LITERAL, CursorKind.FLOATING_LITERAL)
BINARY = (CursorKind.BINARY_OPERATOR, CursorKind.COMPOUND_ASSIGNMENT_OPERATOR)
LOOPS = (CursorKind.FOR_STMT, CursorKind.WHILE_STMT, CursorKind.CXX_FOR_RANGE_STMT)
JUMPS = (CursorKind.RETURN_STMT, CursorKind.CONTINUE_STMT, CursorKind.BREAK_STMT)
# Their values are wanted by the compiler, so no switch can stand there.
CONSTANT = (CursorKind.ENUM_CONSTANT_DECL, CursorKind.STATIC_ASSERT)
FUNCTIONS = (CursorKind.FUNCTION_DECL, CursorKind.CXX_METHOD, CursorKind.LAMBDA_EXPR, CursorKind.CONSTRUCTOR,
             CursorKind.FUNCTION_TEMPLATE)


@dataclasses.dataclass
class Edit:
    """The text from start to end (bytes of the file), and what stands there in the mutant."""
    start: int
    end: int
    changed: str
    kind: str  # value, condition or statement: how a switch between the two is written


@dataclasses.dataclass
class Mutant:
    file: str
    line: int
    line_text: str
    change: str
    edits: list
    alone: bool  # in a constant, which is compiled for this mutant alone
    again: int = 1  # the how manieth of this text

    @property
    def name(self):
        return f"{self.file}: {self.line_text}: {self.change}" + (f" #{self.again}" if self.again > 1 else "")

    @property
    def floor(self):
        return self.file.split("/")[1]

    def rank(self, seed):
        return hashlib.sha256(f"{seed} {self.name}".encode()).hexdigest()


class Finder:
    def __init__(self, root, file, text, arguments):
        self.file, self.text = file, text
        self.path = str(root / file)
        self.unit = Index.create().parse(self.path, args=arguments)
        self.found = []

    def all(self):
        """The mutants in the order of the file."""
        for child in self.unit.cursor.get_children():
            if child.location.file and child.location.file.name == self.path:
                self.visit(child, False)
        self.found.sort(key=lambda mutant: (mutant.edits[0].start, mutant.change))
        seen = {}
        for mutant in self.found:
            seen[mutant.name] = times = seen.get(mutant.name, 0) + 1
            mutant.again = times
        return self.found

    def source(self, start, end):
        return self.text[start:end].decode()

    def extent(self, cursor):
        return cursor.extent.start.offset, cursor.extent.end.offset

    def source_of(self, cursor):
        return self.source(*self.extent(cursor))

    def add(self, change, edits, alone):
        start = edits[0].start
        line_start = self.text.rfind(b"\n", 0, start) + 1
        line_end = self.text.find(b"\n", start)
        self.found.append(Mutant(self.file, self.text.count(b"\n", 0, start) + 1,
                                 self.source(line_start, line_end).strip(), on_one_line(change), edits, alone))

    def replace(self, cursor, changed, alone, kind="value", change=None):
        start, end = self.extent(cursor)
        before = self.source(start, end)
        self.add(change or f"{before} => {changed}", [Edit(start, end, on_one_line(changed), kind)], alone)

    def visit(self, cursor, constant, parent=None):
        kind = cursor.kind
        if kind == CursorKind.STATIC_ASSERT or kind.is_attribute():
            return
        if kind in FUNCTIONS:
            constant = False
        if kind == CursorKind.VAR_DECL:
            constant = is_constant(cursor, parent)
        constant = constant or kind in CONSTANT
        children = list(cursor.get_children())
        self.look_at(cursor, children, constant)
        if kind == CursorKind.CASE_STMT:
            children = children[1:]
        for child in children:
            self.visit(child, constant, cursor)

    def look_at(self, cursor, children, constant):
        kind = cursor.kind
        if kind in BINARY:
            self.operator(cursor, children, constant)
        elif kind in LITERALS and re.match(r"[\d.]", self.source_of(cursor)):
            self.replace(cursor, f"({self.source_of(cursor)} + 1)", constant)
        elif kind == CursorKind.CXX_BOOL_LITERAL_EXPR and self.source_of(cursor) in ("true", "false"):  # not of a macro
            self.replace(cursor, {"true": "false", "false": "true"}[self.source_of(cursor)], constant)
        elif kind == CursorKind.CALL_EXPR:
            self.call(cursor, children, constant)
        elif kind == CursorKind.INIT_LIST_EXPR:
            self.neighbours(children, True if constant else None)
        elif kind == CursorKind.COMPOUND_STMT:
            self.statements(children)
        elif kind in LOOPS:
            self.statements(children[-1:])
            self.condition(children[0] if kind == CursorKind.WHILE_STMT else None)
        elif kind == CursorKind.IF_STMT:
            self.statements(children[1:])
            self.condition(children[0])
        elif kind == CursorKind.CONDITIONAL_OPERATOR:
            self.condition(children[0], constant)

    def operator(self, cursor, children, constant):
        left, right = self.extent(children[0]), self.extent(children[1])
        operator = self.source(left[1], right[0]).strip()
        for other in OTHER_OPERATORS.get(operator, ()):
            texts = self.source(*left), self.source(*right)
            self.replace(cursor, f"(({texts[0]}) {other} ({texts[1]}))", constant,
                         change=f"{texts[0]} {operator} {texts[1]} => {other}")

    def condition(self, cursor, constant=False):
        """A negated condition, where none of its comparisons alone does the same."""
        if cursor is None or not cursor.kind.is_expression():
            return
        text = self.source_of(cursor)
        inner = list(cursor.get_children())
        if cursor.kind == CursorKind.BINARY_OPERATOR and len(inner) == 2:
            between = self.source(self.extent(inner[0])[1], self.extent(inner[1])[0]).strip()
            if between in COMPARISONS:
                return
        self.replace(cursor, f"!({text})", constant, "condition")

    def call(self, cursor, children, constant):
        if cursor.spelling.startswith("operator"):
            return
        text = self.source_of(cursor)
        for name, other in OTHER_FUNCTIONS.items():
            if text.startswith(name + "("):
                self.replace(cursor, other + text[len(name):], constant)
        start, end = self.extent(cursor)
        arguments = [argument for argument in cursor.get_arguments()
                     if start <= self.extent(argument)[0] and self.extent(argument)[1] <= end]
        if cursor.spelling not in SYMMETRIC:
            self.neighbours(arguments, constant)

    def neighbours(self, cursors, constant):
        """Two neighbours of one type, swapped. Rows in braces are only swapped where they are compiled anew."""
        for first, second in zip(cursors, cursors[1:]):
            texts = self.source_of(first), self.source_of(second)
            in_braces = CursorKind.INIT_LIST_EXPR in (first.kind, second.kind)
            same = first.kind == second.kind if in_braces else type_of(first) == type_of(second)
            if not same or texts[0] == texts[1] or not all(texts):
                continue
            edits = [Edit(*self.extent(cursor), on_one_line(text), "value")
                     for cursor, text in ((first, texts[1]), (second, texts[0]))]
            if edits[0].end <= edits[1].start:
                self.add(f"{texts[0]}, {texts[1]} => swapped", edits, bool(constant) or in_braces)

    def statements(self, cursors):
        """A statement that is left out: a call, an assignment, a check that leaves early."""
        for cursor in cursors:
            if cursor.kind == CursorKind.IF_STMT:
                parts = list(cursor.get_children())
                if len(parts) != 2 or parts[1].kind not in JUMPS:
                    continue
            elif cursor.kind == CursorKind.BINARY_OPERATOR:
                if not re.search(r"[^=!<>]=[^=]", self.source_of(cursor)):
                    continue
            elif cursor.kind not in (CursorKind.CALL_EXPR, CursorKind.COMPOUND_ASSIGNMENT_OPERATOR,
                                     CursorKind.UNARY_OPERATOR, CursorKind.CONTINUE_STMT):
                continue
            text = self.source_of(cursor)
            if not text.startswith(("assert", "!")):
                self.replace(cursor, "if (true) {} else " + text, False, "statement", f"{text} => left out")


def on_one_line(text):
    return re.sub(r"\s+", " ", re.sub(r"//[^\n]*\n", " ", text)).strip()


def type_of(cursor):
    return re.sub(r"\b(const|volatile)\b|&", "", cursor.type.get_canonical().spelling).strip()


def is_constant(cursor, parent):
    """Whether the compiler works the variable's value out: constexpr, or const outside of functions."""
    words = []
    for token in cursor.get_tokens():
        if token.spelling in (cursor.spelling, "=", "{", "("):
            break
        words.append(token.spelling)
    return "constexpr" in words or (parent is None or parent.kind == CursorKind.NAMESPACE) and "const" in words
