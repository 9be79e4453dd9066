// Renaming on the simulated machine: links, rights and volumes, the calls, and what each
// code of them is reported as.

#include <fl/filesystem/operations.hpp>

#include "support/calls.hpp"
#include "support/translation.hpp"

namespace fl::filesystem::tests {
namespace {

char16_t const *const from = u"C:\\from";
char16_t const *const to = u"C:\\to";

maybe_failure renaming(std::u16string const &source, std::u16string const &target)
{
    return failure_of([&] { rename(source, target); });
}

TEST_ON_MACHINE(RenameCalls, FormTheTargetFirstAndMoveOnce)
{
    machine.add_directory(u"C:\\work").add_file(u"C:\\work\\a").set_current_directory(u"C:\\work");
    rename(u"a", u"b");
    EXPECT_EQ(calls_with_arguments(machine), (lines{"GetFullPathNameW(b)", "GetFullPathNameW(a)",
                                                    R"(MoveFileExW(C:\work\a) flags 3)"}));
    EXPECT_EQ(machine.journal().back().second_text, uR"(C:\work\b)");
    EXPECT_TRUE(machine.is_file(uR"(C:\work\b)"));
}

TEST_ON_MACHINE(RenameCalls, CarryPrefixesBeyondTheLimit)
{
    for (std::size_t const size : {247U, 248U}) {
        simulated_machine fresh;
        std::u16string const name = of_size(u"C:\\n", size);
        std::u16string const other = of_size(u"C:\\o", size);
        fresh.add_file(name);
        rename(name, other);
        std::u16string const prefix = size < 248 ? u"" : uR"(\\?\)";
        EXPECT_EQ(fresh.journal().back().text, prefix + name);
        EXPECT_EQ(fresh.journal().back().second_text, prefix + other);
        rename(other, u"C:\\short");
        EXPECT_EQ(fresh.journal().back().text, prefix + other) << "each for itself";
        EXPECT_EQ(fresh.journal().back().second_text, u"C:\\short");
    }
}

TEST_ON_MACHINE(RenameCalls, AskAboutTheSourceOnlyAfterAFailure)
{
    EXPECT_EQ(renaming(from, to), not_found(from));
    EXPECT_EQ(calls_with_arguments(machine),
              (lines{R"(GetFullPathNameW(C:\to))", R"(GetFullPathNameW(C:\from))",
                     R"(MoveFileExW(C:\from) flags 3)", R"(GetFileAttributesExW(C:\from))",
                     R"(GetFullPathNameW(C:\from))", R"(GetFileAttributesExW(C:\from))"}));
}

TEST_ON_MACHINE(RenameCalls, EachCallThatFails)
{
    failures told;
    sweep([](simulated_machine &fresh) { fresh.add_file(from); },
          [&](failing_run const &run) {
              told.push_back(renaming(from, to));
              EXPECT_EQ(run.machine.is_file(from), run.is_broken());
          });
    EXPECT_EQ(
        told,
        (failures{
            system_error(1117, to), system_error(1117, from), translated(1117, from, to), {}}));
}

/// Makes `C:\from` what it is, if anything.
using maker = void (*)(simulated_machine &);

struct source_case
{
    maker make;
    bool is_there;
    bool takes_denials; ///< whether it is to blame for code 5
    char const *why;
};

source_case const source_cases[] = {
    {[](auto &made) { made.add_file(from); }, true, false, "a file"},
    {[](auto &made) { made.add_directory(from); }, true, false, "a directory"},
    {[](auto &made) { made.add_file(from).deny(from, right::read); }, true, true, "unreadable"},
    {[](auto &made) { made.add_symbolic_link(from, u"C:\\file"); }, true, true, "a symbolic link"},
    {[](auto &made) { made.add_symbolic_link(from, u"C:\\no"); }, false, true, "a broken one"},
    {[](auto &made) { made.add_junction(from, u"C:\\dir"); }, true, false, "a junction"},
};

TEST_ON_MACHINE(RenameCalls, EveryCodeBlamesOne)
{
    for (source_case const &row : source_cases) {
        simulated_machine fresh;
        fresh.add_file(u"C:\\file").add_directory(u"C:\\dir");
        row.make(fresh);
        for (DWORD const code : {80U, 145U, 183U, 206U, 267U, 2U, 3U, 5U, 17U, 32U, 53U, 87U, 123U,
                                 161U, 1117U, 1314U, 1920U, 4390U}) {
            bool const is_missing = (code == 2 || code == 3) && !row.is_there;
            bool const is_listed = code == 80 || code == 145 || code == 183 || code == 206 ||
                                   code == 267 || code == 2 || code == 3;
            auto expected = translated(code, from, to);
            if (is_missing || (code == 5 && row.takes_denials))
                expected = translated(code, from);
            else if (is_listed || code == 5)
                expected = translated(code, to);
            sure_fault const fault = fresh.fail_every_call_on("MoveFileExW", code);
            EXPECT_EQ(renaming(from, to), expected) << row.why << ", code " << code;
        }
        EXPECT_EQ(fresh.open_handles(), 0) << row.why;
        EXPECT_FALSE(fresh.exists(to)) << row.why;
    }
}

// What the questions about the source throw travels in place of the report.
TEST_ON_MACHINE(RenameCalls, ASourceThatCantBeLookedAtIsAFailureOfItsOwn)
{
    machine.add_file(from).add_file(to).deny(from, right::read_attributes);
    for (DWORD const code : {2U, 5U, 32U, 183U}) {
        auto const fault = machine.fail_every_call_on("MoveFileExW", code);
        EXPECT_EQ(renaming(from, to), denied(from)) << code;
    }
    auto const broken = machine.fail_every_call_on("GetFileAttributesExW", 1117);
    EXPECT_EQ(renaming(u"C:\\missing", to), system_error(1117, u"C:\\missing"));
}

TEST_ON_MACHINE(RenameCalls, ADeniedMissingSourceIsWhatAccessSays)
{
    auto const fault = machine.fail_every_call_on("MoveFileExW", 5);
    EXPECT_EQ(renaming(from, to), not_found(u"")) << "of `access`, which names nothing";
}

TEST_ON_MACHINE(RenameRights, OfTheTwoPlaces)
{
    failing_row<maker> const cases[] = {
        {[](auto &made) { made.deny(from, right::remove); }, denied(to),
         "the source can be read, and so the target is blamed"},
        {[](auto &made) { made.deny(from, right::remove).deny(from, right::read); }, denied(from),
         "a source that can't be read"},
        {[](auto &made) { made.deny(to, right::remove); }, denied(to),
         "a target that can't be replaced"},
        {[](auto &made) { made.set_attributes(to, FILE_ATTRIBUTE_READONLY); }, denied(to),
         "a read-only target"},
    };
    for (auto const &row : cases) {
        simulated_machine fresh;
        fresh.add_file(from, "content").add_file(to, "former");
        row.given(fresh);
        EXPECT_EQ(renaming(from, to), row.expected) << row.why;
        EXPECT_EQ(fresh.content(from), "content") << row.why;
        EXPECT_EQ(fresh.content(to), "former") << row.why;
    }
}

TEST_ON_MACHINE(RenameRights, OfTheDirectoryOfTheTarget)
{
    machine.add_file(from).add_directory(u"C:\\closed").deny_creation(u"C:\\closed");
    EXPECT_EQ(renaming(from, u"C:\\closed\\to"), denied(u"C:\\closed\\to"));
    EXPECT_TRUE(machine.exists(from));
    EXPECT_EQ(machine.entries(u"C:\\closed").size(), 0U);
}

TEST_ON_MACHINE(RenameRights, OfASymbolicLinkBlameItWithoutATest)
{
    machine.add_file(u"C:\\file").add_symbolic_link(from, u"C:\\file").deny(from, right::remove);
    EXPECT_EQ(renaming(from, to), denied(from)) << "though its target can be read";
    EXPECT_EQ(machine.reparse_tag(from), DWORD{IO_REPARSE_TAG_SYMLINK});
}

TEST_ON_MACHINE(RenameLinks, AreRenamedThemselves)
{
    machine.add_file(u"C:\\file", "content").add_directory(u"C:\\dir\\sub");
    machine.add_symbolic_link(u"C:\\link", u"file").add_symbolic_link(u"C:\\broken", u"missing");
    machine.add_symbolic_link(u"C:\\dirlink", u"dir", flavour::directory);
    machine.add_junction(u"C:\\junction", u"C:\\dir");
    for (std::u16string const name : {u"link", u"broken", u"dirlink", u"junction"}) {
        std::u16string const old_name = u"C:\\" + name;
        std::u16string const new_name = u"C:\\new " + name;
        DWORD const tag = machine.reparse_tag(old_name);
        std::string const data = machine.reparse_data(old_name);
        rename(old_name, new_name);
        EXPECT_FALSE(machine.exists(old_name)) << printable(name);
        EXPECT_EQ(machine.reparse_tag(new_name), tag) << printable(name);
        EXPECT_EQ(machine.reparse_data(new_name), data) << printable(name);
    }
    EXPECT_EQ(machine.content(u"C:\\file"), "content");
    EXPECT_EQ(machine.entries(u"C:\\dir"), names{u"sub"});
}

TEST_ON_MACHINE(RenameLinks, AreReplacedThemselves)
{
    machine.add_file(from, "content").add_file(u"C:\\file", "kept");
    machine.add_symbolic_link(to, u"C:\\file");
    rename(from, to);
    EXPECT_EQ(machine.reparse_tag(to), 0U);
    EXPECT_EQ(machine.content(to), "content");
    EXPECT_EQ(machine.content(u"C:\\file"), "kept") << "nobody followed the link";
}

TEST_ON_MACHINE(RenameLinks, ToADirectoryAreNotReplaced)
{
    machine.add_file(from).add_directory(u"C:\\dir").add_junction(to, u"C:\\dir");
    EXPECT_EQ(renaming(from, to), denied(to));
    EXPECT_TRUE(machine.exists(from));
    EXPECT_EQ(machine.reparse_tag(to), DWORD{IO_REPARSE_TAG_MOUNT_POINT});
}

TEST_ON_MACHINE(RenameVolumes, FilesAndLinksGoAndDirectoriesStay)
{
    machine.add_drive(u'D').add_file(from, "content").add_file(u"C:\\dir\\inner");
    machine.add_symbolic_link(u"C:\\link", u"C:\\from");
    rename(u"C:\\link", u"D:\\link");
    EXPECT_EQ(machine.reparse_tag(u"D:\\link"), DWORD{IO_REPARSE_TAG_SYMLINK});
    EXPECT_FALSE(machine.exists(u"C:\\link"));
    rename(from, u"D:\\to");
    EXPECT_EQ(machine.content(u"D:\\to"), "content");
    EXPECT_FALSE(machine.exists(from));
    EXPECT_EQ(renaming(u"C:\\dir", u"D:\\dir"), denied(u"D:\\dir"));
    EXPECT_TRUE(machine.exists(u"C:\\dir\\inner"));
    EXPECT_FALSE(machine.exists(u"D:\\dir"));
}

TEST_ON_MACHINE(RenameVolumes, DirectoriesIntoThemselves)
{
    machine.add_directory(u"C:\\dir\\sub");
    EXPECT_EQ(renaming(u"C:\\dir", u"C:\\dir\\new"), translated(32, u"C:\\dir", u"C:\\dir\\new"));
    EXPECT_EQ(renaming(u"C:\\dir", u"C:\\dir\\sub\\new"), denied(u"C:\\dir\\sub\\new"));
    EXPECT_EQ(machine.entries(u"C:\\dir"), names{u"sub"});
}

TEST_ON_MACHINE(RenameVolumes, ThatAreNotThere)
{
    machine.add_file(from).add_dead_server(u"dead");
    EXPECT_EQ(renaming(from, u"Q:\\to"), not_found(u"Q:\\to"));
    EXPECT_EQ(renaming(u"Q:\\from", to), not_found(u"Q:\\from"));
    EXPECT_EQ(renaming(from, uR"(\\dead\share\to)"), translated(53, from, uR"(\\dead\share\to)"));
    EXPECT_EQ(renaming(uR"(\\dead\share\from)", to), translated(53, uR"(\\dead\share\from)", to));
}

} // namespace
} // namespace fl::filesystem::tests
