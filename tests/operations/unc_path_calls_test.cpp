// Universal names on a machine with a mapped drive, and the calls to the provider.

#include <fl/filesystem/operations.hpp>

#include "support/calls.hpp"
#include "support/translation.hpp"

#include <cerrno>

namespace fl::filesystem::tests {
namespace {

using sizes = std::vector<std::uint64_t>;

/// With a share that is drive X:.
class GetUncPathCalls : public on_machine
{
protected:
    GetUncPathCalls()
    {
        machine.add_share(u"server", u"share").map_drive(u'X', u"server", u"share");
        machine.add_file(uR"(\\server\share\file)", "content");
    }
};

/// What the provider was told of the room in each call, and that the level is right.
sizes rooms_told(simulated_machine const &machine, char16_t const *form)
{
    sizes told;
    for (auto const &entry : entries_of(machine, "WNetGetUniversalNameW")) {
        EXPECT_EQ(entry.text, form);
        EXPECT_EQ(entry.flags, 1U) << "the level of universal names";
        told.push_back(entry.room);
    }
    return told;
}

/// What the provider needs for a name, in bytes: the record with the text behind it.
std::uint64_t bytes_for(std::u16string_view name)
{
    return sizeof(void *) + (name.size() + 1) * sizeof(wchar_t);
}

TEST_F(GetUncPathCalls, AskForTheSizeAndThenForTheName)
{
    for (bool const tolerant : {false, true}) {
        machine.clear_journal();
        EXPECT_EQ(get_unc_path(u"X:/file", tolerant), uR"(\\server\share\file)");
        EXPECT_EQ(rooms_told(machine, uR"(X:\file)"),
                  (sizes{0, bytes_for(uR"(\\server\share\file)")}));
    }
}

constexpr text_row<char16_t> mapped_cases[] = {
    {uR"(X:\file)", uR"(\\server\share\file)", "a file"},
    {uR"(X:\)", uR"(\\server\share\)", "the root"},
    {uR"(X:\missing\file)", uR"(\\server\share\missing\file)", "nobody looks whether it is there"},
    {uR"(x:\FILE)", uR"(\\server\share\FILE)", "as it was typed"},
    {uR"(\\?\X:\file)", uR"(\\server\share\file)", "native form has no long prefix"},
    {uR"(X:\a\.\file)", uR"(\\server\share\a\file)", "cleaned"},
};

TEST_F(GetUncPathCalls, NameWhatIsOnAMappedDrive)
{
    for (bool const tolerant : {false, true}) {
        expect_rows(mapped_cases, [&](auto text) { return get_unc_path(text, tolerant); });
        expect_rows(mapped_cases,
                    [&](auto text) { return get_unc_path(upath(text), tolerant).native(); });
    }
}

TEST_F(GetUncPathCalls, RelativeTextsGoByTheCurrentDirectory)
{
    machine.set_current_directory(uR"(X:\)");
    EXPECT_EQ(get_unc_path(u"file", false), uR"(\\server\share\file)");
}

// The provider fills the room that it is given, to the last byte.
TEST_F(GetUncPathCalls, NamesOfEveryLengthAreWhole)
{
    for (std::u16string name = u"a"; name.size() <= 64; name += u'a') {
        EXPECT_EQ(get_unc_path(u"X:\\" + name, false), u"\\\\server\\share\\" + name);
    }
}

// With a long prefix a pathname is on no drive for the provider.
TEST_F(GetUncPathCalls, NoneBehindALongPrefix)
{
    std::u16string const name(200, u'n');
    for (std::size_t const size : {259U, 260U}) {
        std::u16string const text = of_size((u"X:\\" + name + u'\\').c_str(), size);
        std::u16string const expected =
            size < 260 ? uR"(\\server\share)" + text.substr(2) : uR"(\\?\)" + text;
        EXPECT_EQ(get_unc_path(text, true), expected) << size;
    }
}

TEST_F(GetUncPathCalls, OneForALocalPathname)
{
    EXPECT_EQ(get_unc_path(u"file", true), uR"(C:\file)");
    EXPECT_EQ(rooms_told(machine, uR"(C:\file)"), sizes{0});
    EXPECT_FAILURE(get_unc_path(u"file", false), system_error(0, uR"(C:\file)"));
    EXPECT_EQ(rooms_told(machine, uR"(C:\file)"), (sizes{0, 0}));
}

// What the provider answers is told to nobody.
TEST_F(GetUncPathCalls, AnyAnswerButMoreDataMeansNoNetwork)
{
    for (DWORD const code : {5U, 8U, 487U, 1200U, 1203U, 1208U, 1222U, 2250U}) {
        machine.clear_journal();
        sure_fault const fault = machine.fail_every_call_on("WNetGetUniversalNameW", code);
        EXPECT_EQ(get_unc_path(uR"(X:\file)", true), uR"(X:\file)") << code;
        EXPECT_FAILURE(get_unc_path(uR"(X:\file)", false), system_error(0, uR"(X:\file)")) << code;
        EXPECT_EQ(rooms_told(machine, uR"(X:\file)"), (sizes{0, 0}));
    }
}

TEST_F(GetUncPathCalls, AProviderThatSucceedsWithoutANameLeavesTheText)
{
    machine.forget_universal_names();
    for (bool const tolerant : {false, true})
        EXPECT_EQ(get_unc_path(uR"(X:\file)", tolerant), uR"(X:\file)");
}

TEST_F(GetUncPathCalls, AProviderThatHasNothingToSayMeansNoNetwork)
{
    sure_fault const fault = machine.fail_every_call_on("WNetGetUniversalNameW", NO_ERROR);
    EXPECT_EQ(get_unc_path(uR"(X:\file)", true), uR"(X:\file)");
    EXPECT_FAILURE(get_unc_path(uR"(X:\file)", false), system_error(0, uR"(X:\file)"));
    EXPECT_EQ(rooms_told(machine, uR"(X:\file)"), (sizes{0, 0})) << "no second call";
}

TEST_F(GetUncPathCalls, ASecondCallThatFailsIsNoFailure)
{
    for (DWORD const code : {5U, 234U, 1203U, 2250U}) {
        for (bool const tolerant : {false, true}) {
            machine.clear_journal();
            sure_fault const fault = machine.fail_call("WNetGetUniversalNameW", 2, code);
            EXPECT_EQ(get_unc_path(uR"(X:\.\file)", tolerant), uR"(X:\file)") << code;
            EXPECT_EQ(machine.calls_of("WNetGetUniversalNameW"), 2) << code;
            EXPECT_EQ(get_unc_path(upath(uR"(X:\.\file)"), tolerant).native(),
                      uR"(\\server\share\file)")
                << "the next time";
        }
    }
}

TEST_F(GetUncPathCalls, ADriveThatGoesBetweenTheCallsIsNoFailure)
{
    sure_fault const others =
        machine.before_call("WNetGetUniversalNameW", 2, [&] { machine.remove_drive(u'X'); });
    EXPECT_EQ(get_unc_path(uR"(X:\file)", false), uR"(X:\file)");
}

TEST_F(GetUncPathCalls, ReportTheCodeOfTheCLibrary)
{
    for (int const number : {2, 5, 7}) {
        sure_fault const provider =
            machine.before_call("WNetGetUniversalNameW", 1, [&] { errno = number; });
        EXPECT_FAILURE(get_unc_path(u"a", false),
                       translated(static_cast<DWORD>(number), uR"(C:\a)"));
    }
}

TEST_F(GetUncPathCalls, ForgetAnEarlierCodeOfTheCLibrary)
{
    errno = 13;
    EXPECT_FAILURE(get_unc_path(u"a", false), system_error(0, uR"(C:\a)"));
    auto const before = machine.before_call("GetFullPathNameW", 1, [] { errno = 13; });
    EXPECT_FAILURE(get_unc_path(u"a", false), system_error(0, uR"(C:\a)"))
        << "also one of the calls ahead";
}

TEST_F(GetUncPathCalls, FailuresAheadOfTheProviderPass)
{
    auto const fault = machine.fail_every_call_on("GetFullPathNameW", 5);
    for (bool const tolerant : {false, true})
        EXPECT_FAILURE(get_unc_path(uR"(X:\file)", tolerant), denied(uR"(X:\file)"));
    EXPECT_EQ(machine.calls_of("WNetGetUniversalNameW"), 0);
}

} // namespace
} // namespace fl::filesystem::tests
