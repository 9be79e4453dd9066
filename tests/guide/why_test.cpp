// The rows of docs/why.md: what is said of this library, and that the tests that they name exist.

#include "guide/page.hpp"

#include <iterator>

namespace {

using namespace guide;

TEST(WhyGuide, TestsThatAreNamedExist)
{
    std::string const tests = all_tests();
    auto const has_suite = [&tests](std::string const &suite) {
        return tests.find("TEST(" + suite + ",") != std::string::npos;
    };
    int named = 0;
    for (lines const &row : rows_of(
             "docs/why.md", "| what | `std::filesystem` | Boost.Filesystem | here | evidence |")) {
        std::size_t const ours = row[4].find("ours: `");
        ASSERT_NE(ours, std::string::npos) << row[0];
        std::size_t const from = ours + std::string("ours: `").size();
        std::string const suite = row[4].substr(from, row[4].find('`', from) - from);
        EXPECT_TRUE(has_suite(suite)) << suite;
        ++named;
    }
    EXPECT_EQ(named, 10);
    EXPECT_FALSE(has_suite("NoSuch"
                           "Suite"));
}

TEST(WhyGuide, RemovingATreeGoesOnAndTellsAll)
{
    simulated_machine machine;
    machine.add_file(u"C:\\t\\a").add_file(u"C:\\t\\b\\c").add_file(u"C:\\t\\d\\e");
    machine.add_file(u"C:\\t\\read-only")
        .set_attributes(u"C:\\t\\read-only", FILE_ATTRIBUTE_READONLY);
    machine.add_file(u"C:\\outside\\kept").add_junction(u"C:\\t\\j", u"C:\\outside");
    machine.deny(u"C:\\t\\b\\c", simulation::right::remove);
    machine.deny(u"C:\\t\\b", simulation::right::write);
    std::uint64_t shown = 0;
    auto const report =
        fs::remove_all(u"C:\\t", fs::removal_options().clear_read_only().keep_going().on_progress(
                                     [&shown](fs::removal_progress const &now) {
                                         shown = now.removed;
                                         return true;
                                     }));
    EXPECT_EQ(report.removed(), shown);
    EXPECT_EQ(machine.entries(u"C:\\outside"), test_support::names{u"kept"});
    ASSERT_EQ(report.failures().size(), 1U);
    EXPECT_EQ(report.failures()[0].path_name(), u"C:\\t\\b\\c");
    EXPECT_EQ(report.removed(), 5U) << "a, d\\e, d, j and read-only";
}

} // namespace
