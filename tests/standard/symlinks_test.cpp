// What only the simulated machine can show of making links, of looking at them and of
// renaming by the standard facility.

#include "standard/filesystem.hpp"

#include "standard/error_codes.hpp"
#include "support/allocations.hpp"
#include "support/calls.hpp"

#include <fl/filesystem/operations.hpp>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;
using std::filesystem::file_type;

constexpr std::size_t reparse_room = 16386;

std::error_code const no_memory(12, std::generic_category());

struct status_case
{
    wchar_t const *text;
    file_type type;
    int code;
    char const *why;
};

constexpr status_case status_cases[] = {
    {L"C:\\file", file_type::regular, 0, "a file"},
    {L"C:\\dir", file_type::directory, 0, "a directory"},
    {L"C:\\link", file_type::symlink, 0, "a symbolic link, and not what it leads to"},
    {L"C:\\dirlink", file_type::symlink, 0, "to a directory, too"},
    {L"C:\\broken", file_type::symlink, 0, "one that leads nowhere"},
    {L"C:\\junction", standard::junction, 0, "a junction"},
    {L"C:\\volume", standard::junction, 0, "a volume in a directory"},
    {L"C:\\dedup", file_type::regular, 0, "another reparse point is what its attributes say"},
    {L"C:\\strange", file_type::directory, 0, "whatever its tag"},
    {L"C:\\no", file_type::not_found, 2, "missing"},
    {L"C:\\no\\x", file_type::not_found, 3, "in no directory"},
    {L"", file_type::not_found, 3, "no text"},
    {L"C:\\a|b", file_type::not_found, 123, "no name"},
    {L"\\\\dead\\share\\x", file_type::not_found, 53, "on no server"},
    {L"C:\\hidden", file_type::none, 5, "denied a look"},
};

TEST_ON_MACHINE(StandardSymlinkStatus, Types)
{
    machine.add_file(u"C:\\file").add_directory(u"C:\\dir").add_drive(u'D');
    machine.add_symbolic_link(u"C:\\link", u"file").add_symbolic_link(u"C:\\broken", u"no");
    machine.add_symbolic_link(u"C:\\dirlink", u"dir", flavour::directory);
    machine.add_junction(u"C:\\junction", u"C:\\dir").add_mount_point(u"C:\\volume", u'D');
    machine.add_deduplicated_file(u"C:\\dedup").add_dead_server(u"dead");
    machine.add_reparse_point(u"C:\\strange", 0x8000FFFF, "", flavour::directory);
    machine.add_file(u"C:\\hidden").deny(u"C:\\hidden", right::read_attributes);
    for (status_case const &row : status_cases) {
        std::error_code ec = stale;
        EXPECT_EQ(standard::symlink_status(row.text, ec).type(), row.type) << row.why;
        EXPECT_EQ(ec, row.code == 0 ? std::error_code() : system_code(row.code)) << row.why;
    }
}

TEST_ON_MACHINE(StandardSymlinkStatus, EveryCodeOfTheLook)
{
    machine.add_file(u"C:\\file").keep_journal(false);
    for (int code = 1; code <= 2000; ++code) {
        auto const fault =
            machine.fail_every_call_on("GetFileAttributesExW", static_cast<DWORD>(code));
        auto const search = machine.fail_every_call_on("FindFirstFileW", 5); // asked for code 32
        bool const is_missing =
            code == 2 || code == 3 || code == 53 || code == 64 || code == 123 || code == 267;
        std::error_code ec = stale;
        EXPECT_EQ(standard::symlink_status(L"C:\\file", ec).type(),
                  is_missing ? file_type::not_found : file_type::none)
            << code;
        EXPECT_EQ(ec, system_code(code));
    }
}

TEST_ON_MACHINE(StandardSymlinkStatus, AFailingLookAtTheTag)
{
    for (char const *function : {"CreateFileW", "GetFileInformationByHandleEx"}) {
        simulated_machine fresh;
        fresh.add_symbolic_link(u"C:\\link", u"x");
        auto const fault = fresh.fail_every_call_on(function, 1117);
        std::error_code ec = stale;
        EXPECT_EQ(standard::symlink_status(L"C:\\link", ec).type(), file_type::none) << function;
        EXPECT_EQ(ec, system_code(1117)) << function;
        EXPECT_EQ(fresh.open_handles(), 0) << function;
    }
}

