// The calls that take the current directory of a drive, and whom a failing one names.

#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/pathname.hpp>

#include "support/calls.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

TEST_ON_MACHINE(MakeExpandedPathCalls, NoneForWhatDependsOnNothing)
{
    for (char16_t const *text : {u"", u"foo", uR"(C:\foo)", uR"(\\server\share)", uR"(\\?\C:foo)"})
        make_expanded_path(text, true);
    EXPECT_EQ(calls(machine), lines{});
}

TEST_ON_MACHINE(MakeExpandedPathCalls, OneForTheDriveOrTheWholeRootedText)
{
    machine.add_directory(u"C:\\work").set_current_directory(u"C:\\work");
    EXPECT_EQ(make_expanded_path(u"C:", true), uR"(C:\work)");
    EXPECT_EQ(make_expanded_path(u"C:foo", true), uR"(C:\work\foo)");
    EXPECT_EQ(make_expanded_path(uR"(\foo)", true), uR"(C:\foo)");
    EXPECT_EQ(calls(machine),
              (lines{"GetFullPathNameW(C:)", "GetFullPathNameW(C:)", R"(GetFullPathNameW(\foo))"}));
}

TEST_ON_MACHINE(MakeExpandedPathCalls, OneForUpTo1023UnitsAndTwoForMore)
{
    for (std::size_t const size : {1022U, 1023U, 1024U, 1025U}) {
        simulated_machine fresh;
        std::u16string const text = u'\\' + std::u16string(size - 3, u'a'); // C: comes ahead
        EXPECT_EQ(make_expanded_path(text, true), u"C:" + text);
        EXPECT_EQ(fresh.calls_of("GetFullPathNameW"), size < 1024 ? 1 : 2) << size;
    }
}

TEST_ON_MACHINE(MakeExpandedPathCalls, AnAnswerAsLongAsTheBufferIsATextOfThatLength)
{
    auto const hook = machine.on_full_path_name([](DWORD room, wchar_t *buffer) {
        for (DWORD at = 0; at < room; ++at)
            buffer[at] = L'x';
        return std::optional<DWORD>(room);
    });
    EXPECT_EQ(make_expanded_path(u"C:", true), std::u16string(1024, u'x'));
    EXPECT_EQ(machine.calls_of("GetFullPathNameW"), 1);
}

TEST_ON_MACHINE(MakeExpandedPathCalls, FailuresNameWhatTheCallWasGiven)
{
    {
        auto const fault = machine.fail_every_call_on("GetFullPathNameW", 5);
        EXPECT_FAILURE(make_expanded_path(u"C:foo", true), denied(u"C:"));
        EXPECT_FAILURE(make_expanded_path(uR"(\foo)", true), denied(uR"(\foo)"));
    }
    auto const growing = machine.on_full_path_name(
        [](DWORD room, wchar_t *) { return std::optional<DWORD>(room + 1); });
    EXPECT_FAILURE(make_expanded_path(u"C:", true),
                   system_error(simulation::stale_last_error, u"C:"))
        << "asked for more room twice: whatever code that leaves";
}

TEST_ON_MACHINE(MakeExpandedPathCalls, TakeTheCurrentDirectoryOfAnotherDrive)
{
    machine.add_drive(u'D').add_directory(u"D:\\data");
    EXPECT_EQ(make_expanded_path(u"D:foo", true), uR"(D:\foo)") << "its root by default";
    ::SetEnvironmentVariableW(L"=D:", L"D:\\data");
    EXPECT_EQ(make_expanded_path(u"D:", true), uR"(D:\data)");
    EXPECT_EQ(make_expanded_path(u"D:foo", true), uR"(D:\data\foo)");
    EXPECT_EQ(absolute(u"D:foo"), uR"(D:\data\foo)");
    EXPECT_EQ(absolute(uR"(\foo)"), uR"(C:\foo)") << "rooted is on the current drive";
}

} // namespace
} // namespace fl::filesystem::detail
