#include "lookup.hpp"

#include "failure.hpp"
#include "names.hpp"

namespace simulation {

place find_place(pathname const &path)
{
    place here{nullptr, {}, path.root};
    for (std::u16string const &name : path.elements) {
        // A missing directory and a file in the place of one are told alike.
        if (!here.found || !here.found->is_directory())
            throw failure(ERROR_PATH_NOT_FOUND);
        if (!is_valid_name(name))
            throw failure(ERROR_INVALID_NAME);
        std::shared_ptr<node> const parent = here.found;
        here = {parent, name, parent->find(name)};
    }
    return here;
}

place find_existing(pathname const &path)
{
    place const here = find_place(path);
    if (!here.found)
        throw failure(ERROR_FILE_NOT_FOUND);
    return here;
}

bool is_directory_at(std::u16string_view text, machine_state const &machine)
{
    try {
        place const here = find_place(parse_literal(text, machine));
        return here.found && here.found->is_directory();
    } catch (failure const &) {
        return false;
    }
}

} // namespace simulation
