// Names of nothing but blanks. The system makes no full pathname of them, and Wine doesn't
// even say why: taken for success, that would be the current directory.

#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"

namespace fl::filesystem::tests {
namespace {

auto refusal_of(std::u16string const &blanks)
{
    if (runs_under_wine())
        return system_error(31, blanks);
    return bad_name();
}

struct operation
{
    char const *name;
    void (*run)(std::u16string const &);
};

constexpr operation operations[] = {
    {"absolute", [](auto &p) { absolute(p); }},
    {"access", [](auto &p) { access(p, access_write); }},
    {"canonical", [](auto &p) { canonical(p); }},
    {"change_current_path", [](auto &p) { change_current_path(p); }},
    {"copy to", [](auto &p) { copy(u"file", p); }},
    {"copy from", [](auto &p) { copy(p, u"copy"); }},
    {"copy_directory", [](auto &p) { copy_directory(u"dir", p); }},
    {"copy_file", [](auto &p) { copy_file(u"file", p); }},
    {"create_directories", [](auto &p) { create_directories(p); }},
    {"create_directory", [](auto &p) { create_directory(p); }},
    {"get_unc_path", [](auto &p) { get_unc_path(p, true); }},
    {"permissions",
     [](auto &p) { permissions(p, file_status::perms_add | file_status::hidden_file); }},
    {"remove", [](auto &p) { remove(p); }},
    {"remove_all", [](auto &p) { remove_all(p); }},
    {"remove_directory", [](auto &p) { remove_directory(p); }},
    {"remove_file", [](auto &p) { remove_file(p); }},
    {"rename to", [](auto &p) { rename(u"file", p); }},
    {"rename from", [](auto &p) { rename(p, u"renamed"); }},
    {"space", [](auto &p) { space(upath(p)); }},
};

TEST_IN_WORKSPACE(BlankNames, AreRefusedBeforeAnythingIsTouched)
{
    for (operation const &row : operations) {
        for (std::u16string const blanks : {u" ", u"   "}) {
            workspace fresh;
            fresh.make_file(fresh.path(u"file"), "content");
            fresh.make_file(fresh.path(uR"(dir\inner)"));
            fresh.change_directory(fresh.root());
            std::uint32_t const attributes = fresh.attributes(fresh.root());
            EXPECT_FAILURE(row.run(blanks), refusal_of(blanks)) << row.name;
            EXPECT_EQ(fresh.entries(fresh.root()), (names{u"dir", u"file"})) << row.name;
            EXPECT_TRUE(fresh.is_file(fresh.path(uR"(dir\inner)"))) << row.name;
            EXPECT_EQ(fresh.content(fresh.path(u"file")), "content") << row.name;
            EXPECT_EQ(fresh.attributes(fresh.root()), attributes) << row.name;
        }
    }
}

// Queries take what the system says of a wrong name for a no, and nothing else.
TEST_IN_WORKSPACE(BlankNames, AreThereForNobody)
{
    maybe_failure const told = runs_under_wine() ? std::optional(refusal_of(u" ")) : std::nullopt;
    file_status looked_at(file_status::directory_file, 0, {}, {}, {}, 0);
    EXPECT_EQ(failure_of([&] { looked_at = status(u" "); }), told);
    EXPECT_EQ(file_status::exists(looked_at), told.has_value());
    looked_at.set_type(file_status::directory_file);
    EXPECT_EQ(failure_of([&] { looked_at = symlink_status(u" "); }), told);
    EXPECT_EQ(file_status::exists(looked_at), told.has_value());
}

} // namespace
} // namespace fl::filesystem::tests
