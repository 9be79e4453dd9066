// How the reason is found out why a stream didn't open.

#include <fl/filesystem/standard.hpp>

#include "support/calls.hpp"

namespace fl::filesystem::tests {
namespace {

auto failure_at(char16_t const *path, unsigned int needs)
{
    return failure_of([&] { detail::throw_stream_failure(upath(path), needs); });
}

TEST_ON_MACHINE(StreamFailureCalls, OpenAsStreamsDo)
{
    machine.add_file(u"C:\\file");
    machine.clear_journal();
    EXPECT_EQ(failure_at(u"C:\\file", detail::stream_reads | detail::stream_writes),
              system_error(110, u"C:\\file"));
    auto const opened = [&](std::size_t nth) { return entries_of(machine, "CreateFileW").at(nth); };
    EXPECT_EQ(opened(0).access, GENERIC_READ | GENERIC_WRITE);
    EXPECT_EQ(opened(0).share, DWORD{FILE_SHARE_READ | FILE_SHARE_WRITE});
    EXPECT_EQ(opened(0).disposition, DWORD{OPEN_EXISTING});

    machine.clear_journal();
    EXPECT_EQ(failure_at(u"C:\\file", detail::stream_reads), system_error(110, u"C:\\file"));
    EXPECT_EQ(opened(0).access, DWORD{GENERIC_READ});

    machine.clear_journal();
    EXPECT_EQ(failure_at(u"C:\\new", detail::stream_writes | detail::stream_creates),
              system_error(110, u"C:\\new"));
    EXPECT_EQ(opened(1).access, DWORD{GENERIC_WRITE} | DWORD{DELETE});
    EXPECT_EQ(opened(1).disposition, DWORD{CREATE_NEW});
    EXPECT_EQ(opened(1).flags, DWORD{FILE_ATTRIBUTE_NORMAL} | DWORD{FILE_FLAG_DELETE_ON_CLOSE})
        << "read-only, it couldn't go";
    EXPECT_FALSE(machine.exists(u"C:\\new"));
}

TEST_ON_MACHINE(StreamFailureCalls, AStreamThatDidNotOpenIsAFailure)
{
    EXPECT_FAILURE(open(upath(u"C:\\no\\file")), not_found(u"C:\\no\\file"));
}

TEST_ON_MACHINE(StreamFailureCalls, TellTheCodeOfTheCallThatFailed)
{
    machine.add_file(u"C:\\file").add_directory(u"C:\\full").deny_creation(u"C:\\full");
    EXPECT_EQ(failure_at(u"C:\\full\\new", detail::stream_writes | detail::stream_creates),
              denied(u"C:\\full\\new"))
        << "that it isn't there is no reason for a stream that makes it";
    auto const held = machine.fail_call("CreateFileW", 1, ERROR_SHARING_VIOLATION);
    EXPECT_EQ(failure_at(u"C:\\file", detail::stream_reads), system_error(32, u"C:\\file"));
    auto const silent = machine.fail_call("CreateFileW", 1, ERROR_SUCCESS);
    EXPECT_EQ(failure_at(u"C:\\file", detail::stream_reads), system_error(110, u"C:\\file"))
        << "a failure without a code is one, too";
}

} // namespace
} // namespace fl::filesystem::tests
