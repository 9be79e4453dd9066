// The calls that make a pathname absolute, and whom a failing one names.

#include <fl/filesystem/operations.hpp>

#include "support/calls.hpp"

namespace fl::filesystem::tests {
namespace {

TEST_ON_MACHINE(AbsoluteCalls, OneCallForAShortResultAndMoreForALongOne)
{
    for (std::size_t const size : {4U, 258U, 259U, 260U, 261U}) {
        simulated_machine fresh;
        std::u16string const text = uR"(C:\)" + std::u16string(size - 3, u'a');
        EXPECT_EQ(absolute(text), text);
        EXPECT_EQ(fresh.calls_of("GetFullPathNameW"), size < 260 ? 1 : 2) << size;
    }
}

TEST_ON_MACHINE(AbsoluteCalls, RepeatUntilTheResultFits)
{
    std::vector<DWORD> rooms;
    auto const hook = machine.on_full_path_name([&](DWORD room, wchar_t *) -> std::optional<DWORD> {
        rooms.push_back(room);
        if (rooms.size() < 4)
            return room + 10; // another thread changes the directory to a longer one
        return std::nullopt;
    });
    EXPECT_EQ(absolute(u"x"), uR"(C:\x)");
    EXPECT_EQ(rooms, (std::vector<DWORD>{260, 270, 280, 290}));
}

TEST_ON_MACHINE(AbsoluteCalls, AFailureNamesThePathAndNotTheJoinedText)
{
    auto const fault = machine.fail_every_call_on("GetFullPathNameW", 5);
    EXPECT_FAILURE(absolute(u"x", uR"(C:\base)"), denied(u"x"));
    EXPECT_FAILURE(absolute(u"", uR"(C:\base)"), denied(u""));
    EXPECT_FAILURE(create_directory(u"x"), denied(u"x"));
}

TEST_ON_MACHINE(AbsoluteCalls, ExamplesOfTheHeader)
{
    machine.add_directory(u"C:\\work").set_current_directory(u"C:\\work");
    EXPECT_EQ(absolute(u"foo"), uR"(C:\work\foo)");
    EXPECT_EQ(absolute(uR"(\foo)", uR"(C:\dir)"), uR"(C:\foo)");
}

TEST_ON_MACHINE(AbsoluteCalls, NoneForNothing)
{
    EXPECT_EQ(absolute(u""), u"");
    EXPECT_EQ(absolute(upath(), upath()).native(), u"");
    EXPECT_EQ(calls(machine), lines{});
}

TEST_ON_MACHINE(AbsoluteCalls, ATextOfBlanksIsANameThatTheSystemRefuses)
{
    EXPECT_FAILURE(absolute(u"   "), bad_name());
}

TEST_ON_MACHINE(AbsoluteCalls, AFailedExpansionNamesWhatWasGivenAndNotWhatIsJoined)
{
    auto fault = machine.fail_every_call_on("GetFullPathNameW", 5);
    EXPECT_FAILURE(absolute(u"f", u"C:\\d"), denied(u"f"));
    fault = machine.fail_every_call_on("GetFullPathNameW", 2);
    EXPECT_FAILURE(absolute(u"f", u"C:\\d"), not_found(u"f"));
    fault = machine.fail_every_call_on("GetFullPathNameW", 1117);
    EXPECT_FAILURE(absolute(u"f", u"C:\\d"), system_error(1117, u"f"));
    EXPECT_FAILURE(absolute(u"", u"C:\\d"), system_error(1117, u""));
    EXPECT_TRUE(fault.fired());
}

} // namespace
} // namespace fl::filesystem::tests
