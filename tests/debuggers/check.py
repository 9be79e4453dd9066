# What is shown of the values in shown.cpp, under GDB: by the printers for it, and by those for
# Visual Studio as natvis.py reads them. Run by scripts/check-debuggers.

import os
import sys

import gdb

sys.dont_write_bytecode = True
here = os.path.dirname(os.path.abspath(__file__))
printers = os.path.join(here, '..', '..', 'debuggers')
sys.path[:0] = [here, printers]

# variable, what GDB shows, and what Visual Studio shows if that is something else
SHOWN = (
    ('path', '"C:\\café\\😀"', None),
    ('seen', '"C:\\café\\😀"', None),
    ('no_path', '""', None),
    ('forged', '"C:\\a\\u000Ab\\u202Etxt.\\uD800"', '"C:\\a\nb\u202Etxt.\uD800"'),
    ('file', 'file, 0666, archive, 1234 bytes, 2026-11-21 22:09:03 UTC',
     'file, 0666, 1234 bytes, 2026-11-21 22:09:03 UTC'),
    ('hidden', 'file, 0444, hidden, system, not indexed, 1 byte, 2000-02-29 00:00:00 UTC',
     'file, 0444, 1 bytes, 2000-02-29 00:00:00 UTC'),
    ('directory', 'directory, 0777, 0 bytes, 2000-02-29 00:00:00 UTC', None),
    ('link', 'symbolic link, 0666, 0 bytes, 2026-11-21 22:09:03 UTC', None),
    ('junction', 'junction or volume mount point, 0666, 0 bytes, 2026-11-21 22:09:03 UTC', None),
    ('missing', 'not found', None),
    ('unknown', 'unknown type, unknown permissions, 0 bytes, no time', None),
    ('future', 'file, 0666, 0 bytes, 10000-01-01 00:00:00 UTC', None),
    ('last_day', 'file, 0666, 0 bytes, 1999-12-31 23:59:59 UTC', None),
    ('endless', 'file, 0666, 0 bytes, no time', None),
    ('without_beginning', 'file, 0666, 0 bytes, no time', None),
    ('light', 'file, 18446744073709551615 bytes, 2026-11-21 22:09:03 UTC', None),
    ('not_found', 'fl:filesystem:PathNotFound: "C:/dir/x"',
     '"fl:filesystem:PathNotFound": "C:/dir/x"'),
    ('base', 'fl:filesystem:PathNotFound: "C:/dir/x"', '"fl:filesystem:PathNotFound": "C:/dir/x"'),
    ('refused', 'fl:filesystem:SystemError: "C:/a", "C:/b" (code 32)',
     '"fl:filesystem:SystemError": "C:/a" (code 32)'),
    ('without_code', 'fl:filesystem:SystemError (code 0)', '"fl:filesystem:SystemError": ""'),
    ('invalid', 'fl:filesystem:InvalidArgument: Time not valid: "C:/a"',
     '"Time not valid": "C:/a"'),
    ('invalid_base', 'fl:filesystem:InvalidArgument: Time not valid: "C:/a"',
     '"fl:filesystem:InvalidArgument": "C:/a"'),
    ('carried', 'fl:filesystem:AccessDenied: "C:/a"', '"fl:filesystem:AccessDenied": "C:/a"'),
    ('kept', 'fl:filesystem:SystemError: "C:/a", "C:/b" (code 32)',
     '"fl:filesystem:SystemError": "C:/a" (code 32)'),
    ('file_entry', '"C:\\f\\a.txt": file, 9 bytes', None),
    ('large_entry', '"C:\\b\\big": file, 5000000000 bytes', None),
    ('directory_entry', '"C:\\d\\dir": directory', None),
    ('link_entry', '"C:\\s\\link": symbolic link', None),
    ('junction_entry', '"C:\\j\\to d": junction or volume mount point', None),
    ('missing_entry', '"C:\\missing": not found', None),
    ('no_entry', 'no entry', None),
)

# What GDB alone is asked: memory that is no value at all, as that of variables not yet made.
SHOWN_OF_GARBAGE = (
    ('*(fl::filesystem::upath const *)garbage._M_elems', '"(unreadable)"'),
    ('*(fl::filesystem::PathNotFound const *)garbage._M_elems',
     '(unreadable): "(unreadable)" (code 4294967295)'),
)

# Without the library's own debug information, as of one that was built for Release.
SHOWN_WITHOUT_THE_LIBRARY = (
    ('path', '"C:\\café\\😀"'),
    ('directory', 'directory, 0777, 0 bytes, 2000-02-29 00:00:00 UTC'),
    ('refused', '<incomplete type>'),
    ('*&base', '<incomplete type>'),
    ('kept', 'fl:filesystem:SystemError: "C:/a", "C:/b" (code 32)'),
    ('file_entry', "an entry, which the library's debug information would tell"),
    ('no_entry', 'no entry'),
)

# One value of each class that natvis describes and that isn't a variable.
OTHER_CLASSES = ('file.mtime', '*file_entry.record_._M_ptr')

passed = 0
failures = []


def check(label, seen, expected):
    global passed
    try:
        line = seen()
    except Exception as error:  # whatever it is, the row failed
        line = '%s: %s' % (type(error).__name__, error)
    if line == expected:
        passed += 1
    else:
        failures.append('%s:\n  %r\n  and not\n  %r' % (label, line, expected))


def printed(expression):
    return gdb.execute('output ' + expression, to_string=True)


def run():
    gdb.execute('run', to_string=True)
    gdb.execute('up', to_string=True)


def main():
    import natvis

    gdb.execute('set debuginfod enabled off')
    gdb.execute('source ' + os.path.join(printers, 'fl_filesystem_gdb.py'))
    import fl_filesystem_gdb

    gdb.execute('break look_here', to_string=True)
    run()
    visual_studio = natvis.Natvis(os.path.join(printers, 'fl_filesystem.natvis'),
                                  fl_filesystem_gdb.text_of)
    unseen = list(visual_studio.types)
    for name, line, in_visual_studio in SHOWN:
        value = gdb.parse_and_eval(name)
        check('GDB, ' + name, lambda: printed(name), line)
        check('natvis, ' + name, lambda: visual_studio.show(value), in_visual_studio or line)
    for expression, line in SHOWN_OF_GARBAGE:
        check('GDB, ' + expression, lambda: printed(expression), line)
    for name in [row[0] for row in SHOWN] + list(OTHER_CLASSES):
        value = gdb.parse_and_eval(name)
        check('natvis, every expression, ' + name, lambda: visual_studio.evaluate_all(value), None)
        type_name = gdb.types.get_basic_type(value.type).name
        unseen = [each for each in unseen if not each.describes(type_name)]
    check('natvis, classes that nothing is seen of', lambda: [each.names for each in unseen], [])

    gdb.execute('kill', to_string=True)
    gdb.execute('nosharedlibrary')
    gdb.execute('set auto-solib-add off')
    run()
    for name, line in SHOWN_WITHOUT_THE_LIBRARY:
        check('GDB, without the library, ' + name, lambda: printed(name), line)


main()
for failure in failures:
    print(failure)
print('%d passed, %d failed' % (passed, len(failures)))
gdb.execute('kill', to_string=True)
gdb.execute('quit %d' % (1 if failures or passed == 0 else 0))
