#include "platform/facts/facts.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

namespace contract::facts {

namespace {

std::vector<fact> facts_in(std::string const &text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    std::vector<char const *> pointers;
    for (std::string const &line : lines)
        pointers.push_back(line.c_str());
    return parse("t.facts", pointers);
}

TEST(FactFile, AllThatAFactHas)
{
    std::vector<fact> const facts = facts_in(R"(# a comment
witness fstest: fstest (NTFS), delete.cpp

# files
file f\g; delete f\g; delete f\g =2
    fstest: it is gone: not there
mkdir nul =5
    Go, a test: "no name" \ of a directory
    only: not under Wine
    Wine 8: makes it
)");
    ASSERT_EQ(facts.size(), 2U);
    EXPECT_EQ(facts[0].place, "t.facts:5");
    EXPECT_EQ(facts[0].script, R"(file f\g; delete f\g; delete f\g =2)");
    EXPECT_EQ(facts[0].witness, "fstest (NTFS), delete.cpp");
    EXPECT_EQ(facts[0].says, "it is gone: not there");
    EXPECT_EQ(facts[0].wine, std::nullopt);
    EXPECT_EQ(facts[0].only, nullptr);
    EXPECT_EQ(facts[1].place, "t.facts:7");
    EXPECT_EQ(facts[1].script, "mkdir nul =5");
    EXPECT_EQ(facts[1].witness, "Go, a test");
    EXPECT_EQ(facts[1].says, R"("no name" \ of a directory)");
    EXPECT_EQ(facts[1].wine, "makes it");
    ASSERT_NE(facts[1].only, nullptr);
    EXPECT_STREQ(facts[1].only->text, "not under Wine");
}

struct malformed_case
{
    char const *text;
    std::string failure;
};

TEST(FactFile, OneThatIsMalformedIsRefusedWithTheLine)
{
    std::string const halves = "two texts with a colon and a blank between them are expected";
    std::string const parts = "a fact has one witness, one `Wine 8` and one `only` at the most";
    malformed_case const rows[] = {
        {"", "0: there is no fact"},
        {"# only a comment\n\n", "2: there is no fact"},
        {"    go: says so\n", "1: there is no fact ahead"},
        {"mkdir a\n", "1: the fact ahead has no witness"},
        {"mkdir a\n# b\nmkdir c\n    Go, a test: of both\n", "3: the fact ahead has no witness"},
        {"mkdir a\n\tGo, a test: says so\nmkdir b\n", "3: the fact ahead has no witness"},
        {"mkdir a\n    Go, a test\n", "2: " + halves},
        {"mkdir a\n    Go, a test:says so\n", "2: " + halves},
        {"mkdir a\n    Go, a test: \n", "2: " + halves},
        {"mkdir a\n    : says so\n", "2: " + halves},
        {"mkdir a\n    go: says so\n", "2: there is no witness go"},
        {"witness go\n", "1: " + halves},
        {"witness go lang: a test\n", "1: a witness's name is one word"},
        {"witness go: a\nwitness go: b\n", "2: there is a witness go already"},
        {"witness go: a\nmkdir a\n    Go, a test: says so\n", "3: no fact has the witness go"},
        {"mkdir a\n    Go, a test: says so\n    only: on Sundays\n",
         "3: no such system is known: on Sundays"},
        {"mkdir a\n    Go, a test: says so\n    Go, a test: says more\n", "3: " + parts},
        {"mkdir a\n    Go, a test: says so\n    only: not under Wine\n    only: not under Wine\n",
         "4: " + parts},
        {"mkdir a\n    Go, a test: says so\n    Wine 8: a\n    Wine 8: b\n", "4: " + parts},
    };
    for (malformed_case const &row : rows) {
        try {
            facts_in(row.text);
            ADD_FAILURE() << row.text;
        } catch (std::invalid_argument const &refused) {
            EXPECT_EQ(refused.what(), "t.facts:" + row.failure) << row.text;
        }
    }
}

} // namespace

} // namespace contract::facts
