#include "flfs/failure_json.hpp"

#include "flfs/text.hpp"

namespace flfs {

using json = nlohmann::ordered_json;

json to_json(std::vector<std::u16string> const &texts)
{
    json array = json::array();
    for (std::u16string const &text : texts)
        array.push_back(escaped_surrogates(text));
    return array;
}

json to_json(failure const &what_failed)
{
    return {{"identifier", what_failed.identifier},
            {"pathname", escaped_surrogates(what_failed.pathname)},
            {"additional_pathnames", to_json(what_failed.additional_pathnames)},
            {"code", what_failed.code},
            {"sentence", what_failed.sentence}};
}

} // namespace flfs
