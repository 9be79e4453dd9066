"""Makes one-step changes of C++ sources, and writes copies in which all of them stand at once and
`fl_mutant` chooses (chooser.hpp). libclang says what is what. What it is used for: scripts/mutate.

The changes, each of one place:

    comparison   < as <= and >=, == as !=, ...
    logic        && as ||, an operand left out, a condition or a `!` turned round
    arithmetic   + as -, * as /, ++ as --, & as |, << as >>, += as -=, a sign left out
    constant     n as n + 1, 1 as 0, true as false; named ones and enumerators where they are used
    case         a label of a switch passed over
    statement    an expression, `return`, `break`, `continue`, `throw` left out
    arguments    two neighbours of the same type swapped

What the compiler evaluates stays as it is: labels, constexpr variables, consteval functions,
arguments of templates, sizes of arrays, `if constexpr`. So do an end that a function must not come to
(a last `return`, the throw of one that never returns), everything at namespace scope, `reserve`, which
only makes room ahead of time, and the order of what `std::min`, `std::max` and `std::swap` take, and
of two that are asked whether they are equal.
"""

import bisect
import collections
import dataclasses
import hashlib
import re

from clang import cindex
from clang.cindex import CursorKind as K, TokenKind, TypeKind

COMPARISONS = {'<': ['<=', '>='], '<=': ['<', '>'], '>': ['>=', '<='], '>=': ['>', '<'],
               '==': ['!='], '!=': ['==']}
LOGIC = {'&&': '||', '||': '&&'}
ARITHMETIC = {'+': '-', '-': '+', '*': '/', '/': '*', '%': '*', '&': '|', '|': '&', '^': '&',
              '<<': '>>', '>>': '<<', '+=': '-=', '-=': '+=', '*=': '/=', '/=': '*=', '|=': '&=',
              '&=': '|=', '<<=': '>>=', '>>=': '<<='}

FUNCTIONS = {K.FUNCTION_DECL, K.CXX_METHOD, K.CONSTRUCTOR, K.DESTRUCTOR, K.CONVERSION_FUNCTION,
             K.FUNCTION_TEMPLATE}
SCOPES = {K.NAMESPACE, K.CLASS_DECL, K.STRUCT_DECL, K.CLASS_TEMPLATE, K.LINKAGE_SPEC,
          K.CLASS_TEMPLATE_PARTIAL_SPECIALIZATION, K.UNEXPOSED_DECL}
CLASSES = {K.CLASS_DECL, K.STRUCT_DECL, K.CLASS_TEMPLATE, K.CLASS_TEMPLATE_PARTIAL_SPECIALIZATION}
LITERALS = {K.INTEGER_LITERAL, K.CHARACTER_LITERAL, K.CXX_BOOL_LITERAL_EXPR}
LOOPS = {K.FOR_STMT, K.WHILE_STMT, K.DO_STMT, K.CXX_FOR_RANGE_STMT}
# types, and what is evaluated while compiling
PASSED_OVER = {K.STATIC_ASSERT, K.TYPE_REF, K.TEMPLATE_REF, K.NAMESPACE_REF, K.TYPE_ALIAS_DECL,
               K.TYPEDEF_DECL, K.USING_DECLARATION, K.CXX_UNARY_EXPR, K.ENUM_DECL,
               K.TYPE_ALIAS_TEMPLATE_DECL, K.FRIEND_DECL}
NUMBERS = {TypeKind.CHAR_U, TypeKind.UCHAR, TypeKind.CHAR16, TypeKind.CHAR32, TypeKind.USHORT,
           TypeKind.UINT, TypeKind.ULONG, TypeKind.ULONGLONG, TypeKind.CHAR_S, TypeKind.SCHAR,
           TypeKind.WCHAR, TypeKind.SHORT, TypeKind.INT, TypeKind.LONG, TypeKind.LONGLONG,
           TypeKind.ENUM, TypeKind.BOOL}
