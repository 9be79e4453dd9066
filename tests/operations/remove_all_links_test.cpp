// Links and other reparse points within a tree, rights, and the texts of long names.

#include <fl/filesystem/operations.hpp>

#include "support/calls.hpp"

#include <algorithm>

namespace fl::filesystem::tests {
namespace {

constexpr DWORD strange_tag = 0x42;
std::string const maker(16, 'g'); // what data of such a tag begins with

/// Whether some call of `function` was about exactly this text.
bool has_called(simulated_machine const &machine, std::string const &function,
                std::u16string const &text)
{
    lines const texts = texts_of(machine, function);
    return std::count(texts.begin(), texts.end(), printable(text)) != 0;
}

/// That nothing is left but what was away all the time.
void expect_away_is_left(simulated_machine const &machine)
{
    EXPECT_EQ(machine.entries(u"C:\\"), names{u"away"});
    EXPECT_EQ(machine.entries(uR"(C:\away)"), names{u"kept"});
}

TEST_ON_MACHINE(RemoveAllLinks, KeepTheirTargetsAtAnyDepth)
{
    std::u16string parent = uR"(C:\t)";
    for (int depth = 0; depth < 5; ++depth, parent += uR"(\d.)") {
        simulated_machine fresh;
        fresh.add_drive(u'D').add_file(uR"(D:\kept)").add_file(uR"(C:\away\sub\kept)");
        fresh.add_file(parent + u"\\file");
        fresh.add_symbolic_link(parent + u"\\a", uR"(C:\away\sub\kept)");
        fresh.add_symbolic_link(parent + u"\\b", uR"(C:\away)", flavour::directory);
        fresh.add_symbolic_link(parent + u"\\c", uR"(..\..\away)", flavour::directory);
        fresh.add_symbolic_link(parent + u"\\d", u"d", flavour::directory);
        fresh.add_symbolic_link(parent + u"\\e.", uR"(C:\no)", flavour::directory);
        fresh.add_junction(parent + u"\\f ", uR"(C:\away)");
        fresh.add_junction(parent + u"\\g", uR"(C:\)").add_mount_point(parent + u"\\h", u'D');
        EXPECT_EQ(failure_of([] { remove_all(uR"(C:\t)"); }), std::nullopt) << depth;
        EXPECT_EQ(fresh.entries(u"C:\\"), names{u"away"}) << depth;
        EXPECT_TRUE(fresh.exists(uR"(C:\away\sub\kept)")) << depth;
        EXPECT_TRUE(fresh.exists(uR"(D:\kept)")) << depth;
        expect_nothing_open(fresh);
    }
}

TEST_ON_MACHINE(RemoveAllLinks, AboveTheTreeAreFollowed)
{
    machine.add_file(uR"(C:\away\t\x)").add_junction(uR"(C:\j)", uR"(C:\away)");
    remove_all(uR"(C:\j\t)");
    EXPECT_EQ(machine.entries(u"C:\\"), (names{u"away", u"j"}));
    EXPECT_EQ(machine.entries(uR"(C:\away)"), names{});
}

TEST_ON_MACHINE(RemoveAllLinks, ThatMayNotBeRemovedKeepTheirTargets)
{
    machine.add_file(uR"(C:\away\f)").add_junction(uR"(C:\j)", uR"(C:\away)");
    machine.deny(uR"(C:\j)", right::remove);
    EXPECT_FAILURE(remove_all(uR"(C:\j)"), denied(uR"(C:\j)"));
    EXPECT_TRUE(machine.exists(uR"(C:\j)") && machine.exists(uR"(C:\away\f)"));
}

/// A link whose data can't be read passes for a directory: the search looks through it,
/// but its own attributes tell on it, and only the name goes.
TEST_ON_MACHINE(RemoveAllLinks, ThatCantBeReadAreNotEmptiedEither)
{
    machine.add_file(uR"(C:\away\kept)").add_junction(uR"(C:\t\j)", uR"(C:\away)");
    machine.deny(uR"(C:\t\j)", right::read_extended_attributes);
    remove_all(uR"(C:\t)");
    EXPECT_TRUE(has_called(machine, "FindFirstFileExW", uR"(C:\t\j\*)"));
    expect_away_is_left(machine);
}

// Others may put a link in its place between the enumeration that lists it and the search in
// it.
TEST_ON_MACHINE(RemoveAllLinks, ThatTakeTheirPlacesInTheMeantimeAreNotEmptiedEither)
{
    machine.add_file(uR"(C:\away\kept)").add_file(uR"(C:\t\d\x)");
    sure_fault const others = machine.before_call("FindFirstFileExW", 2, [&] {
        machine.remove(uR"(C:\t\d)").add_junction(uR"(C:\t\d)", uR"(C:\away)");
    });
    remove_all(uR"(C:\t)");
    expect_away_is_left(machine);
}

TEST_ON_MACHINE(RemoveAllLinks, ThatCantBeReadAndLeadNowhereEndIt)
{
    machine.add_junction(uR"(C:\t\j)", uR"(C:\no)");
    machine.deny(uR"(C:\t\j)", right::read_extended_attributes);
    EXPECT_FAILURE(remove_all(uR"(C:\t)"), not_found(uR"(C:\t\j\*)"));
    EXPECT_TRUE(machine.exists(uR"(C:\t\j)"));
}

TEST_ON_MACHINE(RemoveAllLinks, WhoseDataCantBeFetchedPassForDirectories)
{
    machine.add_file(uR"(C:\away\kept)").add_junction(uR"(C:\j)", uR"(C:\away)");
    sure_fault const fault = machine.fail_call("DeviceIoControl", 1, ERROR_IO_DEVICE);
    remove_all(uR"(C:\j)");
    expect_away_is_left(machine);
}

// In a pathname without a long prefix the system takes them for devices.
TEST_ON_MACHINE(RemoveAllNames, ThatAreReservedEndIt)
{
    machine.add_file(uR"(C:\t\a)").add_file(uR"(C:\t\nul)", "kept").add_file(uR"(C:\t\z)");
    EXPECT_FAILURE(remove_all(uR"(C:\t)"), system_error(1, uR"(C:\t\nul)"));
    EXPECT_EQ(machine.entries(uR"(C:\t)"), (names{u"nul", u"z"}));
    machine.remove(uR"(C:\t\nul)").add_file(uR"(C:\t\nul\x)");
    EXPECT_FAILURE(remove_all(uR"(C:\t)"), not_directory(uR"(C:\t\nul)"));
    EXPECT_EQ(machine.entries(uR"(C:\t)"), (names{u"nul", u"z"}));
    EXPECT_EQ(machine.entries(uR"(C:\t\nul)"), names{}) << "in it no name is reserved";
}

// A directory with a tag that is no link's, behind the file `a` and ahead of the file `z`.
void build_tagged_tree(simulated_machine &machine, bool is_empty)
{
    machine.add_file(uR"(C:\t\a)").add_directory(uR"(C:\t\tagged)").add_file(uR"(C:\t\z)");
    if (!is_empty)
        machine.add_file(uR"(C:\t\tagged\kept)");
    machine.add_reparse_point(uR"(C:\t\tagged)", strange_tag, maker, flavour::directory);
}

TEST_ON_MACHINE(RemoveAllTags, OfOthersAreRemovedIfEmpty)
{
    build_tagged_tree(machine, true);
    machine.handle_tag(strange_tag);
    remove_all(uR"(C:\t)");
    EXPECT_EQ(machine.entries(u"C:\\"), names{});
}

TEST_ON_MACHINE(RemoveAllTags, OfOthersAreNotEmptied)
{
    build_tagged_tree(machine, false);
    machine.handle_tag(strange_tag);
    EXPECT_FAILURE(remove_all(uR"(C:\t)"), not_empty(uR"(C:\t\tagged)"));
    EXPECT_EQ(machine.entries(uR"(C:\t)"), (names{u"tagged", u"z"}));
    EXPECT_EQ(machine.entries(uR"(C:\t\tagged)"), names{u"kept"});
    EXPECT_EQ(machine.calls_of("DeleteFileW"), 1) << "only what was ahead of it";
}

TEST_ON_MACHINE(RemoveAllTags, ThatTheSystemDoesntKnowAreRefusedBySearching)
{
    for (bool const is_empty : {true, false}) {
        simulated_machine fresh;
        build_tagged_tree(fresh, is_empty);
        EXPECT_FAILURE(remove_all(uR"(C:\t)"), denied(uR"(C:\t\tagged\*)"));
        EXPECT_EQ(fresh.entries(uR"(C:\t)"), (names{u"tagged", u"z"}));
        EXPECT_FALSE(has_called(fresh, "RemoveDirectoryW", uR"(C:\t\tagged)"));
        expect_nothing_open(fresh);
    }
}

TEST_ON_MACHINE(RemoveAllFailures, AReadOnlyFileEndsItAndWhatIsGoneStaysGone)
{
    machine.add_file(uR"(C:\t\a)").add_file(uR"(C:\t\b\x)").add_file(uR"(C:\t\c\m)");
    machine.add_file(uR"(C:\t\c\l)").add_file(uR"(C:\t\c\n)").add_file(uR"(C:\t\d)");
    machine.set_attributes(uR"(C:\t\c\m)", FILE_ATTRIBUTE_READONLY);
    EXPECT_FAILURE(remove_all(uR"(C:\t)"), denied(uR"(C:\t\c\m)"));
    EXPECT_EQ(machine.entries(uR"(C:\t)"), (names{u"c", u"d"}));
    EXPECT_EQ(machine.entries(uR"(C:\t\c)"), (names{u"m", u"n"}));
    EXPECT_EQ(machine.attributes(uR"(C:\t\c\m)"), DWORD{FILE_ATTRIBUTE_READONLY});
    remove(uR"(C:\t\c\m)");
    remove_all(uR"(C:\t)");
    EXPECT_EQ(machine.entries(u"C:\\"), names{});
}

TEST_ON_MACHINE(RemoveAllFailures, NameTheFormThatWentToTheSystem)
{
    machine.add_file(uR"(C:\t\ro.)").set_attributes(uR"(C:\t\ro.)", FILE_ATTRIBUTE_READONLY);
    machine.set_current_directory(uR"(C:\)");
    EXPECT_FAILURE(remove_all(u"t"), denied(uR"(\\?\C:\t\ro.)"));
    machine.add_share(u"server", u"share").add_file(uR"(\\server\share\t\ro )");
    machine.set_attributes(uR"(\\server\share\t\ro )", FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(failure_of([] { remove_all(u"//server/share/t/"); }),
              denied(uR"(\\?\UNC\server\share\t\ro )"));
}

TEST_ON_MACHINE(RemoveAllFailures, AnEntryThatVanishesIsNotForgiven)
{
    machine.add_file(uR"(C:\t\a)").add_file(uR"(C:\t\b)");
    auto const event = machine.before_call("DeleteFileW", 2, [&] { machine.remove(uR"(C:\t\b)"); });
    EXPECT_FAILURE(remove_all(uR"(C:\t)"), not_found(uR"(C:\t\b)"));
    EXPECT_EQ(machine.entries(uR"(C:\t)"), names{});
}

TEST_ON_MACHINE(RemoveAllFailures, AnEntryThatAppearsKeepsItsDirectory)
{
    machine.add_file(uR"(C:\t\a)");
    auto const event =
        machine.before_call("RemoveDirectoryW", 1, [&] { machine.add_file(uR"(C:\t\new)"); });
    EXPECT_FAILURE(remove_all(uR"(C:\t)"), not_empty(uR"(C:\t)"));
    EXPECT_EQ(machine.entries(uR"(C:\t)"), names{u"new"});
}

TEST_ON_MACHINE(RemoveAllFailures, AnOpenFileThatIsNotSharedEndsIt)
{
    machine.add_file(uR"(C:\t\a)").add_file(uR"(C:\t\b)");
    HANDLE const reader = ::CreateFileW(LR"(C:\t\b)", GENERIC_READ, FILE_SHARE_READ, nullptr,
                                        OPEN_EXISTING, 0, nullptr);
    EXPECT_FAILURE(remove_all(uR"(C:\t)"), system_error(32, uR"(C:\t\b)"));
    EXPECT_EQ(machine.entries(uR"(C:\t)"), names{u"b"});
    ::CloseHandle(reader);
}

/// A root keeps its separator, and the walk puts another behind it, which the system passes
/// over right behind the root of a disk. What is left in the end is the root, which stays.
TEST_ON_MACHINE(RemoveAllFailures, InARootANameWithAFullStopAtItsEndGoesToo)
{
    machine.add_drive(u'D').add_file(uR"(D:\a)").add_file(uR"(D:\b.)");
    EXPECT_FAILURE(remove_all(uR"(D:\)"), denied(uR"(D:\)"));
    EXPECT_TRUE(has_called(machine, "DeleteFileW", uR"(\\?\D:\\b.)"));
    EXPECT_EQ(machine.entries(uR"(D:\)"), names{});
}

// ---- which text gets a long prefix ----

struct prefix_case
{
    std::size_t size; ///< of the directory
    bool directory_is_bare, pattern_is_bare, child_is_bare;
};

// of a directory that the walk comes to: it is a child itself, and its pattern and its
// child `x` are two units longer
constexpr prefix_case prefix_cases[] = {
    {256, true, true, true},   {257, true, true, true},    {258, true, false, false},
    {259, true, false, false}, {260, false, false, false}, {261, false, false, false},
};

void expect_texts(std::u16string const &parent, std::u16string const &prefixed_parent,
                  prefix_case const &row)
{
    simulated_machine machine;
    machine.add_share(u"server", u"share");
    // in two names, as none may be longer than 255 units
    std::u16string const tail = uR"(\t\)" + std::u16string(100, u'm') + u'\\' +
                                std::u16string(row.size - parent.size() - 104, u'n');
    auto const text = [&](bool is_bare, char16_t const *more) {
        return (is_bare ? parent : prefixed_parent) + tail + more;
    };
    machine.add_file(parent + tail + u"\\x");
    remove_all(parent + u"\\t");
    EXPECT_TRUE(has_called(machine, "FindFirstFileExW", text(row.pattern_is_bare, u"\\*")));
    EXPECT_TRUE(has_called(machine, "CreateFileW", text(row.directory_is_bare, u"")));
    EXPECT_TRUE(has_called(machine, "DeleteFileW", text(row.child_is_bare, u"\\x")));
    EXPECT_TRUE(has_called(machine, "RemoveDirectoryW", text(row.directory_is_bare, u"")));
    EXPECT_FALSE(machine.exists(parent + u"\\t"));
}

TEST_ON_MACHINE(RemoveAllPrefixes, AreAddedFrom260Units)
{
    for (auto const &row : prefix_cases) {
        SCOPED_TRACE(row.size);
        expect_texts(u"C:", uR"(\\?\C:)", row);
        expect_texts(uR"(\\server\share)", uR"(\\?\UNC\server\share)", row);
    }
}

TEST_ON_MACHINE(RemoveAllPrefixes, OfThePatternAreToldWhereTheDirectoryHasNone)
{
    for (std::size_t const size : {257U, 258U, 259U}) {
        simulated_machine fresh;
        std::u16string const directory =
            uR"(C:\t\)" + std::u16string(100, u'm') + u'\\' + std::u16string(size - 106, u'n');
        fresh.add_file(directory + u"\\x");
        auto const fault = fresh.fail_every_call_on_name("CreateFileW", directory, 5);
        std::u16string const prefix = size + 2 < 260 ? u"" : uR"(\\?\)";
        EXPECT_FAILURE(remove_all(uR"(C:\t)"), denied(prefix + directory + u"\\*")) << size;
        EXPECT_TRUE(has_called(fresh, "CreateFileW", directory)) << size;
        EXPECT_TRUE(fresh.exists(directory + u"\\x")) << size;
        expect_nothing_open(fresh);
    }
}

TEST_ON_MACHINE(RemoveAllPrefixes, AreAddedForTheEndOfANameAndStayForAllBelowIt)
{
    machine.add_file(uR"(C:\t\d.\x)").add_file(uR"(C:\t\e\y )").add_file(uR"(C:\t\f)");
    remove_all(uR"(C:\t)");
    EXPECT_TRUE(has_called(machine, "FindFirstFileExW", uR"(\\?\C:\t\d.\*)"));
    EXPECT_TRUE(has_called(machine, "DeleteFileW", uR"(\\?\C:\t\d.\x)"));
    EXPECT_TRUE(has_called(machine, "RemoveDirectoryW", uR"(\\?\C:\t\d.)"));
    EXPECT_TRUE(has_called(machine, "DeleteFileW", uR"(\\?\C:\t\e\y )"));
    EXPECT_TRUE(has_called(machine, "RemoveDirectoryW", uR"(C:\t\e)")) << "bare again";
    EXPECT_TRUE(has_called(machine, "DeleteFileW", uR"(C:\t\f)")) << "bare again";
}

} // namespace
} // namespace fl::filesystem::tests
