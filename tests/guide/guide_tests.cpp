// The code on the pages of docs/ is code that is compiled: each block stands in the source
// that belongs to its page, but for the indentation.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

namespace {

std::vector<std::string> lines_of(char const *pathname)
{
    std::ifstream file(pathname);
    EXPECT_TRUE(file.is_open()) << pathname;
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line.erase(0, line.find_first_not_of(' ')));
    return lines;
}

TEST(Guide, EverydayCodeIsThatOfItsSource)
{
    std::vector<std::string> const page = lines_of(FL_GUIDE_PAGE);
    std::vector<std::string> const source = lines_of(FL_GUIDE_SOURCE);
    int blocks = 0;
    for (auto from = page.begin(); from != page.end(); ++from) {
        from = std::find(from, page.end(), "```cpp");
        if (from == page.end())
            break;
        auto const to = std::find(from, page.end(), "```");
        ASSERT_NE(to, page.end());
        EXPECT_NE(std::search(source.begin(), source.end(), from + 1, to), source.end())
            << "isn't there: " << *(from + 1) << " ...";
        ++blocks;
        from = to;
    }
    EXPECT_EQ(blocks, 10);
}

} // namespace
