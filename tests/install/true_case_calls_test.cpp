// The true case of names that can't be listed, and what searching for them leaves behind.

#include "install/true_case.hpp"

#include "support/calls.hpp"
#include "support/translation.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

TEST_ON_MACHINE(RestoreTrueCaseCalls, SearchEachLevelAndHoldOneSearch)
{
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
    EXPECT_EQ(most, 2) << "the new one and the one before it";
}

TEST_ON_MACHINE(RestoreTrueCaseCalls, NoneForARoot)
{
    EXPECT_EQ(restore_true_case(LR"(d:\)"), LR"(\\?\D:\)");
    EXPECT_EQ(machine.journal().size(), 0U) << "not even whether there is such a drive";
}

// The share of a server is a level that is searched like any other, and no disk lists it.
constexpr text_row<wchar_t> text_cases[] = {
    {LR"(\\Server\Share\dir\sub)", LR"(\\?\UNC\Server\share\Dir\Sub)", "a share in lower case"},
    {LR"(\\?\UNC\Server\SHARE\dir)", LR"(\\?\UNC\Server\share\Dir)", "with a long prefix"},
    {LR"(\\?\unc\server\share\dir)", LR"(\\?\Unc\server\share\Dir)",
     "where a drive's letter would stand"},
    {LR"(c:\dir\)", LR"(\\?\C:\Dir)", "a backslash at the end isn't"},
    {LR"(\\?\c:\dir\sub)", LR"(\\?\C:\Dir\Sub)", "a drive with a long prefix"},
};

TEST_ON_MACHINE(RestoreTrueCaseCalls, Texts)
{
    for (auto const &row : text_cases) {
        simulated_machine fresh;
        fresh.add_directory(uR"(C:\Dir\Sub)");
        fresh.add_share(u"server", u"share").add_directory(uR"(\\server\share\Dir\Sub)");
        std::wstring result;
        EXPECT_EQ(failure_of([&] { result = restore_true_case(row.text); }), std::nullopt)
            << row.why;
        EXPECT_EQ(result, row.expected) << row.why;
        EXPECT_EQ(fresh.find_handles(), 0) << row.why;
    }
}

TEST_ON_MACHINE(RestoreTrueCaseCalls, AShareAloneIsSearchedAsTheLastLevel)
{
    for (DWORD const code : {3U, 5U}) {
        simulated_machine fresh;
        auto const fault = fresh.fail_call("FindFirstFileExW", 1, code);
        EXPECT_EQ(restore_true_case(LR"(\\Server\SHARE)"), LR"(\\?\UNC\Server\share)") << code;
    }
    auto const fault = machine.fail_call("FindFirstFileExW", 1, 53);
    EXPECT_FAILURE(restore_true_case(LR"(\\Server\SHARE)"),
                   system_error(53, uR"(\\?\UNC\Server\SHARE)"));
}

TEST_ON_MACHINE(RestoreTrueCaseCalls, AnEarlierLevelThatCantBeListedIsInLowerCaseWhateverTheCode)
{
    for (DWORD const code : {2U, 3U, 5U, 18U, 53U, 123U, 1117U}) {
        simulated_machine fresh;
        fresh.add_directory(uR"(C:\Apps\Tool\Sub)");
        sure_fault const fault = fresh.fail_call("FindFirstFileExW", 2, code);
        EXPECT_EQ(restore_true_case(LR"(C:\APPS\TOOL\SUB)"), LR"(\\?\C:\Apps\tool\Sub)") << code;
        EXPECT_EQ(fresh.find_handles(), 0) << code;
    }
}

TEST_ON_MACHINE(RestoreTrueCaseCalls, TheLastLevelIsInLowerCaseOnlyForTwoCodes)
{
    for (DWORD const code : {3U, 5U, 2U, 18U, 206U, 1117U, 1920U}) {
        simulated_machine fresh;
        fresh.add_directory(uR"(C:\Apps\Tool)");
        sure_fault const fault = fresh.fail_call("FindFirstFileExW", 2, code);
        std::wstring result;
        bool const is_lowered = code == 3 || code == 5;
        EXPECT_EQ(failure_of([&] { result = restore_true_case(LR"(C:\APPS\TOOL)"); }),
                  is_lowered ? std::nullopt
                             : std::optional(translated(code, uR"(\\?\C:\APPS\TOOL)")))
            << code;
        EXPECT_EQ(result, is_lowered ? LR"(\\?\C:\Apps\tool)" : L"") << code;
        EXPECT_EQ(fresh.find_handles(), 0) << code;
    }
}

TEST_ON_MACHINE(RestoreTrueCaseCalls, ADeniedListingHidesTheNamesInIt)
{
    machine.add_directory(uR"(C:\Apps\Tool\Sub)").deny(u"C:\\Apps", right::list);
    EXPECT_EQ(restore_true_case(LR"(C:\APPS\TOOL\SUB)"), LR"(\\?\C:\Apps\tool\Sub)");
    EXPECT_EQ(restore_true_case(LR"(C:\APPS\TOOL)"), LR"(\\?\C:\Apps\tool)");
}

TEST_ON_MACHINE(RestoreTrueCaseCalls, NoLevelAtAllCanBeListed)
{
    auto const fault = machine.fail_every_call_on("FindFirstFileExW", 5);
    EXPECT_EQ(restore_true_case(LR"(c:\A\B-1_\C.D)"), LR"(\\?\C:\a\b-1_\c.d)");
    EXPECT_EQ(restore_true_case(LR"(C:\A\\B)"), LR"(\\?\C:\a\\b)") << "an empty one is kept";
    EXPECT_EQ(machine.calls_of("FindClose"), 0) << "nothing was opened";
}

TEST_ON_MACHINE(RestoreTrueCaseCalls, NamesOfImpossibleLengthStayAsTheyAre)
{
    for (std::size_t const size : {1U, 254U, 255U, 256U, 257U}) {
        simulated_machine fresh;
        auto const fault = fresh.fail_every_call_on("FindFirstFileExW", 5);
        std::wstring const name(size, L'A');
        std::wstring const shown(size, size <= 255 ? L'a' : L'A');
        EXPECT_EQ(restore_true_case(LR"(C:\)" + name), LR"(\\?\C:\)" + shown) << size;
        EXPECT_EQ(restore_true_case(LR"(C:\)" + name + LR"(\X)"), LR"(\\?\C:\)" + shown + LR"(\x)")
            << size;
    }
}

TEST_ON_MACHINE(RestoreTrueCaseCalls, AResultMayBeLongerThanTheText)
{
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

TEST_ON_MACHINE(RestoreTrueCaseCalls, ASearchThatCantBeClosedNamesNothing)
{
    for (DWORD const code : {2U, 5U, 6U}) {
        for (int const nth : {1, 2, 3}) {
            simulated_machine fresh;
            fresh.add_directory(uR"(C:\Apps\Tool\Sub)");
            sure_fault const fault = fresh.fail_call("FindClose", nth, code);
            EXPECT_FAILURE(restore_true_case(LR"(C:\apps\tool\sub)"), translated(code, u"")) << nth;
            EXPECT_EQ(fresh.find_handles(), 0) << nth;
        }
    }
}

TEST_ON_MACHINE(RestoreTrueCaseCalls, EveryFailingCallReleasesItsSearches)
{
    sweep(
        [](simulated_machine &fresh) { fresh.add_directory(uR"(C:\Apps\Tool\Sub)"); },
        [](failing_run const &) { failure_of([] { restore_true_case(LR"(C:\apps\tool\sub)"); }); });
}

} // namespace
} // namespace fl::filesystem::detail
