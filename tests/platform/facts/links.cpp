#include "platform/facts/facts.hpp"

namespace contract::facts {

namespace {

constexpr char winfsp[] = "WinFsp, winfsp-tests/reparse-test.c, reparse_symlink_test";
constexpr char winfsp_relative[] =
    "WinFsp, winfsp-tests/reparse-test.c, reparse_symlink_relative_test";
constexpr char stl_file[] = "Microsoft STL, tests/std P0218R1_filesystem, test_create_symlink";
constexpr char stl_directory[] =
    "Microsoft STL, tests/std P0218R1_filesystem, test_create_directory_symlink";
constexpr char stl_status[] = "Microsoft STL, tests/std P0218R1_filesystem, test_symlink_status";
constexpr char dotnet[] =
    ".NET runtime, System.IO.FileSystem.Tests, DeletingSymLinkDoesntDeleteTarget";
constexpr char go[] = "Go, src/os/os_windows_test.go, testDirLinks";
constexpr char libuv[] = "libuv, test/test-fs.c, fs_symlink, fs_symlink_junction, fs_scandir";
constexpr char boost[] = "Boost.Filesystem, test/operations_test.cpp and issue 99";
constexpr char git[] = "reports to git-for-windows about links of the wrong kind";

constexpr fact rows[] = {
    // links to files
    {"symlink l f file; file f text; content l -> text", stl_file,
     "a link may be there before its target"},
    {"file f text; symlink l f file; same l f -> yes", stl_file, "and is the same file"},
    {"file f; symlink l f file; delete f; open l a rwd existing =2", stl_file,
     "without its target it leads nowhere"},
    {"file f; symlink l f file; delete f; delete l; names _ ->", stl_file, "and can be deleted"},
    {"symlink l missing\\cat.txt file; open l a rwd existing =3", stl_file,
     "into a directory that isn't there"},
    {"create-symlink l missing/cat.txt file; open l a rwd existing =123",
     "Microsoft STL, VSO-649249",
     "a slash in the target is no separator when the link is followed"},
    {"file f x; symlink l f file; delete l; content f -> x", dotnet, "the target stays"},
    {"file f; symlink l f file; attributes l -> AL", stl_status, "the link has its own attributes"},
    {"file f; symlink l f file; open l A rwd existing; delete l; delete f", winfsp,
     "opening one opens its target"},
    {"file f x; symlink l f file; hold l w rwd; write 1 y; close 1; content f -> y", winfsp,
     "and writing to one writes to it"},
    {"file f; symlink l f file; final l -> ?@\\f", winfsp, "which the final pathname tells"},
    {"file f; symlink l f file; final f -> ?@\\f", libuv, "as that of the target"},
    {"file d\\f x; symlink l @\\d\\f file; content l -> x", winfsp, "an absolute target"},
    {"file f x; symlink l f file; hard h l; delete l; attributes h -> AL", stl_status,
     "a hard link of a link is one more link"},
    {"file f x; symlink l f file; copy l g; content g -> x; attributes g -> A", stl_status,
     "a copy is one of the target"},
    {"file f x; symlink l f file; move l m; content m -> x; attributes m -> AL; content f -> x",
     stl_status, "moving one moves the link"},
    {"file f x; file g y; symlink l f file; move g l r; attributes l -> A; content f -> x",
     stl_status, "replacing one replaces the link"},
    {"file f; symlink l f file; setattr l R; attributes l -> RL; attributes f -> A", stl_status,
     "attributes are set of the link"},
    {"file f; symlink l f file; open l r rwd existing o; delete l", stl_status,
     "it can be opened itself"},
    {"file f x; symlink l f file; hold l r rwd; delete l; delete f; names _ ->", dotnet,
     "who reads through a link holds the target only", nullptr, on::names_freed},
    {"file f x; symlink l f file; open l rw rwd always; content f ->", winfsp,
     "cutting through one cuts the target"},
    {"symlink l f file; open l rw rwd new; attributes f -> A", winfsp,
     "making a file through a link makes the target"},
    {"symlink l f file; create-symlink l g file =183", stl_file, "the name is taken"},

    // chains and circles
    {"symlink loop loop file; open loop a rwd existing =1921", winfsp_relative, "a link to itself"},
    {"symlink loop loop file; attributes loop -> AL", libuv, "can be looked at"},
    {"symlink loop loop file; delete loop", winfsp_relative, "and deleted"},
    {"symlink a b file; symlink b a file; open a r rwd existing =1921", libuv, "two in a circle"},
    {"symlink a b dir; symlink b a dir; open a\\x r rwd existing =1921", libuv,
     "and what is behind them"},
    {"symlink l0 NON-EXISTANT file; open l0 a rwd existing b =2", winfsp_relative,
     "a target that isn't there"},
    {"file 1\\1.1\\1.1.1 x; symlink 1\\1.1\\l 1.1.1 file; content 1\\1.1\\l -> x", winfsp_relative,
     "a relative target starts where the link is"},
    {"file 1\\1.1\\f x; dir 2; symlink 2\\l1 ..\\1\\. dir; content 2\\l1\\1.1\\f -> x",
     winfsp_relative, "full stops in a target"},
    {"file 1\\1.1\\f x; dir 2; symlink 2\\l1 ..\\1\\. dir; symlink 1\\l2 ..\\.\\2 dir; "
     "content 1\\l2\\l1\\1.1\\f -> x",
     winfsp_relative, "one through another"},
    {"file 1\\f x; dir 2; symlink 2\\a1 @\\1 dir; symlink 1\\a2 @\\2 dir; content 2\\a1\\f -> x; "
     "content 1\\a2\\a1\\f -> x",
     winfsp_relative, "absolute ones"},
    {"file f x; symlink a f file; symlink b a file; symlink c b file; content c -> x; final c -> "
     "?@\\f",
     libuv, "three in a row"},

    // links to directories
    {"symlink l d dir; dir d; same l d -> yes", stl_directory, "a link may be there before"},
    {"dir d; symlink l d dir; rmdir d; rmdir l; names _ ->", stl_directory,
     "it is removed like a directory"},
    {"dir d; symlink l d dir; delete l =5; rmdir l; attributes d -> D", stl_directory,
     "and not like a file"},
    {"symlink l missing\\cat.dir dir; open l a rwd existing b =3", stl_directory,
     "into a directory that isn't there"},
    {"file d\\abc abc; symlink l @\\d dir; content l\\abc -> abc", go, "what is in it is there"},
    {"file d\\abc abc; symlink l d dir; content l\\abc -> abc", go, "by a relative one"},
    {"dir d; symlink l d dir; attributes l -> DL", go, "it is a directory and a link"},
    {"file d\\f; symlink l d dir; rmdir l; attributes d\\f -> A", dotnet,
     "what is in the target doesn't keep the link"},
    {"file d\\f; symlink l d dir; find l\\* -> .|..|f", libuv, "it is listed as the target"},
    {"file d\\f; symlink l d dir; find l -> l", libuv, "and found by its own name"},
    {"file d\\f; symlink l d dir; delete l\\f; attributes d\\f =2", dotnet,
     "deleting in it deletes in the target"},
    {"dir d; symlink l d dir; mkdir l\\e; names d -> e", stl_directory, "and so with making"},
    {"dir d; symlink l d dir; mkdir l =183", stl_directory, "its name is taken"},
    {"dir d; symlink l d dir; cd l; cd @; rmdir l", boost, "one can stand in it"},
    {"dir d; symlink l d dir; move l m; attributes m -> DL; attributes d -> D", stl_directory,
     "moving one moves the link"},
    {"symlink l d dir; mkdir l =183; names _ -> l", stl_directory,
     "a directory isn't made where a link to nowhere is"},
    {"symlink l d dir; open l\\f rw rwd new =3", stl_directory, "nor anything in it"},

    {"file d\\f x; symlink l ^\\d dir; content l\\f -> x",
     "Go, src/os/os_windows_test.go, TestRootRelativeDirSymlink", "a target from the drive's root"},
    {"file dir\\sub\\f x; create-symlink l C:dir\\sub dir; dir e; cd e; content @\\l\\f -> x; cd @",
     "Go, src/os/os_windows_test.go, TestWorkingDirectoryRelativeSymlink",
     "one from the drive's directory, made full when the link is made"},

    // the wrong kind
    {"dir d; symlink l d file; open l r rwd existing =5", git, "a file's link to a directory"},
    {"dir d; symlink l d file; open l a rwd existing b =5", winfsp_relative,
     "also with the flag for directories", nullptr, on::devices_alone},
    {"file f; symlink l f dir; open l a rwd existing b =267", winfsp_relative,
     "a directory's link to a file", nullptr, on::devices_alone},
    {"dir d; symlink l d file; open l a rwd existing b", winfsp_relative,
     "which Windows 10 didn't mind", nullptr, on::devices_anywhere},
    {"file f; symlink l f dir; open l a rwd existing b", winfsp_relative, "nor in the other",
     nullptr, on::devices_anywhere},
    {"file d\\f; symlink l d file; find l\\* =267", libuv, "which isn't listed"},
    {"dir d; symlink l d file; rmdir l =267; delete l; attributes d -> D", git,
     "it is deleted like a file"},
    {"file f; symlink l f dir; delete l =5; rmdir l; attributes f -> A", git,
     "and the other is removed like a directory"},
    {"dir d; symlink l d file; attributes l -> AL", git, "what it is the link itself tells"},
    {"file f; symlink l f dir; attributes l -> DL", git, "either"},

    // junctions
    {"file d\\abc abc; junction j @\\d; content j\\abc -> abc", go, "what is in it is there"},
    {"dir d; junction j @\\d; same j d -> yes", go, "it is the same directory"},
    {"dir d; junction j @\\d; attributes j -> DL", go, "and a link"},
    {"file d\\f; junction j @\\d; rmdir j; attributes d\\f -> A", libuv,
     "removing one leaves that"},
    {"dir d; junction j @\\d; delete j =5", libuv, "it is no file"},
    {"file d\\f; junction j @\\d; final j\\f -> ?@\\d\\f", boost,
     "the final pathname goes through it"},
    {"dir d; junction j @\\d; final j -> ?@\\d", libuv, "also its own"},
    {"dir d; junction j @\\d; rmdir d; open j a rwd existing b =2", libuv,
     "without its target it leads nowhere"},
    {"dir d; junction j @\\d; rmdir d; attributes j -> DL; rmdir j", libuv,
     "is still there, and can go"},
    {"file d\\f x; junction j @\\d; junction k @\\j; content k\\f -> x", libuv,
     "one through another"},
    {"junction j @\\j; open j\\x r rwd existing =1921", libuv, "or to itself"},
    {"file d\\f; junction j @\\d; find j\\* -> .|..|f", libuv, "it is listed as the target"},
    {"dir d; file e\\f; junction d\\j @\\e; rmdir d =145; rmdir d\\j; rmdir d; attributes e\\f -> "
     "A",
     "WIL, tests/FileSystemTests.cpp, VerifyRemoveDirectoryRecursive*",
     "one keeps the directory that it is in"},
};

TEST(Facts, Links)
{
    check(rows);
}

} // namespace

} // namespace contract::facts