constexpr row_of<wchar_t const *, char16_t const *> cleaning_cases[] = {
    {L"a", u"a", "nothing to do"},
    {L"a//b/c", uR"(a\b\c)", "each run becomes one"},
    {LR"(a\\/\b)", uR"(a\b)", "of both kinds"},
    {LR"(a\b\\)", uR"(a\b\)", "one stays at the end"},
    {L"/a", uR"(\a)", "a root"},
    {L"/", uR"(\)", "nothing but a root"},
    {L"//", uR"(\)", "no root name: a run"},
    {L"///a", uR"(\a)", "three are no server's"},
    {L"C:", u"C:", "a drive alone"},
    {L"C:/", uR"(C:\)", "with its root"},
    {L"C://a//b/", uR"(C:\a\b\)", "a run behind a drive"},
    {L"C:a//b", uR"(C:a\b)", "relative to a drive"},
    {L"//server", uR"(\\server)", "a root name keeps both"},
    {LR"(/\server)", uR"(\\server)", "of whichever kind"},
    {L"//server//share//x", uR"(\\server\share\x)", "behind a server"},
    {LR"(\\server\share)", uR"(\\server\share)", "nothing to do"},
    {L"//?/C:/a//b", uR"(\\?\C:\a\b)", "a long prefix"},
    {LR"(\\?\C:\a)", uR"(\\?\C:\a)", "which is not taken off"},
    {LR"(\\?\UNC\server//share)", uR"(\\?\UNC\server\share)", "of a server"},
    {L"//./pipe//x", uR"(\\.\pipe\x)", "a device"},
    {LR"(\??\C:/a//b)", uR"(\??\C:\a\b)", "the object manager's prefix"},
    {L"./a/../b", uR"(.\a\..\b)", "dots are no matter"},
    {L"a :/b", uR"(a :\b)", "nor is a colon"},
};

TEST_ON_MACHINE(StandardCreateSymlink, CleansTheText)
{
    for (auto const &row : cleaning_cases) {
        for (bool const is_directory : {false, true}) {
            simulated_machine fresh;
            // this is about the text; whether the machine takes it is another matter
            auto const fault = fresh.fail_every_call_on("CreateSymbolicLinkW", 5);
            std::error_code ec = stale;
            auto const make =
                is_directory ? standard::create_directory_symlink : standard::create_symlink;
            make(row.given, L"C:\\a//link", ec);
            EXPECT_EQ(ec, system_code(5)) << row.why;
            ASSERT_EQ(fresh.journal().size(), 1U) << row.why;
            EXPECT_EQ(fresh.journal().front().second_text, row.expected) << row.why;
            EXPECT_EQ(fresh.journal().front().text, u"C:\\a//link") << "as it stands";
            EXPECT_EQ(fresh.journal().front().flags, is_directory ? 3U : 2U) << row.why;
        }
    }
}

/// The same by the rule: the root name's slashes, and then runs.
TEST_ON_MACHINE(StandardCreateSymlink, CleanedTextsHaveNoSlashAndNoRunBehindTheRoot)
{
    auto const fault = machine.fail_every_call_on("CreateSymbolicLinkW", 5);
    for_all_texts(shape_alphabet, 5, [&](std::u16string const &text) {
        std::error_code ec;
        machine.clear_journal();
        standard::create_symlink(wide(text), L"C:\\link", ec);
        std::u16string const cleaned = machine.journal().front().second_text;
        EXPECT_EQ(cleaned.find(u'/'), std::u16string::npos) << printable(text);
        EXPECT_EQ(cleaned.find(u"\\\\", 1), std::u16string::npos) << printable(text);
        EXPECT_EQ(cleaned.empty(), text.empty()) << printable(text);
    });
}

TEST_ON_MACHINE(StandardCreateSymlink, ClearsTheCode)
{
    std::error_code ec = stale;
    standard::create_symlink(L"x", L"C:\\a", ec);
    EXPECT_EQ(ec, std::error_code());
    ec = stale;
    standard::create_directory_symlink(L"x", L"C:\\b", ec);
    EXPECT_EQ(ec, std::error_code());
    ec = stale;
    standard::copy_symlink(L"C:\\b", L"C:\\c", ec);
    EXPECT_EQ(ec, std::error_code());
    machine.set_attributes(u"C:\\a", FILE_ATTRIBUTE_READONLY);
    ec = stale;
    standard::copy_symlink(L"C:\\a", L"C:\\of a file", ec);
    EXPECT_EQ(ec, std::error_code());
    EXPECT_EQ(machine.attributes(u"C:\\of a file") & FILE_ATTRIBUTE_DIRECTORY, 0U)
        << "of a read-only link";
    ec = stale;
    standard::rename(L"C:\\c", L"C:\\d", ec);
    EXPECT_EQ(ec, std::error_code());
    standard::rename(L"C:\\no", L"C:\\e", ec);
    EXPECT_EQ(ec, system_code(2));
    EXPECT_EQ(machine.entries(u"C:\\"), (names{u"a", u"b", u"d", u"of a file"}));
}