OPEN = {TypeKind.DEPENDENT, TypeKind.UNEXPOSED, TypeKind.INVALID}  # known when instantiated


@dataclasses.dataclass(frozen=True)
class Mutant:
    file: str
    function: str
    kind: str
    begin: int  # the expression or statement that is chosen or not
    end: int
    edits: tuple  # (begin, end, text) in it
    before: str  # the lines around, on one
    after: str
    digest: str  # of the function: what a result of an earlier run stands for

    @property
    def key(self):
        return f'{self.file}: {self.function}: {self.before} -> {self.after}'


def flattened(text):
    return ' '.join(text.split())


class Source:
    """A file with its tokens. Offsets are those of bytes."""

    def __init__(self, unit, path, name):
        self.name = name
        self.text = path.read_bytes().decode('latin-1')
        file = unit.get_file(str(path))
        whole = cindex.SourceRange.from_locations(
            cindex.SourceLocation.from_offset(unit, file, 0),
            cindex.SourceLocation.from_offset(unit, file, len(self.text)))
        self.tokens, self.starts, flat = [], [], list(self.text.replace('\n', ' '))
        for token in unit.get_tokens(extent=whole):
            begin, end = token.extent.start.offset, token.extent.end.offset
            if token.kind == TokenKind.COMMENT:
                flat[begin:end] = ' ' * (end - begin)
            else:
                self.tokens.append((begin, end, self.text[begin:end]))
                self.starts.append(begin)
        self.flat = ''.join(flat)  # the same offsets, without comments and ends of lines
        self.mutants = []

    def index(self, offset):
        """Of the first token at or behind `offset`."""
        return bisect.bisect_left(self.starts, offset)

    def between(self, begin, end):
        return self.tokens[self.index(begin):self.index(end)]

    def ahead_of(self, offset):
        at = self.index(offset) - 1
        return self.tokens[at][2] if at >= 0 else ''

    def behind(self, offset):
        at = self.index(offset)
        return self.tokens[at][2] if at < len(self.tokens) else ''

    def edited(self, begin, end, edits):
        text, at = '', begin
        for first, last, new in edits:
            text += self.flat[at:first] + new
            at = last
        return text + self.flat[at:end]


def span(cursor):
    return cursor.extent.start.offset, cursor.extent.end.offset


def bare(cursor):
    """Without the parentheses and conversions around it."""
    while cursor.kind in (K.UNEXPOSED_EXPR, K.PAREN_EXPR):
        inner = list(cursor.get_children())
        if len(inner) != 1:
            break
        cursor = inner[0]
    return cursor


def type_kind(cursor):
    return cursor.type.get_canonical().kind


