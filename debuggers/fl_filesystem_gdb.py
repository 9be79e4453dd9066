# Shows values of fl::filesystem in GDB, each in one line. Say in GDB, or in ~/.gdbinit:
#
#     source fl_filesystem_gdb.py
#
# Paths and records look as the library writes them to streams, failures as `describe` tells
# them, but for the system's words. All is read from memory: nothing is called in the program.

import gdb
import gdb.printing
import gdb.types

# As is_hidden in text.hpp has it.
HIDDEN = (
    (0x00, 0x1F), (0x22, 0x22), (0x7F, 0x9F), (0x61C, 0x61C), (0x200B, 0x200F), (0x2028, 0x202E),
    (0x2060, 0x206F), (0xD800, 0xDFFF), (0xFEFF, 0xFEFF), (0xFFF9, 0xFFFB), (0xFFFE, 0xFFFF),
)

TYPES = {
    0x1000: 'FIFO',
    0x2000: 'character device',
    0x4000: 'directory',
    0x6000: 'block device',
    0x8000: 'file',
    0xA000: 'symbolic link',
    0xC000: 'socket',
    0xE000: 'junction or volume mount point',
}

ATTRIBUTES = ((0x1000, 'archive'), (0x4000, 'hidden'), (0x2000, 'system'), (0x8000, 'not indexed'))

ENCODINGS = {1: ('utf-8', 'backslashreplace'), 2: ('utf-16-le', 'surrogatepass')}

LONGEST_TEXT = 65536
MOST_NAMES = 16

INVALID_ARGUMENT = 1
SYSTEM_ERROR = 13


def text_of(string):
    """The text of a std::string or std::u16string, as libstdc++ has it. What isn't made yet, as
    a variable ahead of its definition, has any length."""
    try:
        units = string['_M_dataplus']['_M_p']
        length = int(string['_M_string_length'])
        width = units.type.strip_typedefs().target().sizeof
        size = min(length, LONGEST_TEXT) * width
        data = bytes(gdb.selected_inferior().read_memory(int(units), size)) if size else b''
    except gdb.MemoryError:
        return '(unreadable)'
    encoding, errors = ENCODINGS[width]
    return data.decode(encoding, errors) + ('...' if length > LONGEST_TEXT else '')


def texts_of(vector):
    first = vector['_M_impl']['_M_start']
    count = int(vector['_M_impl']['_M_finish'] - first)
    return [text_of(first[i]) for i in range(min(count, MOST_NAMES))]


def in_quotes(text):
    def shown(point):
        number = ord(point)
        if any(first <= number <= last for first, last in HIDDEN):
            return '\\u%04X' % number
        return point

    return '"' + ''.join(shown(point) for point in text) + '"'


