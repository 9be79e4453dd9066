// Which calls a listing makes, with which texts and flags, and what becomes of it where one
// of them fails or the disk changes in between.

#include <fl/filesystem/directory.hpp>

#include <fl/filesystem/exceptions.hpp>

#include "directory/listing.hpp"
#include "support/calls.hpp"

namespace fl::filesystem::tests {
namespace {

using test_support::failure;

constexpr directory_options follow = directory_options::follow_directory_symlink;
constexpr directory_options skip = directory_options::skip_permission_denied;

void append(lines &calls, lines const &more)
{
    calls.insert(calls.end(), more.begin(), more.end());
}

std::string first(std::string const &name)
{
    return R"(FindFirstFileExW(\\?\)" + name + R"(\*) flags 2)"; // a large fetch
}

std::string next(std::string const &name)
{
    return R"(FindNextFileW(\\?\)" + name + R"(\*))";
}

std::string closed(std::string const &name)
{
    return R"(FindClose(\\?\)" + name + R"(\*))";
}

/// Opening, both dots, and the first entry or the end.
lines entering(std::string const &name)
{
    return {first(name), next(name), next(name)};
}

TEST_ON_MACHINE(DirectoryCalls, OneSearchAndNothingForAnEntry)
{
    machine.add_file(uR"(C:\t\a)").add_directory(uR"(C:\t\b)");
    machine.add_symbolic_link(uR"(C:\t\c)", uR"(C:\t\b)", flavour::directory);
    machine.add_junction(uR"(C:\t\d)", uR"(C:\t\b)");
    for (directory_entry const &entry : directory_iterator(uR"(C:\t)")) {
        static_cast<void>(entry.known());
        static_cast<void>(entry.attributes());
        static_cast<void>(entry.access_form());
        EXPECT_EQ(entry.is_symlink(), entry.filename() == u"c");
        EXPECT_EQ(entry.is_junction(), entry.filename() == u"d");
        if (!entry.is_symlink() && !entry.is_junction()) {
            EXPECT_EQ(entry.is_directory(), entry.filename() == u"b");
            EXPECT_TRUE(entry.exists());
            static_cast<void>(entry.last_write_time());
        }
    }
    lines expected = entering(R"(C:\t)");
    append(expected,
           {next(R"(C:\t)"), next(R"(C:\t)"), next(R"(C:\t)"), next(R"(C:\t)"), closed(R"(C:\t)")});
    EXPECT_EQ(calls_on_disk(machine), expected);
}

TEST_ON_MACHINE(DirectoryCalls, OneSearchForEachDirectoryOfATree)
{
    machine.add_file(uR"(C:\t\a\x)").add_file(uR"(C:\t\b)");
    machine.add_junction(uR"(C:\t\c)", uR"(C:\t\a)");
    EXPECT_EQ(tree_of(uR"(C:\t)"),
              (names{uR"(C:\t\a)", uR"(C:\t\a\x)", uR"(C:\t\b)", uR"(C:\t\c)"}));
    lines expected = entering(R"(C:\t)");
    append(expected, entering(R"(C:\t\a)"));
    append(expected, {next(R"(C:\t\a)"), closed(R"(C:\t\a)"), next(R"(C:\t)"), next(R"(C:\t)"),
                      next(R"(C:\t)"), closed(R"(C:\t)")});
    EXPECT_EQ(calls_on_disk(machine), expected);
}

TEST_ON_MACHINE(DirectoryCalls, FollowingAsksEachDirectoryWhichItIs)
{
    machine.add_file(uR"(C:\away\x)").add_junction(uR"(C:\t\j)", uR"(C:\away)");
    EXPECT_EQ(tree_of(uR"(C:\t)", follow), (names{uR"(C:\t\j)", uR"(C:\t\j\x)"}));
    auto const identifying = [](std::string const &name) {
        return lines{R"(CreateFileW(\\?\)" + name +
                         ") access 80 share 7 disposition 3 flags 2000000",
                     R"(GetFileInformationByHandleEx(\\?\)" + name + ") flags 12",
                     R"(CloseHandle(\\?\)" + name + ")"};
    };
    lines expected = identifying(R"(C:\t)");
    append(expected, entering(R"(C:\t)"));
    append(expected, identifying(R"(C:\t\j)"));
    append(expected, entering(R"(C:\t\j)"));
    append(expected, {next(R"(C:\t\j)"), closed(R"(C:\t\j)"), next(R"(C:\t)"), closed(R"(C:\t)")});
    EXPECT_EQ(calls_on_disk(machine), expected);
}

TEST_ON_MACHINE(DirectoryCalls, AnAbandonedSearchIsClosedWithItsLastCopy)
{
    machine.add_file(uR"(C:\t\a\b\c)");
    {
        recursive_directory_iterator it(uR"(C:\t)");
        ++it;
        recursive_directory_iterator const copy = it;
        it = recursive_directory_iterator();
        EXPECT_EQ(machine.find_handles(), 2);
        EXPECT_EQ(copy->filename(), u"b");
    }
}

TEST_ON_MACHINE(DirectoryCalls, TheEmptyRootOfADriveHasNoEntries)
{
    machine.add_drive(u'E');
    EXPECT_EQ(names_in(u"E:\\"), names{});
    EXPECT_EQ(tree_of(u"E:\\"), names{});
    EXPECT_EQ(tree_of(u"E:\\", follow), names{});
    EXPECT_FAILURE(names_in(u"F:\\"), not_found(u"F:\\"));
}

TEST_ON_MACHINE(DirectoryCalls, ALinkThatLeadsNowhereIsNoEmptyDirectory)
{
    machine.add_symbolic_link(uR"(C:\l)", uR"(C:\no)", flavour::directory);
    for (directory_options const options : {directory_options::none, follow}) {
        EXPECT_FAILURE(tree_of(uR"(C:\l)", options), not_found(uR"(C:\l)"));
    }
}

// Some servers answer so for a directory that they don't have.
TEST_ON_MACHINE(DirectoryCalls, NothingFoundInWhatIsMissingIsAFailure)
{
    sure_fault const fault = machine.fail_call("FindFirstFileExW", 1, ERROR_FILE_NOT_FOUND);
    EXPECT_FAILURE(names_in(uR"(C:\no)"), not_found(uR"(C:\no)"));
}

/// One call of the listing of `C:\t`, which holds `a\x` and the junction `j` to `C:\away`,
/// links followed: what its failure names, and what was told by then.
struct blame_case
{
    char const *function;
    int nth;
    char16_t const *named;
    std::size_t told;
    char const *why;
};

constexpr blame_case blame_cases[] = {
    {"CreateFileW", 1, uR"(C:\t)", 0, "what was given"},
    {"CreateFileW", 2, uR"(C:\t\a)", 1, "the directory below"},
    {"CreateFileW", 3, uR"(C:\t\j)", 3, "the link"},
    {"GetFileInformationByHandle", 1, uR"(C:\t)", 0, "where the longer identity failed, too"},
    {"FindFirstFileExW", 1, uR"(C:\t)", 0, "what was given"},
    {"FindFirstFileExW", 2, uR"(C:\t\a)", 1, "the directory below"},
    {"FindFirstFileExW", 3, uR"(C:\t\j)", 3, "the link"},
    {"FindNextFileW", 1, uR"(C:\t)", 0, "behind the first dot"},
    {"FindNextFileW", 3, uR"(C:\t\a)", 1, "in the directory below"},
    {"FindNextFileW", 5, uR"(C:\t\a)", 2, "where the end was to be told"},
    {"FindNextFileW", 6, uR"(C:\t)", 2, "behind the directory"},
    {"FindNextFileW", 9, uR"(C:\t\j)", 4, "where the end behind the link was to be told"},
};

TEST_ON_MACHINE(DirectoryCalls, AFailureNamesTheDirectoryAndEndsTheListing)
{
    for (blame_case const &row : blame_cases) {
        simulated_machine fresh;
        fresh.add_file(uR"(C:\t\a\x)").add_file(uR"(C:\away\y)");
        fresh.add_junction(uR"(C:\t\j)", uR"(C:\away)");
        auto const longer =
            fresh.fail_every_call_on("GetFileInformationByHandleEx", ERROR_INVALID_PARAMETER);
        sure_fault const fault = fresh.fail_call(row.function, row.nth, ERROR_IO_DEVICE);
        std::size_t told = 0;
        recursive_directory_iterator it;
        auto const thrown = failure_of([&] {
            for (it = recursive_directory_iterator(uR"(C:\t)", follow);
                 it != recursive_directory_iterator(); ++it)
                ++told;
        });
        EXPECT_EQ(thrown, system_error(ERROR_IO_DEVICE, row.named))
            << row.function << " " << row.nth << ": " << row.why;
        EXPECT_EQ(told, row.told) << row.function << " " << row.nth << ": " << row.why;
        EXPECT_EQ(it, recursive_directory_iterator()) << row.function << " " << row.nth;
        expect_nothing_open(fresh);
    }
}

TEST_ON_MACHINE(DirectoryCalls, EveryFailingCallReleasesItsHandles)
{
    auto const build = [](simulated_machine &fresh) {
        fresh.add_file(uR"(C:\t\a\b\x)").add_file(uR"(C:\away\y)");
        fresh.add_junction(uR"(C:\t\j)", uR"(C:\away)");
    };
    for (directory_options const options : {directory_options::none, follow, skip, follow | skip})
        sweep(build, [&](failing_run const &) {
            static_cast<void>(failure_of([&] { tree_of(uR"(C:\t)", options); }));
        });
}

TEST_ON_MACHINE(DirectoryCalls, FailingClosesAreNoFailures)
{
    machine.add_file(uR"(C:\t\a\x)");
    auto const find = machine.fail_every_call_on("FindClose", ERROR_IO_DEVICE);
    auto const handle = machine.fail_every_call_on("CloseHandle", ERROR_IO_DEVICE);
    EXPECT_EQ(tree_of(uR"(C:\t)", follow).size(), 2U);
}

TEST_ON_MACHINE(DirectoryCalls, AFailureWhileADirectoryIsLeftNamesTheOneAboveAndEndsTheListing)
{
    machine.add_file(uR"(C:\t\a\x)").add_file(uR"(C:\t\b)");
    recursive_directory_iterator it(uR"(C:\t)");
    ++it;
    ASSERT_EQ(it.depth(), 1);
    sure_fault const fault = machine.fail_every_call_on("FindNextFileW", ERROR_IO_DEVICE);
    EXPECT_FAILURE(it.pop(), system_error(ERROR_IO_DEVICE, uR"(C:\t)"));
    EXPECT_EQ(it, recursive_directory_iterator());
}

TEST_ON_MACHINE(DirectoryCalls, LeavingTheTopEndsTheListing)
{
    machine.add_file(uR"(C:\t\a)").add_file(uR"(C:\t\b)");
    recursive_directory_iterator it(uR"(C:\t)");
    it.pop();
    EXPECT_EQ(it, recursive_directory_iterator());
}

TEST_ON_MACHINE(DirectoryCalls, ACallThatFailsWithoutACodeIsReported)
{
    for (char const *function : {"FindFirstFileExW", "FindNextFileW", "CreateFileW"}) {
        simulated_machine fresh;
        fresh.add_file(uR"(C:\t\x)");
        auto const fault = fresh.fail_call(function, 1, ERROR_SUCCESS);
        EXPECT_FAILURE(tree_of(uR"(C:\t)", follow), system_error(ERROR_GEN_FAILURE, uR"(C:\t)"))
            << function;
    }
}

TEST_ON_MACHINE(DirectoryCalls, DeniedDirectoriesFailOrAreSkipped)
{
    machine.add_file(uR"(C:\t\a\x)").add_file(uR"(C:\t\b\y)").deny(uR"(C:\t\a)", right::list);
    EXPECT_FAILURE(tree_of(uR"(C:\t)"), denied(uR"(C:\t\a)"));
    EXPECT_EQ(tree_of(uR"(C:\t)", skip), (names{uR"(C:\t\a)", uR"(C:\t\b)", uR"(C:\t\b\y)"}));
    EXPECT_FAILURE(names_in(uR"(C:\t\a)"), denied(uR"(C:\t\a)"));
    EXPECT_EQ(directory_iterator(uR"(C:\t\a)", skip), directory_iterator());
    EXPECT_EQ(recursive_directory_iterator(uR"(C:\t\a)", skip), recursive_directory_iterator());
    machine.deny(uR"(C:\t\a)", right::read_attributes);
    EXPECT_EQ(tree_of(uR"(C:\t)", skip | follow).size(), 3U) << "nor can it be identified";
    EXPECT_FAILURE(tree_of(uR"(C:\t)", follow), denied(uR"(C:\t\a)"));
    EXPECT_FAILURE(directory_iterator(uR"(C:\no)", skip), not_found(uR"(C:\no)"))
        << "that is another thing";
    // what a filter of the file system lets nobody open is denied, too
    sure_fault const fault = machine.fail_every_call_on_name(uR"(C:\t\b\*)", 1920);
    EXPECT_FAILURE(names_in(uR"(C:\t\b)"), denied(uR"(C:\t\b)"));
    EXPECT_EQ(directory_iterator(uR"(C:\t\b)", skip), directory_iterator());
}

TEST_ON_MACHINE(DirectoryCalls, OnlyWhatIsDeniedIsSkipped)
{
    machine.add_file(uR"(C:\t\a\x)");
    sure_fault const fault = machine.fail_every_call_on_name(uR"(\\?\C:\t\a\*)", ERROR_IO_DEVICE);
    EXPECT_FAILURE(tree_of(uR"(C:\t)", skip), system_error(ERROR_IO_DEVICE, uR"(C:\t\a)"));
}

struct length_case
{
    std::size_t size; // of the pathname; that of the pattern is six more: \\?\ and \*
    DWORD code;
    failure (*expected)(std::u16string const &path);
    char const *why;
};

TEST_ON_MACHINE(DirectoryCalls, CodeThreeMeansTooLongOnlyOfWhatIsTooLong)
{
    constexpr length_case cases[] = {
        {32761, ERROR_PATH_NOT_FOUND, not_found, "a pattern that just fits"},
        {32762, ERROR_PATH_NOT_FOUND, too_large, "one unit more"},
        {32762, ERROR_ACCESS_DENIED, denied, "another code is what it says"},
    };
    for (length_case const &row : cases) {
        simulated_machine fresh;
        sure_fault const fault = fresh.fail_every_call_on("FindFirstFileExW", row.code);
        std::u16string path = u"C:\\";
        path.resize(row.size, u'a');
        EXPECT_FAILURE(names_in(path), row.expected(path)) << row.why;
    }
}

TEST_ON_MACHINE(DirectoryCalls, OnlyAReparsePointIsAskedForItsTag)
{
    machine.add_file(uR"(C:\f)");
    EXPECT_EQ(directory_entry(uR"(C:\f)").reparse_tag(), 0U);
    EXPECT_EQ(calls_on_disk(machine), lines{R"(GetFileAttributesExW(\\?\C:\f))"});
}

TEST_ON_MACHINE(DirectoryCalls, AnEntryWithoutAPathnameAsksNothing)
{
    directory_entry entry;
    entry.refresh();
    EXPECT_FALSE(file_status::exists(entry.status()));
    EXPECT_FALSE(file_status::exists(entry.symlink_status()));
    EXPECT_EQ(calls_on_disk(machine), lines{});
}

TEST_ON_MACHINE(DirectoryCalls, BehindADirectoryOfTwoLettersASeparatorFollows)
{
    machine.add_file(uR"(C:\ab\f)").set_current_directory(uR"(C:\ab)");
    EXPECT_EQ(names_in(u"C:"), names{u"f"});
    EXPECT_EQ(directory_iterator(u"C:")->path(), u"C:f") << "in the directory of the drive";
    machine.set_current_directory(u"C:\\");
    EXPECT_EQ(directory_iterator(u"ab")->path(), uR"(ab\f)");
}

struct change_case
{
    void (*change)(simulated_machine &);
    names told;
    char const *why;
};

change_case const changes[] = {
    {[](simulated_machine &machine) { machine.remove(uR"(C:\t\a)"); },
     {uR"(C:\t\a)", uR"(C:\t\b)"},
     "gone"},
    {[](simulated_machine &machine) {
         machine.remove(uR"(C:\t\a)");
         machine.add_file(uR"(C:\t\a)");
     },
     {uR"(C:\t\a)", uR"(C:\t\b)"},
     "a file"},
    {[](simulated_machine &machine) {
         machine.remove(uR"(C:\t\a)");
         machine.add_file(uR"(C:\t\a\new)");
     },
     {uR"(C:\t\a)", uR"(C:\t\a\new)", uR"(C:\t\b)"},
     "another directory"},
    {[](simulated_machine &machine) { machine.remove(uR"(C:\t)"); },
     {uR"(C:\t\a)", uR"(C:\t\b)"},
     "with the one above it, whose names were fetched before"},
};

TEST_ON_MACHINE(DirectoryCalls, DirectoriesThatVanishOrChangeArePassedOver)
{
    for (change_case const &row : changes) {
        for (directory_options const options : {directory_options::none, follow}) {
            simulated_machine fresh;
            fresh.add_file(uR"(C:\t\a\x)").add_file(uR"(C:\t\b)");
            names told;
            for (directory_entry const &entry : recursive_directory_iterator(uR"(C:\t)", options)) {
                if (told.empty())
                    row.change(fresh);
                told.push_back(entry.path().native());
            }
            EXPECT_EQ(told, row.told) << row.why;
            expect_nothing_open(fresh);
        }
    }
}

// No pathname that it has leads to these entries but the string for the system.
TEST_ON_MACHINE(DirectoryCalls, EntriesAreFoundWhereverTheCurrentDirectoryGoes)
{
    machine.add_file(uR"(C:\one\t\x)", "1234").add_directory(uR"(C:\two)");
    machine.set_current_directory(uR"(C:\one)");
    recursive_directory_iterator it(u".");
    directory_entry const directory = *it;
    machine.set_current_directory(uR"(C:\two)");
    ++it;
    EXPECT_EQ(it->path().native(), uR"(.\t\x)");
    EXPECT_EQ(it->status().get_size(), 4U);
    EXPECT_TRUE(directory.status().get_type() == file_status::directory_file);
}

TEST_ON_MACHINE(DirectoryCalls, ANameWithAnyExtensionIsTold)
{
    machine.add_file(u"C:\\t\\a.\u00E4\u00F6\u00FC").add_file(uR"(C:\t\b.exe)");
    std::vector<unsigned int> perms;
    for (directory_entry const &entry : directory_iterator(uR"(C:\t)"))
        perms.push_back(entry.known().get_perms() & file_status::perms_all);
    EXPECT_EQ(perms, (std::vector<unsigned int>{0666, 0777}));
}

TEST_ON_MACHINE(DirectoryCalls, TheTagTellsLinksApartAndOtherReparsePointsAreNone)
{
    constexpr DWORD cloud = 0x9000001A;
    machine.add_symbolic_link(uR"(C:\t\1 link)", u"x");
    machine.add_junction(uR"(C:\t\2 junction)", uR"(C:\t)");
    machine.add_drive(u'D').add_mount_point(uR"(C:\t\3 volume)", u'D');
    machine.add_file(uR"(C:\t\4 cloud\x)");
    machine.add_reparse_point(uR"(C:\t\5 file)", cloud, "data");
    machine.add_reparse_point(uR"(C:\t\6 sparse)", IO_REPARSE_TAG_MOUNT_POINT,
                              simulation::mount_point_data(uR"(\??\C:\t)", u""),
                              flavour::directory);
    machine.set_attributes(uR"(C:\t\6 sparse)", FILE_ATTRIBUTE_SPARSE_FILE);
    std::vector<unsigned int> types;
    std::vector<std::uint32_t> tags;
    for (directory_entry const &entry : directory_iterator(uR"(C:\t)")) {
        types.push_back(entry.known().get_type());
        tags.push_back(entry.reparse_tag());
        EXPECT_EQ(entry.known().get_type(), entry.symlink_status().get_type());
        directory_entry asked = entry;
        asked.refresh();
        EXPECT_EQ(asked.known().get_type(), entry.known().get_type());
        EXPECT_EQ(asked.reparse_tag(), entry.reparse_tag());
    }
    EXPECT_EQ(types,
              (std::vector<unsigned int>{file_status::symlink_file, file_status::reparse_file,
                                         file_status::reparse_file, file_status::directory_file,
                                         file_status::regular_file, file_status::directory_file}));
    EXPECT_EQ(tags, (std::vector<std::uint32_t>{std::uint32_t{IO_REPARSE_TAG_SYMLINK},
                                                std::uint32_t{IO_REPARSE_TAG_MOUNT_POINT},
                                                std::uint32_t{IO_REPARSE_TAG_MOUNT_POINT}, 0, cloud,
                                                std::uint32_t{IO_REPARSE_TAG_MOUNT_POINT}}));
}

TEST_ON_MACHINE(DirectoryCalls, WhatCantBeReadAsALinkCountsAsNone)
{
    machine.add_symbolic_link(uR"(C:\l)", u"x");
    sure_fault const fault = machine.fail_every_call_on("DeviceIoControl", ERROR_IO_DEVICE);
    directory_entry const entry(uR"(C:\l)");
    EXPECT_FALSE(entry.is_symlink());
    EXPECT_EQ(entry.reparse_tag(), 0U);
    EXPECT_EQ(entry.known().get_type(), file_status::regular_file);
}

TEST_ON_MACHINE(DirectoryCalls, RefreshingFailsForWhatIsDeniedAndKeepsWhatIsKnown)
{
    machine.add_file(uR"(C:\t\x)", "123");
    directory_entry entry = *directory_iterator(uR"(C:\t)");
    machine.deny(uR"(C:\t\x)", right::read_attributes);
    EXPECT_FAILURE(entry.refresh(), denied(uR"(C:\t\x)"));
    EXPECT_EQ(entry.file_size(), 3U);
    EXPECT_FAILURE(directory_entry(uR"(C:\t\x)"), denied(uR"(C:\t\x)"));
    EXPECT_FAILURE(entry.status(), denied(uR"(\\?\C:\t\x)"))
        << "as status does, which names the string for the system";
}

} // namespace
} // namespace fl::filesystem::tests
