#include "platform/facts/facts.hpp"

namespace contract::facts {

namespace {

constexpr char winfstest[] = "winfstest, t/base/09_CreateFile_Sharing";
constexpr char winfsp[] = "WinFsp, winfsp-tests/create-test.c, create_share_test";
constexpr char copying[] = "Wine, dlls/kernel32/tests/file.c, test_CopyFile2, also run on Windows";
constexpr char opening[] =
    "Wine, dlls/kernel32/tests/file.c, test_CreateFileA and W, also run on Windows";
constexpr char fstest[] = "fstest (NTFS), rename.cpp and delete.cpp";
constexpr char dotnet[] = ".NET runtime, System.IO.FileSystem.Tests/File/Copy.cs";
constexpr char wil[] = "WIL, tests/FileSystemTests.cpp, VerifyRemoveDirectoryRecursive*";

constexpr char cuts_all[] = "cuts a file whoever reads it";

constexpr fact rows[] = {
    // one writes, sharing reading
    {"hold f w r always; open f r r existing =32", winfstest, "a reader has to share writing"},
    {"hold f w r always; open f r w existing", winfstest, "and then may read"},
    {"hold f w r always; open f d d existing =32", winfstest, "deletion isn't shared"},
    {"hold f w r always; open f d w existing =32", winfstest, "whatever the deleter shares"},
    // one reads, sharing writing
    {"hold f r w always; open f w w existing =32", winfstest, "a writer has to share reading"},
    {"hold f r w always; open f w r existing", winfstest, "and then may write"},
    {"hold f r w always; open f d d existing =32", winfstest, "deletion isn't shared"},
    {"hold f r w always; open f d w existing =32", winfstest, "whatever the deleter shares"},
    // one deletes, sharing deletion
    {"hold f d d always; open f w d existing =32", winfstest, "writing isn't shared"},
    {"hold f d d always; open f d w existing =32", winfstest, "another has to share deletion"},
    {"hold f d d always; open f d d existing", winfstest, "and then may delete"},
    // directories
    {"dir d; hold d r 0 b; open d r 0 existing b =32", winfstest, "directories share, too"},
    {"dir d; hold d r r b; open d r r existing b", winfstest, "if they are told to"},
    {"dir d; hold d r 0 b; open d a 0 existing b", fstest, "who looks only is in nobody's way"},
    {"dir d; hold d l 0 b; find d\\* =32", fstest, "nor can anybody list it then"},
    {"dir d\\e; hold d\\e l rw b; rmdir d\\e =32", wil, "one that is open isn't removed"},
    // files
    {"file f; hold f rw rw; open f rw rw existing", winfsp, "two read and write"},
    {"file f; hold f rw r; open f rw rw existing =32", winfsp, "if the first shares that"},
    {"file f; hold f rw rw; open f rw r existing =32", winfsp, "and the second, too"},
    {"file f; hold f r r; open f r r always =32", winfsp, "cutting a file is writing to it",
     cuts_all},
    {"file f text; hold f r r; open f r r always =32; content f -> text", winfsp,
     "and nothing is cut", cuts_all},
    {"file f text; hold f r rw; open f r rw always; content f ->", winfsp, "unless that is shared"},
    {"file f; hold f r w; open f w w existing =32; open f w r existing", winfsp,
     "one way and the other"},
    {"file f; hold f r w; open f d d existing =32; open f d w existing =32", winfsp,
     "nobody deletes what is read without sharing it"},
    {"file f; hold f d d; open f w d existing =32; open f d w existing =32; open f d d existing",
     winfsp, "one after the other"},
    {"file f; hold f d 0; open f a 0 existing",
     "WinFsp, winfsp-tests/info-test.c, rename_open_test", "attributes are for everybody"},
    {"file f; hold f rw 0; open f 0 0 existing", opening, "and so is no access at all"},
    {"file f; hold f rw 0; attributes f -> A", fstest, "which is how attributes are asked for"},
    {"file f; hold f rw 0; open f r rwd existing =32", opening, "nobody else reads it"},
    {"file f; hold f rw 0; open f w rwd existing =32", opening, "nor writes"},
    {"file f; hold f rw 0; open f rw rwd always =32", opening, "nor makes it anew"},
    {"file f; hold f rw 0; open f rw rwd new =80", opening, "it is there, that is told first"},
    {"file f; hold f A 0; open f rw 0 existing", fstest, "writing attributes is no writing"},
    {"hold f r 0 new; open f r rwd existing =32; close 1; open f r 0 existing", opening,
     "until it is closed"},
    // copies
    {"file a x; file b; hold a r w; copy a b =32", copying, "the source is locked for readers"},
    {"file a x; file b; hold a rw r; copy a b; content b -> x", copying,
     "a source that is written and shares reading"},
    {"file a x; file b; hold a d r; copy a b; content b -> x", copying,
     "a source that is open for deletion and shares reading"},
    {"file a x; file b y; hold b w r; copy a b =32; content b -> y", copying,
     "the target is locked for writers"},
    {"file a x; file b y; hold b rw w; copy a b", copying,
     "a target that is read and written and shares writing"},
    {"file a x; file b y; hold b d rwd; copy a b =32", copying,
     "a target that is open for deletion, whatever it shares"},
    {"file a x; file b y; hold b r rw; copy a b; content b -> x", copying,
     "a target that is read and shares writing"},
    {"file a x; file b y; hold b r r; copy a b =32; read 1 -> y", copying,
     "a target that is read and shares reading only"},
    {"file a; file b; hold a r w; copy missing b =2", copying, "a source that isn't there"},
    {"file a; file b; copy a b new =80", copying, "a target that is there, with the flag"},
    {"file a x; file b longer; copy a b; content b -> x", copying, "the target is cut"},
    {"file a x; copy a b; content b -> x; attributes b -> A", copying, "or made"},
    {"copy missing b =2; attributes b =2", "WInterop, FileManagementBehaviors, CopyFileEx",
     "nothing is made of nothing"},
    {"copy missing\\a b =3", "WInterop, FileManagementBehaviors, CopyFileEx",
     "a source in a directory that isn't there"},
    {"dir d; copy d b =5", "Microsoft STL, tests/std P0218R1_filesystem, test_copy_file",
     "a directory is no source"},
    {"file a; dir d; copy a d =5", "Microsoft STL, tests/std P0218R1_filesystem, test_copy_file",
     "nor a target"},
    {"file a; copy a a =32", "Microsoft STL, tests/std P0218R1_filesystem, test_copy_file",
     "nor is a file copied onto itself"},
    {"file a x; setattr a H; file b; setattr b H; copy a b =5; content b ->",
     "Microsoft, CopyFileW", "nothing is copied over a hidden file", "replaces hidden files"},
    {"file a x; file b; setattr b R; copy a b =5", "Microsoft, CopyFileW",
     "or over a read-only one", "its host lets its administrator write to any file"},
    {"file a x; setattr a R; copy a b; attributes b -> RA; content b -> x", dotnet,
     "the copy of a read-only file is read-only"},
    {"file a x; file b y; copy a b new =80; content b -> y", dotnet, "which stays as it is"},
    {"file a; copy a missing\\b =3", dotnet, "no directory to copy to"},
    {"file a; copy a @\\.\\.\\.\\.\\.\\a =32", dotnet, "itself by a detour"},
    {"file a; copy a ~ =3", dotnet, "a blank is no target"},
    {"file a; copy ~ a =3", dotnet, "nor a source"},
    {"file a; copy a > =123", dotnet, "nor is this a target"},
    {"file a; copy < a =123", dotnet, "or this a source"},
    {"file a abc; file b def; symlink l b file; copy a l; content b -> abc; attributes l -> AL",
     dotnet, "a copy onto a link goes to its target"},
};

TEST(Facts, Sharing)
{
    check(rows);
}

/// The classes of access that a share mode can grant.
DWORD wanted_by(DWORD access)
{
    auto const has = [access](DWORD rights) { return (access & rights) != 0; };
    return (has(GENERIC_READ | GENERIC_EXECUTE | FILE_READ_DATA | FILE_EXECUTE) ? FILE_SHARE_READ
                                                                                : 0U) |
           (has(GENERIC_WRITE | FILE_WRITE_DATA | FILE_APPEND_DATA) ? FILE_SHARE_WRITE : 0U) |
           (has(DELETE) ? FILE_SHARE_DELETE : 0U);
}

// Wine's own test of it, dlls/kernel32/tests/file.c, test_file_sharing, tries these on Windows:
// each has to share what the other wants, unless one of them wants nothing of the kind.
TEST(Facts, EveryAccessBesideEveryOther)
{
    constexpr DWORD accesses[] = {0,
                                  GENERIC_READ,
                                  GENERIC_WRITE,
                                  GENERIC_READ | GENERIC_WRITE,
                                  DELETE,
                                  GENERIC_READ | DELETE,
                                  GENERIC_WRITE | DELETE,
                                  GENERIC_EXECUTE,
                                  FILE_APPEND_DATA,
                                  FILE_READ_EA,
                                  FILE_WRITE_ATTRIBUTES};
    workspace space;
    space.make_file(space.path(u"f"));
    std::wstring const name = in(space, L"f");
    for (DWORD const first : accesses) {
        for (DWORD first_shares = 0; first_shares <= share_all; ++first_shares) {
            handle const held = open(name, {.access = first, .share = first_shares});
            ASSERT_TRUE(held);
            for (DWORD const second : accesses) {
                for (DWORD second_shares = 0; second_shares <= share_all; ++second_shares) {
                    DWORD const wanted = wanted_by(first);
                    DWORD const also = wanted_by(second);
                    bool const fits =
                        wanted == 0 || also == 0 ||
                        ((also & ~first_shares) == 0 && (wanted & ~second_shares) == 0);
                    EXPECT_EQ(code_of_open(name, {.access = second, .share = second_shares}),
                              fits ? success : DWORD{ERROR_SHARING_VIOLATION})
                        << first << " sharing " << first_shares << ", " << second << " sharing "
                        << second_shares;
                }
            }
        }
    }
}

} // namespace

} // namespace contract::facts
