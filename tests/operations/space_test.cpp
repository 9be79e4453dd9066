#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"

#include <windows.h>

#include <type_traits>

namespace fl::filesystem::tests {
namespace {

static_assert(std::is_same_v<space_info, std::filesystem::space_info>);

TEST_IN_WORKSPACE(Space, IsThatOfTheVolumeForADirectoryAndForAFile)
{
    make_file(u"file", "content");
    ULARGE_INTEGER available{};
    ULARGE_INTEGER capacity{};
    ULARGE_INTEGER free{};
    ASSERT_TRUE(::GetDiskFreeSpaceExW(wide(work.root()).c_str(), &available, &capacity, &free));
    std::u16string const drive = work.root().substr(0, 3);
    for (upath const &path : {upath(work.root()), upath(at(u"file")), upath(u"file"), upath(u"."),
                              upath(drive), upath(uR"(\\?\)" + work.root())}) {
        space_info const info = space(path);
        EXPECT_EQ(info.capacity, capacity.QuadPart);
        // others write to a real disk meanwhile
        EXPECT_GT(info.free, 0U);
        EXPECT_GT(info.available, 0U);
        EXPECT_LE(info.free, info.capacity);
        EXPECT_LE(info.available, info.free);
    }
}

TEST_IN_WORKSPACE(Space, RefusesTheEmptyPath)
{
    auto const refusal = empty_path();
    EXPECT_FAILURE(space(upath()), refusal);
    EXPECT_FAILURE(space(upath(uR"(\\?\)")), refusal) << "nothing but a prefix";
}

TEST_IN_WORKSPACE(Space, OfAMissingNameIsAboutTheCallersPath)
{
    make_file(u"file");
    for (char16_t const *text : {u"missing", uR"(missing\a)", uR"(file\a)"}) {
        EXPECT_FAILURE(space(upath(text)), not_found(text));
        EXPECT_FAILURE(space(upath(at(text))), not_found(at(text)));
    }
    EXPECT_FAILURE(space(upath(u"missing/a")), not_found(uR"(missing\a)")) << "in native form";
    EXPECT_FAILURE(space(upath(u"a*b")), bad_name());
}

} // namespace
} // namespace fl::filesystem::tests
