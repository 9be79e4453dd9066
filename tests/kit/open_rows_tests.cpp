// The table of what nobody has confirmed of Windows, and the page that says so.

#include "kit/probe.hpp"

#include "kit/playing.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using row_name = std::pair<std::string, std::string>;

std::vector<std::string> columns_of(std::string const &line)
{
    std::string const between = " | ";
    std::vector<std::string> columns;
    std::string::size_type from = 0;
    for (auto at = line.find(between); at != std::string::npos; at = line.find(between, from)) {
        columns.push_back(line.substr(from, at - from));
        from = at + between.size();
    }
    columns.push_back(line.substr(from));
    return columns;
}

/// Whether a column of sources has a question mark that stands by itself.
bool is_open(std::string const &sources)
{
    std::istringstream words(sources);
    for (std::string word; words >> word;) {
        if (word == "?")
            return true;
    }
    return false;
}

/// Call and claim of each row that has a question mark among its sources.
std::vector<row_name> open_rows_of_the_page()
{
    std::ifstream page(FL_SIMULATION_PAGE);
    EXPECT_TRUE(page.is_open());
    std::vector<row_name> rows;
    std::string call;
    for (std::string line; std::getline(page, line);) {
        if (line.rfind("| ", 0) != 0)
            continue;
        std::vector<std::string> const columns = columns_of(line.substr(2));
        if (columns.size() < 4 && line.rfind("| | ", 0) != 0)
            continue;                                    // another table
        bool const goes_on = line.rfind("| | ", 0) == 0; // the call is the one above
        if (!goes_on)
            call = columns.front();
        if (is_open(columns.back()))
            rows.emplace_back(call, goes_on ? columns.front().substr(2) : columns.at(1));
    }
    return rows;
}

TEST(OpenRows, AreThoseOfThePage)
{
    std::vector<row_name> table;
    for (kit::probe const &row : kit::open_rows())
        table.emplace_back(row.subject, row.claim);
    std::vector<row_name> const page = open_rows_of_the_page();
    EXPECT_GT(page.size(), 0U);
    for (row_name const &row : page)
        EXPECT_NE(std::find(table.begin(), table.end(), row), table.end())
            << "has no probe: " << row.first << ": " << row.second;
    for (row_name const &row : table)
        EXPECT_NE(std::find(page.begin(), page.end(), row), page.end())
            << "is not open on the page: " << row.first << ": " << row.second;
    EXPECT_EQ(table, page) << "in the page's order";
}

// What the page claims is what the machine does, so a script that disagrees is a wrong script.
TEST(OpenRows, AreWhatTheMachineDoes)
{
    for (kit::probe const &row : kit::open_rows()) {
        if (row.holds_for == kit::pathnames::short_ones && test_support::takes_long_pathnames())
            continue;
        kit::played const told = kit::play(row.script);
        EXPECT_EQ(told.obstacle, "") << row.subject << ": " << row.claim;
        EXPECT_TRUE(told.agrees) << row.subject << ": " << row.claim << "\n  " << row.script
                                 << "\n  " << told.seen;
    }
}

TEST(PlayedScripts, TellWhatWasSeen)
{
    kit::played const wrong = kit::play("file a x; delete b; content a -> y; rmdir nul =5");
    EXPECT_FALSE(wrong.agrees);
    EXPECT_EQ(wrong.seen, "file a x; delete b =2; content a -> x; rmdir nul =267");
    kit::played const right = kit::play("delete b =2; resolve @\\a =0x80070002");
    EXPECT_TRUE(right.agrees) << right.seen;
    EXPECT_EQ(right.seen, "delete b =2; resolve @\\a =0x80070002");
    EXPECT_EQ(kit::play("fly").obstacle, "no verb: fly");
    EXPECT_EQ(
        kit::play("delete b; dir a; file a x").obstacle.rfind("behind delete b =2; dir a: ", 0),
        0U);
}

} // namespace
