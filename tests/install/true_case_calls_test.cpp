// The true case of names that can't be listed, and what searching for them leaves behind.

#include "install/true_case.hpp"

#include "support/calls.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

TEST(RestoreTrueCaseCalls, SearchEachLevelAndHoldOneSearch)
{
    simulated_machine machine;
    machine.add_directory(uR"(C:\Apps\Tool\Sub)");
    int most = 0;
    auto const watch = machine.before_call("FindClose", 2, [&] { most = machine.find_handles(); });
    EXPECT_EQ(restore_true_case(LR"(c:\aPPS\tOOL\sUB)"), LR"(\\?\C:\Apps\Tool\Sub)");
    std::vector<std::pair<std::string, std::u16string>> made;
    for (auto const &entry : machine.journal()) {
        made.emplace_back(entry.function, entry.text);
        EXPECT_EQ(entry.flags, 0U);
    }
    ASSERT_EQ(made.size(), 6U);
    EXPECT_EQ(made[0], std::pair(std::string("FindFirstFileExW"), units(LR"(\\?\c:\aPPS)")));
    EXPECT_EQ(made[1], std::pair(std::string("FindFirstFileExW"), units(LR"(\\?\c:\aPPS\tOOL)")));
    EXPECT_EQ(made[2].first, "FindClose");
    EXPECT_EQ(made[3],
              std::pair(std::string("FindFirstFileExW"), units(LR"(\\?\c:\aPPS\tOOL\sUB)")));
    EXPECT_EQ(made[4].first, "FindClose");
    EXPECT_EQ(made[5].first, "FindClose");
    EXPECT_EQ(machine.find_handles(), 0);
    EXPECT_EQ(most, 2) << "the new one and the one before it";
}

TEST(RestoreTrueCaseCalls, NoneForARoot)
{
    simulated_machine machine;
    EXPECT_EQ(restore_true_case(LR"(d:\)"), LR"(\\?\D:\)");
    EXPECT_EQ(machine.journal().size(), 0U) << "not even whether there is such a drive";
}

struct text_case
{
    wchar_t const *text, *expected;
    char const *why;
};

// The share of a server is a level that is searched like any other, and no disk lists it.
constexpr text_case text_cases[] = {
    {LR"(\\Server\Share\dir\sub)", LR"(\\?\UNC\Server\share\Dir\Sub)", "a share in lower case"},
    {LR"(\\?\UNC\Server\SHARE\dir)", LR"(\\?\UNC\Server\share\Dir)", "with a long prefix"},
    {LR"(\\?\unc\server\share\dir)", LR"(\\?\Unc\server\share\Dir)",
     "where a drive's letter would stand"},
    {LR"(c:\dir\)", LR"(\\?\C:\Dir)", "a backslash at the end isn't"},
    {LR"(\\?\c:\dir\sub)", LR"(\\?\C:\Dir\Sub)", "a drive with a long prefix"},
};

TEST(RestoreTrueCaseCalls, Texts)
{
    for (text_case const &row : text_cases) {
        simulated_machine machine;
        machine.add_directory(uR"(C:\Dir\Sub)");
        machine.add_share(u"server", u"share").add_directory(uR"(\\server\share\Dir\Sub)");
        std::wstring result;
        EXPECT_EQ(failure_of([&] { result = restore_true_case(row.text); }), std::nullopt)
            << row.why;
        EXPECT_EQ(result, row.expected) << row.why;
        EXPECT_EQ(machine.find_handles(), 0) << row.why;
    }
}

TEST(RestoreTrueCaseCalls, AShareAloneIsSearchedAsTheLastLevel)
{
    for (DWORD const code : {3U, 5U}) {
        simulated_machine machine;
        auto const fault = machine.fail_call("FindFirstFileExW", 1, code);
        EXPECT_EQ(restore_true_case(LR"(\\Server\SHARE)"), LR"(\\?\UNC\Server\share)") << code;
    }
    simulated_machine machine;
    auto const fault = machine.fail_call("FindFirstFileExW", 1, 53);
    EXPECT_EQ(failure_of([] { restore_true_case(LR"(\\Server\SHARE)"); }),
              system_error(53, uR"(\\?\UNC\Server\SHARE)"));
}

TEST(RestoreTrueCaseCalls, AnEarlierLevelThatCantBeListedIsInLowerCaseWhateverTheCode)
{
    for (DWORD const code : {2U, 3U, 5U, 18U, 53U, 123U, 1117U}) {
        simulated_machine machine;
        machine.add_directory(uR"(C:\Apps\Tool\Sub)");
        auto const fault = machine.fail_call("FindFirstFileExW", 2, code);
        EXPECT_EQ(restore_true_case(LR"(C:\APPS\TOOL\SUB)"), LR"(\\?\C:\Apps\tool\Sub)") << code;
        EXPECT_TRUE(fault.fired());
        EXPECT_EQ(machine.find_handles(), 0) << code;
    }
}

