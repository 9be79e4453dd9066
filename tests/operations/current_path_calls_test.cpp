// The calls under the current directory's operations, and what failing ones leave behind.

#include <fl/filesystem/operations.hpp>

#include "support/calls.hpp"
#include "support/translation.hpp"

#include <chrono>
#include <filesystem>
#include <latch>
#include <thread>

namespace fl::filesystem::tests {
namespace {

/// "function(texts)" of each call so far.
lines calls_with_both_texts(simulated_machine const &machine)
{
    lines made;
    for (auto const &entry : machine.journal()) {
        std::string const second =
            entry.second_text.empty() ? "" : ", " + printable(entry.second_text);
        made.push_back(entry.function + "(" + printable(entry.text) + second + ")");
    }
    return made;
}

/// What the standard's facility threw under the change, which has to fail.
std::filesystem::filesystem_error error_of_change(std::u16string const &path)
{
    try {
        change_current_path(path);
    } catch (std::filesystem::filesystem_error const &error) {
        return error;
    }
    ADD_FAILURE() << "no exception";
    return {"", std::error_code()};
}

std::u16string variable(wchar_t const *name)
{
    wchar_t value[1000] = {};
    DWORD const length = ::GetEnvironmentVariableW(name, value, 1000);
    return units(std::wstring_view(value, length));
}

TEST_ON_MACHINE(GetCurrentPathCalls, OneForUpTo259UnitsAndTwoForMore)
{
    std::pair<std::size_t, std::vector<std::uint64_t>> const cases[] = {
        {258, {260}}, {259, {260}}, {260, {260, 261}}, {261, {260, 262}}};
    for (auto const &[size, rooms] : cases) {
        simulated_machine fresh;
        std::u16string const there = chain_of_size(u"C:", size);
        fresh.add_directory(there).set_current_directory(there);
        EXPECT_EQ(get_current_path(), there);
        EXPECT_EQ(rooms_of(fresh, "GetCurrentDirectoryW"), rooms) << size;
    }
}

TEST_ON_MACHINE(GetCurrentPathCalls, RepeatWhileTheDirectoryGrows)
{
    for (std::size_t const size : {270U, 280U})
        machine.add_directory(chain_of_size(u"C:", size));
    machine.set_current_directory(chain_of_size(u"C:", 270));
    auto const other = machine.before_call("GetCurrentDirectoryW", 2, [&] {
        machine.set_current_directory(chain_of_size(u"C:", 280));
    });
    EXPECT_EQ(get_current_path(), chain_of_size(u"C:", 280));
    EXPECT_EQ(rooms_of(machine, "GetCurrentDirectoryW"),
              (std::vector<std::uint64_t>{260, 271, 281}));
}

TEST_ON_MACHINE(GetCurrentPathCalls, KeepALongPrefix)
{
    machine.add_directory(u"C:\\dir");
    ASSERT_TRUE(::SetCurrentDirectoryW(LR"(\\?\C:\dir)"));
    EXPECT_EQ(get_current_path(), uR"(\\?\C:\dir)");
}

TEST_ON_MACHINE(GetCurrentPathCalls, AFailureNamesNothing)
{
    for (DWORD const code : {2U, 5U, 8U}) {
        sure_fault const fault = machine.fail_call("GetCurrentDirectoryW", 1, code);
        EXPECT_FAILURE(get_current_path(), translated(code, u"")) << code;
    }
}

TEST_ON_MACHINE(GetCurrentPathCalls, AFailureThatTellsNoCodeIsOne)
{
    auto const fault = machine.fail_call("GetCurrentDirectoryW", 1, ERROR_SUCCESS);
    EXPECT_FAILURE(get_current_path(), system_error(0, u""));
}

TEST_ON_MACHINE(ChangeCurrentPathCalls, AFullPathnameThatFailsWithoutACodeSetsNoVariable)
{
    machine.add_directory(u"C:\\dir");
    auto const fault = machine.fail_call("GetFullPathNameW", 2, ERROR_SUCCESS);
    EXPECT_EQ(error_of_change(u"C:\\dir").code(),
              std::error_code(ERROR_GEN_FAILURE, std::system_category()));
    EXPECT_EQ(machine.current_directory(), u"C:\\dir");
    EXPECT_EQ(machine.calls_of("SetEnvironmentVariableW"), 0);
}

TEST_ON_MACHINE(ChangeCurrentPathCalls, ADirectoryThatIsRefusedWithoutACodeIsReported)
{
    machine.add_directory(u"C:\\dir");
    auto const fault = machine.fail_call("SetCurrentDirectoryW", 1, ERROR_SUCCESS);
    EXPECT_FAILURE(change_current_path(u"dir"), system_error(31, u"dir"));
    EXPECT_EQ(machine.current_directory(), u"C:\\");
    EXPECT_EQ(variable(L"=C:"), u"");
}

TEST_ON_MACHINE(ChangeCurrentPathCalls, InOrder)
{
    machine.add_directory(u"C:\\dir");
    EXPECT_TRUE(change_current_path(u"C:/dir"));
    EXPECT_EQ(calls_with_both_texts(machine),
              (lines{R"(GetFullPathNameW(C:\dir))", R"(SetCurrentDirectoryW(C:\dir))",
                     R"(GetFullPathNameW(C:\dir))", R"(SetEnvironmentVariableW(=C:, C:\dir))"}));
}

TEST_ON_MACHINE(ChangeCurrentPathCalls, NoneForTheEmptyPath)
{
    EXPECT_FALSE(change_current_path(u""));
    EXPECT_FALSE(change_current_path(upath()));
    EXPECT_EQ(calls(machine), lines{});
}

struct variable_case
{
    char16_t const *text;
    char16_t const *name; // empty if none is set
    char16_t const *value;
    char16_t const *standing; // what the system reports
    char const *why;
};

constexpr variable_case variable_cases[] = {
    {uR"(C:\x)", u"=C:", uR"(C:\x)", uR"(C:\x)", "a drive"},
    {uR"(D:\x)", u"=D:", uR"(D:\x)", uR"(D:\x)", "another drive"},
    {uR"(d:\X)", u"=d:", uR"(d:\X)", uR"(d:\X)", "as it was typed"},
    {uR"(D:\x\..\x\)", u"=D:", uR"(D:\x)", uR"(D:\x)", "expanded"},
    {uR"(D:\)", u"=D:", uR"(D:\)", uR"(D:\)", "a root"},
    {uR"(\\?\D:\x)", u"=D:", uR"(D:\x)", uR"(D:\x)", "native form has no long prefix"},
    {uR"(\\server\share\x)", u"", u"", uR"(\\server\share\x)", "a server has no drive"},
    {uR"(\\server\share)", u"", u"", uR"(\\server\share)", "nor has a share"},
    {uR"(\\?\UNC\server\share\x)", u"", u"", uR"(\\server\share\x)", "nor with a long prefix"},
};

TEST_ON_MACHINE(ChangeCurrentPathCalls, SetAVariableForADrive)
{
    for (variable_case const &row : variable_cases) {
        simulated_machine fresh;
        fresh.add_directory(u"C:\\x").add_drive(u'D').add_directory(u"D:\\x");
        fresh.add_share(u"server", u"share").add_directory(uR"(\\server\share\x)");
        EXPECT_TRUE(change_current_path(row.text)) << row.why;
        EXPECT_EQ(get_current_path(), row.standing) << row.why;
        auto const made = entries_of(fresh, "SetEnvironmentVariableW");
        bool const is_set = row.name[0] != u'\0';
        ASSERT_EQ(made.size(), is_set ? 1U : 0U) << row.why;
        if (is_set) {
            EXPECT_EQ(made[0].text, row.name) << row.why;
            EXPECT_EQ(made[0].second_text, row.value) << row.why;
            EXPECT_EQ(variable(wide(row.name).c_str()), row.value) << row.why;
        }
    }
}

TEST_ON_MACHINE(ChangeCurrentPathCalls, LeaveAVariableAloneForAServer)
{
    machine.add_directory(u"C:\\x").add_share(u"server", u"share");
    ASSERT_TRUE(change_current_path(u"C:\\x"));
    ASSERT_TRUE(change_current_path(uR"(\\server\share)"));
    EXPECT_EQ(variable(L"=C:"), u"C:\\x");
    EXPECT_EQ(variable(L"=\\\\"), u"");
}

// The system is handed a long prefix beyond 247 units and shows it from then on; the variable
// goes by the text of the caller.
TEST_ON_MACHINE(ChangeCurrentPathCalls, KeepTheLongPrefixInTheDirectoryAndNotInTheVariable)
{
    for (std::size_t const size : {247U, 248U, 249U}) {
        simulated_machine fresh;
        std::u16string const there = of_size(u"C:\\", size);
        fresh.add_directory(there);
        EXPECT_TRUE(change_current_path(there));
        std::u16string const prefix = size > 247 ? uR"(\\?\)" : u"";
        EXPECT_EQ(get_current_path(), prefix + there) << size;
        EXPECT_EQ(variable(L"=C:"), there) << size;
    }
}

TEST_ON_MACHINE(ChangeCurrentPathCalls, ADirectoryThatIsTooLongForTheSystemIsRefused)
{
    std::u16string const there = of_size(u"C:\\", 254); // 258 with its prefix
    machine.add_directory(there);
    EXPECT_FAILURE(change_current_path(there), too_large(u""));
    EXPECT_EQ(get_current_path(), u"C:\\");
    EXPECT_EQ(variable(L"=C:"), u"");
}

// Behind the change the text of the caller means something else: what the system can't
// expand there any more is reported, and the directory stays changed.
TEST_ON_MACHINE(ChangeCurrentPathCalls, AFullPathnameThatFailsAfterTheChangeIsTheFacilitysError)
{
    machine.add_directory(u"C:\\dir");
    sure_fault const fault = machine.fail_call("GetFullPathNameW", 2, 5);
    auto const error = error_of_change(u"dir");
    EXPECT_EQ(error.code(), std::error_code(5, std::system_category()));
    EXPECT_EQ(error.path1(), std::filesystem::path(u"dir"));
    EXPECT_EQ(error.path2(), std::filesystem::path());
    std::filesystem::filesystem_error const alike("absolute", u"dir", error.code());
    EXPECT_STREQ(error.what(), alike.what());
    EXPECT_EQ(machine.current_directory(), u"C:\\dir");
    EXPECT_EQ(variable(L"=C:"), u"");
}

TEST_ON_MACHINE(ChangeCurrentPathCalls, AVariableThatCantBeSetIsReportedAfterTheChange)
{
    machine.add_directory(u"C:\\dir");
    for (DWORD const code : {5U, 8U, 87U}) {
        machine.set_current_directory(u"C:\\");
        sure_fault const fault = machine.fail_call("SetEnvironmentVariableW", 1, code);
        EXPECT_FAILURE(change_current_path(u"C:/dir"), translated(code, uR"(C:\dir)")) << code;
        EXPECT_EQ(machine.current_directory(), u"C:\\dir");
        EXPECT_EQ(variable(L"=C:"), u"");
    }
    auto const fault = machine.fail_call("SetEnvironmentVariableW", 1, 8);
    machine.set_current_directory(u"C:\\");
    EXPECT_FAILURE(change_current_path(u"dir"), system_error(8, u"dir"))
        << "the caller's text, not the full pathname";
}

TEST_ON_MACHINE(ChangeCurrentPathCalls, EveryCodeNamesTheCallersPath)
{
    machine.add_directory(u"C:\\dir");
    for (DWORD const code : {2U, 3U, 5U, 53U, 206U, 1920U}) {
        sure_fault const fault = machine.fail_call("SetCurrentDirectoryW", 1, code);
        EXPECT_FAILURE(change_current_path(u"dir"), translated(code, u"dir")) << code;
        EXPECT_EQ(machine.calls_of("SetEnvironmentVariableW"), 0);
        EXPECT_EQ(machine.current_directory(), u"C:\\");
    }
    auto const fault = machine.fail_call("GetFullPathNameW", 1, 5);
    EXPECT_FAILURE(change_current_path(u"dir"), denied(u"dir"));
    EXPECT_EQ(machine.current_directory(), u"C:\\") << "ahead of the change";
}

// A lock that was kept would stop the next change for ever.
TEST_ON_MACHINE(ChangeCurrentPathCalls, EachFailingCallLetsOtherThreadsChangeTheDirectory)
{
    int const failed = for_each_nth([](int nth) {
        simulated_machine fresh;
        fresh.add_directory(u"C:\\dir").add_directory(u"C:\\other");
        bool is_broken = false;
        {
            auto const fault = fresh.fail_call(nth, 1117);
            try {
                change_current_path(u"C:\\dir");
            } catch (FsysExceptionBase const &) {
            } catch (std::filesystem::filesystem_error const &) {
            }
            is_broken = fault.fired();
        }
        std::thread([] { EXPECT_TRUE(change_current_path(u"C:\\other")); }).join();
        EXPECT_EQ(fresh.current_directory(), u"C:\\other");
        EXPECT_EQ(variable(L"=C:"), u"C:\\other");
        return is_broken;
    });
    EXPECT_EQ(failed, 4);
}

TEST_ON_MACHINE(ChangeCurrentPathCalls, ThreadsTakeTurnsWithTheDirectoryAndItsVariable)
{
    machine.add_drive(u'D');
    std::u16string const places[] = {u"C:\\one", u"D:\\two", u"C:\\three", u"D:\\four"};
    for (std::u16string const &place : places)
        machine.add_directory(place);
    std::vector<std::thread> threads;
    // others get in between two calls only if they wait for their turn at the machine
    std::vector<simulation::fault> slow;
    for (int nth = 1; nth <= 1600; nth += 3)
        slow.push_back(machine.before_call("GetFullPathNameW", nth, [] {
            std::this_thread::sleep_for(std::chrono::microseconds(50));
        }));
    std::latch start(4); // else each thread would be done before the next one begins
    for (std::u16string const &place : places)
        threads.emplace_back([&place, &start] {
            start.arrive_and_wait();
            for (int i = 0; i < 200; ++i)
                change_current_path(place);
        });
    for (std::thread &thread : threads)
        thread.join();
    std::u16string changed_to;
    int changes = 0;
    for (auto const &entry : machine.journal()) {
        if (entry.function == "SetCurrentDirectoryW") {
            ASSERT_EQ(changed_to, u"") << "a second directory ahead of the variable of the first";
            changed_to = entry.text;
            ++changes;
        } else if (entry.function == "SetEnvironmentVariableW") {
            ASSERT_EQ(entry.second_text, changed_to);
            EXPECT_EQ(entry.text, u'=' + changed_to.substr(0, 2));
            changed_to.clear();
        }
    }
    EXPECT_EQ(changes, 800);
    std::u16string const last = machine.current_directory();
    EXPECT_EQ(variable(last[0] == u'C' ? L"=C:" : L"=D:"), last);
}

} // namespace
} // namespace fl::filesystem::tests
