"""Places of a source where one token may be changed, and the changed text, from clang's syntax tree.

A changed place asks at run time, with velum_mutant(NUMBER), whether to do what stood there or what a mistake would have written.
"""

import collections
import functools
import random
import re

from clang.cindex import CursorKind as Kind, Diagnostic, Index, TranslationUnit

# begin, end: offsets in bytes; before, after: what a reader is shown; text: what comes in place of the range, with ASKED for the
# question whether this mutant is the one.
Place = collections.namedtuple("Place", "file line begin end before after text")
ASKED = "\0"
CREATE_PREAMBLE_ON_FIRST_PARSE = 0x100  # of libclang; the module has no name for it

COMPARISONS = {"<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"), "==": ("!=",), "!=": ("==",)}
BUILT_IN = COMPARISONS | {"&&": ("||",), "||": ("&&",), "+": ("-",), "-": ("+",)}
JUMPS = {Kind.BREAK_STMT: b"break", Kind.CONTINUE_STMT: b"continue", Kind.RETURN_STMT: b"return"}
BRANCHES = {Kind.IF_STMT, Kind.FOR_STMT, Kind.WHILE_STMT, Kind.DO_STMT, Kind.SWITCH_STMT, Kind.CXX_FOR_RANGE_STMT}
FUNCTIONS = {Kind.FUNCTION_DECL, Kind.CXX_METHOD, Kind.CONSTRUCTOR, Kind.DESTRUCTOR, Kind.FUNCTION_TEMPLATE,
             Kind.CONVERSION_FUNCTION}
SCOPES = {Kind.NAMESPACE, Kind.CLASS_DECL, Kind.STRUCT_DECL, Kind.CLASS_TEMPLATE,
          Kind.CLASS_TEMPLATE_PARTIAL_SPECIALIZATION,
          Kind.LINKAGE_SPEC, Kind.FRIEND_DECL, Kind.UNEXPOSED_DECL}
UNEVALUATED = {Kind.STATIC_ASSERT, Kind.CXX_UNARY_EXPR, Kind.TYPE_REF}
NOT_CODE = re.compile(
    rb'//[^\n]*|/\*.*?\*/|R"(\w*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|(?<!\w)\'(?:\\.|[^\'\\\n])+\'|^[ \t]*#(?:\\\n|[^\n])*', re.S | re.M)
# The tree's format has blanks around an operator of two operands.
TOKEN = re.compile(rb"(?<![\w.'])\d| (?:[<>]=?|[=!]=|&&|\|\||[-+])(?!\S)|\b(?:break|continue|return)\b")


def blanked(code, literals=True):
    """The code with blanks for comments, lines of the preprocessor and, if wanted, literal text: as long as before."""
    def blank(match):
        found = match.group()
        return found if not literals and found[:1] in b"\"'R" else re.sub(rb"[^\n]", b" ", found)
    return NOT_CODE.sub(blank, code)


def candidate_lines(code):
    """Number and text of the lines that hold a token which might be changed."""
    lines = enumerate(blanked(code, literals=False).split(b"\n"), 1)
    return [(number, line.strip()) for number, line in lines if TOKEN.search(line)]


def mutated(code, numbered):
    """The code with each of the numbered places changed."""
    for number, place in sorted(numbered, key=lambda pair: -pair[1].begin):
        code = code[:place.begin] + place.text.replace(ASKED, f"velum_mutant({number})").encode() + code[place.end:]
    return code


