#ifndef FL_FILESYSTEM_TESTS_LINKS_LINK_CASES_HPP
#define FL_FILESYSTEM_TESTS_LINKS_LINK_CASES_HPP
// Links by their names, and what is read of their data.

#include "links/reparse_bytes.hpp"

namespace test_support {

struct link_case
{
    std::uint32_t tag;
    char16_t const *substitute;
    char16_t const *print;
    std::uint32_t flags;
    fl::filesystem::detail::windows::attrib_link_type link_type;
    char16_t const *target;
    char const *why;
};

namespace windows = fl::filesystem::detail::windows;

inline constexpr auto relative_link = windows::link_type_symlink_relative;
inline constexpr auto absolute_link = windows::link_type_symlink_absolute;
inline constexpr auto junction = windows::link_type_mount_point;
inline constexpr auto volume_mount = windows::link_type_volume_mount;

inline constexpr link_case link_cases[] = {
    // symbolic links
    {symlink_tag, uR"(..\x)", uR"(..\x)", 1, relative_link, uR"(..\x)", "relative"},
    {symlink_tag, uR"(\??\C:\x)", uR"(C:\x)", 0, absolute_link, uR"(C:\x)", "absolute"},
    {symlink_tag, u"x", u"x", 2, absolute_link, u"x", "another flag"},
    {symlink_tag, u"x", u"x", 3, absolute_link, u"x", "the flag and another: not equal to 1"},
    {symlink_tag, u"x", u"x", 0x100, absolute_link, u"x", "a flag in the second byte"},
    {symlink_tag, u"x", u"x", 0x01000001, absolute_link, u"x", "all four bytes count"},
    {symlink_tag, u"a", u"b", 1, relative_link, u"b", "the print name wins"},
    {symlink_tag, uR"(..\s)", u"", 1, relative_link, uR"(..\s)", "no print name"},
    {symlink_tag, uR"(\??\C:\x\)", u"", 0, absolute_link, uR"(\??\C:\x\)",
     "a symbolic link keeps its prefix and what stands at its end"},
    {symlink_tag, u"x", u"a/b/../c", 1, relative_link, uR"(a\b\..\c)", "slashes"},
    {symlink_tag, u"/a", u"", 1, relative_link, uR"(\a)", "slashes of a substitute name"},
    {symlink_tag, uR"(\??\Volume{1}\)", u"", 0, absolute_link, uR"(\??\Volume{1}\)",
     "only a mount point shows a volume"},
    {symlink_tag, u"", u"", 1, relative_link, u"", "no name at all"},
    // junctions
    {mount_point_tag, uR"(\??\C:\data)", uR"(C:\data)", 0, junction, uR"(C:\data)", "both names"},
    {mount_point_tag, uR"(\??\C:\a)", uR"(D:\b)", 0, junction, uR"(D:\b)", "the print name wins"},
    {mount_point_tag, uR"(\??\C:\x)", uR"(C:\x\)", 0, junction, uR"(C:\x\)",
     "a print name without the prefix keeps what stands at its end"},
    {mount_point_tag, uR"(\??\C:\x\)", u"", 0, junction, uR"(C:\x)",
     "a substitute name loses the prefix, and then the backslash"},
    {mount_point_tag, uR"(\??\C:\x)", u"", 0, junction, uR"(C:\x)", "no backslash there"},
    {mount_point_tag, uR"(\??\C:\x\\)", u"", 0, junction, uR"(C:\x\)", "only one of two"},
    {mount_point_tag, u"", uR"(\??\C:\x\)", 0, junction, uR"(C:\x)", "the same in a print name"},
    {mount_point_tag, uR"(/??/C:/x/)", u"", 0, junction, uR"(C:\x)",
     "slashes are turned before it is looked for"},
    {mount_point_tag, uR"(\??\)", u"", 0, junction, u"", "nothing but the prefix"},
    {mount_point_tag, uR"(\??)", u"", 0, junction, uR"(\??)", "not the whole prefix"},
    {mount_point_tag, uR"(\??\\)", u"", 0, junction, u"", "a backslash behind it"},
    {mount_point_tag, uR"(\\?\C:\x\)", u"", 0, junction, uR"(\\?\C:\x\)",
     "the long prefix is another one"},
    {mount_point_tag, uR"(\??\UNC\server\share\)", u"", 0, junction, uR"(UNC\server\share)",
     "whatever is behind it"},
    {mount_point_tag, u"", u"", 0, junction, u"", "no name at all"},
    {mount_point_tag, uR"(..\x)", u"", 0, junction, uR"(..\x)", "never relative"},
    // volumes shown in a directory
    {mount_point_tag, uR"(\??\Volume{1}\)", u"", 0, volume_mount, u"", "a volume"},
    {mount_point_tag, uR"(\??\volume{1}\)", u"", 0, volume_mount, u"", "in lower case"},
    {mount_point_tag, uR"(\??\VOLUME{1}\)", u"", 0, volume_mount, u"", "in upper case"},
    {mount_point_tag, uR"(/??/Volume{1}/)", u"", 0, volume_mount, u"", "with slashes"},
    {mount_point_tag, u"", uR"(\??\Volume{1}\)", 0, volume_mount, u"", "in the print name"},
    {mount_point_tag, uR"(\??\VolumeX)", u"", 0, volume_mount, u"", "one unit more is enough"},
    {mount_point_tag, u"\\??\\Volume\u00E9", u"", 0, volume_mount, u"",
     "what follows the ten units isn't compared"},
    {mount_point_tag, uR"(\??\Volume)", u"", 0, junction, u"Volume", "ten units name no volume"},
    {mount_point_tag, uR"(\??\Volume{1}\)", uR"(C:\mnt)", 0, junction, uR"(C:\mnt)",
     "the print name wins, and is no volume's"},
    {mount_point_tag, uR"(\??\Volum\{1}\)", u"", 0, junction, uR"(Volum\{1})", "another name"},
    {mount_point_tag, u"C:\\\u00E9\u00E9\u00E9\u00E9\u00E9\u00E9\u00E9\u00E9", u"", 0, junction,
     u"C:\\\u00E9\u00E9\u00E9\u00E9\u00E9\u00E9\u00E9\u00E9",
     "the first difference comes ahead of the units beyond ASCII"},
    {mount_point_tag, u"\u00E9234567890", u"", 0, junction, u"\u00E9234567890",
     "ten units are never compared"},
    // no links
    {dedup_tag, u"a", u"b", 1, windows::link_type_dedup_file, u"", "a deduplicated file"},
    {dfs_tag, u"a", u"b", 1, windows::link_type_dfs_directory, u"", "a DFS directory"},
    {0, u"a", u"b", 1, windows::link_type_none, u"", "no tag"},
    {0xA000001D, u"a", u"b", 1, windows::link_type_none, u"", "a link of another system"},
    {0x2000000C, u"a", u"b", 1, windows::link_type_none, u"", "all four bytes of a tag count"},
    {0x00000003, u"a", u"b", 1, windows::link_type_none, u"", "all four bytes of a tag count"},
};

} // namespace test_support

#endif
