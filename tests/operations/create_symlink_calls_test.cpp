// Making and copying symbolic links on the simulated machine: the calls, their arguments,
// and what becomes of each that fails.

#include <fl/filesystem/operations.hpp>

#include "access/walking.hpp"
#include "links/reparse_bytes.hpp"
#include "support/calls.hpp"
#include "support/translation.hpp"

namespace fl::filesystem::tests {
namespace {

constexpr unsigned int directory = file_status::directory_file;
constexpr unsigned int file = file_status::regular_file;
constexpr unsigned int by_itself = file_status::file_type_auto;

maybe_failure making(unsigned int type, std::u16string const &link = u"C:\\link")
{
    return failure_of([&] { create_symlink(u"C:\\target", link, type); });
}

TEST_ON_MACHINE(CreateSymlinkCalls, OneWithTheTextsAsTheyStand)
{
    machine.add_directory(u"C:\\work").set_current_directory(u"C:\\work");
    create_symlink(u"target", u"link", file);
    create_symlink(u"target", u"dirlink", directory);
    EXPECT_EQ(calls_with_arguments(machine),
              (lines{"CreateSymbolicLinkW(link) flags 2", "CreateSymbolicLinkW(dirlink) flags 3"}));
    for (auto const &entry : machine.journal())
        EXPECT_EQ(entry.second_text, u"target");
}

TEST_ON_MACHINE(CreateSymlinkCalls, AskStatusOnlyForAnAutomaticType)
{
    for (unsigned int const type : {directory, file, 0U, 2U, 0xA000U}) {
        simulated_machine fresh;
        fresh.add_directory(u"C:\\target");
        EXPECT_EQ(making(type), std::nullopt);
        EXPECT_EQ(fresh.journal().size(), 1U) << type;
    }
    machine.add_directory(u"C:\\target");
    EXPECT_EQ(making(by_itself), std::nullopt);
    EXPECT_EQ(machine.journal().front().text, u"C:\\target");
    EXPECT_EQ(machine.calls_of("GetFileAttributesExW"), 1);
    EXPECT_EQ(calls_with_arguments(machine).back(), R"(CreateSymbolicLinkW(C:\link) flags 3)");
}

TEST_ON_MACHINE(CreateSymlinkCalls, WhatStatusThrowsPasses)
{
    machine.add_symbolic_link(u"C:\\loop", u"C:\\loop");
    machine.add_directory(u"C:\\hidden").deny(u"C:\\hidden", right::read_attributes);
    EXPECT_FAILURE(create_symlink(u"C:\\loop", u"C:\\link", by_itself),
                   too_many_links(uR"(\\?\C:\loop)"));
    EXPECT_FAILURE(create_symlink(u"C:\\hidden", u"C:\\link", by_itself), denied(u"C:\\hidden"));
    EXPECT_EQ(machine.calls_of("CreateSymbolicLinkW"), 0);
    create_symlink(u"C:\\hidden", u"C:\\link", directory);
    EXPECT_TRUE(machine.exists(u"C:\\link")) << "it isn't looked at";
}

// Systems before Windows 10 version 1703 don't know the flag.
TEST_ON_MACHINE(CreateSymlinkCalls, ASecondOneWithoutTheFlagAfterCode87)
{
    for (unsigned int const type : {file, directory}) {
        simulated_machine fresh;
        auto const fault = fresh.fail_call("CreateSymbolicLinkW", 1, 87);
        EXPECT_EQ(making(type), std::nullopt);
        EXPECT_EQ(calls_with_arguments(fresh),
                  type == file ? (lines{R"(CreateSymbolicLinkW(C:\link) flags 2)",
                                        R"(CreateSymbolicLinkW(C:\link))"})
                               : (lines{R"(CreateSymbolicLinkW(C:\link) flags 3)",
                                        R"(CreateSymbolicLinkW(C:\link) flags 1)"}));
        EXPECT_EQ(fresh.journal().front().second_text, fresh.journal().back().second_text);
        EXPECT_EQ((fresh.attributes(u"C:\\link") & FILE_ATTRIBUTE_DIRECTORY) != 0,
                  type == directory);
    }
}

TEST_ON_MACHINE(CreateSymlinkCalls, EveryCodeNamesNothing)
{
    for (DWORD const code : {2U, 3U, 5U, 32U, 80U, 87U, 123U, 145U, 161U, 183U, 206U, 267U, 1314U,
                             1920U, 4390U, 4392U}) {
        for (unsigned int const type : {file, directory}) {
            machine.clear_journal();
            sure_fault const fault = machine.fail_every_call_on("CreateSymbolicLinkW", code);
            EXPECT_EQ(making(type), translated(code, u"")) << code;
            EXPECT_EQ(machine.calls_of("CreateSymbolicLinkW"), code == 87 ? 2 : 1) << code;
            EXPECT_FALSE(machine.exists(u"C:\\link"));
        }
    }
}

TEST_ON_MACHINE(CreateSymlinkCalls, TheCodeOfTheSecondOneCounts)
{
    sure_fault const first = machine.fail_call("CreateSymbolicLinkW", 1, 87);
    sure_fault const second = machine.fail_call("CreateSymbolicLinkW", 2, 1314);
    EXPECT_EQ(making(file), system_error(1314, u""));
    EXPECT_EQ(machine.calls_of("CreateSymbolicLinkW"), 2);
}

TEST_ON_MACHINE(CreateSymlinkRights, NobodyMayMakeLinks)
{
    machine.add_symbolic_link(u"C:\\old", u"x").deny_symbolic_links();
    for (unsigned int const type : {file, directory, by_itself})
        EXPECT_EQ(making(type), system_error(1314, u""));
    EXPECT_FAILURE(copy_symlink(u"C:\\old", u"C:\\link"), system_error(1314, u""));
    EXPECT_EQ(machine.entries(u"C:\\"), names{u"old"});
}

TEST_ON_MACHINE(CreateSymlinkRights, AClosedDirectory)
{
    machine.add_directory(u"C:\\closed").deny_creation(u"C:\\closed");
    EXPECT_EQ(making(file, u"C:\\closed\\link"), denied(u""));
    EXPECT_EQ(machine.entries(u"C:\\closed").size(), 0U);
}

// No long prefix is added, and native form takes off the one that the caller wrote.
TEST_ON_MACHINE(CreateSymlinkLengths, TheSystemsOrdinaryLimit)
{
    std::u16string const head = u"C:\\" + std::u16string(100, u'd') + u'\\';
    for (std::size_t const size : {258U, 259U, 260U, 261U}) {
        simulated_machine fresh;
        fresh.add_directory(head.substr(0, head.size() - 1));
        std::u16string const link = of_size(head.c_str(), size);
        maybe_failure const expected = size < 260 ? std::nullopt : std::optional(not_found(u""));
        EXPECT_EQ(making(file, link), expected) << size;
        EXPECT_EQ(making(file, uR"(\\?\)" + link),
                  expected ? expected : std::optional(file_exists(u"")))
            << size;
        EXPECT_EQ(fresh.exists(link), !expected) << size;
        EXPECT_EQ(fresh.journal().back().text, link) << size;
        fresh.remove(head.substr(0, head.size() - 1)).add_symbolic_link(link, u"x");
        EXPECT_FAILURE(copy_symlink(link, u"C:\\copy"), expected) << size;
    }
}

TEST_ON_MACHINE(CreateSymlinkLengths, TextsBeyondItAreFine)
{
    std::u16string const text = of_size(u"C:\\", 1000);
    create_symlink(text, u"C:\\link", file);
    EXPECT_EQ(machine.journal().back().second_text, text);
    EXPECT_EQ(read_symlink(u"C:\\link"), text);
}

TEST_ON_MACHINE(CopySymlinkCalls, OpenReadLookCloseAndMake)
{
    machine.add_directory(u"C:\\work").set_current_directory(u"C:\\work");
    machine.add_symbolic_link(u"C:\\work\\link", u"x", flavour::directory);
    copy_symlink(u"link", u"copy");
    EXPECT_EQ(calls_with_arguments(machine),
              (lines{"CreateFileW(link) access 80 share 7 disposition 3 flags 2200000",
                     "DeviceIoControl(link) flags 900A8", "GetFileInformationByHandleEx(link)",
                     "CloseHandle(link)", "CreateSymbolicLinkW(copy) flags 3"}));
    EXPECT_EQ(machine.journal().back().second_text, u"x");
    EXPECT_EQ(machine.journal().at(1).room, 16386U);
}

struct copied_case
{
    char16_t const *substitute, *print;
    DWORD flags;
    char16_t const *text;
    char const *why;
};

constexpr copied_case copied_cases[] = {
    {u"s", u"p", 1, u"p", "the print name"},
    {uR"(..\s)", u"", 1, uR"(..\s)", "or the substitute name"},
    {uR"(\??\C:\x)", u"", 0, uR"(\??\C:\x)", "with its prefix"},
    {uR"(\??\C:\x)", uR"(C:\x)", 0, uR"(C:\x)", "an absolute link"},
    {u"a", u"a//b/c", 1, u"a//b/c", "no slash is turned"},
    {u"a", uR"(C:\\a\\)", 0, uR"(C:\\a\\)", "nor a run shortened"},
    {u"a", uR"(\\?\C:\a)", 0, uR"(\\?\C:\a)", "nor a prefix taken off"},
};

TEST_ON_MACHINE(CopySymlinkCalls, TheTextIsNotCleaned)
{
    for (copied_case const &row : copied_cases) {
        for (flavour const kind : {flavour::file, flavour::directory}) {
            simulated_machine fresh;
            fresh.add_symbolic_link(u"C:\\link", row.substitute, row.print, row.flags, kind);
            // whether the system takes that text is another matter
            static_cast<void>(failure_of([] { copy_symlink(u"C:\\link", u"C:\\copy"); }));
            auto const made = fresh.journal().back();
            EXPECT_EQ(made.function, "CreateSymbolicLinkW") << row.why;
            EXPECT_EQ(made.text, u"C:\\copy") << row.why;
            EXPECT_EQ(made.second_text, row.text) << row.why;
            EXPECT_EQ(made.flags, kind == flavour::file ? 2U : 3U) << row.why;
        }
    }
}

TEST_ON_MACHINE(CopySymlinkCalls, OtherReparsePointsAreCode4393)
{
    machine.add_directory(u"C:\\dir").add_drive(u'D').add_junction(u"C:\\junction", u"C:\\dir");
    machine.add_deduplicated_file(u"C:\\dedup").add_mount_point(u"C:\\volume", u'D');
    for (char16_t const *name : {u"C:\\junction", u"C:\\dedup", u"C:\\volume"}) {
        machine.clear_journal();
        EXPECT_FAILURE(copy_symlink(name, u"C:\\copy"), system_error(4393, u""));
        EXPECT_EQ(machine.journal().size(), 4U) << "also their attributes are read";
        EXPECT_EQ(machine.journal().at(2).function, "GetFileInformationByHandleEx");
        EXPECT_FALSE(machine.exists(u"C:\\copy"));
    }
}

// The calls, in their order; nobody asks about the closing.
TEST_ON_MACHINE(CopySymlinkCalls, EachCallThatFails)
{
    auto const build = [](simulated_machine &fresh) { fresh.add_symbolic_link(u"C:\\link", u"x"); };
    maybe_failure const failed = system_error(1117, u"");
    failures told;
    sweep(build, [&](failing_run const &run) {
        told.push_back(failure_of([] { copy_symlink(u"C:\\link", u"C:\\copy"); }));
        EXPECT_EQ(run.machine.exists(u"C:\\copy"), !told.back());
    });
    EXPECT_EQ(told, (failures{failed, failed, failed, {}, failed, {}}));
}

TEST_ON_MACHINE(CopySymlinkCalls, EveryCodeOfTheOpeningNamesNothing)
{
    machine.add_symbolic_link(u"C:\\link", u"x");
    for (DWORD const code : {2U, 3U, 5U, 32U, 53U, 123U, 206U, 267U, 1920U}) {
        machine.clear_journal();
        sure_fault const fault = machine.fail_every_call_on("CreateFileW", code);
        EXPECT_FAILURE(copy_symlink(u"C:\\link", u"C:\\copy"), translated(code, u"")) << code;
        EXPECT_EQ(machine.journal().size(), 1U) << code;
    }
}

TEST_ON_MACHINE(CopySymlinkCalls, AnOpeningThatFailsWithoutACodeIsAFailure)
{
    machine.add_symbolic_link(u"C:\\link", u"x");
    auto const fault = machine.fail_every_call_on("CreateFileW", 0);
    EXPECT_FAILURE(copy_symlink(u"C:\\link", u"C:\\copy"), translated(ERROR_GEN_FAILURE, u""));
    EXPECT_EQ(machine.journal().size(), 1U);
    EXPECT_FALSE(machine.exists(u"C:\\copy"));
}

TEST_ON_MACHINE(CopySymlinkCalls, ASecondLinkWithoutTheFlagAfterCode87)
{
    machine.add_symbolic_link(u"C:\\link", u"x", flavour::directory);
    auto const fault = machine.fail_call("CreateSymbolicLinkW", 1, 87);
    copy_symlink(u"C:\\link", u"C:\\copy");
    EXPECT_EQ(machine.journal().back().flags, 1U);
    EXPECT_EQ(machine.calls_of("CreateSymbolicLinkW"), 2);
    EXPECT_EQ(read_symlink(u"C:\\copy"), u"x");
}

TEST_ON_MACHINE(CopySymlinkCalls, EmptyNames)
{
    machine.add_symbolic_link(u"C:\\link", u"x");
    EXPECT_FAILURE(copy_symlink(upath(), upath(u"C:\\copy")), not_found(u""));
    EXPECT_FAILURE(copy_symlink(upath(u"C:\\link"), upath()), not_found(u""));
    EXPECT_FAILURE(create_symlink(upath(u"x"), upath(), file), not_found(u""));
}

} // namespace
} // namespace fl::filesystem::tests