def date_of(day):
    """Of a number of days since one in the year -4713. Years have as many digits as they need:
    Windows knows more than 9999, Python doesn't."""
    century = (4 * (day + 32044) + 3) // 146097
    rest = day + 32044 - 146097 * century // 4
    year = (4 * rest + 3) // 1461
    rest -= 1461 * year // 4
    month = (5 * rest + 2) // 153  # of years that begin with March
    return '%04d-%02d-%02d' % (100 * century + year - 4800 + month // 10,
                               month + 3 - month // 10 * 12, rest - (153 * month + 2) // 5 + 1)


def time_of(ptime):
    """Boost counts microseconds, and has its greatest numbers for no times."""
    ticks = int(ptime['time_']['time_count_']['value_'])
    greatest = 2 ** 63 - 1
    if ticks in (greatest, greatest - 1, -greatest - 1):
        return 'no time'
    day, second = divmod(ticks // 1000000, 86400)
    return '%s %02d:%02d:%02d UTC' % (date_of(day), second // 3600, second // 60 % 60, second % 60)


def size_of(number):
    return '%d byte%s' % (number, '' if number == 1 else 's')


def permissions_of(word):
    if word & 0xFFFF == 0xFFFF:
        return ['unknown permissions']
    return ['%04o' % (word & 0o7777)] + [name for bit, name in ATTRIBUTES if word & bit]


class PathPrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        return in_quotes(text_of(self.value['pathname_']))


class StatusPrinter:
    """file_status, and file_status_light, which has no permissions."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        word = int(self.value['type'])
        if word & 0xFFFF0000 == 0xFFFF0000:
            return 'not found'
        parts = [TYPES.get(word & 0xF000, 'unknown type')]
        if gdb.types.has_field(self.value.type.strip_typedefs(), 'perms'):
            parts += permissions_of(int(self.value['perms']))
        parts += [size_of(int(self.value['size'])), time_of(self.value['mtime'])]
        return ', '.join(parts)


def failure_line(identifier, names, code, always):
    line = identifier
    names = [in_quotes(name) for name in names if name]
    if names:
        line += ': ' + ', '.join(names)
    if code != 0 or always:
        line += ' (code %d)' % code
    return line


class ExceptionPrinter:
    def __init__(self, value):
        self.value = value

    def message(self):
        """That of an InvalidArgument, also if it is seen as one of its bases."""
        whole = self.value.cast(self.value.dynamic_type)
        if not has_base(whole.type, 'fl::filesystem::InvalidArgument'):
            return ''
        return text_of(whole.cast(gdb.lookup_type('fl::filesystem::InvalidArgument'))['message'])

    def to_string(self):
        base = self.value.cast(gdb.lookup_type('fl::filesystem::FsysExceptionBase'))
        identifier = text_of(base['identifier'])
        number = int(base['excp_id'])
        if number == INVALID_ARGUMENT:
            message = self.message()
            identifier += ': ' + message if message else ''
        names = [text_of(base['path_name'])] + texts_of(base['additional_path_names'])
        return failure_line(identifier, names, int(base['error_code']), number == SYSTEM_ERROR)


class FailurePrinter:
    """The value that attempt makes of an exception."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        value = self.value
        names = [text_of(value['path_name_'])] + texts_of(value['additional_path_names_'])
        return failure_line(text_of(value['identifier_']), names, int(value['error_code_']),
                            int(value['id_']) == SYSTEM_ERROR)


class EntryPrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        record = self.value['record_']['_M_ptr']
        if int(record) == 0:
            return 'no entry'
        if not gdb.types.has_field(record.type.target().strip_typedefs(), 'text'):
            return "an entry, which the library's debug information would tell"
        data = record['data']
        attributes = int(data['dwFileAttributes'])
        line = in_quotes(text_of(record['text'])) + ': '
        if attributes == 0:
            return line + 'not found'
        tag = int(record['reparse_tag']) if attributes & 0x400 else 0
        if tag == 0xA000000C:
            return line + 'symbolic link'
        if tag == 0xA0000003:
            return line + 'junction or volume mount point'
        if attributes & 0x10:
            return line + 'directory'
        return line + 'file, ' + size_of(int(data['nFileSizeHigh']) << 32 | int(data['nFileSizeLow']))


def has_base(type_, name):
    """Also of a class that is derived from one, as those are that travel between threads. Not of
    one whose members aren't known: GCC tells those of exceptions with the library's code alone."""
    type_ = gdb.types.get_basic_type(type_)
    if type_.name == name:
        return len(type_.fields()) > 0
    return type_.code == gdb.TYPE_CODE_STRUCT and any(
        has_base(field.type, name) for field in type_.fields() if field.is_base_class)


class Printers(gdb.printing.RegexpCollectionPrettyPrinter):
    def __init__(self):
        super().__init__('fl_filesystem')
        self.add_printer('path', '^fl::filesystem::basic_path<', PathPrinter)
        self.add_printer('status', '^fl::filesystem::file_status(_light)?$', StatusPrinter)
        self.add_printer('entry', '^fl::filesystem::directory_entry$', EntryPrinter)
        self.add_printer('failure', '^fl::filesystem::failure$', FailurePrinter)

    def __call__(self, value):
        printer = super().__call__(value)
        if printer is not None:
            return printer
        if has_base(value.type, 'fl::filesystem::FsysExceptionBase'):
            return ExceptionPrinter(value)
        return None


gdb.printing.register_pretty_printer(None, Printers(), replace=True)
