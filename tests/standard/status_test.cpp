// What the standard facility makes of names that tell little: files that nobody may open,
// reparse points that change, and failures without a reason; and of a drive in the middle of a
// text.

#include "standard/filesystem.hpp"

#include "standard/error_codes.hpp"
#include "support/calls.hpp"

#include <filesystem>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;
using std::filesystem::file_type;
using std::filesystem::perms;

struct answer
{
    file_type type;
    perms permissions;
    int code;

    friend bool operator==(answer const &, answer const &) = default;
};

constexpr perms unknown = perms::unknown;
constexpr perms write = perms::owner_write | perms::group_write | perms::others_write;

using query = std::filesystem::file_status (*)(std::wstring const &, std::error_code &);

answer answer_of(query ask, std::wstring const &text)
{
    std::error_code ec = stale;
    std::filesystem::file_status const status = ask(text, ec);
    return {status.type(), status.permissions(), ec.value()};
}

std::vector<std::string> functions_called(simulated_machine const &machine)
{
    std::vector<std::string> functions;
    for (auto const &entry : machine.journal())
        functions.push_back(entry.function);
    return functions;
}

/// Files in `C:\d` that refuse every opening, as the paging file does.
class refusing_files
{
public:
    refusing_files()
    {
        machine.add_file(uR"(C:\d\plain)").add_file(uR"(C:\d\fixed)").add_directory(uR"(C:\d\dir)");
        machine.set_attributes(uR"(C:\d\fixed)", FILE_ATTRIBUTE_READONLY);
        machine.add_symbolic_link(uR"(C:\d\link)", u"plain")
            .add_junction(uR"(C:\d\way)", uR"(C:\)");
        machine.add_reparse_point(uR"(C:\d\other)", 0x80000ABC, "x");
        machine.add_file(uR"(C:\d\a)");
    }

    simulated_machine machine;

private:
    simulation::fault attributes_ = machine.fail_every_call_on("GetFileAttributesExW", 32);
    simulation::fault opening_ = machine.fail_every_call_on("CreateFileW", 32);
};

struct refused_case
{
    wchar_t const *text;
    answer status, symlink_status;
    char const *why;
};

TEST(StandardStatusOfRefusingFiles, IsWhatTheirDirectorySays)
{
    constexpr answer in_use{file_type::none, unknown, 32};
    constexpr answer file{file_type::regular, perms::all, 0};
    constexpr answer fixed{file_type::regular, perms::all & ~write, 0};
    constexpr answer directory{file_type::directory, perms::all, 0};
    constexpr answer link{file_type::symlink, perms::all, 0};
    constexpr answer junction{standard::junction, perms::all, 0};
    refused_case const cases[] = {
        {LR"(C:\d\plain)", file, file, "a file"},
        {LR"(\\?\C:\d\plain)", file, file, "the mark in a long prefix is no pattern"},
        {LR"(C:\d\fixed)", fixed, fixed, "a read-only one"},
        {LR"(C:\d\dir)", directory, directory, "a directory"},
        {LR"(C:\d\link)", in_use, link, "what a link leads to can't be opened"},
        {LR"(C:\d\way)", in_use, junction, "nor what a junction does"},
        {LR"(C:\d\other)", in_use, file, "another reparse point is what it is"},
        {LR"(C:\d\missing)", in_use, in_use, "the directory knows no such name"},
        {LR"(C:\d\plai?)", in_use, in_use, "a pattern is no name"},
        {LR"(C:\d\*)", in_use, in_use, "a pattern is no name"},
        {LR"(?:\d\plain)", in_use, in_use, "a pattern is no name, wherever it stands"},
        {L"*", in_use, in_use, "a pattern is no name, wherever it stands"},
        {LR"(\\?\C:\d\?)", in_use, in_use, "a pattern is one behind a long prefix, too"},
    };
    refusing_files refusing;
    for (refused_case const &row : cases) {
        EXPECT_EQ(answer_of(standard::status, row.text), row.status) << row.why;
        EXPECT_EQ(answer_of(standard::symlink_status, row.text), row.symlink_status) << row.why;
        EXPECT_EQ(refusing.machine.find_handles(), 0) << row.why;
    }
}

