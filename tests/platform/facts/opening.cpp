#include "platform/facts/facts.hpp"

namespace contract::facts {

namespace {

constexpr char dispositions[] = "winfstest, t/base/00_CreateFile_Dispositions";
constexpr char attributes[] = "winfstest, t/base/01_CreateFile_Attributes";
constexpr char truncation[] = "winfstest, t/base/05_CreateFile_Truncation";
constexpr char set_attributes[] = "winfstest, t/base/07_SetGetFileAttributes";
constexpr char directories[] = "winfstest, t/base/02_CreateRemoveDirectory";
constexpr char streams[] = "winfstest, t/streams/01_Create_Delete_DirectoryStreams";
constexpr char winfsp[] = "WinFsp, winfsp-tests/create-test.c, create_test";
constexpr char winfsp_attributes[] = "WinFsp, winfsp-tests/create-test.c, create_fileattr_test";
constexpr char winfsp_lengths[] = "WinFsp, winfsp-tests/create-test.c, create_namelen_test";
constexpr char winfsp_listing[] = "WinFsp, winfsp-tests/dirctl-test.c, querydir_test";
constexpr char wine[] =
    "Wine, dlls/kernel32/tests/file.c, test_CreateFileA and W, also run on Windows";
constexpr char python[] = "CPython, Lib/test/test_tempfile.py, collisions with a directory";
constexpr char libuv[] = "libuv, test/test-fs.c, fs_invalid_mkdir_name, and pull request 2375";
constexpr char winterop[] = "WInterop, FileManagementBehaviors";
constexpr char winterop_directories[] = "WInterop, DirectoryManagementTests";
constexpr char stl[] = "Microsoft STL, tests/std P0218R1_filesystem";
constexpr char boost[] = "Boost.Filesystem, test/operations_test.cpp";

constexpr char keeps_few[] = "keeps few attributes";
constexpr char overwrites[] = "replaces hidden files and files of the system";
constexpr char other_code[] = "has another code";
constexpr char makes_streams[] = "knows no streams and takes the colon into the name";

constexpr fact rows[] = {
    // dispositions
    {"open f w 0 new; open f w 0 new =80", dispositions, "a new file is one that wasn't there"},
    {"open f w 0 always; open f w 0 always; attributes f -> A", dispositions, "made anew"},
    {"open f w 0 open; open f w 0 open; attributes f -> A", dispositions, "opened or made"},
    {"open f w 0 existing =2", dispositions, "not there"},
    {"open f w 0 truncate =2", dispositions, "nor to be cut"},
    {"file f text; open f w 0 existing; content f -> text", dispositions, "opened as it is"},
    {"file f text; open f w 0 truncate; content f ->", truncation, "or cut"},
    {"file f text; open f w 0 always; content f ->", truncation, "or made anew"},
    {"file f text; open f w 0 open; content f -> text", truncation, "or opened if it is there"},
    {"file f text; open f r 0 truncate =87; content f -> text", truncation,
     "cutting needs the right to write", "cuts"},
    {"file f; open f\\bar w 0 new =3", dispositions, "below a file"},
    {"file f; open f\\bar w 0 existing =3", dispositions, "nor is anything there"},
    {"file file0; open file0 rw rw new =80", winfsp, "it is there"},
    {"file file0; open FILE0 rw rw new =80", winfsp, "in whatever case"},
    {"open _ r 0 new =3", wine, "no text"},
    {"open \\\\.\\BOGUS 0 rw existing =2", wine, "no such device"},
    {"open C:\\*.* r r existing =123", wine, "wildcards are in no name"},
    {"open f r 0 new; open f r 0 new =80", wine, "reading what is new"},
    {"open a rw rw existing =2", wine, "a file that isn't there"},
    {"open a\\ rw rw existing =2", wine, "nor a directory"},
    {"open file0* rw rw new =123", winfsp, "no file has such a name"},
    {"open file0\\ rw rw new =123", winfsp, "nor one with a backslash behind it"},
    {"open ?@\\file0\\ rw rw new =123", winfsp, "with a long prefix neither"},
    {"open missing:foo\\file rw rw new =123", winfsp, "a stream is the last of a pathname",
     other_code},

    // directories opened as files
    {"dir d; open d rw rw existing =5", wine, "a directory without the flag"},
    {"dir d; open d\\ rw rw existing =3", wine, "with a backslash behind it", other_code},
    {"open C:\\ rw rw existing =3", wine, "and so a root", other_code},
    {"open ?@\\ rw rw existing =3", wine, "with a long prefix, too", other_code},
    {"open @ rw rw existing b", wine, "with the flag"},
    {"open C:\\ r rwd existing b", wine, "also a root"},
    {"open C: r rwd existing b", winterop, "the current directory of a drive"},
    {"open C:\\. 0 rw existing b", winterop, "a root with a full stop"},
    {"open \\\\.\\C:\\ 0 rw existing b", winterop, "as a device"},
    {"open \\\\?\\C:\\ 0 rw existing b", winterop, "with a long prefix"},
    {"open \\\\.\\C: 0 rw existing b", winterop, "without its backslash it is the volume", nullptr,
     on::no_host},
    {"open \\\\?\\C: 0 rw existing b", winterop, "with the other prefix, too", nullptr,
     on::no_host},
    {"open \\\\?\\C: a rwd existing b; final \\\\?\\C: =1",
     "WIL, tests/FileSystemTests.cpp, VerifyGetFinalPathNameByHandle",
     "which has no final pathname", nullptr, on::no_host},
    {"dir d; open d rw 0 open b", wine, "opened if it is there"},
    {"dir d; open d rw rw new =5", python, "a directory is told as that, not as being there",
     other_code},
    {"dir d; open d w 0 new =5", python, "whatever the access", other_code},
    {"dir d; open d rw rw new b =80", winfsp, "with the flag it is there"},
    {"dir d; open d rw rw always =5", wine, "nor is one made anew"},
    {"dir d; open d r 0 truncate =87", truncation, "or cut without the right", other_code},
    {"open ?@\\missing/ 0 rw existing b =123", winterop,
     "a slash behind a long prefix is no separator"},

    // attributes of new files
    {"open f w 0 always N; attributes f -> A", attributes, "a new file is to be archived"},
    {"open f w 0 always R; attributes f -> RA", attributes, "read-only"},
    {"open f w 0 always S; attributes f -> SA", attributes, "of the system"},
    {"open f w 0 always H; attributes f -> HA", attributes, "hidden"},
    {"open f rw rw new R; attributes f -> RA", winfsp_attributes, "new and read-only"},
    {"open f rw rw new S; attributes f -> SA", winfsp_attributes, "new and the system's"},
    {"open f rw rw new H; attributes f -> HA", winfsp_attributes, "new and hidden"},
    {"open f rw rw new; open f rw rw always R; attributes f -> RA", winfsp_attributes,
     "made anew, it gets new ones", keeps_few},
    {"open f rw rw new; open f rw rw always S; attributes f -> SA", winfsp_attributes,
     "also the system's", keeps_few},
    {"open f rw rw new; open f rw rw always H; attributes f -> HA", winfsp_attributes, "or hidden",
     keeps_few},
    {"open f w 0 always H; open f w 0 always =5; open f w 0 existing", attributes,
     "a hidden file is made anew by who knows that", overwrites},
    {"open f w 0 always S; open f w 0 always =5; open f w 0 existing", attributes,
     "and so one of the system", overwrites},
    {"open f w 0 always H; open f w 0 always H; attributes f -> HA", attributes, "who says so may"},
    {"open f w 0 always S; open f w 0 always S; attributes f -> SA", attributes, "either"},
    {"file f; setattr f R; open f w rwd always =5", attributes, "nobody cuts what is read-only",
     "its host lets its administrator write to any file"},
    {"file f; setattr f R; open f r rwd existing", attributes, "reading it is fine"},
    {"file f; setattr f R; hold f w rwd =5", attributes, "writing isn't",
     "its host lets its administrator write to any file"},
    {"hold f w rwd new R; write 1 text; close 1; content f -> text", attributes,
     "except by who made it so"},

    // attributes
    {"file f; setattr f R; attributes f -> R", set_attributes, "exactly what was set", keeps_few},
    {"file f; setattr f S; attributes f -> S", set_attributes, "the system's", keeps_few},
    {"file f; setattr f H; attributes f -> H", set_attributes, "hidden", keeps_few},
    {"file f; setattr f A; attributes f -> A", set_attributes, "to be archived"},
    {"file f; setattr f N; attributes f -> N", winfsp_attributes, "none", keeps_few},
    {"dir d; setattr d R; attributes d -> RD", directories, "a read-only directory", keeps_few},
    {"dir d; setattr d S; attributes d -> SD", directories, "one of the system"},
    {"dir d; setattr d H; attributes d -> HD", directories, "a hidden one"},
    {"dir d; setattr d N; attributes d -> D", directories, "and a plain one"},
    {"dir d; attributes d -> D", directories, "as it is when it is made"},
    {"attributes missing =2; attributes missing\\a =3", winterop, "what isn't there has none"},
    {"setattr missing N =2", winterop, "nor can they be set"},
    {"setattr missing\\a N =3", winterop, "nor anywhere below"},
    {"attributes ?#300\\x\\y =3", "WInterop, FileManagementTests, GetFileAttributesLongPath",
     "a long pathname below what isn't there"},

    // making directories
    {"file f; mkdir f =183; rmdir f =267", directories, "a file has the name"},
    {"mkdir d; mkdir d =183; attributes d -> D", directories, "a directory has it"},
    {"mkdir d\\bar =3", directories, "no directory to make it in"},
    {"mkdir d; open d rwd rwd existing b; rmdir d; open d a rwd existing b =2",
     winterop_directories, "made and removed"},
    {"file f example; mkdir f =183; content f -> example", stl, "the file stays"},
    {"mkdir dir1\\; attributes dir1 -> D", winfsp, "a backslash behind it is fine"},
    {"mkdir ?@\\dir1\\\\ =123", winfsp, "two are not, before anything is looked for"},
    {"dir dir1; mkdir ?@\\dir1\\\\ =123", winfsp, "whatever is there"},
    {"mkdir invalid> =123", libuv, "a name that no disk takes"},
    {"mkdir test:lol =267", libuv, "a stream, which is no directory", makes_streams},
    {"mkdir name:foo =267", streams, "of a file that isn't there", makes_streams},
    {"file name; mkdir name:foo =267", streams, "or is", makes_streams},
    {"dir name; mkdir name:foo =267", streams, "or of a directory", makes_streams},
    {"dir name; rmdir name:foo =267; rmdir name", streams, "nor is one removed", other_code},
    {"rmdir name:foo =267", streams, "also of what isn't there", other_code},
    {"mkdir _ =3", boost, "no text"},
    {"mkdir ~ =3", boost, "a blank"},
    {"mkdir . =183", boost, "the current directory"},
    {"dir d; cd d; mkdir .. =183; cd ..", boost, "the one above"},
    {"mkdir / =5", boost, "the root", "has another code"},
    {"mkdir a/b =3; mkdir a; mkdir a/b; names a -> b", stl, "one after the other"},
    {"cd missing =2", winterop_directories, "no directory to go to"},
    {"dir d; cd d; cd @; rmdir d", winterop_directories, "there and back"},

    // lengths of names
    {"open ?@\\{n*254} rw rw new; names _ -> {n*254}", winfsp_lengths,
     "a unit less than the limit"},
    {"open ?@\\{n*255} rw rw new; names _ -> {n*255}", winfsp_lengths, "the longest name"},
    {"open ?@\\{n*256} rw rw new =123", winfsp_lengths, "one unit more", other_code},
    {"mkdir ?@\\{n*255}", winfsp_lengths, "of a directory, too"},
    {"mkdir ?@\\{n*256} =123", winfsp_lengths, "and its limit", other_code},
    {"open ?@\\{n*255} r r existing =2", winfsp_lengths, "not there, as a name that could be"},
    {"open ?@\\{n*256} r r existing =123", winfsp_lengths, "and as one that couldn't", other_code},
    {"attributes ?@\\{n*256} =123", winfsp_lengths, "whoever asks", other_code},
    {"delete ?@\\{n*256} =123", winfsp_lengths, "also to delete it", other_code},
    {"file ?#200; find ?@\\{n*255} =2", "WinFsp, winfsp-tests/dirctl-test.c, querydir_namelen_test",
     "looked for by name"},
    {"file {n*255}; find ?@\\{n*255} -> {n*255}",
     "WinFsp, winfsp-tests/dirctl-test.c, querydir_namelen_test", "and found"},

    // listing
    {"file d\\foo; file d\\bar; find d\\* -> .|..|bar|foo", "winfstest, t/base/03_FindFiles",
     "with the two dots"},
    {"dir d; find d\\* -> .|..", "winfstest, t/base/08_CreateFile_Delete",
     "which are all of an empty one"},
    {"find DOES-NOT-EXIST =2", winfsp_listing, "no such name"},
    {"find DOES-NOT-EXIST* =2", winfsp_listing, "nor one that matches"},
    {"dir dir5; find dir5\\file* =2", winfsp_listing, "nothing that matches in it"},
    {"dir dir1; dir dir2; file file1; find dir* -> dir1|dir2", winfsp_listing, "by a beginning"},
    {"file a1; file b1; file b2; find b? -> b1|b2", winfsp_listing, "by a unit"},
    {"file f; find f\\* =267", "libuv, test/test-fs.c, fs_scandir_file", "a file has nothing in it",
     other_code},
    {"find missing\\* =3", "libuv, test/test-fs.c, fs_scandir_non_existent_dir",
     "nor what isn't there"},
    {"find _ =3", stl, "no text"},
};

TEST(Facts, Opening)
{
    check(rows);
}

} // namespace

} // namespace contract::facts
