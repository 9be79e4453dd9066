// Changing attributes by the calls that it takes, and what becomes of each call that fails.

#include <fl/filesystem.hpp>

#include "operations/hidden_names.hpp"
#include "status/changed_attributes.hpp"
#include "support/calls.hpp"
#include "support/translation.hpp"

namespace fl::filesystem::tests {
namespace {

constexpr unsigned int hides = adds | 0x4000;

TEST_ON_MACHINE(PermissionsJournal, OfAPlainName)
{
    machine.add_file(u"C:\\d\\f").set_attributes(u"C:\\d\\f", 0x21).set_current_directory(u"C:\\d");
    row_of<unsigned int, char const *> const cases[] = {
        {removes | 04, " flags 21", "nothing changes, and it is set"},
        {adds, " flags 21", "nothing is named, and it is set"},
        {0x1000, " flags 21", "what is there replaces itself"},
        {hides, " flags 23", "hidden comes"},
        {on_the_link, " flags 1", "no link, whatever the word says of links"},
        {0200, "", "nothing is left"},
    };
    for (auto const &row : cases) {
        machine.clear_journal();
        permissions(u"f", row.given);
        lines const expected = {"GetFullPathNameW(f)", R"(GetFileAttributesExW(C:\d\f))",
                                R"(GetFileAttributesW(C:\d\f))",
                                std::string(R"(SetFileAttributesW(C:\d\f))") + row.expected};
        EXPECT_EQ(calls_with_arguments(machine), expected) << row.why;
        machine.set_attributes(u"C:\\d\\f", 0x21);
    }
}

TEST_ON_MACHINE(PermissionsJournal, OfALink)
{
    machine.add_file(u"C:\\t").set_attributes(u"C:\\t", 0x20).add_symbolic_link(u"C:\\l", u"t");
    lines expected = {R"(GetFullPathNameW(C:\l))", R"(GetFileAttributesExW(C:\l))"};
    add_reading(expected, "C:\\l");
    lines itself = expected;
    expected.push_back(R"(GetFileAttributesExW(C:\l))");
    add_reading(expected, "C:\\l");
    expected.push_back(R"(GetFileAttributesW(\\?\C:\t))");
    expected.push_back(R"(SetFileAttributesW(\\?\C:\t) flags 22)");
    permissions(u"C:\\l", hides);
    EXPECT_EQ(calls_with_arguments(machine), expected);
    machine.set_attributes(u"C:\\l", 0x20);
    machine.clear_journal();
    itself.push_back(R"(GetFileAttributesW(C:\l))");
    itself.push_back(R"(SetFileAttributesW(C:\l) flags 422)");
    permissions(u"C:\\l", hides | on_the_link);
    EXPECT_EQ(calls_with_arguments(machine), itself);
}

TEST_ON_MACHINE(PermissionsJournal, OfAVolumeMountPoint)
{
    machine.add_drive(u'D').add_mount_point(u"C:\\v", u'D');
    permissions(u"C:\\v", hides);
    EXPECT_EQ(machine.attributes(u"C:\\v"), 0x412U);
    lines const all = calls_with_arguments(machine);
    ASSERT_GE(all.size(), 2U);
    EXPECT_EQ(all[all.size() - 2], R"(GetFileAttributesW(\\?\C:\v))") << "itself, made a target";
    EXPECT_EQ(all[all.size() - 1], R"(SetFileAttributesW(\\?\C:\v) flags 412)");
}

TEST_ON_MACHINE(PermissionsJournal, OfWhatIsRefusedAtOnce)
{
    machine.add_file(u"C:\\f");
    for (unsigned int const perms : {adds | removes, 0xFFFFU, adds | 0xFFFFU})
        EXPECT_FAILURE(permissions(u"C:\\f", perms), invalid_argument("File Permission not valid"));
    EXPECT_FAILURE(permissions(u"", 0200), empty_path());
    EXPECT_EQ(calls_with_arguments(machine), lines{});
}

TEST_ON_MACHINE(PermissionsOnADisk, EveryCombination)
{
    machine.add_file(u"C:\\f").keep_journal(false);
    for_all_attributes([&](std::uint32_t before) {
        for_all_words([&](unsigned int perms) {
            machine.set_attributes(u"C:\\f", before);
            permissions(u"C:\\f", perms);
            EXPECT_EQ(machine.attributes(u"C:\\f") & 0x2027, changed_attributes(before, perms))
                << "attributes " << before << ", perms " << perms;
        });
    });
}

TEST_ON_MACHINE(PermissionsOnADisk, OtherAttributesSurvive)
{
    machine.add_file(u"C:\\f").add_directory(u"C:\\d").keep_journal(false);
    for (DWORD const other : {0x100U, 0x200U, 0x800U, 0x1000U, 0x4000U, 0x1B00U}) {
        for (unsigned int const perms : {0U, 0xF222U, adds | 0xF222U, removes | 0xF222U}) {
            machine.set_attributes(u"C:\\f", other | 0x23);
            permissions(u"C:\\f", perms);
            EXPECT_EQ(machine.attributes(u"C:\\f"), other | changed_attributes(0x23, perms))
                << "attribute " << other << ", perms " << perms;
        }
    }
    machine.set_attributes(u"C:\\d", 0x800);
    permissions(u"C:\\d", 0x4000);
    EXPECT_EQ(machine.attributes(u"C:\\d"), 0x813U);
}

TEST_ON_MACHINE(PermissionsCodes, OfEachCallOnAFile)
{
    machine.add_file(u"C:\\f").keep_journal(false);
    for (char const *call : {"GetFileAttributesExW", "GetFileAttributesW", "SetFileAttributesW"}) {
        for (DWORD code = 0; code <= last_code; ++code) {
            sure_fault const fault = machine.fail_every_call_on(call, code);
            ASSERT_FAILURE(permissions(u"C:\\f", hides), translated(code, u"C:\\f"))
                << call << ", code " << code;
        }
        EXPECT_EQ(hidden_names(machine), lines{}) << call;
    }
}

TEST_ON_MACHINE(PermissionsCodes, OfEachCallOnALinkAndItsTarget)
{
    machine.add_file(u"C:\\t").add_symbolic_link(u"C:\\l", u"t").keep_journal(false);
    struct
    {
        char const *function;
        int nth;
        char16_t const *named;
    } const cases[] = {
        {"GetFileAttributesExW", 1, u"C:\\l"},
        {"GetFileAttributesExW", 2, u"C:\\l"},
        {"GetFileAttributesW", 1, uR"(\\?\C:\t)"},
        {"SetFileAttributesW", 1, uR"(\\?\C:\t)"},
    };
    for (auto const &row : cases) {
        for (DWORD code = 0; code <= last_code; ++code) {
            sure_fault const fault = machine.fail_call(row.function, row.nth, code);
            ASSERT_FAILURE(permissions(u"C:\\l", hides), translated(code, row.named))
                << row.function << " " << row.nth << ", code " << code;
        }
        EXPECT_EQ(hidden_names(machine), lines{}) << row.function;
    }
}

TEST_ON_MACHINE(PermissionsCodes, OfAFailedExpansion)
{
    machine.add_file(u"C:\\f");
    for (DWORD const code : {2U, 3U, 5U, 123U, 206U}) {
        sure_fault const fault = machine.fail_every_call_on("GetFullPathNameW", code);
        EXPECT_FAILURE(permissions(u"f", hides), translated(code, u"f")) << code;
    }
}

TEST_ON_MACHINE(PermissionsCodes, OfALinkThatCannotBeRead)
{
    machine.add_file(u"C:\\t").add_symbolic_link(u"C:\\l", u"t");
    machine.deny(u"C:\\l", right::read_extended_attributes);
    permissions(u"C:\\l", hides);
    EXPECT_EQ(hidden_names(machine), lines{"C:\\l"}) << "it isn't seen to be a link";
}

TEST_ON_MACHINE(PermissionsCodes, WhatTheCallerMayNot)
{
    struct
    {
        char16_t const *denied_at;
        right denied;
        char16_t const *named;
    } const cases[] = {
        {u"C:\\l", right::read_attributes, u"C:\\l"},
        {u"C:\\t", right::read_attributes, uR"(\\?\C:\t)"},
        {u"C:\\t", right::write, uR"(\\?\C:\t)"},
    };
    for (auto const &row : cases) {
        simulated_machine fresh;
        fresh.add_file(u"C:\\t").add_symbolic_link(u"C:\\l", u"t").deny(row.denied_at, row.denied);
        EXPECT_FAILURE(permissions(u"C:\\l", adds), denied(row.named))
            << "also where nothing would change";
        EXPECT_EQ(hidden_names(fresh), lines{});
    }
}

TEST_ON_MACHINE(PermissionsCodes, EveryFailingCallReleasesItsHandles)
{
    auto const build = [](simulated_machine &fresh) {
        fresh.add_file(u"C:\\d\\t").add_symbolic_link(u"C:\\d\\l", u"..\\d\\t");
    };
    for (unsigned int const perms : {hides, hides | on_the_link}) {
        int const failed = sweep(build, [&](failing_run const &) {
            failure_of([&] { permissions(uR"(C:\d\..\d\l)", perms); });
        });
        EXPECT_GE(failed, 7) << perms;
    }
}

} // namespace
} // namespace fl::filesystem::tests