class Maker:
    """Collects the changes of one source."""

    def __init__(self, source):
        self.source = source
        self.function = ''
        self.digest = ''
        self.scope = []
        self.seen = set()

    # --- recording

    def add(self, kind, begin, end, edits):
        source = self.source
        edits = tuple(sorted(edits))
        if (begin, end, edits) in self.seen or begin >= end or '\n#' in source.text[begin:end]:
            return
        self.seen.add((begin, end, edits))
        first = source.text.rfind('\n', 0, edits[0][0]) + 1
        last = source.text.find('\n', edits[-1][1])
        readable = lambda text: flattened(text.encode('latin-1').decode('utf-8'))
        if kind == 'statement':
            before, after = readable(source.flat[begin:end]), '(nothing)'
        else:
            first, last = max(first, 0), last if last >= 0 else len(source.text)
            before = readable(source.flat[first:last])
            after = readable(source.edited(first, last, edits))
        source.mutants.append(Mutant(source.name, self.function, kind, begin, end, edits, before,
                                     after, self.digest))

    def put_around(self, kind, cursor, ahead, behind=')'):
        begin, end = span(cursor)
        self.add(kind, begin, end, [(begin, begin, ahead), (end, end, behind)])

    # --- from the file to functions

    def declarations(self, cursor):
        for child in cursor.get_children():
            self.declaration(child)

    def declaration(self, cursor):
        kind = cursor.kind
        if kind == K.FRIEND_DECL:
            self.declarations(cursor)
        elif kind in FUNCTIONS:
            if cursor.is_definition():
                self.body_of(cursor)
        elif kind == K.FIELD_DECL:
            self.function = '::'.join(self.scope)
            self.digest = self.digest_of(cursor)
            self.variable(cursor)
        elif kind in SCOPES:
            if kind in CLASSES:
                self.scope.append(cursor.spelling)
            self.declarations(cursor)
            if kind in CLASSES:
                self.scope.pop()

    def digest_of(self, cursor):
        text = flattened(self.source.flat[slice(*span(cursor))])
        return hashlib.sha1(text.encode()).hexdigest()[:12]

    def body_of(self, cursor):
        name = cursor.spelling.split('<')[0] if 'operator' not in cursor.spelling else cursor.spelling
        outer = cursor.semantic_parent
        scope = [outer.spelling] if outer is not None and outer.kind in CLASSES else self.scope[-1:]
        self.function = '::'.join([*scope, name])
        self.digest = self.digest_of(cursor)
        words = self.words_ahead(cursor) + self.words_ahead(cursor.canonical)
        if 'consteval' in words:
            return
        returns = 'noreturn' in words or (
            cursor.kind not in (K.CONSTRUCTOR, K.DESTRUCTOR)
            and cursor.result_type.get_canonical().kind != TypeKind.VOID)
        initialising = False
        for child in cursor.get_children():
            if child.kind == K.COMPOUND_STMT:
                self.statement(child, None, not returns, False)
            elif child.kind == K.PARM_DECL:
                self.variable(child)
            elif child.kind == K.MEMBER_REF:
                initialising = True
            elif initialising and child.kind.is_expression():
                self.expression(child, cursor)

    @staticmethod
    def words_ahead(function):
        """What stands ahead of a function's name, attributes included."""
        words = [token.spelling for child in function.get_children() if child.kind.is_attribute()
                 for token in child.get_tokens()]
        for token in function.get_tokens():
            if token.extent.start.offset >= function.location.offset:
                break
            words.append(token.spelling)
        return words

    # --- statements

    def statement(self, cursor, parent, may_end, more):
        """`may_end`: whether what stands here may come to its end; `more`: whether something comes
        behind it."""
        kind = cursor.kind
        if kind in PASSED_OVER:
            return
        if kind == K.COMPOUND_STMT:
            children = list(cursor.get_children())
            for at, child in enumerate(children):
                last = at == len(children) - 1
                self.statement(child, cursor, may_end or not last, more or not last)
        elif kind == K.DECL_STMT:
            for child in cursor.get_children():
                self.variable(child)
        elif kind == K.IF_STMT:
            self.selection(cursor, may_end, more)
        elif kind in LOOPS:
            self.loop(cursor)
        elif kind == K.SWITCH_STMT:
            self.switch(cursor, may_end, more)
        elif kind in (K.CASE_STMT, K.DEFAULT_STMT):
            self.statement(list(cursor.get_children())[-1], cursor, may_end, more)
        elif kind in (K.CXX_TRY_STMT, K.CXX_CATCH_STMT):
            for child in cursor.get_children():
                if child.kind in (K.COMPOUND_STMT, K.CXX_CATCH_STMT):
                    self.statement(child, cursor, may_end, more)
        elif kind == K.RETURN_STMT:
            if more:
                self.left_out(cursor)
            for child in cursor.get_children():
                if type_kind(child) == TypeKind.BOOL:
                    self.condition(child)
                self.expression(child, cursor)
        elif kind in (K.BREAK_STMT, K.CONTINUE_STMT):
            self.left_out(cursor)
        elif kind.is_expression():
            is_nothing = self.source.text.startswith('static_cast<void>', span(cursor)[0])
            if may_end and not is_nothing and self.called(cursor) != 'reserve':
                self.left_out(cursor)
            self.expression(cursor, parent)
        else:
            for child in cursor.get_children():
                self.statement(child, cursor, may_end, more)

    def left_out(self, cursor):
        begin, end = span(cursor)
        at = self.source.index(end)
        if at < len(self.source.tokens) and self.source.tokens[at][2] == ';':
            end = self.source.tokens[at][1]
            self.add('statement', begin, end, [(begin, end, ';')])

    def is_constexpr(self, cursor):
        """Of an `if`: its condition is evaluated while compiling."""
        tokens = self.source.between(*span(cursor))
        return len(tokens) > 1 and tokens[1][2] == 'constexpr'

    def selection(self, cursor, may_end, more):
        for child in cursor.get_children():
            ahead = self.source.ahead_of(span(child)[0])
            if ahead in (')', 'else') and not child.kind == K.VAR_DECL and self.is_branch(child):
                self.statement(child, cursor, may_end, more)
            elif child.kind in (K.VAR_DECL, K.DECL_STMT):
                self.statement(child, cursor, True, True)
            elif not self.is_constexpr(cursor):
                self.condition(child)
                self.expression(child, cursor)

    def is_branch(self, child):
        begin, end = span(child)
        return self.source.text[begin] == '{' or not child.kind.is_expression() or (
            self.source.behind(end) == ';')

    def loop(self, cursor):
        children = list(cursor.get_children())
        body = children[0] if cursor.kind == K.DO_STMT else children[-1]
        for child in children:
            if child == body:
                self.statement(child, cursor, True, True)
            elif child.kind in (K.VAR_DECL, K.DECL_STMT):
                self.statement(child, cursor, True, True)
            elif child.kind.is_expression():
                if cursor.kind != K.CXX_FOR_RANGE_STMT and type_kind(child) == TypeKind.BOOL:
                    self.condition(child)
                self.expression(child, cursor)

    def switch(self, cursor, may_end, more):
        children = list(cursor.get_children())
        labels, has_default = [], False

        def look_at(inside):
            nonlocal has_default
            for child in inside.get_children():
                if child.kind == K.CASE_STMT:
                    labels.append(next(child.get_children()))
                has_default = has_default or child.kind == K.DEFAULT_STMT
                if child.kind not in (K.SWITCH_STMT, K.LAMBDA_EXPR):
                    look_at(child)

        look_at(children[-1])
        value = children[-2]
        if value.kind.is_expression() and (has_default or more or may_end):
            begin, end = span(value)
            for label in labels:
                text = self.source.flat[slice(*span(label))]
                # shown beside the label, chosen at the value
                first = len(self.source.mutants)
                self.add('case', begin, end, [(begin, begin, 'fl_unlike('), (end, end, f', {text})')])
                for at in range(first, len(self.source.mutants)):
                    self.source.mutants[at] = dataclasses.replace(
                        self.source.mutants[at], before=f'case {flattened(text)}:', after='(nothing)')
        for child in children[:-1]:
            if child.kind.is_expression():
                self.expression(child, cursor)
            else:
                self.statement(child, cursor, True, True)
        self.statement(children[-1], cursor, may_end, more)

    # --- variables

    def is_constant(self, variable):
        """Whether the compiler knows its value, and its uses are what can be changed."""
        begin = variable.extent.start.offset
        if variable.kind == K.ENUM_CONSTANT_DECL:
            return True
        if variable.kind != K.VAR_DECL:
            return False
        words = [token.spelling for token in variable.get_tokens()][:8]
        if 'constexpr' in words:
            return True
        if not variable.type.is_const_qualified():
            return False
        inside = [child for child in variable.get_children() if child.kind.is_expression()]
        return len(inside) == 1 and bare(inside[0]).kind in LITERALS and begin >= 0

    def variable(self, cursor):
        if cursor.kind not in (K.VAR_DECL, K.FIELD_DECL, K.PARM_DECL):
            if cursor.kind.is_expression():
                self.expression(cursor, None)
            return
        if cursor.kind == K.VAR_DECL and self.is_constant(cursor):
            return
        name = cursor.location.offset
        for child in cursor.get_children():
            if child.kind.is_expression() and span(child)[0] >= name:
                if self.source.ahead_of(span(child)[0]) != '[' or child.kind == K.LAMBDA_EXPR:
                    self.expression(child, cursor)

    # --- expressions

    def condition(self, cursor):
        """Turns round what isn't changed in a finer way."""
        inner = bare(cursor)
        if inner.kind == K.UNARY_OPERATOR or inner.kind in LITERALS:
            return
        _, operator, _ = self.operator(inner)
        if operator and operator[2] in {**COMPARISONS, **LOGIC}:
            return
        if inner.kind.is_expression() and inner.kind != K.LAMBDA_EXPR:
            begin, end = span(inner)
            if self.source.text[begin] != '!':
                self.put_around('logic', inner, '!(')

    def operator(self, cursor):
        """Left side, token and right side of a binary operator."""
        if cursor.kind not in (K.BINARY_OPERATOR, K.COMPOUND_ASSIGNMENT_OPERATOR, K.CALL_EXPR):
            return None, None, None
        begin, end = span(cursor)
        children = [child for child in cursor.get_children() if child.kind.is_expression()]
        if len(children) == 3:  # the operator's function is the second
            children.sort(key=lambda child: span(child)[0])
            del children[1]
        if len(children) != 2:
            return None, None, None
        left, right = sorted(children, key=lambda child: span(child)[0])
        if span(left)[0] != begin or span(right)[1] != end or span(left)[1] > span(right)[0]:
            return None, None, None
        tokens = self.source.between(span(left)[1], span(right)[0])
        if len(tokens) != 1:
            return None, None, None
        return left, tokens[0], right

    def expression(self, cursor, parent):
        kind = cursor.kind
        begin, end = span(cursor)
        if kind in PASSED_OVER:
            return
        if not kind.is_expression():
            self.statement(cursor, parent, True, True)
            return
        if self.source.text.startswith(('noexcept', 'requires', 'sizeof', 'decltype', 'typeid'), begin):
            return
        if kind == K.LAMBDA_EXPR:
            self.closure(cursor)
            return
        if kind in LITERALS:
            # not what a macro writes around it
            if parent is None or span(parent) != span(cursor) or parent.kind == K.UNEXPOSED_EXPR:
                self.literal(cursor)
            return
        if kind == K.DECL_REF_EXPR:
            self.named_constant(cursor)
            return
        self.binary(cursor)
        self.unary(cursor)
        if kind == K.CONDITIONAL_OPERATOR:
            children = list(cursor.get_children())
            if children:
                self.condition(children[0])
        if kind == K.CALL_EXPR:
            name = self.called(cursor)
            if name == 'reserve':
                return
            if name not in ('min', 'max', 'swap', 'equivalent') and (
                    name == 'compare' or not self.is_compared_to_zero(end)):
                self.swapped(cursor, parent)
        for child in cursor.get_children():
            self.expression(child, cursor)

    def is_compared_to_zero(self, end):
        at = self.source.index(end)
        return [token[2] for token in self.source.tokens[at:at + 2]] == ['==', '0']

    def closure(self, cursor):
        body = None
        for child in cursor.get_children():
            if child.kind == K.COMPOUND_STMT:
                body = child
            elif child.kind == K.PARM_DECL:
                self.variable(child)
            elif child.kind.is_expression() and child.kind != K.DECL_REF_EXPR:
                self.expression(child, cursor)
        if body is not None:
            text = self.source.flat[slice(*span(body))]
            self.statement(body, cursor, not re.search(r'\breturn\b(?! *;)', text), False)

    def called(self, cursor):
        """The last name ahead of the first parenthesis, also where no function is known yet."""
        ahead = self.source.flat[slice(*span(cursor))].split('(')[0]
        return re.split(r'::|\.|->', re.sub(r'<.*', '', ahead))[-1].strip()

    def single_token(self, begin, end):
        at = self.source.index(begin)
        return at < len(self.source.tokens) and self.source.tokens[at][:2] == (begin, end)

    def is_argument_of_template(self, begin, end):
        return self.source.ahead_of(begin) in ('<',) and self.source.behind(end) in ('>', ',')

    def literal(self, cursor):
        begin, end = span(cursor)
        if not self.single_token(begin, end) or self.is_argument_of_template(begin, end):
            return
        text = self.source.text[begin:end]
        if text in ('true', 'false'):
            self.add('constant', begin, end, [(begin, end, 'false' if text == 'true' else 'true')])
            return
        self.add('constant', begin, end, [(begin, end, f'fl_next({text})')])
        if re.fullmatch(r'1[uUlL]*', text):
            self.add('constant', begin, end, [(begin, end, f'0{text[1:]}')])

    def named_constant(self, cursor):
        begin, end = span(cursor)
        known = cursor.referenced
        if known is None or not self.source.between(begin, end):
            return
        if type_kind(cursor) not in NUMBERS or not self.is_constant(known):
            return
        if self.is_argument_of_template(begin, end):
            return
        if type_kind(cursor) == TypeKind.BOOL:
            self.put_around('constant', cursor, '!(')
        else:
            self.put_around('constant', cursor, 'fl_next(')

    def binary(self, cursor):
        begin, end = span(cursor)
        left, token, right = self.operator(cursor)
        if token is None:
            return
        first, last, text = token
        if text in COMPARISONS:
            for other in COMPARISONS[text]:
                self.add('comparison', begin, end, [(first, last, other)])
        elif text in LOGIC:
            self.add('logic', begin, end, [(first, last, LOGIC[text])])
            self.add('logic', begin, end, [(begin, begin, 'static_cast<bool>('),
                                           (span(left)[1], end, ')')])
            self.add('logic', begin, end, [(begin, span(right)[0], 'static_cast<bool>('),
                                           (end, end, ')')])
            self.condition(left)
            self.condition(right)
        elif text in ARITHMETIC:
            kinds = {type_kind(cursor), type_kind(left)}
            if kinds <= NUMBERS or ('<<' not in text and '>>' not in text  # streams, mostly
                                    and kinds <= NUMBERS | OPEN | {TypeKind.POINTER}):
                self.add('arithmetic', begin, end, [(first, last, ARITHMETIC[text])])

    def unary(self, cursor):
        if cursor.kind != K.UNARY_OPERATOR and not (
                cursor.kind == K.CALL_EXPR and cursor.spelling.startswith('operator')):
            return
        begin, end = span(cursor)
        tokens = self.source.between(begin, end)
        if len(tokens) < 2:
            return
        first, last = tokens[0], tokens[-1]
        if first[2] == '!':
            self.add('logic', begin, end, [(begin, first[1], 'static_cast<bool>('), (end, end, ')')])
        elif first[2] in ('-', '~') and cursor.kind == K.UNARY_OPERATOR:
            self.add('arithmetic', begin, end, [(begin, first[1], '')])
        elif first[2] in ('++', '--'):
            self.add('arithmetic', begin, end, [(*first[:2], '--' if first[2] == '++' else '++')])
        elif last[2] in ('++', '--'):
            self.add('arithmetic', begin, end, [(*last[:2], '--' if last[2] == '++' else '++')])

    def swapped(self, cursor, parent):
        begin, end = span(cursor)
        if parent is not None and parent.kind == K.VAR_DECL and parent.location.offset == begin:
            return  # a declaration is no expression
        if self.source.ahead_of(end) != ')' or cursor.spelling.startswith('operator'):
            return
        arguments = list(cursor.get_arguments())
        for one, other in zip(arguments, arguments[1:]):
            if one is None or other is None:
                continue
            (a, b), (c, d) = span(one), span(other)
            if not begin < a < b < c < d < end:
                continue
            if [token[2] for token in self.source.between(b, c)] != [',']:
                continue
            texts = self.source.flat[a:b], self.source.flat[c:d]
            names = [re.sub(r'\bconst\b|&', '', x.type.get_canonical().spelling).strip()
                     for x in (one, other)]
            if names[0] == names[1] and names[0] and texts[0] != texts[1]:
                self.add('arguments', begin, end, [(a, b, texts[1]), (c, d, texts[0])])


