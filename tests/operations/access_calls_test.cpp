// `access` by the calls that it makes, and what becomes of each call that fails.

#include <fl/filesystem.hpp>

#include "operations/access_answers.hpp"
#include "support/calls.hpp"
#include "support/translation.hpp"

namespace fl::filesystem::tests {
namespace {

/// The first calls.
lines looking(std::string const &path)
{
    return {"GetFullPathNameW(" + path + ")", "GetFileAttributesExW(" + path + ")"};
}

/// On a drive, which may be a network's.
lines asking_for_a_network(std::string const &path)
{
    return {"WNetGetUniversalNameW(" + path + ") flags 1"};
}

/// The calls of one probe that succeeds.
lines probe(std::string const &path, std::string const &access)
{
    return {"CreateFileW(" + path + ") access " + access + " share 7 disposition 3 flags 2000000",
            "CloseHandle(" + path + ")"};
}

// What is asked for on a drive, and on a network, by the mode, from 1 on.
constexpr std::pair<char const *, char const *> desired_cases[] = {
    {"0", "0"},          {"80000000", "80"},  {"80000000", "80"},  {"100", "100"},
    {"100", "100"},      {"80000100", "180"}, {"80000100", "180"}, {"20000000", "0"},
    {"20000000", "0"},   {"A0000000", "80"},  {"A0000000", "80"},  {"20000100", "100"},
    {"20000100", "100"}, {"A0000100", "180"}, {"A0000100", "180"},
};

TEST_ON_MACHINE(AccessJournal, OfAPlainNameInEachMode)
{
    machine.add_file(u"C:\\d\\f.exe").set_current_directory(u"C:\\d");
    for (unsigned int mode = 1; mode <= 15; ++mode) {
        machine.clear_journal();
        EXPECT_TRUE(access(u"f.exe", mode));
        EXPECT_EQ(calls_with_arguments(machine),
                  joined({{R"(GetFullPathNameW(f.exe))", R"(GetFileAttributesExW(C:\d\f.exe))",
                           R"(WNetGetUniversalNameW(C:\d\f.exe) flags 1)"},
                          probe(R"(C:\d\f.exe)", desired_cases[mode - 1].first)}))
            << mode;
    }
}

TEST_ON_MACHINE(AccessJournal, OfAReadOnlyFileWhoseProbeSucceeds)
{
    machine.add_file(u"C:\\f").set_attributes(u"C:\\f", FILE_ATTRIBUTE_READONLY);
    EXPECT_FALSE(access(uR"(C:\f)", access_write));
    EXPECT_EQ(
        calls_with_arguments(machine),
        joined({looking(R"(C:\f)"), asking_for_a_network(R"(C:\f)"), probe(R"(C:\f)", "100")}))
        << "a handle was there to be closed";
}

TEST_ON_MACHINE(AccessJournal, OnANetworkInEachMode)
{
    machine.add_share(u"s", u"h").map_drive(u'X', u"s", u"h").add_file(u"\\\\s\\h\\f.exe");
    for (unsigned int mode = 1; mode <= 15; ++mode) {
        machine.clear_journal();
        EXPECT_TRUE(access(uR"(\\s\h\f.exe)", mode));
        EXPECT_EQ(calls_with_arguments(machine),
                  joined({looking(R"(\\s\h\f.exe)"),
                          probe(R"(\\s\h\f.exe)", desired_cases[mode - 1].second)}))
            << mode;
        machine.clear_journal();
        EXPECT_TRUE(access(uR"(X:\f.exe)", mode));
        EXPECT_EQ(calls_with_arguments(machine),
                  joined({looking(R"(X:\f.exe)"), asking_for_a_network(R"(X:\f.exe)"),
                          probe(R"(X:\f.exe)", desired_cases[mode - 1].second)}))
            << mode;
    }
}

TEST_ON_MACHINE(AccessJournal, OfTheLongFormOfAShare)
{
    machine.add_share(u"s", u"h").add_symbolic_link(u"C:\\l", u"\\\\s\\h\\f.exe");
    machine.add_file(u"\\\\s\\h\\f.exe");
    EXPECT_TRUE(access(uR"(C:\l)", access_read | access_execute));
    EXPECT_EQ(calls_with_arguments(machine), joined({looking(R"(C:\l)"),
                                                     reading(R"(C:\l)"),
                                                     {R"(WNetGetUniversalNameW(C:\l) flags 1)",
                                                      R"(GetFileAttributesExW(\\?\UNC\s\h\f.exe))"},
                                                     probe(R"(\\?\UNC\s\h\f.exe)", "80")}));
}

TEST_ON_MACHINE(AccessJournal, OfALink)
{
    machine.add_file(u"C:\\t").add_symbolic_link(u"C:\\l", u"t");
    EXPECT_TRUE(access(uR"(C:\l)", access_write));
    EXPECT_EQ(calls_with_arguments(machine), joined({looking(R"(C:\l)"),
                                                     reading(R"(C:\l)"),
                                                     {R"(WNetGetUniversalNameW(C:\l) flags 1)",
                                                      R"(GetFileAttributesExW(\\?\C:\t))",
                                                      R"(WNetGetUniversalNameW(C:\t) flags 1)"},
                                                     probe(R"(\\?\C:\t)", "100")}));
}

TEST_ON_MACHINE(AccessJournal, OfALinkOnAShare)
{
    machine.add_share(u"s", u"h").add_symbolic_link(u"\\\\s\\h\\l", u"t");
    EXPECT_FALSE(access(uR"(\\s\h\l)", access_exists));
    lines const all = calls_with_arguments(machine);
    ASSERT_GT(all.size(), 2U);
    EXPECT_EQ(lines(all.begin(), all.begin() + 2), looking(R"(\\s\h\l)"));
    EXPECT_EQ(all.back(), R"(CreateFileW(\\s\h\l) access 0 share 7 disposition 3 flags 2000000)")
        << "its own probe, which the system refuses";
    EXPECT_EQ(machine.calls_of("GetFileAttributesExW"), 1) << "nothing is followed";
}

TEST_ON_MACHINE(AccessJournal, OfWhatIsRefusedAtOnce)
{
    machine.add_file(u"C:\\f");
    for (unsigned int const mode : {0U, 16U, 0xFFFFFFFFU})
        EXPECT_FAILURE(access(u"C:\\f", mode), invalid_argument("Unsupported Access Mode"));
    for (unsigned int const mode : {0U, 1U, 16U})
        EXPECT_FAILURE(access(u"", mode), empty_path());
    EXPECT_EQ(calls_with_arguments(machine), lines{});
}

bool says_missing(DWORD code)
{
    return code == 2 || code == 3 || code == 53 || code == 123 || code == 161;
}

/// What a query that fails with this code comes to, about `path`.
void expect_code(DWORD code, unsigned int mode, std::u16string const &asked,
                 std::u16string const &path)
{
    bool const asks_existence = (mode & 1) != 0;
    bool answer = true;
    auto const failed = failure_of([&] { answer = access(asked, mode); });
    if (says_missing(code) && !asks_existence) {
        ASSERT_EQ(failed, not_found(u"")) << code;
    } else if (says_missing(code) || (!asks_existence && (code == 5 || code == 1920))) {
        ASSERT_EQ(failed, std::nullopt) << code;
        ASSERT_FALSE(answer) << code;
    } else {
        ASSERT_EQ(failed, translated(code, path)) << code;
    }
}

TEST_ON_MACHINE(AccessCodes, OfAFailedQuery)
{
    machine.add_file(u"C:\\f.exe").keep_journal(false);
    for (DWORD code = 0; code <= last_code; ++code) {
        sure_fault const fault = machine.fail_every_call_on("GetFileAttributesExW", code);
        for (unsigned int const mode : {1U, 2U, 8U, 14U, 15U})
            expect_code(code, mode, u"C:\\f.exe", u"C:\\f.exe");
    }
}

TEST_ON_MACHINE(AccessCodes, OfAFailedQueryOfATarget)
{
    machine.add_file(u"C:\\t").add_symbolic_link(u"C:\\l", u"t").keep_journal(false);
    for (DWORD code = 0; code <= last_code; ++code) {
        sure_fault const fault =
            machine.fail_every_call_on_name("GetFileAttributesExW", u"C:\\t", code);
        for (unsigned int const mode : {1U, 2U})
            expect_code(code, mode, u"C:\\l", uR"(\\?\C:\t)");
    }
}

TEST_ON_MACHINE(AccessCodes, ACodeOfZeroIsAFailureToo)
{
    machine.add_file(u"C:\\f");
    auto const fault = machine.fail_every_call_on("GetFileAttributesExW", 0);
    EXPECT_FAILURE(access(u"C:\\f", 1), system_error(0, u"C:\\f"));
    EXPECT_FAILURE(access(u"C:\\f", 2), system_error(0, u"C:\\f"));
}

// The pathname with its prefix is what counts.
TEST_ON_MACHINE(AccessCodes, Code3OfAPathnameBeyondEveryLimit)
{
    machine.keep_journal(false);
    sure_fault const fault = machine.fail_every_call_on("GetFileAttributesExW", 3);
    for (std::size_t const size : {32766U, 32767U, 32768U}) {
        std::u16string const path = chain_of_size(u"C:", size - 4);
        for (unsigned int const mode : {1U, 2U, 15U}) {
            if (size > 32767)
                EXPECT_FAILURE(access(path, mode), too_large(u"")) << size;
            else
                EXPECT_EQ(sign_of([&] { return access(path, mode); }, path), mode == 2 ? 'N' : 'f')
                    << size;
        }
    }
}

TEST_ON_MACHINE(AccessCodes, OfAFailedProbe)
{
    machine.add_file(u"C:\\f.exe").add_directory(u"C:\\d").keep_journal(false);
    for (DWORD code = 0; code <= last_code; ++code) {
        sure_fault const fault = machine.fail_every_call_on("CreateFileW", code);
        for (unsigned int const mode : {1U, 2U, 8U, 15U}) {
            ASSERT_FALSE(access(u"C:\\f.exe", mode)) << code;
            ASSERT_FALSE(access(u"C:\\d", mode)) << code;
        }
    }
}

TEST_ON_MACHINE(AccessCodes, OfALinkThatCannotBeRead)
{
    machine.add_file(u"C:\\t.exe").add_symbolic_link(u"C:\\l", u"t.exe");
    for (DWORD const code : {1U, 2U, 3U, 5U, 32U, 4390U}) {
        sure_fault const fault = machine.fail_every_call_on("DeviceIoControl", code);
        EXPECT_EQ(access_signs(u"C:\\l"), cannot_run) << "by its own name, code " << code;
    }
}

TEST_ON_MACHINE(AccessCodes, OfAProviderThatFails)
{
    machine.add_share(u"s", u"h").map_drive(u'X', u"s", u"h").add_file(u"\\\\s\\h\\f.exe");
    machine.deny(u"\\\\s\\h\\f.exe", right::traverse);
    EXPECT_EQ(access_signs(u"X:\\f.exe"), can_all);
    for (DWORD const code : {1U, 5U, 234U, 1200U, 1222U, 2250U}) {
        sure_fault const fault = machine.fail_every_call_on("WNetGetUniversalNameW", code);
        EXPECT_EQ(access_signs(u"X:\\f.exe"), cannot_run) << "as on a local drive, code " << code;
    }
}

TEST_ON_MACHINE(AccessCodes, OfAFailedExpansion)
{
    machine.add_file(u"C:\\f").set_current_directory(u"C:\\");
    auto const signs_of = [&](DWORD code) {
        auto const fault = machine.fail_every_call_on("GetFullPathNameW", code);
        return access_signs(u"f");
    };
    EXPECT_EQ(signs_of(5), is_denied) << "about the pathname as it was given";
    for (DWORD const code : {2U, 3U, 53U, 123U}) {
        auto const fault = machine.fail_every_call_on("GetFullPathNameW", code);
        auto const expected = translated(code, u"f");
        bool const is_answered = code == 2 || code == 3; // PathNotFound
        EXPECT_EQ(failure_of([] { EXPECT_FALSE(access(u"f", 1)); }),
                  is_answered ? std::nullopt : std::optional(expected))
            << code;
        EXPECT_FAILURE(access(u"f", 2), expected) << code;
    }
}

TEST_ON_MACHINE(AccessCodes, ACloseThatFailsChangesNothing)
{
    machine.add_file(u"C:\\t.exe").add_symbolic_link(u"C:\\l", u"t.exe");
    sure_fault const fault = machine.fail_every_call_on("CloseHandle", ERROR_INVALID_HANDLE);
    EXPECT_EQ(access_signs(u"C:\\l"), can_all);
}

TEST_ON_MACHINE(AccessCodes, EveryFailingCallReleasesItsHandles)
{
    auto const build = [](simulated_machine &fresh) {
        fresh.add_file(u"C:\\d\\t.exe").add_symbolic_link(u"C:\\d\\m", u".\\t.exe");
        fresh.add_symbolic_link(u"C:\\l", u"d\\m");
    };
    for (unsigned int const mode : {1U, 2U, 15U}) {
        int const failed = sweep(build, [&](failing_run const &run) {
            failure_of([&] { access(uR"(C:\d\..\l)", mode); });
            EXPECT_EQ(run.machine.entries(u"C:\\d"), (names{u"m", u"t.exe"}));
        });
        EXPECT_GE(failed, 10) << "mode " << mode;
    }
}

} // namespace
} // namespace fl::filesystem::tests
