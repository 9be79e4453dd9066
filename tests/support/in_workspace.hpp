#ifndef FL_FILESYSTEM_TESTS_SUPPORT_IN_WORKSPACE_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_IN_WORKSPACE_HPP
// For tests that act on a disk: each stands in a workspace of its own.

#include "support/names.hpp"
#include "support/workspace.hpp"

#include <initializer_list>

namespace test_support {

/// A file to be made or, where its name ends in a backslash, a directory.
struct new_name
{
    new_name(char16_t const *name_, std::string content_ = "")
        : name(name_), content(std::move(content_))
    {
    }

    std::u16string_view name;
    std::string content;
};

/// A test in a workspace, whose root is the current directory. Names are those below it; what
/// stands elsewhere is made and looked at by `work`. Where a test needs one workspace after
/// another, it makes those itself and calls each `fresh`. `Workspace` may be one in which there is
/// something.
template <typename Workspace>
class in_some_workspace : public testing::Test
{
protected:
    in_some_workspace() { enter(); }

    /// The pathname of a name.
    std::u16string at(std::u16string_view name) const { return work.path(name); }

    /// With its parents; returns the pathname, as `make_directory` does.
    std::u16string make_file(std::u16string_view name, std::string const &content = "")
    {
        work.make_file(at(name), content);
        return at(name);
    }
    std::u16string make_directory(std::u16string_view name)
    {
        work.make_directory(at(name));
        return at(name);
    }
    /// Several of both, each with its parents.
    void make(std::initializer_list<new_name> all)
    {
        for (auto const &[name, content] : all)
            name.ends_with(u'\\') ? make_directory(name.substr(0, name.size() - 1))
                                  : make_file(name, content);
    }

    /// Makes a directory the current one; without a name it is the workspace itself.
    void enter(std::u16string_view name = {})
    {
        work.change_directory(name.empty() ? work.root() : at(name));
    }

    /// The names in a directory, sorted by their units; without a name it is the workspace
    /// itself.
    names entries(std::u16string_view name = {}) const
    {
        return work.entries(name.empty() ? work.root() : at(name));
    }

    Workspace work;
};

using in_workspace = in_some_workspace<workspace>;

/// `TEST` in a workspace: what follows is a member of `in_workspace`, and so are all tests of
/// the suite.
#define TEST_IN_WORKSPACE(suite, name)                                                             \
    using suite = ::test_support::in_workspace;                                                    \
    TEST_F(suite, name)

} // namespace test_support

#endif
