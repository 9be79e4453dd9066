// Which of two pathnames is blamed: every code about every kind of source.

#include "failure/blame.hpp"

#include "support/calls.hpp"
#include "support/translation.hpp"

#include <windows.h>

#include <algorithm>
#include <initializer_list>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

constexpr unsigned int all_codes = 12000;
constexpr unsigned int low_codes = 300; // with every one that means something here
char16_t const *const target = u"C:\\target";

/// What one would learn about a source, and with it who is to blame.
struct knowledge
{
    bool is_symbolic_link = false;
    maybe_failure of_exists{}; ///< what `exists` throws
    bool exists = false;
    maybe_failure of_access{}; ///< what `access` throws
    bool can_be_read = false;
};

bool is_one_of(unsigned int code, std::initializer_list<unsigned int> codes)
{
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

auto expected_of(unsigned int code, std::u16string const &source, knowledge const &known)
{
    if (known.is_symbolic_link && code == 5)
        return translated(code, source);
    if (known.of_exists)
        return *known.of_exists;
    if (!known.exists && is_one_of(code, {2, 3}))
        return translated(code, source);
    if (source.size() > 32767)
        return translated(code, source);
    if (code == 5 && known.of_access)
        return *known.of_access;
    if (code == 5)
        return translated(code, known.can_be_read ? target : source);
    if (is_one_of(code, {2, 3, 80, 145, 183, 206, 267}))
        return translated(code, target);
    return translated(code, source, target);
}

maybe_failure blame(unsigned int code, std::u16string const &source)
{
    return failure_of([&] { throw_win32_exception_for_pair(code, wide(source), wide(target)); });
}

void expect_codes_up_to(unsigned int last, std::u16string const &source, knowledge const &known,
                        char const *why)
{
    for (unsigned int code = 0; code <= last; ++code)
        ASSERT_EQ(blame(code, source), expected_of(code, source, known))
            << why << ", code " << code;
}

knowledge const readable = {.exists = true, .can_be_read = true};
knowledge const unreadable = {.exists = true};
// `access` is asked about reading only, and so a missing name is a failure of its own
knowledge const missing = {.of_access = not_found(u"")};

knowledge failing(failure const &thrown)
{
    return {.of_exists = thrown, .of_access = thrown};
}

knowledge link_that(knowledge known)
{
    known.is_symbolic_link = true;
    return known;
}

struct source_case
{
    char16_t const *source;
    knowledge known;
    char const *why;
};

/// A machine with all kinds of sources.
void fill(simulated_machine &machine)
{
    machine.add_file(u"C:\\file").add_directory(u"C:\\dir").add_drive(u'D');
    machine.add_file(u"C:\\locked").deny(u"C:\\locked", right::read);
    machine.add_directory(u"C:\\closed").deny(u"C:\\closed", right::list);
    machine.add_file(u"C:\\hidden").deny(u"C:\\hidden", right::read_attributes);
    machine.add_file(u"C:\\kept").set_attributes(u"C:\\kept", FILE_ATTRIBUTE_READONLY);
    machine.add_deduplicated_file(u"C:\\dedup").add_mount_point(u"C:\\volume", u'D');
    machine.add_symbolic_link(u"C:\\link", u"file");
    machine.add_symbolic_link(u"C:\\dirlink", u"dir", flavour::directory);
    machine.add_symbolic_link(u"C:\\broken", u"missing");
    machine.add_symbolic_link(u"C:\\loop", u"loop");
    machine.add_symbolic_link(u"C:\\blind", u"hidden");
    machine.add_symbolic_link(u"C:\\shut", u"locked");
    machine.add_symbolic_link(u"C:\\no look", u"file");
    machine.deny(u"C:\\no look", right::read_attributes);
    machine.add_junction(u"C:\\junction", u"C:\\dir");
    machine.add_junction(u"C:\\closed junction", u"C:\\closed");
    machine.add_junction(u"C:\\broken junction", u"C:\\missing");
    machine.add_reparse_point(u"C:\\strange", 0x8000FFFF, "");
    machine.add_share(u"server", u"share").add_file(uR"(\\server\share\file)");
    machine.add_dead_server(u"dead");
    machine.set_current_directory(u"C:\\dir").add_file(u"C:\\dir\\inner");
}

source_case const source_cases[] = {
    {u"C:\\file", readable, "a file"},
    {u"C:\\dir", readable, "a directory"},
    {u"C:\\kept", readable, "a read-only file can be read"},
    {u"inner", readable, "a relative pathname, named as it stands"},
    {uR"(\\?\C:\file)", readable, "a prefix stays"},
    {u"C:/file", readable, "slashes stay"},
    {uR"(\\server\share\file)", readable, "on a share"},
    {u"C:\\dedup", readable, "a reparse point that is no link"},
    {u"C:\\volume", readable, "a volume in a directory"},
    {u"C:\\junction", readable, "a junction is no symbolic link"},
    {u"C:\\locked", unreadable, "a file that can't be read"},
    {u"C:\\closed", unreadable, "a directory that can't be read"},
    {u"C:\\closed junction", unreadable, "a junction to it"},
    {u"C:\\missing", missing, "missing"},
    {u"C:\\missing\\x", missing, "in no directory"},
    {u"C:\\file\\x", missing, "below a file"},
    {u"Q:\\x", missing, "on no drive"},
    {u"C:\\a|b", missing, "no name at all"},
    {uR"(\\dead\share\x)", missing, "on no server"},
    {u"C:\\broken junction", missing, "a junction to nothing"},
    {u"", {.of_access = empty_path()}, "no text"},
    {u"C:\\strange", {}, "a reparse point that nobody follows: it isn't there, nor missing"},
    {u"C:\\hidden", failing(denied(u"C:\\hidden")), "denied a look"},
    {u"C:\\no look", failing(denied(u"C:\\no look")), "a symbolic link that is denied a look"},
    {u"C:\\link", link_that(readable), "a symbolic link"},
    {u"C:\\dirlink", link_that(readable), "one to a directory"},
    {u"C:\\shut", link_that(unreadable), "one to what can't be read"},
    {u"C:\\broken", link_that(missing), "one to nothing"},
    {u"C:\\blind", link_that(failing(denied(u"C:\\blind"))), "one to what is denied a look"},
    {u"C:\\loop", link_that(failing(system_error(1921, u"C:\\loop"))), "one to itself"},
};

TEST_ON_MACHINE(Blame, EveryCodeAboutEverySource)
{
    for (source_case const &row : source_cases) {
        simulated_machine fresh;
        fill(fresh);
        fresh.keep_journal(false);
        expect_codes_up_to(all_codes, row.source, row.known, row.why);
        EXPECT_EQ(fresh.open_handles(), 0) << row.why;
    }
}

// What the look at a source fails with decides whether it is missing, can't be read, or
// is a failure that takes the place of the report.
struct look_case
{
    DWORD look;
    knowledge known;
    char const *why;
};

TEST_ON_MACHINE(Blame, EveryCodeOfTheLook)
{
    char16_t const *const source = u"C:\\file";
    look_case const cases[] = {
        {2, missing, "missing"},
        {3, missing, "missing"},
        {53, missing, "missing, on a network"},
        {64, {.of_access = system_error(64, source)}, "gone, on a network"},
        {123, missing, "no name"},
        {161, missing, "no pathname: swallowed, and missing"},
        {267, {.of_access = translated(267, source)}, "below a file"},
        {1920, {}, "nobody can look: swallowed, and can't be read"},
        {4390, {.of_access = translated(4390, source)}, "an InvalidArgument is swallowed"},
        {5, failing(denied(source)), "denied"},
        {206, failing(too_large(u"")), "too long"},
        {80, failing(file_exists(source)), "whatever it stands for"},
        {145, failing(translated(145, source)), "whatever it stands for"},
        {1117, failing(system_error(1117, source)), "a broken disk"},
    };
    for (look_case const &row : cases) {
        simulated_machine fresh;
        fresh.add_file(source).keep_journal(false);
        sure_fault const fault = fresh.fail_every_call_on("GetFileAttributesExW", row.look);
        expect_codes_up_to(low_codes, source, row.known, row.why);
    }
}

// The first look, at the link itself, has its failures dropped: the later ones count.
TEST_ON_MACHINE(Blame, AFailingFirstLookIsDropped)
{
    for (DWORD const look : {2U, 5U, 87U, 206U, 1117U}) {
        simulated_machine fresh;
        fill(fresh);
        sure_fault const fault = fresh.fail_call("GetFileAttributesExW", 1, look);
        EXPECT_EQ(blame(5, u"C:\\link"), denied(target)) << look;
        sure_fault const reading = fresh.fail_call("GetFileInformationByHandleEx", 1, look);
        EXPECT_EQ(blame(5, u"C:\\link"), denied(target)) << look << " from the tag";
        EXPECT_EQ(fresh.open_handles(), 0);
    }
}

/// Lets every pathname be `C:\file` for as long as it lives.
simulation::fault expand_to(simulated_machine &machine, std::wstring const &text)
{
    return machine.on_full_path_name([text](DWORD room, wchar_t *buffer) -> std::optional<DWORD> {
        if (room <= text.size())
            return static_cast<DWORD>(text.size() + 1);
        *std::copy(text.begin(), text.end(), buffer) = L'\0';
        return static_cast<DWORD>(text.size());
    });
}

TEST_ON_MACHINE(Blame, ASourceBeyondTheLongestPathname)
{
    for (std::size_t const size : {32766U, 32767U, 32768U, 40000U}) {
        std::u16string const source = of_size(u"C:\\", size);
        simulated_machine fresh;
        fresh.add_file(u"C:\\file").keep_journal(false);
        auto const shortened = expand_to(fresh, L"C:\\file");
        for (unsigned int const code : {0U, 2U, 3U, 5U, 80U, 87U, 145U, 183U, 206U, 267U})
            EXPECT_EQ(blame(code, source), expected_of(code, source, readable))
                << size << " units, code " << code;
    }
}

TEST_ON_MACHINE(Blame, AMissingSourceBeyondTheLongestPathname)
{
    for (std::size_t const size : {32767U, 32768U}) {
        std::u16string const source = of_size(u"C:\\", size);
        simulated_machine fresh;
        fresh.keep_journal(false);
        auto const shortened = expand_to(fresh, L"C:\\missing");
        for (unsigned int const code : {2U, 3U, 5U, 80U, 87U, 206U})
            EXPECT_EQ(blame(code, source), expected_of(code, source, missing))
                << size << " units, code " << code;
    }
}

// The system itself takes no such text, and its refusal is what `exists` throws.
TEST_ON_MACHINE(Blame, ASourceThatTheSystemFindsTooLong)
{
    std::u16string const source = of_size(u"C:\\", 32768);
    machine.keep_journal(false);
    for (unsigned int const code : {2U, 3U, 5U, 80U, 87U, 206U})
        EXPECT_EQ(blame(code, source), too_large(u"")) << code;
}

TEST_ON_MACHINE(Blame, ATargetBeyondTheLongestPathname)
{
    machine.add_file(u"C:\\file");
    std::u16string const overlong = of_size(u"C:\\", 32768);
    auto const failed = [&](wchar_t const *source) {
        return failure_of([&] { throw_win32_exception_for_pair(3, source, wide(overlong)); });
    };
    EXPECT_EQ(failed(L"C:\\file"), too_large(overlong)) << "the target is blamed, and too long";
    EXPECT_EQ(failed(L"C:\\missing"), not_found(u"C:\\missing")) << "reported alone";
}

TEST_ON_MACHINE(Blame, ASourceWhoseExtensionCantBeComparedIsAFailureOfItsOwn)
{
    machine.add_file(u"C:\\f.b\u00E9x");
    EXPECT_THROW(throw_win32_exception_for_pair(5, L"C:\\f.b\u00E9x", L"C:\\target"),
                 foundation::ustring::CtypeInvalidCharacter);
    EXPECT_EQ(
        failure_of([] { throw_win32_exception_for_pair(80, L"C:\\f.b\u00E9x", L"C:\\target"); }),
        file_exists(target))
        << "whoever doesn't ask about reading doesn't learn it";
}

TEST_ON_MACHINE(Blame, EmptyTexts)
{
    machine.add_file(u"C:\\file");
    auto const failed = [](unsigned int code, wchar_t const *first, wchar_t const *second) {
        return failure_of([=] { throw_win32_exception_for_pair(code, first, second); });
    };
    EXPECT_EQ(failed(87, L"", L""), system_error(87, u""));
    EXPECT_EQ(failed(87, L"C:\\file", L""), system_error(87, u"C:\\file")) << "an empty one beside";
    EXPECT_EQ(failed(3, L"C:\\file", L""), not_found(u""));
    EXPECT_EQ(failed(2, L"", L"C:\\file"), not_found(u""));
    EXPECT_EQ(failed(183, L"", L"C:\\file"), file_exists(u"C:\\file"));
}

TEST_ON_MACHINE(BlameCalls, OfACodeThatNeedsNoReading)
{
    for (unsigned int const code : {0U, 2U, 87U, 183U}) {
        simulated_machine fresh;
        fresh.add_file(u"C:\\file");
        blame(code, u"C:\\file");
        EXPECT_EQ(calls_with_arguments(fresh),
                  (lines{R"(GetFileAttributesExW(C:\file))", R"(GetFullPathNameW(C:\file))",
                         R"(GetFileAttributesExW(C:\file))"}))
            << code;
    }
}

TEST_ON_MACHINE(BlameCalls, OfADenialAskAboutReading)
{
    machine.add_file(u"C:\\file");
    blame(5, u"C:\\file");
    auto const made = calls_with_arguments(machine);
    EXPECT_EQ(std::count(made.begin(), made.end(),
                         R"(CreateFileW(C:\file) access 80000000 share 7 disposition 3 )"
                         R"(flags 2000000)"),
              1);
}

TEST_ON_MACHINE(BlameCalls, OfADenialLookOnlyAtTheSymbolicLink)
{
    machine.add_symbolic_link(u"C:\\link", u"missing");
    EXPECT_EQ(blame(5, u"C:\\link"), denied(u"C:\\link"));
    EXPECT_EQ(machine.calls_of("GetFullPathNameW"), 0) << "`exists` isn't asked";
    EXPECT_EQ(machine.calls_of("CreateFileW"), 1) << "for the tag, and not to read";
    EXPECT_EQ(machine.journal().at(1).access, DWORD{FILE_READ_ATTRIBUTES});
}

// Callers who ask for it see the code of what has failed, and not that of a look at it.
TEST_ON_MACHINE(BlameCalls, PutTheLastErrorBackAheadOfTheQuestions)
{
    constexpr DWORD given = 1234;
    machine.add_file(u"C:\\file");
    for (bool const is_seen : {true, false}) {
        std::optional<simulation::fault> look;
        if (!is_seen)
            look = machine.fail_call("GetFileAttributesExW", 1, ERROR_IO_DEVICE);
        ::SetLastError(given);
        blame(87, u"C:\\file");
        EXPECT_EQ(::GetLastError(), given) << is_seen;
        EXPECT_EQ(look && look->fired(), !is_seen);
    }
}

} // namespace
} // namespace fl::filesystem::detail
