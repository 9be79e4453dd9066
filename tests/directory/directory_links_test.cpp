// Listing through links: which ways are entered, and which lead back.

#include <fl/filesystem/directory.hpp>

#include "directory/listing.hpp"
#include "support/calls.hpp"

namespace fl::filesystem::tests {
namespace {

constexpr directory_options follow = directory_options::follow_directory_symlink;
constexpr unsigned int loop = 8246;

TEST_ON_MACHINE(DirectoryLinks, ALoopIsRecognisedByIdentityWhateverItsWayIs)
{
    struct
    {
        void (*build)(simulated_machine &);
        char16_t const *named;
        char const *why;
    } const rows[] = {
        {[](simulated_machine &m) { m.add_junction(uR"(C:\t\j)", uR"(C:\t)"); }, uR"(C:\t\j)",
         "to the beginning"},
        {[](simulated_machine &m) { m.add_junction(uR"(C:\t\a\b\j)", uR"(C:\t\a)"); },
         uR"(C:\t\a\b\j)", "to the middle"},
        {[](simulated_machine &m) { m.add_junction(uR"(C:\t\a\j)", uR"(c:\T\A)"); }, uR"(C:\t\a\j)",
         "to the directory that it is in, otherwise written"},
        {[](simulated_machine &m) {
             m.add_symbolic_link(uR"(C:\t\a\s)", u"..", flavour::directory);
         },
         uR"(C:\t\a\s)", "relative"},
        {[](simulated_machine &m) { m.add_junction(uR"(C:\t\a\j)", uR"(C:\)"); }, uR"(C:\t\a\j\t)",
         "from above: it is the tree that leads back"},
        {[](simulated_machine &m) {
             m.add_junction(uR"(C:\t\a)", uR"(C:\u)").add_junction(uR"(C:\u\b)", uR"(C:\t)");
         },
         uR"(C:\t\a\b)", "two that lead to each other"},
        {[](simulated_machine &m) {
             m.add_drive(u'D').add_mount_point(uR"(C:\t\v)", u'D');
             m.add_junction(uR"(D:\back)", uR"(C:\t)");
         },
         uR"(C:\t\v\back)", "by another volume"},
    };
    for (auto const &row : rows) {
        simulated_machine fresh;
        row.build(fresh);
        EXPECT_FAILURE(tree_of(uR"(C:\t)", follow), system_error(loop, row.named)) << row.why;
        EXPECT_EQ(fresh.find_handles() + fresh.open_handles(), 0) << row.why;
        EXPECT_NO_THROW(tree_of(uR"(C:\t)")) << row.why;
    }
}

// The system itself gives up on these.
TEST_ON_MACHINE(DirectoryLinks, ALinkToItselfIsNamed)
{
    machine.add_symbolic_link(uR"(C:\t\s)", uR"(C:\t\s)", flavour::directory);
    EXPECT_FAILURE(tree_of(uR"(C:\t)", follow),
                   system_error(ERROR_CANT_RESOLVE_FILENAME, uR"(C:\t\s)"));
}

TEST_ON_MACHINE(DirectoryLinks, TwoWaysToOneDirectoryAreNoLoop)
{
    machine.add_file(uR"(C:\away\x)");
    machine.add_junction(uR"(C:\t\a)", uR"(C:\away)").add_junction(uR"(C:\t\b)", uR"(C:\away)");
    EXPECT_EQ(tree_of(uR"(C:\t)", follow),
              (names{uR"(C:\t\a)", uR"(C:\t\a\x)", uR"(C:\t\b)", uR"(C:\t\b\x)"}));
}

TEST_ON_MACHINE(DirectoryLinks, LinksThatLeadNowhereOrToFilesArePassedOver)
{
    machine.add_file(uR"(C:\file)");
    machine.add_symbolic_link(uR"(C:\t\a)", uR"(C:\no)", flavour::directory);
    machine.add_symbolic_link(uR"(C:\t\b)", uR"(C:\file)", flavour::directory);
    machine.add_symbolic_link(uR"(C:\t\c)", uR"(C:\file)", flavour::file);
    machine.add_junction(uR"(C:\t\d)", uR"(Q:\no)");
    EXPECT_EQ(tree_of(uR"(C:\t)", follow).size(), 4U);
}

TEST_ON_MACHINE(DirectoryLinks, TheDirectoryThatIsGivenMayBeALink)
{
    machine.add_file(uR"(C:\away\x)").add_junction(uR"(C:\j)", uR"(C:\away)");
    EXPECT_EQ(names_in(uR"(C:\j)"), names{u"x"});
    EXPECT_EQ(tree_of(uR"(C:\j)"), names{uR"(C:\j\x)"});
}

TEST_ON_MACHINE(DirectoryLinks, LinksOnAShareAreLeftToTheSystem)
{
    machine.add_share(u"server", u"share");
    machine.add_file(uR"(\\server\share\away\x)");
    machine.add_symbolic_link(uR"(\\server\share\t\s)", uR"(..\away)", flavour::directory);
    EXPECT_EQ(tree_of(uR"(\\server\share\t)"), names{uR"(\\server\share\t\s)"});
    EXPECT_FAILURE(tree_of(uR"(\\server\share\t)", follow),
                   system_error(ERROR_SYMLINK_CLASS_DISABLED, uR"(\\server\share\t\s)"));
    machine.follow_remote_links();
    EXPECT_EQ(tree_of(uR"(\\server\share\t)", follow),
              (names{uR"(\\server\share\t\s)", uR"(\\server\share\t\s\x)"}));
}

TEST_ON_MACHINE(DirectoryLinks, MappedDrivesAndServersThatDontAnswer)
{
    machine.add_share(u"server", u"share").map_drive(u'X', u"server", u"share");
    machine.add_file(uR"(\\server\share\d\x)").add_dead_server(u"dead");
    EXPECT_EQ(tree_of(u"X:\\"), (names{uR"(X:\d)", uR"(X:\d\x)"}));
    EXPECT_FAILURE(tree_of(uR"(\\dead\share)"),
                   system_error(ERROR_BAD_NETPATH, uR"(\\dead\share)"));
}

TEST_ON_MACHINE(DirectoryLinks, EntriesOfLinksAnswerForWhatTheyLeadTo)
{
    machine.add_file(uR"(C:\away\f)", "12345").set_times(uR"(C:\away\f)", {1, 2, 4'000'000'007});
    machine.add_symbolic_link(uR"(C:\t\f)", uR"(C:\away\f)");
    directory_entry const file = *directory_iterator(uR"(C:\t)");
    machine.clear_journal();
    EXPECT_TRUE(file.is_symlink() && file.is_regular_file() && file.exists());
    EXPECT_EQ(file.file_size(), 5U);
    constexpr std::int64_t since_1601 = 116'444'736'000'000'000;
    EXPECT_EQ(file.last_write_time().time_since_epoch().count(), 4'000'000'007 - since_1601)
        << "to the last digit";
}

} // namespace
} // namespace fl::filesystem::tests
