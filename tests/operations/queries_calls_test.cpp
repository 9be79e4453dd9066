// Which calls the rest of the standard's list makes, and what becomes of their failures.

#include <fl/filesystem/queries.hpp>

#include "support/calls.hpp"

#include <algorithm>
#include <functional>

namespace fl::filesystem::tests {
namespace {

file_time_type some_time()
{
    return file_time_type(std::chrono::seconds(1'000'000'000));
}

TEST_ON_MACHINE(QueriesCalls, ADirectoryLikeAnotherMakesEachPathnameFullOnce)
{
    machine.add_directory(uR"(C:\like)").set_attributes(uR"(C:\like)", FILE_ATTRIBUTE_HIDDEN);
    machine.clear_journal();
    create_directory(uR"(C:\new)", uR"(C:\like)");
    lines const made = calls_with_arguments(machine);
    EXPECT_EQ(
        std::count_if(made.begin(), made.end(),
                      [](std::string const &line) { return line.starts_with("GetFullPathNameW"); }),
        2);
    EXPECT_EQ(machine.attributes(uR"(C:\new)") & FILE_ATTRIBUTE_HIDDEN,
              DWORD{FILE_ATTRIBUTE_HIDDEN});
}

TEST_ON_MACHINE(QueriesCalls, OneOpeningEach)
{
    machine.add_file(uR"(C:\f)", "12345");
    lines const looking = {R"(CreateFileW(C:\f) access 80 share 7 disposition 3 flags 2000000)",
                           R"(GetFileInformationByHandle(C:\f))", R"(CloseHandle(C:\f))"};
    auto const calls_of = [&](auto act) {
        machine.clear_journal();
        act();
        return calls_on_disk(machine);
    };
    EXPECT_EQ(calls_of([] { static_cast<void>(file_size(uR"(C:\f)")); }), looking);
    EXPECT_EQ(calls_of([] { static_cast<void>(hard_link_count(uR"(C:\f)")); }), looking);
    EXPECT_EQ(calls_of([] { static_cast<void>(last_write_time(uR"(C:\f)")); }), looking);
    EXPECT_EQ(calls_of([] { last_write_time(uR"(C:\f)", some_time()); }),
              (lines{R"(CreateFileW(C:\f) access 100 share 7 disposition 3 flags 2000000)",
                     R"(SetFileInformationByHandle(C:\f))", R"(CloseHandle(C:\f))"}));
    EXPECT_EQ(calls_of([] { resize_file(uR"(C:\f)", 1); }),
              (lines{R"(CreateFileW(C:\f) access 2 share 7 disposition 3)",
                     R"(SetFileInformationByHandle(C:\f) flags 6)", R"(CloseHandle(C:\f))"}));
    EXPECT_EQ(calls_of([] { create_hard_link(uR"(C:\f)", uR"(C:\g)"); }),
              lines{R"(CreateHardLinkW(C:\g))"});
    EXPECT_EQ(calls_of([] { create_junction(u"C:\\", uR"(C:\j)"); }),
              (lines{R"(CreateDirectoryW(C:\j))",
                     R"(CreateFileW(C:\j) access 40000000 share 7 disposition 3 flags 2200000)",
                     R"(DeviceIoControl(C:\j) flags 900A4)", R"(CloseHandle(C:\j))"}));
}

struct operation
{
    char const *name;
    std::function<void()> run;
};

operation const operations[] = {
    {"file_size", [] { static_cast<void>(file_size(uR"(C:\t\f)")); }},
    {"hard_link_count", [] { static_cast<void>(hard_link_count(uR"(C:\t\f)")); }},
    {"last_write_time", [] { static_cast<void>(last_write_time(uR"(C:\t\f)")); }},
    {"last_write_time, set", [] { last_write_time(uR"(C:\t\f)", some_time()); }},
    {"resize_file", [] { resize_file(uR"(C:\t\f)", 1); }},
    {"is_empty", [] { static_cast<void>(is_empty(uR"(C:\t)")); }},
    {"create_hard_link", [] { create_hard_link(uR"(C:\t\f)", uR"(C:\t\x)"); }},
    {"create_junction", [] { create_junction(uR"(C:\t)", uR"(C:\t\x)"); }},
    {"create_directory", [] { create_directory(uR"(C:\t\x)", uR"(C:\t)"); }},
    {"ensure_directories", [] { ensure_directories(uR"(C:\t\x)"); }},
    {"read_shortcut", [] { static_cast<void>(read_shortcut(uR"(C:\t\s.lnk)")); }},
    {"temp_directory_path", [] { static_cast<void>(temp_directory_path()); }},
};

void build(simulated_machine &machine)
{
    machine.add_file(uR"(C:\t\f)", "12345").add_shortcut(uR"(C:\t\s.lnk)", uR"(C:\t\f)");
    machine.set_attributes(uR"(C:\t)", FILE_ATTRIBUTE_HIDDEN);
    ::SetEnvironmentVariableW(L"TMP", LR"(C:\t)");
}

TEST_ON_MACHINE(QueriesCalls, EveryFailingCallReleasesAllAndLeavesNothingHalfMade)
{
    for (operation const &row : operations)
        sweep(build, [&](failing_run const &run) {
            auto const thrown = failure_of(row.run);
            EXPECT_FALSE(thrown && run.machine.exists(uR"(C:\t\x)")) << row.name;
        });
}

TEST_ON_MACHINE(QueriesCalls, AFailureNamesWhatWasGiven)
{
    auto const expect_named = [](operation const &asked, char const *function,
                                 char16_t const *named) {
        simulated_machine fresh;
        build(fresh);
        sure_fault const fault = fresh.fail_every_call_on(function, ERROR_IO_DEVICE);
        EXPECT_EQ(failure_of(asked.run), system_error(ERROR_IO_DEVICE, named))
            << asked.name << ", " << function;
    };
    expect_named(operations[0], "CreateFileW", uR"(C:\t\f)");
    expect_named(operations[0], "GetFileInformationByHandle", uR"(C:\t\f)");
    expect_named(operations[3], "CreateFileW", uR"(C:\t\f)");
    expect_named(operations[3], "SetFileInformationByHandle", uR"(C:\t\f)");
    expect_named(operations[4], "CreateFileW", uR"(C:\t\f)");
    expect_named(operations[4], "SetFileInformationByHandle", uR"(C:\t\f)");
    expect_named(operations[5], "FindFirstFileExW", uR"(C:\t)");
    expect_named(operations[7], "CreateDirectoryW", uR"(C:\t\x)");
    expect_named(operations[7], "CreateFileW", uR"(C:\t\x)");
    expect_named(operations[7], "DeviceIoControl", uR"(C:\t\x)");
    expect_named(operations[8], "CreateFileW", uR"(C:\t)");
    expect_named(operations[8], "CreateDirectoryW", uR"(C:\t\x)");
    expect_named(operations[8], "SetFileAttributesW", uR"(C:\t\x)");
    expect_named(operations[9], "CreateDirectoryW", uR"(C:\t\x)");
    expect_named(operations[10], "IPersistFile::Load", uR"(C:\t\s.lnk)");
}

TEST_ON_MACHINE(QueriesCalls, WhatIsDeniedOrReadOnly)
{
    machine.add_file(uR"(C:\t\f)", "12345").set_attributes(uR"(C:\t\f)", FILE_ATTRIBUTE_READONLY);
    EXPECT_FAILURE(resize_file(uR"(C:\t\f)", 0), denied(uR"(C:\t\f)"));
    last_write_time(uR"(C:\t\f)", some_time());
    EXPECT_EQ(last_write_time(uR"(C:\t\f)"), some_time()) << "a read-only file has times, too";
    machine.deny(uR"(C:\t\f)", right::read_attributes);
    EXPECT_FAILURE(file_size(uR"(C:\t\f)"), denied(uR"(C:\t\f)"));
    EXPECT_EQ(machine.size_of(uR"(C:\t\f)"), 5U);
}

// The root of a volume is opened like no other directory.
TEST_ON_MACHINE(QueriesCalls, AMountPointIsADirectoryAndNoMissingFile)
{
    machine.add_drive(u'D').add_mount_point(uR"(C:\v)", u'D');
    EXPECT_FAILURE(resize_file(uR"(C:\v)", 0), file_is_directory(uR"(C:\v)"));
    EXPECT_FAILURE(resize_file(u"D:\\", 0), file_is_directory(u"D:\\"));
    machine.add_junction(uR"(C:\nowhere)", uR"(C:\no\no)");
    EXPECT_FAILURE(resize_file(uR"(C:\nowhere)", 0), not_found(uR"(C:\nowhere)"))
        << "a link that leads nowhere leads to no directory either";
}

TEST_ON_MACHINE(CreateHardLinkCalls, ToAnotherVolumeNamesBoth)
{
    machine.add_file(uR"(C:\f)").add_drive(u'D');
    EXPECT_FAILURE(create_hard_link(uR"(C:\f)", uR"(D:\g)"),
                   system_error(ERROR_NOT_SAME_DEVICE, uR"(C:\f)", uR"(D:\g)"));
}

TEST_ON_MACHINE(CreateHardLinkCalls, OfALinkIsOfTheLinkItself)
{
    machine.add_file(uR"(C:\f)").add_symbolic_link(uR"(C:\l)", uR"(C:\f)");
    create_hard_link(uR"(C:\l)", uR"(C:\m)");
    EXPECT_TRUE(machine.is_same(uR"(C:\l)", uR"(C:\m)"));
    EXPECT_TRUE(is_symlink(uR"(C:\m)"));
}

TEST_ON_MACHINE(CreateJunctionCalls, WritesWhatTheSystemItselfWould)
{
    machine.add_directory(uR"(C:\d)").add_junction(uR"(C:\model)", uR"(C:\d)");
    create_junction(uR"(C:\d)", uR"(C:\j)");
    EXPECT_EQ(machine.reparse_tag(uR"(C:\j)"), DWORD{IO_REPARSE_TAG_MOUNT_POINT});
    EXPECT_EQ(machine.reparse_data(uR"(C:\j)"), machine.reparse_data(uR"(C:\model)"));
}

// The data has room for the target twice, and no byte more.
TEST_ON_MACHINE(CreateJunctionCalls, TakesTargetsAsLongAsTheyFit)
{
    for (std::size_t const more : {0U, 1U}) {
        simulated_machine fresh;
        std::u16string const target = chain_of_size(u"C:", 4089 + more);
        fresh.add_file(target + uR"(\x)");
        auto const thrown = failure_of([&] { create_junction(target, uR"(C:\j)"); });
        EXPECT_EQ(thrown.has_value(), more == 1) << target.size();
        EXPECT_EQ(fresh.exists(uR"(C:\j)"), more == 0);
        if (more == 0) {
            EXPECT_EQ(directory_iterator(uR"(C:\j)")->filename(), u"x");
        }
    }
}

void set_variables(wchar_t const *tmp, wchar_t const *temp, wchar_t const *profile)
{
    ::SetEnvironmentVariableW(L"TMP", tmp);
    ::SetEnvironmentVariableW(L"TEMP", temp);
    ::SetEnvironmentVariableW(L"USERPROFILE", profile);
}

TEST_ON_MACHINE(TempDirectoryPathCalls, TakesTheFirstVariableThatIsSet)
{
    machine.add_directory(uR"(C:\1)").add_directory(uR"(C:\2)").add_directory(uR"(C:\3)");
    machine.add_file(uR"(C:\file)");
    set_variables(LR"(C:\1\)", LR"(C:\2)", LR"(C:\3)");
    EXPECT_EQ(temp_directory_path().native(), uR"(C:\1)");
    set_variables(nullptr, LR"(C:\2)", LR"(C:\3)");
    EXPECT_EQ(temp_directory_path().native(), uR"(C:\2)");
    set_variables(L"", nullptr, LR"(3)");
    machine.set_current_directory(u"C:\\");
    EXPECT_EQ(temp_directory_path().native(), uR"(C:\3)") << "relative, and behind an empty one";
    set_variables(nullptr, nullptr, nullptr);
    EXPECT_FAILURE(temp_directory_path(), about(fsys_excp_temp_env_not_specified,
                                                "fl:filesystem:TempEnvNotSpecified", u""));
    set_variables(LR"(C:\no)", LR"(C:\2)", nullptr);
    EXPECT_FAILURE(temp_directory_path(), not_found(uR"(C:\no)"));
    set_variables(LR"(C:\file)", nullptr, nullptr);
    EXPECT_FAILURE(temp_directory_path(), not_directory(uR"(C:\file)"));
}

TEST_ON_MACHINE(QueriesCalls, ADirectoryIsNoReasonWhyATimeCannotBeSet)
{
    machine.add_directory(u"C:\\d").deny(u"C:\\d", right::write);
    EXPECT_FAILURE(last_write_time(u"C:\\d", some_time()), denied(u"C:\\d"));
}

TEST_ON_MACHINE(QueriesCalls, OneAttributeAloneOfADirectoryLikeAnotherIsTakenOverToo)
{
    for (DWORD const attribute : {DWORD{FILE_ATTRIBUTE_READONLY}, DWORD{FILE_ATTRIBUTE_HIDDEN}}) {
        simulated_machine fresh;
        fresh.add_directory(u"C:\\old").set_attributes(u"C:\\old", attribute);
        create_directory(upath(u"C:\\new"), upath(u"C:\\old"));
        EXPECT_EQ(fresh.attributes(u"C:\\new") & attribute, attribute);
    }
}

} // namespace
} // namespace fl::filesystem::tests
