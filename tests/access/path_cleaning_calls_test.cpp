// What cleaning a pathname asks the system, and what it makes of the answers: only the
// simulated machine can show that.

#include "access/path_cleaning.hpp"

#include "support/calls.hpp"

#include <algorithm>
#include <filesystem>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;
using windows::path_type_enum;

TEST_ON_MACHINE(CleanPathnameCalls, NoneForWhatIsAbsoluteOrHasABase)
{
    path_type_enum type{};
    for (wchar_t const *path : {LR"(C:\a\..\b)", LR"(\\s\h)", LR"(\\?\C:\x)", LR"(\\?\UNC\s\h)"})
        clean_pathname(path, type, {});
    clean_pathname(L"foo", type, LR"(C:\a)");
    for (wchar_t const *path : {LR"(\\s)", LR"(\\?\C:x)", LR"(\\.\COM1)"})
        EXPECT_TRUE(failure_of([&] { clean_pathname(path, type, {}); }));
    EXPECT_EQ(calls(machine), lines{});
}

TEST_ON_MACHINE(CleanPathnameCalls, TheTextsChecksAreNone)
{
    has_parent_component(LR"(C:\a\..\b)");
    is_path_clean(LR"(C:\a\..\b)", 9);
    remove_dot_components(LR"(\\?\C:\a\.\b)", windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE);
    EXPECT_EQ(calls(machine), lines{});
}

TEST_ON_MACHINE(CleanPathnameCalls, OneForEachExpansion)
{
    machine.add_directory(u"C:\\work").set_current_directory(u"C:\\work");
    struct
    {
        wchar_t const *path;
        wchar_t const *base;
        std::string call;
        char const *why;
    } const cases[] = {
        {L"C:", L"", "GetFullPathNameW(C:)", "the drive alone"},
        {L"C:foo", L"", "GetFullPathNameW(C:)", "the drive alone"},
        {LR"(\foo\.\x)", L"", R"(GetFullPathNameW(\foo\.\x))", "all of it"},
        {L"foo", L"", "GetCurrentDirectoryW()", "no base"},
        {L"foo", L"C:b", "GetFullPathNameW(C:)", "the base's drive"},
    };
    path_type_enum type{};
    for (auto const &row : cases) {
        machine.clear_journal();
        clean_pathname(row.path, type, row.base);
        EXPECT_EQ(calls(machine), lines{row.call}) << row.why;
    }
}

TEST_ON_MACHINE(CleanPathnameCalls, AFailedExpansionNamesTheTextOfTheCall)
{
    sure_fault const fault = machine.fail_every_call_on("GetFullPathNameW", 5);
    path_type_enum type{};
    EXPECT_FAILURE(clean_pathname(L"C:foo", type, {}), denied(u"C:"));
    EXPECT_FAILURE(clean_pathname(LR"(\foo)", type, {}), denied(u"\\foo"));
    EXPECT_FAILURE(clean_pathname(L"foo", type, L"C:b"), denied(u"C:"));
}

TEST_ON_MACHINE(CleanPathnameCalls, ARootedPathnameGoesByTheTypeOfItsExpansion)
{
    constexpr auto rooted = windows::PATH_TYPE_ROOTED;
    struct
    {
        wchar_t const *expansion;
        wchar_t const *expected; // null: rejected
        path_type_enum type;
        char const *why;
    } const cases[] = {
        {LR"(C:\x)", LR"(\\?\C:\x)", windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE, "a drive"},
        {LR"(\\s\h\x)", LR"(\\?\UNC\s\h\x)", windows::PATH_TYPE_LONG_UNC, "a share"},
        {LR"(\\?\C:\x)", LR"(\\?\C:\x)", rooted, "a long one stays, and the type is not told"},
        {LR"(\\?\UNC\s\h\x)", LR"(\\?\UNC\s\h\x)", rooted, "the same for a share"},
        {L"C:x", nullptr, rooted, "nothing absolute"},
        {LR"(\x)", nullptr, rooted, "nothing absolute"},
        {L"x", nullptr, rooted, "nothing absolute"},
        {LR"(\\s)", nullptr, rooted, "no share"},
        {LR"(\\.\COM1)", nullptr, rooted, "a device"},
        {LR"(\\?\C:x)", nullptr, rooted, "nothing absolute"},
    };
    for (auto const &row : cases) {
        simulated_machine fresh;
        auto const hook = answering(fresh, row.expansion);
        path_type_enum type{};
        std::wstring cleaned;
        auto const thrown = failure_of([&] { cleaned = clean_pathname(LR"(\x)", type, {}); });
        EXPECT_EQ(cleaned, row.expected == nullptr ? L"" : row.expected) << row.why;
        EXPECT_EQ(type, row.type) << row.why;
        EXPECT_EQ(thrown,
                  row.expected == nullptr ? std::optional(bad_path_type(uR"(\x)")) : std::nullopt)
            << row.why;
    }
}

TEST_ON_MACHINE(CleanPathnameCalls, AnExpandedBaseIsNotClassifiedAgain)
{
    path_type_enum type{};
    auto const hook = answering(machine, LR"(\\s\h)");
    EXPECT_EQ(clean_pathname(L"C:", type, {}), LR"(\\?\\\s\h)");
    EXPECT_EQ(type, windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE);
    EXPECT_EQ(clean_pathname(L"x", type, L"C:"), LR"(\\?\\\s\h\x)");
    EXPECT_EQ(type, windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE);
}

TEST_ON_MACHINE(CleanPathnameCalls, ALongExpansionTakesTwoCalls)
{
    path_type_enum type{};
    for (std::size_t const size : {1021U, 1022U, 1023U, 30000U}) {
        machine.clear_journal();
        std::wstring const path = of_size(L"\\", size);
        EXPECT_EQ(clean_pathname(path, type, {}), LR"(\\?\C:)" + path);
        EXPECT_EQ(machine.calls_of("GetFullPathNameW"), size + 2 < 1024 ? 1 : 2) << size;
    }
}

TEST_ON_MACHINE(CleanPathnameCalls, AnExpansionThatGrowsTwiceIsAFailure)
{
    auto const hook = machine.on_full_path_name(
        [](DWORD room, wchar_t *) { return std::optional<DWORD>(room + 1); });
    path_type_enum type{};
    EXPECT_FAILURE(clean_pathname(LR"(\x)", type, {}),
                   system_error(simulation::stale_last_error, u"\\x"))
        << "no call failed, so that the code says nothing";
    EXPECT_EQ(machine.calls_of("GetFullPathNameW"), 2);
}

TEST(CurrentPathWideCalls, AFailureIsOneOfTheStandardLibrary)
{
    for (DWORD const code : {5U, 0U}) {
        simulated_machine machine;
        sure_fault const fault = machine.fail_every_call_on("GetCurrentDirectoryW", code);
        path_type_enum type{};
        try {
            clean_pathname(L"foo", type, {});
            FAIL() << "nothing was thrown";
        } catch (std::filesystem::filesystem_error const &error) {
            int const told = code == 0 ? ERROR_GEN_FAILURE : static_cast<int>(code);
            EXPECT_EQ(error.code(), std::error_code(told, std::system_category()));
            EXPECT_NE(std::string(error.what()).find("current_path()"), std::string::npos);
            EXPECT_EQ(error.path1(), std::filesystem::path());
        }
    }
}

} // namespace
} // namespace fl::filesystem::detail
