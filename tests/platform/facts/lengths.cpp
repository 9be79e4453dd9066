#include "platform/facts/facts.hpp"

namespace contract::facts {

namespace {

constexpr char naming[] = "Microsoft, Maximum Path Length Limitation";
constexpr char dotnet[] = ".NET runtime, System.IO.FileSystem.Tests, PathsLongerThanMaxPath";
constexpr char boost[] = "Boost.Filesystem, test/long_path_test.cpp and operations_test.cpp";
constexpr char stl[] =
    "Microsoft STL, tests/std P0218R1_filesystem, test_create_dirs_and_remove_all";
constexpr char winterop[] = "WInterop, FileManagementTests, FinalPathNameLongPath";
constexpr char rust[] = "rust-lang/rust, library/std/src/sys/path/windows.rs, LEGACY_MAX_PATH";
constexpr char documentation[] = "Microsoft, CreateDirectoryW";

constexpr on without = on::short_pathnames;
constexpr on with = on::long_pathnames;

constexpr fact rows[] = {
    // 259 units without a prefix
    {"file #259; attributes #259 -> A", naming, "the longest pathname without a prefix"},
    {"file #258; attributes #258 -> A", naming, "one unit less"},
    {"file #260; attributes #260 =3", naming, "one more is too long", nullptr, without},
    {"file #260; attributes ?#260 -> A", naming, "but not with a prefix"},
    {"file #259; open #259 r rwd existing", naming, "opening"},
    {"file #260; open #260 r rwd existing =3", naming, "and its limit", nullptr, without},
    {"open #259 w 0 new; attributes #259 -> A", naming, "making"},
    {"open #260 w 0 new =3", naming, "and its limit", nullptr, without},
    {"open ?#260 w 0 new; attributes ?#260 -> A", dotnet, "with a prefix"},
    {"file #260; delete #260 =3; attributes ?#260 -> A", naming, "deleting", nullptr, without},
    {"file #260; delete ?#260; attributes ?#260 =2", dotnet, "with a prefix"},
    {"dir #260; rmdir #260 =3; attributes ?#260 -> D", naming, "removing", nullptr, without},
    {"dir #260; rmdir ?#260; attributes ?#260 =2", dotnet, "with a prefix"},
    {"file #260; setattr #260 H =3", naming, "setting attributes", nullptr, without},
    {"file #260; setattr ?#260 H; attributes ?#260 -> H", dotnet, "with a prefix",
     "keeps few attributes"},
    {"file #260; find #260 =3", naming, "looking for it", nullptr, without},
    {"file f; move f #259; attributes #259 -> A", naming, "moving to it"},
    {"file f; move f #260 =3; attributes f -> A", naming, "and its limit", nullptr, without},
    {"file f; move f ?#260; attributes ?#260 -> A; attributes f =2", dotnet, "with a prefix"},
    {"file #260; move #260 g =3", naming, "moving from it", nullptr, without},
    {"file #300; move ?#300 g; attributes g -> A", dotnet, "with a prefix"},
    {"file f x; copy f #259; content #259 -> x", naming, "copying to it"},
    {"file f x; copy f #260 =3", naming, "and its limit", nullptr, without},
    {"file f x; copy f ?#260; content ?#260 -> x", dotnet, "with a prefix"},
    {"file #260 x; copy #260 g =3; attributes g =2", naming, "copying from it", nullptr, without},
    {"file #300 x; copy ?#300 g; content g -> x", dotnet, "with a prefix"},
    {"file f; hard #260 f =3", naming, "linking it", nullptr, without},
    {"file f; hard ?#260 f; links f -> 2", dotnet, "with a prefix"},
    {"dir #300; attributes #300 =3", dotnet, "300 units", nullptr, without},
    {"dir #300; attributes ?#300 -> D", dotnet, "with a prefix"},
    {"file #500; final ?#500", winterop, "500 units have a final pathname",
     "has none for long pathnames"},
    {"dir #1000; rmdir ?#1000; attributes ?#1000 =2", stl, "1000 units"},
    {"space #260\\ =3", naming, "nor has it any room", nullptr, without},

    // 247 units for a directory
    {"mkdir #247; attributes #247 -> D", documentation, "the longest directory"},
    {"mkdir #246; attributes #246 -> D", documentation, "one unit less"},
    {"mkdir #248 =206", documentation, "one more keeps no room for a file", nullptr, without},
    {"mkdir #249 =206", rust, "nor do two", nullptr, without},
    {"mkdir #259 =206", rust, "nor what would do for a file", nullptr, without},
    {"mkdir #260 =206", rust, "nor any more", nullptr, without},
    {"mkdir ?#248; attributes #248 -> D", boost, "with a prefix it is made, and seen without"},
    {"mkdir ?#260; attributes ?#260 -> D", boost, "also beyond the other limit"},
    {"dir #248; attributes #248 -> D", rust, "one that is there is found"},
    {"dir #248; mkdir #248 =206", rust, "which isn't looked for", nullptr, without},
    {"dir #250; rmdir #250; attributes #250 =2", rust, "and removed"},
    {"dir #250; open #250 r rwd existing b", rust, "and opened"},
    {"mkdir ?#400; mkdir ?#400 =183; rmdir ?#400", stl, "made and removed with a prefix"},

    // the current directory
    {"dir #257; cd #257; cd @", "Microsoft, SetCurrentDirectoryW", "257 units and a backslash"},
    {"dir #259; cd #259 =206", "Microsoft, SetCurrentDirectoryW", "are the limit", nullptr,
     without},

    // with the opt-in
    {"file #260; attributes #260 -> A", naming, "the opt-in takes the limit away", nullptr, with},
    {"open #300 w 0 new; attributes #300 -> A; delete #300; attributes #300 =2", naming,
     "for making and deleting", nullptr, with},
    {"mkdir #248; attributes #248 -> D", naming, "for directories", nullptr, with},
    {"mkdir #300; rmdir #300; attributes #300 =2", naming, "of any length", nullptr, with},
    {"file f x; copy f #300; move #300 g; content g -> x", naming, "for copies and moves", nullptr,
     with},
    {"file f; hard #300 f; links #300 -> 2", naming, "for links", nullptr, with},
    {"dir #300; cd #300; cd @", naming, "for the current directory", nullptr, with},
    {"file #300; find #300", naming, "and for listing", nullptr, with},
    {"open {n*260} w 0 new =123", naming, "a name stays as long as a disk takes it", nullptr, with},
};

TEST(Facts, Lengths)
{
    check(rows);
}

} // namespace

} // namespace contract::facts
