#include "platform/facts/facts.hpp"

namespace contract::facts {

namespace {

constexpr char winfstest[] = "winfstest, t/base/04_MoveFile";
constexpr char winfsp[] = "WinFsp, winfsp-tests/info-test.c, rename_test";
constexpr char winfsp_case[] = "WinFsp, winfsp-tests/info-test.c, rename_caseins_test";
constexpr char winfsp_backslash[] = "WinFsp, winfsp-tests/info-test.c, rename_backslash_test";
constexpr char fstest[] = "fstest (NTFS), rename.cpp";
constexpr char fstest_links[] = "fstest (NTFS), links.cpp";
constexpr char dotnet[] = ".NET runtime, System.IO.FileSystem.Tests/File/Move.cs";
constexpr char dotnet_directory[] = ".NET runtime, System.IO.FileSystem.Tests/Directory/Move.cs";
constexpr char sdk_api[] = "MicrosoftDocs/sdk-api, pull request 845, measured";
constexpr char file_system_algorithms[] = "Microsoft, [MS-FSA] 2.1.5.15.11";

constexpr char host_replaces[] = "its host lets its administrator replace any file";
constexpr char looks_away[] = "moves a directory whatever is open below it";
constexpr char no_sharing[] = "doesn't open the directory that a name is moved to";
constexpr char other_code[] = "has another code";
constexpr char keeps_case[] = "leaves a name in the case that it had";
constexpr char one_file[] = "its host sees one file and leaves both names";

constexpr fact rows[] = {
    // to a free name
    {"file d\\foo x; move d\\foo d\\bar; attributes d\\foo =2; content d\\bar -> x", winfstest,
     "the old name is gone"},
    {"dir d\\foo; move d\\foo d\\bar; attributes d\\foo =2; attributes d\\bar -> D", winfstest,
     "also a directory's"},
    {"file a\\hello x; dir b; move a\\hello b\\world; attributes a\\hello =2; content b\\world -> "
     "x",
     winfstest, "into another directory"},
    {"file f; move f g; find f =2; find g -> g", fstest, "the new entry is there"},
    {"file f; hold f d rwd; move f g; find g -> g", fstest, "while it is open for deletion"},
    {"file f text; hold f r rwd; move f g; read 1 -> text; content g -> text", fstest,
     "who has it open goes on reading"},
    {"dir d; file f; move f d\\g; find f =2; find d\\g -> g", fstest, "into a directory"},
    {"dir d; dir e; move e d\\e; find e =2; find d\\e -> e", fstest, "a directory into another"},
    {"dir d; file d\\f; move d\\f d\\..\\f; names _ -> d|f", dotnet, "up by two full stops"},
    {"file f; move f ~~~~e~n~~~d; attributes ~~~~e~n~~~d -> A", dotnet, "blanks belong to a name"},
    {"file ~f; move ~f g; names _ -> g", dotnet, "also one ahead"},
    {"file f; move f ~g; attributes ~g -> A", dotnet, "of the new one"},
    {"file f; move f g; move g h; names _ -> h", dotnet, "twice"},
    {"file f testing; move f g; content g -> testing", dotnet, "the content goes along"},
    {"file f; setattr f R; move f g; attributes g -> R", fstest, "read-only or not",
     "keeps other attributes"},
    {"file f; setattr f H; move f g; attributes g -> H", fstest, "hidden or not",
     "keeps other attributes"},
    {"file d\\f; move d e; attributes e\\f -> A; attributes d =2", dotnet_directory,
     "all that is in a directory goes along"},
    {"file f; move f g\\; find g -> g", winfsp_backslash,
     "a backslash behind the new name of a file is passed over", other_code},
    {"dir d; move d e\\; find e -> e", winfsp_backslash, "and behind that of a directory"},
    {"file d\\f; move d\\f d\\g\\; move d e\\; delete e\\g; rmdir e\\", winfsp_backslash,
     "one after the other", other_code},
    {"file f; move ?@\\f ?#400; attributes ?#400 -> A", dotnet, "beyond 259 units"},

    {"file f; move f g\\; attributes g -> A; attributes f =2", dotnet_directory,
     "as .NET moves files by directories' names", other_code},
    {"file f; move f g/; attributes g -> A", dotnet_directory, "with a slash, too", other_code},
    {"file f; move f\\ g =123; attributes f -> A", dotnet_directory,
     "but not behind the old name of a file"},
    {"file f; move f/ g =123", dotnet_directory, "with a slash neither"},
    {"dir d; move d\\ e\\; names _ -> e", dotnet_directory, "that of a directory may have both"},
    {"dir d; move d ~~~~e~n~~~d; attributes ~~~~e~n~~~d -> D", dotnet_directory,
     "blanks belong to a name"},
    {"dir d\\e; dir d\\f; move d g; names g -> e|f", dotnet_directory, "with its directories"},
    {"dir foo; dir bar; move foo bar\\FOO; names bar -> FOO", dotnet_directory,
     "into another directory in another case"},
    {"dir FOO; dir bar; move foo bar\\FOO; names bar -> FOO", dotnet_directory,
     "by a name in another case"},
    {"dir d; move d ?#400; attributes ?#400 -> D", dotnet_directory, "beyond 259 units"},

    // onto itself
    {"dir d; move d d\\. ; attributes d -> D", dotnet_directory,
     "a full stop behind it is the same"},
    {"dir foo; file foo\\bar.txt; move foo FOO; find FOO -> FOO; attributes FOO\\bar.txt -> A",
     dotnet_directory, "of one with a file in it", keeps_case},
    {"file f x; move f f; content f -> x", winfsp_case, "the same name"},
    {"dir d; move d d; attributes d -> D", winfsp_case, "of a directory"},
    {"file file1; move file1 FILE1; find file1 -> FILE1; delete FILE1", winfsp_case,
     "in another case", keeps_case},
    {"dir dir1; move dir1 DIR1; find dir1 -> DIR1; rmdir DIR1", winfsp_case,
     "of a directory in another case", keeps_case},
    {"file f; move f F; names _ -> F", fstest, "is taken as it is given", keeps_case},
    {"file f; move f f r; names _ -> f", fstest, "with the flag that replaces"},

    // onto what is there
    {"file bar; file baz; move bar baz =183; attributes bar; attributes baz", winfstest,
     "without the flag it fails"},
    {"file a new; file b old; move a b =183; content b -> old", dotnet, "and leaves both"},
    {"file a new; file b old; move a b r; attributes a =2; content b -> new", winfstest,
     "with the flag it replaces"},
    {"file a; file baz; setattr baz R; move a baz =183; move a baz r =5", winfstest,
     "but nothing that is read-only", host_replaces},
    {"file a; file b; setattr b R; move a b r =5; attributes a -> A", fstest, "and leaves that",
     host_replaces},
    {"file a; file b; setattr b S; move a b r; attributes a =2", fstest,
     "a file of the system is replaced"},
    {"file a; file b; setattr b H; move a b r; attributes a =2", fstest, "and a hidden one"},
    {"file a; file b; move a B r; names _ -> B", fstest, "the new case is taken", keeps_case},
    {"file a; file b; move a B =183", fstest, "in whatever case it is there"},
    {"dir a; dir b; move a b =183; move a b r =5; attributes a -> D; attributes b -> D", winfstest,
     "nothing replaces a directory"},
    {"dir a; dir b; move a b r =5; rmdir b; move a b r; attributes a =2", winfstest,
     "until it is gone"},
    {"dir a; dir b; move a b r =5; rmdir b; move a b; move b a", winfsp, "and back again"},
    {"file f; dir d; move f d =183; move f d r =5", fstest, "nor does a file"},
    {"file f; move f @ =183", dotnet, "nor the folder in which it is"},
    {"file f; dir d; move f d =183; attributes f -> A", dotnet, "which leaves the file"},
    {"dir d; file f; move d f =183", sdk_api, "a directory onto a file without the flag"},
    {"dir d; file f; move d f r; attributes f -> D", sdk_api, "with it the file is replaced"},
    {"file d\\x; file f; move d f r; attributes f\\x -> A", sdk_api, "by all of the directory"},
    {"dir d; dir d\\e; move d\\e d =183", dotnet_directory, "onto the one in which it is"},
    {"dir foo; dir bar\\foo; move foo bar\\foo =183", dotnet_directory, "one of the same name"},
    {"dir FOO; dir bar\\foo; move FOO bar\\foo =183", dotnet_directory, "in whatever case"},
    {"dir bar\\FOO; dir foo; move foo bar\\foo =183", dotnet_directory, "either way"},

    // what is open
    {"file a; file b; hold b r rwd; move a b =183; move a b r =5", fstest,
     "an open file isn't replaced"},
    {"file a; file b; hold b r rwd; move a b r =5; close 1; move a b r", fstest,
     "until it is closed"},
    {"file a; file b; hold b a 0; move a b r =5", fstest, "whatever it was opened for"},
    {"dir a; dir b; hold b l d b; move a b r =5", fstest, "nor is a directory"},
    {"file d\\f; hold d\\f rw rw; move d e =5; close 1; move d e", winfsp,
     "a directory with an open file in it stays", looks_away},
    {"dir d; file e\\f; hold e\\f rw rw; move d e r =5", winfsp,
     "and nothing goes onto one, for whatever reason"},
    {"file f; hold f r rw; move f g =32", fstest, "a file that doesn't share deletion stays"},
    {"dir d; hold d l rw b; move d e =32", fstest, "and so does a directory"},
    {"file f; hold f r rwd; move f g", fstest, "one that does is moved"},
    {"file f; dir d; hold d l r b; move f d\\f =32; close 1; move f d\\f", fstest_links,
     "a directory that is open and shares no writing takes no names", no_sharing},
    {"file f; dir d; hold d l rw b; move f d\\f", fstest,
     "one that shares reading and writing does"},
    {"file f; dir d; hold d r w b; hard d\\f f", fstest_links, "or writing alone"},
    {"file f; dir d; hold d r 0 b; hard d\\f f =32", fstest_links, "hard links go by the same rule",
     no_sharing},
    {"file f; dir d; hold d r rw b; hard d\\f f; names d -> f", fstest_links, "both ways"},

    // where nothing can go
    {"move missing g =2", dotnet, "not there"},
    {"move missing\\f g =3", dotnet, "nor its directory"},
    {"file f; move f missing\\g =3; attributes f -> A", dotnet, "no directory to go to"},
    {"file f; hard missing\\g f =3", fstest_links, "a hard link neither"},
    {"file f; file a; move f a\\g =87", fstest, "below a file", other_code},
    {"file f; file a; move f a\\b\\g =3", fstest, "deeper, there is no directory"},
    {"file f; file a; hard a\\g f =87", fstest_links, "nor can it be linked there", other_code},
    {"file f; move f gg: =123", fstest, "a colon at the end", "takes the colon into the name"},
    {"file f; move f g< =123", fstest, "less"},
    {"file f; move f g> =123", fstest, "greater"},
    {"file f; move f g\" =123", fstest, "a quote"},
    {"file f; move f g| =123", fstest, "a bar"},
    {"file f; move f g? =123", fstest, "a question mark"},
    {"file f; move f g* =123", fstest, "an asterisk"},
    {"file f; move ?@\\f ?@\\g/h =123", fstest, "a slash"},
    {"file f; hard gg: f =123", fstest_links, "nor is a link named so",
     "takes the colon into the name"},
    {"file f; hard g< f =123", fstest_links, "less"},
    {"file f; hard g> f =123", fstest_links, "greater"},
    {"file f; hard g\" f =123", fstest_links, "a quote"},
    {"file f; hard g| f =123", fstest_links, "a bar"},
    {"file f; hard g? f =123", fstest_links, "a question mark"},
    {"file f; hard g* f =123", fstest_links, "an asterisk"},
    {"file f; move f * =123", dotnet, "an asterisk alone"},
    {"move * g =123", "WinFsp, winfsp-tests/create-test.c, create_test",
     "a wildcard is no name of a file that is there"},
    {"file f; move f ?@\\{g*255}", fstest, "255 units are a name"},
    {"file f; move f ?@\\{g*256} =123", fstest, "one more are none", other_code},

    // hard links
    {"file f; hard g f; links f -> 2; links g -> 2; same f g -> yes", fstest_links,
     "two names of one file"},
    {"file f; hard g f; hard h g; links f -> 3; links g -> 3; links h -> 3",
     "Microsoft STL, tests/std P0218R1_filesystem, test_hard_link_count", "or three"},
    {"dir d; hard e d =5", fstest_links, "no directory has two"},
    {"file f; file g; hard g f =183", fstest_links, "nothing is replaced"},
    {"file f; hard f f =183", fstest_links, "nor by itself"},
    {"file f; dir d; hard d f =183", fstest_links, "nor is a directory"},
    {"file f; hard g f; move f g =183; links f -> 2", fstest, "another name of it is there",
     one_file},
    {"file f x; hard g f; move f g r; attributes f =2; content g -> x; links g -> 1",
     file_system_algorithms, "is replaced, and the file stays", one_file},
    {"file f x; hard g f; move g f r; attributes g =2; content f -> x", file_system_algorithms,
     "either way", one_file},
};

TEST(Facts, Renaming)
{
    check(rows);
}

} // namespace

} // namespace contract::facts
