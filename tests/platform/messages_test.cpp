// The system's own words for its codes.

#include "platform/contract.hpp"

namespace contract {

namespace {

constexpr DWORD one_line =
    FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
constexpr DWORD no_such_code = 99999;

DWORD message_into(wchar_t *buffer, DWORD room, DWORD code, DWORD flags = one_line)
{
    return ::FormatMessageW(flags, nullptr, code, 0, buffer, room, nullptr);
}

TEST(SystemMessage, IsTextInOneLineWithABlankBehindIt)
{
    wchar_t buffer[512];
    // Wine 8 has no words for reparse points
    for (auto const each : {ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION,
                            ERROR_DIR_NOT_EMPTY, ERROR_DIRECTORY}) {
        auto const code = static_cast<DWORD>(each);
        DWORD const size = message_into(buffer, 512, code);
        ASSERT_GT(size, 5U) << code;
        std::wstring const text(buffer, size);
        EXPECT_EQ(buffer[size], L'\0') << code;
        EXPECT_EQ(text.find_first_of(L"\r\n"), std::wstring::npos) << code;
        // how Wine ends it differs with its version
        EXPECT_TRUE(text.back() == L' ' || runs_under_wine()) << code;
    }
}

TEST(SystemMessage, EndsInALineBreakWhereLinesHaveNoEnd)
{
    wchar_t buffer[512];
    DWORD const size = message_into(buffer, 512, ERROR_FILE_NOT_FOUND,
                                    FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS);
    ASSERT_GT(size, 5U);
    EXPECT_EQ(std::wstring(buffer + size - 2), L"\r\n");
}

TEST(SystemMessage, NeedsRoomForItsNul)
{
    wchar_t buffer[512];
    DWORD const size = message_into(buffer, 512, ERROR_FILE_NOT_FOUND);
    ASSERT_GT(size, 5U);
    EXPECT_EQ(message_into(buffer, size + 1, ERROR_FILE_NOT_FOUND), size);
    EXPECT_EQ(outcome_of([&] { return message_into(buffer, size, ERROR_FILE_NOT_FOUND) != 0; }),
              DWORD{ERROR_INSUFFICIENT_BUFFER});
    EXPECT_EQ(outcome_of([&] { return message_into(buffer, 1, ERROR_FILE_NOT_FOUND) != 0; }),
              DWORD{ERROR_INSUFFICIENT_BUFFER});
}

TEST(SystemMessage, ThatThereIsNotHasACodeOfItsOwn)
{
    wchar_t buffer[512];
    EXPECT_EQ(outcome_of([&] { return message_into(buffer, 512, no_such_code) != 0; }),
              DWORD{ERROR_MR_MID_NOT_FOUND});
}

} // namespace

} // namespace contract