class Source:
    """One file of the library. Its places are found where code runs: what the compiler computes can't be chosen later."""

    def __init__(self, top, file, flags):
        self.file, self.path = file, str(top / file)
        self.code = (top / file).read_bytes()
        self.blank = blanked(self.code)
        self.plain = blanked(self.code, literals=False)
        options = TranslationUnit.PARSE_PRECOMPILED_PREAMBLE | CREATE_PREAMBLE_ON_FIRST_PARSE
        # A header is parsed through another file, where it is one.
        self.others = [] if file.endswith(".cpp") else [("whole.cpp", f'#include "{self.path}"\n'.encode())]
        flags = [*flags, "-include", str(top / "tools/mutation/Mutant.h")]
        self.unit = Index.create().parse(self.others[0][0] if self.others else self.path, flags, self.others, options)

    def compiles(self, places):
        self.unit.reparse([*self.others, (self.path, mutated(self.code, enumerate(places, 1)))])
        return all(diagnostic.severity < Diagnostic.Error for diagnostic in self.unit.diagnostics)

    @functools.cached_property
    def places(self):
        """The places on each line."""
        self.found = collections.defaultdict(list)
        for node in self.unit.cursor.get_children():
            if node.location.file and node.location.file.name == self.path:
                self.declaration(node)
        return self.found

    def pick(self, lines):
        """One place from each of the lines that has some; those that don't compile or lie in another are left out."""
        picked = []
        for line in lines:
            if self.places[line]:
                place = self.chance(line).choice(self.places[line])
                if all(place.end <= other.begin or other.end <= place.begin for other in picked):
                    picked.append(place)
        return picked if self.compiles(picked) else [place for place in picked if self.compiles([place])]

    def chance(self, line):
        return random.Random(f"{self.file} {self.code.splitlines()[line - 1]}")

    def shown(self, begin, end):
        """One line that reads as the code of that range."""
        return re.sub(r"\s*\n\s*", " ", self.plain[begin:end].decode()).strip()

    def add(self, at, begin, end, after, text, constant):
        line = self.code.count(b"\n", 0, at) + 1
        if constant:
            text = text.replace(ASKED, f"(!__builtin_is_constant_evaluated() && {ASKED})")
        self.found[line].append(Place(self.file, line, begin, end, self.shown(begin, end), after, text))

    def declaration(self, node):
        if node.kind in FUNCTIONS and node.is_definition():
            body = [child for child in node.get_children() if child.kind == Kind.COMPOUND_STMT]
            if body:
                head = self.blank[node.extent.start.offset:body[-1].extent.start.offset]
                last = list(body[-1].get_children())[-1:]
                may_go_on = node.result_type.spelling == "void" or bool(last) and last[0].kind == Kind.RETURN_STMT
                self.statement(body[-1], b"constexpr" in head, may_go_on, False)
        elif node.kind in SCOPES:
            for child in node.get_children():
                self.declaration(child)

    def statement(self, node, constant, may_go_on, branch):
        """may_go_on: whether another return follows those in branches."""
        if node.kind in UNEVALUATED:
            return
        begin, end = node.extent.start.offset, node.extent.end.offset
        children = list(node.get_children())
        if node.kind == Kind.VAR_DECL:
            name = node.location.offset
            if re.search(rb"\bconst(expr|init)\b", self.blank[begin:name]):
                return
            # Neither arguments of a template nor the bounds of an array.
            children = [child for child in children if child.extent.start.offset > name
                        and not self.blank[name:child.extent.start.offset].rstrip().endswith(b"[")]
        elif node.kind == Kind.CASE_STMT or node.kind == Kind.IF_STMT and re.match(rb"if\s*constexpr", self.blank[begin:end]):
            children = children[1:]
        elif node.kind in (Kind.DECL_REF_EXPR, Kind.MEMBER_REF_EXPR):
            children = [child for child in children if child.kind != Kind.INTEGER_LITERAL]
        elif node.kind == Kind.LAMBDA_EXPR:
            may_go_on = False
        elif node.kind in (Kind.INTEGER_LITERAL, Kind.FLOATING_LITERAL):
            self.literal(begin, end, constant)
        elif node.kind in JUMPS and (node.kind != Kind.RETURN_STMT or may_go_on and branch):
            self.jump(begin, JUMPS[node.kind], constant)
        elif node.kind == Kind.BINARY_OPERATOR or node.kind == Kind.CALL_EXPR and node.spelling.startswith("operator"):
            self.operator(children, begin, end, BUILT_IN if node.kind == Kind.BINARY_OPERATOR else COMPARISONS, constant)
        for child in children:
            self.statement(child, constant, may_go_on, branch or node.kind in BRANCHES)

    def literal(self, begin, end, constant):
        token = self.shown(begin, end)
        if re.fullmatch(r"\d[\w.']*([eEpP][-+]\w+)?", token):
            zero = not re.search(r"[1-9a-fA-F]", re.sub(r"^0[xX]|[uUlLfF]+$", "", token))
            line = self.code.count(b"\n", 0, begin) + 1
            after = f"{token} {'+' if zero else self.chance(line).choice('+-')} 1"
            self.add(begin, begin, end, after, f"({ASKED} ? {after} : {token})", constant)

    def jump(self, begin, word, constant):
        end = self.blank.find(b";", begin) + 1
        if self.blank.startswith(word, begin) and b"{" not in self.blank[begin:end]:
            self.add(begin, begin, end, "", f"{{ if (!{ASKED}) {self.code[begin:end].decode()} }}", constant)

    def operator(self, operands, begin, end, changes, constant):
        left = [child.extent.end.offset for child in operands if child.extent.start.offset == begin]
        right = [child.extent.start.offset for child in operands if child.extent.end.offset == end]
        if not left or not right or left[0] > right[0]:
            return
        sign = self.blank[left[0]:right[0]].strip()
        at = self.blank.find(sign, left[0])
        for other in changes.get(sign.decode(), ()):
            after = f"{self.shown(begin, left[0])} {other} {self.shown(right[0], end)}"
            self.add(at, begin, end, after, f"({ASKED} ? ({after}) : ({self.code[begin:end].decode()}))", constant)
