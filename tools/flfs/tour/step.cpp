#include "flfs/tour/step.hpp"

#include "flfs/text.hpp"

namespace flfs::tour {

std::string told(std::u16string const &text, place const &where)
{
    std::u16string shortened = text;
    // no name holds a `<`, so that it can't be taken for one
    constexpr char16_t const *stand_in = u"<folder>";
    for (std::size_t at = 0; (at = shortened.find(where.folder, at)) != shortened.npos;)
        shortened.replace(at, where.folder.size(), stand_in);
    return displayed_value(shortened);
}

char const *yes_or_no(bool value)
{
    return value ? "yes" : "no";
}

} // namespace flfs::tour
