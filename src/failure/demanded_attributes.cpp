#include "failure/demanded_attributes.hpp"

#include "failure/win32_error.hpp"
#include "platform/attribute_query.hpp"

namespace fl::filesystem::detail {

WIN32_FILE_ATTRIBUTE_DATA demand_attribute_data(std::wstring const &path)
{
    attribute_query const query(path);
    if (query.has_failed)
        throw_win32_exception(query.code, path);
    return query.data;
}

} // namespace fl::filesystem::detail
