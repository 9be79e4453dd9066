# Reads a .natvis file as far as ours needs it, and evaluates what stands in it with GDB: so that
# names which the library hasn't, and arithmetic that goes wrong, are found without Visual Studio.

import re
import xml.etree.ElementTree

import gdb
import gdb.types

NAMESPACE = '{http://schemas.microsoft.com/vstudio/debugger/natvis/2010}'

# Members of Microsoft's standard library, and what they are called in GCC's.
MEMBERS = {'_Ptr': '_M_ptr'}

WORD = re.compile(r'(?<![\w.>])[A-Za-z_]\w*')


class Visualizer:
    """One <Type>."""

    def __init__(self, node):
        names = [node.get('Name')]
        names += [other.get('Name') for other in node.findall(NAMESPACE + 'AlternativeType')]
        self.names = names
        self.view = node.get('IncludeView')
        self.inheritable = node.get('Inheritable') == 'true'
        self.displays = [(part.get('Condition'), part.text)
                         for part in node.findall(NAMESPACE + 'DisplayString')]
        self.intrinsics = {part.get('Name'): part.get('Expression')
                           for part in node.findall(NAMESPACE + 'Intrinsic')}
        self.members = [text for part in node.iter() for text in (part.get('Condition'),)
                        if text and part.tag != NAMESPACE + 'DisplayString']
        self.members += [part.text for tag in ('Item', 'ExpandedItem')
                         for part in node.iter(NAMESPACE + tag)]

    def describes(self, name):
        return any(re.fullmatch(re.escape(pattern).replace(r'\*', '.*'), name)
                   for pattern in self.names)

    def expressions(self):
        """All of them, whether they are shown of a value or not."""
        yield from self.members
        yield from self.intrinsics.values()
        for condition, text in self.displays:
            if condition:
                yield condition
            yield from re.findall(r'{(.*?)}', text)


class Natvis:
    def __init__(self, pathname, text_of):
        self.text_of = text_of
        root = xml.etree.ElementTree.parse(pathname).getroot()
        if root.tag != NAMESPACE + 'AutoVisualizer':
            raise ValueError('this is no natvis: ' + root.tag)
        self.types = [Visualizer(node) for node in root.findall(NAMESPACE + 'Type')]

    def of(self, type_, view=None, derived=False):
        """The visualizer of a class, which can be that of a base."""
        type_ = gdb.types.get_basic_type(type_)
        for each in self.types:
            if each.view == view and each.describes(type_.name or '') and (
                    each.inheritable or not derived):
                return each
        for field in type_.fields() if type_.code == gdb.TYPE_CODE_STRUCT else []:
            if field.is_base_class:
                found = self.of(field.type, view, True)
                if found:
                    return found
        return None

    def evaluate(self, expression, value, visualizer):
        while True:
            inlined = re.sub(r'\b(\w+)\(\)',
                             lambda call: '(' + visualizer.intrinsics[call[1]] + ')', expression)
            if inlined == expression:
                break
            expression = inlined
        expression = re.sub(r'(?<=\.)\w+', lambda name: MEMBERS.get(name[0], name[0]), expression)
        gdb.set_convenience_variable('fl_this', value.address)

        def member(word):
            return '$fl_this' if word[0] == 'this' else '$fl_this->' + word[0]

        return gdb.parse_and_eval(WORD.sub(member, expression))

    def shown(self, expression, value, visualizer):
        """What stands in braces: an expression and how it is to be shown."""
        expression, _, how = expression.partition(',')
        result = self.evaluate(expression, value, visualizer)
        view = re.fullmatch(r'view\((\w+)\)', how)
        type_ = gdb.types.get_basic_type(result.type)
        if type_.code == gdb.TYPE_CODE_STRUCT and (type_.name or '').startswith('std::'):
            return '"' + self.text_of(result) + '"'
        if type_.code == gdb.TYPE_CODE_STRUCT:
            return self.show(result, view[1] if view else None)
        if how not in ('', 'd', 'u', 'x'):
            raise ValueError('an unknown format: ' + how)
        return str(int(result))

    def show(self, value, view=None):
        """The line of a value."""
        visualizer = self.of(value.type, view)
        if visualizer is None:
            raise ValueError('nothing shows ' + str(value.type))
        for condition, text in visualizer.displays:
            if condition is None or int(self.evaluate(condition, value, visualizer)):
                return re.sub(r'{(.*?)}',
                              lambda part: self.shown(part[1], value, visualizer), text)
        raise ValueError('no line for ' + str(value.type))

    def evaluate_all(self, value):
        """Everything that the visualizers of a value's class say of its members."""
        name = gdb.types.get_basic_type(value.type).name
        for visualizer in self.types:
            if visualizer.describes(name):
                for expression in visualizer.expressions():
                    self.evaluate(expression.partition(',')[0], value, visualizer)
