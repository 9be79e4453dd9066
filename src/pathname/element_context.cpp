#include <fl/filesystem/pathname.hpp>

#include <utility>

namespace fl::filesystem {

template struct FL_FILESYSTEM_TEMPLATE_INSTANTIATION pathname_element_context<char16_t>;

namespace detail {

// An aggregate may not declare what is copied and moved by itself, and what isn't declared
// belongs to no instantiation: it comes into being where it is used. That is here, in what
// nobody calls.
void use_element_context(pathname_element_context<char16_t> &to,
                         pathname_element_context<char16_t> &from)
{
    to = from;
    to = std::move(from);
    to.~pathname_element_context();
}

} // namespace detail

} // namespace fl::filesystem