TEST_ON_MACHINE(StandardCreateSymlink, WithoutMemoryForTheTextIsCode12)
{
    std::wstring const target(100, L'x');
    std::wstring const link = L"C:\\link";
    std::error_code ec = stale;
    failing_allocation const shortage(1);
    standard::create_symlink(target, link, ec);
    EXPECT_TRUE(shortage.fired());
    EXPECT_EQ(ec, no_memory);
    EXPECT_EQ(machine.calls_of("CreateSymbolicLinkW"), 0);
}

// The texts are copied ahead of that, and no memory for those is an exception of its own.
TEST_ON_MACHINE(StandardCreateSymlink, WithoutMemoryForTheTextNamesNothing)
{
    upath const target(std::u16string(100, u'x'));
    upath const link(u"C:\\link");
    maybe_failure failed;
    for (std::size_t nth = 1; nth < 20 && !failed; ++nth) {
        failing_allocation const shortage(nth);
        try {
            failed = failure_of([&] { create_symlink(target, link, file_status::regular_file); });
        } catch (std::bad_alloc const &) {
            continue;
        }
    }
    EXPECT_EQ(failed, system_error(12, u""));
    EXPECT_EQ(machine.calls_of("CreateSymbolicLinkW"), 0);
}

TEST_ON_MACHINE(StandardCopySymlink, WithoutMemoryForTheDataIsCode8)
{
    machine.add_symbolic_link(u"C:\\link", u"x");
    std::error_code ec = stale;
    failing_size const shortage(reparse_room);
    standard::copy_symlink(L"C:\\link", L"C:\\copy", ec);
    EXPECT_TRUE(shortage.fired());
    EXPECT_EQ(ec, system_code(8));
    EXPECT_EQ(machine.calls_of("CreateFileW"), 1) << "it is taken once the link is open";
    EXPECT_EQ(machine.calls_of("DeviceIoControl"), 0);
    EXPECT_EQ(machine.calls_of("CreateSymbolicLinkW"), 0);
    EXPECT_FAILURE(copy_symlink(u"C:\\link", u"C:\\copy"), system_error(8, u""));
    EXPECT_FAILURE(copy_symlink(u"C:\\no", u"C:\\copy"), not_found(u""))
        << "a missing link needs none";
}

// A file system may hold anything: names that lead out of the buffer.
TEST_ON_MACHINE(StandardCopySymlink, NamesEndWithTheBuffer)
{
    std::string body = simulation::symbolic_link_data(u"s", u"p", 0);
    body[6] = body[7] = static_cast<char>(0xFF);
    machine.add_symbolic_link(u"C:\\link", u"x").add_reparse_point(u"C:\\link", 0xA000000C, body);
    std::error_code ec;
    standard::copy_symlink(L"C:\\link", L"C:\\copy", ec);
    EXPECT_EQ(machine.journal().back().second_text, u"ps") << "a call's text ends at a zero";
}

TEST_ON_MACHINE(StandardRename, OneCallWithBothFlags)
{
    machine.add_file(u"C:\\a", "new").add_file(u"C:\\b", "old");
    std::error_code ec = stale;
    standard::rename(L"C:/a", L"C:/b", ec);
    EXPECT_EQ(ec, std::error_code());
    ASSERT_EQ(machine.journal().size(), 1U);
    EXPECT_EQ(machine.journal().front().function, "MoveFileExW");
    EXPECT_EQ(machine.journal().front().text, u"C:/a") << "texts as they stand";
    EXPECT_EQ(machine.journal().front().second_text, u"C:/b");
    EXPECT_EQ(machine.journal().front().flags, 3U);
    EXPECT_EQ(machine.content(u"C:\\b"), "new");
}

TEST_ON_MACHINE(StandardRename, AnyCodeIsTheSystemsOwn)
{
    for (int const code : {2, 5, 17, 87, 183, 12000}) {
        auto const fault = machine.fail_every_call_on("MoveFileExW", static_cast<DWORD>(code));
        std::error_code ec = stale;
        standard::rename(L"C:\\a", L"C:\\b", ec);
        EXPECT_EQ(ec, system_code(code));
    }
}

} // namespace
} // namespace fl::filesystem::detail
