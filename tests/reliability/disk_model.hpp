#ifndef FL_FILESYSTEM_TESTS_RELIABILITY_DISK_MODEL_HPP
#define FL_FILESYSTEM_TESTS_RELIABILITY_DISK_MODEL_HPP
// A small disk as a tree of things, and what operations do to it, told a second time: by rules
// about names, without a system call, a handle or a buffer.

#include "support/failure.hpp"

#include <windows.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace reliability {

using text = std::u16string;

struct thing;
using thing_ptr = std::shared_ptr<thing>;

struct thing
{
    enum
    {
        file,
        directory,
        link
    } is = file;
    bool is_to_directory = false; ///< of a link: as the system has two kinds
    bool is_junction = false;
    text target;
    std::string content;
    bool is_read_only = false;
    bool is_held = false; ///< open in another program, without leave to delete it
    text held_by;         ///< the name that it was opened by
    int names = 1;
    std::map<text, thing_ptr> entries;

    bool counts_as_directory() const { return is == directory || (is == link && is_to_directory); }
};

/// Where a pathname leads.
struct found
{
    DWORD code = ERROR_SUCCESS; ///< as the system says that it leads nowhere
    thing_ptr parent;           ///< of the last name, if there is one
    text name;
    thing_ptr at;
    bool is_below_file = false; ///< right below: the system tells that by another code
};

class disk_model
{
public:
    disk_model();

    /// Each returns what comes of it, as `shown_failure` or an answer, or "skip" where the
    /// rules aren't told.
    std::string put_file(text const &p, std::string const &content);
    std::string put_link(text const &p, text const &target, bool is_to_directory, bool is_junction);
    std::string hold(text const &p, bool is_held);

    std::string create_directory(text const &p);
    std::string create_directories(text const &p);
    std::string remove(text const &p);
    std::string remove_file(text const &p);
    std::string remove_directory(text const &p);
    std::string remove_all(text const &p);
    std::string remove_all_of(text const &p);
    std::string rename(text const &p, text const &q);
    std::string copy_file(text const &p, text const &q, bool overwrites);
    std::string create_hard_link(text const &p, text const &q);
    std::string resize_file(text const &p, std::size_t size);
    std::string set_read_only(text const &p, bool is_read_only);
    std::string exists(text const &p);
    std::string status(text const &p);
    std::string symlink_status(text const &p);
    std::string file_size(text const &p);
    std::string hard_link_count(text const &p);
    std::string equivalent(text const &p, text const &q);
    std::string read_symlink(text const &p);
    std::string list(text const &p);

    /// One line for each name.
    std::vector<std::string> lines() const;
    /// Where `p` really is, without a link. Empty if it isn't a free name in a directory.
    text free_place(text const &p);

private:
    found look(text const &p, bool follows);
    found look_from(std::size_t volume, std::vector<text> const &names, bool follows, int &hops,
                    thing const *&opened_link);
    DWORD make_directory(text const &p);
    std::string blame(DWORD code, text const &p, text const &q);
    bool remove_below(thing_ptr const &directory, text const &path, std::string &failed);
    void remove_what_can_be(thing_ptr const &parent, text const &name, text const &path,
                            int &removed, std::string &left);
    std::string told(DWORD code, text const &p);

    std::vector<thing_ptr> roots_;
};

/// A failure as one text: class, code and pathnames.
std::string shown_failure(test_support::failure const &told);

/// Of a link whose way has no end: whom it names is the walk's matter.
inline constexpr char endless[] = "endless";

} // namespace reliability

#endif
