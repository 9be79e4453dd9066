#include "kit/probe.hpp"

namespace kit {

namespace {

constexpr probe all_sights[] = {
    {"260 units", "directories of less than 248 units are made, longer ones are not: 206",
     "mkdir #247; mkdir #248 =206", pathnames::short_ones},
    {"260 units", "files of less than 260 units are made and found, longer ones are not: 3",
     "open #259 w 0 new; attributes #259; open #260 w 0 new =3; attributes #260 =3",
     pathnames::short_ones},
    {"260 units", "with a long prefix there is no such limit",
     "mkdir ?#248; open ?#260 w 0 new; attributes ?#300 =2"},
    {"260 units", "the library needs no prefix",
     "our create_directory #300 -> ok; our exists #300 -> yes; our remove_all #300 -> ok"},
    {"long pathnames allowed", "directories and files of any length are made",
     "mkdir #248; open #260 w 0 new; attributes #260; dir #300; cd #300; cd @",
     pathnames::long_ones},
    {"long pathnames allowed", "the library does as it does without",
     "our create_directory #300 -> ok; our exists #300 -> yes; our remove_all #300 -> ok",
     pathnames::long_ones},

    {"a denied right", "to read a file: 5 for its content, its attributes are still told",
     R"(file f x; deny f read; open f r rwd existing =5; attributes f -> A; )"
     R"(our copy_file @\f @\g -> AccessDenied; our exists @\f -> yes)"},
    {"a denied right", "to write to a file: 5, reading is still allowed",
     R"(file f x; deny f write; open f w rwd existing =5; content f -> x)"},
    {"a denied right", "to list a directory: 5",
     R"(file d\f; deny d list; find @\d\* =5; our list @\d -> AccessDenied)"},
    {"a denied right", "to make something in a directory: 5",
     R"(dir d; deny d create; mkdir @\d\new =5; open @\d\new w 0 new =5; )"
     R"(our create_directory @\d\new -> AccessDenied)"},
    {"a denied right", "to delete a file, and its directory lends none: 5",
     R"(file d\f; deny d children; deny d\f remove; delete @\d\f =5; )"
     R"(our remove_file @\d\f -> AccessDenied)"},
    {"a denied right", "to delete a file is lent by a directory whose entries may be deleted",
     R"(file d\f; deny d nothing; deny d\f remove; delete @\d\f)", pathnames::any, false},
    {"a denied right", "to read a file's attributes is lent by a directory that may be listed",
     R"(file d\f; deny d nothing; deny d\f attributes; attributes @\d\f -> A)", pathnames::any,
     false},

    {"a symbolic link", "to a file is followed, read and deleted by itself",
     R"(file f x; create-symlink l f file; is-link l -> yes; content l -> x; )"
     R"(our read_symlink @\l -> f; our canonical @\l -> @\f; delete l; content f -> x)"},
    {"a symbolic link", "to a directory is passed through, and removed without what it leads to",
     R"(dir d; create-symlink l d dir; mkdir @\l\new; attributes @\d\new -> D; )"
     R"(our remove_all @\l -> ok; attributes @\l =2; attributes @\d\new -> D)"},
    {"a symbolic link", "of the wrong kind, to who doesn't ask for directories: 5",
     "dir d; file f; create-symlink l d file; create-symlink m f dir; open l r rwd existing =5; "
     "open m r rwd existing =5"},

    {"a junction", "is passed through, read and removed without what it leads to",
     R"(file d\f x; junction j @\d; content j\f -> x; our read_symlink @\j -> @\d; )"
     R"(our canonical @\j\f -> @\d\f; our remove_all @\j -> ok; content d\f -> x)"},
    {"a junction", "in a circle: 1921",
     R"(junction a @\b; junction b @\a; open @\a\f r rwd existing =1921)"},

    {"a drive laid over a folder", "shows what is in the folder",
     R"(file d\f x; subst Y: @\d; content Y:\f -> x; our list Y:\ -> f; move Y:\f @\g; )"
     R"(content g -> x)",
     pathnames::any, false},
    {"a drive laid over a folder", "a file's final pathname is that in the folder",
     R"(file d\f x; subst Y: @\d; final Y:\f -> ?@\d\f)", pathnames::any, false},
    {"a drive laid over a folder", "both pathnames mean one file",
     R"(file d\f x; subst Y: @\d; our equivalent Y:\f @\d\f -> yes; )"
     R"(our canonical Y:\f -> Y:\f)",
     pathnames::any, false},
    {"a drive laid over a folder", "is no network drive, and the root of a volume",
     R"(dir d; subst Y: @\d; universal Y:\a 1 =2250; volume Y:\a -> Y:\; our unc Y:\a -> Y:\a)",
     pathnames::any, false},
    {"a drive laid over a folder", "its root can't be removed: 5",
     R"(dir d; subst Y: @\d; rmdir Y:\ =5)", pathnames::any, false},

    {"a share", "files are made, read and removed by the network",
     R"(file $\d\f x; content $\d\f -> x; our list $\d -> f; our unc $\d\f -> $\d\f; )"
     R"(our remove_all $\d -> ok; attributes $\d =2)"},
    {"a share", "the library needs no prefix there either",
     R"(our create_directories $\{a*100}\{b*100}\{c*100} -> ok; )"
     R"(our exists $\{a*100}\{b*100}\{c*100} -> yes; our remove_all $\{a*100} -> ok)"},
};

} // namespace

std::span<probe const> sights()
{
    return all_sights;
}

} // namespace kit
