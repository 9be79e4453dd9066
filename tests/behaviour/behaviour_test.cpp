#include "behaviour/report.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <vector>

namespace {

std::vector<std::string> lines_of(std::istream &in)
{
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

// Readers of docs/behaviour.md rely on it.
TEST(Behaviour, IsWhatThePageTells)
{
    std::ifstream page(FL_BEHAVIOUR_PAGE);
    ASSERT_TRUE(page.is_open());
    std::vector<std::string> const told = lines_of(page);
    std::istringstream now(behaviour::report());
    std::vector<std::string> const seen = lines_of(now);
    for (std::size_t i = 0; i < std::min(told.size(), seen.size()); ++i)
        ASSERT_EQ(seen[i], told[i]) << "line " << i + 1 << " of docs/behaviour.md";
    EXPECT_EQ(seen.size(), told.size());
}

} // namespace
