// Making files longer and shorter.

#include "platform/opened.hpp"

namespace contract {

namespace {

DWORD code_of_resizing(HANDLE file, long long size)
{
    return outcome_of([&] {
        FILE_END_OF_FILE_INFO changed = {};
        changed.EndOfFile.QuadPart = size;
        return ::SetFileInformationByHandle(file, FileEndOfFileInfo, &changed, sizeof changed) !=
               FALSE;
    });
}

TEST(EndOfFile, CutsOrAddsZeros)
{
    workspace space;
    std::wstring const name = in(space, L"file");
    space.make_file(units(name), "some text");
    set_last_write(name, past_moment());
    opened const file(name, FILE_WRITE_DATA);
    EXPECT_EQ(code_of_resizing(file.get(), 4), success);
    EXPECT_EQ(content_of(name), "some");
    EXPECT_FALSE(same(information_of(name).ftLastWriteTime, past_moment()));
    EXPECT_EQ(code_of_resizing(file.get(), 6), success);
    EXPECT_EQ(content_of(name), std::string("some\0\0", 6));
    EXPECT_EQ(code_of_resizing(file.get(), 0), success);
    EXPECT_EQ(content_of(name), "");
}

// Wine asks for less: of who may only read it says something else, and who may write attributes
// resizes.
TEST(EndOfFile, NeedsTheRightToWriteContent)
{
    workspace space;
    std::wstring const name = in(space, L"file");
    space.make_file(units(name), "some text");
    for (DWORD const access : {GENERIC_READ, DWORD{FILE_WRITE_ATTRIBUTES}}) {
        opened const file(name, access);
        DWORD const wine = access == GENERIC_READ ? DWORD{ERROR_INVALID_PARAMETER} : success;
        EXPECT_EQ(code_of_resizing(file.get(), 4), expected(ERROR_ACCESS_DENIED, wine)) << access;
    }
    EXPECT_EQ(content_of(name), runs_under_wine() ? "some" : "some text");
}

TEST(EndOfFile, RefusesSizesThatAreNone)
{
    workspace space;
    std::wstring const name = in(space, L"file");
    space.make_file(units(name), "some text");
    opened const file(name, FILE_WRITE_DATA);
    EXPECT_EQ(code_of_resizing(file.get(), -1), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(content_of(name), "some text");
}

} // namespace

} // namespace contract