def parsed(index, root, includes, options):
    text = ''.join(f'#include "{root / name}"\n' for name in includes)
    unit = index.parse('together.cpp', args=options, unsaved_files=[('together.cpp', text)],
                       options=cindex.TranslationUnit.PARSE_DETAILED_PROCESSING_RECORD)
    errors = [str(said) for said in unit.diagnostics if said.severity >= cindex.Diagnostic.Error]
    if errors:
        raise SystemExit('\n'.join(errors[:10]) + '\nscripts/mutate: libclang does not understand')
    return unit


def make(root, batches, options):
    """The changes of all files in `batches`, each of which is parsed as one; `root` is where they
    are. Returns the changes in order of files, and each file's text without comments and ends of
    lines."""
    index = cindex.Index.create()
    mutants, flat = [], {}
    for batch in batches:
        unit = parsed(index, root, batch, options)
        makers = {str(root / name): Maker(Source(unit, root / name, name)) for name in batch}
        for cursor in unit.cursor.get_children():
            file = cursor.location.file
            if file is not None and file.name in makers:
                makers[file.name].declaration(cursor)
        for maker in makers.values():
            mutants += maker.source.mutants
            flat[maker.source.name] = maker.source.flat
    return distinct(mutants), flat


def distinct(mutants):
    """Numbers those that read alike, in order."""
    mutants = sorted(mutants, key=lambda one: (one.file, one.begin, one.end, one.edits))
    count = collections.Counter()
    for at, mutant in enumerate(mutants):
        count[mutant.key] += 1
        if count[mutant.key] > 1:
            mutants[at] = dataclasses.replace(
                mutant, after=f'{mutant.after} ({count[mutant.key]})')
    return mutants