TEST(StandardStatusOfRefusingFiles, AsksTheDirectoryForNoOtherCode)
{
    for (DWORD const code : {1U, 5U, 31U, 33U, 1117U}) {
        simulated_machine machine;
        machine.add_file(u"C:\\f");
        auto const fault = machine.fail_every_call_on("GetFileAttributesExW", code);
        answer const expected{file_type::none, unknown, static_cast<int>(code)};
        EXPECT_EQ(answer_of(standard::status, L"C:\\f"), expected);
        EXPECT_EQ(answer_of(standard::symlink_status, L"C:\\f"), expected);
        EXPECT_EQ(machine.calls_of("FindFirstFileW"), 0) << code;
    }
}

TEST(StandardStatusOfRefusingFiles, AFailedSearchLeavesTheCode)
{
    refusing_files refusing;
    auto const fault = refusing.machine.fail_every_call_on("FindFirstFileW", 5);
    answer const expected{file_type::none, unknown, 32};
    EXPECT_EQ(answer_of(standard::status, LR"(C:\d\plain)"), expected);
    EXPECT_EQ(answer_of(standard::symlink_status, LR"(C:\d\plain)"), expected);
    EXPECT_TRUE(fault.fired());
}

TEST_ON_MACHINE(StandardSymlinkStatus, OpensReparsePointsOnly)
{
    using names = std::vector<std::string>;
    machine.add_file(u"C:\\f").add_symbolic_link(u"C:\\l", u"f");
    answer_of(standard::symlink_status, L"C:\\f");
    EXPECT_EQ(functions_called(machine), names{"GetFileAttributesExW"});
    machine.clear_journal();
    answer_of(standard::symlink_status, L"C:\\l");
    EXPECT_EQ(functions_called(machine), (names{"GetFileAttributesExW", "CreateFileW",
                                                "GetFileInformationByHandleEx", "CloseHandle"}));
}

// Between the two calls: then the name is what the second one saw, tag and all.
TEST_ON_MACHINE(StandardSymlinkStatus, OfALinkThatIsReplacedIsOfOneMoment)
{
    machine.add_symbolic_link(u"C:\\l", u"f");
    {
        sure_fault const swapped = machine.before_call("CreateFileW", 1, [&] {
            machine.remove(u"C:\\l").add_directory(u"C:\\l");
            machine.set_attributes(u"C:\\l", FILE_ATTRIBUTE_READONLY);
        });
        EXPECT_EQ(answer_of(standard::symlink_status, L"C:\\l"),
                  (answer{file_type::directory, perms::all & ~write, 0}));
    }
    machine.remove(u"C:\\l").add_symbolic_link(u"C:\\l", u"f");
    sure_fault const swapped = machine.before_call("GetFileInformationByHandleEx", 1, [&] {
        machine.set_attributes(u"C:\\l", FILE_ATTRIBUTE_READONLY);
    });
    EXPECT_EQ(answer_of(standard::symlink_status, L"C:\\l"),
              (answer{file_type::symlink, perms::all & ~write, 0}));
}

TEST_ON_MACHINE(StandardStatus, OfALinkHasThePermissionsOfWhatItLeadsTo)
{
    machine.add_file(u"C:\\f").add_symbolic_link(u"C:\\l", u"f");
    EXPECT_EQ(answer_of(standard::status, L"C:\\l"), (answer{file_type::regular, perms::all, 0}));
    machine.set_attributes(u"C:\\f", FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(answer_of(standard::status, L"C:\\l"),
              (answer{file_type::regular, perms::all & ~write, 0}));
}

TEST_ON_MACHINE(StandardStatus, AFailureWithoutACodeIs31)
{
    constexpr answer expected{file_type::none, unknown, 31};
    for (char const *const function :
         {"GetFileAttributesExW", "CreateFileW", "GetFileInformationByHandleEx"}) {
        simulated_machine fresh;
        fresh.add_directory(u"C:\\d").add_symbolic_link(u"C:\\l", u"d", flavour::directory);
        sure_fault const fault = fresh.fail_every_call_on(function, 0);
        EXPECT_EQ(answer_of(standard::status, L"C:\\l"), expected) << function;
        EXPECT_EQ(answer_of(standard::symlink_status, L"C:\\l"), expected) << function;
        EXPECT_EQ(fresh.open_handles(), 0) << function;
    }
}

TEST(StandardCreateDirectories, ADriveCountsToTheRootOnlyBehindALongPrefix)
{
    simulated_machine machine;
    std::error_code ec;
    EXPECT_FALSE(standard::create_directories(LR"(a\b\C:\x)", ec));
    EXPECT_TRUE(ec) << "no name has a colon";
    EXPECT_TRUE(machine.is_directory(uR"(C:\a\b)"));
}

} // namespace
} // namespace fl::filesystem::detail
