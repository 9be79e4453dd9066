#ifndef FL_FILESYSTEM_SRC_DIRECTORY_LISTED_PATHNAME_HPP
#define FL_FILESYSTEM_SRC_DIRECTORY_LISTED_PATHNAME_HPP
// The pathname of what is at hand in a tree, as the system gets it and as it is shown.

#include "directory/joined_name.hpp"
#include "directory/listing_form.hpp"
#include "platform/code_units.hpp"

#include <cstddef>
#include <string>

namespace fl::filesystem::detail {

/// One for all levels: their pathnames together would take half a gigabyte.
struct listed_pathname
{
    /// How far a directory's pathname goes in that of what is in it.
    struct extent
    {
        std::size_t form = 0;
        std::size_t text = 0;
    };

    explicit listed_pathname(upath const &p) : form(make_listing_form(p)), text(p.native()) {}

    extent size() const { return {form.size(), text.size()}; }

    template <typename Name>
    void append(Name const &name)
    {
        join_name(form, name);
        join_name(text, name);
    }

    void resize(extent size)
    {
        form.resize(size.form);
        text.resize(size.text);
    }

    std::wstring form;   ///< for the system
    std::u16string text; ///< the same as it is shown
};

} // namespace fl::filesystem::detail

#endif