class Copies:
    """Copies of sources with changes in them, line by line where the original's are."""

    def __init__(self, root, files, mutants):
        """`mutants`: by number."""
        self.root = root
        self.mutants = {file: [] for file in files}
        for number, mutant in mutants.items():
            self.mutants[mutant.file].append((number, mutant))

    def text(self, file, flat):
        """The copy. `flat`: the original without comments and ends of lines."""
        text = (self.root / file).read_bytes().decode('latin-1')
        places = collections.defaultdict(list)
        for number, mutant in self.mutants[file]:
            places[mutant.begin, mutant.end].append((number, mutant))
        order = sorted(places, key=lambda place: (place[0], -place[1]))

        def written(begin, end, at):
            """From `begin` to `end`, with what is in it, from the place `at` of the order on."""
            result, here = '', begin
            while at < len(order) and order[at][0] < end:
                inner = order[at]
                behind = at + 1
                while behind < len(order) and order[behind][0] < inner[1]:
                    behind += 1
                result += text[here:inner[0]]
                result += wrapped(places[inner], written(*inner, at + 1))
                here, at = inner[1], behind
            return result + text[here:end]

        def wrapped(mutants, original):
            for number, mutant in reversed(mutants):
                if mutant.kind == 'statement':
                    original = f'{{ if (!fl_mutant({number})) {{ {original} }} }}'
                else:
                    changed, at = '', mutant.begin
                    for first, last, new in mutant.edits:
                        changed += flat[at:first] + new
                        at = last
                    changed += flat[at:mutant.end]
                    if mutant.kind == 'logic':
                        original = f'static_cast<bool>({original})'
                    original = f'(fl_mutant({number}) ? ({changed}) : ({original}))'
            return original

        return written(0, len(text), 0).encode('latin-1')