TEST(RestoreTrueCaseCalls, TheLastLevelIsInLowerCaseOnlyForTwoCodes)
{
    struct
    {
        DWORD code;
        std::optional<test_support::failure> expected;
    } const cases[] = {
        {3, std::nullopt},
        {5, std::nullopt},
        {2, not_found(uR"(\\?\C:\APPS\TOOL)")},
        {18, system_error(18, uR"(\\?\C:\APPS\TOOL)")},
        {1920, denied(uR"(\\?\C:\APPS\TOOL)")},
        {206, too_large(u"")},
        {1117, system_error(1117, uR"(\\?\C:\APPS\TOOL)")},
    };
    for (auto const &row : cases) {
        simulated_machine machine;
        machine.add_directory(uR"(C:\Apps\Tool)");
        auto const fault = machine.fail_call("FindFirstFileExW", 2, row.code);
        std::wstring result;
        EXPECT_EQ(failure_of([&] { result = restore_true_case(LR"(C:\APPS\TOOL)"); }), row.expected)
            << row.code;
        EXPECT_EQ(result, row.expected ? L"" : LR"(\\?\C:\Apps\tool)") << row.code;
        EXPECT_TRUE(fault.fired());
        EXPECT_EQ(machine.find_handles(), 0) << row.code;
    }
}

TEST(RestoreTrueCaseCalls, ADeniedListingHidesTheNamesInIt)
{
    simulated_machine machine;
    machine.add_directory(uR"(C:\Apps\Tool\Sub)").deny(u"C:\\Apps", right::list);
    EXPECT_EQ(restore_true_case(LR"(C:\APPS\TOOL\SUB)"), LR"(\\?\C:\Apps\tool\Sub)");
    EXPECT_EQ(restore_true_case(LR"(C:\APPS\TOOL)"), LR"(\\?\C:\Apps\tool)");
}

TEST(RestoreTrueCaseCalls, NoLevelAtAllCanBeListed)
{
    simulated_machine machine;
    auto const fault = machine.fail_every_call_on("FindFirstFileExW", 5);
    EXPECT_EQ(restore_true_case(LR"(c:\A\B-1_\C.D)"), LR"(\\?\C:\a\b-1_\c.d)");
    EXPECT_EQ(restore_true_case(LR"(C:\A\\B)"), LR"(\\?\C:\a\\b)") << "an empty one is kept";
    EXPECT_EQ(machine.calls_of("FindClose"), 0) << "nothing was opened";
}

TEST(RestoreTrueCaseCalls, NamesOfImpossibleLengthStayAsTheyAre)
{
    for (std::size_t const size : {1U, 254U, 255U, 256U, 257U}) {
        simulated_machine machine;
        auto const fault = machine.fail_every_call_on("FindFirstFileExW", 5);
        std::wstring const name(size, L'A');
        std::wstring const shown(size, size <= 255 ? L'a' : L'A');
        EXPECT_EQ(restore_true_case(LR"(C:\)" + name), LR"(\\?\C:\)" + shown) << size;
        EXPECT_EQ(restore_true_case(LR"(C:\)" + name + LR"(\X)"), LR"(\\?\C:\)" + shown + LR"(\x)")
            << size;
    }
}

TEST(RestoreTrueCaseCalls, AResultMayBeLongerThanTheText)
{
    simulated_machine machine;
    std::u16string const deep(200, u'D');
    std::u16string stored = u"C:";
    for (int i = 0; i < 10; ++i)
        stored += u'\\' + deep;
    machine.add_directory(stored);
    std::wstring typed = wide(stored);
    for (wchar_t &unit : typed)
        unit = unit == L'D' ? L'd' : unit;
    EXPECT_EQ(restore_true_case(typed), LR"(\\?\)" + wide(stored));
}

TEST(RestoreTrueCaseCalls, ASearchThatCantBeClosedNamesNothing)
{
    struct
    {
        DWORD code;
        test_support::failure expected;
    } const cases[] = {{6, system_error(6, u"")}, {5, denied(u"")}, {2, not_found(u"")}};
    for (auto const &row : cases) {
        for (int const nth : {1, 2, 3}) {
            simulated_machine machine;
            machine.add_directory(uR"(C:\Apps\Tool\Sub)");
            auto const fault = machine.fail_call("FindClose", nth, row.code);
            EXPECT_EQ(failure_of([] { restore_true_case(LR"(C:\apps\tool\sub)"); }), row.expected)
                << nth;
            EXPECT_TRUE(fault.fired()) << nth;
            EXPECT_EQ(machine.find_handles(), 0) << nth;
        }
    }
}

TEST(RestoreTrueCaseCalls, EveryFailingCallReleasesItsSearches)
{
    for (int nth = 1;; ++nth) {
        ASSERT_LT(nth, 100) << "the operation never ends";
        simulated_machine machine;
        machine.add_directory(uR"(C:\Apps\Tool\Sub)");
        auto const fault = machine.fail_call(nth, 1117);
        failure_of([] { restore_true_case(LR"(C:\apps\tool\sub)"); });
        EXPECT_EQ(machine.find_handles(), 0) << "failing call " << nth;
        if (!fault.fired())
            break;
    }
}

} // namespace
} // namespace fl::filesystem::detail
