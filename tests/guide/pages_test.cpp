// The code on the pages of docs/ is code that is compiled, and what they show is what came out:
// each block stands in the source that belongs to its page, but for the indentation.

#include "guide/page.hpp"

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>

namespace {

using namespace guide;

/// Pages whose source isn't named after them. The simulated machine's guide has its own.
std::map<std::string, std::string> const sources = {
    {"docs/everyday.md", "tests/guide/everyday_code.cpp"},
    {"README.md", "examples/first_program/main.cpp"},
    {"docs/first-program.md", "examples/first_program/main.cpp"},
};

std::string source_of(std::string const &page)
{
    auto const found = sources.find(page);
    if (found != sources.end())
        return found->second;
    std::string name = page.substr(5, page.size() - 8);
    std::replace(name.begin(), name.end(), '-', '_');
    return "tests/guide/" + name + "_test.cpp";
}

/// Pages that are held by tests of their own kind: the simulated machine's, the companion's, the
/// table of behaviour, and those that are written from what was measured.
bool is_others(std::string const &page)
{
    static std::set<std::string> const others = {
        "docs/behaviour.md",   "docs/flfs.md",       "docs/flfs-commands.md", "docs/performance.md",
        "docs/reliability.md", "docs/simulation.md", "docs/windows-kit.md",
    };
    return others.count(page) != 0;
}

/// Whether there is such a test, "Suite.Name", or such a script.
bool is_held_by(std::string const &name, std::string const &tests)
{
    std::size_t const stop = name.find('.');
    if (stop == std::string::npos)
        return name == "nothing" || std::filesystem::exists(FL_CHECKOUT "/" + name);
    std::string const named = "(" + name.substr(0, stop) + ", " + name.substr(stop + 1) + ")";
    // whatever it stands on: TEST, TEST_F, TEST_ON_MACHINE, TEST_IN_WORKSPACE
    for (std::size_t at = tests.find(named); at != std::string::npos;
         at = tests.find(named, at + 1))
        if (tests.compare(tests.rfind('\n', at) + 1, 4, "TEST") == 0)
            return true;
    return false;
}

lines pages()
{
    lines all{"README.md"};
    for (auto const &entry : std::filesystem::directory_iterator(FL_CHECKOUT "/docs"))
        if (entry.path().extension() == ".md")
            all.push_back("docs/" + entry.path().filename().string());
    std::sort(all.begin(), all.end());
    return all;
}

/// In whichever source has it: the page's, or the test beside an example.
bool has_block(lines const &source, lines const &block)
{
    return std::search(source.begin(), source.end(), block.begin(), block.end()) != source.end();
}

TEST(Guide, CodeAndOutputStandInTheSourceOfTheirPage)
{
    int blocks = 0;
    for (std::string const &page : pages()) {
        if (is_others(page))
            continue;
        lines const text = lines_of(page);
        for (char const *language : {"cpp", "text"}) {
            for (lines const &block : blocks_of(text, language)) {
                ASSERT_FALSE(block.empty()) << page;
                lines source = lines_of(source_of(page));
                if (page == "README.md" || page == "docs/first-program.md") {
                    lines const test = lines_of("tests/guide/first_program_test.cpp");
                    source.insert(source.end(), test.begin(), test.end());
                }
                EXPECT_TRUE(has_block(source, block))
                    << page << " has what " << source_of(page) << " hasn't: " << block[0] << " ...";
                ++blocks;
            }
        }
    }
    EXPECT_GT(blocks, 30);
}

// What a section says is shown by code or a table in it, held by tests that it names in a comment,
// or told to be Windows' own.
TEST(Guide, SectionsAreHeldByTests)
{
    std::string const tests = all_tests();
    EXPECT_FALSE(is_held_by("Guide.NoSuchTest", tests));
    EXPECT_FALSE(is_held_by("scripts/none", tests));
    int named = 0, sections = 0;
    for (std::string const &page : pages()) {
        if (is_others(page) || page == "README.md" || page == "docs/abi.md")
            continue;
        std::string heading;
        bool is_held = true;
        lines text = lines_of(page);
        text.push_back("## ");
        for (std::string const &line : text) {
            if (line.rfind("## ", 0) == 0) {
                EXPECT_TRUE(is_held) << page << ", " << heading << ": held by which test?";
                heading = line;
                is_held = false;
                ++sections;
            }
            is_held = is_held || line == "```cpp" || line == "```text" ||
                      line.rfind("|---", 0) == 0 || line.find("Windows' own") != std::string::npos;
            std::string const mark = "<!-- held by ";
            if (line.rfind(mark, 0) != 0)
                continue;
            is_held = true;
            std::istringstream names(line.substr(mark.size(), line.rfind(" -->") - mark.size()));
            for (std::string name; names >> name; ++named) {
                if (name.back() == ',')
                    name.pop_back();
                EXPECT_TRUE(is_held_by(name, tests)) << page << ": " << name;
            }
        }
    }
    EXPECT_GT(named, 40);
    EXPECT_GT(sections, 50);
}

} // namespace
