#include "platform/facts/facts.hpp"

namespace contract::facts {

namespace {

constexpr char winfstest_dispositions[] = "winfstest, t/base/00_CreateFile_Dispositions";
constexpr char winfstest_attributes[] = "winfstest, t/base/01_CreateFile_Attributes";
constexpr char winfstest_directories[] = "winfstest, t/base/02_CreateRemoveDirectory";
constexpr char winfstest_deletion[] = "winfstest, t/base/08_CreateFile_Delete";
constexpr char winfsp[] = "WinFsp, winfsp-tests/info-test.c, delete_test and its kin";
constexpr char winfsp_create[] = "WinFsp, winfsp-tests/create-test.c, create_test";
constexpr char fstest[] = "fstest (NTFS), delete.cpp";
constexpr char fstest_links[] = "fstest (NTFS), links.cpp";
constexpr char dotnet_file[] = ".NET runtime, System.IO.FileSystem.Tests/File/Delete.cs";
constexpr char dotnet_directory[] = ".NET runtime, System.IO.FileSystem.Tests/Directory/Delete.cs";
constexpr char corefx[] = ".NET corefx, pull request 38186";
constexpr char driver[] = "WinFsp, src/sys/fileinfo.c, on what recent Windows 10 asks of a disk";

constexpr char shows_doomed[] = "shows a file that waits for its deletion as before";
constexpr char host_removes[] = "its host removes read-only directories";
constexpr char lists_no_doomed[] = "counts no files that wait for their deletion";
constexpr char deletes_anyway[] = "deletes at once whatever the other handle says";
constexpr char no_flags[] = "knows no flags of dispositions";
constexpr char no_pending[] = "doesn't tell that a file waits for its deletion";

constexpr fact rows[] = {
    // names that are there and names that are not
    {"file f; delete f; delete f =2", winfstest_dispositions, "a second time it isn't there"},
    {"file d\\f; rmdir d =145; delete d\\f; delete d\\f =2; rmdir d; rmdir d =2", winfsp,
     "a directory goes once it is empty"},
    {"file f; rmdir f =267", winfstest_directories, "a file is no directory"},
    {"dir d; delete d =5", winfstest_directories, "a directory is no file"},
    {"dir d; rmdir d; rmdir d =2", winfstest_directories, "nor is it there a second time"},
    {"file d\\foo; rmdir d\\foo =267", "winfstest, t/base/03_FindFiles",
     "a file in a directory is none either"},
    {"delete missing\\f =3", dotnet_file, "no directory to delete it from"},
    {"delete missing =2", dotnet_file, "deleting what isn't there is told as that"},
    {"delete . =5", dotnet_file, "the current directory is no file"},
    {"dir d; delete d =5; attributes d -> D", dotnet_file, "and stays"},
    {"file f x; attributes f; setattr f H; delete f; attributes f =2", dotnet_file,
     "hidden files are deleted"},
    {"dir d; setattr d H; rmdir d; attributes d =2", dotnet_directory,
     "and so are hidden directories"},
    {"dir d; setattr d H; rmdir ?@\\d; attributes d =2", dotnet_directory,
     "with a long prefix, too"},
    {"rmdir missing\\d =3", dotnet_directory, "no directory to remove it from"},
    {"rmdir missing\\ =2", dotnet_directory, "a missing one with a separator behind it"},
    {"dir d; rmdir d\\; attributes d =2", dotnet_directory, "a separator behind it is fine"},
    {"dir d\\sub; rmdir d =145; attributes d -> D", dotnet_directory, "nor may it hold another"},
    {"dir d\\sub; rmdir ?@\\d =145", dotnet_directory, "with a long prefix, too"},
    {"rmdir @ =32", dotnet_directory, "the current directory is in use"},
    {"dir d; cd d; rmdir @\\d =32", dotnet_directory, "by whatever pathname"},
    {"dir ?#400; rmdir ?#400; attributes ?#400 =2", dotnet_directory, "beyond 259 units"},

    // names that only a long prefix reaches
    {"file f~; delete ?@\\f~; names _ ->", dotnet_file, "a blank at the end"},
    {"file f.; delete ?@\\f.; names _ ->", dotnet_file, "a full stop at the end"},
    {"file f; file f.; delete ?@\\f.; names _ -> f", dotnet_file, "and only that"},
    {"file ~~~; delete ?@\\~~~; names _ ->", dotnet_file, "blanks only"},
    {"file ...; delete ?@\\...; names _ ->", dotnet_file, "full stops only"},
    {"file ~f; delete ~f; names _ ->", dotnet_file, "a blank ahead is like any other unit"},

    // what is read-only
    {"file f; setattr f R; delete f =5; setattr f N; delete f", winfsp, "read-only stays"},
    {"file f; setattr f R; open f w 0 existing c =5; delete f =5", winfstest_attributes,
     "nor does it go with a handle"},
    {"file f; setattr f R; open f d 0 existing c =5", fstest, "whatever the access"},
    {"file f; setattr f R; hold f d 0; mark 1 =5", fstest, "nor by its disposition"},
    {"dir d; setattr d R; rmdir d =5; setattr d N; rmdir d", winfstest_directories,
     "a read-only directory stays, too", host_removes},
    {"dir d; setattr d DR; attributes d -> RD; open d\\f rw rw new; delete d\\f; rmdir d =5",
     "WinFsp, winfsp-tests/create-test.c, create_readonlydir_test",
     "files come and go in it all the same", host_removes},
    {"dir d; setattr d R; rmdir ?@\\d =5", dotnet_directory, "with a long prefix, too",
     host_removes},
    {"file f; setattr f R; hold f rwd rwd =5", fstest, "nobody writes to it", nullptr, on::no_host},

    // what is open
    {"file f; hold f rw r; delete f =32", dotnet_file, "open without sharing deletion"},
    {"file f; hold f r r; delete f =32; close 1; delete f", dotnet_file, "until that is closed"},
    {"file d\\f; hold d\\f rw r; rmdir d =145", dotnet_directory,
     "a directory with an open file is one with a file"},
    {"file f; hold f 0 0; delete f; close 1; attributes f =2", fstest,
     "who asks for no access is in nobody's way"},
    {"file f; hold f a 0; delete f; attributes f =2", fstest, "nor who looks at attributes",
     nullptr, on::names_freed},
    {"file f; hold f r rwd; delete f; open f r rwd existing =5", winfstest_deletion,
     "a file that waits for its deletion can't be opened", shows_doomed, on::names_kept},
    {"file d\\f; hold d\\f r rwd; delete d\\f; find d\\* -> .|..|f; close 1; find d\\* -> .|..",
     winfstest_deletion, "but it is still seen", nullptr, on::names_kept},
    {"file d\\f; hold d\\f r rwd; delete d\\f; rmdir d =145; close 1; rmdir d", winfstest_deletion,
     "and keeps its directory", nullptr, on::names_kept},
    {"file d\\f; hold d\\f r rwd; delete d\\f; find d\\* -> .|..", corefx,
     "since version 1903 the name is free at once", nullptr, on::names_freed},
    {"file d\\f; hold d\\f r rwd; delete d\\f; rmdir d", corefx, "and its directory can go",
     nullptr, on::names_freed},
    {"file f old; hold f r rwd; delete f; open f rw 0 new; attributes f -> A; read 1 -> old",
     corefx, "a new file takes the name beside the old one", nullptr, on::names_freed},
    {"file f; hold f r rwd; delete f; open f r rwd existing =2", corefx, "which is gone", nullptr,
     on::names_freed},
    {"file f; hold f r rwd; delete f; delete f =2", corefx, "for a second deletion, too", nullptr,
     on::names_freed},
    {"dir d; hold d l rwd b; rmdir d; attributes d =2", driver, "and so are directories'", nullptr,
     on::names_freed},
    {"dir d; hold d l rwd b; rmdir d; attributes d =5; close 1; attributes d =2",
     winfstest_deletion, "which waited before", shows_doomed, on::names_kept},
    {"dir d; hold d l rw b; rmdir d =32", dotnet_directory,
     "a directory that is listed without sharing deletion"},

    // dispositions
    {"file f; hold f d d; mark 1; open f a 0 existing =5; close 1; delete f =2", winfsp,
     "who marks a file keeps all others out", shows_doomed},
    {"file f; hold f d 0; pending 1 -> no,1; mark 1; pending 1 -> yes,0", fstest,
     "it waits, and has one name less", no_pending},
    {"dir d; hold d d 0 b; pending 1 -> no,1; mark 1; pending 1 -> yes,0; close 1; attributes d =2",
     fstest, "so does a directory", no_pending},
    {"file f; hold f d 0; mark 1; find f -> f; close 1; find f =2", fstest,
     "its name goes with the last handle"},
    {"file d\\f; hold d d 0 b; hold d\\f d 0; mark 1 =145; mark 2; mark 1 =145; close 2; mark 1",
     fstest, "a directory isn't empty while a file in it waits", lists_no_doomed},
    {"file f; hold f d d; mark 1; open f d d existing =5; unmark 1; open f d d existing", fstest,
     "the mark can be taken back", shows_doomed},
    {"file f; hold f d d; mark 1; unmark 1; pending 1 -> no,1; close 1; attributes f -> A", fstest,
     "and then the file stays"},
    {"file f; hold f d d; hold f d d; mark 1; close 1; find f -> f; close 2; find f =2", fstest,
     "a file stays until the second handle is closed"},
    {"file f; hold f d d; hold f d d; mark 1; unmark 2; pending 1 -> no,1", fstest,
     "any handle that may delete takes the mark back"},
    {"file f; hold f r 0; mark 1 =5", fstest, "a mark needs the right to delete"},
    {"file f; hold f r 0; unmark 1 =5", fstest, "and so does taking it back"},
    {"file f; setattr f R; hold f d rwd; mark-flags 1 d =5; mark-flags 1 di; close 1; find f =2",
     fstest, "unless a flag says to pass over read-only", no_flags},
    {"file f; hold f rw rwd; setattr f R; hold f d rwd; mark-flags 2 dp =5", winfsp,
     "as POSIX has it, read-only is looked at, too", no_flags},
    {"file f; hold f rw rwd; setattr f R; hold f d rwd; mark-flags 2 dpi; find f -> f; "
     "open f 0 0 existing =5; close 2; find f =2; open f 0 0 existing =2",
     winfsp, "the name is free as soon as that handle is closed", no_flags},
    {"file f; hold f d rwd; hold f d rwd; mark-flags 2 dp; close 2; mark-flags 1 0 =5", winfsp,
     "and then it is too late to take it back", no_flags},
    {"file f; hold f d rwd; hold f d rwd; mark-flags 2 dp; close 2; mark-flags 1 d =5", winfsp,
     "or to mark it again", no_flags},
    {"file f; hold f d rwd; hold f d rwd; mark-flags 2 dp; close 2; unmark 1 =5",
     "fstest (NTFS), rename.cpp", "in the older way, too", no_flags},
    {"file f; hold f rw rwd; hold f d rwd; mark-flags 2 dp; mark-flags 2 0; close 2; find f -> f",
     winfsp, "before that it can be", no_flags},
    {"file f; hold f d d; hold f d d; pending 1 -> no,1; mark-flags 1 dp; pending 1 -> yes,0; "
     "close 1; pending 2 -> yes,0; find f =2",
     fstest, "what has no name left has no names", no_flags},
    {"file f; hold f rwd rwd; hold f d rwd; mark-flags 2 dp; close 2; write 1 hello; close 1; "
     "find f =2",
     "fstest (NTFS), rename.cpp", "and is written to all the same", no_flags},
    {"file f; hold f d 0; mark-flags 1 dc =50", fstest,
     "a handle can't be made one that deletes when it is closed", no_flags},
    {"hold f d 0 new c; mark-flags 1 c; close 1; find f -> f", fstest, "but it can cease to be one",
     no_flags},
    {"hold f d 0 new c; mark-flags 1 dc; close 1; find f =2", fstest, "or go on", no_flags},
    {"file f; hold f d rwd; mark-flags 1 d; open f d d existing =5; mark-flags 1 0; "
     "open f d rwd existing",
     fstest, "the flags mark and unmark like the older way", no_flags},

    // handles that delete when they are closed
    {"open f w 0 always c; delete f =2", winfstest_attributes, "nothing is left"},
    {"file f; open f rw rw existing c; open f rw rw existing c =2", winfsp_create,
     "a file goes with the handle"},
    {"file d\\f; open d rw rw existing bc; attributes d -> D", winfsp_create,
     "a directory with something in it stays, quietly"},
    {"dir d; open d rw rw existing bc; open d rw rw existing bc =2", winfsp_create,
     "an empty one goes"},
    {"open f rw rw new Tc; attributes f =2", winfsp_create, "also what is made for that"},
    {"hold f d 0 new c; pending 1 -> no,1; close 1; find f =2", fstest,
     "until then it doesn't wait"},
    {"hold f d d new c; open f r 0 existing =32", fstest, "who opens it has to share deletion"},
    {"hold f d d new c; hold f d d; pending 2 -> no,1; close 1; pending 2 -> yes,0; close 2; "
     "find f =2",
     fstest, "it waits once the handle is closed and others are there", no_pending},
    {"hold f d d new c; hold f d d; close 1; unmark 2; pending 2 -> no,1; close 2; find f -> f",
     fstest, "and then another can save it", deletes_anyway},
    {"hold f d d new c; hold f d d; close 1; unmark 2; open f r 0 existing =32", fstest,
     "though its handle still wants deletion shared"},
    {"dir d; hold d d 0 bc; close 1; find d =2", fstest, "an empty directory goes, too"},

    // files with several names
    {"file a x; hard b a; delete a; content b -> x; links b -> 1", fstest_links,
     "the other name stays"},
    {"file a; hard b a; hold a d rwd; hold b a rwd; mark 1; pending 1 -> yes,1; pending 2 -> no,1",
     fstest_links, "a name that waits counts no more, by whatever name one asks", no_pending},
    {"file a; hard b a; hold a d rwd; mark 1; close 1; find a =2; find b -> b", fstest_links,
     "and only that name goes"},
    {"hold a d 0 new c; hard b a; pending 1 -> no,2; close 1; find a =2; find b -> b", fstest_links,
     "also with the handle that deletes"},
    {"file a; hard b a; setattr a R; delete b =5", fstest_links, "read-only is the file's"},
};

TEST(Facts, Deletion)
{
    check(rows);
}

} // namespace

} // namespace contract::facts
