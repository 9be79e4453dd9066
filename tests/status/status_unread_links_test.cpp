// Links on the way whose data can't be read: they answer for themselves.

#include <fl/filesystem.hpp>

#include <fl/filesystem/windows.hpp>

#include "status/outcomes.hpp"
#include "support/calls.hpp"

namespace fl::filesystem::tests {
namespace {

using detail::windows::target_status_bridge;
using test_support::outcome;

/// C:\l leads to C:\m, that to C:\n, and that to the file C:\t.
void add_links(simulated_machine &machine)
{
    machine.add_symbolic_link(u"C:\\l", u"m").add_symbolic_link(u"C:\\m", u"n");
    machine.add_symbolic_link(u"C:\\n", u"t").add_file(u"C:\\t", "12345");
}

/// What a link says of itself, as a name that isn't known to be one.
record plain_record_of(std::u16string const &link)
{
    record own = outcome_of([&] { return symlink_status(link); }).answer.value();
    own.type = file_status::regular_file;
    return own;
}

void expect_record_of(std::u16string const &unread)
{
    record const own = plain_record_of(unread);
    EXPECT_EQ(outcome_of([] { return status(u"C:\\l"); }), answers(own));
    EXPECT_EQ(outcome_of([] { return status_express_light(u"C:\\l"); }), answers(shortened(own)));
    EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\l"); }), answers(own));
}

TEST(StatusOfUnreadLinks, WhoseOpeningFails)
{
    for (std::u16string const unread : {u"C:\\m", u"C:\\n"}) {
        for (DWORD const code : {0U, 2U, 3U, 5U, 32U, 1920U, 4390U}) {
            SCOPED_TRACE(code);
            simulated_machine machine;
            add_links(machine);
            sure_fault const fault = machine.fail_every_call_on_name("CreateFileW", unread, code);
            expect_record_of(unread);
            EXPECT_EQ(machine.open_handles(), 0);
        }
    }
}

TEST(StatusOfUnreadLinks, WhoseDataTheCallerMayNotSee)
{
    for (std::u16string const unread : {u"C:\\m", u"C:\\n"}) {
        simulated_machine machine;
        add_links(machine);
        machine.deny(unread, right::read_extended_attributes);
        expect_record_of(unread);
    }
}

// The data then reads as zeros, and tag 0 is that of no link.
TEST(StatusOfUnreadLinks, TheFirstFailsWithoutACode)
{
    for (char const *const function : {"CreateFileW", "DeviceIoControl"}) {
        simulated_machine machine;
        add_links(machine);
        sure_fault const fault = machine.fail_every_call_on(function, 0);
        record const own = plain_record_of(u"C:\\l");
        EXPECT_EQ(outcome_of([] { return status(u"C:\\l"); }), answers(own)) << function;
        EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\l"); }),
                  answers(bare(file_status::file_not_found)))
            << function;
    }
}

} // namespace
} // namespace fl::filesystem::tests
