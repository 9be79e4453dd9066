#include "platform/contract.hpp"

namespace contract::facts {

namespace {

/// The classes of access that a share mode can grant.
DWORD wanted_by(DWORD access)
{
    auto const has = [access](DWORD rights) { return (access & rights) != 0; };
    return (has(GENERIC_READ | GENERIC_EXECUTE | FILE_READ_DATA | FILE_EXECUTE) ? FILE_SHARE_READ
                                                                                : 0U) |
           (has(GENERIC_WRITE | FILE_WRITE_DATA | FILE_APPEND_DATA) ? FILE_SHARE_WRITE : 0U) |
           (has(DELETE) ? FILE_SHARE_DELETE : 0U);
}

// Wine's own test of it, dlls/kernel32/tests/file.c, test_file_sharing, tries these on Windows:
// each has to share what the other wants, unless one of them wants nothing of the kind.
TEST(Facts, EveryAccessBesideEveryOther)
{
    constexpr DWORD accesses[] = {0,
                                  GENERIC_READ,
                                  GENERIC_WRITE,
                                  GENERIC_READ | GENERIC_WRITE,
                                  DELETE,
                                  GENERIC_READ | DELETE,
                                  GENERIC_WRITE | DELETE,
                                  GENERIC_EXECUTE,
                                  FILE_APPEND_DATA,
                                  FILE_READ_EA,
                                  FILE_WRITE_ATTRIBUTES};
    workspace space;
    space.make_file(space.path(u"f"));
    std::wstring const name = in(space, L"f");
    for (DWORD const first : accesses) {
        for (DWORD first_shares = 0; first_shares <= share_all; ++first_shares) {
            handle const held = open(name, {.access = first, .share = first_shares});
            ASSERT_TRUE(held);
            for (DWORD const second : accesses) {
                for (DWORD second_shares = 0; second_shares <= share_all; ++second_shares) {
                    DWORD const wanted = wanted_by(first);
                    DWORD const also = wanted_by(second);
                    bool const fits =
                        wanted == 0 || also == 0 ||
                        ((also & ~first_shares) == 0 && (wanted & ~second_shares) == 0);
                    EXPECT_EQ(code_of_open(name, {.access = second, .share = second_shares}),
                              fits ? success : DWORD{ERROR_SHARING_VIOLATION})
                        << first << " sharing " << first_shares << ", " << second << " sharing "
                        << second_shares;
                }
            }
        }
    }
}

} // namespace

} // namespace contract::facts
