#ifndef FL_SIMULATION_NODE_HPP
#define FL_SIMULATION_NODE_HPP
// A file or directory on a volume, with everything that belongs to it and not to
// the pathname that led there.

#include <windows.h>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace simulation {

/// What the caller can be denied.
enum class right
{
    create_entries ///< files and directories in a directory
};

class node
{
public:
    /// A directory without FILE_ATTRIBUTE_DIRECTORY among `attributes` is a file.
    node(std::u16string_view name, DWORD attributes) : name_(name), attributes_(attributes) {}

    std::u16string const &name() const noexcept { return name_; }
    bool is_directory() const noexcept { return (attributes_ & FILE_ATTRIBUTE_DIRECTORY) != 0; }
    DWORD attributes() const noexcept { return attributes_; }
    /// Keeps what kind of node it is.
    void set_attributes(DWORD attributes);

    std::shared_ptr<node> find(std::u16string_view name) const;
    std::shared_ptr<node> add(std::u16string_view name, DWORD attributes);
    void remove(std::u16string_view name);
    bool is_empty() const noexcept { return entries_.empty(); }
    std::vector<std::u16string> names() const;

    std::set<right> denied;
    std::string content;

private:
    std::u16string name_;
    DWORD attributes_;
    std::map<std::u16string, std::shared_ptr<node>> entries_; // by name in upper case
};

} // namespace simulation

#endif
