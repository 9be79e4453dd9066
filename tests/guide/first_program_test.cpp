// The first program, of examples/first_program, and what the README and docs/first-program.md
// show of it.

#include "guide/page.hpp"

#include "support/workspace.hpp"

#include <iostream>
#include <sstream>

#define main first_program
#include "first_program/main.cpp"
#undef main

namespace {

using namespace guide;
using test_support::workspace;

TEST(FirstProgramGuide, ShowsWhatThePageShows)
{
    workspace space;
    std::ostringstream out;
    std::streambuf *const before = std::cout.rdbuf(out.rdbuf());
    int const exit_code = first_program();
    std::cout.rdbuf(before);
    EXPECT_EQ(out.str(), shown(R"(
        made a pathname of 158 units
        made a pathname of 309 units
        fl:filesystem:PathNotFound: the name, or a directory on the way to it, isn't there: "reports\draft.txt"
        )"));
    EXPECT_EQ(exit_code, 1);
}

TEST(FirstProgramGuide, TwiceIsTheSame)
{
    workspace space;
    std::ostringstream first, second;
    for (std::ostringstream *const out : {&first, &second}) {
        std::streambuf *const before = std::cout.rdbuf(out->rdbuf());
        first_program();
        std::cout.rdbuf(before);
    }
    EXPECT_EQ(first.str(), second.str());
}

TEST(FirstProgramGuide, MakingWhatIsThereIsAFailure)
{
    workspace space;
    space.make_directory(space.path(u"reports"));
    space.change_directory(space.root());
    std::ostringstream out;
    std::streambuf *const before = std::cout.rdbuf(out.rdbuf());
    auto const again = fs::attempt([] { fs::create_directories(u"reports"); });
    std::cout << again.error().describe() << '\n';
    std::cout.rdbuf(before);
    EXPECT_EQ(out.str(), shown(R"(
        fl:filesystem:FileExistsError: something of that name is there already: "reports"
        )"));
}

} // namespace
