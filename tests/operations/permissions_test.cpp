// Changing attributes by permission words, of names that are no links.

#include <fl/filesystem.hpp>

#include "status/changed_attributes.hpp"
#include "support/attributes_for_now.hpp"
#include "support/in_workspace.hpp"

namespace fl::filesystem::tests {
namespace {

constexpr unsigned int adds = file_status::perms_add;
constexpr unsigned int removes = file_status::perms_remove;

/// The attributes that this system keeps as they are set. Wine gives every file the
/// archive attribute, has no directories that are read-only, and doesn't know the attribute
/// for indexing.
DWORD kept_attributes(bool of_directories = false)
{
    if (!runs_under_wine())
        return changeable_attributes;
    constexpr DWORD hidden_and_system = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    return of_directories ? hidden_and_system : hidden_and_system | FILE_ATTRIBUTE_READONLY;
}

DWORD attributes_of(std::u16string const &path)
{
    DWORD const attributes = ::GetFileAttributesW(wide(path).c_str());
    EXPECT_NE(attributes, INVALID_FILE_ATTRIBUTES) << printable(path);
    return attributes & kept_attributes();
}

struct word_case
{
    DWORD before;
    unsigned int perms;
    DWORD after;
    char const *why;
};

constexpr word_case word_cases[] = {
    {0x2026, 0, 0x1, "read-only, and none of the flags"},
    {0x27, file_status::owner_write, 0, "not read-only, and the flags go, too"},
    {0x3, adds | file_status::owner_write, 0x2, "only read-only goes"},
    {0x2, removes | file_status::owner_write, 0x3, "only read-only comes"},
    {0x2, removes | file_status::others_read, 0x2, "nothing changes"},
    {0x3, adds | file_status::system_file, 0x7, "only system comes"},
    {0x7, removes | file_status::hidden_file, 0x5, "only hidden goes"},
    {0x1, file_status::owner_write | file_status::hidden_file, 0x2, "hidden and nothing else"},
    {0x1, file_status::perms_all, 0, "all bits, none of them a flag"},
    {0, 0555, 0x1, "reading and executing have no attribute"},
    {0x1, 0020, 0, "the group's bit is as good"},
    {0x1, 0002, 0, "and the others'"},
    {0, 0xF000, 0x2027, "all flags, and no write bit"},
    {0, 0xF222, 0x2026, "all flags, and each write bit"},
    {0x6, file_status::perms_symlink, 0x1, "no bits, on what is no link"},
    {0x6, 0xFFFE, 0x2026, "all bits but one"},
};

TEST_IN_WORKSPACE(Permissions, OfAFile)
{
    std::u16string const path = make_file(u"file", "content");
    for (word_case const &row : word_cases) {
        attributes_for_now const set(path, row.before);
        permissions(path, row.perms);
        EXPECT_EQ(attributes_of(path), row.after & kept_attributes()) << row.why;
        attributes_for_now const again(path, row.before);
        permissions(upath(path), row.perms);
        EXPECT_EQ(attributes_of(path), row.after & kept_attributes()) << row.why;
    }
    EXPECT_TRUE(work.is_file(path));
}

TEST_IN_WORKSPACE(Permissions, OfADirectory)
{
    std::u16string const path = make_directory(u"dir.exe");
    for (word_case const &row : word_cases) {
        attributes_for_now const set(path, row.before);
        permissions(path, row.perms);
        EXPECT_EQ(attributes_of(path), row.after & kept_attributes(true)) << row.why;
        EXPECT_TRUE(work.is_directory(path)) << row.why;
    }
}

TEST_IN_WORKSPACE(Permissions, EveryWordOnADisk)
{
    std::u16string const path = make_file(u"file");
    for (DWORD const before : {0x1U, 0x6U, 0x2023U}) {
        for_all_words([&](unsigned int perms) {
            attributes_for_now const set(path, before);
            permissions(path, perms);
            EXPECT_EQ(attributes_of(path), changed_attributes(before, perms) & kept_attributes())
                << "attributes " << before << ", perms " << perms;
        });
    }
}

TEST_IN_WORKSPACE(Permissions, SayWhatTheStatusSays)
{
    std::u16string const path = make_file(u"tool.cmd");
    constexpr unsigned int shown = 0777 | file_status::hidden_file;
    permissions(path, file_status::owner_write | file_status::hidden_file);
    EXPECT_EQ(status(path).get_perms() & shown, 0777 | file_status::hidden_file);
    permissions(path, status(path).get_perms() & ~0222U);
    EXPECT_EQ(status(path).get_perms() & shown, 0555 | file_status::hidden_file);
    EXPECT_FALSE(access(path, access_write));
    permissions(path, 0222);
    EXPECT_EQ(status(path).get_perms() & shown, 0777U);
    EXPECT_TRUE(access(path, access_write));
}

TEST_IN_WORKSPACE(Permissions, RefuseTheEmptyPathAheadOfTheWord)
{
    auto const refusal = empty_path();
    for (unsigned int const perms : {0U, 0200U, adds | removes, 0xFFFFU}) {
        EXPECT_FAILURE(permissions(u"", perms), refusal);
        EXPECT_FAILURE(permissions(upath(), perms), refusal);
    }
    EXPECT_FAILURE(permissions(uR"(\\?\)", 0200), refusal) << "only a prefix";
}

TEST_IN_WORKSPACE(Permissions, RefuseWordsWithoutAMeaning)
{
    std::u16string const path = make_file(u"file");
    attributes_for_now const hidden(path, 0x2);
    auto const refusal = invalid_argument("File Permission not valid");
    constexpr unsigned int both = adds | removes, all = 0xFFFF;
    for (unsigned int const perms :
         {both, both | 0200, both | file_status::perms_symlink, all, adds | all, removes | all,
          0x40000U | all, both | all, 0x80000000U | all, 0xFFF00000U | both, ~0U}) {
        EXPECT_FAILURE(permissions(path, perms), refusal) << perms;
        EXPECT_FAILURE(permissions(upath(path), perms), refusal) << perms;
        EXPECT_FAILURE(permissions(at(u"no"), perms), refusal) << "before anybody looks";
        EXPECT_FAILURE(permissions(u"\\\\server", perms), refusal)
            << "ahead of what the pathname is";
        EXPECT_EQ(attributes_of(path), 0x2U) << perms;
    }
    permissions(path, 0x80000000U | 0200);
    EXPECT_EQ(attributes_of(path), 0U) << "what stands above has no meaning, and does no harm";
}

TEST_IN_WORKSPACE(Permissions, OfNamesThatAreNotThere)
{
    make_directory(u"dir");
    for (unsigned int const perms : {0200U, adds | 0200U, 0x40000U}) {
        EXPECT_FAILURE(permissions(at(u"no"), perms), not_found(at(u"no")));
        EXPECT_FAILURE(permissions(at(u"no\\no"), perms), not_found(at(u"no\\no")));
        EXPECT_FAILURE(permissions(at(u"a<b"), perms), bad_name());
    }
    enter(u"dir");
    EXPECT_FAILURE(permissions(u"./no", 0200), not_found(at(u"dir\\no")))
        << "the form that went to the system";
    std::u16string const longer = of_size(at(u"dir\\").c_str(), 260);
    EXPECT_FAILURE(permissions(longer, 0200), not_found(uR"(\\?\)" + longer));
    EXPECT_EQ(entries(), names{u"dir"});
}

TEST_IN_WORKSPACE(Permissions, OfPathnamesThatCannotBe)
{
    for (std::u16string const path : {u"\\\\server", u"\\\\.\\COM1"})
        EXPECT_FAILURE(permissions(path, 0200), bad_path_type(path));
}

TEST_IN_WORKSPACE(Permissions, BringTextsToNativeForm)
{
    std::u16string const path = make_file(u"a\\file");
    enter(u"a");
    std::u16string const texts[] = {u"file", u"./file", u"../a//file", uR"(\\?\)" + path};
    for (std::u16string const &text : texts) {
        permissions(text, 0);
        EXPECT_EQ(attributes_of(path) & 1, 1U) << printable(text);
        permissions(text, 0200);
        EXPECT_EQ(attributes_of(path) & 1, 0U) << printable(text);
    }
}

TEST_IN_WORKSPACE(Permissions, OfPathnamesAboutTheLimits)
{
    std::u16string const folder = of_size((work.root() + u"\\").c_str(), 200);
    for (std::size_t const size : {247U, 248U, 259U, 260U, 261U, 400U}) {
        std::u16string const path = of_size((folder + u"\\").c_str(), size);
        std::u16string const form = (size > 259 ? uR"(\\?\)" : u"") + path;
        work.make_file(path);
        permissions(path, 0x4000);
        EXPECT_EQ(attributes_of(form), 0x3U) << size;
        permissions(path, 0200);
        EXPECT_EQ(attributes_of(form), 0U) << size;
    }
}

TEST_IN_WORKSPACE(Permissions, OfAnExtensionBeyondAscii)
{
    std::u16string const path = make_file(u"f.\u00E9xe");
    attributes_for_now const hidden(path, 0x2);
    using foundation::ustring::CtypeInvalidCharacter;
    EXPECT_THROW(permissions(path, 0200), CtypeInvalidCharacter);
    EXPECT_THROW(permissions(upath(path), adds | 0200), CtypeInvalidCharacter);
    EXPECT_EQ(attributes_of(path), 0x2U);
    make_directory(u"d.\u00E9xe");
    permissions(at(u"d.\u00E9xe"), 0x4080);
    EXPECT_EQ(attributes_of(at(u"d.\u00E9xe")), 0x2U) << "a directory isn't asked";
    EXPECT_FAILURE(permissions(at(u"no.\u00E9xe"), 0200), not_found(at(u"no.\u00E9xe")));
}

} // namespace
} // namespace fl::filesystem::tests
