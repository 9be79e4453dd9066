// The system's words on the simulated machine, which has those of Windows in English.

#include <fl/filesystem/text.hpp>

#include "support/calls.hpp"

namespace fl::filesystem {
namespace {

using namespace test_support;

TEST(SystemMessageCalls, AreThoseOfTheSystem)
{
    simulated_machine machine;
    EXPECT_EQ(system_message(2), u"The system cannot find the file specified.");
    EXPECT_EQ(machine.calls_of("FormatMessageW"), 1);
    EXPECT_EQ(system_message(4390), u"The file or directory is not a reparse point.")
        << "Wine 8 has no words for this one";
    EXPECT_EQ(describe(SystemError(32, u"C:\\a", {u"C:\\b"})),
              R"(fl:filesystem:SystemError: the system refused: "C:\a", "C:\b" (code 32: The )"
              "process cannot access the file because it is being used by another process.)");
}

TEST(SystemMessageCalls, FailingOneIsNoMessage)
{
    simulated_machine machine;
    sure_fault const broken = machine.fail_every_call_on("FormatMessageW", ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(system_message(2), u"");
    EXPECT_EQ(machine.calls_of("FormatMessageW"), 1);
    EXPECT_EQ(describe(SystemError(32)), "fl:filesystem:SystemError: the system refused (code 32)");
}

TEST(SystemMessageCalls, LongOneIsAskedForAgainWithTheMostThatTheSystemTakes)
{
    simulated_machine machine;
    auto const short_of_room = machine.fail_call("FormatMessageW", 1, ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(system_message(5), u"Access is denied.");
    ASSERT_EQ(machine.journal().size(), 2U);
    EXPECT_EQ(machine.journal()[1].room, 32767U);
}

TEST(SystemMessageCalls, TooLongForTheSystemIsNone)
{
    simulated_machine machine;
    auto const short_of_room =
        machine.fail_every_call_on("FormatMessageW", ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(system_message(5), u"");
    EXPECT_EQ(machine.calls_of("FormatMessageW"), 2);
}

} // namespace
} // namespace fl::filesystem
